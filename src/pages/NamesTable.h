// The names that the notes give to inputs, outputs, modes and remote panels, as a table.
#pragma once

#include "model/Names.h"

#include <QTableWidget>

#include <string>

namespace vek {

/// A row for each number. A name takes what the notes can hold: characters of Windows-1252, and as many as
/// there is room for; what does not fit is refused as it is typed, and a hint says why. Typing begins on the
/// row that has the focus, Enter goes on to the next, Delete empties rows.
class NamesTable : public QTableWidget {
    Q_OBJECT

  public:
    explicit NamesTable(QWidget* parent = nullptr);

    /// Shows the names of these notes (Windows-1252). A name that is being typed goes when its row changes.
    void SetNotes(const std::string& notes);

  Q_SIGNALS:
    /// The user gave another name: the notes with it, never more than `notesLength` bytes.
    void Edited(const std::string& notes);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void TakeName(const QTableWidgetItem& item);

    std::string notes_;
};

} // namespace vek
