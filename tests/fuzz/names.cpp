// Any notes give names, and a name that is set is read again while the others stay.
#include "Require.h"

#include "model/Names.h"

#include <cstdint>

using namespace vek;
using namespace vek::test;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t header = 3; // kind, index, length of the name
    if (size < header)
        return 0;
    const NameKind kind = nameKinds.at(data[0] % nameKinds.size());
    const std::size_t index = data[1] % CountOf(kind);
    const std::string rest(data + header, data + size);
    const std::string name = rest.substr(0, data[2]);
    const std::string notes = rest.substr(name.size());

    const Names before(notes);
    const std::string edited = WithName(notes, kind, index, name);
    const Names after(edited);
    for (const NameKind other : nameKinds)
        for (std::size_t i = 0; i < CountOf(other); ++i)
            Require((other == kind && i == index) || after.Of(other, i) == before.Of(other, i));
    const std::string& set = after.Of(kind, index);
    Require(set.empty() == (name.find_first_not_of(" \t\r\n") == name.npos));
    Require(WithName(edited, kind, index, set) == edited);
    Require(Names(WithName(edited, kind, index, "")).Of(kind, index).empty());
    return 0;
}
