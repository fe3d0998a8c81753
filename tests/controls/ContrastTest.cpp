#include "controls/Contrast.h"

#include "controls/NameLabel.h"
#include "support/Windows.h"

using namespace vek;
using namespace Qt::StringLiterals;

TEST(Contrast, RatiosOfKnownPairs) {
    const struct {
        QColor One, Other;
        double Ratio;
    } pairs[] = {{Qt::black, Qt::white, 21.0},
                 {Qt::white, Qt::black, 21.0},
                 {QColor(0x777777), QColor(0x777777), 1.0},
                 {QColor(0x767676), Qt::white, 4.54},
                 {Qt::red, Qt::white, 4.0},
                 {Qt::blue, Qt::white, 8.59},
                 {QColor(0x0a0a0a), Qt::black, 1.06}};
    for (const auto& pair : pairs)
        EXPECT_NEAR(ContrastRatio(pair.One, pair.Other), pair.Ratio, 0.005)
            << pair.One.name().toStdString() << ' ' << pair.Other.name().toStdString();
}

TEST(Contrast, LighterTextStaysReadable) {
    const std::pair<QColor, QColor> palettes[] = {{Qt::black, QColor(0xefefef)},
                                                  {QColor(0xfcfcfc), QColor(0x232629)},
                                                  {QColor(0x555555), Qt::white},
                                                  {QColor(0x909090), QColor(0x202020)}};
    for (const auto& [text, background] : palettes) {
        const QColor lighter = LighterText(text, background);
        EXPECT_GE(ContrastRatio(lighter, background), readableContrast) << lighter.name().toStdString();
        EXPECT_LT(ContrastRatio(lighter, background), ContrastRatio(text, background));
    }
    EXPECT_EQ(LighterText(QColor(0x888888), Qt::white), QColor(0x888888)) << "nothing to spare";
}

TEST(NameLabel, GivesWayAndIsThereOnlyWithAName) {
    QWidget window;
    NameLabel label(&window);
    window.show();
    EXPECT_FALSE(label.isVisible());
    const QString name = u"<b>Lectern at the window of the large hall, to the left</b>"_s;
    label.SetName(name);
    EXPECT_TRUE(label.isVisible());
    EXPECT_TRUE(Qt::mightBeRichText(label.toolTip()) && label.toolTip() != name) << "shown as it is";
    EXPECT_LT(label.sizeHint().width(), label.fontMetrics().horizontalAdvance(name) / 2);
    label.resize(label.sizeHint());
    const QImage cut = label.grab().toImage();
    label.SetName(label.fontMetrics().elidedText(name, Qt::ElideRight, label.width()));
    EXPECT_EQ(label.grab().toImage(), cut);
    label.SetName({});
    EXPECT_FALSE(label.isVisible());
    EXPECT_EQ(label.toolTip(), QString());
}
