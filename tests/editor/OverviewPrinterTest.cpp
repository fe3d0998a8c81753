#include "editor/OverviewPrinter.h"

#include "inspect/ConfigCheck.h"
#include "pages/OverviewCells.h"
#include "support/PrintedText.h"
#include "support/TestData.h"

#include <QPrinter>

#include <gtest/gtest.h>

using namespace vek;
using namespace vek::test;
using namespace Qt::StringLiterals;

TEST(OverviewPrinter, PrintsOneLandscapePage) {
    const TemporaryFolder folder;
    const QString path = QString::fromStdString(folder.Path("overview.pdf"));
    MatrixConfig config;
    for (ModeRecord& mode : config.Modes)
        mode = DefaultMode();
    const Names names("Mode 8: Cleaning\r\nOutput 2: Foyer");
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path);
    const OverviewContent content = MakeOverviewContent(config, names, CheckConfig({config, {}}));
    ASSERT_TRUE(PrintOverview(printer, content, {u"rack.VMC"_s, u"21 Nov 2026"_s}));
    EXPECT_EQ(printer.pageLayout().orientation(), QPageLayout::Landscape);

    const QString read = PrintedText(path);
    EXPECT_EQ(read.count(u'\f'), 1);
    for (const char* text : {"Overview of rack.VMC", "21 Nov 2026", "Cleaning", "Foyer", "start level"})
        EXPECT_TRUE(read.contains(QLatin1StringView(text))) << text << '\n' << read.toStdString();
    EXPECT_EQ(read.count(u"OFF"_s), 64);
}
