#include "endurance/Monkey.h"

#include "controls/FaderKnob.h"
#include "device/VekComms.h"
#include "editing/EditHistory.h"
#include "editor/CommandTable.h"
#include "editor/EditorToolBar.h"
#include "endurance/Trail.h"
#include "model/ProgramState.h"
#include "pages/PageTab.h"
#include "support/RecordText.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QDrag>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>

#include <algorithm>
#include <numeric>

namespace vek::test {

using namespace Qt::StringLiterals;

namespace {

std::string Named(const QWidget& widget) {
    return (widget.parentWidget() ? widget.parentWidget()->objectName().toStdString() + '/' : "") +
           widget.objectName().toStdString() + " (" + widget.metaObject()->className() + ')';
}

std::string At(const QPoint& point) {
    return " at " + std::to_string(point.x()) + ',' + std::to_string(point.y());
}

constexpr Qt::Key keys[] = {
    Qt::Key_Tab,    Qt::Key_Backtab, Qt::Key_Up,     Qt::Key_Down,      Qt::Key_Left,  Qt::Key_Right,
    Qt::Key_Home,   Qt::Key_End,     Qt::Key_PageUp, Qt::Key_PageDown,  Qt::Key_Space, Qt::Key_Return,
    Qt::Key_Escape, Qt::Key_Delete,  Qt::Key_Insert, Qt::Key_Backspace, Qt::Key_Menu,  Qt::Key_F1,
    Qt::Key_F10,    Qt::Key_Enter,   Qt::Key_1,      Qt::Key_2,         Qt::Key_0,     Qt::Key_Minus};
/// Pressed half of the time.
constexpr Qt::KeyboardModifiers modifierSets[] = {Qt::ShiftModifier,  Qt::ControlModifier,
                                                  Qt::AltModifier,    Qt::ControlModifier | Qt::ShiftModifier,
                                                  Qt::KeypadModifier, Qt::AltModifier | Qt::ShiftModifier};
constexpr std::string_view typed[] = {"1",    "0",      "7",     "-",   "+",  ".",   "12345678",
                                      "6.5",  "-96",    "99999", "abc", "\"", "dB ", ",",
                                      "\xe4", "Hall 1", "&",     "3",   "8",  "-3"};

} // namespace

const Monkey::Deed Monkey::deeds[] = {
    {32, &Monkey::Click},        {2, &Monkey::ClickTwice},      {5, &Monkey::Drag},
    {10, &Monkey::DragKnob},     {3, &Monkey::TurnWheel},       {12, &Monkey::PressKey},
    {4, &Monkey::TypeText},      {12, &Monkey::FillBox},        {6, &Monkey::PressShortcut},
    {7, &Monkey::ChangeTab},     {4, &Monkey::ChooseMode},      {2, &Monkey::RunCommand},
    {1, &Monkey::LeaveWindow},   {8, &Monkey::PassTime},        {1, &Monkey::ChangeDevice},
    {6, &Monkey::DoWhatLeadsOn}, {2, &Monkey::CloseWhatIsOpen},
};

Monkey::Monkey(unsigned seed, int events)
    : random_(seed),
      left_(events), services_{
                         .Boxes = boxes_,
                         .Store = store_,
                         .MakeSerialControl = [this] { return std::make_unique<LineControl>(NewLine()); },
                         .MakeTimer = [this] { return std::make_unique<LineTimer>(lines_.back().lock()); },
                         .PortNames =
                             [this] {
                                 QStringList names;
                                 for (int port = 1; port <= 4; ++port)
                                     names += present_.contains(port) ? u"ttyUSB%1"_s.arg(port) : QString();
                                 return names;
                             },
                         .StateFolder = boxes_.Path("state").toStdString()} {
    const std::string sample = boxes_.AnySample().toStdString();
    window_ = std::make_unique<CorvaneForm>(services_, Below(2) != 0 ? sample : std::string());
    window_->FinishStart();
    tabs_ = window_->findChild<QTabWidget*>(u"SSTab1"_s);
    window_->show();
    window_->activateWindow();
    window_->Timer4_Tick();
    start_ = RecordText(Config);
    // Undo ends where a configuration was created or opened.
    connect(window_->findChild<EditHistory*>(), &EditHistory::Begun, this,
            [this] { start_ = RecordText(Config); });
    qApp->installEventFilter(this);
}

Monkey::~Monkey() = default;

std::shared_ptr<SimulatedLine> Monkey::NewLine() {
    std::erase_if(lines_, [](const auto& line) { return line.expired(); });
    auto line = std::make_shared<SimulatedLine>([this](const DeviceEvent& event) { return Deliver(event); });
    line->Port.Present = present_;
    lines_.push_back(line);
    return line;
}

Delivery Monkey::Deliver(const DeviceEvent& event) {
    static const std::map<DeviceEventKind, const char*> names = {
        {DeviceEventKind::Search, "search"},         {DeviceEventKind::Block, "block"},
        {DeviceEventKind::OnlineFind, "find"},       {DeviceEventKind::OnlineRestart, "online restart"},
        {DeviceEventKind::Programmed, "programmed"}, {DeviceEventKind::Volume, "volume"},
        {DeviceEventKind::Route, "route"},
    };
    if (const auto name = names.find(event.Kind); name != names.end())
        ++Seen[name->second];
    constexpr FaultKind kinds[] = {FaultKind::NoReply,   FaultKind::WrongReply, FaultKind::HalfReply,
                                   FaultKind::LateReply, FaultKind::Noise,      FaultKind::Flood,
                                   FaultKind::HangUp};
    const auto with = [&](FaultKind kind, std::size_t parameter) {
        return FaultPlan({Fault{kind, static_cast<int>(parameter), {}, {}, 1}}).DeliveryOf(event);
    };
    if (mood_ == Mood::Dead)
        return {};
    if (mood_ == Mood::Slow)
        return with(FaultKind::LateReply, Below(40));
    if (mood_ == Mood::Faulty && Below(8) == 0)
        return with(kinds[Below(std::size(kinds))], Below(900));
    return FaultPlan({}).DeliveryOf(event);
}

QAction& Monkey::Action(const char* name) { return *window_->findChild<QAction*>(QString::fromLatin1(name)); }

bool Monkey::AnyPortOpen() const {
    return std::ranges::any_of(lines_, [](const auto& line) {
        const auto kept = line.lock();
        return kept && kept->Port.PortOpen();
    });
}

bool Monkey::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
        auto* widget = static_cast<QWidget*>(watched);
        const bool dialog = qobject_cast<QDialog*>(widget) != nullptr;
        if (dialog)
            ++Seen["dialog " + widget->windowTitle().toStdString()];
        // Whoever shows an application-modal dialog waits in its event loop; who shows a menu may.
        if ((dialog && widget->windowModality() == Qt::ApplicationModal) || qobject_cast<QMenu*>(widget))
            QTimer::singleShot(0, this, [this, kept = QPointer(widget)] { Serve(kept); });
    }
    return QObject::eventFilter(watched, event);
}

