// Any text of the programming history is refused, or is written and read again as the same.
#include "Require.h"

#include "userstate/JournalEntry.h"

#include <string>

using namespace vek;
using namespace vek::test;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    if (const auto entry = DecodeJournalEntry(text)) {
        Require(DecodeJournalEntry(EncodeJournalEntry(*entry)) == entry);
        Require(JournalLines({{*entry, ""}}).size() == 1);
    }
    JournalEntry ofPath;
    ofPath.File = text;
    // What is no UTF-8 is replaced, and stays so.
    const auto once = DecodeJournalEntry(EncodeJournalEntry(ofPath));
    Require(once && DecodeJournalEntry(EncodeJournalEntry(*once)) == once);
    const std::string line = JournalLines({{ofPath, ""}}).front();
    Require(line.find('\n') == std::string::npos && line.find('\x1B') == std::string::npos);
    return 0;
}
