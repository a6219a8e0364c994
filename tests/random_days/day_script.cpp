#include "random_days/day_script.h"

#include <random>

namespace kelvrane::testing {

namespace {

struct KindRow {
    EventKind kind;
    const char* text; ///< %1: the amount in words
    int weight;       ///< among a day's events
};

constexpr KindRow kinds[] = {
    {EventKind::Pass, "%1 pass", 30},
    {EventKind::StandStill, "the process stands still for %1", 3},
    {EventKind::Sleep, "the machine sleeps for %1", 5},
    {EventKind::Jump, "the clock is set by %1", 4},
    {EventKind::Start, "start %1", 14},
    {EventKind::Stop, "Stop", 3},
    {EventKind::Break, "Break", 4},
    {EventKind::QuitAndSave, "Quit & Save", 1},
    {EventKind::TrayStop, "tray: Stop", 3},
    {EventKind::TrayBreak, "tray: break item", 4},
    {EventKind::TrayQuitAndSave, "tray: Quit & Save", 1},
    {EventKind::ShowScreen, "show the control screen", 1},
    {EventKind::Delete, "delete row %1", 3},
    {EventKind::Correct, "correct row %1", 10},
    {EventKind::PromptSave, "prompt: Save & Quit", 1},
    {EventKind::PromptCancel, "prompt: Cancel", 1},
    {EventKind::AnswerNight, "answer to the night: %1", 3},
    {EventKind::AnswerClock, "answer: the clock is right", 2},
    {EventKind::LockHistory, "another program writes the history", 0},
    {EventKind::ReadHistory, "another program reads the history", 0},
    {EventKind::HideHistory, "the history can't be opened", 0},
    {EventKind::ReleaseHistory, "the history is free again", 0},
    {EventKind::LogOut, "log-out; off for %1", 1},
    {EventKind::ExitProgram, "Exit Program; off for %1", 1},
    {EventKind::Kill, "killed; off for %1", 2},
};

const KindRow& rowOf(EventKind kind) {
    for (const KindRow& row : kinds)
        if (row.kind == kind)
            return row;
    return kinds[0];
}

constexpr const char* fieldNames[] = {"start", "stop", "stop emptied", "break", "project"};
constexpr const char* answerNames[] = {"Start it again now", "Count the night", "Leave it"};

/// Dates around which a zone's clock changes; most days lie in quiet ones. They are of years gone
/// by: what a zone will do may still be decided otherwise.
struct Calendar {
    const char* zone;
    const char* date;
};
constexpr Calendar calendars[] = {
    {"UTC", "2026-03-02"},
    {"UTC", "2026-02-27"},
    {"UTC", "2025-12-31"},
    {"Europe/Berlin", "2024-03-30"},
    {"Europe/Berlin", "2024-10-26"},
    {"America/Havana", "2024-03-09"},
    {"America/Havana", "2024-11-02"},
    {"Atlantic/Azores", "2024-03-30"},
    {"Atlantic/Azores", "2024-10-26"},
    {"Australia/Lord_Howe", "2024-04-06"},
    {"Australia/Lord_Howe", "2024-10-05"},
    {"Africa/Cairo", "2024-04-25"},
    {"Africa/Cairo", "2024-10-31"},
};
constexpr int quietCalendars = 3;

class Dice {
  public:
    explicit Dice(quint32 seed) : m_engine(seed) {}
    /// From `low` to `high`, both included. The same on every system.
    int between(int low, int high) { return low + int(m_engine() % quint32(high - low + 1)); }
    bool oneIn(int chances) { return between(1, chances) == 1; }
    template <typename T, size_t n>
    const T& oneOf(const T (&choices)[n]) {
        return choices[between(0, int(n) - 1)];
    }

