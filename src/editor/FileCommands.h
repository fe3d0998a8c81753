// NEW, OPEN, SAVE and SAVEAS, the question about unsaved changes and the file named on the command line.
#pragma once

#include <QObject>
#include <QString>

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
    /// unnamed.
    void OpenFileAtStartup(QString commandLine);

    /// True when the caller may go on: nothing unsaved, saved now, or not to be saved.
    bool AskToSaveChanges();

  Q_SIGNALS:
    /// Why a file could not be read or written.
    void Failed(const QString& reason);

  private:
    void Read(const std::string& path, const std::string& nameAfterwards);
    void Write(const std::string& path);
    void FileFailed(const std::string& reason);

    QWidget& window_;
    ModelView& view_;
    Dialogs& dialogs_;
};

} // namespace vek
