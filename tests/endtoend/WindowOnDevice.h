// The real window on a real serial layer against simulated devices, driven by mouse and keys.
#pragma once

#include "controls/LevelTrim.h"
#include "editor/CorvaneForm.h"
#include "pages/EditorPages.h"
#include "platform/ImageDigest.h"
#include "platform/PortInspection.h"
#include "platform/QtOneShotTimer.h"
#include "platform/QtSerialControl.h"
#include "simulator/RunningVek.h"
#include "support/MemoryStore.h"
#include "support/OnlinePackets.h"
#include "support/ScriptedDialogs.h"
#include "support/TestData.h"
#include "support/Windows.h"

#include <algorithm>
#include <list>
#include <memory>
#include <optional>

namespace vek::test {

/// A clock on which a wait takes `longest` milliseconds at most.
class HurriedTimer final : public OneShotTimer {
  public:
    /// The number must outlive this object; it may change.
    explicit HurriedTimer(const int& longest) : longest_(longest) {}
    void Start(int milliseconds) override { timer_.Start(std::min(milliseconds, longest_)); }
    void Stop() override { timer_.Stop(); }
    bool Enabled() const override { return timer_.Enabled(); }
    void SetListener(std::function<void()> listener) override { timer_.SetListener(std::move(listener)); }

  private:
    const int& longest_;
    QtOneShotTimer timer_;
};

class WindowOnDevice {
  public:
    /// With a device on COM1.
    void Start(const SimulatedVekOptions& options = {}) {
        window.reset();
        vek.emplace(options);
        window = std::make_unique<CorvaneForm>(services, std::string());
        window->FinishStart();
        // All tabs can be clicked, on a screen of any size.
        window->resize(1040, 700);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }

    template <typename Widget = QWidget>
    Widget* Find(const char* name) {
        return window->findChild<Widget*>(QString::fromLatin1(name));
    }
    /// Where a point of a widget is in its window.
    static QPoint InWindow(QWidget* widget, const QPoint& point) {
        return widget->mapTo(widget->window(), point);
    }
    static void ClickOn(QWidget* widget, const QPoint& point) {
        QTest::mouseClick(widget->window()->windowHandle(), Qt::LeftButton, {}, InWindow(widget, point));
    }
    /// On the mark of a radio button or check box, on the left of a push button.
    static void Click(QWidget* button) { ClickOn(button, {8, button->height() / 2}); }
    void Click(const char* name) { Click(Find(name)); }
    void ShowTab(int tab) {
        auto* bar = Find<QTabWidget>("SSTab1")->tabBar();
        ClickOn(bar, bar->tabRect(tab).center());
    }
    QWidget* Knob(const char* fader) { return Find(fader)->findChild<QWidget*>(u"Command1"_s); }
    float Level(const char* fader) { return Find<LevelTrim>(fader)->Level(); }
    void Drag(const char* fader, int down) { DragBy(*Knob(fader), {0, down}); }

    /// Until it holds; the machine may be busy.
    template <typename Condition>
    static void Await(Condition condition, const char* what) {
        EXPECT_TRUE(QTest::qWaitFor(condition, 20'000)) << what;
    }
    void AwaitBoxes() {
        Await([this] { return boxes.Done() && !boxes.AnyOpen(); }, "boxes");
    }
    void AwaitOffline() {
        Await([this] { return !IsOnline(); }, "offline");
    }
    /// What the device was asked and took.
    std::string Requests() {
        std::string requests;
        for (const DeviceEvent& event : (*vek)->Events())
            requests += event.Kind == DeviceEventKind::Refused ? event.Text : PacketText(event.Request);
        return requests;
    }
    void AwaitRequests(const std::string& requests) {
        Await([&] { return Requests() == requests; }, "requests");
        EXPECT_EQ(Requests(), requests);
    }

    void GoOnline() {
        ShowTab(OnlineTab);
        Click("OnlineSearch");
        Await([this] { return Find("OnlinePort_0")->isVisible() && Find("OnlinePort_0")->isEnabled(); },
              "a Matrix Vek");
        EXPECT_EQ(Find<QLineEdit>("VekType_0")->text(), u"Matrix Vek2.5"_s);
        boxes.ExpectMessage(u"Online"_s, u"Matrix Vek is now online."_s, MessageIcon::None);
        Click("OnlinePort_0");
        AwaitBoxes();
        ASSERT_TRUE(IsOnline());
        AwaitRequests(heard = "D R D ");
    }
    /// What the device is asked next while online.
    void Served(const std::string& requests) { AwaitRequests(heard += requests); }
    bool IsOnline() { return !Find("OnlineCancel")->isHidden(); }

    std::string DeviceOf(std::size_t row) {
        if (row == 0)
            return vek ? (*vek)->PortPath() : std::string();
        return row <= others.size() ? (*std::next(others.begin(), static_cast<long>(row) - 1))->PortPath()
                                    : "";
    }

    ScriptedDialogs boxes;
    MemoryStore store;
    std::optional<RunningVek> vek; ///< on COM1
    std::list<RunningVek> others;  ///< on COM2 and so on
    std::string heard;             ///< while online, by the device on COM1
    /// The time that replies are given; only the pauses after answers without sense are longer.
    int longestWait = 500;
    EditorServices services{
        .Boxes = boxes,
        .Store = store,
        .MakeSerialControl =
            [this] {
                return std::make_unique<QtSerialControl>(
                    [this](int number) { return DeviceOf(static_cast<std::size_t>(number) - 1); });
            },
        .MakeTimer = [this] { return std::make_unique<HurriedTimer>(longestWait); },
        .PortNames = [this] { return QStringList(static_cast<qsizetype>(1 + others.size()), u"pts"_s); },
        .FactsOfPort = [this](std::size_t row) { return FactsOfDevice(DeviceOf(row)); },
        .RefusedSettings = [this](std::size_t row) { return RefusedSettings(DeviceOf(row)); },
        .ImageDigest = ImageDigest};
    std::unique_ptr<CorvaneForm> window;
};

} // namespace vek::test
