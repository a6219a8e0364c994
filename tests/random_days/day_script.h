// What happens on a day, as plain data: commands of a person, and what machine and disk do. A seed
// makes a script; a script that fails prints as a day that a person can read.
//
//     const DayScript script = RandomDay(17);
//     for (const DayEvent& event : script.events) ...
#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

namespace kelvrane::testing {

enum class EventKind {
    Pass,       ///< the machine is awake and the timer ticks
    StandStill, ///< awake, but the process does nothing
    Sleep,
    Jump, ///< the clock is set
    Start,
    Stop,
    Break,
    QuitAndSave,
    TrayStop,
    TrayBreak,
    TrayQuitAndSave,
    ShowScreen,
    Delete,
    Correct,
    PromptSave,
    PromptCancel,
    AnswerNight,
    AnswerClock,
    LockHistory,    ///< another program writes it
    ReadHistory,    ///< another program reads it
    HideHistory,    ///< it can't be opened
    ReleaseHistory, ///< whatever was done to it is over
    LogOut,
    ExitProgram,
    Kill,
};

/// The field that a correction edits.
enum class CorrectedField { Start, Stop, EmptyStop, Break, Project };

/// How long a stretch of time is: seconds, or until so many seconds after the next midnight.
enum class Stretch { Seconds, ToMidnight };

struct DayEvent {
    EventKind kind = EventKind::Pass;
    /// Seconds of a stretch or a jump; number of a project, a row, an answer.
    int amount = 0;
    Stretch stretch = Stretch::Seconds;
    CorrectedField field = CorrectedField::Start;
    int change = 0; ///< of a corrected field, in minutes; after an end of the process: seconds off
};

struct DayScript {
    int seed = -1; ///< that made it; -1: written by hand
    QString zone = QStringLiteral("UTC");
    QString begins; ///< "2026-03-02 09:00:07"
    int stopWork = 17 * 60;
    QList<DayEvent> events;
};

constexpr int projectCount = 4;
/// "Alpha" to "Delta"; the number may be any.
QString ProjectOf(int number);

DayScript RandomDay(int seed);

/// "start Beta", "sleep 2:05:00".
QString Describe(const DayEvent& event);

} // namespace kelvrane::testing
