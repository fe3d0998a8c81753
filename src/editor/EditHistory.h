// One undo for everything that edits the configuration.
#pragma once

#include "inspect/ConfigDiff.h"
#include "model/Config.h"

#include <QObject>
#include <QString>
#include <QUndoStack>

#include <optional>

namespace vek {

/// Where an edit was made: what is shown when it is taken back.
struct EditPlace {
    FieldKind Kind;
    std::optional<std::size_t> Mode;
    std::optional<std::size_t> Output;
};

/// The edits since the configuration was created or opened, as steps with whole configurations before and
/// after. Consecutive edits of one field are one step until the user turns to something else.
class EditHistory : public QObject {
    Q_OBJECT

  public:
    explicit EditHistory(QObject* parent = nullptr);

    /// Enters an edit that has been made. `name` says what it was ("paste Mode 2"), or is empty for what the
    /// difference itself tells best.
    void Enter(const MatrixConfig& before, const MatrixConfig& after, const QString& name);
    /// The user leaves the field that was edited last: the next edit is a step of its own.
    void EndVisit() { ++visit_; }
    /// Forgets all steps: another configuration.
    void Clear() { stack_.clear(); }
    /// The present state has been saved.
    void SetSaved() { stack_.setClean(); }

    // What Undo and Redo would do, nothing when there is no such step.

    std::optional<EditPlace> UndoPlace() const { return PlaceOf(stack_.index() - 1); }
    std::optional<EditPlace> RedoPlace() const { return PlaceOf(stack_.index()); }
    /// How many steps can be taken back.
    int Depth() const { return stack_.index(); }
    QString UndoText() const { return stack_.undoText(); }
    QString RedoText() const { return stack_.redoText(); }

    /// Takes the last step back, or makes it again: Restored() tells.
    void Undo() { stack_.undo(); }
    void Redo() { stack_.redo(); }

  Q_SIGNALS:
    void Restored(const vek::MatrixConfig& config);
    /// What Undo and Redo would do has changed.
    void Changed();

  private:
    std::optional<EditPlace> PlaceOf(int step) const;

    QUndoStack stack_;
    int visit_ = 0;
};

} // namespace vek
