#include "inspect/NamedNumbers.h"

#include "inspect/FieldTexts.h"

namespace vek {

namespace {

constexpr std::size_t longestName = 32;
constexpr const char* ellipsis = "\u2026";

} // namespace

std::string NamedNumbers::NameAfterBlank(NameKind kind, std::size_t index) const {
    const std::string& own = names_.Of(kind, index);
    const std::string& name = own.empty() ? former_.Of(kind, index) : own;
    if (name.size() > longestName)
        return ' ' + EscapedText(name.substr(0, longestName - 1)) + ellipsis;
    return name.empty() ? name : ' ' + EscapedText(name);
}

std::string NamedNumbers::Number(NameKind kind, std::size_t index) const {
    return NumberText(kind, index).back() + NameAfterBlank(kind, index);
}

std::string NamedNumbers::Text(NameKind kind, std::size_t index) const {
    return NumberText(kind, index) + NameAfterBlank(kind, index);
}

std::string NamedNumbers::OutputOfMode(std::size_t mode, std::size_t output) const {
    return Text(NameKind::Mode, mode) + ", " + Text(NameKind::Output, output);
}

} // namespace vek