void Monkey::Serve(const QPointer<QWidget>& front) {
    ++depth_;
    const auto open = [&] { return front && front->isVisible(); };
    const bool programs = qobject_cast<VekComms*>(front) != nullptr;
    if (programs && (programAtOnce_ || Below(3) == 0)) {
        StepOn(300);
        ClickName("Option1_0");
        ClickName("ProgramVek");
    }
    for (std::size_t most = Below(programs ? 100 : 10); most > 0 && left_ > 0 && open(); --most)
        Act();
    while (open()) {
        if (QApplication::activePopupWidget() || QApplication::activeModalWidget())
            CloseWhatIsOpen();
        else
            front->close();
        QCoreApplication::processEvents();
    }
    --depth_;
}

void Monkey::Run() {
    while (left_ > 0)
        Act();
}

void Monkey::Act() {
    --left_;
    static const int sum = std::accumulate(std::begin(deeds), std::end(deeds), 0,
                                           [](int so, const Deed& deed) { return so + deed.Weight; });
    int chosen = static_cast<int>(Below(static_cast<std::size_t>(sum)));
    const Deed* deed = deeds;
    for (; chosen >= deed->Weight; ++deed)
        chosen -= deed->Weight;
    (this->*deed->Do)();
    if (held_ && Below(4) != 0)
        Release();
    QCoreApplication::processEvents();
    CheckAlways();
}

void Monkey::Expect(bool condition, const char* what) {
    if (!condition && (Faults.empty() || Faults.back() != what))
        Faults.emplace_back(what);
}

void Monkey::CheckAlways() {
    Expect(DecodeRecord(EncodeRecord(Config)) == Config, "the configuration cannot be stored");
    const bool connected = !window_->findChild<QWidget*>(u"OnlineCancel"_s)->isHidden();
    const bool allPages = tabs_->isTabEnabled(NotesTab);
    Expect(connected || allPages, "a page is disabled offline");
    if (depth_ > 0)
        return;
    for (const ToolbarCommand& command : ToolbarCommands()) {
        if (command.Key != "SAVE")
            Expect(Action(command.Key.data()).isEnabled() == (allPages || command.WhileOnline),
                   "a command is enabled at the wrong time");
    }
    window_->Timer1_Tick();
    Expect(Action("SAVE").isEnabled() == !CurrentFileName.empty(), "SAVE without a name");
}

