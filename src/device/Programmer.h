// The way of a configuration to the programming window, and what is known of it afterwards.
#pragma once

#include "device/EditorServices.h"
#include "link/DeviceTypes.h"
#include "model/Config.h"
#include "userstate/ProgrammingJournal.h"

#include <QObject>
#include <QString>

#include <optional>
#include <string>

class QWidget;

namespace vek {

class PortTurns;
struct ProgrammingJob;

class Programmer : public QObject {
    Q_OBJECT

  public:
    /// All must outlive this object, which belongs to the window; that is the parent of the programming
    /// window.
    Programmer(QWidget& window, const EditorServices& services, PortTurns& turns,
               const DeviceTypeList& types);

    /// Opens the programming window and returns when it is closed.
    void Program(const ProgrammingJob& job);

    const ProgrammingJournal& Journal() const { return journal_; }
    /// The configuration that a device took last, also from another program; null for none.
    const MatrixConfig* LastProgrammed();
    /// What became of the last attempt of this window; empty before the first.
    const QString& Result() const { return result_; }

  Q_SIGNALS:
    /// The programming window has been closed, and Result() tells of it.
    void Ended();
    /// That the history could not be written, and why.
    void Told(const QString& text);

  private:
    void Tell(const JournalEntry& attempt);

    QWidget& window_;
    const EditorServices& services_;
    PortTurns& turns_;
    const DeviceTypeList& types_;
    const ProgrammingJournal journal_;
    ProgrammingJournal::Mark seen_; ///< of the journal when it was read
    std::optional<MatrixConfig> programmed_;
    std::string incompletePort_; ///< whose device took a part of a configuration only; empty for none
    QString result_;
};

} // namespace vek
