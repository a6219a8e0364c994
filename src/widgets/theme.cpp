#include "widgets/theme.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

// Outside the namespace, as the macro wants it. The icons lie in a static library, from which the
// linker takes only what somebody asks for.
static void LoadResources() {
    Q_INIT_RESOURCE(kelvrane);
}

namespace kelvrane::theme {

namespace {

constexpr QRgb ValueBlue = 0xff3b78d8;
constexpr QRgb InactiveRed = 0xffc8372d;

struct StateRow {
    DayState state;
    QRgb color;
    const char* icon;
};
constexpr StateRow StateRows[] = {
    {DayState::Stopped, 0xff808790, "tray_stopped"},
    {DayState::Running, 0xff2e9e5b, "tray_running"},
    {DayState::OnBreak, 0xffe0962e, "tray_break"},
};

const StateRow& RowOf(DayState state) {
    return *std::ranges::find(StateRows, state, &StateRow::state);
}

double Linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& color) {
    return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) +
           0.0722 * Linear(color.blueF());
}

QColor Mix(const QColor& first, const QColor& second, double share) {
    const auto mixed = [share](double a, double b) {
        return static_cast<float>(std::clamp(a + (b - a) * share, 0.0, 1.0));
    };
    return QColor::fromRgbF(mixed(first.redF(), second.redF()),
                            mixed(first.greenF(), second.greenF()),
                            mixed(first.blueF(), second.blueF()));
}

/// The background on which text in a middling colour is hardest to read.
QColor HardestPaper(const QPalette& palette) {
    const QColor base = palette.color(QPalette::Base);
    const QColor window = palette.color(QPalette::Window);
    const bool darkerIsHarder = !IsDark(palette);
    return (Luminance(base) < Luminance(window)) == darkerIsHarder ? base : window;
}

QString PathOf(const QString& name) {
    [[maybe_unused]] static const bool loaded = (LoadResources(), true);
    return QStringLiteral(":/icons/") + name.toLower() + QStringLiteral(".svg");
}

QPixmap Rendered(const QString& name, QSize pixels) {
    QPixmap pixmap(pixels);
    pixmap.fill(Qt::transparent);
    QSvgRenderer renderer(PathOf(name));
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    QPainter painter(&pixmap);
    renderer.render(&painter);
    return pixmap;
}

/// Renders at the size asked for, in the colours of the moment.
class SvgIconEngine final : public QIconEngine {
  public:
    SvgIconEngine(QString name, bool tinted) : m_name(std::move(name)), m_tinted(tinted) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State state) override {
        const double ratio = painter->device()->devicePixelRatioF();
        QPixmap rendered = scaledPixmap(rect.size() * ratio, mode, state, 1);
        rendered.setDevicePixelRatio(ratio);
        painter->drawPixmap(rect.topLeft(), rendered);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return scaledPixmap(size, mode, state, 1);
    }

    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal) override {
        const QPalette palette = QGuiApplication::palette();
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const auto role =
            mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::WindowText;
        const QColor color = m_tinted ? palette.color(group, role) : QColor();
        const QString cacheKey = QStringLiteral("kelvrane/%1/%2x%3/%4")
                                     .arg(m_name)
                                     .arg(size.width())
                                     .arg(size.height())
                                     .arg(color.isValid() ? color.rgba() : 0);
        QPixmap pixmap;
        if (QPixmapCache::find(cacheKey, &pixmap))
            return pixmap;
        pixmap = Rendered(m_name, size);
        if (m_tinted) {
            QPainter painter(&pixmap);
            painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
            painter.fillRect(pixmap.rect(), color);
        }
        QPixmapCache::insert(cacheKey, pixmap);
        return pixmap;
    }

    /// Panels of the desktop ask for these; an empty list would leave the tray without an icon.
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
        QList<QSize> sizes;
        for (const int side : {16, 22, 24, 32, 48, 64, 128, 256})
            sizes.append(QSize(side, side));
        return sizes;
    }

    QString key() const override { return QStringLiteral("KelvraneSvg"); }
    QString iconName() override { return {}; }
    bool isNull() override { return false; }
    QIconEngine* clone() const override { return new SvgIconEngine(m_name, m_tinted); }

  private:
    QString m_name;
    bool m_tinted;
};

} // namespace

