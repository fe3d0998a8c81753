#include "pages/Selectors.h"

#include "controls/TextConversion.h"

#include <QContextMenuEvent>
#include <QGroupBox>
#include <QMouseEvent>
#include <QRadioButton>
#include <QVBoxLayout>

namespace vek {

using namespace Qt::StringLiterals;

Selectors::Selectors(QWidget* parent) : QWidget(parent) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(MakeFrame(tr("Mode"), "Modes", Modes, &Selectors::ModeChosen));
    layout->addWidget(MakeFrame(tr("Output"), "UsePanel", UsePanel, &Selectors::OutputChosen));
    layout->addStretch(1);
}

QWidget* Selectors::MakeFrame(const QString& title, std::string_view name,
                              std::array<QRadioButton*, 8>& options, ChosenSignal chosen) {
    auto* frame = new QGroupBox(title, this);
    auto* column = new QVBoxLayout(frame);
    column->setSpacing(2);
    for (std::size_t i = 0; i < options.size(); ++i) {
        const QString number = QString::number(i + 1);
        auto* option = new QRadioButton(number, frame);
        option->setObjectName(ElementName(name, i));
        option->setAccessibleName(title + u' ' + number);
        option->installEventFilter(this);
        connect(option, &QRadioButton::toggled, this, [this, chosen](bool on) {
            if (on)
                Q_EMIT(this->*chosen)();
        });
        options[i] = option;
        column->addWidget(option);
    }
    options[0]->setChecked(true);
    return frame;
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