QWidget* Monkey::Front() {
    if (QWidget* popup = QApplication::activePopupWidget())
        return popup;
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    return window_.get();
}

QWidget* Monkey::AnyWidget() {
    // The window behind a dialog must take nothing.
    QWidget* front = Below(10) == 0 ? window_.get() : Front();
    QList<QWidget*> shown = {front};
    for (QWidget* widget : front->findChildren<QWidget*>()) {
        if (widget->isVisible() && widget->window() == front)
            shown += widget;
    }
    return Any(shown);
}

QPoint Monkey::InWindow(QWidget& widget, const QPoint& point) { return widget.mapTo(widget.window(), point); }

QPoint Monkey::AnyPoint(QWidget& widget) {
    const auto within = [this](int length) {
        return static_cast<int>(Below(static_cast<std::size_t>(std::max(length, 1))));
    };
    return {within(widget.width()), within(widget.height())};
}

void Monkey::Press(QWidget& widget, const QPoint& point, Qt::MouseButton button) {
    const QPointer<QWidget> pressed = &widget;
    Release();
    if (!pressed) // a menu that has closed meanwhile
        return;
    const QPoint place = InWindow(widget, point);
    if (!widget.window()->windowHandle() || !widget.window()->rect().contains(place))
        return;
    Note("press " + Named(widget) + At(point) + (button == Qt::LeftButton ? "" : ", other button"));
    held_ = widget.window();
    button_ = button;
    mouse_ = place;
    QTest::mousePress(held_->windowHandle(), button, {}, mouse_);
}

void Monkey::MoveTo(QWidget& window, const QPoint& point) {
    Note("move" + At(point));
    if (!window.windowHandle())
        return;
    mouse_ = point;
    // A text that is dragged has its own event loop, where the drag is ended.
    if (held_)
        QTimer::singleShot(0, this, [this] {
            Release();
            QDrag::cancel();
        });
    QTest::mouseMove(window.windowHandle(), point);
}

void Monkey::Release() {
    const Qt::MouseButton button = std::exchange(button_, Qt::NoButton);
    if (button == Qt::NoButton)
        return;
    // The window may be gone; the mouse is let go all the same.
    QWidget* window = held_ && held_->windowHandle() ? held_.data() : window_.get();
    held_.clear();
    Note("release" + At(mouse_));
    QTest::mouseRelease(window->windowHandle(), button, {}, mouse_);
}

void Monkey::ClickAt(QWidget& widget, const QPoint& point, Qt::MouseButton button) {
    Press(widget, point, button);
    Release();
}

void Monkey::Click() {
    QWidget* widget = AnyWidget();
    // Buttons know clicks only near their marks.
    const bool button = qobject_cast<QAbstractButton*>(widget) != nullptr;
    ClickAt(*widget, button ? QPoint(8, widget->height() / 2) : AnyPoint(*widget),
            Below(20) == 0  ? Qt::MiddleButton
            : Below(7) == 0 ? Qt::RightButton
                            : Qt::LeftButton);
}

void Monkey::ClickTwice() {
    QWidget* widget = AnyWidget();
    if (QWindow* window = widget->window()->windowHandle()) {
        Note("double click " + Named(*widget));
        QTest::mouseDClick(window, Qt::LeftButton, {}, InWindow(*widget, AnyPoint(*widget)));
    }
}

void Monkey::Drag() {
    QWidget* widget = AnyWidget();
    Press(*widget, AnyPoint(*widget), Qt::LeftButton);
    for (std::size_t moves = Below(4); moves > 0 && held_; --moves)
        MoveTo(*held_, AnyPoint(*held_));
}

void Monkey::DragKnob() {
    QList<QWidget*> knobs;
    for (FaderKnob* knob : window_->findChildren<FaderKnob*>()) {
        if (knob->isVisible())
            knobs += knob;
    }
    if (knobs.empty())
        return;
    QWidget* knob = Any(knobs);
    Press(*knob, knob->rect().center(), Qt::LeftButton);
    for (std::size_t moves = 1 + Below(4); moves > 0 && held_; --moves)
        MoveTo(*held_, mouse_ + QPoint(0, static_cast<int>(Below(120)) - 60));
}

