#include "chartspace/axis.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kelvrane::chartspace {

namespace {

// A quarter of an hour is rounder than a fifth.
constexpr std::array tenths{1.0, 2.5, 5.0};
constexpr std::array decades{1.0, 2.0, 5.0};

int StepsTo(double highest, double step) {
    return std::max(1, static_cast<int>(std::ceil(highest / step - 1e-9)));
}

} // namespace

QString ValueAxis::text(int line) const {
    return QString::number(at(line), 'g', 6) +
           (percent ? QStringLiteral("%") : QStringLiteral(" h"));
}

QStringList ValueAxis::texts() const {
    QStringList all;
    for (int line = 0; line <= steps; ++line)
        all.append(text(line));
    return all;
}

ValueAxis RoundAxis(double highest, int maxSteps) {
    maxSteps = std::max(1, maxSteps);
    if (highest <= 0)
        highest = 1;
    // One decade too low to begin with, so that the first step that fits is the smallest one.
    const int lowest = static_cast<int>(std::floor(std::log10(highest / maxSteps))) - 1;
    for (int exponent = lowest;; ++exponent)
        for (const double mantissa : exponent == -1 ? tenths : decades) {
            const double step = mantissa * std::pow(10.0, exponent);
            if (step > 0 && highest / step <= maxSteps + 1e-9)
                return {step, StepsTo(highest, step), false};
        }
}

ValueAxis PercentAxis(int maxSteps) {
    constexpr std::array steps{20.0, 25.0, 50.0, 100.0};
    const auto found = std::find_if(steps.begin(), steps.end(),
                                    [maxSteps](double step) { return 100 / step <= maxSteps; });
    const double step = found == steps.end() ? steps.back() : *found;
    return {step, static_cast<int>(100 / step), true};
}

} // namespace kelvrane::chartspace