bool IsDark(const QPalette& palette) {
    return Luminance(palette.color(QPalette::Window)) <
           Luminance(palette.color(QPalette::WindowText));
}

double Contrast(const QColor& first, const QColor& second) {
    const auto [dark, light] = std::minmax({Luminance(first), Luminance(second)});
    return (light + 0.05) / (dark + 0.05);
}

QColor ReadableOn(const QColor& ink, const QColor& paper, double contrast) {
    const QColor end =
        Contrast(Qt::black, paper) > Contrast(Qt::white, paper) ? Qt::black : Qt::white;
    for (int percent = 0; percent < 100; percent += 2) {
        const QColor shade = Mix(ink, end, percent / 100.0);
        if (Contrast(shade, paper) >= contrast)
            return shade;
    }
    return end;
}

QColor StateColor(DayState state, const QPalette& palette) {
    if (state != DayState::Stopped)
        return QColor::fromRgb(RowOf(state).color);
    return ReadableOn(QColor::fromRgb(RowOf(state).color), HardestPaper(palette), 3);
}

QColor ValueColor(TextRole role, const QPalette& palette) {
    if (role == TextRole::Plain)
        return palette.color(QPalette::Text);
    // A little over 4.5, since a chosen row is washed with the highlight.
    return ReadableOn(QColor::fromRgb(role == TextRole::Value ? ValueBlue : InactiveRed),
                      HardestPaper(palette), 5);
}

QColor SecondaryText(const QPalette& palette) {
    const QColor quiet = Mix(palette.color(QPalette::Text), palette.color(QPalette::Base), 0.36);
    return ReadableOn(quiet, HardestPaper(palette), 5);
}

QColor Hairline(const QPalette& palette) {
    return Mix(palette.color(QPalette::Base), palette.color(QPalette::Text),
               IsDark(palette) ? 0.17 : 0.13);
}

QColor Wash(const QPalette& palette, double strength) {
    QColor wash = palette.color(QPalette::WindowText);
    wash.setAlphaF(static_cast<float>(IsDark(palette) ? strength * 1.4 : strength));
    return wash;
}

QIcon Icon(const QString& name) {
    if (name.isEmpty() || !QFile::exists(PathOf(name)))
        return {};
    return QIcon(new SvgIconEngine(name.toLower(), true));
}

QPixmap IconPixmap(const QString& name, int size, const QColor& color, double devicePixelRatio) {
    if (name.isEmpty() || !QFile::exists(PathOf(name)))
        return {};
    const int side = qRound(size * devicePixelRatio);
    QPixmap pixmap = Rendered(name, QSize(side, side));
    {
        QPainter painter(&pixmap);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(pixmap.rect(), color);
    }
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}

QIcon TrayStateIcon(DayState state) {
    // Ready pixmaps: they also reach panels that are other processes.
    QIcon icon;
    for (const int side : {16, 22, 24, 32, 44, 48, 64})
        icon.addPixmap(Rendered(QLatin1String(RowOf(state).icon), QSize(side, side)));
    return icon;
}

QIcon AppIcon() {
    return QIcon(new SvgIconEngine(QStringLiteral("app"), false));
}

QFont TabularFont(const QFont& font) {
    // Qt 6.4 has no switch for font features. Most desktop fonts have figures of one width as they
    // stand; kerning would still move them.
    QFont tabular = font;
    tabular.setKerning(false);
    return tabular;
}

int FromTwips(double twips) {
    return static_cast<int>(std::lround(twips / 15.0));
}
double ToTwips(int pixels) {
    return pixels * 15.0;
}

} // namespace kelvrane::theme
