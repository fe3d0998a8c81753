// TEXT, PRINT, CSV and EXPORT.
#pragma once

#include "model/ReportOptions.h"

#include <QObject>
#include <QString>

#include <cstddef>
#include <functional>
#include <span>
#include <string>

class QPrinter;
class QWidget;

namespace vek {

class Dialogs;
class ModelView;
struct DownloadImage;
struct FileKind;
struct PrintHeader;
enum class ExistingTail;

class ExportCommands : public QObject {
    Q_OBJECT

  public:
    /// All must outlive this object; `window` is the parent of the boxes.
    ExportCommands(QWidget& window, ModelView& view, Dialogs& dialogs);

    void TextCommand();
    void PrintCommand();
    /// The overview of modes and outputs, on one page.
    void PrintOverviewCommand();
    void CsvCommand();
    /// The device export. Throws the run-time errors of the image.
    void ExportCommand();

  Q_SIGNALS:
    /// Why nothing was written; there is no box for it.
    void Failed(const QString& reason);

  private:
    /// The report with the sections that the user chooses; empty when cancelled or when none was chosen.
    std::string ChosenReport(bool forPrinting);
    /// Lets the user choose a printer, which `print` uses; false from it when that cannot be used.
    void Print(const std::function<bool(QPrinter&, const PrintHeader&)>& print);
    void WriteExport(std::span<const std::byte> bytes, const FileKind& kind, ExistingTail tail);

    QWidget& window_;
    ModelView& view_;
    Dialogs& dialogs_;
    PrintingOptions options_; ///< the last accepted choice
};

/// Builds the download image from Config and stores what the build adjusted in Config and the view. Throws
/// the run-time errors of the image, with Config as it was.
DownloadImage BuildImageFromConfig(ModelView& view);

} // namespace vek
