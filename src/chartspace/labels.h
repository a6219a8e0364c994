// Finding room for texts. A text that doesn't fit is turned, left out in favour of every n-th, or
// shortened in its middle; no text ever lies on another or leaves the sheet.
#pragma once

#include "chartspace/composition.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace kelvrane::chartspace {

/// A project's name on one line, a very long one without its middle.
QString OneLine(const QString& name);
/// The text, shortened in the middle to the width; empty when there is no room for even that.
QString Shortened(const QString& text, const QFontMetricsF& metrics, double width);
/// Whether two labels touch.
bool Overlap(const Label& a, const Label& b);

enum class Side { Below, Left, Right };

/// How a row of labels along an axis stands.
struct RowPlan {
    double angle = 0;   ///< 0, -45 or -90 degrees
    int stride = 1;     ///< every n-th is shown
    double longest = 0; ///< width of a text at most
    int lines = 1;      ///< of a level text
    double depth = 0;   ///< room that the row takes, away from the axis
};

struct LabelRow {
    int count = 0;
    std::function<QString(int)> text;
    Side side = Side::Below;
    LabelRole role = LabelRole::Category;
    bool mayChange = true; ///< may be turned and shortened (names); else only thinned out (numbers)
    /// How far the axis leans towards its labels, a pixel along it; makes their distance larger.
    double lean = 0;
};

/// spacing: distance of neighbouring anchors along the axis; deepest: what the row may take.
RowPlan PlanRow(const Composition& c, const LabelRow& row, double spacing, double deepest);
/// Sets the labels at their anchors; what would touch a label that is there already is left out.
void PlaceRow(Composition& c, const LabelRow& row, const RowPlan& plan,
              const std::vector<QPointF>& anchors);

/// Adds a label if it stays on the sheet and clear of all others. True when added.
bool AddIfClear(Composition& c, Label label);

/// A level label in a box on the sheet.
Label LevelLabel(const Composition& c, const QString& text, const QRectF& box,
                 Qt::Alignment alignment, LabelRole role);

} // namespace kelvrane::chartspace
