// A user without sense or patience: does at random what mouse, keyboard, time and the device can do.
#pragma once

#include "editor/CorvaneForm.h"
#include "endurance/MonkeyDialogs.h"
#include "support/MemoryStore.h"
#include "support/SimulatedLine.h"

#include <QObject>
#include <QPointer>

#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

class QAction;
class QTabWidget;

namespace vek::test {

/// Has a window and a device of its own. Everything that happens follows from the seed, but for the timers of
/// the window, which run in real time.
class Monkey : public QObject {
    Q_OBJECT

  public:
    Monkey(unsigned seed, int events);
    ~Monkey() override;

    enum class Scene { Offline, Searching, Programming, Online };

    /// Brings the device and the window there.
    void Begin(Scene scene);
    /// Does the events. Dialogs and menus that somebody waits for are served from their own event loops.
    void Run();
    /// Puts the mouse down, closes whatever stands in front of the window and lets the device come to rest.
    void ComeToRest();
    /// Comes to rest offline.
    void GoOffline();

    CorvaneForm& Window() { return *window_; }
    QAction& Action(const char* name);
    MonkeyDialogs& Boxes() { return boxes_; }
    /// The record that undoing everything leads back to.
    const std::string& Start() const { return start_; }
    bool AnyPortOpen() const;

    std::map<std::string, int> Seen; ///< titles of dialogs, requests to the device, steps: how many
    std::vector<std::string> Faults; ///< what should never be, in words

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Deed {
        int Weight;
        void (Monkey::*Do)();
    };
    static const Deed deeds[];

    // Deeds.
    void Click();
    void ClickTwice();
    void Drag();
    void DragKnob();
    void TurnWheel();
    void PressKey();
    void TypeText();
    void FillBox();
    void PressShortcut();
    void ChangeTab();
    void ChooseMode();
    void RunCommand();
    void LeaveWindow();
    void PassTime();
    void ChangeDevice();
    void DoWhatLeadsOn();
    void CloseWhatIsOpen();

    void Act();
    void Serve(const QPointer<QWidget>& front);
    void CheckAlways();
    void Expect(bool condition, const char* what);

    std::size_t Below(std::size_t count) { return random_() % count; }
    template <typename List>
    auto Any(const List& list) {
        return list[static_cast<typename List::size_type>(Below(static_cast<std::size_t>(list.size())))];
    }
    /// What hears mouse and keyboard.
    QWidget* Front();
    QWidget* AnyWidget();
    static QPoint InWindow(QWidget& widget, const QPoint& point);
    QPoint AnyPoint(QWidget& widget);
    Qt::KeyboardModifiers AnyModifiers();
    void Press(QWidget& widget, const QPoint& point, Qt::MouseButton button);
    void MoveTo(QWidget& window, const QPoint& point);
    void Release();
    void ClickAt(QWidget& widget, const QPoint& point, Qt::MouseButton button = Qt::LeftButton);
    void ClickName(const char* name);
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    bool Step();
    void StepOn(std::size_t steps);

    Delivery Deliver(const DeviceEvent& event);
    std::shared_ptr<SimulatedLine> NewLine();

    enum class Mood { Prompt, Slow, Faulty, Dead };

    std::mt19937 random_;
    int left_;
    MonkeyDialogs boxes_{random_};
    MemoryStore store_;
    std::vector<std::weak_ptr<SimulatedLine>> lines_;
    std::set<int> present_ = {1, 2};
    Mood mood_ = Mood::Prompt;
    EditorServices services_;
    std::unique_ptr<CorvaneForm> window_;
    QTabWidget* tabs_;
    QPointer<QWidget> held_; ///< the window that the mouse was pressed in
    Qt::MouseButton button_ = Qt::NoButton;
    QPoint mouse_;
    bool programAtOnce_ = false;
    int depth_ = 0; ///< dialogs and menus with event loops of their own
    std::string start_;
};

} // namespace vek::test
