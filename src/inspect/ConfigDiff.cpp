#include "inspect/ConfigDiff.h"

#include "inspect/FieldTexts.h"
#include "inspect/NamedFields.h"
#include "inspect/NamedNumbers.h"

#include <algorithm>
#include <bit>

namespace vek {

namespace {

constexpr std::size_t usualFields = 1024; // a little more than there are
constexpr const char* tailWords = "Data after the record";

struct ListedField {
    std::string Words; ///< "Mode 2, Output 3: Maximum level"
    std::string Text;
    FieldPlace Place;
    std::size_t Number;
};

/// For what does not ask where a field stands, and leaves out the notes.
class FieldsInOrder {
  public:
    template <std::size_t N>
    void Notes(const FieldName&, const FixedText<N>&) {}
    template <typename Body>
    void Object(const FieldName&, Body body) {
        body();
    }
    template <typename Body>
    void Array(const FieldName&, std::size_t size, Body body) {
        for (std::size_t i = 0; i < size; ++i)
            body(i);
    }
};

/// The stored values of all fields but the notes, in the order of FieldLister; quick to make and to compare.
class ValueLister : public FieldsInOrder {
  public:
    void Integer(const FieldName&, std::int16_t value) { Add(value); }
    void LinkGroup(const FieldName&, std::int16_t value) { Add(value); }
    void Level(const FieldName&, float value) { Values.emplace_back(std::bit_cast<std::int32_t>(value), ""); }
    void Switch(const FieldName&, Flag value) { Add(value); }
    void Enable(const FieldName&, Flag value) { Add(value); }
    void Levels(const FieldName& name, std::span<const float> levels) {
        for (const float level : levels)
            Level(name, level);
    }
    void Enables(const FieldName&, NameKind, std::span<const Flag> flags) {
        for (const Flag flag : flags)
            Add(flag);
    }
    template <std::size_t N>
    void List(const FieldName&, const FixedText<N>& text, const NumberCharacters&) {
        Values.emplace_back(0, text.Padded());
    }

    std::vector<std::pair<std::int32_t, std::string_view>> Values;

  private:
    void Add(std::int16_t value) { Values.emplace_back(value, ""); }
};

/// Gives one field another value: ValueLister backwards.
class ValueSetter : public FieldsInOrder {
  public:
    using Value = std::pair<std::int32_t, std::string_view>;

    /// `number` counts the fields from 0, as ValueLister has them.
    ValueSetter(std::size_t number, const Value& value) : left_(number), value_(value) {}

    void Integer(const FieldName&, std::int16_t& field) { Set(field); }
    void LinkGroup(const FieldName&, std::int16_t& field) { Set(field); }
    void Level(const FieldName&, float& field) {
        if (left_-- == 0)
            field = std::bit_cast<float>(value_.first);
    }
    void Switch(const FieldName&, Flag& field) { Set(field); }
    void Enable(const FieldName&, Flag& field) { Set(field); }
    void Levels(const FieldName& name, std::span<float> levels) {
        for (float& level : levels)
            Level(name, level);
    }
    void Enables(const FieldName&, NameKind, std::span<Flag> flags) {
        for (Flag& flag : flags)
            Set(flag);
    }
    template <std::size_t N>
    void List(const FieldName&, FixedText<N>& field, const NumberCharacters&) {
        if (left_-- == 0)
            field = value_.second;
    }

  private:
    void Set(std::int16_t& field) {
        if (left_-- == 0)
            field = static_cast<std::int16_t>(value_.first);
    }

    std::size_t left_; ///< to the field; wraps behind it
    Value value_;
};

/// Which fields differ.
std::vector<bool> DifferingFields(const MatrixConfig& before, const MatrixConfig& after) {
    ValueLister old;
    ValueLister now;
    old.Values.reserve(usualFields);
    VisitNamedFields(before, old);
    now.Values.reserve(old.Values.size());
    VisitNamedFields(after, now);
    std::vector<bool> differing;
    differing.reserve(old.Values.size());
    for (std::size_t i = 0; i < old.Values.size(); ++i)
        differing.push_back(old.Values[i] != now.Values[i]);
    return differing;
}

/// Lists fields, all but the notes or the wanted ones, in the same order for every configuration.
class FieldLister {
  public:
    /// Both must outlive this object; `wanted` is null for all.
    FieldLister(const NamedNumbers& numbers, const std::vector<bool>* wanted)
        : numbers_(numbers), wanted_(wanted) {}

    void Integer(const FieldName& name, std::int16_t value) {
        Add(name, [=] { return std::to_string(value); });
    }
    void LinkGroup(const FieldName& name, std::int16_t value) {
        Add(name, [=] { return LinkGroupText(value); });
    }
    void Level(const FieldName& name, float value) {
        Add(name, [=] { return ExactLevelText(value); });
    }
    void Switch(const FieldName& name, Flag value) {
        Add(name, [=] { return FlagText(value, "yes", "no"); });
    }
    void Enable(const FieldName& name, Flag value) {
        Add(name, [=] { return FlagText(value, "on", "off"); });
    }

