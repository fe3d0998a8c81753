// JSON documents whose numbers are Singles, so that every level survives a round trip.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vek {

/// Members keep their order.
using Json = nlohmann::basic_json<nlohmann::ordered_map, std::vector, std::string, bool, std::int64_t,
                                  std::uint64_t, float>;

/// A document cannot be taken. what() says where, as a JSON pointer (RFC 6901, elements counted from 0), and
/// why: "/modes/2/outputs/3/maximumLevel: missing". For text that is not JSON it says line and column.
class JsonError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
    JsonError(const std::string& path, const std::string& reason)
        : std::runtime_error((path.empty() ? "the document" : path) + ": " + reason) {}
};

/// The pointer of a member or element of the value at `path`.
std::string MemberPath(const std::string& path, std::string_view name);
std::string ElementPath(const std::string& path, std::size_t index);

/// Throws JsonError for text that is not JSON, a name that is given twice in one object, a number that no
/// Single can hold, and for much more, or much deeper, than a configuration.
Json ParseJson(std::string_view text);

/// Indented; a list or object without further lists and objects inside stands on one line.
std::string FormatJson(const Json& document);

} // namespace vek
