// Everything that stops the user with a box: one interface, implemented with Qt's dialogs and, in tests, by a
// script.
#pragma once

#include <QString>

#include <functional>
#include <memory>
#include <optional>

class QPrinter;
class QWidget;

namespace vek {

enum class MessageIcon { None, Exclamation };
enum class Answer { Yes, No, Cancel };

/// A box that is open while its caller goes on. Destroying it closes it without an answer.
class OpenBox {
  public:
    virtual ~OpenBox() = default;
};
/// Told from the event loop; a message is answered with Yes.
using BoxClosed = std::function<void(Answer)>;

/// A kind of file as a file dialog offers it.
struct FileKind {
    QString Filter; ///< Qt's form: "Vorn Matrix File (*.VMC)"
    QString Suffix; ///< added to a name typed without one: "VMC"
};

class Dialogs {
  public:
    virtual ~Dialogs() = default;

    // Boxes that a command waits for.

    /// A message with an OK button.
    virtual void Message(QWidget* parent, MessageIcon icon, const QString& title, const QString& text) = 0;

    /// A question, and below it what it is about, if that needs saying. Closing the box counts as No, or as
    /// Cancel where there is one.
    virtual Answer AskYesNo(QWidget* parent, const QString& title, const QString& text,
                            Answer defaultAnswer = Answer::Yes, const QString& about = {}) = 0;
    virtual Answer AskYesNoCancel(QWidget* parent, const QString& title, const QString& text) = 0;

    // Boxes that block their parent's window, unless said otherwise, but not their caller.

    /// `other` is the caption of a second button, which answers with No; none when it is empty. Such a box
    /// blocks nothing: what it tells of goes on being heard, and has to be stopped from the window.
    virtual std::unique_ptr<OpenBox> OpenMessage(QWidget* parent, MessageIcon icon, const QString& title,
                                                 const QString& text, const QString& other,
                                                 BoxClosed closed) = 0;
    virtual std::unique_ptr<OpenBox> OpenYesNo(QWidget* parent, const QString& title, const QString& text,
                                               Answer defaultAnswer, BoxClosed closed) = 0;

    // Dialogs that a command waits for.

    /// File names chosen by the user, nothing when cancelled. `startAt` is a proposed path or empty.
    virtual std::optional<QString> OpenFile(QWidget* parent, const QString& startAt,
                                            const FileKind& kind) = 0;
    virtual std::optional<QString> SaveFile(QWidget* parent, const QString& startAt,
                                            const FileKind& kind) = 0;

    /// Lets the user choose and set up a printer; false when cancelled.
    virtual bool ChoosePrinter(QWidget* parent, QPrinter& printer) = 0;
};

/// The real boxes. Owned by the program, lives until it ends.
Dialogs& ScreenDialogs();

} // namespace vek
