// The programming window against a scripted device.
#include "editor/EditorFixture.h"

#include "device/PortTurns.h"
#include "device/VekComms.h"

#include <QLabel>
#include <QProgressBar>
#include <QRadioButton>

using namespace vek;
using namespace vek::test;
using namespace Qt::StringLiterals;

namespace {

/// Answers searches at 9600, acknowledges everything else and collects the blocks.
class ObligingDevice {
  public:
    explicit ObligingDevice(ScriptedPort& port) : port_(port) {
        port_.OnOutput = [this](const ByteVector& bytes) { Answer(bytes); };
    }
    ByteVector Image;
    int Restarts = 0;
    std::function<void(std::size_t block)> OnBlock;

  private:
    void Answer(const ByteVector& bytes) {
        if (bytes == ByteVector{'K'} && port_.Rate == "9600,n,8,2")
            port_.Reply(1, {39, 2, 5, 255 - 39 - 2 - 5, 0});
        if (bytes.size() == 11) {
            Image.insert(Image.end(), bytes.begin() + 2, bytes.begin() + 10);
            port_.Reply(1, {240, 0});
            if (OnBlock)
                OnBlock(Image.size() / 8);
        }
        if (bytes == ByteVector{255} && port_.Rate == "9600,e,8,1") {
            ++Restarts;
            port_.Reply(1, {240, 0});
        }
    }
    ScriptedPort& port_;
};

class Programming : public EditorTest {
  protected:
    Programming() {
        port.Present = {1};
        CheckDeviceTypes(store, types);
        for (std::size_t i = 0; i < image.Buffer.size(); ++i)
            image.Buffer[i] = static_cast<std::uint8_t>(i * 7);
        image.Length = imageLength;
    }
    /// Shows the window and runs its search, which is over when this returns.
    std::unique_ptr<VekComms> Searched() {
        auto form = std::make_unique<VekComms>(services, turns, types, image);
        form->show();
        Settle();
        return form;
    }
    static QString TypeText(VekComms& form) { return form.findChild<QLineEdit*>(u"VekType_0"_s)->text(); }
    static void Press(VekComms& form, const char* button) {
        form.findChild<QAbstractButton*>(QString::fromLatin1(button))->click();
    }
    static bool Enabled(VekComms& form, const char* control) {
        return form.findChild<QWidget*>(QString::fromLatin1(control))->isEnabled();
    }

    PortTurns turns;
    DeviceTypeList types;
    DownloadImage image;
    ObligingDevice device{port};
};

} // namespace

TEST_F(Programming, FindsChoosesAndPrograms) {
    const auto form = Searched();
    const int looks = looksForPorts;
    auto* option = form->findChild<QRadioButton*>(u"Option1_0"_s);
    auto* program = form->findChild<QAbstractButton*>(u"ProgramVek"_s);
    auto* wait = form->findChild<QWidget*>(u"PleaseWait"_s);
    option->click();
    form->hide();
    form->show();
    Settle();
    EXPECT_TRUE(option->isChecked()) << "shown again it does not search again";
    Press(*form, "Command1");
    EXPECT_FALSE(program->isEnabled());
    EXPECT_TRUE(form->findChild<QWidget*>(u"Blanking_0"_s)->isVisible());
    Settle();
    EXPECT_GT(looksForPorts, looks) << "adapters come and go";
    EXPECT_TRUE(TypeText(*form).endsWith(u"2.5"_s)) << TypeText(*form).toStdString();
    EXPECT_TRUE(option->isEnabled());
    EXPECT_FALSE(option->isChecked());
    EXPECT_FALSE(program->isEnabled());
    EXPECT_TRUE(form->findChild<QWidget*>(u"VekType_1"_s)->isHidden()) << "there is no COM2";
    EXPECT_FALSE(port.PortOpen());
    option->click();
    EXPECT_TRUE(program->isEnabled());
    EXPECT_FALSE(wait->isVisible());

    device.OnBlock = [&](std::size_t block) {
        if (block == 100) {
            EXPECT_EQ(form->findChild<QProgressBar*>(u"ProgressBar1"_s)->value(), 98 * 1000 / 273);
            EXPECT_FALSE(program->isEnabled() || Enabled(*form, "Command1"));
            EXPECT_TRUE(wait->isVisible());
        }
    };
    EXPECT_FALSE(form->Programmed());
    boxes.ExpectYesNo(u"All sent ok"_s, u"Program another vek"_s, Answer::Yes, Answer::No);
    boxes.ExpectYesNo(u"All sent ok"_s, u"Program another vek"_s, Answer::No, Answer::No);
    Press(*form, "ProgramVek");
    Settle();
    EXPECT_TRUE(form->Programmed());
    EXPECT_EQ(device.Image.size(), 2U * 273 * 8);
    EXPECT_EQ(ByteVector(device.Image.begin(), device.Image.begin() + imageLength),
              ByteVector(image.Buffer.begin(), image.Buffer.begin() + imageLength));
    EXPECT_FALSE(form->isVisible()) << "the window closes when the user is done";
    EXPECT_FALSE(port.PortOpen());
    EXPECT_EQ(form->findChild<QLabel*>(u"Label2"_s)->text(), u"100%"_s);
}

