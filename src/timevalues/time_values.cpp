#include "timevalues/time_values.h"

#include "frame/globals.h"
#include "platform/texts.h"

#include <QStringList>

#include <algorithm>
#include <iterator>

namespace kelvrane {

namespace {

bool isSpan(const QString& text) {
    return text.contains(QLatin1String("Hour")) || text.contains(QLatin1String("Minutes"));
}

double spanMinutes(QString text) {
    text = text.remove(QLatin1String("Minutes")).trimmed();
    if (text.contains(QLatin1String("Hours")))
        text.replace(QLatin1String("Hours"), QLatin1String(":"));
    else if (text.contains(QLatin1String("Hour")))
        text.replace(QLatin1String("Hour"), QLatin1String(":"));
    else
        text.prepend(QLatin1String("0:"));
    const QStringList parts = text.split(QLatin1Char(':'));
    const QString rest = At(parts, 1).isEmpty() ? QStringLiteral("0") : parts[1];
    return ToDouble(parts[0]) * 60 + ToDouble(rest);
}

double clockMinutes(const QString& text) {
    const QString lower = text.toLower();
    const bool suffixed =
        lower.contains(QLatin1String("am")) || lower.contains(QLatin1String("pm"));
    const QStringList parts = (suffixed ? text.chopped(std::min<qsizetype>(3, text.size())) : text)
                                  .split(QLatin1Char(':'));
    if (text.isEmpty())
        Raise(errors::Subscript);
    double hours = ToDouble(parts[0]);
    if (text.contains(QLatin1String("PM")) && hours != 12)
        hours += 12;
    else if (hours == 12 && text.contains(QLatin1String("AM")))
        hours = 0;
    return hours * 60 + ToDouble(At(parts, 1));
}

} // namespace

Int16 ToMinutes(const QString& Text) {
    return ToInt16(isSpan(Text) ? spanMinutes(Text) : clockMinutes(Text));
}

QString MinutesToText(Int16 Minutes) {
    const auto [whole, rest] = ToHoursAndMinutes({}, Minutes);
    const QString minutesText = QString::number(rest) + QStringLiteral(" Minutes");
    if (whole == 0)
        return minutesText;
    return QString::number(whole) + QStringLiteral(" Hours ") + minutesText;
}

std::array<Int16, 2> ToHoursAndMinutes(const QString& Text, Int16 Minutes) {
    const int minutes = Text.isEmpty() ? Minutes : ToMinutes(Text);
    const int rest = minutes % 60;
    return {Int16((minutes - rest) / 60), Int16(rest)};
}

bool IsValidClockText(const QString& Text) {
    const QString suffix = Text.right(2).toLower();
    QStringList parts = Text.split(QLatin1Char(':'));
    bool bad = false;
    if (suffix == QLatin1String("am") || suffix == QLatin1String("pm")) {
        bad = parts.size() != 2;
        if (!bad)
            parts[1].chop(3);
    } else {
        bad = true;
    }
    if (parts.size() < 2)
        return true;
    for (int part = 0; part < 2; ++part)
        if (!IsNumeric(parts[part]))
            bad = true;
    return bad || parts[1].size() != 2 || ToDouble(parts[1]) > 59;
}

QString StripAtNull(const QString& Text) {
    return Text.left(Text.indexOf(QChar(u'\0')));
}

QString PathOfFile(const QString& Path) {
    const auto isSeparator = [](QChar c) {
        return c == QLatin1Char('\\') || c == QLatin1Char('/');
    };
    const auto last = std::find_if(Path.rbegin(), Path.rend(), isSeparator);
    if (last == Path.rend())
        return {};
    // A drive's root ("C:\") isn't taken for a folder name: behind a drive letter the search begins
    // at the fourth character, else at the second. With no separator there, the first one cuts.
    const bool drive = Path.size() > 1 && Path[1] == QLatin1Char(':');
    const qsizetype place = std::distance(last, Path.rend()) - 1;
    if (place >= (drive ? 3 : 1))
        return Path.left(place + 1);
    const auto first = std::find_if(Path.begin(), Path.end(), isSeparator);
    return Path.left(std::distance(Path.begin(), first) + 1);
}

QString ReformatChartValueText(const QString& Text) {
    static constexpr int percentTypes[] = {2, 6, 9, 13};
    static constexpr int firstPie = 14;
    static constexpr int lastPie = 18;
    if (Text.isEmpty() ||
        std::ranges::find(percentTypes, int(ChartIndex)) != std::end(percentTypes))
        return {};
    const QString word = QStringLiteral("Value:");
    const qsizetype place = Text.lastIndexOf(word);
    if (place < 1)
        Raise(errors::BadArgument);
    const qsizetype numberPlace = place + word.size() + 1;
    if (ChartIndex >= firstPie && ChartIndex <= lastPie) {
        const qsizetype bracket = Text.lastIndexOf(QLatin1Char('('));
        const qsizetype length = bracket - place - 8;
        if (length < 0)
            Raise(errors::BadArgument);
        const QString number = Text.mid(numberPlace, length);
        QString tip = Text;
        return tip.replace(numberPlace, length, MinutesToText(ToInt16(ToDouble(number) * 60)));
    }
    const QString number = Text.mid(numberPlace);
    return Text.left(place) + QStringLiteral(" Value: ") +
           MinutesToText(ToInt16(ToDouble(number) * 60));
}

QString StepDate(QDate Date, Int16 Direction) {
    if (Direction >= 1)
        return DateText(Date.addDays(1));
    if (Direction <= -1)
        return DateText(Date.addDays(-1));
    return DateText(Date);
}

double RoundToIncrement(float Minutes, const QString& Increment) {
    struct Row {
        const char* increment;
        double below;     ///< fraction of an hour, exclusive
        const char* tail; ///< behind the whole hours; null: the next hour
    };
    static constexpr double rest = 2; // above any fraction
    static constexpr Row rows[] = {
        {"15 Minutes", 0.125, ""},    {"15 Minutes", 0.375, ".25"},  {"15 Minutes", 0.625, ".50"},
        {"15 Minutes", 0.865, ".75"}, {"15 Minutes", rest, nullptr}, {"30 Minutes", 0.25, ""},
        {"30 Minutes", 0.75, ".50"},  {"30 Minutes", rest, nullptr}, {"1 Hour", 0.5, ""},
        {"1 Hour", rest, nullptr},
    };
    const double value = ToDouble(TwoDecimalsText(double(Minutes) / 60));
    if (Increment == QLatin1String("None"))
        return value;
    const QString text = DoubleText(value);
    const qsizetype point = text.indexOf(QLatin1Char('.'));
    const QString whole = point > 0 ? text.left(point) : text;
    const double fraction = value - ToDouble(whole);
    for (const Row& row : rows) {
        if (Increment != QLatin1String(row.increment))
            continue;
        // A negative fraction belongs to the last row of its increment.
        const bool last = row.tail == nullptr;
        if (!last && (fraction < 0 || fraction >= row.below))
            continue;
        return last ? ToDouble(whole) + 1 : ToDouble(whole + QLatin1String(row.tail));
    }
    return 0;
}

} // namespace kelvrane
