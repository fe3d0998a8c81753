// Any text beside a recovery copy is refused, or is written and read again as the same.
#include "Require.h"

#include "userstate/RecoveryText.h"

using namespace vek;
using namespace vek::test;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    // No random text begins with the title.
    const std::string titled = EncodeRecoveryText({}).substr(0, EncodeRecoveryText({}).find('\n') + 1) + text;
    for (const std::string& read : {text, titled}) {
        const auto origin = DecodeRecoveryText(read);
        if (!origin)
            continue;
        Require(origin->Time >= 0);
        Require(DecodeRecoveryText(EncodeRecoveryText(*origin)) == origin);
    }
    RecoveryOrigin ofPath;
    ofPath.File = text;
    Require(DecodeRecoveryText(EncodeRecoveryText(ofPath)) == ofPath);
    return 0;
}
