// The page "Notes": the notes, how much room is left, and the names in them as a table.
#pragma once

#include <QWidget>

class QLabel;

namespace vek {

class NamesTable;
class NotesBox;

class NotesPage : public QWidget {
    Q_OBJECT

  public:
    explicit NotesPage(QWidget* parent = nullptr);

    // Owned by this page.
    NotesBox* Text1;
    NamesTable* Names;

  private:
    void ShowRemaining();

    QLabel* remaining_;
};

} // namespace vek
