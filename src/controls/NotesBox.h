// The notes: plain text that always fits the fixed text of the configuration.
#pragma once

#include <QPlainTextEdit>

#include <string>
#include <string_view>

namespace vek {

/// Takes only characters that Windows-1252 has (pasted others become "?") and no more than `notesLength`
/// bytes, a line end counting two. What does not fit is refused when typed and cut when pasted.
class NotesBox : public QPlainTextEdit {
    Q_OBJECT

  public:
    explicit NotesBox(QWidget* parent = nullptr);

    /// The text as the configuration stores it: Windows-1252, lines separated by CR LF.
    std::string Bytes() const;
    void SetBytes(std::string_view bytes);

    /// Bytes left of `notesLength`.
    int Remaining() const;

  Q_SIGNALS:
    /// The user changed the text; not raised by SetBytes().
    void Edited();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;

  private:
    /// The part of a text that may replace the selection.
    QString Acceptable(const QString& text, bool replaceUnknown) const;
    void TextChanged();
    /// Cuts a text that came in past the other checks, so that nothing shown is missing in the file.
    void CutToLength();

    bool loading_ = false;
};

} // namespace vek
