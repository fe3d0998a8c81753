#include "pages/OnlinePage.h"

#include "controls/LayoutHelpers.h"
#include "pages/PortRows.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr PortRowNames rowNames = {"OnlinePort", "VekType", "OnlineFinding", "Blanking", "Blanking1", true};
constexpr int mostDiagnosticLines = 5000;

} // namespace

OnlinePage::OnlinePage(const PortSources& ports, QWidget* parent) : QWidget(parent) {
    auto* frame = new QGroupBox(tr("Matrix Control"), this);
    Ports = new PortRows(rowNames, ports, frame);
    OnlineSearch = new QPushButton(tr("Search for Matrix Vek"), frame);
    OnlineSearch->setObjectName(u"OnlineSearch"_s);
    OnlineCancel = new QPushButton(tr("Disconnect"), frame);
    OnlineCancel->setObjectName(u"OnlineCancel"_s);
    OnlineCancel->setVisible(false);
    SaveTranscript = new QPushButton(tr("Save transcript ..."), frame);
    SaveTranscript->setObjectName(u"SaveTranscript"_s);
    SaveTranscript->setToolTip(tr("Every packet of the session with its time and its answer, as a text"));
    SaveTranscript->setEnabled(false);
    WhatIsWrong = new QPushButton(tr("What is wrong?"), frame);
    WhatIsWrong->setObjectName(u"WhatIsWrong"_s);
    WhatIsWrong->setVisible(false);
    showDiagnostics_ = new QCheckBox(tr("Show diagnostics"), frame);
    showDiagnostics_->setObjectName(u"ShowDiagnostics"_s);
    Text2_ = new QPlainTextEdit(frame);
    Text2_->setObjectName(u"Text2"_s);
    Text2_->setAccessibleName(tr("Diagnostics"));
    Text2_->setReadOnly(true);
    Text2_->setUndoRedoEnabled(false);
    Text2_->setMaximumBlockCount(mostDiagnosticLines);
    Text2_->setVisible(false);
    connect(showDiagnostics_, &QCheckBox::toggled, this, [this](bool shown) {
        // The second font of the program is loaded for those who look.
        Text2_->setFont(FixedFont(*this));
        Text2_->setVisible(shown);
    });

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(OnlineSearch);
    buttons->addWidget(OnlineCancel);
    buttons->addWidget(WhatIsWrong);
    buttons->addStretch(1);
    buttons->addWidget(showDiagnostics_);
    buttons->addWidget(SaveTranscript);
    SearchHint = PortRows::MakeSearchHint(frame);
    auto* column = new QVBoxLayout(frame);
    column->addWidget(Ports);
    column->addLayout(buttons);
    column->addWidget(SearchHint);
    column->addWidget(Text2_, 1);
    column->addStretch(0);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame);
}

bool OnlinePage::DiagnosticsOn() const { return showDiagnostics_->isChecked(); }

void OnlinePage::AppendDiagnostics(const QString& text) {
    QTextCursor end(Text2_->document());
    end.movePosition(QTextCursor::End);
    QString lines = text;
    lines.remove(u'\r');
    end.insertText(lines);
    Text2_->setTextCursor(end);
    Text2_->ensureCursorVisible();
}

} // namespace vek
