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
    int Mode() const { return static_cast<int>(list); }
    void SetMode(int mode);

    /// The list, one character per entry; empty while linked. A value that begins with "L" ("Linked - 3")
    /// locks the box and is shown as a label; any other value unlocks it and is shown as it is, without outer
    /// blanks, neither sorted nor in upper case.
    QString Contents() const;
    void SetContents(const QString& value);

    /// Panels that this box refuses because another output uses them; ignored for input sequences.
    void SetTakenMarks(const TakenMarks& marks) { taken = marks; }

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
    void Undo(bool redo);

    NumberList list = NumberList::VolumePanels;
    TakenMarks taken;
    QString stored;        ///< the text at the last change
    bool suppress = false; ///< the text is being set from code
    bool edited = false;   ///< the user changed the text since it was last set from code
    bool linked = false;
    KeyFilteredLineEdit* Text1;
    QLabel* Label1;
    QMenu* mnuHidden;
};

} // namespace vek
