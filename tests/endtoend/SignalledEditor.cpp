// An editor that goes to work on its device by itself and then waits for a signal: signalled_editor
// search|online|download DEVICE STATE_FOLDER. Prints "working" when it is time for the signal.
#include "editor/CorvaneForm.h"
#include "editor/Endings.h"
#include "platform/QtOneShotTimer.h"
#include "platform/QtSerialControl.h"
#include "support/MemoryStore.h"
#include "support/ScriptedDialogs.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>

using namespace vek;
using namespace vek::test;
using namespace Qt::StringLiterals;

namespace {

QWidget* Part(const char* name) {
    for (QWidget* widget : QApplication::allWidgets())
        if (widget->objectName() == QLatin1StringView(name) && widget->isVisible())
            return widget;
    return nullptr;
}

void Click(const char* name) { qobject_cast<QAbstractButton*>(Part(name))->click(); }

bool Await(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 10'000); }

bool CanClick(const char* name) { return Part(name) != nullptr && Part(name)->isEnabled(); }

void SayWorking() {
    std::puts("working");
    std::fflush(stdout);
}

void GoOnline(CorvaneForm& window, ScriptedDialogs& boxes) {
    window.findChild<QTabWidget*>(u"SSTab1"_s)->setCurrentIndex(7);
    Click("OnlineSearch");
    Await([] { return CanClick("OnlinePort_0"); });
    boxes.ExpectMessage(u"Online"_s, u"Matrix Vek is now online."_s, MessageIcon::None);
    Click("OnlinePort_0");
    Await([&] { return boxes.Done() && !boxes.AnyOpen(); });
    window.findChild<QTabWidget*>(u"SSTab1"_s)->setCurrentIndex(5);
    QTest::keyClick(Part("OutputLevelTrim_0")->findChild<QWidget*>(u"Command1"_s), Qt::Key_Up);
    SayWorking();
}

void Download(CorvaneForm& window, bool program) {
    QTimer::singleShot(0, &window, [program] {
        if (!program) {
            Await([] { return Part("Command1") != nullptr && !Part("Command1")->isEnabled(); });
            SayWorking();
            return;
        }
        Await([] { return CanClick("Option1_0"); });
        Click("Option1_0");
        Click("ProgramVek");
        Await([] { return qobject_cast<QProgressBar*>(Part("ProgressBar1"))->value() > 20; });
        SayWorking();
    });
    window.findChild<QAction*>(u"DOWNLOAD"_s)->trigger();
}

} // namespace

int main(int argc, char* argv[]) {
    Endings endings;
    QApplication application(argc, argv);
    const std::string task = argv[1];
    const std::string device = argv[2];
    {
        ScriptedDialogs boxes;
        MemoryStore store;
        const auto deviceOf = [&device](int number) { return number == 1 ? device : std::string(); };
        const EditorServices services{
            .Boxes = boxes,
            .Store = store,
            .MakeSerialControl = [&] { return std::make_unique<QtSerialControl>(deviceOf); },
            .MakeTimer = [] { return std::make_unique<QtOneShotTimer>(); },
            .PortNames = [] { return QStringList{u"pts"_s}; },
            .StateFolder = argv[3]};
        CorvaneForm window(services, {});
        window.FinishStart();
        endings.Watch(window);
        QObject::connect(&window, &CorvaneForm::Ended, &application, [] { QApplication::exit(); });
        window.show();
        QTimer::singleShot(0, &window, [&] {
            task == "online" ? GoOnline(window, boxes) : Download(window, task == "download");
        });
        QApplication::exec();
    }
    endings.Raise();
    return 1;
}
