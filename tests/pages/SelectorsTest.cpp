#include "pages/Selectors.h"

#include "pages/PageLayout.h"

#include <QContextMenuEvent>
#include <QRadioButton>
#include <QSignalSpy>

namespace vek {
namespace {

using namespace Qt::StringLiterals;

struct SelectorsTest : testing::Test {
    SelectorsTest() {
        ShowActive(selectors);
        QObject::connect(&selectors, &Selectors::ModeChosen, [this] { seen += "mode "_L1; });
        QObject::connect(&selectors, &Selectors::OutputChosen, [this] { seen += "output "_L1; });
        QObject::connect(&selectors, &Selectors::ModeMenuRequested, [this](std::size_t i, QPoint at) {
            seen += u"mode menu %1 at %2 "_s.arg(i).arg(at == wanted);
        });
        QObject::connect(&selectors, &Selectors::OutputMenuRequested, [this](std::size_t i, QPoint at) {
            seen += u"output menu %1 at %2 "_s.arg(i).arg(at == wanted);
        });
    }

    /// What was raised since the last call.
    QString Seen() { return std::exchange(seen, QString()).trimmed(); }

    Selectors selectors;
    const struct {
        std::array<QRadioButton*, 8>& Options;
        QString Title;
        QString Name;
    } frames[2] = {{selectors.Modes, u"Mode"_s, u"Modes"_s},
                   {selectors.UsePanel, u"Output"_s, u"UsePanel"_s}};
    QPoint wanted; ///< where a menu must open, global
    QString seen;
};

TEST_F(SelectorsTest, BeginWithTheFirstAndTellTheOneChosen) {
    for (const auto& frame : frames)
        EXPECT_TRUE(frame.Options[0]->isChecked());
    for (const auto& frame : frames)
        for (const std::size_t i : {7U, 6U, 5U, 4U, 3U, 2U, 1U, 0U}) {
            QRadioButton& option = *frame.Options[i];
            EXPECT_EQ(option.text(), QString::number(i + 1));
            EXPECT_EQ(option.objectName(), u"%1_%2"_s.arg(frame.Name).arg(i));
            EXPECT_EQ(option.accessibleName(), u"%1 %2"_s.arg(frame.Title).arg(i + 1));
            EXPECT_EQ(FrameTitle(option), frame.Title);
            QTest::mouseClick(&option, Qt::LeftButton, {}, {8, option.height() / 2});
            EXPECT_TRUE(option.isChecked());
            EXPECT_EQ(Seen(), frame.Title.toLower()) << "once, and not for the one left";
        }
    selectors.Modes[0]->setFocus();
    QTest::keyClick(selectors.Modes[0], Qt::Key_Down);
    EXPECT_TRUE(selectors.Modes[1]->isChecked());
    EXPECT_TRUE(selectors.UsePanel[0]->isChecked());
    EXPECT_EQ(Seen(), "mode"_L1);
}

TEST_F(SelectorsTest, TheMenuOpensOnceAndChoosesNothing) {
    for (const auto& frame : frames)
        for (std::size_t i = 0; i < frame.Options.size(); ++i) {
            QRadioButton& option = *frame.Options[i];
            const QString expected = u"%1 menu %2 at 1"_s.arg(frame.Title.toLower()).arg(i);
            const QPoint at(5, 5);
            wanted = option.mapToGlobal(at);
            QTest::mousePress(&option, Qt::RightButton, {}, at);
            QContextMenuEvent byMouse(QContextMenuEvent::Mouse, at, wanted);
            QApplication::sendEvent(&option, &byMouse);
            EXPECT_EQ(Seen(), expected);
            QContextMenuEvent byKey(QContextMenuEvent::Keyboard, at, wanted);
            QApplication::sendEvent(&option, &byKey);
            EXPECT_EQ(Seen(), expected);
            EXPECT_TRUE(frame.Options[0]->isChecked());
        }
}

} // namespace
} // namespace vek
