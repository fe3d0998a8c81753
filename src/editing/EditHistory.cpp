#include "editing/EditHistory.h"

#include <QUndoCommand>

#include <chrono>
#include <utility>

namespace vek {

namespace {

constexpr std::size_t mostMemory = std::size_t{16} * 1024 * 1024;
constexpr int stepId = 1;
constexpr std::chrono::milliseconds lookDelay(20);

bool SameField(const FieldDifference& a, const FieldDifference& b) {
    // The lines of the notes are edited as one text.
    return a.Field == b.Field || (a.Place.Kind == FieldKind::Notes && b.Place.Kind == FieldKind::Notes);
}

/// All differences are in one field.
bool IsOneField(const std::vector<FieldDifference>& differences) {
    for (const FieldDifference& difference : differences) {
        if (!SameField(difference, differences.front()))
            return false;
    }
    return !differences.empty();
}

class EditStep final : public QUndoCommand {
  public:
    /// `start` is what the step goes back to, `before` what the edit began with.
    EditStep(EditHistory& history, const MatrixConfig& start, const MatrixConfig& before,
             const MatrixConfig& after, QString name, int visit)
        : history_(history), start_(start), after_(after), name_(std::move(name)), visit_(visit) {
        Describe(FieldDifferences({before, {}}, {after, {}}));
    }

    const FieldPlace& Place() const { return place_; }

    void undo() override { history_.Restore(start_); }
    void redo() override {
        if (made_)
            history_.Restore(after_);
        made_ = true; // the edit has been made before it is entered
    }
    int id() const override { return stepId; }
    bool mergeWith(const QUndoCommand* other) override {
        const auto& next = static_cast<const EditStep&>(*other);
        if (visit_ != next.visit_ || field_.empty() || next.field_ != field_ || !name_.isEmpty() ||
            !next.name_.isEmpty())
            return false;
        after_ = next.after_;
        setObsolete(start_ == after_);
        if (place_.Kind == FieldKind::Notes) {
            auto differences = FieldDifferences({start_, {}}, {after_, {}});
            std::erase_if(differences,
                          [](const auto& found) { return found.Place.Kind != FieldKind::Notes; });
            Describe(differences);
        } else {
            first_.After = next.first_.After;
            setText(QString::fromStdString(first_.Line()));
        }
        return true;
    }

  private:
    void Describe(const std::vector<FieldDifference>& differences) {
        if (differences.empty())
            return;
        first_ = differences.front();
        place_ = first_.Place;
        if (field_.empty() && IsOneField(differences))
            field_ = first_.Place.Kind == FieldKind::Notes ? "Notes" : first_.Field;
        const QString what = name_.isEmpty() ? QString::fromStdString(first_.Line()) : name_;
        const auto count = differences.size();
        if (name_.isEmpty() && count == 1)
            setText(what);
        else
            setText(count == 1 ? EditHistory::tr("%1 (1 change)").arg(what)
                               : EditHistory::tr("%1 (%2 changes)").arg(what).arg(count));
    }

    EditHistory& history_;
    MatrixConfig start_;
    MatrixConfig after_;
    QString name_;
    int visit_;
    FieldPlace place_ = {};
    FieldDifference first_ = {};
    std::string field_; ///< empty when several were edited
    bool made_ = false;
};

} // namespace

EditHistory::EditHistory(QObject* parent) : QObject(parent) {
    stack_.setUndoLimit(static_cast<int>(mostMemory / sizeof(EditStep)));
    connect(&stack_, &QUndoStack::indexChanged, this, &EditHistory::Changed);
    look_.setSingleShot(true);
    look_.setInterval(lookDelay);
    connect(&look_, &QTimer::timeout, this, [this] { Steps(); });
}

void EditHistory::Enter(const MatrixConfig& before, const MatrixConfig& after, const QString& name) {
    edits_.push_back({present_, before, after, name, visit_});
    present_ = after;
    look_.start();
    Q_EMIT Entered();
}

void EditHistory::Begin(const MatrixConfig& config) {
    present_ = config;
    edits_.clear();
    stack_.clear();
    Q_EMIT Begun();
}

void EditHistory::Restore(const MatrixConfig& config) {
    present_ = config;
    Q_EMIT Restored(config);
}

void EditHistory::SetSaved() { Steps().setClean(); }

QUndoStack& EditHistory::Steps() {
    // Who is told of a step asks for the others.
    for (const Edit& edit : std::exchange(edits_, {}))
        stack_.push(new EditStep(*this, edit.Start, edit.Before, edit.After, edit.Name, edit.Visit));
    return stack_;
}

std::optional<FieldPlace> EditHistory::PlaceOf(int step) const {
    const auto* found = static_cast<const EditStep*>(stack_.command(step));
    return found == nullptr ? std::nullopt : std::optional(found->Place());
}

} // namespace vek
