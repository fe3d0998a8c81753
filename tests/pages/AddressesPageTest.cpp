#include "pages/AddressesPage.h"

#include "controls/AddressLabel.h"
#include "pages/PageLayout.h"

#include <QContextMenuEvent>

namespace vek {
namespace {

using namespace Qt::StringLiterals;
using enum AddressGroup;

/// A row of the page: an address of the "In" side and one of the "Out" side.
struct Row {
    AddressGroup Group;
    std::size_t In;
    std::size_t Out;
    const char* Name; ///< of the group's labels
    QString Caption;
    const char* Frame;
    int InAddress; ///< of output 3, base 1000
    int OutAddress;
};

std::vector<Row> Rows() {
    std::vector<Row> rows;
    for (int i = 0; i < 8; ++i) {
        const auto n = static_cast<std::size_t>(i);
        rows.push_back(
            {Mode, n, n + 8, "VekNetLabel2", u"Mode %1"_s.arg(i + 1), "Mode Recall", 1000 + i, 1008 + i});
        rows.push_back({Route, n, n + 8, "VekNetLabelRoute", u"Input %1"_s.arg(i + 1),
                        "Input Select Addresses", 1080 + 8 * 2 + i, 1144 + 8 * 2 + i});
    }
    const QString controls[] = {u"Next"_s, u"Previous"_s, u"Analog"_s};
    for (int i = 0; i < 3; ++i) {
        const auto n = static_cast<std::size_t>(i);
        rows.push_back({RouteControl, n, n + 3, "VekNetLabelRouteControl", controls[n],
                        "Input Select Addresses", 1208 + 3 * 2 + i, 1232 + 3 * 2 + i});
    }
    const QString volumes[] = {u"Step Up"_s, u"Step Down"_s, u"Analog"_s, u"Mute"_s};
    for (int i = 0; i < 4; ++i) {
        const auto n = static_cast<std::size_t>(i);
        rows.push_back({Volume, n, n + 4, "VolumeVekNetLabel", volumes[n], "Volume Addresses",
                        1016 + 4 * 2 + i, 1048 + 4 * 2 + i});
    }
    return rows;
}

struct AddressesPageTest : testing::Test {
    AddressesPageTest() {
        page.resize(900, 600);
        page.ShowAddresses({}, 1000, 2); // a label without a text would still be found
        ShowActive(page);
        QObject::connect(&page, &AddressesPage::Clicked, [this](AddressGroup group, std::size_t function) {
            seen.emplace_back("click", group, function);
        });
        QObject::connect(&page, &AddressesPage::MenuRequested,
                         [this](AddressGroup group, std::size_t function, QPoint at) {
                             seen.emplace_back(at == wanted ? "menu" : "menu elsewhere", group, function);
                         });
    }

    AddressesPage page;
    std::vector<std::tuple<std::string, AddressGroup, std::size_t>> seen;
    QPoint wanted; ///< where a menu must open, global
};

TEST_F(AddressesPageTest, EachLabelIsNamedByItsRowAndItsSide) {
    for (const Row& row : Rows()) {
        AddressLabel& in = *page.Labels(row.Group)[row.In];
        AddressLabel& out = *page.Labels(row.Group)[row.Out];
        EXPECT_EQ(in.objectName(), u"%1_%2"_s.arg(QLatin1StringView(row.Name)).arg(row.In));
        EXPECT_EQ(out.objectName(), u"%1_%2"_s.arg(QLatin1StringView(row.Name)).arg(row.Out));
        EXPECT_EQ(in.accessibleName(), QString(row.Caption + u" In"_s));
        EXPECT_EQ(out.accessibleName(), QString(row.Caption + u" Out"_s));
        EXPECT_EQ(Caption(page, in, Qt::LeftEdge), row.Caption);
        EXPECT_EQ(FrameTitle(in), QLatin1StringView(row.Frame));
        EXPECT_EQ(in.y(), out.y());
        EXPECT_LT(in.x(), out.x());
    }
    EXPECT_EQ(Caption(page, *page.Labels(Mode)[0], Qt::TopEdge), "In"_L1);
    EXPECT_EQ(Caption(page, *page.Labels(Mode)[8], Qt::TopEdge), "Out"_L1);
}

TEST_F(AddressesPageTest, AnEnabledFunctionShowsItsAddress) {
    for (const Row& row : Rows())
        for (const bool output : {false, true}) {
            AddressEnables one;
            AddressFlag(one, row.Group, output ? row.Out : row.In, 2) = flagTrue;
            page.ShowAddresses(one, 1000, 2);
            QStringList on;
            for (const AddressLabel* label : page.findChildren<AddressLabel*>())
                if (label->text() != "OFF"_L1)
                    on += label->objectName() + u' ' + label->text();
            const std::size_t function = output ? row.Out : row.In;
            EXPECT_EQ(on, QStringList(u"%1_%2 %3"_s.arg(QLatin1StringView(row.Name))
                                          .arg(function)
                                          .arg(output ? row.OutAddress : row.InAddress)));
            page.ShowAddresses(one, 1000, 3);
            EXPECT_EQ(page.Labels(row.Group)[function]->text() == "OFF"_L1, row.Group != Mode);
        }
}

TEST_F(AddressesPageTest, EveryLabelTellsItsFunction) {
    for (const Row& row : Rows())
        for (const std::size_t function : {row.In, row.Out}) {
            AddressLabel& label = *page.Labels(row.Group)[function];
            seen.clear();
            QTest::mouseClick(&label, Qt::LeftButton);
            wanted = label.mapToGlobal(label.rect().center());
            QTest::mousePress(&label, Qt::RightButton);
            using Raised = decltype(seen);
            EXPECT_EQ(seen, (Raised{{"click", row.Group, function}, {"menu", row.Group, function}}));
            EXPECT_EQ(label.text(), "OFF"_L1) << "the owner of the flags shows them";
        }
}

} // namespace
} // namespace vek
