// Title, legend, and the text of an empty chart.
#include "chartspace/labels.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace kelvrane::chartspace {

namespace {

struct Entry {
    QString text;
    QColor color;
};

constexpr double swatch = 10;
constexpr double swatchGap = 6;
constexpr double columnGap = 16;

QPolygonF RoundedSquare(const QRectF& r) {
    constexpr double cut = 2;
    return QPolygonF({{r.left() + cut, r.top()},
                      {r.right() - cut, r.top()},
                      {r.right(), r.top() + cut},
                      {r.right(), r.bottom() - cut},
                      {r.right() - cut, r.bottom()},
                      {r.left() + cut, r.bottom()},
                      {r.left(), r.bottom() - cut},
                      {r.left(), r.top() + cut}});
}

void AddEntry(Composition& c, const Entry& entry, const QRectF& cell) {
    const double indent = entry.color.isValid() ? swatch + swatchGap : 0;
    const QRectF box = cell.adjusted(indent, 0, 0, 0);
    const QString text = Shortened(entry.text, c.metrics, box.width());
    if (!AddIfClear(c,
                    LevelLabel(c, text, box, Qt::AlignVCenter | Qt::AlignLeft, LabelRole::Legend)))
        return;
    if (indent > 0)
        c.marks.append(
            {RoundedSquare(QRectF(cell.left(), cell.center().y() - swatch / 2, swatch, swatch)),
             entry.color});
}

/// One row over the plot, from its left; wraps never, leaves out what doesn't fit.
void AddSeriesLegend(Composition& c) {
    if (c.room.height() < c.line() * 6)
        return;
    double left = c.room.left();
    for (int s = 0; s < c.values.series() && s < 50; ++s) {
        const QString text = OneLine(c.chart.series[s].name);
        const double width = swatch + swatchGap + c.metrics.horizontalAdvance(text) + 1;
        const double cell = std::min(width, c.room.right() - left);
        if (cell < swatch + swatchGap + c.line())
            break;
        AddEntry(c, {text, c.seriesColor(s)}, QRectF(left, c.room.top(), cell, c.line()));
        left += width + columnGap;
    }
    c.room.setTop(c.room.top() + c.line() + 8);
}

/// Columns of names beside the pie, or under it where the sheet is high. The pie keeps at least
/// half of the sheet; what doesn't fit is counted in the last entry.
void AddCategoryLegend(Composition& c) {
    const double rowHeight = c.line() + 2;
    const QRectF room = c.room;
    const bool beside = room.width() > room.height() * 1.15;
    const QRectF most = beside ? room.adjusted(room.width() * 0.45, 0, 0, 0)
                               : room.adjusted(0, room.height() * 0.6, 0, 0);
    const int rows = static_cast<int>(most.height() / rowHeight);
    if (rows < 2 || most.width() < 70)
        return;

    std::vector<Entry> entries;
    double widest = 0;
    const int count = std::min(c.values.categories(), 400);
    for (int i = 0; i < count; ++i) {
        const QString name = OneLine(c.chart.categories[i]);
        if (name.isEmpty())
            continue;
        entries.push_back({name, c.categoryColor(i)});
        widest = std::max(widest, c.metrics.horizontalAdvance(name) + 1);
    }
    if (entries.empty())
        return;
    widest += swatch + swatchGap;
    const double narrowest = 84;
    const int mostColumns = std::max(1, static_cast<int>(most.width() / (narrowest + columnGap)));
    const int wanted = static_cast<int>(entries.size());
    const int columns = beside ? std::min(mostColumns, (wanted + rows - 1) / rows)
                               : std::clamp(static_cast<int>(most.width() / (widest + columnGap)),
                                            1, std::min(wanted, mostColumns));
    if (wanted > columns * rows) {
        const auto shown = static_cast<size_t>(columns * rows - 1);
        const auto hidden = static_cast<int>(c.values.categories()) - static_cast<int>(shown);
        entries.resize(shown);
        entries.push_back({QStringLiteral("+ %1").arg(hidden), QColor()});
    }
    const int filled = (static_cast<int>(entries.size()) + columns - 1) / columns;
    const double cell = std::min(widest, most.width() / columns - columnGap);
    const double width = columns * cell + (columns - 1) * columnGap;
    const double height = filled * rowHeight;
    const QPointF origin = beside ? QPointF(room.right() - width, room.center().y() - height / 2)
                                  : QPointF(room.center().x() - width / 2, room.bottom() - height);
    for (int i = 0; i < static_cast<int>(entries.size()); ++i)
        AddEntry(c, entries[static_cast<size_t>(i)],
                 QRectF(origin.x() + i / filled * (cell + columnGap),
                        origin.y() + i % filled * rowHeight, cell, rowHeight - 1));
    if (beside)
        c.room.setRight(origin.x() - columnGap);
    else
        c.room.setBottom(origin.y() - 8);
}

} // namespace

void AddEmptyText(Composition& c) {
    if (c.chart.emptyText.isEmpty())
        return;
    QFont font = c.font;
    font.setPixelSize(font.pixelSize() * 5 / 4);
    const QFontMetricsF metrics(font);
    const QString text = Shortened(OneLine(c.chart.emptyText), metrics, c.room.width());
    if (text.isEmpty())
        return;
    QRectF box(0, 0, metrics.horizontalAdvance(text) + 1, metrics.height());
    box.moveCenter(c.room.center());
    Label label = LevelLabel(c, text, box, Qt::AlignCenter, LabelRole::Empty);
    label.font = font;
    label.color = c.theme.mutedText;
    c.labels.append(label);
}

void AddTitle(Composition& c) {
    // A blank title shows nothing and still takes its room.
    if (c.chart.title.isEmpty() || c.room.height() < c.line() * 4)
        return;
    QFont font = c.font;
    font.setPixelSize(font.pixelSize() * 5 / 4);
    font.setWeight(QFont::DemiBold);
    const QFontMetricsF metrics(font);
    const QString text = Shortened(OneLine(c.chart.title), metrics, c.room.width());
    Label label =
        LevelLabel(c, text, QRectF(c.room.left(), c.room.top(), c.room.width(), metrics.height()),
                   Qt::AlignCenter, LabelRole::Title);
    label.font = font;
    AddIfClear(c, label);
    c.room.setTop(c.room.top() + metrics.height() + 6);
}

void AddLegend(Composition& c) {
    if (!c.chart.legend)
        return;
    if (c.form.family == Family::Pie)
        AddCategoryLegend(c);
    else
        AddSeriesLegend(c);
}

} // namespace kelvrane::chartspace
