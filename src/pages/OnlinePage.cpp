#include "pages/OnlinePage.h"

#include "pages/PortRows.h"

#include <QCheckBox>
#include <QFontDatabase>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>

namespace vek {

namespace {

constexpr PortRowNames rowNames = {"OnlinePort", "VekType", "Blanking", "Blanking1", true};
constexpr int mostDiagnosticLines = 5000;

} // namespace

OnlinePage::OnlinePage(std::function<QStringList()> deviceNames, QWidget* parent) : QWidget(parent) {
    auto* frame = new QGroupBox(tr("Matrix Control"), this);
    Ports = new PortRows(rowNames, std::move(deviceNames), frame);
    OnlineSearch = new QPushButton(tr("Search for Matrix Vek"), frame);
    OnlineSearch->setObjectName(QStringLiteral("OnlineSearch"));
    OnlineCancel = new QPushButton(tr("Disconnect"), frame);
    OnlineCancel->setObjectName(QStringLiteral("OnlineCancel"));
    OnlineCancel->setVisible(false);
    showDiagnostics = new QCheckBox(tr("Show diagnostics"), frame);
    showDiagnostics->setObjectName(QStringLiteral("ShowDiagnostics"));
    Text2 = new QPlainTextEdit(frame);
    Text2->setObjectName(QStringLiteral("Text2"));
    Text2->setAccessibleName(tr("Diagnostics"));
    Text2->setReadOnly(true);
    Text2->setUndoRedoEnabled(false);
    Text2->setMaximumBlockCount(mostDiagnosticLines);
    Text2->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    Text2->setVisible(false);
    connect(showDiagnostics, &QCheckBox::toggled, Text2, &QWidget::setVisible);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(OnlineSearch);
    buttons->addWidget(OnlineCancel);
    buttons->addStretch(1);
    buttons->addWidget(showDiagnostics);
    auto* column = new QVBoxLayout(frame);
    column->addWidget(Ports);
    column->addLayout(buttons);
    column->addWidget(Text2, 1);
    column->addStretch(0);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame);
}

bool OnlinePage::DiagnosticsOn() const { return showDiagnostics->isChecked(); }

void OnlinePage::AppendDiagnostics(const QString& text) {
    QTextCursor end(Text2->document());
    end.movePosition(QTextCursor::End);
    QString lines = text;
    lines.remove(QLatin1Char('\r'));
    end.insertText(lines);
    Text2->setTextCursor(end);
    Text2->ensureCursorVisible();
}

} // namespace vek
