// The page "Notes": the notes and how much room is left.
#pragma once

#include <QWidget>

class QLabel;

namespace vek {

class NotesBox;

class NotesPage : public QWidget {
    Q_OBJECT

  public:
    explicit NotesPage(QWidget* parent = nullptr);

    NotesBox* Text1; ///< owned by this page

  private:
    void ShowRemaining();

    QLabel* remaining_;
};

} // namespace vek
