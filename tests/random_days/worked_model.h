// What was worked on, by the clocks and the commands alone: the yardstick that days on the real
// program are measured against. It knows the rules and shares no code with the program. Times of
// day are whole minutes, dates are days since 1/1/1970.
//
//     WorkedModel model;
//     model.launch(moment);
//     model.start("Alpha", moment);
//     model.day().entries[0].total;
#pragma once

#include <QDateTime>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

namespace kelvrane::testing {

constexpr int minutesADay = 24 * 60;

/// The clocks at one moment, in seconds. The wall clock is the local date and time as it reads,
/// counted from 1/1/1970: summer time is a jump of it.
/// Seconds of a wall clock since 1970, as if there were no zones.
qint64 WallSeconds(const QDateTime& local);

struct Moment {
    qint64 wall = 0;
    qint64 boot = 0;  ///< goes on through sleep
    qint64 awake = 0; ///< doesn't
    qint64 utc = 0;   ///< of the wall clock, in its zone

    int date() const { return int(wall / 86400); }
    int minute() const { return int(wall / 60 % minutesADay); }
};

struct WorkedEntry {
    QString project;
    int start = 0;
    int stop = -1;  ///< -1: runs
    int breaks = 0; ///< minutes
    int total = 0;
    bool ahead = false; ///< begun while the clock was on an earlier date than the day

    bool runs() const { return stop < 0; }
};

struct WorkedDay {
    int date = -1; ///< -1: no date yet
    QList<WorkedEntry> entries;
};

struct WorkedRow {
    int total = 0;
    int breaks = 0;
    bool operator==(const WorkedRow&) const = default;
};
using WorkedRows = QMap<QString, WorkedRow>; ///< by project

/// The machine fell asleep on `date` while `project` ran, and woke on a later one.
struct Night {
    QString project;
    int date = 0;
    int fellAsleep = 0;      ///< minute
    int woke = 0;            ///< date
    bool superseded = false; ///< another entry began since
};

/// What a correction changes; an empty field stays as it is.
struct Correction {
    std::optional<int> start;
    std::optional<int> stop; ///< -1: emptied
    std::optional<int> breaks;
    std::optional<QString> project;
};

class WorkedModel {
  public:
    /// Rules with a second way, which somebody who wants exact hours may choose.
    struct Rules {
        bool exactMidnight = false; ///< the last minute before midnight counts
        bool exactBreaks = false;   ///< every entry brings its break into the row
    };
    /// End of day: the prompt comes from this minute on, every quarter of an hour.
    int stopWork = 17 * 60;
    Rules rules;

    // The process. A launch reads what was saved; a kill just stops calling.
    void launch(const Moment& now);
    void exit(const Moment& now);

    // The clocks are read: at each tick of ten seconds, and by each command before it acts.
    void read(const Moment& now);
    void minuteTick(const Moment& now);

    // Commands.
    void start(const QString& project, const Moment& now);
    void stop(const Moment& now);
    void trayStop(const Moment& now);
    void breakButton(const Moment& now);
    void trayBreak(const Moment& now);
    void quitAndSave(const Moment& now);
    void showScreen(const Moment& now);
    /// Deletes by the last digit of the row's index; 0 is never offered.
    void remove(int row, const Moment& now);
    /// False: refused, nothing changed.
    bool correct(int row, const Correction& correction, const Moment& now);

    // The end-of-day prompt.
    bool promptOpen() const { return m_memory.promptMinutes > 0; }
    void promptMinute(const Moment& now);
    void promptSave(const Moment& now);
    void promptCancel() { m_memory.promptMinutes = 0; }

    // Waiting questions.
    const QList<Night>& nights() const { return m_memory.nights; }
    // The first of them is answered.
    void startAgain(const Moment& now);
    void countNight(const Moment& now);
    void leaveNight(const Moment& now);
    bool dayIsAhead(const Moment& now) const;
    void clockIsRight(const Moment& now);

    // The history. While it can't be written rows are owed; the next minute tick writes them.
    void setHistoryWritable(bool writable) { m_writable = writable; }
    const QMap<int, WorkedRows>& history() const { return m_history; }
    bool owesRows() const { return !m_owed.isEmpty(); }
    /// The rows of the open day were just brought up to date.
    bool rowsAreCurrent() const { return m_rowsCurrent; }

    const WorkedDay& day() const { return m_memory.day; }
    /// As the day file holds it.
    const WorkedDay& saved() const { return m_saved.day; }
    /// Totals in memory are those of the last reading.
    bool totalsAreCurrent() const { return m_totalsCurrent; }
    int running() const; ///< index, -1 when nothing runs

  private:
    struct Memory {
        WorkedDay day;
        int current = -1; ///< the entry that the commands mean; may have a stop
        bool stopped = true;
        bool onBreak = false;
        bool itemOffersEnd = false; ///< the tray's item reads "Off Break"
        int breakBegan = -1;        ///< minute, of the running entry's open break
        int breakHeld = 0;
        bool loaded = false; ///< the control screen has the day
        bool asked = false;  ///< whether the clock or the day's later date is right
        int promptMinutes = 0;
        QList<Night> nights;
        WorkedDay last; ///< the day put by
    };

    void elapse(const Moment& to, bool asleep, int start);
    void jump(int shift, bool dateJumped, const Moment& to, int lastMinute);
    void closeDay(int newDate);
    void begin(const QString& project, const Moment& now);
    void goOn(const QString& project, const Moment& now, bool breakOpen);
    void end(int minute);
    void refresh(int minute);
    void recompute(int minute);
    void readFile(int minute);
    void load(const Moment& now);
    void followWhatRuns();
    void stopCurrent(const Moment& now);
    void flipBreak(const Moment& now);
    void save() { m_saved = m_memory; }
    void writeRows(const Moment& now);
    void owe(const WorkedDay& day);
    void payRows();
    WorkedRows rowsOf(const WorkedDay& day) const;
    void resume(const Moment& now);
    void askAboutClock(const Moment& now);
    void closeLeftOver(int today);

    Memory m_memory;
    Memory m_saved;
    int m_wallDate = -1;
    std::optional<Moment> m_last;
    QMap<int, WorkedRows> m_history;
    QMap<int, WorkedRows> m_owed;
    bool m_writable = true;
    bool m_rowsCurrent = false;
    bool m_totalsCurrent = false;
};

} // namespace kelvrane::testing
