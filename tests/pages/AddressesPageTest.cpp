#include "pages/AddressesPage.h"

#include "controls/AddressLabel.h"
#include "controls/FocusGrid.h"
#include "pages/PageLayout.h"

using namespace vek;
using namespace Qt::StringLiterals;
using enum AddressGroup;

static QStringList Numbered(const QString& caption) {
    QStringList captions;
    for (int i = 1; i <= 8; ++i)
        captions += caption.arg(i);
    return captions;
}

constexpr int base = 32700; // addresses are plain sums, also beyond what a base can be

/// The labels of a group: all of the "In" side, then all of the "Out" side.
const struct {
    AddressGroup Group;
    const char* Name; ///< of the labels
    QString Spoken;   ///< what the group is called
    QStringList Captions;
    int In; ///< the first address of output 3, from the base
    int Out;
} groups[] = {
    {Mode, "VekNetLabel2", u"Mode Recall"_s, Numbered(u"Mode %1"_s), 0, 8},
    {Volume,
     "VolumeVekNetLabel",
     u"Volume Addresses"_s,
     {u"Step Up"_s, u"Step Down"_s, u"Analog"_s, u"Mute"_s},
     24,
     56},
    {RouteControl,
     "VekNetLabelRouteControl",
     u"Input Select Addresses"_s,
     {u"Next"_s, u"Previous"_s, u"Analog"_s},
     214,
     238},
    {Route, "VekNetLabelRoute", u"Input Select Addresses"_s, Numbered(u"Input %1"_s), 96, 160},
};

TEST(AddressesPage, EachLabelHasItsNameItsAddressAndItsMenu) {
    AddressesPage page;
    page.resize(900, 600);
    page.ShowNames(Names("Input 2: Lectern\r\nOutput 3: Foyer"));
    page.ShowAddresses({}, base, 2); // a label without a text would still be found
    ShowActive(page);
    std::vector<std::pair<AddressGroup, std::size_t>> menus; // asked for
    QPoint wanted;                                           // where a menu must open, global
    QObject::connect(&page, &AddressesPage::MenuRequested,
                     [&](AddressGroup group, std::size_t function, QPoint at) {
                         EXPECT_EQ(at, wanted);
                         menus.emplace_back(group, function);
                     });
    for (const auto& group : groups) {
        const std::size_t rows = static_cast<std::size_t>(group.Captions.size());
        for (std::size_t function = 0; function < 2 * rows; ++function) {
            const bool output = function >= rows;
            const std::size_t row = function % rows;
            const QString caption = group.Captions[static_cast<qsizetype>(row)];
            AddressLabel& label = *page.Labels(group.Group)[function];
            const QString name = caption == "Input 2"_L1 ? u"Lectern"_s : QString();
            EXPECT_EQ(Caption(page, label, Qt::LeftEdge), name.isEmpty() ? caption : name);

            const int address = base + (output ? group.Out : group.In) + static_cast<int>(row);
            AddressEnables one;
            AddressFlag(one, group.Group, function, 2) = flagTrue;
            page.ShowAddresses(one, base, 2);
            QStringList on;
            for (const AddressLabel* shown : page.findChildren<AddressLabel*>())
                if (shown->text() != "OFF"_L1)
                    on += shown->objectName() + u' ' + shown->text();
            EXPECT_EQ(
                on, QStringList(u"%1_%2 %3"_s.arg(QLatin1StringView(group.Name)).arg(function).arg(address)));
            const QString place = group.Group == Mode ? QString() : u", Output 3 Foyer"_s;
            EXPECT_EQ(label.accessibleName(),
                      u"%1, %2%3, %4%5, address %6, on"_s.arg(
                          group.Spoken, caption, name.isEmpty() ? name : u' ' + name,
                          output ? u"Out"_s : u"In"_s, place, QString::number(address)));
            page.ShowAddresses(one, base, 3);
            EXPECT_TRUE(label.accessibleName().endsWith(group.Group == Mode ? "on"_L1 : "off"_L1));
            EXPECT_EQ(label.text() == "OFF"_L1, group.Group != Mode);
            EXPECT_EQ(label.isChecked(), group.Group == Mode);

            wanted = label.mapToGlobal(label.rect().center());
            QTest::mousePress(&label, Qt::RightButton);
            for (const auto reason : {QContextMenuEvent::Mouse, QContextMenuEvent::Keyboard}) {
                QContextMenuEvent event(reason, {3, 4}, wanted); // the mouse has its menu by then
                QApplication::sendEvent(&label, &event);
            }
            EXPECT_EQ(std::exchange(menus, {}), decltype(menus)(2, {group.Group, function}));
        }
    }
}

TEST(AddressesPage, AGroupIsOneTabStopAndArrowKeysMoveWithinIt) {
    AddressesPage page;
    page.ShowAddresses({}, base, 2);
    ShowActive(page);
    const auto press = [](std::initializer_list<Qt::Key> keys) {
        for (const Qt::Key key : keys)
            QTest::keyClick(QApplication::focusWidget(), key);
        return QApplication::focusWidget()->objectName();
    };
    page.Labels(Mode)[0]->setFocus();
    EXPECT_FALSE(ShowsFocus(*page.Labels(Mode)[0]));
    EXPECT_EQ(press({Qt::Key_Tab, Qt::Key_Backtab}), "VekNetLabel2_0"_L1);
    EXPECT_TRUE(ShowsFocus(*page.Labels(Mode)[0])) << "the keyboard brings it";
    EXPECT_EQ(press({Qt::Key_Right, Qt::Key_Right, Qt::Key_Down, Qt::Key_Down}), "VekNetLabel2_10"_L1);
    EXPECT_EQ(press({Qt::Key_Tab}), "VekNetLabelRoute_0"_L1);
    EXPECT_EQ(press({Qt::Key_Up, Qt::Key_Left, Qt::Key_End}), "VekNetLabelRouteControl_5"_L1);
    EXPECT_EQ(press({Qt::Key_Down, Qt::Key_Left, Qt::Key_Up, Qt::Key_Up, Qt::Key_Up}),
              "VekNetLabelRoute_7"_L1);
    EXPECT_EQ(press({Qt::Key_Home, Qt::Key_Down, Qt::Key_Tab}), "VolumeVekNetLabel_0"_L1);
    EXPECT_EQ(press({Qt::Key_Backtab}), "VekNetLabelRoute_1"_L1);
    QTest::mouseClick(page.Labels(Mode)[7], Qt::LeftButton);
    EXPECT_EQ(press({Qt::Key_Tab, Qt::Key_Backtab}), "VekNetLabel2_7"_L1);
    page.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(press({Qt::Key_Left}), "VekNetLabel2_15"_L1);
}
