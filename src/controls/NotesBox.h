// The notes: plain text that always fits the fixed text of the configuration.
#pragma once

#include <QPlainTextEdit>

#include <string>
#include <string_view>

namespace vek {

/// Takes only characters that Windows-1252 has (pasted others become "?") and no more than `notesLength`
/// bytes, line ends included. What does not fit is refused whole, when typed as when pasted, and a hint says
/// why. Lines that are not edited keep their stored line ends. Undo is the window's.
class NotesBox : public QPlainTextEdit {
    Q_OBJECT

  public:
    explicit NotesBox(QWidget* parent = nullptr);

    /// The text as the configuration stores it: Windows-1252, new lines separated by CR LF.
    const std::string& Bytes() const { return bytes_; }
    /// Shows another text.
    void SetBytes(std::string_view bytes);
    /// An edit that the user made elsewhere: Edited() follows, and the cursor stays where it is in the text.
    /// No more than `notesLength` bytes.
    void Replace(const std::string& bytes);

    /// Bytes left of `notesLength`.
    int Remaining() const;

  Q_SIGNALS:
    /// The user changed the text; not raised by SetBytes().
    void Edited();

  protected:
    bool event(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;

  private:
    /// The stored form of the text with `text` in place of the selection.
    std::string BytesWith(const QString& text) const;
    /// Whether the text may replace the selection; if not, a hint says why.
    bool Fits(const QString& text);
    void Hint(const QString& text);
    void TextChanged();

    std::string bytes_;
    bool loading_ = false;
};

} // namespace vek
