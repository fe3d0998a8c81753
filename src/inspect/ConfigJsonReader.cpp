#include "inspect/ConfigJson.h"

#include "base/Windows1252.h"
#include "inspect/FieldTexts.h"
#include "inspect/HexText.h"
#include "inspect/Json.h"
#include "inspect/NamedFields.h"

#include <algorithm>
#include <limits>

namespace vek {

namespace {

/// A value of the document together with where it stands.
struct Located {
    const Json& Value;
    std::string Path;

    [[noreturn]] void Fail(const std::string& reason) const { throw JsonError(Path, reason); }
    Located Element(std::size_t index) const { return {Value[index], ElementPath(Path, index)}; }
};

int WholeNumber(const Located& from, int lowest, int highest) {
    const std::string range = std::to_string(lowest) + " to " + std::to_string(highest);
    if (!from.Value.is_number_integer())
        from.Fail("must be a whole number from " + range);
    const bool huge = from.Value.is_number_unsigned() &&
                      from.Value.get<std::uint64_t>() > std::numeric_limits<std::int32_t>::max();
    if (huge || from.Value.get<std::int64_t>() < lowest || from.Value.get<std::int64_t>() > highest)
        from.Fail("outside " + range);
    return from.Value.get<int>();
}

std::int16_t Int16(const Located& from) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(WholeNumber(from, Limits::min(), Limits::max()));
}

Flag FlagFrom(const Located& from) {
    if (from.Value.is_boolean())
        return ToFlag(from.Value.get<bool>());
    if (!from.Value.is_number_integer())
        from.Fail("must be true or false (or the stored whole number)");
    return Int16(from);
}

float LevelFrom(const Located& from) {
    if (!from.Value.is_number())
        from.Fail("must be a number (dB)");
    return from.Value.get<float>();
}

const Located& ArrayOf(const Located& from, std::size_t size) {
    if (!from.Value.is_array())
        from.Fail("must be a list of " + std::to_string(size));
    if (from.Value.size() != size)
        from.Fail("must hold " + std::to_string(size) + ", not " + std::to_string(from.Value.size()));
    return from;
}

std::string TextFrom(const Located& from) {
    if (!from.Value.is_string())
        from.Fail("must be a text");
    const auto text = ExactUtf8ToWindows1252(from.Value.get_ref<const std::string&>());
    if (!text)
        from.Fail("holds a character outside Windows-1252");
    return *text;
}

std::string Fitting(const Located& from, const std::string& text, std::size_t longest) {
    if (text.size() > longest)
        from.Fail("longer than " + std::to_string(longest) + " characters");
    return text;
}

std::string ListFrom(const Located& from, const NumberCharacters& numbers, std::size_t longest) {
    if (from.Value.is_string())
        return Fitting(from, TextFrom(from), longest);
    if (!from.Value.is_array())
        from.Fail("must be a list of numbers (or the stored text)");
    if (from.Value.size() > longest)
        from.Fail("must not hold more than " + std::to_string(longest));
    std::string text;
    for (std::size_t i = 0; i < from.Value.size(); ++i)
        text += NumberCharacter(WholeNumber(from.Element(i), numbers.First, numbers.Last()), numbers);
    return text;
}

class JsonReader {
  public:
    /// An object, entered with `body` and left with every one of its names known.
    template <typename Body>
    void Within(const Located& object, Body body) {
        if (!object.Value.is_object())
            object.Fail("must be an object");
        Scope scope = {object, {}};
        Scope* const outer = std::exchange(current_, &scope);
        body();
        current_ = outer;
        for (const auto& [name, value] : object.Value.items()) {
            if (std::find(scope.Read.begin(), scope.Read.end(), name) == scope.Read.end())
                throw JsonError(MemberPath(object.Path, name), "unknown name");
        }
    }

    void Integer(const FieldName& name, std::int16_t& value) { value = Int16(Member(name.Json)); }
    void LinkGroup(const FieldName& name, std::int16_t& value) {
        value = static_cast<std::int16_t>(WholeNumber(Member(name.Json), 0, linkGroupCount));
    }
    void Level(const FieldName& name, float& value) { value = LevelFrom(Member(name.Json)); }
    void Switch(const FieldName& name, Flag& value) { value = FlagFrom(Member(name.Json)); }
    void Enable(const FieldName& name, Flag& value) { value = FlagFrom(Member(name.Json)); }

    void Levels(const FieldName& name, std::span<float> levels) {
        const Located list = ArrayOf(Member(name.Json), levels.size());
        for (std::size_t i = 0; i < levels.size(); ++i)
            levels[i] = LevelFrom(list.Element(i));
    }

    void Enables(const FieldName& name, NameKind, std::span<Flag> flags) {
        const Located list = ArrayOf(Member(name.Json), flags.size());
        for (std::size_t i = 0; i < flags.size(); ++i)
            flags[i] = FlagFrom(list.Element(i));
    }

    template <std::size_t N>
    void List(const FieldName& name, FixedText<N>& text, const NumberCharacters& numbers) {
        text = ListFrom(Member(name.Json), numbers, N);
    }

    template <std::size_t N>
    void Notes(const FieldName& name, FixedText<N>& text) {
        const Located member = Member(name.Json);
        const auto takeAsStored = [&] {
            const Located stored = Member(notesAsStoredName);
            text = Fitting(stored, TextFrom(stored), N);
        };
        if (member.Value.is_object())
            Within(member, takeAsStored);
        else
            text = Fitting(member, WithCrLf(TextFrom(member)), N);
    }

    template <typename Body>
    void Object(const FieldName& name, Body body) {
        Within(Member(name.Json), body);
    }

    template <typename Body>
    void Array(const FieldName& name, std::size_t size, Body body) {
        const Located list = ArrayOf(Member(name.Json), size);
        for (std::size_t i = 0; i < size; ++i)
            Within(list.Element(i), [&] { body(i); });
    }

    std::vector<std::byte> OptionalBytes(std::string_view name) {
        if (!current_->Object.Value.contains(name))
            return {};
        const Located member = Member(name);
        const auto bytes =
            member.Value.is_string() ? BytesOfHex(member.Value.get_ref<const std::string&>()) : std::nullopt;
        if (!bytes)
            member.Fail("must be a text of pairs of hexadecimal digits");
        return *bytes;
    }

  private:
    struct Scope {
        Located Object;
        std::vector<std::string_view> Read;
    };

    Located Member(std::string_view name) {
        const std::string path = MemberPath(current_->Object.Path, name);
        const auto found = current_->Object.Value.find(name);
        if (found == current_->Object.Value.end())
            throw JsonError(path, "missing");
        current_->Read.push_back(name);
        return {*found, path};
    }

    Scope* current_ = nullptr;
};

} // namespace

StoredConfig ConfigFromJson(std::string_view text) {
    const Json document = ParseJson(text);
    StoredConfig stored;
    JsonReader reader;
    reader.Within({document, ""}, [&] {
        VisitNamedFields(stored.Config, reader);
        stored.Tail = reader.OptionalBytes(tailName);
    });
    return stored;
}

} // namespace vek