  private:
    std::mt19937 m_engine;
};

/// Seconds of a stretch: mostly minutes, at times hours.
int stretchSeconds(Dice& dice) {
    constexpr int limits[] = {30, 300, 300, 3600, 3600, 5400, 6 * 3600};
    return dice.between(1, dice.oneOf(limits));
}

int jumpSeconds(Dice& dice) {
    // Never close to a minute: what counts as a jump is decided by seconds there.
    constexpr int sizes[] = {20, 45, 75, 150, 1800, 1800, 3600, 3600, 5400, 4 * 3600, 86400};
    const int size = dice.oneOf(sizes);
    return dice.oneIn(2) ? size : -size;
}

void fill(DayEvent& event, Dice& dice) {
    switch (event.kind) {
    case EventKind::Pass:
    case EventKind::StandStill:
    case EventKind::Sleep:
        event.amount = stretchSeconds(dice);
        if (dice.oneIn(5)) {
            event.stretch = Stretch::ToMidnight;
            event.amount = dice.between(-200, 400);
        }
        break;
    case EventKind::Jump:
        event.amount = jumpSeconds(dice);
        break;
    case EventKind::Correct:
        event.field = CorrectedField(dice.between(0, 4));
        event.change = dice.oneIn(3) ? dice.between(-200, 200) : dice.between(-20, 20);
        [[fallthrough]];
    case EventKind::Delete:
    case EventKind::Start:
        event.amount = dice.between(0, 13);
        break;
    case EventKind::AnswerNight:
        event.amount = dice.between(0, 2);
        break;
    case EventKind::LogOut:
    case EventKind::ExitProgram:
    case EventKind::Kill:
        event.change = dice.oneIn(4) ? dice.between(8, 30) * 3600 : stretchSeconds(dice);
        event.amount = dice.oneIn(6) ? jumpSeconds(dice) % 86400 : 0;
        break;
    default:
        break;
    }
}

/// A stretch of the day in which the history can't be written.
void addTrouble(QList<DayEvent>& events, Dice& dice) {
    constexpr EventKind troubles[] = {EventKind::LockHistory, EventKind::ReadHistory,
                                      EventKind::HideHistory};
    const int from = dice.between(1, int(events.size()) - 1);
    const int to = dice.between(from, qMin(from + 10, int(events.size())));
    events.insert(to, {.kind = EventKind::ReleaseHistory});
    events.insert(from, {.kind = dice.oneOf(troubles)});
}

QString timeText(int seconds) {
    const QString sign = seconds < 0 ? QStringLiteral("-") : QString();
    const int size = qAbs(seconds);
    return QStringLiteral("%1%2:%3:%4")
        .arg(sign)
        .arg(size / 3600)
        .arg(size / 60 % 60, 2, 10, QLatin1Char('0'))
        .arg(size % 60, 2, 10, QLatin1Char('0'));
}

QString amountText(const DayEvent& event) {
    switch (event.kind) {
    case EventKind::Start:
        return ProjectOf(event.amount);
    case EventKind::Delete:
    case EventKind::Correct:
        return QString::number(event.amount);
    case EventKind::AnswerNight:
        return QString::fromLatin1(answerNames[event.amount % 3]);
    case EventKind::LogOut:
    case EventKind::ExitProgram:
    case EventKind::Kill:
        return timeText(event.change);
    default:
        return timeText(event.amount);
    }
}

} // namespace

QString ProjectOf(int number) {
    constexpr const char* names[] = {"Alpha", "Beta", "Gamma", "Delta"};
    return QString::fromLatin1(names[number % projectCount]);
}

DayScript RandomDay(int seed) {
    Dice dice{quint32(seed)};
    DayScript script{.seed = seed};
    const Calendar& calendar =
        calendars[dice.oneIn(3) ? dice.between(quietCalendars, std::size(calendars) - 1)
                                : dice.between(0, quietCalendars - 1)];
    script.zone = QString::fromLatin1(calendar.zone);
    const int hour = dice.oneIn(2) ? dice.between(20, 23) : dice.between(0, 19);
    script.begins = QStringLiteral("%1 %2:%3:%4")
                        .arg(QLatin1String(calendar.date))
                        .arg(hour, 2, 10, QLatin1Char('0'))
                        .arg(dice.between(0, 59), 2, 10, QLatin1Char('0'))
                        .arg(dice.between(0, 59), 2, 10, QLatin1Char('0'));
    if (dice.oneIn(4))
        script.stopWork = 23 * 60 + 45;
    int allWeights = 0;
    for (const KindRow& row : kinds)
        allWeights += row.weight;
    script.events.append({.kind = EventKind::Start});
    for (int count = dice.between(14, 38); count > 0; --count) {
        int ball = dice.between(1, allWeights);
        const KindRow* row = kinds;
        while (ball > row->weight)
            ball -= (row++)->weight;
        DayEvent event{.kind = row->kind};
        fill(event, dice);
        script.events.append(event);
    }
    if (dice.oneIn(4))
        addTrouble(script.events, dice);
    // In the end everything must be in the history, also after another start.
    script.events.append({.kind = EventKind::ReleaseHistory});
    script.events.append({.kind = EventKind::LogOut, .change = 24 * 3600});
    return script;
}

QString Describe(const DayEvent& event) {
    QString text = QString::fromLatin1(rowOf(event.kind).text);
    if (text.contains(QLatin1String("%1")))
        text = text.arg(amountText(event));
    if (event.stretch == Stretch::ToMidnight)
        text += QStringLiteral(" after the next midnight");
    if (event.kind == EventKind::Correct)
        text += QStringLiteral(": ") + QLatin1String(fieldNames[int(event.field)]) +
                QStringLiteral(" by %1 minutes").arg(event.change);
    const bool ends = event.kind == EventKind::LogOut || event.kind == EventKind::ExitProgram ||
                      event.kind == EventKind::Kill;
    if (ends && event.amount != 0)
        text += QStringLiteral("; meanwhile the clock is set by ") + timeText(event.amount);
    return text;
}

} // namespace kelvrane::testing
