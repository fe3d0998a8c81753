#include "dialogs/LinkingForm.h"

#include "base/Errors.h"
#include "support/Windows.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>

namespace vek {
namespace {

using namespace Qt::StringLiterals;

const LinkGroups mixed = {0, 1, 3, 1, 0, 3, 0, 1};

TEST(GroupingLayout, PacksEachGroupFromItsOriginInOutputOrder) {
    const auto at = [](const PixelRect& rect) { return std::pair(rect.Left * 15, rect.Top * 15); };
    const auto labels = GroupingLayout(1.0).Labels(mixed);
    const std::pair<int, int> twips[] = {{480, 360}, {1320, 240},  {1320, 1920}, {1560, 240},
                                         {480, 720}, {1560, 1920}, {480, 1080},  {1800, 240}};
    for (std::size_t output = 0; output < outputCount; ++output)
        EXPECT_EQ(at(labels[output]), twips[output]) << output;
    EXPECT_EQ(at(GroupingLayout(1.0).Labels({2, 4})[0]), std::pair(1320, 1080));
    EXPECT_EQ(at(GroupingLayout(1.0).Labels({2, 4})[1]), std::pair(1320, 2760));
    EXPECT_THROW(GroupingLayout(1.0).Labels({5}), SubscriptError);
    EXPECT_THROW(GroupingLayout(1.0).Labels({-1}), SubscriptError);
}

TEST(GroupingLayout, FramesHoldAllEightLabelsAtAnyScale) {
    for (const double scale : {1.0, 1.31, 2.0, 3.7}) {
        const GroupingLayout layout(scale);
        for (std::int16_t group = 0; group <= linkGroupCount; ++group) {
            LinkGroups all;
            all.fill(group);
            for (const PixelRect& label : layout.Labels(all))
                EXPECT_EQ(layout.FrameAround(label), static_cast<std::size_t>(group)) << scale;
        }
        for (std::size_t frame = 0; frame < groupFrameCount; ++frame) {
            EXPECT_TRUE(Contains(layout.Bounds(), layout.Frame(frame)));
            EXPECT_TRUE(Contains(layout.Bounds(), layout.Caption(frame)));
        }
    }
}

TEST(GroupingLayout, TouchingEdgesAreInside) {
    const PixelRect frame = GroupingLayout(1.0).Frame(2);
    const auto label = [&](int left, int top) { return PixelRect{left, top, 16, 20}; };
    const int right = frame.Left + frame.Width - 16;
    const int bottom = frame.Top + frame.Height - 20;
    const GroupingLayout layout(1.0);
    EXPECT_EQ(layout.FrameAround(frame), 2U);
    EXPECT_EQ(layout.FrameAround(label(frame.Left, frame.Top)), 2U);
    EXPECT_EQ(layout.FrameAround(label(right, bottom)), 2U);
    EXPECT_EQ(layout.FrameAround(label(frame.Left - 1, frame.Top)), std::nullopt);
    EXPECT_EQ(layout.FrameAround(label(right + 1, bottom)), std::nullopt);
    EXPECT_EQ(layout.FrameAround(label(right, frame.Top - 1)), std::nullopt);
    EXPECT_EQ(layout.FrameAround(label(right, bottom + 1)), std::nullopt);
}

struct LinkingFormTest : testing::Test {
    LinkingFormTest() { ShowActive(form); }

    QLabel& Label(int output) { return Child<QLabel>(form, qPrintable(u"Label1_%1"_s.arg(output))); }
    QPoint Frame(int frame) {
        return Child<QFrame>(form, qPrintable(u"Shape2_%1"_s.arg(frame))).geometry().center();
    }
    void DragTo(int output, int frame) {
        DragBy(Label(output), Frame(frame) - Label(output).geometry().center());
    }

