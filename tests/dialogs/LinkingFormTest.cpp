#include "dialogs/LinkingForm.h"

#include "base/Errors.h"
#include "support/Windows.h"

using namespace vek;
using namespace Qt::StringLiterals;

const LinkGroups mixed = {0, 1, 3, 1, 0, 3, 0, 1};

TEST(GroupingLayout, PacksEachGroupFromItsOriginInOutputOrder) {
    const GroupingLayout layout(1.0);
    const auto at = [&](const LinkGroups& groups, std::size_t output) {
        const PixelRect label = layout.Labels(groups)[output];
        return std::pair(label.Left * 15, label.Top * 15);
    };
    const std::pair<int, int> twips[] = {{480, 360}, {1320, 240},  {1320, 1920}, {1560, 240},
                                         {480, 720}, {1560, 1920}, {480, 1080},  {1800, 240}};
    for (std::size_t output = 0; output < outputCount; ++output)
        EXPECT_EQ(at(mixed, output), twips[output]) << output;
    EXPECT_EQ(at({2, 4}, 0), std::pair(1320, 1080));
    EXPECT_EQ(at({2, 4}, 1), std::pair(1320, 2760));
    EXPECT_THROW(layout.Labels({5}), SubscriptError);
    EXPECT_THROW(layout.Labels({-1}), SubscriptError);
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
    }
}

TEST(GroupingLayout, TouchingEdgesAreInside) {
    const GroupingLayout layout(1.0);
    const PixelRect frame = layout.Frame(2);
    EXPECT_EQ(layout.FrameAround(frame), 2U);
    for (const auto& [x, y] : {std::pair(-1, 0), std::pair(1, 0), std::pair(0, -1), std::pair(0, 1)})
        EXPECT_EQ(layout.FrameAround({frame.Left + x, frame.Top + y, frame.Width, frame.Height}),
                  std::nullopt);
}

struct LinkingFormTest : testing::Test {
    LinkingFormTest() { ShowActive(form); }

    QLabel& Label(int output) { return Child<QLabel>(form, qPrintable(u"Label1_%1"_s.arg(output))); }
    QFrame& Frame(int frame) { return Child<QFrame>(form, qPrintable(u"Shape2_%1"_s.arg(frame))); }
    void DragTo(int output, int frame) {
        DragBy(Label(output), Frame(frame).geometry().center() - Label(output).geometry().center());
    }

    LinkingForm form{mixed};
};

TEST_F(LinkingFormTest, DroppingIntoAFrameMovesTheOutputAndClosesTheGap) {
    const QPoint third = Label(7).pos(), second = Label(3).pos();
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

TEST_F(LinkingFormTest, ALabelReturnsFromHalfOverAFrameAndOnEscape) {
    QLabel& label = Label(1);
    const QPoint home = label.pos();
    DragBy(label, {0, Frame(1).geometry().bottom() - label.geometry().bottom() + 3});
    EXPECT_EQ(label.pos(), home);
    EXPECT_EQ(form.Groups(), mixed);
    QTest::mousePress(&label, Qt::LeftButton);
    QTest::mouseMove(&label, {-3000, 5000});
    EXPECT_TRUE(label.parentWidget()->rect().contains(label.geometry()));
    EXPECT_NE(label.pos(), home);
    QTest::keyClick(&label, Qt::Key_Escape);
    EXPECT_TRUE(form.isVisible());
    QTest::mouseRelease(&label, Qt::LeftButton);
    EXPECT_EQ(label.pos(), home);
    QTest::keyClick(&label, Qt::Key_Escape);
    EXPECT_EQ(form.result(), QDialog::Rejected);
}

TEST_F(LinkingFormTest, KeysMoveTheFocusedNumber) {
    EXPECT_TRUE(Label(0).hasFocus());
    QTest::keyClick(&Label(0), Qt::Key_2);
    QTest::keyClick(&Label(0), Qt::Key_Left);
    EXPECT_TRUE(Label(7).hasFocus());
    for (const Qt::Key key : {Qt::Key_0, Qt::Key_5, Qt::Key_Down})
        QTest::keyClick(&Label(7), key);
    EXPECT_TRUE(Label(0).hasFocus());
    QTest::keyClick(&Label(0), Qt::Key_Tab);
    EXPECT_TRUE(Label(1).hasFocus());
    EXPECT_EQ(form.Groups(), (LinkGroups{2, 1, 3, 1, 0, 3, 0, 0}));
    QTest::keyClick(&Label(1), Qt::Key_Return);
    EXPECT_EQ(form.result(), QDialog::Accepted);
}

TEST_F(LinkingFormTest, ADragShowsWhereItWouldDrop) {
    const auto marked = [&] {
        QString frames;
        for (int frame = 0; frame < 5; ++frame)
            if (Frame(frame).backgroundRole() != QPalette::Base)
                frames += QString::number(frame);
        return frames;
    };
    QLabel& label = Label(0);
    const QPoint grab = label.rect().center();
    QTest::mousePress(&label, Qt::LeftButton, {}, grab);
    QTest::mouseMove(&label, label.mapFromParent(Frame(2).geometry().center()));
    EXPECT_EQ(marked(), "2"_L1);
    QTest::keyClick(&label, Qt::Key_3);
    QTest::mouseRelease(&label, Qt::RightButton, {}, grab);
    EXPECT_EQ(form.Groups(), mixed) << "the pointer has it";
    QTest::mouseRelease(&label, Qt::LeftButton, {}, label.mapFromParent(Frame(2).geometry().center()));
    EXPECT_EQ(marked(), QString());
    EXPECT_EQ(form.Groups()[0], 2);
}
