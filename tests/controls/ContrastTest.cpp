#include "controls/Contrast.h"

#include "controls/AddressLabel.h"
#include "controls/LayoutHelpers.h"
#include "controls/NameLabel.h"
#include "controls/VisibleMarks.h"
#include "support/Windows.h"

#include <map>

using namespace vek;
using namespace Qt::StringLiterals;

TEST(Contrast, RatiosOfKnownPairs) {
    const std::tuple<QColor, QColor, double> pairs[] = {{Qt::black, Qt::white, 21.0},
                                                        {Qt::white, Qt::black, 21.0},
                                                        {QColor(0x777777), QColor(0x777777), 1.0},
                                                        {QColor(0x767676), Qt::white, 4.54},
                                                        {Qt::red, Qt::white, 4.0},
                                                        {Qt::blue, Qt::white, 8.59},
                                                        {QColor(0x0a0a0a), Qt::black, 1.06}};
    for (const auto& [one, other, ratio] : pairs)
        EXPECT_NEAR(ContrastRatio(one, other), ratio, 0.005)
            << one.name().toStdString() << ' ' << other.name().toStdString();
}

TEST(Contrast, LighterTextStaysReadable) {
    const std::pair<QColor, QColor> palettes[] = {{Qt::black, QColor(0xefefef)},
                                                  {QColor(0xfcfcfc), QColor(0x232629)},
                                                  {QColor(0x555555), Qt::white},
                                                  {QColor(0xa8a8a8), QColor(0x202020)}};
    for (const auto& [text, background] : palettes) {
        const QColor lighter = LighterText(text, background);
        EXPECT_GE(ContrastRatio(lighter, background), readableContrast) << lighter.name().toStdString();
        EXPECT_LT(ContrastRatio(lighter, background), ContrastRatio(text, background));
    }
    EXPECT_EQ(LighterText(QColor(0x888888), Qt::white), QColor(0x888888)) << "nothing to spare";
}

TEST(Contrast, AFillGivesWayToItsText) {
    const std::pair<QColor, QColor> fills[] = {{QColor(0x308cc6), Qt::white},
                                               {QColor(0x3daee9), Qt::white},
                                               {QColor(0x3060a0), Qt::black},
                                               {QColor(0x808080), QColor(0x808080)}};
    for (const auto& [fill, text] : fills)
        EXPECT_GE(ContrastRatio(ReadableOn(fill, text), text), readableContrast) << fill.name().toStdString();
    EXPECT_EQ(ReadableOn(Qt::darkBlue, Qt::white), QColor(Qt::darkBlue));
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

/// The contrast of what is painted most in the widget's place with what stands out of it best.
static double PaintedContrast(QWidget& widget) {
    const QRect place(widget.mapTo(widget.window(), QPoint()), widget.size());
    const QImage image = widget.window()->grab(place).toImage();
    std::map<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ++counts[image.pixel(x, y)];
    const auto most = std::ranges::max_element(counts, {}, [](const auto& count) { return count.second; });
    double best = 1.0;
    for (const auto& [colour, count] : counts)
        best = std::max(best, ContrastRatio(QColor(colour), QColor(most->first)));
    return best;
}

static QPalette DarkPalette() {
    QPalette dark(QColor(0x31363b), QColor(0x232629));
    dark.setColor(QPalette::Highlight, QColor(0x3daee9));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    return dark;
}

TEST(Contrast, WhatThePagesPaintIsReadableInLightAndDark) {
    for (const QPalette& palette : {QApplication::palette(), DarkPalette()}) {
        QTabWidget window; // its pane has a shade of its own
        window.setPalette(palette);
        window.setFont(QFont(u"sans"_s, 24)); // so that letters have whole pixels
        auto* page = new QGroupBox;
        window.addTab(page, {});
        auto* column = new QVBoxLayout(page);
        AddressLabel on, off;
        NameLabel name(page);
        QWidget* const shown[] = {&on, &off, &name, MakeHint(u"Hint"_s, page)};
        for (QWidget* widget : shown)
            column->addWidget(widget);
        on.ShowAddress(512, true);
        off.ShowAddress(512, false);
        name.SetName(u"Lectern"_s);
        window.show();
        for (QWidget* widget : shown)
            EXPECT_GE(PaintedContrast(*widget), readableContrast)
                << widget->metaObject()->className() << widget->accessibleName().toStdString();
    }
}

TEST(VisibleMarks, EmptyBoxesAreSeenInTheDarkAndLeftAloneInTheLight) {
    VisibleMarks style(QStyleFactory::create(u"fusion"_s));
    const std::unique_ptr<QStyle> plain(QStyleFactory::create(u"fusion"_s));
    for (const bool dark : {false, true}) {
        QCheckBox check;
        QRadioButton radio;
        for (QAbstractButton* button : std::initializer_list<QAbstractButton*>{&check, &radio}) {
            button->setPalette(dark ? DarkPalette() : plain->standardPalette());
            button->setStyle(plain.get());
            const QImage before = button->grab().toImage();
            button->setStyle(&style);
            EXPECT_EQ(button->grab().toImage() == before, !dark);
            EXPECT_TRUE(!dark || PaintedContrast(*button) >= visibleContrast) << PaintedContrast(*button);
        }
    }
}
