#include "inspect/Json.h"

#include <set>
#include <utility>
#include <vector>

namespace vek {

namespace {

/// Follows the parser through the document: where it is, and which names it has met there.
class Position {
  public:
    void Meet(Json::parse_event_t event, const Json& parsed) {
        if (++events_ > mostEvents)
            throw JsonError(Path(), "more than any configuration holds");
        switch (event) {
        case Json::parse_event_t::object_start:
            Enter({.IsObject = true});
            break;
        case Json::parse_event_t::array_start:
            Enter({.IsObject = false});
            break;
        case Json::parse_event_t::key:
            EnterMember(parsed.get_ref<const std::string&>());
            break;
        case Json::parse_event_t::object_end:
        case Json::parse_event_t::array_end:
            scopes_.pop_back();
            LeaveValue();
            break;
        case Json::parse_event_t::value:
            LeaveValue();
            break;
        }
    }

    std::string Path() const {
        std::string path;
        for (const Scope& scope : scopes_)
            path = scope.IsObject ? MemberPath(path, scope.Name) : ElementPath(path, scope.Index);
        return path;
    }

  private:
    struct Scope {
        bool IsObject = false;
        std::string Name = {};
        std::set<std::string> Names = {};
        std::size_t Index = 0;
    };

    void Enter(Scope scope) {
        if (scopes_.size() == deepest)
            throw JsonError(Path(), "nested deeper than any configuration");
        scopes_.push_back(std::move(scope));
    }

    void EnterMember(const std::string& name) {
        Scope& scope = scopes_.back();
        scope.Name = name;
        if (!scope.Names.insert(name).second)
            throw JsonError(Path(), "given twice");
    }

    void LeaveValue() {
        if (!scopes_.empty())
            ++scopes_.back().Index;
    }

    // A configuration has some four thousand values, names and brackets, eight deep. What is beyond is given
    // up at once, before it takes memory.
    static constexpr std::size_t deepest = 32;
    static constexpr std::size_t mostEvents = 100'000;

    std::vector<Scope> scopes_;
    std::size_t events_ = 0;
};

/// The parser's own words, without the library's tag in front.
std::string ParserMessage(const std::exception& error) {
    const std::string message = error.what();
    const std::size_t tagEnd = message.find("] ");
    return tagEnd == std::string::npos ? message : message.substr(tagEnd + 2);
}

void AppendJson(std::string& text, const Json& value, std::size_t indent) {
    if (!value.is_structured()) {
        text += value.dump();
        return;
    }
    const bool isObject = value.is_object();
    const bool oneLine =
        std::none_of(value.begin(), value.end(), [](const Json& inner) { return inner.is_structured(); });
    constexpr std::size_t indentStep = 2;
    const std::string lineStart = oneLine ? "" : '\n' + std::string(indent + indentStep, ' ');
    text += isObject ? '{' : '[';
    bool first = true;
    for (const auto& [name, inner] : value.items()) {
        if (!first)
            text += oneLine ? ", " : ",";
        first = false;
        text += lineStart;
        if (isObject)
            text += Json(name).dump() + ": ";
        AppendJson(text, inner, indent + indentStep);
    }
    if (!oneLine)
        text += '\n' + std::string(indent, ' ');
    text += isObject ? '}' : ']';
}

} // namespace

std::string MemberPath(const std::string& path, std::string_view name) {
    std::string member = path + '/';
    for (const char character : name) {
        if (character == '~')
            member += "~0";
        else if (character == '/')
            member += "~1";
        else
            member += character;
    }
    return member;
}

std::string ElementPath(const std::string& path, std::size_t index) {
    return path + '/' + std::to_string(index);
}

Json ParseJson(std::string_view text) {
    Position position;
    const auto follow = [&position](int, Json::parse_event_t event, const Json& parsed) {
        position.Meet(event, parsed);
        return true;
    };
    try {
        return Json::parse(text.begin(), text.end(), follow);
    } catch (const Json::out_of_range&) {
        throw JsonError(position.Path(), "the number is too large");
    } catch (const Json::parse_error& error) {
        throw JsonError(ParserMessage(error));
    }
}

std::string FormatJson(const Json& document) {
    std::string text;
    AppendJson(text, document, 0);
    text += '\n';
    return text;
}

} // namespace vek
