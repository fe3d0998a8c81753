// Any text is either refused by the paste or becomes a mode that can be copied and pasted again.
#include "Require.h"

#include "model/ClipboardText.h"

using namespace vek;
using namespace vek::test;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    if (const auto mode = PasteModeText(text)) {
        const std::string copied = CopyModeText(*mode);
        const auto again = PasteModeText(copied);
        Require(again.has_value() && CopyModeText(*again) == copied);
    }
    if (const auto levels = PastePointText(text)) {
        const std::string copied = CopyPointText(*levels);
        const auto again = PastePointText(copied);
        Require(again.has_value() && CopyPointText(*again) == copied);
    }
    return 0;
}
