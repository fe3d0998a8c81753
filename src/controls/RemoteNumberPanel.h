// A box for the input sequence or the remote panels of an output.
#pragma once

#include "controls/NumberListRules.h"

#include <QWidget>

class QLabel;
class QMenu;

namespace vek {

class KeyFilteredLineEdit;

/// Children: the text box `Text1`, the label `Label1` for the linked display, and the menu `mnuHidden` with
/// the entry `mnuLink`. Panel lists are shown in upper case and ascending order once the user edits them.
class RemoteNumberPanel : public QWidget {
    Q_OBJECT
    Q_PROPERTY(int Mode READ Mode WRITE SetMode)
    Q_PROPERTY(QString Contents READ Contents WRITE SetContents)

  public:
    explicit RemoteNumberPanel(QWidget* parent = nullptr);
    ~RemoteNumberPanel() override;

    /// 0 volume panels, 1 input sequence, 2 selector panels: the values of NumberList.
    int Mode() const { return static_cast<int>(list_); }
    void SetMode(int mode);

    /// The list, one character per entry; empty while linked. A value that begins with "L" ("Linked - 3")
    /// locks the box and is shown as a label; any other value unlocks it and is shown as it is, without outer
    /// blanks, neither sorted nor in upper case.
    QString Contents() const;
    void SetContents(const QString& value);

    /// Panels that this box refuses because another output uses them; ignored for input sequences.
    void SetTakenMarks(const TakenMarks& marks) { taken_ = marks; }

    /// Names the box for assistive technology ("Output 3 volume panels").
    void SetAccessibleTitle(const QString& title);

  Q_SIGNALS:
    /// The user edited the list: at every edit, before the list is put in order, and again when the box is
    /// left after an edit.
    void Change();
    /// The user chose "Link Outputs".
    void LinkClicked();
    /// A key was typed into a panel list; it has not been checked yet. The moment to refresh the marks.
    void KeyTyped();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    bool TakesKey(QChar key, const QString& rest);
    void ShowOnly(QWidget* display);
    void ShowTaken(QChar panel);
    void NoteEdit();
    void Tidy();

    NumberList list_ = NumberList::VolumePanels;
    TakenMarks taken_;
    QString stored_;        ///< the text at the last change
    bool suppress_ = false; ///< the text is being set from code
    bool edited_ = false;   ///< the user changed the text since it was last set from code
    bool linked_ = false;
    KeyFilteredLineEdit* Text1_;
    QLabel* Label1_;
    QMenu* mnuHidden_;
};

} // namespace vek