    void Levels(const FieldName& name, std::span<const float> levels) {
        const NameKind kind = name.Kind == FieldKind::InputTrims ? NameKind::Input : NameKind::Output;
        for (number_ = {kind, 0}; number_->Index < levels.size(); ++number_->Index)
            Level(name, levels[number_->Index]);
        number_.reset();
    }

    void Enables(const FieldName& name, NameKind numbered, std::span<const Flag> flags) {
        Object(name, [&] {
            for (number_ = {numbered, 0}; number_->Index < flags.size(); ++number_->Index)
                Enable({"", ""}, flags[number_->Index]);
            number_.reset();
        });
    }

    template <std::size_t N>
    void List(const FieldName& name, const FixedText<N>& text, const NumberCharacters& numbers) {
        Add(name, [&] { return ListText(text.Padded(), numbers); });
    }

    template <std::size_t N>
    void Notes(const FieldName&, const FixedText<N>&) {}

    template <typename Body>
    void Object(const FieldName& name, Body body) {
        const std::string outer = words_;
        const FieldKind outerKind = kind_;
        words_ += name.Caption;
        words_ += name.Caption.empty() ? "" : " ";
        kind_ = name.Kind.value_or(kind_);
        body();
        words_ = outer;
        kind_ = outerKind;
    }

    template <typename Body>
    void Array(const FieldName& name, std::size_t size, Body body) {
        const std::string outer = where_;
        const bool modes = name.Json == "modes";
        std::optional<std::size_t>& index = modes ? mode_ : output_;
        for (std::size_t i = 0; i < size; ++i) {
            where_ = outer.empty() ? "" : outer + ", ";
            where_ += numbers_.Text(modes ? NameKind::Mode : NameKind::Output, i);
            index = i;
            body(i);
        }
        where_ = outer;
        index.reset();
    }

    std::vector<ListedField> Fields;

  private:
    struct NumberOfKind {
        NameKind Kind;
        std::size_t Index;
    };

    template <typename MakeText>
    void Add(const FieldName& name, MakeText text) {
        const std::size_t number = next_++;
        if (wanted_ != nullptr && !(*wanted_)[number])
            return;
        std::string words = where_.empty() ? "" : where_ + ": ";
        words += words_;
        words += name.Caption;
        if (number_)
            words += name.Caption.empty() ? numbers_.Text(number_->Kind, number_->Index)
                                          : ' ' + numbers_.Number(number_->Kind, number_->Index);
        FieldPlace place = {name.Kind.value_or(kind_), mode_, output_, {}, name.Caption};
        if (place.Kind == FieldKind::InputTrims || place.Kind == FieldKind::OutputTrims)
            place.Trim = number_->Index;
        Fields.push_back({std::move(words), text(), place, number});
    }

