#include "pages/Selectors.h"

#include "controls/LinkGroupLook.h"
#include "controls/TextConversion.h"

#include <QContextMenuEvent>
#include <QGroupBox>
#include <QMouseEvent>
#include <QVBoxLayout>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

SelectorState StateOf(const ModeRecord& mode, std::size_t output, const Names& names) {
    const std::int16_t group = mode.LinkGroup[output];
    const bool grouped = group != 0 && IsValidLinkGroup(group);
    const std::size_t leader = grouped ? LinkLeader(mode, group) : output;
    const bool used = !mode.OutputPanels[leader].PanelInputs.Trimmed().empty();
    QString words = used ? QObject::tr("in use in this mode") : QObject::tr("no inputs in this mode");
    if (grouped)
        words += QObject::tr(", link group %1").arg(GroupLetter(group));
    if (leader != output)
        words += QObject::tr(", follows %1").arg(NumberAndName(names, NameKind::Output, leader));
    return {NameOf(names, NameKind::Output, output), used, grouped ? group : 0, words};
}

} // namespace

Selectors::Selectors(QWidget* parent) : QWidget(parent) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(MakeFrame(tr("Mode"), "Modes", Modes, &Selectors::ModeChosen));
    layout->addWidget(MakeFrame(tr("Output"), "UsePanel", UsePanel, &Selectors::OutputChosen));
    layout->addStretch(1);
}

QWidget* Selectors::MakeFrame(const QString& title, std::string_view name,
                              std::array<SelectorOption*, 8>& options, ChosenSignal chosen) {
    auto* frame = new QGroupBox(title, this);
    auto* column = new QVBoxLayout(frame);
    column->setSpacing(0);
    for (std::size_t i = 0; i < options.size(); ++i) {
        auto* option = new SelectorOption(title, i, frame);
        option->setObjectName(ElementName(name, i));
        option->installEventFilter(this);
        connect(option, &SelectorOption::toggled, this, [this, chosen](bool on) {
            if (on)
                Q_EMIT(this->*chosen)();
        });
        options[i] = option;
        column->addWidget(option);
    }
    options[0]->setChecked(true);
    return frame;
}

void Selectors::ShowStates(const MatrixConfig& config, std::size_t mode, const Names& names) {
    for (std::size_t i = 0; i < modeCount; ++i) {
        const bool used = IsUsedMode(config.Modes[i]);
        Modes[i]->ShowState({.Name = NameOf(names, NameKind::Mode, i),
                             .Used = used,
                             .Words = used ? tr("in use") : tr("not in use: no output has inputs")});
    }
    for (std::size_t i = 0; i < outputCount; ++i)
        UsePanel[i]->ShowState(StateOf(config.Modes[mode], i, names));
}

void Selectors::SetOutputConcerned(bool concerned) {
    for (SelectorOption* option : UsePanel)
        option->SetConcerned(concerned);
}

bool Selectors::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress) {
        const auto* press = static_cast<QMouseEvent*>(event);
        if (press->button() == Qt::RightButton) {
            RequestMenu(watched, press->globalPosition().toPoint());
            return true;
        }
    }
    if (event->type() == QEvent::ContextMenu) {
        const auto* request = static_cast<QContextMenuEvent*>(event);
        // The mouse has been served by its press already.
        if (request->reason() == QContextMenuEvent::Keyboard)
            RequestMenu(watched, request->globalPos());
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void Selectors::RequestMenu(QObject* option, const QPoint& globalPosition) {
    for (std::size_t i = 0; i < Modes.size(); ++i) {
        if (Modes[i] == option)
            Q_EMIT ModeMenuRequested(i, globalPosition);
        if (UsePanel[i] == option)
            Q_EMIT OutputMenuRequested(i, globalPosition);
    }
}

} // namespace vek