TEST_F(Programming, KeysPressedTwiceBreakNothingOff) {
    VekComms form(services, turns, types, image);
    form.show();
    QApplication::setActiveWindow(&form);
    const auto press = [&](Qt::Key key) {
        QTest::keyClick(QApplication::focusWidget(), key);
        QTest::keyClick(QApplication::focusWidget(), key);
        EXPECT_TRUE(form.isVisible());
    };
    QCoreApplication::processEvents();
    press(Qt::Key_Space); // while it searches
    Settle();
    auto* option = form.findChild<QRadioButton*>(u"Option1_0"_s);
    EXPECT_TRUE(option->hasFocus() && !option->isChecked());
    press(Qt::Key_Space);
    EXPECT_TRUE(option->isChecked());
    device.OnBlock = [&](std::size_t block) {
        if (block == 5)
            port.At(0, [&] {
                press(Qt::Key_Space);
                press(Qt::Key_Return);
            });
    };
    boxes.ExpectYesNo(u"All sent ok"_s, u"Program another vek"_s, Answer::No, Answer::No);
    press(Qt::Key_Return);
    Settle();
    EXPECT_EQ(device.Image.size(), 273U * 8);
}

TEST_F(Programming, ProblemsAreToldAndForbidNothing) {
    const auto form = Searched();
    MatrixConfig config;
    config.VekNetBase = 2000;
    form->TellProblemsOf(config);
    EXPECT_EQ(form->findChild<QLabel*>(u"Problems"_s)->text(), u"1 error, 1 warning"_s);
    Press(*form, "Option1_0");
    EXPECT_TRUE(Enabled(*form, "ProgramVek"));
}

TEST_F(Programming, WaitsForItsTurnAndSaysWhy) {
    auto other = std::make_unique<PortTurns::Turn>(turns);
    ASSERT_TRUE(other->await_ready());
    const auto form = Searched();
    EXPECT_EQ(port.Story("open"), "");
    EXPECT_EQ(form->findChild<QLabel*>(u"Blanking1"_s)->text(),
              u"Waiting for the search on the Online page, which uses the same ports"_s);
    other.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(form->findChild<QLabel*>(u"Blanking1"_s)->text(), u"Please Wait Searching for Veks"_s);
    EXPECT_FALSE(turns.Free());
    Settle();
    EXPECT_TRUE(form->findChild<QRadioButton*>(u"Option1_0"_s)->isEnabled());
    EXPECT_TRUE(turns.Free());
}

TEST_F(Programming, ClosingEndsTheSearchAtOnce) {
    port.OnOutput = {};
    VekComms form(services, turns, types, image);
    form.show();
    port.At(50, [&] {
        EXPECT_FALSE(Enabled(form, "Command1"));
        EXPECT_TRUE(port.PortOpen());
        form.close();
        EXPECT_FALSE(form.isVisible() || port.PortOpen());
    });
    Settle();
    EXPECT_EQ(port.Now, 50);
    EXPECT_EQ(port.Story("open"), "0 open 1");
}

TEST_F(Programming, NoOtherPortCanBeChosenWhileOneIsProgrammed) {
    port.Present = {1, 2};
    const auto form = Searched();
    auto* first = form->findChild<QRadioButton*>(u"Option1_0"_s);
    auto* second = form->findChild<QRadioButton*>(u"Option1_1"_s);
    second->setFocus();
    second->click();
    device.OnBlock = [&](std::size_t block) {
        if (block != 5)
            return;
        QTest::keyClick(second, Qt::Key_Up);
        QTest::mouseClick(first, Qt::LeftButton, {}, {8, first->height() / 2});
        EXPECT_TRUE(second->isChecked());
        EXPECT_TRUE(second->isEnabled() && !first->isEnabled());
    };
    boxes.ExpectYesNo(u"All sent ok"_s, u"Program another vek"_s, Answer::Yes, Answer::No);
    boxes.ExpectYesNo(u"All sent ok"_s, u"Program another vek"_s, Answer::No, Answer::No);
    Press(*form, "ProgramVek");
    port.Forget();
    Settle();
    EXPECT_EQ(device.Image.size(), 2U * 273 * 8);
    EXPECT_EQ(port.Story("open 1"), "");
}

TEST_F(Programming, ToldToEndItLeavesTheDeviceRestartedAndSaysWhatIsMissing) {
    const struct {
        std::size_t block; ///< after which it is told to end; all of them are 273
        int restarts;
        std::string said;
    } cases[] = {
        {10, 1, "vorn-matrix-editor: COM1 (ttyUSB0) holds an incomplete configuration: program it again\n"},
        {273, 1, ""},
    };
    for (const auto& c : cases) {
        device.Image.clear();
        auto form = Searched();
        form->findChild<QRadioButton*>(u"Option1_0"_s)->click();
        port.Forget();
        device.OnBlock = [&](std::size_t block) {
            if (block == c.block)
                form->EndInOrder();
        };
        testing::internal::CaptureStderr();
        Press(*form, "ProgramVek");
        Settle();
        EXPECT_EQ(device.Image.size(), c.block * 8);
        EXPECT_EQ(port.Count("33"), c.restarts);
        EXPECT_FALSE(form->isVisible());
        EXPECT_FALSE(port.PortOpen());
        form.reset();
        // Qt's platform without a screen speaks there, too.
        const auto said = QString::fromStdString(testing::internal::GetCapturedStderr());
        EXPECT_EQ(
            QString(said).remove(u"This plugin does not support propagateSizeHints()\n"_s).toStdString(),
            c.said);
    }
}

TEST_F(Programming, CancelDuringTheDownloadReportsNothing) {
    const auto form = Searched();
    form->findChild<QRadioButton*>(u"Option1_0"_s)->click();
    device.OnBlock = [&](std::size_t block) {
        if (block == 10)
            port.At(0, [&] { Press(*form, "Command2"); });
    };
    Press(*form, "ProgramVek");
    Settle();
    EXPECT_EQ(device.Image.size(), 80U);
    EXPECT_FALSE(form->isVisible());
    EXPECT_FALSE(port.PortOpen());
}
