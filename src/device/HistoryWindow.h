// The programming history in a window.
#pragma once

#include "userstate/ProgrammingJournal.h"

#include <QDialog>

#include <vector>

class QListWidget;
class QPushButton;

namespace vek {

/// The attempts to program a device, in the list `Entries`, from the newest, and buttons for what can be done
/// with one. Can be used beside the window that opened it.
class HistoryWindow : public QDialog {
    Q_OBJECT

  public:
    /// The journal must outlive the window.
    HistoryWindow(const ProgrammingJournal& journal, QWidget* parent);

    /// Reads the journal if it has changed; the current attempt stays the current one.
    void Look();
    /// What would replace the configuration or use the port waits while online.
    void SetOnline(bool online);

  Q_SIGNALS:
    void CopyWanted(const vek::KeptAttempt& attempt);
    void ChangesWanted(const vek::KeptAttempt& attempt);
    void ProgramWanted(const vek::KeptAttempt& attempt);
    void ExportWanted(const vek::KeptAttempt& attempt);

  private:
    using Wish = void (HistoryWindow::*)(const KeptAttempt&);

    QWidget* MakeButtons();
    QPushButton* AddButton(const char* name, const QString& text, QWidget* parent, Wish wish);
    void Fill();
    void Read();
    void EnableButtons();
    const KeptAttempt* Current() const;
    void Ask(Wish wish);
    void CopyText() const;

    const ProgrammingJournal& journal_;
    ProgrammingJournal::Mark seen_; ///< of the journal when it was read
    std::vector<KeptAttempt> attempts_;
    QString unreadable_; ///< why the journal cannot be read; empty when it can
    QListWidget* entries_;
    std::vector<QPushButton*> forOne_;     ///< buttons that need an attempt
    std::vector<QPushButton*> forOffline_; ///< and those among them that wait while online
    bool online_ = false;
};

} // namespace vek
