#include "dialogs/LinkingForm.h"

#include "base/Errors.h"
#include "support/Windows.h"

using namespace vek;
using namespace Qt::StringLiterals;

const LinkGroups mixed = {0, 1, 3, 1, 0, 3, 0, 1};

static QRect Rect(const PixelRect& rect) { return {rect.Left, rect.Top, rect.Width, rect.Height}; }

const GroupingSizes sizes[] = {{51, 34, 19}, {16, 20, 20}, {170, 27, 26}};

TEST(GroupingLayout, PacksEachGroupFromItsOriginInOutputOrder) {
    for (const GroupingSizes& size : sizes) {
        const GroupingLayout layout(size);
        LinkGroups column = {}, row;
        row.fill(3);
        const auto down = layout.Labels(column), right = layout.Labels(row);
        const auto at = layout.Labels(mixed);
        for (const auto& [output, place] : {std::pair(0, 0), {4, 1}, {6, 2}})
            EXPECT_EQ(at[output], down[place]) << output;
        for (const auto& [output, place] : {std::pair(2, 0), {5, 1}})
            EXPECT_EQ(at[output], right[place]) << output;
        for (std::size_t i = 1; i < outputCount; ++i) {
            EXPECT_EQ(down[i].Left, down[0].Left);
            EXPECT_GT(down[i].Top, down[i - 1].Top + size.LabelHeight);
            EXPECT_EQ(right[i].Top, right[0].Top);
            EXPECT_GT(right[i].Left, right[i - 1].Left + size.LabelWidth);
        }
        EXPECT_THROW(layout.Labels({5}), SubscriptError);
        EXPECT_THROW(layout.Labels({-1}), SubscriptError);
    }
}

TEST(GroupingLayout, FramesHoldAllEightLabelsAndNothingElse) {
    for (const GroupingSizes& size : sizes) {
        const GroupingLayout layout(size);
        for (std::int16_t group = 0; group <= linkGroupCount; ++group) {
            LinkGroups all;
            all.fill(group);
            for (const PixelRect& label : layout.Labels(all))
                EXPECT_EQ(layout.FrameAround(label), static_cast<std::size_t>(group));
            const auto frame = static_cast<std::size_t>(group);
            EXPECT_TRUE(Contains(layout.Bounds(), layout.Frame(frame)));
            EXPECT_TRUE(Contains(layout.Bounds(), layout.Caption(frame)));
            const QRect caption = Rect(layout.Caption(frame));
            for (std::size_t other = 0; other < groupFrameCount; ++other) {
                EXPECT_FALSE(caption.intersects(Rect(layout.Frame(other)))) << frame << ' ' << other;
                EXPECT_TRUE(other == frame ||
                            !Rect(layout.Frame(other)).intersects(Rect(layout.Frame(frame))));
            }
        }
        EXPECT_EQ(layout.Bounds().Height, GroupingLayout::HeightFor(size.LabelHeight, size.CaptionHeight));
        EXPECT_EQ(GroupingLayout::LabelWidthFor(layout.Bounds().Width, size.LabelHeight), size.LabelWidth);
    }
}

TEST(GroupingLayout, TouchingEdgesAreInside) {
    const GroupingLayout layout(sizes[0]);
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

    const Names names{"Output 2: Foyer\r\nMode 4: Ball"};
    LinkingForm form{mixed, 3, names};
};

TEST_F(LinkingFormTest, DroppingIntoAFrameMovesTheOutputAndClosesTheGap) {
    const QPoint third = Label(7).pos(), second = Label(3).pos();
    DragTo(1, 4);
    EXPECT_EQ(form.Groups(), (LinkGroups{0, 4, 3, 1, 0, 3, 0, 1}));
    EXPECT_EQ(Label(7).pos(), second);
    EXPECT_EQ(Label(1).accessibleName(), "Output 2 Foyer, group 4"_L1);
    DragTo(1, 0);
    DragTo(0, 1);
    EXPECT_EQ(form.Groups(), (LinkGroups{1, 0, 3, 1, 0, 3, 0, 1}));
    EXPECT_EQ(Label(7).pos(), third);
    EXPECT_EQ(Label(1).accessibleName(), "Output 2 Foyer, individual"_L1);
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
