// The value axis: from zero in few round steps to just above the highest value.
//
//     ValueAxis axis = RoundAxis(7.3, 5);   // 0, 2, 4, 6, 8
#pragma once

#include <QString>
#include <QStringList>

namespace kelvrane::chartspace {

struct ValueAxis {
    double step = 1;
    int steps = 1; ///< grid lines above the base line
    bool percent = false;

    double top() const { return step * steps; }
    /// Value of a grid line; 0 is the base line.
    double at(int line) const { return step * line; }
    /// "2 h" or "40%".
    QString text(int line) const;
    /// Texts of all grid lines, base line first.
    QStringList texts() const;
};

/// Hours. Steps are 1, 2 or 5 times a power of ten, below one hour also a quarter and a half; there
/// are at most maxSteps (at least 1) of them. A highest value of zero gives an axis of one hour.
ValueAxis RoundAxis(double highest, int maxSteps);
/// 0 to 100 percent.
ValueAxis PercentAxis(int maxSteps);

} // namespace kelvrane::chartspace
