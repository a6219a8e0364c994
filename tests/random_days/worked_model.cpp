#include "random_days/worked_model.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>
#include <utility>

namespace kelvrane::testing {

namespace {

constexpr int secondsADay = 86400;
constexpr int jumpSeconds = 60;  // more than that, against boot time, is a jump of the clock
constexpr int sleepSeconds = 60; // that much more boot time than awake time is a sleep

/// The project has no entry left on that date.
constexpr WorkedRow goneRow{.total = -1};

int span(int from, int to) {
    return std::max(0, to - from);
}

/// The wall clock at seconds since 1970.
qint64 wallAt(qint64 utc) {
    return WallSeconds(QDateTime::fromSecsSinceEpoch(utc));
}

/// Minutes that really passed of the date.
int sinceMidnight(const Moment& moment) {
    const QDateTime local = QDateTime::fromSecsSinceEpoch(moment.utc);
    return int(local.date().startOfDay().secsTo(local) / 60);
}

Moment midnight(int date) {
    return {.wall = qint64(date) * secondsADay};
}

} // namespace

qint64 WallSeconds(const QDateTime& local) {
    return QDate(1970, 1, 1).daysTo(local.date()) * secondsADay +
           local.time().msecsSinceStartOfDay() / 1000;
}

int WorkedModel::running() const {
    const QList<WorkedEntry>& entries = m_memory.day.entries;
    return !entries.isEmpty() && entries.last().runs() ? int(entries.size()) - 1 : -1;
}

bool WorkedModel::dayIsAhead(const Moment& now) const {
    return !m_memory.day.entries.isEmpty() && m_memory.day.date > now.date();
}

// ---------------------------------------------------------------------------------- the process

void WorkedModel::launch(const Moment& now) {
    m_memory = m_saved;
    m_memory.promptMinutes = 0;
    m_memory.loaded = true;
    const bool goesOn = !m_memory.day.entries.isEmpty() && m_memory.day.date >= now.date();
    m_memory.onBreak = m_memory.itemOffersEnd = goesOn && m_memory.breakBegan >= 0;
    m_last = now;
    m_wallDate = now.date();
    if (m_memory.day.entries.isEmpty()) {
        closeDay(now.date());
        if (!m_memory.day.entries.isEmpty())
            save(); // it came back
    } else if (m_memory.day.date < now.date())
        closeLeftOver(now.date());
    else
        resume(now);
    followWhatRuns();
    writeRows(now);
}

/// The day goes on at a launch. What runs never gets less than the total saved with it.
void WorkedModel::resume(const Moment& now) {
    Memory& memory = m_memory;
    if (running() >= 0) {
        WorkedEntry& entry = memory.day.entries.last();
        const int newStart = now.minute() - entry.total;
        const bool fits = memory.day.date == now.date() && newStart >= 0;
        if (!fits) {
            const bool breakOpen = memory.breakBegan >= 0;
            entry.stop = entry.start + entry.total;
            memory.breakBegan = -1;
            goOn(entry.project, now, breakOpen);
            save();
        } else if (newStart < entry.start) {
            if (memory.breakBegan >= 0)
                memory.breakBegan += newStart - entry.start;
            entry.start = newStart;
            save();
        }
    }
    readFile(now.minute());
    askAboutClock(now);
}

/// The question comes with a day of a later date and goes with it; either way it is saved.
void WorkedModel::askAboutClock(const Moment& now) {
    if (m_memory.asked == dayIsAhead(now))
        return;
    m_memory.asked = !m_memory.asked;
    refresh(now.minute());
    save();
}

/// A day file of an earlier date: the totals as saved, the running one's as the history knows it
/// where that is more.
void WorkedModel::closeLeftOver(int today) {
    WorkedDay& day = m_memory.day;
    if (running() >= 0) {
        WorkedEntry& last = day.entries.last();
        int others = 0;
        for (const WorkedEntry& entry : day.entries)
            if (entry.project == last.project && !entry.runs())
                others += entry.total;
        const WorkedRow row = m_history.value(day.date).value(last.project);
        last.total = std::max(last.total, row.total - others);
        last.stop = last.start + last.total;
        if (rowsOf(day).value(last.project).breaks < row.breaks)
            last.breaks = row.breaks; // and so may its break
    }
    closeDay(today);
    save();
}

void WorkedModel::exit(const Moment& now) {
    read(now);
    refresh(now.minute());
    save();
    writeRows(now);
}

// ----------------------------------------------------------------------------------- the clocks

void WorkedModel::read(const Moment& now) {
    m_wallDate = now.date();
    const Moment last = *m_last;
    const qint64 gain = now.boot - last.boot;
    const bool asleep = gain - (now.awake - last.awake) >= sleepSeconds;
    // Where the clock would be if nobody had set it, summer time included.
    Moment real{wallAt(last.utc + gain), now.boot, now.awake, last.utc + gain};
    const int zoneShift = int(std::lround(double(real.wall - last.wall - gain) / 60));
    const bool jumped = std::abs(now.wall - real.wall) > jumpSeconds || now.date() < last.date();
    if (!jumped)
        real = now;
    // A midnight that the jump takes back again wasn't one.
    const bool overMidnight = real.date() > last.date() && now.date() > last.date();
    const bool sameDate = now.date() == (overMidnight ? real.date() : last.date());
    const int clock = jumped && sameDate ? now.minute() : real.minute();
    if (overMidnight)
        elapse(real, asleep, std::max(0, clock - sinceMidnight(real)));
    const int shift = int(now.wall / 60 - real.wall / 60) + (overMidnight ? 0 : zoneShift);
    if ((jumped || shift != 0) && !(overMidnight && sameDate))
        jump(shift, !sameDate, now, overMidnight ? real.minute() : last.minute());
    askAboutClock(now);
    m_last = now;
    m_rowsCurrent = m_totalsCurrent = false;
}

/// Time passed, without a jump. `start`: where what ran over midnight starts on its new date.
void WorkedModel::elapse(const Moment& to, bool asleep, int start) {
    Memory& memory = m_memory;
    const int lastMinute = m_last->minute();
    if (to.date() <= m_last->date())
        return;
    if (memory.day.entries.isEmpty()) {
        closeDay(to.date());
        return;
    }
    const int date = memory.day.date;
    const int index = running();
    const QString project = index >= 0 ? memory.day.entries.last().project : QString();
    const bool breakOpen = memory.breakBegan >= 0;
    refresh(lastMinute);
    if (index >= 0)
        end(rules.exactMidnight && !asleep ? minutesADay : lastMinute);
    if (to.date() > date)
        closeDay(to.date());
    if (index >= 0 && asleep) {
        memory.nights.append({project, date, lastMinute, to.date()});
        memory.nights.last().superseded = to.date() <= date; // its day isn't over
        memory.promptMinutes = 0;                            // at an ordinary midnight it counts on
        memory.onBreak = memory.itemOffersEnd = false;
    } else if (index >= 0) {
        goOn(project, {.wall = qint64(to.date()) * secondsADay + start * 60}, breakOpen);
    }
    if (to.date() > date || index >= 0)
        followWhatRuns();
    refresh(to.minute());
    save();
}

/// The clock was set, or changed to or from summer time, by so many minutes. `lastMinute`: of the
/// last reading before.
void WorkedModel::jump(int shift, bool dateJumped, const Moment& to, int lastMinute) {
    Memory& memory = m_memory;
    if (running() < 0) {
        if (to.date() > memory.day.date || memory.day.entries.isEmpty()) {
            refresh(lastMinute);
            closeDay(to.date());
            save();
        } else if (to.date() < memory.day.date) {
            refresh(to.minute());
            save(); // with the question
        }
        return;
    }
    WorkedEntry& entry = memory.day.entries.last();
    if (!dateJumped && entry.start + shift >= 0) {
        entry.start += shift;
        if (memory.breakBegan >= 0)
            memory.breakBegan += shift;
        refresh(to.minute());
    } else {
        const QString project = entry.project;
        const bool breakOpen = memory.breakBegan >= 0;
        end(lastMinute);
        if (to.date() > memory.day.date) {
            closeDay(to.date());
            memory.promptMinutes = 0;
        }
        goOn(project, to, breakOpen);
    }
    save();
}

/// The entries are final; a day of that date begins, empty unless it is the one that was put by.
void WorkedModel::closeDay(int newDate) {
    Memory& memory = m_memory;
    if (memory.day.entries.isEmpty()) {
        memory.day =
            memory.last.date == newDate ? std::exchange(memory.last, {}) : WorkedDay{newDate, {}};
    } else {
        owe(memory.day);
        const WorkedDay next = memory.last.date == newDate ? memory.last : WorkedDay{newDate, {}};
        memory.last = std::exchange(memory.day, next);
    }
    memory.current = -1;
    memory.stopped = true;
    memory.breakBegan = -1;
}

void WorkedModel::minuteTick(const Moment& now) {
    read(now);
    refresh(now.minute());
    Memory& memory = m_memory;
    const int overtime = now.minute() - stopWork;
    if (overtime >= 0 && overtime % 15 == 0 && memory.current >= 0 && !memory.stopped &&
        memory.promptMinutes == 0)
        memory.promptMinutes = 15;
    const bool quarter = now.minute() % 15 == 0 && now.minute() != 0;
    if (((quarter || now.minute() == minutesADay - 1) && !memory.stopped) || owesRows())
        writeRows(now);
}

// --------------------------------------------------------------------------------- the commands

void WorkedModel::start(const QString& project, const Moment& now) {
    read(now);
    if (!m_memory.loaded)
        load(now);
    refresh(now.minute());
    if (running() >= 0)
        end(now.minute());
    begin(project, now);
    m_memory.onBreak = false;
    save();
    writeRows(now);
}

void WorkedModel::begin(const QString& project, const Moment& now) {
    Memory& memory = m_memory;
    for (Night& night : memory.nights)
        night.superseded = true;
    memory.day.entries.append(
        {.project = project, .start = now.minute(), .ahead = now.date() < memory.day.date});
    memory.breakBegan = -1;
    memory.stopped = false;
    memory.current = int(memory.day.entries.size()) - 1;
}

/// What ran goes on in a new entry, and an open break with it.
void WorkedModel::goOn(const QString& project, const Moment& now, bool breakOpen) {
    begin(project, now);
    m_memory.breakBegan = breakOpen ? now.minute() : -1;
    m_memory.breakHeld = 0;
}

/// The running entry gets its stop, and its open break ends with it.
void WorkedModel::end(int minute) {
    WorkedEntry& entry = m_memory.day.entries.last();
    entry.total = span(entry.start, minute);
    if (m_memory.breakBegan >= 0)
        entry.breaks = m_memory.breakHeld + span(m_memory.breakBegan, minute);
    entry.stop = minute;
    m_memory.breakBegan = -1;
}

/// The current entry's total at this minute. One that was stopped from the tray goes on rising.
void WorkedModel::refresh(int minute) {
    m_totalsCurrent = true;
    Memory& memory = m_memory;
    if (memory.current < 0 || memory.stopped)
        return;
    WorkedEntry& entry = memory.day.entries[memory.current];
    if (!entry.runs() && memory.day.date > m_wallDate)
        return; // across dates now doesn't lie behind its start
    entry.total = span(entry.start, minute);
    if (memory.breakBegan >= 0)
        entry.breaks = memory.breakHeld + span(memory.breakBegan, minute);
}

/// All totals from the times.
void WorkedModel::recompute(int minute) {
    for (WorkedEntry& entry : m_memory.day.entries)
        entry.total = span(entry.start, entry.runs() ? minute : entry.stop);
    followWhatRuns();
    refresh(minute);
}

/// What is read from the day file; a total there that isn't stop minus start is corrected in it.
void WorkedModel::readFile(int minute) {
    bool wrong = false;
    for (const WorkedEntry& entry : std::as_const(m_memory.day.entries))
        wrong |= !entry.runs() && entry.total != span(entry.start, entry.stop);
    recompute(minute);
    if (wrong)
        save();
}

void WorkedModel::load(const Moment& now) {
    m_memory.loaded = true;
    if (m_memory.onBreak)
        m_memory.itemOffersEnd = true;
    readFile(now.minute());
    writeRows(now);
}

void WorkedModel::showScreen(const Moment& now) {
    if (m_memory.loaded)
        return; // it only comes forward
    read(now);
    load(now);
}

void WorkedModel::followWhatRuns() {
    m_memory.current = running();
    m_memory.stopped = m_memory.current < 0;
}

void WorkedModel::stopCurrent(const Moment& now) {
    if (m_memory.current < 0)
        return;
    if (running() >= 0) {
        end(now.minute());
    } else {
        WorkedEntry& entry = m_memory.day.entries[m_memory.current];
        entry.stop = now.minute();
        entry.total = span(entry.start, entry.stop);
    }
    m_totalsCurrent = true;
    save();
    writeRows(now);
}

void WorkedModel::stop(const Moment& now) {
    read(now);
    if (running() < 0)
        return;
    stopCurrent(now);
    m_memory.stopped = true;
}

void WorkedModel::trayStop(const Moment& now) {
    read(now);
    stopCurrent(now);
}

void WorkedModel::quitAndSave(const Moment& now) {
    stop(now);
    m_memory.stopped = true;
    m_memory.loaded = false;
}

void WorkedModel::breakButton(const Moment& now) {
    read(now);
    if (running() >= 0)
        flipBreak(now);
}

void WorkedModel::trayBreak(const Moment& now) {
    read(now);
    flipBreak(now);
}

void WorkedModel::flipBreak(const Moment& now) {
    Memory& memory = m_memory;
    if (running() >= 0)
        refresh(now.minute());
    m_totalsCurrent = false;
    memory.onBreak = !memory.itemOffersEnd;
    memory.itemOffersEnd = memory.onBreak;
    const bool runs = running() >= 0;
    memory.breakBegan = runs && memory.onBreak ? now.minute() : -1;
    memory.breakHeld = runs ? memory.day.entries.last().breaks : 0;
    if (runs)
        save();
}

void WorkedModel::remove(int row, const Moment& now) {
    Memory& memory = m_memory;
    const int date = memory.day.date;
    read(now);
    const int index = row % 10;
    if (memory.day.date != date || index == 0 || index >= memory.day.entries.size())
        return;
    if (index == running())
        memory.breakBegan = -1;
    m_owed[date][memory.day.entries[index].project] = goneRow;
    memory.day.entries.removeAt(index);
    recompute(now.minute());
    save();
    writeRows(now);
}

bool WorkedModel::correct(int row, const Correction& correction, const Moment& now) {
    read(now);
    refresh(now.minute());
    Memory& memory = m_memory;
    QList<WorkedEntry>& entries = memory.day.entries;
    const WorkedEntry old = entries[row];
    WorkedEntry changed = old;
    changed.start = correction.start.value_or(old.start);
    changed.stop = correction.stop.value_or(old.stop);
    changed.breaks = correction.breaks.value_or(old.breaks);
    changed.project = correction.project.value_or(old.project);
    const int minute = now.minute();
    const int until = changed.runs() ? minute : changed.stop;
    WorkedEntry* before = row > 0 ? &entries[row - 1] : nullptr;
    WorkedEntry* next = row + 1 < entries.size() ? &entries[row + 1] : nullptr;
    const int nextStop = !next ? minutesADay : next->runs() ? minute : next->stop;
    if ((changed.breaks > 0 && changed.breaks > until - changed.start) || // more break than work
        (changed.runs() && next) ||                                       // only the last may run
        changed.start > until || until > minute ||                        // backward, in the future
        (before && changed.start < before->start) ||                      // neighbours inside out
        (!changed.runs() && until > nextStop)) {
        writeRows(now); // closing the screen rolls the day up all the same
        return false;
    }

    changed.total = until - changed.start;
    if (before &&
        (before->stop == old.start || (correction.start && changed.start < before->stop))) {
        before->stop = changed.start;
        before->total = span(before->start, before->stop);
    }
    if (next && correction.stop &&
        (next->runs() || next->start == old.stop || changed.stop > next->start)) {
        next->start = changed.stop;
        next->total = span(next->start, next->runs() ? minute : next->stop);
    }
    entries[row] = changed;
    if (changed.project != old.project)
        m_owed[memory.day.date][old.project] = goneRow;
    if (!next) {
        const bool breakGoesOn = old.runs() ? memory.breakBegan >= 0 : memory.onBreak;
        memory.breakBegan = changed.runs() && breakGoesOn ? minute : -1;
        memory.breakHeld = changed.breaks;
    }
    followWhatRuns();
    save();
    writeRows(now);
    return true;
}

// --------------------------------------------------------------------- the prompt, the questions

void WorkedModel::promptMinute(const Moment& now) {
    if (promptOpen() && --m_memory.promptMinutes == 0)
        promptSave(now);
}

void WorkedModel::promptSave(const Moment& now) {
    read(now);
    stopCurrent(now);
    m_memory.stopped = true;
    m_memory.loaded = false;
    m_memory.promptMinutes = 0;
}

void WorkedModel::startAgain(const Moment& now) {
    const Night night = m_memory.nights.takeFirst();
    start(night.project, now);
}

/// Each date gets its part of the night; the entry runs since midnight.
void WorkedModel::countNight(const Moment& now) {
    read(now);
    Memory& memory = m_memory;
    const Night night = memory.nights.takeFirst();
    WorkedEntry& entry = memory.last.entries.last();
    entry.stop = minutesADay;
    entry.total = span(entry.start, entry.stop);
    owe(memory.last);
    for (int date = night.date + 1; date < night.woke; ++date)
        owe({date, {{.project = night.project, .stop = minutesADay, .total = minutesADay}}});
    goOn(night.project, midnight(night.woke), false);
    refresh(now.minute());
    save();
    writeRows(now);
}

void WorkedModel::leaveNight(const Moment& now) {
    read(now);
    m_memory.nights.removeFirst();
    refresh(now.minute());
    save();
}

/// The later day is put by; today has what began since the clock went back, behind what it had.
void WorkedModel::clockIsRight(const Moment& now) {
    read(now);
    refresh(now.minute());
    Memory& memory = m_memory;
    WorkedDay later{.date = memory.day.date};
    WorkedDay today{.date = now.date()};
    if (memory.last.date == now.date())
        today = memory.last;
    for (const WorkedEntry& entry : std::as_const(memory.day.entries)) {
        (entry.ahead ? today : later).entries.append(entry);
        m_owed[later.date][entry.project] = goneRow;
    }
    for (WorkedEntry& entry : today.entries)
        entry.ahead = false;
    owe(later);
    memory.last = later;
    memory.day = today;
    memory.asked = false;
    followWhatRuns();
    refresh(now.minute());
    save();
    writeRows(now);
}

// ----------------------------------------------------------------------------------- the history

WorkedRows WorkedModel::rowsOf(const WorkedDay& day) const {
    WorkedRows rows;
    for (const WorkedEntry& entry : day.entries) {
        const bool first = !rows.contains(entry.project);
        WorkedRow& row = rows[entry.project];
        row.total += entry.total;
        if (first || rules.exactBreaks)
            row.breaks += entry.breaks;
    }
    return rows;
}

/// Rows that have to be written; at once where the history can be.
void WorkedModel::owe(const WorkedDay& day) {
    m_owed[day.date].insert(rowsOf(day));
    payRows();
}

void WorkedModel::payRows() {
    if (!m_writable)
        return;
    for (auto day = m_owed.begin(); day != m_owed.end(); ++day)
        for (auto row = day->begin(); row != day->end(); ++row) {
            if (*row == goneRow)
                m_history[day.key()].remove(row.key());
            else
                m_history[day.key()][row.key()] = *row;
        }
    m_owed.clear();
}

void WorkedModel::writeRows(const Moment& now) {
    refresh(now.minute());
    if (!m_memory.day.entries.isEmpty())
        m_owed[m_memory.day.date].insert(rowsOf(m_memory.day));
    payRows();
    m_rowsCurrent = m_writable;
}

} // namespace kelvrane::testing
