#include "chartspace/palette.h"

#include <array>
#include <cmath>

namespace kelvrane::chartspace {

namespace {

// Of even lightness, and chosen so that any two also differ for eyes without one of the three
// receptors; neighbours in this row differ most.
constexpr std::array<QRgb, hueCount> hues{0xff1177e7, 0xffec8e17, 0xff5aca94, 0xffcf5271,
                                          0xff8ba2f9, 0xff4a8e1b, 0xffd277d0, 0xffb69a6c,
                                          0xff9f50ca, 0xff5fa3a0, 0xffcaa2c8, 0xff83709c};

double Linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& color) {
    return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) +
           0.0722 * Linear(color.blueF());
}

ChartTheme ThemeOf(const QColor& background, const QColor& text) {
    ChartTheme theme;
    theme.background = background;
    theme.text = text;
    double share = 0.35;
    do {
        theme.mutedText = Mixed(text, background, share);
        share -= 0.05;
    } while (share > 0 && Contrast(theme.mutedText, background) < 4.5);
    theme.grid = Mixed(background, text, 0.12);
    theme.baseLine = Mixed(background, text, 0.35);
    theme.wall = Mixed(background, text, 0.04);
    theme.floor = Mixed(background, text, 0.09);
    return theme;
}

} // namespace

QColor SeriesColor(const QString& name, int index) {
    if (name == QLatin1String("Work"))
        return QColor::fromRgb(workBlue);
    if (name == QLatin1String("Break"))
        return QColor::fromRgb(breakAmber);
    if (index < 2)
        return QColor::fromRgb(index == 0 ? workBlue : breakAmber);
    return HueAt(index);
}

QColor HueAt(int index) {
    const QColor hue = QColor::fromRgb(hues[static_cast<size_t>(index % hueCount)]);
    switch (index / hueCount % 3) {
    case 1:
        return Mixed(hue, Qt::white, 0.42);
    case 2:
        return Mixed(hue, Qt::black, 0.38);
    default:
        return hue;
    }
}

QColor ProjectHues::colorOf(const QString& project) {
    const auto found = m_places.constFind(project);
    if (found != m_places.constEnd())
        return HueAt(*found);
    const int place = static_cast<int>(m_places.size());
    m_places.insert(project, place);
    return HueAt(place);
}

QColor Mixed(const QColor& a, const QColor& b, double share) {
    const auto mix = [share](float from, float to) {
        return static_cast<float>(from + (to - from) * share);
    };
    return QColor::fromRgbF(mix(a.redF(), b.redF()), mix(a.greenF(), b.greenF()),
                            mix(a.blueF(), b.blueF()));
}

double Contrast(const QColor& a, const QColor& b) {
    const double la = Luminance(a);
    const double lb = Luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

QColor InkOn(const QColor& ground) {
    const QColor ink(0x1b, 0x1e, 0x24);
    return Contrast(ground, Qt::white) >= 4 || Contrast(ground, Qt::white) > Contrast(ground, ink)
               ? QColor(Qt::white)
               : ink;
}

ChartTheme ThemeOf(const QPalette& palette) {
    return ThemeOf(palette.color(QPalette::Base), palette.color(QPalette::Text));
}

ChartTheme PaperTheme() {
    return ThemeOf(QColor(Qt::white), QColor(0x22, 0x25, 0x2b));
}

} // namespace kelvrane::chartspace
