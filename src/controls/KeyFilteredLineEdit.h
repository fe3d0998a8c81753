// A line of text that takes only certain characters, however they arrive.
#pragma once

#include <QLineEdit>

#include <functional>

namespace vek {

/// Typed keys, pasted text, dropped text and text from an input method pass one filter, character by
/// character; a refused character is left out, the others go in. Text set from code is not filtered. Getting
/// the focus selects the whole text, by mouse too. Navigation, deletion and the clipboard keys work as in
/// any line of text; the undo keys are the window's where it has some.
class KeyFilteredLineEdit : public QLineEdit {
    Q_OBJECT

  public:
    /// Decides on one character. `rest` is the text as it will be without it: what the insertion replaces is
    /// already gone, characters accepted before it in the same insertion are already there (at the end).
    using CharacterFilter = std::function<bool(QChar character, const QString& rest)>;

    explicit KeyFilteredLineEdit(CharacterFilter filter, QWidget* parent = nullptr);

    /// Shows a text that did not come from the user: undo does not reach back behind it.
    void SetFresh(const QString& text);
    /// Raises Left() for a box that keeps the focus: what was typed counts from now on.
    void Finish() { Q_EMIT Left(); }
    /// Tells the user something about what was typed, below the box.
    void ShowHint(const QString& text);

  public Q_SLOTS:
    /// Inserts the clipboard's text through the filter; the edit menu and the paste keys come here.
    void paste();

  Q_SIGNALS:
    /// A key that makes a character (Backspace and Enter too) or a foreign text arrived; it has not been
    /// checked yet.
    void KeyTyped();
    /// Enter was pressed. The key goes no further, so it never reaches a dialog's default button.
    void EnterPressed();
    /// The box lost the focus or is finished all the same; not raised for a menu that opens over it or
    /// another window that comes to the front.
    void Left();
    /// A mouse button was pressed in the box.
    void MousePressed();

  protected:
    bool event(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    QString Accepted(const QString& arriving) const;
    void InsertFiltered(const QString& arriving);

    CharacterFilter filter_;
    bool entering_ = false; ///< the mouse press that gave the focus has not been released or dragged yet
    QPoint entryPoint_;
};

} // namespace vek
