// Any text is either refused with a message or becomes a configuration that is written and read again to the
// same bytes.
//
// An input is the text itself. Because no random text is a whole configuration, one that begins with the byte
// 0x80 is a list of edits instead: two bytes choose a value of the document of a new configuration (its
// number, from 0, high byte first), what follows up to a zero byte takes its place.
#include "Require.h"

#include "inspect/ConfigJson.h"
#include "inspect/Json.h"

#include <map>

using namespace vek;
using namespace vek::test;

namespace {

constexpr char editsFollow = '\x80';

/// Where the numbers, texts, words and empty lists of a document stand, names of members aside.
std::vector<std::string_view> ValuesOf(std::string_view document) {
    std::vector<std::string_view> values;
    for (std::size_t at = 0; at < document.size();) {
        std::size_t end = at + 1;
        if (document[at] == '"') {
            // No text of a new configuration holds a quotation mark.
            end = document.find('"', end) + 1;
            if (document[end] != ':')
                values.push_back(document.substr(at, end - at));
        } else if (document.substr(at, 2) == "[]") {
            end = at + 2;
            values.push_back(document.substr(at, 2));
        } else if (std::string_view("{}[],: \n").find(document[at]) == std::string_view::npos) {
            end = document.find_first_of(",]} \n", at);
            values.push_back(document.substr(at, end - at));
        }
        at = end;
    }
    return values;
}

std::string Edited(std::string_view input) {
    static const std::string document = ConfigToJson({});
    static const std::vector<std::string_view> values = ValuesOf(document);
    std::map<std::size_t, std::string_view> edits;
    while (input.size() > 2) {
        const auto high = static_cast<unsigned char>(input[0]);
        const auto low = static_cast<unsigned char>(input[1]);
        const std::string_view text = input.substr(2, input.find('\0', 2) - 2);
        edits[(high * 256U + low) % values.size()] = text;
        input.remove_prefix(std::min(input.size(), 2 + text.size() + 1));
    }
    std::string edited;
    std::size_t copied = 0;
    for (const auto& [number, text] : edits) {
        const auto at = static_cast<std::size_t>(values[number].data() - document.data());
        (edited += document.substr(copied, at - copied)) += text;
        copied = at + values[number].size();
    }
    return edited + document.substr(copied);
}

void CheckText(std::string_view text) {
    try {
        const StoredConfig stored = ConfigFromJson(text);
        const StoredConfig again = ConfigFromJson(ConfigToJson(stored));
        Require(EncodeStoredConfig(again) == EncodeStoredConfig(stored));
    } catch (const JsonError& error) {
        Require(*error.what() != '\0');
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    if (input.starts_with(editsFollow))
        CheckText(Edited(input.substr(1)));
    else
        CheckText(input);
    return 0;
}
