// NEW, OPEN, SAVE and SAVEAS, the question about unsaved changes and the file named on the command line.
#pragma once

#include <QObject>
#include <QString>

#include <string>

class QWidget;

namespace vek {

class Dialogs;
class ModelView;

class FileCommands : public QObject {
    Q_OBJECT

  public:
    /// All must outlive this object; `window` is the parent of the boxes.
    FileCommands(QWidget& window, ModelView& view, Dialogs& dialogs);

    void NewCommand();
    void OpenFileCommand();
    /// Does nothing for a configuration without a name.
    void SaveCommand();
    void SaveAsCommand();

    /// Opens the file that the command line names, if it names an existing *.VMC. The configuration stays
    /// unnamed; SAVEAS proposes the file's own name. A path in the system's own bytes.
    void OpenFileAtStartup(const std::string& commandLine);
    /// The file that an unnamed configuration was read from, empty for a new one or one that has a name.
    const std::string& ReadFrom() const { return readFrom_; }

    /// True when the caller may go on: nothing unsaved, saved now, or not to be saved.
    bool AskToSaveChanges();

  Q_SIGNALS:
    /// Why a file was not read or written.
    void Failed(const QString& reason);

  private:
    void Read(const std::string& path, const std::string& nameAfterwards);
    void Forget();
    /// Where a file dialog starts.
    QString ProposedName() const;
    void Write(const std::string& path);
    void FileFailed(const std::string& reason);

    QWidget& window_;
    ModelView& view_;
    Dialogs& dialogs_;
    std::string readFrom_;
};

} // namespace vek