void Monkey::TurnWheel() {
    QWidget* widget = AnyWidget();
    QWindow* window = widget->window()->windowHandle();
    if (!window)
        return;
    Note("wheel on " + Named(*widget));
    const QPoint point = InWindow(*widget, AnyPoint(*widget));
    QWheelEvent event(point, window->mapToGlobal(point), {}, {0, Below(2) != 0 ? 120 : -120}, Qt::NoButton,
                      AnyModifiers(), Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(window, &event);
}

void Monkey::Key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    Note("key " + QKeySequence(key | modifiers).toString().toStdString());
    QWidget* front = Below(10) == 0 ? window_.get() : Front();
    if (QWindow* window = front->windowHandle())
        QTest::keyClick(window, key, modifiers);
}

Qt::KeyboardModifiers Monkey::AnyModifiers() {
    return Below(2) != 0 ? Qt::NoModifier : modifierSets[Below(std::size(modifierSets))];
}

void Monkey::PressKey() { Key(keys[Below(std::size(keys))], AnyModifiers()); }

void Monkey::TypeText() {
    QWindow* window = Front()->windowHandle();
    const QString text = QString::fromLatin1(typed[Below(std::size(typed))]);
    Note("type " + text.toStdString());
    for (const QChar character : text) {
        if (window && Front()->windowHandle() == window)
            QTest::sendKeyEvent(QTest::Click, window, Qt::Key_unknown, character, Qt::NoModifier);
    }
}

void Monkey::FillBox() {
    QList<QWidget*> boxes;
    for (QWidget* widget : Front()->findChildren<QWidget*>()) {
        if (widget->isVisible() && widget->isEnabled() &&
            (qobject_cast<QLineEdit*>(widget) || qobject_cast<QPlainTextEdit*>(widget)))
            boxes += widget;
    }
    if (boxes.empty())
        return;
    QWidget* box = Any(boxes);
    ClickAt(*box, box->rect().center());
    TypeText();
    if (Below(2) != 0)
        Key(Below(2) != 0 ? Qt::Key_Return : Qt::Key_Tab);
}

void Monkey::PressShortcut() {
    constexpr Qt::Key letters[] = {Qt::Key_Z, Qt::Key_Z, Qt::Key_Z, Qt::Key_Y, Qt::Key_A,   Qt::Key_C,
                                   Qt::Key_X, Qt::Key_V, Qt::Key_S, Qt::Key_P, Qt::Key_Tab, Qt::Key_K};
    Key(letters[Below(std::size(letters))],
        Below(4) != 0 ? Qt::ControlModifier : Qt::ControlModifier | Qt::ShiftModifier);
}

void Monkey::ChangeTab() {
    ClickAt(*tabs_->tabBar(), tabs_->tabBar()->tabRect(static_cast<int>(Below(8))).center());
}

void Monkey::ClickName(const char* name) {
    if (auto* widget = Front()->findChild<QWidget*>(QString::fromLatin1(name)); widget && widget->isVisible())
        ClickAt(*widget, {8, widget->height() / 2});
}

void Monkey::ChooseMode() {
    ClickName(((Below(2) != 0 ? "Modes_" : "UsePanel_") + std::to_string(Below(8))).c_str());
}

void Monkey::RunCommand() {
    const auto commands = ToolbarCommands();
    const std::string key(commands[Below(commands.size())].Key);
    // Another configuration is rare, so that there is something to undo.
    if ((key == "NEW" || key == "OPEN") && Below(20) != 0)
        return;
    for (auto* button : window_->findChild<EditorToolBar*>()->findChildren<QWidget*>()) {
        if (button->objectName().toStdString() == key)
            return ClickAt(*button, button->rect().center());
    }
}

void Monkey::LeaveWindow() {
    Note("another program's window in front");
    QApplication::setActiveWindow(nullptr);
    QCoreApplication::processEvents();
    if (Below(3) == 0)
        QGuiApplication::clipboard()->setText(Below(2) != 0 ? u"12 \u20ac\n3"_s : u"Mode"_s);
    if (Below(3) == 0)
        window_->resize(600 + static_cast<int>(Below(900)), 400 + static_cast<int>(Below(600)));
    QApplication::setActiveWindow(Front());
}

bool Monkey::Step() {
    bool stepped = false;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        if (const auto line = lines_[i].lock())
            stepped = line->Port.Step() || stepped;
    }
    return stepped;
}

