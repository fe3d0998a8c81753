// One undo for everything that edits the configuration.
#pragma once

#include "inspect/ConfigDiff.h"
#include "model/Config.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <QUndoStack>

#include <optional>
#include <vector>

namespace vek {

/// The edits since the configuration was created or opened, as steps with whole configurations before and
/// after. Consecutive edits of one field are one step until the user turns to something else.
class EditHistory : public QObject {
    Q_OBJECT

  public:
    explicit EditHistory(QObject* parent = nullptr);

    /// Enters an edit that has been made. `name` says what it was ("paste Mode 2"), or is empty for what the
    /// difference itself tells best. It is looked at a little later, or when somebody asks: what the edit
    /// sends to a device goes first.
    void Enter(const MatrixConfig& before, const MatrixConfig& after, const QString& name);
    /// The user leaves the field that was edited last: the next edit is a step of its own.
    void EndVisit() { ++visit_; }
    /// Forgets all steps: another configuration.
    void Begin(const MatrixConfig& config);
    /// The present state has been saved.
    void SetSaved();

    // What Undo and Redo would do and where, nothing when there is no such step.

    std::optional<FieldPlace> UndoPlace() { return PlaceOf(Steps().index() - 1); }
    std::optional<FieldPlace> RedoPlace() { return PlaceOf(Steps().index()); }
    /// How many steps can be taken back.
    int Depth() { return Steps().index(); }
    QString UndoText() { return Steps().undoText(); }
    QString RedoText() { return Steps().redoText(); }

    /// Takes the last step back, or makes it again: Restored() tells.
    void Undo() { Steps().undo(); }
    void Redo() { Steps().redo(); }

    /// For the steps: makes an earlier or later state the present one.
    void Restore(const MatrixConfig& config);

  Q_SIGNALS:
    void Restored(const vek::MatrixConfig& config);
    /// There is another configuration, without steps.
    void Begun();
    /// An edit has been entered; Changed() follows.
    void Entered();
    /// What Undo and Redo would do has changed.
    void Changed();

  private:
    struct Edit {
        MatrixConfig Start;
        MatrixConfig Before;
        MatrixConfig After;
        QString Name;
        int Visit;
    };

    /// The steps, with every edit entered.
    QUndoStack& Steps();
    std::optional<FieldPlace> PlaceOf(int step) const;

    QUndoStack stack_;
    std::vector<Edit> edits_; ///< not looked at yet
    QTimer look_;
    /// The configuration after the last step. What linking makes of followers comes on top of it without a
    /// step of its own; the next step takes it back too.
    MatrixConfig present_;
    int visit_ = 0;
};

} // namespace vek
