#include "chartspace/palette.h"

#include <QSet>

#include <gtest/gtest.h>

namespace kelvrane::chartspace {
namespace {

TEST(ChartPalette, WorkAndBreakKeepTheirColours) {
    EXPECT_EQ(SeriesColor(QStringLiteral("Break"), 0), QColor(0xe8, 0xa3, 0x3d));
    EXPECT_EQ(SeriesColor(QStringLiteral("Work"), 5), QColor(0x3b, 0x78, 0xd8));
    EXPECT_EQ(SeriesColor(QStringLiteral("Any"), 0), QColor(0x3b, 0x78, 0xd8));
    EXPECT_EQ(SeriesColor(QStringLiteral("Any"), 1), QColor(0xe8, 0xa3, 0x3d));
}

TEST(ChartPalette, AProjectKeepsItsHueAndThirtySixAreApart) {
    ProjectHues hues;
    const QColor alpha = hues.colorOf(QStringLiteral("Alpha"));
    QSet<QRgb> seen{alpha.rgb()};
    for (int i = 1; i < 36; ++i)
        seen.insert(hues.colorOf(QString::number(i)).rgb());
    EXPECT_EQ(seen.size(), 36);
    EXPECT_EQ(hues.colorOf(QStringLiteral("Alpha")), alpha);
    hues.reset();
    EXPECT_EQ(hues.colorOf(QStringLiteral("Beta")), alpha);
}

TEST(ChartPalette, TextReadsInLightAndDark) {
    for (const auto& [ground, text] : {std::pair<QColor, QColor>{"#ffffff", "#22252b"},
                                       {"#1f2228", "#e4e6ea"},
                                       {"#232629", "#fcfcfc"},
                                       {"#000000", "#ffffff"}}) {
        QPalette palette;
        palette.setColor(QPalette::Base, ground);
        palette.setColor(QPalette::Text, text);
        const ChartTheme theme = ThemeOf(palette);
        EXPECT_EQ(theme.background, ground);
        EXPECT_GE(Contrast(theme.mutedText, ground), 4.5);
    }
    for (int i = 0; i < 3 * hueCount; ++i)
        EXPECT_GE(Contrast(InkOn(HueAt(i)), HueAt(i)), 4.0) << i;
}

} // namespace
} // namespace kelvrane::chartspace
