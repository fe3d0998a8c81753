// What a printed document says.
#pragma once

#include <QProcess>

#include <gtest/gtest.h>

namespace vek::test {

/// The text of a PDF as it stands on its pages.
inline QString PrintedText(const QString& path) {
    QProcess reader;
    reader.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
    EXPECT_TRUE(reader.waitForFinished());
    return QString::fromUtf8(reader.readAllStandardOutput());
}

} // namespace vek::test
