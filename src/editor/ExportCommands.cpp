#include "editor/ExportCommands.h"

#include "base/Bytes.h"
#include "base/DurableFile.h"
#include "base/Errors.h"
#include "controls/TextConversion.h"
#include "dialogs/Dialogs.h"
#include "dialogs/PrintingOptionsForm.h"
#include "editing/ModelView.h"
#include "editor/OverviewPrinter.h"
#include "editor/ReportPrinter.h"
#include "inspect/ConfigCheck.h"
#include "link/DownloadImage.h"
#include "model/Names.h"
#include "model/ProgramState.h"
#include "pages/OverviewCells.h"
#include "reports/AddressList.h"
#include "reports/DeviceExport.h"
#include "reports/ExportNames.h"
#include "reports/TextReport.h"

#include <QDate>
#include <QLocale>
#include <QPrinter>

namespace vek {

namespace {

FileKind KindOf(const QString& filter, std::string_view suffix) { return {filter, FromConstant(suffix)}; }

} // namespace

ExportCommands::ExportCommands(QWidget& window, ModelView& view, Dialogs& dialogs)
    : QObject(&window), window_(window), view_(view), dialogs_(dialogs) {}

std::string ExportCommands::ChosenReport(bool forPrinting) {
    PrintingOptionsForm form(options_, forPrinting, &window_);
    form.exec();
    if (form.OptionsCancelled())
        return {};
    options_ = form.Options();
    return BuildReport(Config, options_, {view_.Output(), view_.LinkGroups()});
}

void ExportCommands::TextCommand() {
    const std::string report = ChosenReport(false);
    if (!report.empty())
        WriteExport(AsBytes(report), KindOf(tr("Text Document (*.TXT)"), textSuffix), ExistingTail::Drop);
}

void ExportCommands::PrintCommand() {
    const std::string report = ChosenReport(true);
    if (report.empty())
        return;
    Print([&](QPrinter& printer, const PrintHeader& header) {
        return PrintReport(printer, LinesFromBytes(report), header);
    });
}

void ExportCommands::PrintOverviewCommand() {
    Print([](QPrinter& printer, const PrintHeader& header) {
        const Names names(Config.Notes.Trimmed());
        return PrintOverview(printer, MakeOverviewContent(Config, names, CheckConfig({Config, {}})), header);
    });
}

void ExportCommands::Print(const std::function<bool(QPrinter&, const PrintHeader&)>& print) {
    const std::string shown = ShownFileName();
    const QString name = shown.empty() ? tr("New configuration") : QString::fromStdString(shown);
    const QString today = QLocale().toString(QDate::currentDate(), QLocale::ShortFormat);
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(name);
    if (dialogs_.ChoosePrinter(&window_, printer) && !print(printer, {name, today}))
        Q_EMIT Failed(tr("Nothing was printed: the printer could not be started"));
}

void ExportCommands::CsvCommand() {
    const Answer unused =
        dialogs_.AskYesNo(&window_, tr("Include Unused?"), tr("Do you wish to include unused adresses?"));
    const std::string list = BuildAddressList(
        Config, view_.Output(), {.IncludeUnusedAddresses = unused == Answer::Yes, .CsvSeparator = true});
    if (list.empty()) {
        dialogs_.Message(&window_, MessageIcon::Exclamation, tr("Sorry"), tr("Nothing to export"));
        return;
    }
    WriteExport(AsBytes(list), KindOf(tr("Excel comma delimited file (*.CSV)"), addressListSuffix),
                ExistingTail::Drop);
}

void ExportCommands::ExportCommand() {
    const DownloadImage image = BuildImageFromConfig(view_);
    const auto bytes = BuildDeviceExport(std::as_bytes(std::span(image.Buffer)), image.Length - 1);
    WriteExport(bytes, KindOf(tr("Vekule Export File (*.VEX)"), deviceExportSuffix), ExistingTail::Keep);
}

void ExportCommands::WriteExport(std::span<const std::byte> bytes, const FileKind& kind, ExistingTail tail) {
    const std::string proposed = ProposedExportName(CurrentFileName, kind.Suffix.toStdString());
    const auto name = dialogs_.SaveFile(&window_, QString::fromStdString(proposed), kind);
    if (!name || name->isEmpty())
        return;
    try {
        WriteFileDurably(name->toStdString(), bytes, tail);
    } catch (const FileError& error) {
        Q_EMIT Failed(tr("Nothing was written: ") + QString::fromStdString(error.what()));
        return;
    }
    dialogs_.Message(&window_, MessageIcon::None, tr("Successful"),
                     *name + tr(" has been successfully exported"));
}

DownloadImage BuildImageFromConfig(ModelView& view) {
    const EncodedImage encoded = EncodeImage(Config);
    view.TakeClamped(encoded.Config);
    return encoded.Image;
}

} // namespace vek
