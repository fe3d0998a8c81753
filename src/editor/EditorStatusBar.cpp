#include "editor/EditorStatusBar.h"

#include "controls/ElidedLabel.h"
#include "controls/LayoutHelpers.h"
#include "model/ProgramState.h"
#include "model/VekNetAddresses.h"

#include <QMouseEvent>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

// Of the online state or the last programming: the name of a device leaves room for the file's.
constexpr int stateCharacters = 84;
constexpr int besideMessage = 40; // at least, while a passing message needs the room
constexpr int aroundMessage = 8;  // gaps and the grip, in characters

/// Labels are laid out anew when their text is set, so an unchanged text is left alone; false for that.
bool SetText(QLabel* label, const QString& text) {
    if (label->text() == text)
        return false;
    label->setText(text);
    return true;
}

} // namespace

EditorStatusBar::EditorStatusBar(QWidget* parent) : QStatusBar(parent) {
    file_ = AddField(u"StatusFile"_s, 1, true);
    changes_ = AddField(u"StatusChanges"_s, 0, false);
    problems_ = AddField(u"StatusProblems"_s, 0, false);
    base_ = AddField(u"StatusBase"_s, 0, false);
    link_ = AddField(u"StatusLink"_s, 0, true);
    for (QLabel* opening : {changes_, problems_}) {
        opening->installEventFilter(this);
        opening->setCursor(Qt::PointingHandCursor);
    }
    changes_->setToolTip(tr("Show what changed (F7)"));
    problems_->setToolTip(tr("Show the problems (F8)"));
    connect(this, &QStatusBar::messageChanged, this, [this](const QString& passing) {
        SetPlainToolTip(*this, passing);
        MakeRoom();
    });
    MakeRoom();
}

bool EditorStatusBar::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        if (watched == changes_)
            Q_EMIT ChangesClicked();
        else
            Q_EMIT ProblemsClicked();
    }
    return QStatusBar::eventFilter(watched, event);
}

void EditorStatusBar::resizeEvent(QResizeEvent* event) {
    QStatusBar::resizeEvent(event);
    MakeRoom();
}

void EditorStatusBar::MakeRoom() {
    const int character = fontMetrics().averageCharWidth();
    const int state = qMin(link_->sizeHint().width(), character * stateCharacters);
    const QString passing = currentMessage();
    int missing = 0;
    if (!passing.isEmpty()) {
        missing = fontMetrics().horizontalAdvance(passing) + character * aroundMessage + state - width();
        for (const QLabel* field : {base_, problems_, changes_})
            missing += field->sizeHint().width();
    }
    // The state is what the message may be about; what can be seen elsewhere gives way first.
    for (QLabel* field : {base_, problems_, changes_}) {
        field->setVisible(missing <= 0);
        if (missing > 0)
            missing -= field->sizeHint().width();
    }
    const int least = passing.isEmpty() ? state : qMin(state, character * besideMessage);
    link_->setMaximumWidth(qMax(state - qMax(missing, 0), least));
}

void EditorStatusBar::ShowProblems(const QString& text) { SetText(problems_, text); }

QLabel* EditorStatusBar::AddField(const QString& name, int stretch, bool elided) {
    auto* field = elided ? new ElidedLabel(QString(), this) : new QLabel(this);
    field->setObjectName(name);
    field->setTextFormat(Qt::PlainText);
    field->setContentsMargins(6, 0, 6, 0);
    // Only the file name gives way to a passing message.
    if (stretch > 0)
        addWidget(field, stretch);
    else
        addPermanentWidget(field);
    return field;
}

void EditorStatusBar::ShowFile(const std::string& readFrom) {
    const std::string& path = CurrentFileName.empty() ? readFrom : CurrentFileName;
    const QString name = QString::fromStdString(ShownFileName());
    if (name.isEmpty())
        SetText(file_, tr("New configuration"));
    else
        SetText(file_, CurrentFileName.empty() ? tr("%1, not named yet: Save As keeps it").arg(name) : name);
    SetPlainToolTip(*file_, QString::fromStdString(path));
}

void EditorStatusBar::ShowState(const std::string& readFrom, const QString& onlinePort, const QString& left) {
    ShowFile(readFrom);
    SetText(changes_, ConfigDiffers() ? tr("Unsaved changes") : tr("No unsaved changes"));
    SetText(base_, tr("Base %1-%2").arg(Config.VekNetBase).arg(LastVekNetAddress(Config.VekNetBase)));
    const QString offline = left.isEmpty() ? tr("Offline") : left;
    const bool linkChanged =
        SetText(link_, onlinePort.isEmpty() ? offline : tr("Online on %1").arg(onlinePort));
    SetPlainToolTip(*link_, onlinePort.isEmpty() ? left : onlinePort);
    if (linkChanged)
        MakeRoom();
}

} // namespace vek
