#include "editor/ReportPrinter.h"

#include "support/PrintedText.h"
#include "support/TestData.h"

#include <QPrinter>

#include <gtest/gtest.h>

using namespace vek;
using namespace vek::test;
using namespace Qt::StringLiterals;

TEST(ReportPrinter, WrapsLongLinesAtBlanks) {
    const std::pair<const char*, QStringList> cases[] = {
        {"", {QString()}},
        {"short", {u"short"_s}},
        {"one two three", {u"one two"_s, u"three"_s}},
        {"abcdefghijklmn", {u"abcdefghij"_s, u"klmn"_s}},
        {"ab            ", {u"ab"_s}},
        {"1\tb", {u"1       b"_s}},
        {"a\n\nb", {u"a"_s, QString(), u"b"_s}},
        {"a bcdefghijklm", {u"a bcdefghi"_s, u"jklm"_s}},
        {"  one two three", {u"  one two"_s, u"  three"_s}},
        {"       abcdefgh", {u"       abc"_s, u"   defgh"_s}},
    };
    for (const auto& [text, lines] : cases)
        EXPECT_EQ(WrapLines(QString::fromLatin1(text), 10), lines) << text;
}

TEST(ReportPrinter, PagesBreakBeforeHeadingsAndRepeatThem) {
    const auto pages = [](const char* text, int linesPerPage) {
        QStringList joined;
        for (const QStringList& page : Paginate(QString::fromLatin1(text).split(u'\n'), linesPerPage))
            joined += page.join(u'|');
        return joined;
    };
    const char* modes =
        "Mode 1\n    Output 1\n        a\n        b\n    Output 2\n        c\n\nMode 2 is unused\n"
        "\nInput trims\n    Input 0\n    Input 1";
    EXPECT_EQ(pages(modes, 100).size(), 1);
    EXPECT_EQ(pages(modes, 5), QStringList({u"Mode 1|    Output 1|        a|        b"_s,
                                            u"Mode 1 (continued)|    Output 2|        c||Mode 2 is unused"_s,
                                            u"Input trims|    Input 0|    Input 1"_s}));
    EXPECT_EQ(pages(modes, 3),
              QStringList({u"Mode 1|    Output 1|        a"_s,
                           u"Mode 1 (continued)|    Output 1 (continued)|        b"_s,
                           u"Mode 1 (continued)|    Output 2|        c"_s, u"Mode 2 is unused|"_s,
                           u"Input trims|    Input 0|    Input 1"_s}));
    EXPECT_EQ(pages("RS232 control for Modes\nMode 1\nMode 2\nRS232 control for x\ny", 4),
              QStringList({u"RS232 control for Modes|Mode 1|Mode 2"_s, u"RS232 control for x|y"_s}));
    EXPECT_EQ(pages("a\n b\n  c\n   d", 1).size(), 4) << "a page is never empty";
}

TEST(ReportPrinter, PagesReadBackFromAPdf) {
    const TemporaryFolder folder;
    const QString path = QString::fromStdString(folder.Path("report.pdf"));
    QString text;
    for (int line = 1; line <= 200; ++line)
        text += u"\nLine %1 "_s.arg(line);
    text += u"\n"_s + u"word "_s.repeated(60) + u"end"_s;
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path);
    ASSERT_TRUE(PrintReport(printer, text, {u"rack.VMC"_s, u"21 Nov 2026"_s}));

    const QString read = PrintedText(path);
    for (int line = 1; line <= 200; ++line)
        EXPECT_TRUE(read.contains(u"Line %1\n"_s.arg(line))) << line;
    EXPECT_EQ(read.count(u"word"_s), 60) << "nothing is cut off";
    EXPECT_TRUE(read.contains(u"end"_s));
    const auto pages = read.count(u'\f');
    EXPECT_GE(pages, 3);
    EXPECT_EQ(read.count(u"rack.VMC"_s), pages);
    EXPECT_EQ(read.count(u"21 Nov 2026"_s), pages);
    EXPECT_TRUE(read.contains(u"Page %1 of %1"_s.arg(pages)));
}

TEST(ReportPrinter, AnUnusablePrinterIsReported) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(u"/no/such/folder/report.pdf"_s);
    EXPECT_FALSE(PrintReport(printer, u"x"_s, {}));
}
