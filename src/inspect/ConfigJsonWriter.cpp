#include "inspect/ConfigJson.h"

#include "base/Windows1252.h"
#include "inspect/FieldTexts.h"
#include "inspect/HexText.h"
#include "inspect/Json.h"
#include "inspect/NamedFields.h"

namespace vek {

namespace {

class JsonWriter {
  public:
    explicit JsonWriter(Json& document) : scope_(&document) {}

    void Integer(const FieldName& name, std::int16_t value) { Add(name, value); }
    void LinkGroup(const FieldName& name, std::int16_t value) { Add(name, value); }
    void Level(const FieldName& name, float value) { Add(name, value); }
    void Switch(const FieldName& name, Flag value) { Add(name, FlagJson(value)); }
    void Enable(const FieldName& name, Flag value) { Add(name, FlagJson(value)); }

    void Levels(const FieldName& name, std::span<const float> levels) {
        Add(name, Json::array_t(levels.begin(), levels.end()));
    }

    void Enables(const FieldName& name, NameKind, std::span<const Flag> flags) {
        Json list = Json::array();
        for (const Flag flag : flags)
            list.push_back(FlagJson(flag));
        Add(name, std::move(list));
    }

    template <std::size_t N>
    void List(const FieldName& name, const FixedText<N>& text, const NumberCharacters& numbers) {
        if (const auto listed = ListedNumbers(text.Padded(), numbers))
            Add(name, Json::array_t(listed->begin(), listed->end()));
        else
            Add(name, TextOf(text));
    }

    template <std::size_t N>
    void Notes(const FieldName& name, const FixedText<N>& text) {
        const std::string_view stored = WithoutPadding(text.Padded());
        if (WithCrLf(stored) == stored)
            Add(name, TextOf(text));
        else
            Add(name, Json::object())[std::string(notesAsStoredName)] = TextOf(text);
    }

    template <typename Body>
    void Object(const FieldName& name, Body body) {
        Within(Add(name, Json::object()), body);
    }

    template <typename Body>
    void Array(const FieldName& name, std::size_t size, Body body) {
        Json& array = Add(name, Json::array());
        for (std::size_t i = 0; i < size; ++i)
            Within(array.emplace_back(Json::object()), [&] { body(i); });
    }

  private:
    template <std::size_t N>
    static std::string TextOf(const FixedText<N>& text) {
        return Windows1252ToUtf8(WithoutPadding(text.Padded()));
    }

    static Json FlagJson(Flag flag) {
        return flag == flagTrue || flag == flagFalse ? Json(IsSet(flag)) : Json(flag);
    }

    Json& Add(const FieldName& name, Json value) {
        return (*scope_)[std::string(name.Json)] = std::move(value);
    }

    template <typename Body>
    void Within(Json& inner, Body body) {
        Json* const outer = std::exchange(scope_, &inner);
        body();
        scope_ = outer;
    }

    Json* scope_;
};

} // namespace

std::string ConfigToJson(const StoredConfig& stored) {
    Json document = Json::object();
    JsonWriter writer(document);
    VisitNamedFields(stored.Config, writer);
    if (!stored.Tail.empty())
        document[std::string(tailName)] = HexText(stored.Tail);
    return FormatJson(document);
}

} // namespace vek
