#include "calendar/day_calendar.h"

#include "calendar/calendar_model.h"
#include "frame/error_report.h"
#include "frame/globals.h"
#include "frame/recent_projects.h"
#include "frame/settings.h"
#include "history/roll_up.h"
#include "platform/ports.h"
#include "platform/texts.h"
#include "records/project_lookup.h"
#include "records/record_tables.h"
#include "records/selection_sinks.h"
#include "timekeeping/new_time.h"
#include "timevalues/time_values.h"

#include <QLocale>

#include <algorithm>
#include <iterator>
#include <utility>

namespace kelvrane {

namespace {

const QString projectRow = QStringLiteral("PROJECT");
const QString numberRow = QStringLiteral("PN");
const QString title = QStringLiteral("Modify DayInfo Database");

/// Errors of a command, told when it is through: while a message box waits, the screen may be
/// unloaded or a compaction may replace the history.
class LateReports {
  public:
    SkipErrors steps(const QString& routine) {
        return SkipErrors(routine, [this, routine](const RuntimeError& error) {
            m_errors.append({error, routine});
        });
    }
    void tell() {
        for (const auto& [error, routine] : std::exchange(m_errors, {}))
            ReportError(error, routine);
    }

  private:
    QList<std::pair<RuntimeError, QString>> m_errors;
};

QStringList numbers(int first, int last) {
    QStringList texts;
    for (int number = first; number <= last; ++number)
        texts.append(QString::number(number));
    return texts;
}

void showMonth() {
    CalendarModel& calendar = Calendar();
    const MonthOfYear shown = calendar.shownMonth();
    calendar.controls.setCaption(QStringLiteral("MonthYearLabel"), MonthTitle(shown));
    MonthGrid grid = BuildMonthGrid(shown, ports.clock->today());
    MarkDay(grid, calendar.SelectedDay);
    calendar.setGrid(grid);
}

void mark(const QString& caption) {
    CalendarModel& calendar = Calendar();
    calendar.SelectedDay = caption;
    MonthGrid grid = calendar.grid();
    MarkDay(grid, caption);
    calendar.setGrid(grid);
}

/// Also a text that can't be read as a time: somebody put it there.
bool isTime(const QString& span) {
    SkipErrors step(QStringLiteral("SaveDayChanges"));
    Int16 minutes;
    return !step([&] { minutes = ToMinutes(span); }) || minutes != 0;
}

/// A new group that says how long, but not on what; it can't become a row.
bool lacksProject(const DayGroup& group) {
    return group.id == 0 && group.project.isEmpty() &&
           (isTime(group.workTime) || isTime(group.breakTime));
}

QList<DayGroup> groupsWithoutProject() {
    QList<DayGroup> lacking;
    Calendar().endAwaiting();
    std::ranges::copy_if(Calendar().editedGroups(), std::back_inserter(lacking), lacksProject);
    return lacking;
}

QString missingProjectText(const QList<DayGroup>& lacking) {
    QStringList times;
    for (const DayGroup& group : lacking)
        times.append(QStringLiteral("work %1, break %2").arg(group.workTime, group.breakTime));
    return QStringLiteral("On %1 a time has no project: %2.")
        .arg(Calendar().DisplayedDate, times.join(QStringLiteral("; ")));
}

/// The day on the panel, but for groups without a project. One that is still awaited counts as not
/// chosen: the manager's window doesn't keep the user from leaving the day.
bool saveDay(HistoryFile& history, LateReports& reports) {
    CalendarModel& calendar = Calendar();
    if (!calendar.isPanelShown())
        return true;
    calendar.endAwaiting();
    QList<DayGroup> edited = calendar.editedGroups();
    edited.removeIf(lacksProject);
    SkipErrors step = reports.steps(QStringLiteral("SaveDayChanges"));
    if (!edited.isEmpty() &&
        !step([&] { WriteDayGroups(history, calendar.DisplayedDate, edited, step); }))
        return false;
    // Today is rolled up by the way: an empty day is no news, and what can't be written is pending.
    const QuietReports quiet;
    SkipErrors today(QStringLiteral("SaveDayChanges"));
    today([] { AddDataToDayInfoDataBase(); });
    return true;
}

/// False when the day on the panel has to stay for what it lacks.
bool mayLeaveDay() {
    const QList<DayGroup> lacking = groupsWithoutProject();
    if (lacking.isEmpty())
        return true;
    MsgBox(missingProjectText(lacking) + QStringLiteral("\rChoose its project, or set it to 0."),
           title, BoxIcon::Exclamation);
    return false;
}

QString hintFor(QDate date, QDate today) {
    if (date == today)
        return QStringLiteral("The times of today are kept on the control screen.");
    return date < today ? QStringLiteral("Right-click the day to add its information.") : QString();
}

void leaveDay() {
    CalendarModel& calendar = Calendar();
    calendar.clearGroups();
    calendar.setPanelShown(false);
    calendar.DisplayedDate.clear();
    CalendarRowKey.clear();
    CalendarRowValue.clear();
}

/// DisplayedDate and the panel change together: whenever a save comes, it finds a day with its own
/// rows.
void ShowDay(QDate date, HistoryFile& history, LateReports& reports) {
    CalendarModel& calendar = Calendar();
    leaveDay();
    calendar.DisplayDate = date;
    calendar.DisplayedDate = DateText(calendar.DisplayDate);
    const QDate today = ports.clock->today();
    calendar.controls.setCaption(
        QStringLiteral("lblShownDay"),
        QLocale::c().toString(calendar.DisplayDate, QStringLiteral("dddd, MMMM d, yyyy")));
    calendar.controls.setCaption(QStringLiteral("lblHint"), hintFor(calendar.DisplayDate, today));
    if (calendar.DisplayDate == today)
        return;
    SkipErrors step = reports.steps(QStringLiteral("ShowDay"));
    QList<DayGroup> groups;
    if (!step([&] { groups = ReadDayGroups(history, calendar.DisplayedDate, step); })) {
        calendar.DisplayedDate.clear(); // nothing can be added to rows that nobody saw
        calendar.controls.setCaption(
            QStringLiteral("lblHint"),
            QStringLiteral("This day could not be read. Choose it again to try once more."));
        return;
    }
    calendar.appendGroups(groups, ProjectChoices());
    calendar.setPanelShown(!groups.isEmpty());
}

/// A project has one row on a day: another group has this one.
bool isTaken(const QString& key, const QString& project) {
    return project != Calendar().formerProject(key) && Calendar().hasElsewhere(key, project);
}

void showTaken(const QString& project) {
    MsgBox(QStringLiteral("%1 already has the project '%2'.  Change the times in its own rows.")
               .arg(Calendar().DisplayedDate, project),
           title, BoxIcon::Exclamation);
}

/// Offers to make one row of each project that the day shown has several rows of. Asked once a day
/// as long as the screen is open.
void offerJoining() {
    CalendarModel& calendar = Calendar();
    const QString date = calendar.DisplayedDate;
    const QStringList repeated = RepeatedProjects(calendar.groups());
    if (repeated.isEmpty() || !calendar.offersJoining(date) ||
        !Agrees(QStringLiteral("%1 has more than one row of '%2'.  Join them into one row with the "
                               "sum of their times?")
                    .arg(date, repeated.join(QStringLiteral("', '"))),
                title) ||
        calendar.DisplayedDate != date || !calendar.editedGroups().isEmpty())
        return;
    LateReports reports;
    HistoryFile history;
    SkipErrors step = reports.steps(QStringLiteral("JoinRows"));
    if (step([&] { JoinRows(history, date, repeated); }))
        ShowDay(DateFromText(date), history, reports);
    history.close();
    reports.tell();
}

/// The manager's choice, for the row that CalendarRowKey names.
void takeSelection(const QString& name, const QString& number) {
    CalendarModel& calendar = Calendar();
    calendar.endAwaiting();
    if (!calendar.smuiDaysInfo.contains(projectRow + CalendarRowKey))
        Raise(errors::BadArgument,
              QStringLiteral("No project of the day calendar is being changed"));
    if (isTaken(projectRow + CalendarRowKey, name)) {
        showTaken(name);
        return;
    }
    calendar.setProject(projectRow + CalendarRowKey, name);
    calendar.smuiDaysInfo.setValue(numberRow + CalendarRowKey, number);
}

void undoSelection() {
    CalendarModel& calendar = Calendar();
    const bool awaited = calendar.isAwaitingProject();
    calendar.endAwaiting();
    if (awaited && calendar.smuiDaysInfo.contains(projectRow + CalendarRowKey))
        calendar.setProject(projectRow + CalendarRowKey, CalendarRowValue);
}

} // namespace

void LoadDayInfo() {
    CalendarModel& calendar = Calendar();
    calendar.reset();
    leaveDay();
    calendar.ListsLocked = true;
    calendar.controls.setChoices(QStringLiteral("YearList"),
                                 numbers(FirstCalendarYear, LastCalendarYear));
    calendar.controls.setChoices(QStringLiteral("MonthList"), numbers(1, 12));
    calendar.DisplayDate = ports.clock->today();
    calendar.setShownMonth(
        {.month = calendar.DisplayDate.month(), .year = calendar.DisplayDate.year()});
    calendar.ListsLocked = false;
    showMonth();
    const MonthGrid grid = calendar.grid();
    for (const GridDay& day : grid.days)
        if (day.isToday)
            mark(day.caption);
    calendar.controls.setCaption(QStringLiteral("lblHint"),
                                 QStringLiteral("Choose a day before today to see its times."));
    DayCalendarOpen = true;
}

void UnloadDayInfo() {
    // Nobody may be there to answer a box any more.
    if (const QList<DayGroup> lacking = groupsWithoutProject(); !lacking.isEmpty())
        ports.tray->notify(QStringLiteral("A time could not be stored"),
                           missingProjectText(lacking));
    SaveDayChanges();
    leaveDay();
    DayCalendarOpen = false;
}

void CloseDayInfo() {
    const QList<DayGroup> lacking = groupsWithoutProject();
    if (!lacking.isEmpty() &&
        !Agrees(missingProjectText(lacking) + QStringLiteral("\rClose and lose it?"), title))
        return;
    if (!SaveDayChanges() &&
        !Agrees(QStringLiteral("The day could not be saved.  Close and lose its changes?"), title))
        return;
    leaveDay(); // saved or given up; the unload has nothing more to save
    ports.screens->unload(Screen::frmDayInfo);
}

void StepClick(const QString& key) {
    struct Step {
        const char* key;
        MonthOfYear (*step)(MonthOfYear, int);
        int by;
    };
    static constexpr Step steps[] = {
        {"MonthDn", StepMonth, -1},
        {"Monthup", StepMonth, 1},
        {"YearDn", StepYear, -1},
        {"YearUp", StepYear, 1},
    };
    const MonthOfYear shown = Calendar().shownMonth();
    for (const Step& row : steps) {
        if (key != QLatin1String(row.key))
            continue;
        const MonthOfYear stepped = row.step(shown, row.by);
        if (stepped == shown)
            return;
        Calendar().setShownMonth(stepped);
        ListsChange();
    }
}

void ListsChange() {
    CalendarModel& calendar = Calendar();
    if (calendar.ListsLocked)
        return;
    const MonthOfYear shown = calendar.shownMonth();
    const int day = std::min(ports.clock->today().day(), DaysInMonth(shown));
    calendar.DisplayDate = QDate(shown.year, shown.month, day);
    showMonth();
}

void DateLabelClick(int index) {
    CalendarModel& calendar = Calendar();
    const GridDay label = At(calendar.grid().days, index);
    if (!label.visible)
        return;
    if (!mayLeaveDay() || !DayCalendarOpen)
        return;
    LateReports reports;
    HistoryFile history;
    const bool saved = calendar.DisplayedDate.isEmpty() || saveDay(history, reports);
    if (saved && DayCalendarOpen) { // rolling the day up may have reported something and waited
        mark(label.caption);
        const MonthOfYear shown = calendar.shownMonth();
        ShowDay(QDate(shown.year, shown.month, label.caption.toInt()), history, reports);
    }
    history.close();
    reports.tell();
    if (saved && DayCalendarOpen)
        offerJoining();
}

bool DateLabelRightClick(int index) {
    DateLabelClick(index);
    const CalendarModel& calendar = Calendar();
    return DayCalendarOpen && !calendar.DisplayedDate.isEmpty() && !calendar.isPanelShown() &&
           calendar.DisplayDate < ports.clock->today();
}

void AddDayRows() {
    CalendarModel& calendar = Calendar();
    if (calendar.DisplayedDate.isEmpty())
        return;
    calendar.setPanelShown(true);
    calendar.appendGroups({DayGroup()}, ProjectChoices());
}

bool SaveDayChanges() {
    LateReports reports;
    HistoryFile history;
    const bool saved = saveDay(history, reports);
    history.close();
    reports.tell();
    return saved;
}

void ProjectChosen(const QString& key, int place, const QString& value) {
    CalendarModel& calendar = Calendar();
    CalendarRowValue = calendar.formerProject(key);
    CalendarRowKey = key.right(1); // from the tenth group on that is another group; it stays so
    if (place == calendar.smuiDaysInfo.item(key).choices.size() - 1) {
        calendar.awaitProject(key);
        ports.screens->show(Screen::frmDataBase);
        ports.screens->bringForward(Screen::frmDataBase); // it may have been open already
        return;
    }
    const QString numberKey = numberRow + CalendarRowKey;
    const auto setRow = [&](const QString& name) {
        if (calendar.smuiDaysInfo.contains(key)) // the panel may have changed behind the box
            calendar.setProject(key, name);
    };
    try {
        OpenTable projects(ProjectDatabase, QStringLiteral("ProjectInfo"), Recordset::ReadOnly);
        const RecentProject chosen = RecentProjectOf(place, value);
        if (FindChosenProject(projects.rows, chosen.name, chosen.number)) {
            const QString name = projects.rows.text(project_column::Name);
            if (isTaken(key, name)) {
                setRow(CalendarRowValue); // before events run again
                showTaken(name);
                return;
            }
            setRow(name);
            calendar.smuiDaysInfo.setValue(numberKey, projects.rows.text(project_column::Number));
        } else {
            setRow(CalendarRowValue);
        }
    } catch (const RuntimeError&) {
        setRow(CalendarRowValue);
        throw;
    }
}

void TimeButtonPressed(const QString& key) {
    if (key.startsWith(QLatin1Char('P')))
        return;
    CalendarRowKey = key;
    PickNewTime(ToHoursAndMinutes(Calendar().smuiDaysInfo.value(key), 0), [](const QString& span) {
        if (Calendar().smuiDaysInfo.contains(CalendarRowKey))
            Calendar().smuiDaysInfo.setValue(CalendarRowKey, span);
    });
}

void WireDayCalendar() {
    selectionSinks.calendar = {takeSelection, undoSelection};
    static bool wired = false;
    if (std::exchange(wired, true))
        return;
    CalendarModel& calendar = Calendar();
    QObject::connect(&calendar.controls, &KeyedItems::Clicked, &calendar, [](const QString& key) {
        Guarded(key + QStringLiteral("_Click"), [&] { StepClick(key); });
    });
    QObject::connect(&calendar.controls, &KeyedItems::Chosen, &calendar, [](const QString& key) {
        Guarded(key + QStringLiteral("_Click"), ListsChange);
    });
    QObject::connect(&calendar.smuiDaysInfo, &KeyedItems::Chosen, &calendar,
                     [](const QString& key, int place, const QString& value) {
                         Guarded(QStringLiteral("smuiDaysInfo_Change"),
                                 [&] { ProjectChosen(key, place, value); });
                     });
    QObject::connect(
        &calendar.smuiDaysInfo, &KeyedItems::ButtonPressed, &calendar, [](const QString& key) {
            Guarded(QStringLiteral("smuiDaysInfo_ButtonClick"), [&] { TimeButtonPressed(key); });
        });
    QObject::connect(&calendar.mnuFile, &KeyedItems::Clicked, &calendar,
                     [] { Guarded(QStringLiteral("mnuClose_Click"), CloseDayInfo); });
    QObject::connect(&calendar.mnuPopup, &KeyedItems::Clicked, &calendar,
                     [] { Guarded(QStringLiteral("mnuAddInfo_Click"), AddDayRows); });
}

} // namespace kelvrane
