#include "editor/ReportPrinter.h"

#include "support/TestData.h"

#include <QPrinter>
#include <QProcess>

#include <gtest/gtest.h>

using namespace vek;
using namespace vek::test;

TEST(ReportPrinter, WrapsLongLinesAtBlanks) {
    const struct {
        const char* text;
        QStringList lines;
    } cases[] = {
        {"", {QString()}},
        {"short", {QStringLiteral("short")}},
        {"one two three", {QStringLiteral("one two"), QStringLiteral("three")}},
        {"abcdefghijklmn", {QStringLiteral("abcdefghij"), QStringLiteral("klmn")}},
        {"ab            ", {QStringLiteral("ab")}},
        {"1\tb", {QStringLiteral("1       b")}},
        {"a\n\nb", {QStringLiteral("a"), QString(), QStringLiteral("b")}},
        {"a bcdefghijklm", {QStringLiteral("a bcdefghi"), QStringLiteral("jklm")}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(WrapLines(QString::fromLatin1(c.text), 10), c.lines) << c.text;
}

TEST(ReportPrinter, PagesReadBackFromAPdf) {
    const TemporaryFolder folder;
    const QString path = QString::fromStdString(folder.Path("report.pdf"));
    QString text;
    for (int line = 1; line <= 200; ++line)
        text += QStringLiteral("\nLine %1 ").arg(line);
    text += QStringLiteral("\n") + QStringLiteral("word ").repeated(60) + QStringLiteral("end");
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path);
    ASSERT_TRUE(PrintReport(printer, text, QStringLiteral("rack.VMC")));

    QProcess reader;
    reader.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
    ASSERT_TRUE(reader.waitForFinished());
    const QString read = QString::fromUtf8(reader.readAllStandardOutput());
    for (int line = 1; line <= 200; ++line)
        EXPECT_TRUE(read.contains(QStringLiteral("Line %1\n").arg(line))) << line;
    EXPECT_EQ(read.count(QStringLiteral("word")), 60) << "nothing is cut off";
    EXPECT_TRUE(read.contains(QStringLiteral("end")));
    const auto pages = read.count(QLatin1Char('\f'));
    EXPECT_GE(pages, 3);
    EXPECT_EQ(read.count(QStringLiteral("rack.VMC")), pages);
    EXPECT_TRUE(read.contains(QStringLiteral("Page %1 of %1").arg(pages)));
}

TEST(ReportPrinter, AnUnusablePrinterIsReported) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QStringLiteral("/no/such/folder/report.pdf"));
    EXPECT_FALSE(PrintReport(printer, QStringLiteral("x"), QString()));
}