void Monkey::StepOn(std::size_t steps) {
    for (std::size_t i = 0; i < steps; ++i) {
        QCoreApplication::processEvents();
        if (!Step())
            return;
    }
}

void Monkey::PassTime() {
    constexpr std::size_t lengths[] = {1, 3, 10, 100, 1000};
    const std::size_t steps = lengths[Below(std::size(lengths))];
    Note("time for " + std::to_string(steps) + " steps");
    StepOn(steps);
}

void Monkey::ChangeDevice() {
    constexpr Mood moods[] = {Mood::Prompt, Mood::Prompt, Mood::Prompt, Mood::Slow, Mood::Faulty, Mood::Dead};
    mood_ = moods[Below(std::size(moods))];
    const std::vector<std::set<int>> ports = {{1, 2}, {1, 2}, {1, 2, 3, 4}, {2}, {}};
    present_ = Any(ports);
    Note("device: mood " + std::to_string(static_cast<int>(mood_)) + ", ports " +
         std::to_string(present_.size()));
    for (const auto& weak : lines_) {
        const auto line = weak.lock();
        if (!line)
            continue;
        if (Below(8) == 0)
            line->Port.Vanish();
        line->Port.Present = present_;
        line->Port.Refusal = static_cast<OpenFailure>(Below(3));
        line->Port.SendTime = static_cast<long>(Below(3)) * 4;
    }
}

void Monkey::DoWhatLeadsOn() {
    QList<QAbstractButton*> useful;
    for (auto* button : Front()->findChildren<QAbstractButton*>()) {
        const QString name = button->objectName();
        if (button->isVisible() && button->isEnabled() &&
            (name.startsWith("OnlinePort"_L1) || name == "OnlineSearch"_L1 || name.startsWith("Option1"_L1) ||
             name == "ProgramVek"_L1 || name == "Done"_L1))
            useful += button;
    }
    if (!useful.empty()) {
        QAbstractButton* button = useful.size() > 1 && Below(4) != 0 ? useful.back() : Any(useful);
        ClickAt(*button, {8, button->height() / 2});
        return;
    }
    if (Front() != window_.get() || Below(2) != 0)
        PassTime();
    else if (Below(2) != 0)
        ClickAt(*tabs_->tabBar(), tabs_->tabBar()->tabRect(OnlineTab).center());
    else
        ClickName("DOWNLOAD");
}

void Monkey::CloseWhatIsOpen() {
    Release();
    if (QWidget* popup = QApplication::activePopupWidget()) {
        Note("close " + Named(*popup));
        popup->close();
        return;
    }
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog)
        return;
    Note("close " + Named(*dialog) + " \"" + dialog->windowTitle().toStdString() + '"');
    if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
        QAbstractButton* button = Any(box->buttons());
        ClickAt(*button, button->rect().center());
    } else {
        dialog->reject();
    }
}

void Monkey::ComeToRest() {
    for (int idle = 0; idle < 5; ++idle) {
        Release();
        if (QApplication::activePopupWidget() || QApplication::activeModalWidget()) {
            CloseWhatIsOpen();
            idle = -1;
        }
        QCoreApplication::processEvents();
        if (Step())
            idle = -1;
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void Monkey::GoOffline() {
    Note("comes to rest");
    mood_ = Mood::Prompt;
    ComeToRest();
    auto* disconnect = window_->findChild<QAbstractButton*>(u"OnlineCancel"_s);
    if (!disconnect->isHidden())
        disconnect->click();
    ComeToRest();
    // A box that waited for the mouse comes a few milliseconds later.
    for (int look = 0; look < 100 && !disconnect->isHidden(); ++look) {
        QTest::qWait(5);
        ComeToRest();
    }
    Expect(disconnect->isHidden() && tabs_->isTabEnabled(NotesTab) && !AnyPortOpen(), "does not go offline");
}

void Monkey::Begin(Scene scene) {
    Note("scene " + std::to_string(static_cast<int>(scene)));
    programAtOnce_ = scene == Scene::Programming;
    if (programAtOnce_)
        Action("DOWNLOAD").trigger();
    programAtOnce_ = false;
    if (scene != Scene::Searching && scene != Scene::Online)
        return;
    tabs_->setCurrentIndex(OnlineTab);
    ClickName("OnlineSearch");
    StepOn(10);
    if (scene == Scene::Searching)
        return;
    ComeToRest();
    ClickName("OnlinePort_0");
    ComeToRest();
    tabs_->setCurrentIndex(OutputTrimsTab);
    StepOn(50);
}

} // namespace vek::test
