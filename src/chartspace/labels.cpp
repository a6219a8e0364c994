#include "chartspace/labels.h"

#include <algorithm>
#include <cmath>

namespace kelvrane::chartspace {

namespace {

constexpr double gap = 5;          // between a label and the axis, and its neighbour at least
constexpr double levelEnough = 64; // a shortened name of this width still says enough
constexpr qsizetype longestName = 120;

/// True when some edge of a separates the two.
bool EdgeSeparates(const QPolygonF& a, const QPolygonF& b) {
    for (int i = 0; i + 1 < a.size(); ++i) {
        const QPointF edge = a[i + 1] - a[i];
        const QPointF normal(-edge.y(), edge.x());
        const auto span = [&normal](const QPolygonF& shape) {
            double low = 1e300, high = -1e300;
            for (const QPointF& p : shape) {
                const double d = QPointF::dotProduct(p, normal);
                low = std::min(low, d);
                high = std::max(high, d);
            }
            return std::pair(low, high);
        };
        const auto [lowA, highA] = span(a);
        const auto [lowB, highB] = span(b);
        if (highA <= lowB || highB <= lowA)
            return true;
    }
    return false;
}

/// Whether two convex shapes don't touch.
bool Apart(const QPolygonF& a, const QPolygonF& b) {
    return EdgeSeparates(a, b) || EdgeSeparates(b, a);
}

/// The widest text; with very many, only as many as could be shown are measured.
double Widest(const Composition& c, const LabelRow& row) {
    const int stride = std::max(1, row.count / 200);
    double widest = 0;
    for (int i = 0; i < row.count; i += stride)
        widest = std::max(widest, c.metrics.horizontalAdvance(row.text(i)) + 1);
    return widest;
}

/// Every n-th, so that neighbours are at least that far apart.
int StrideFor(double needed, double spacing) {
    return spacing <= 0 ? 1 << 20
                        : static_cast<int>(std::clamp(std::ceil(needed / spacing), 1.0, 1e6));
}

RowPlan PlanBelow(const Composition& c, const LabelRow& row, double spacing, double deepest) {
    const double line = c.line();
    const double widest = Widest(c, row);
    RowPlan plan;
    plan.longest = widest;
    plan.depth = line;
    if (row.count == 1 || widest + 2 * gap <= spacing)
        return plan;
    if (!row.mayChange) {
        plan.stride = StrideFor(widest + 2 * gap, spacing);
        return plan;
    }
    if (spacing >= levelEnough) {
        plan.longest = spacing - 2 * gap;
        plan.lines = 2;
        plan.depth = 2 * line;
        return plan;
    }
    const double half = std::sqrt(0.5);
    if (spacing * half >= line * 0.95) {
        plan.angle = -45;
        plan.longest = std::min(widest, std::max(deepest - line * half, line * 2) / half);
        plan.depth = (plan.longest + line) * half;
        return plan;
    }
    plan.angle = -90;
    plan.stride = StrideFor(line * 0.95, spacing);
    plan.longest = std::min(widest, std::max(deepest, line * 2));
    plan.depth = plan.longest;
    return plan;
}

/// The text on two lines: as many whole words as the first takes, and on the second the rest, or
/// the end of it.
QString OnTwoLines(const QString& text, const QFontMetricsF& metrics, double width) {
    if (metrics.horizontalAdvance(text) <= width)
        return text;
    qsizetype split = -1;
    for (qsizetype blank = text.indexOf(QLatin1Char(' '));
         blank > 0 && metrics.horizontalAdvance(text.left(blank)) <= width;
         blank = text.indexOf(QLatin1Char(' '), blank + 1))
        split = blank;
    if (split < 0)
        return Shortened(text, metrics, width);
    const QString rest = metrics.elidedText(text.mid(split + 1), Qt::ElideLeft, width);
    return text.left(split) + QLatin1Char('\n') + rest;
}

/// The label at its anchor; its text is shortened to what the sheet leaves in that direction.
Label AtAnchor(const Composition& c, const LabelRow& row, const RowPlan& plan,
               const QPointF& anchor, const QString& text) {
    const double line = c.line();
    const QRectF& sheet = c.sheet;
    Label label;
    label.font = c.font;
    label.color = c.theme.mutedText;
    label.role = row.role;
    double width = plan.longest;
    if (row.side != Side::Below) {
        const bool left = row.side == Side::Left;
        const double away = gap + row.lean * line / 2;
        label.pivot = anchor + QPointF(left ? -away : away, 0);
        width = std::min(width, left ? label.pivot.x() - 2 : sheet.right() - 2 - label.pivot.x());
        label.text = row.mayChange ? Shortened(text, c.metrics, width) : text;
        width = c.metrics.horizontalAdvance(label.text) + 1;
        label.box = QRectF(left ? -width : 0, -line / 2, width, line);
        label.alignment = Qt::AlignVCenter | (left ? Qt::AlignRight : Qt::AlignLeft);
        return label;
    }
    label.pivot = anchor + QPointF(0, gap);
    if (plan.angle == 0) {
        width = std::min(width, sheet.width() - 4);
        label.text = plan.lines > 1  ? OnTwoLines(text, c.metrics, width)
                     : row.mayChange ? Shortened(text, c.metrics, width)
                                     : text;
        width = 1;
        const QStringList lines = label.text.split(QLatin1Char('\n'));
        for (const QString& part : lines)
            width = std::max(width, c.metrics.horizontalAdvance(part) + 1);
        label.pivot.ry() += row.lean * width / 2;
        const double left = std::clamp(label.pivot.x() - width / 2, sheet.left() + 1,
                                       std::max(sheet.left() + 1, sheet.right() - 1 - width));
        label.box =
            QRectF(left - label.pivot.x(), 0, width, line * static_cast<double>(lines.size()));
        label.alignment = Qt::AlignHCenter | Qt::AlignTop;
        return label;
    }
    // Turned texts end at their anchor and come up to it from the lower left.
    const double radians = -plan.angle * M_PI / 180;
    const double across = line / 2 * std::cos(radians);
    label.pivot += QPointF(0, across);
    const double down = sheet.bottom() - 2 - label.pivot.y() - across;
    width = std::min(width, down / std::sin(radians));
    if (plan.angle > -90)
        width = std::min(width, (label.pivot.x() - 2 - across) / std::cos(radians));
    label.angle = plan.angle;
    label.text = Shortened(text, c.metrics, width);
    width = c.metrics.horizontalAdvance(label.text) + 1;
    label.box = QRectF(-width, -line / 2, width, line);
    label.alignment = Qt::AlignVCenter | Qt::AlignRight;
    return label;
}

} // namespace

QString OneLine(const QString& name) {
    if (name.size() <= longestName)
        return name.simplified();
    const QString shorter =
        name.left(longestName / 2) + QChar(0x2026) + name.right(longestName / 2);
    return shorter.simplified();
}

QString Shortened(const QString& text, const QFontMetricsF& metrics, double width) {
    if (metrics.horizontalAdvance(text) <= width)
        return text;
    const QString shorter = metrics.elidedText(text, Qt::ElideMiddle, width);
    // One letter and dots tell nobody anything.
    return shorter.size() < 5 || metrics.horizontalAdvance(shorter) > width ? QString() : shorter;
}

bool Overlap(const Label& a, const Label& b) {
    const QPolygonF outlineA = a.outline();
    const QPolygonF outlineB = b.outline();
    if (!outlineA.boundingRect().intersects(outlineB.boundingRect()))
        return false;
    return !Apart(outlineA, outlineB);
}

RowPlan PlanRow(const Composition& c, const LabelRow& row, double spacing, double deepest) {
    if (row.side == Side::Below)
        return PlanBelow(c, row, spacing, deepest);
    const double widest = Widest(c, row);
    RowPlan plan;
    plan.longest = row.mayChange ? std::min(widest, deepest) : widest;
    plan.depth = plan.longest;
    plan.stride = row.count == 1 ? 1 : StrideFor(c.line() * 0.95, spacing);
    return plan;
}

void PlaceRow(Composition& c, const LabelRow& row, const RowPlan& plan,
              const std::vector<QPointF>& anchors) {
    for (int i = 0; i < row.count; i += plan.stride)
        AddIfClear(c, AtAnchor(c, row, plan, anchors[static_cast<size_t>(i)], row.text(i)));
}

bool AddIfClear(Composition& c, Label label) {
    if (label.text.isEmpty())
        return false;
    const QRectF bounds = label.outline().boundingRect();
    if (!c.sheet.adjusted(-0.5, -0.5, 0.5, 0.5).contains(bounds))
        return false;
    if (label.role != LabelRole::Share && !c.keepClear.isEmpty() &&
        !Apart(label.outline(), c.keepClear))
        return false;
    const bool taken = std::any_of(c.labels.cbegin(), c.labels.cend(),
                                   [&label](const Label& other) { return Overlap(label, other); });
    if (!taken)
        c.labels.append(std::move(label));
    return !taken;
}

Label LevelLabel(const Composition& c, const QString& text, const QRectF& box,
                 Qt::Alignment alignment, LabelRole role) {
    Label label;
    label.text = text;
    label.pivot = box.topLeft();
    label.box = QRectF(QPointF(0, 0), box.size());
    label.font = c.font;
    label.color = c.theme.text;
    label.alignment = alignment;
    label.role = role;
    return label;
}

} // namespace kelvrane::chartspace