    const NamedNumbers& numbers_;
    const std::vector<bool>* wanted_;
    std::size_t next_ = 0;
    std::string where_; ///< "Mode 2, Output 3"
    std::string words_;
    std::optional<NumberOfKind> number_; ///< of one of several fields of a name
    FieldKind kind_ = FieldKind::Base;
    std::optional<std::size_t> mode_;
    std::optional<std::size_t> output_;
};

std::vector<ListedField> ListFields(const MatrixConfig& config, const NamedNumbers& numbers,
                                    const std::vector<bool>* wanted = nullptr) {
    FieldLister lister(numbers, wanted);
    VisitNamedFields(config, lister);
    return std::move(lister.Fields);
}

std::string NotesLine(std::size_t index) { return "Notes, line " + std::to_string(index + 1) + ":"; }

std::string TailText(const std::vector<std::byte>& tail) { return std::to_string(tail.size()) + " bytes"; }

constexpr std::string_view noteLineEnd = "\r\n";

/// None when there are no notes.
std::vector<std::string_view> NoteLines(const MatrixConfig& config) {
    std::string_view rest = WithoutPadding(config.Notes.Padded());
    std::vector<std::string_view> lines;
    for (std::size_t end = rest.find(noteLineEnd); end != rest.npos; end = rest.find(noteLineEnd)) {
        lines.push_back(rest.substr(0, end));
        rest.remove_prefix(end + noteLineEnd.size());
    }
    if (!rest.empty() || !lines.empty())
        lines.push_back(rest);
    return lines;
}

/// The lines from `Start` to those that are the same at the end, in either of the two.
struct DifferingLines {
    std::size_t Start;
    std::size_t Same; ///< at the end
};

DifferingLines LinesThatDiffer(const std::vector<std::string_view>& old,
                               const std::vector<std::string_view>& now) {
    const std::size_t shorter = std::min(old.size(), now.size());
    std::size_t start = 0;
    while (start < shorter && old[start] == now[start])
        ++start;
    std::size_t same = 0;
    while (same < shorter - start && old[old.size() - 1 - same] == now[now.size() - 1 - same])
        ++same;
    return {start, same};
}

/// Lines that both have at the start and at the end are no differences; what is left between is compared line
/// by line.
void AppendNoteDifferences(std::vector<FieldDifference>& differences, const MatrixConfig& before,
                           const MatrixConfig& after) {
    if (before.Notes == after.Notes)
        return;
    const auto old = NoteLines(before);
    const auto now = NoteLines(after);
    const auto [start, same] = LinesThatDiffer(old, now);
    for (std::size_t i = start; i < std::max(old.size(), now.size()) - same; ++i) {
        const bool inOld = i < old.size() - same;
        const bool inNow = i < now.size() - same;
        if (inOld && inNow && old[i] == now[i])
            continue;
        differences.push_back({NotesLine(i),
                               inOld ? QuotedText(old[i]) : "none",
                               inNow ? QuotedText(now[i]) : "none",
                               {FieldKind::Notes, {}, {}},
                               i});
    }
}

/// One line of the notes as it was; an added line goes, one that is gone comes back.
std::optional<MatrixConfig> WithFormerLine(std::size_t number, const MatrixConfig& before,
                                           const MatrixConfig& after) {
    const auto old = NoteLines(before);
    auto now = NoteLines(after);
    const std::size_t same = LinesThatDiffer(old, now).Same;
    const bool inOld = number < old.size() - same;
    const bool inNow = number < now.size() - same;
    const auto place = now.begin() + static_cast<std::ptrdiff_t>(std::min(number, now.size() - same));
    if (inOld && inNow)
        *place = old[number];
    else if (inOld)
        now.insert(place, old[number]);
    else if (inNow)
        now.erase(place);
    std::string text;
    for (std::size_t i = 0; i < now.size(); ++i)
        (text += i == 0 ? "" : noteLineEnd) += now[i];
    if (text.size() > notesLength)
        return std::nullopt;
    MatrixConfig config = after;
    config.Notes = text;
    return config;
}

void AppendTailDifference(std::vector<FieldDifference>& differences, const std::vector<std::byte>& before,
                          const std::vector<std::byte>& after) {
    if (before == after)
        return;
    const std::string now =
        before.size() == after.size() ? std::to_string(after.size()) + " other bytes" : TailText(after);
    differences.push_back({tailWords, TailText(before), now, {FieldKind::Tail, {}, {}}, 0});
}

} // namespace

std::vector<FieldDifference> FieldDifferences(const StoredConfig& before, const StoredConfig& after) {
    std::vector<FieldDifference> differences;
    const std::vector<bool> differing = DifferingFields(before.Config, after.Config);
    const NamedNumbers numbers(after.Config, before.Config);
    const auto old = ListFields(before.Config, numbers, &differing);
    const auto now = ListFields(after.Config, numbers, &differing);
    for (std::size_t i = 0; i < old.size(); ++i)
        differences.push_back({old[i].Words, old[i].Text, now[i].Text, old[i].Place, old[i].Number});
    AppendNoteDifferences(differences, before.Config, after.Config);
    AppendTailDifference(differences, before.Tail, after.Tail);
    return differences;
}

std::optional<MatrixConfig> TakenBack(const FieldDifference& difference, const MatrixConfig& before,
                                      const MatrixConfig& after) {
    if (difference.Place.Kind == FieldKind::Tail)
        return std::nullopt;
    if (difference.Place.Kind == FieldKind::Notes)
        return WithFormerLine(difference.Number, before, after);
    MatrixConfig config = after;
    ValueLister values;
    VisitNamedFields(before, values);
    ValueSetter setter(difference.Number, values.Values.at(difference.Number));
    VisitNamedFields(config, setter);
    return config;
}

std::vector<std::string> Differences(const StoredConfig& before, const StoredConfig& after) {
    std::vector<std::string> lines;
    for (const FieldDifference& difference : FieldDifferences(before, after))
        lines.push_back(difference.Line());
    return lines;
}

std::vector<std::string> AllSettings(const StoredConfig& stored) {
    std::vector<std::string> settings;
    for (const ListedField& field : ListFields(stored.Config, NamedNumbers(stored.Config)))
        settings.push_back(field.Words + ' ' + field.Text);
    const auto notes = NoteLines(stored.Config);
    for (std::size_t i = 0; i < notes.size(); ++i)
        settings.push_back(NotesLine(i) + ' ' + QuotedText(notes[i]));
    if (!stored.Tail.empty())
        settings.push_back(std::string(tailWords) + ' ' + TailText(stored.Tail));
    return settings;
}

} // namespace vek