    LinkingForm form{mixed};
};

TEST_F(LinkingFormTest, DroppingIntoAFrameMovesTheOutputAndClosesTheGap) {
    const QPoint third = Label(7).pos();
    const QPoint second = Label(3).pos();
    DragTo(1, 4);
    EXPECT_EQ(form.Groups(), (LinkGroups{0, 4, 3, 1, 0, 3, 0, 1}));
    EXPECT_EQ(Label(7).pos(), second);
    EXPECT_EQ(Label(1).accessibleName(), "Output 2, group 4"_L1);
    DragTo(1, 0);
    DragTo(0, 1);
    EXPECT_EQ(form.Groups(), (LinkGroups{1, 0, 3, 1, 0, 3, 0, 1}));
    EXPECT_EQ(Label(7).pos(), third);
    EXPECT_EQ(Label(1).accessibleName(), "Output 2, individual"_L1);
}

TEST_F(LinkingFormTest, DroppingBesideOrHalfOverAFrameReturnsTheLabel) {
    const QPoint home = Label(1).pos();
    const QRect frame = Child<QFrame>(form, "Shape2_1").geometry();
    DragBy(Label(1), {0, frame.bottom() - Label(1).geometry().bottom() + 3});
    EXPECT_EQ(Label(1).pos(), home);
    DragBy(Label(1), {-3000, 5000});
    EXPECT_EQ(Label(1).pos(), home);
    EXPECT_EQ(form.Groups(), mixed);
}

TEST_F(LinkingFormTest, ADragStaysInTheDialogAndEscapeTakesItBack) {
    QLabel& label = Label(1);
    const QPoint home = label.pos();
    QTest::mousePress(&label, Qt::LeftButton);
    QTest::mouseMove(&label, {-3000, 5000});
    EXPECT_TRUE(label.parentWidget()->rect().contains(label.geometry()));
    EXPECT_NE(label.pos(), home);
    QTest::keyClick(&label, Qt::Key_Escape);
    EXPECT_EQ(label.pos(), home);
    EXPECT_TRUE(form.isVisible());
    QTest::mouseRelease(&label, Qt::LeftButton);
    EXPECT_EQ(label.pos(), home);
    QTest::keyClick(&label, Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.result(), QDialog::Rejected);
}

TEST_F(LinkingFormTest, KeysMoveTheFocusedNumber) {
    EXPECT_TRUE(Label(0).hasFocus());
    QTest::keyClick(&Label(0), Qt::Key_2);
    QTest::keyClick(&Label(0), Qt::Key_Left);
    EXPECT_TRUE(Label(7).hasFocus());
    QTest::keyClick(&Label(7), Qt::Key_0);
    QTest::keyClick(&Label(7), Qt::Key_5);
    QTest::keyClick(&Label(7), Qt::Key_Down);
    EXPECT_TRUE(Label(0).hasFocus());
    QTest::keyClick(&Label(0), Qt::Key_Tab);
    EXPECT_TRUE(Label(1).hasFocus());
    EXPECT_EQ(form.Groups(), (LinkGroups{2, 1, 3, 1, 0, 3, 0, 0}));
    QTest::keyClick(&Label(1), Qt::Key_Return);
    EXPECT_EQ(form.result(), QDialog::Accepted);
}

TEST_F(LinkingFormTest, NamesItsFramesAndItsNumbers) {
    const struct {
        const char* Caption;
        QString Text;
        int Frame;
    } captions[] = {{"Label2", u"Individual"_s, 0},
                    {"Label3_0", u"Group 1"_s, 1},
                    {"Label3_1", u"Group 2"_s, 2},
                    {"Label3_2", u"Group 3"_s, 3},
                    {"Label3_3", u"Group 4"_s, 4}};
    for (const auto& c : captions) {
        const auto& caption = Child<QLabel>(form, c.Caption);
        const QRect frame = Child<QFrame>(form, qPrintable(u"Shape2_%1"_s.arg(c.Frame))).geometry();
        EXPECT_EQ(caption.text(), c.Text);
        EXPECT_FALSE(caption.geometry().intersects(frame));
        EXPECT_TRUE(c.Frame == 0 ? caption.geometry().bottom() < frame.top()
                                 : std::abs(caption.geometry().center().y() - frame.center().y()) <= 1);
        EXPECT_FALSE(caption.wordWrap());
    }
    for (int output = 0; output < 8; ++output) {
        EXPECT_EQ(Label(output).text(), QString::number(output + 1));
        EXPECT_EQ(Label(output).toolTip(), "Drag the number to a frame, or press 0 to 4"_L1);
    }
    EXPECT_EQ(form.windowTitle(), "Output Grouping"_L1);
    EXPECT_TRUE(Child<QLabel>(form, "Label4").text().startsWith("To link outputs"_L1));
    EXPECT_TRUE(Child<QLabel>(form, "Label5").wordWrap());
    EXPECT_EQ(Label(2).accessibleName(), "Output 3, group 3"_L1);
}

TEST_F(LinkingFormTest, ADragShowsWhereItWouldDrop) {
    const auto marked = [&] {
        QString frames;
        for (int frame = 0; frame < 5; ++frame)
            if (Child<QFrame>(form, qPrintable(u"Shape2_%1"_s.arg(frame))).backgroundRole() != QPalette::Base)
                frames += QString::number(frame);
        return frames;
    };
    QLabel& label = Label(0);
    const QPoint grab = label.rect().center();
    QTest::mousePress(&label, Qt::RightButton, {}, grab);
    QTest::mouseMove(&label, grab + QPoint(30, 0));
    QTest::mouseRelease(&label, Qt::RightButton, {}, grab);
    EXPECT_EQ(form.Groups(), mixed);
    QTest::mousePress(&label, Qt::LeftButton, {}, grab);
    EXPECT_EQ(label.cursor().shape(), Qt::ClosedHandCursor);
    EXPECT_EQ(marked(), QString());
    QTest::mouseMove(&label, label.mapFromParent(Frame(2)));
    EXPECT_EQ(marked(), "2"_L1);
    QTest::keyClick(&label, Qt::Key_3);
    QTest::mouseRelease(&label, Qt::RightButton, {}, grab);
    EXPECT_EQ(form.Groups(), mixed) << "the pointer has it";
    QTest::mouseRelease(&label, Qt::LeftButton, {}, label.mapFromParent(Frame(2)));
    EXPECT_EQ(marked(), QString());
    EXPECT_EQ(form.Groups()[0], 2);
    EXPECT_EQ(label.cursor().shape(), Qt::OpenHandCursor);
    QTest::mouseMove(&label, grab + QPoint(0, 60));
    EXPECT_EQ(marked(), QString());
    QTest::keyClick(&label, Qt::Key_Up);
    EXPECT_TRUE(Label(7).hasFocus());
    QTest::keyClick(&Label(7), Qt::Key_Right);
    EXPECT_TRUE(label.hasFocus());
}

} // namespace
} // namespace vek
