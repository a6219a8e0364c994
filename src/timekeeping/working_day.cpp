#include "timekeeping/working_day.h"

#include "frame/globals.h"
#include "frame/settings.h"
#include "frame/status_text.h"
#include "frame/tray_menus.h"
#include "history/roll_up.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"
#include "platform/texts.h"
#include "records/record_tables.h"
#include "timekeeping/break_down.h"
#include "timekeeping/control_model.h"
#include "timekeeping/daily_chart.h"
#include "timekeeping/day_change.h"
#include "timekeeping/shut_down.h"
#include "timekeeping/tray_state.h"
#include "timekeeping/week_hours.h"
#include "timevalues/counter.h"
#include "timevalues/day_file.h"
#include "timevalues/entry_times.h"
#include "timevalues/time_values.h"

namespace kelvrane {

namespace {

const QString projectName = QStringLiteral("PROJECT_NAME");
const QString projectNumber = QStringLiteral("PROJECT_NUM");
const QString startTime = QStringLiteral("START TIME");
const QString breakTime = QStringLiteral("BREAK TIME");
const QString totalTime = QStringLiteral("TOTAL TIME");
const QString onBreakMark = QStringLiteral(" - On Break");
const QString offersBreak = QStringLiteral("On Break");
const QString offersEnd = QStringLiteral("Off Break");

cTimer& counter() {
    if (!TMR)
        Raise(errors::NoObject);
    return *TMR;
}

QString nowAsClockText() {
    return ClockText(ports.clock->time());
}

void setStatusFields(const DayEntry& entry) {
    KeyedItems& fields = Control().smuiProjectStatus;
    fields.setValue(projectName, entry.ProjectName);
    fields.setValue(projectNumber, entry.ProjectNumber);
    fields.setValue(startTime, entry.StartTime);
    fields.setValue(breakTime, entry.BreakTime);
    fields.setValue(totalTime, entry.TotalTime);
}

/// The stop of the running entry is the start of the next, to the minute.
void stampRunningEntry(const QString& now) {
    if (BreakDownEntryCount() == 0 || CurrentEntryIndex < 0)
        return;
    KeyedItems& list = Control().smuiBreakDown;
    const QString key = BreakDownKey(EntryRow::StopTime, CurrentEntryIndex);
    if (!list.value(key).isEmpty())
        return;
    FinishCurrentEntry(ToMinutes(now));
    const DayEntry& entry = DayEntries[CurrentEntryIndex];
    list.setValue(key, now);
    list.setValue(BreakDownKey(EntryRow::BreakTime, CurrentEntryIndex), entry.BreakTime);
    list.setValue(BreakDownKey(EntryRow::TotalTime, CurrentEntryIndex), entry.TotalTime);
}

void refreshViews() {
    if (GraphShowing)
        UpdateDailyChart();
    if (WeekViewShowing)
        FillWeekView();
}

} // namespace

void StartNewProject(const QString& criterion) {
    // The record is read before the day is touched: a table without records changes nothing.
    if (!FindProjectRecord(criterion))
        return;
    const QString number = ProjectRecords().text(project_column::Number);
    if (DayEntries.isEmpty()) {
        Control().smuiBreakDown.clear(); // rows of a day that was dropped at midnight
        DayDate = ports.clock->today();
    }
    const QString now = nowAsClockText();
    UpdateCurrentEntry(); // also one that was stopped from the tray
    stampRunningEntry(now);
    DayStopped = false;
    KeyedItems& fields = Control().smuiProjectStatus;
    const QString name = fields.value(projectName);
    setStatusFields({name, number, now, {}, MinutesToText(0), MinutesToText(0)});
    counter().ResetTimer();
    counter().StartCounting();
    BreakMinutes = 0;
    ForgetBreak();
    AddDayEntry(name);
    SaveDayFile();
    StatusHeading = name;
    SetStatusText(StatusHeading);
    AddDataToDayInfoDataBase();
    refreshViews();
    OnBreak = 0; // the tray's break item keeps its caption; the next break command turns it back
    UpdateDayStatistics();
    RefreshTrayState();
}

void AddDayEntry(const QString& ProjectName) {
    const QString now = nowAsClockText();
    const int count = BreakDownEntryCount();
    int index = 0;
    // A name that equals the number of an earlier entry cuts the list back to that place.
    while (index < count && At(DayEntries, index).ProjectNumber != ProjectName)
        ++index;
    CurrentEntryIndex = index;
    const DayEntry entry{ProjectRecords().text(project_column::Name),
                         ProjectRecords().text(project_column::Number),
                         now,
                         {},
                         MinutesToText(0),
                         MinutesToText(0)};
    CutBreakDown(index);
    AppendBreakDown(entry, index);
    DayEntries.resize(index);
    DayEntries.append(entry);
    counter().SetTimerMinuteOffset(0);
    counter().SetTimerHourOffset(0);
    UpdateDailyChart();
}

bool FindProjectRecord(const QString& criterion) {
    if (criterion.isEmpty())
        return true;
    Recordset& records = ProjectRecords();
    if (records.isEmpty())
        return false;
    const int before = records.position();
    records.moveFirst();
    records.find(criterion);
    if (!records.atEnd())
        return true;
    if (before >= 1)
        records.setPosition(before);
    else
        records.moveFirst();
    return false;
}

void StopCurrentEntry(Stops what) {
    SkipErrors step(QStringLiteral("StopCurrentEntry"));
    FollowClock();
    StatusHeading.clear();
    const QString now = nowAsClockText();
    if (ControlScreenLoaded) {
        step([&] {
            Control().smuiBreakDown.setValue(BreakDownKey(EntryRow::StopTime, CurrentEntryIndex),
                                             now);
        });
        step([] { setStatusFields({}); });
        step([] { SetStatusText(StatusHeading); });
    }
    step([&] { FinishCurrentEntry(ToMinutes(now)); });
    if (what == Stops::Day)
        DayStopped = true; // before the save: a minute that ends meanwhile isn't its own
    step([] { SaveDayFile(); });
    step([] { AddDataToDayInfoDataBase(); });
    step([] { CompactAfterRollUp(); });
    step([] { RefreshTrayState(); });
}

void StopDay() {
    FollowClock();
    if (!EntryRunning())
        return;
    StopCurrentEntry(Stops::Day);
    DayStopped = !EntryRunning(); // events run during the save: a project may have been chosen
    RefreshTrayState();
}

void QuitAndSaveDay() {
    FollowClock();
    if (EntryRunning())
        StopCurrentEntry(Stops::Day);
    DayStopped = !EntryRunning();
    UnloadAllForms();
    RefreshTrayState();
}

void ModifySysTrayStatusHeading(const QString& /*Word*/) {
    FollowClock();
    KeyedItems& menu = Menus().mnuSysTray;
    const QString item = QString::fromLatin1(tray_items::Break);
    if (menu.item(item).caption == offersBreak) {
        menu.setCaption(item, offersEnd);
        OnBreak = 1;
        StatusHeading = Status().text() + onBreakMark;
        BeginBreak(nowAsClockText());
    } else {
        menu.setCaption(item, offersBreak);
        OnBreak = 0;
        StatusHeading.remove(onBreakMark);
        EndBreak();
    }
    if (EntryRunning())
        SaveDayFile();
    SetStatusText(StatusHeading);
    RefreshTrayState();
}

void ResetBreakState() {
    Menus().mnuSysTray.setCaption(QString::fromLatin1(tray_items::Break), offersBreak);
    OnBreak = 0;
    StatusHeading.clear();
    SetStatusText(StatusHeading);
}

void ShowBreakState() {
    Menus().mnuSysTray.setCaption(QString::fromLatin1(tray_items::Break), offersEnd);
    StatusHeading = StatusHeading.remove(onBreakMark) + onBreakMark;
    SetStatusText(StatusHeading);
}

Int16 FillBreakDownList() {
    SkipErrors guard(QStringLiteral("FillBreakDownList"));
    Int16 result = status::NoRunningEntry;
    guard([&] {
        CurrentEntryIndex = qint64(DayEntries.size()) - 1;
        qsizetype open = 0;
        while (open < DayEntries.size() && !DayEntries[open].StopTime.isEmpty())
            ++open;
        for (qsizetype i = 0; i < DayEntries.size(); ++i)
            if (i != open)
                AppendBreakDown(DayEntries[i], int(i));
        if (open == DayEntries.size()) {
            CurrentEntryIndex = -1;
            return;
        }
        const DayEntry& entry = DayEntries[CurrentEntryIndex];
        BreakMinutes = ToMinutes(entry.BreakTime);
        UpdateCurrentEntry();
        AppendBreakDown(entry, CurrentEntryIndex);
        const auto [hours, minutes] = ToHoursAndMinutes(entry.TotalTime, 0);
        counter().SetTimerMinuteOffset(minutes);
        counter().SetTimerHourOffset(hours);
        setStatusFields(entry);
        result = status::Done;
    });
    return result;
}

void RearmRunningEntry() {
    DayStopped = !EntryRunning();
    if (DayStopped) {
        setStatusFields({});
        StatusHeading.clear();
    } else {
        const DayEntry& entry = DayEntries[CurrentEntryIndex];
        const auto [hours, minutes] = ToHoursAndMinutes(entry.TotalTime, 0);
        counter().SetTimerMinuteOffset(minutes);
        counter().SetTimerHourOffset(hours);
        StatusHeading = OnBreak == 1 ? entry.ProjectName + onBreakMark : entry.ProjectName;
    }
    SetStatusText(StatusHeading);
    RefreshTrayState();
}

void UpdateDayStatistics() {
    TotalBreakMinutes = TotalWorkMinutes = TotalOverallMinutes = 0;
    for (int i = 0; i <= CurrentEntryIndex; ++i) {
        TotalOverallMinutes += ToMinutes(At(DayEntries, i).TotalTime);
        TotalBreakMinutes += ToMinutes(DayEntries[i].BreakTime);
    }
    TotalWorkMinutes = TotalOverallMinutes - TotalBreakMinutes;
    struct Row {
        const char* key;
        const char* caption;
        QString value;
    };
    const Row rows[] = {
        {"NUMCHANGES", "Number of Changes:\t", QString::number(CurrentEntryIndex + 1)},
        {"NUMPROJECTS", "Number of Projects:\t", QString::number(NumProjects)},
        {"T_WORK_TIME", "Total Work Time:\t", MinutesToText(TotalWorkMinutes)},
        {"T_BREAK_TIME", "Total Break Time:\t", MinutesToText(TotalBreakMinutes)},
        {"T_OVERALL_TIME", "Total Overall Time:\t", MinutesToText(TotalOverallMinutes)},
    };
    QList<KeyedItem> items;
    for (const Row& row : rows)
        items.append({.key = QString::fromLatin1(row.key),
                      .caption = QString::fromLatin1(row.caption),
                      .value = row.value});
    Control().smuiQuickView.refill(items);
}

void RefreshRunningEntry() {
    SkipErrors step(QStringLiteral("TMR_Minute"));
    step([] { CounterMinutes = counter().TotalHours() * 60 + counter().TotalMinutes(); });
    if (!ControlScreenLoaded || CurrentEntryIndex < 0 || DayStopped)
        return;
    step([] {
        UpdateCurrentEntry();
        const DayEntry& entry = At(DayEntries, CurrentEntryIndex);
        KeyedItems& fields = Control().smuiProjectStatus;
        fields.setValue(totalTime, entry.TotalTime);
        fields.setValue(breakTime, entry.BreakTime);
        KeyedItems& list = Control().smuiBreakDown;
        list.setValue(BreakDownKey(EntryRow::TotalTime, CurrentEntryIndex), entry.TotalTime);
        list.setValue(BreakDownKey(EntryRow::BreakTime, CurrentEntryIndex), entry.BreakTime);
    });
    if (GraphShowing)
        step([] { UpdateDailyChart(); });
    step([] { UpdateDayStatistics(); });
    step([] { FillWeekView(); });
}

void DeleteDayEntry(int index) {
    const DayEntry chosen = DayEntries.value(index);
    if (MsgBox(QStringLiteral("Delete this project?"), QStringLiteral("Delete project?"),
               BoxIcon::Question, BoxButtons::OkCancel) != BoxAnswer::Ok)
        return;
    SkipErrors step(QStringLiteral("mnuSetDataDeleteProject_Click"));
    FollowClock();
    if (index < 0 || index >= DayEntries.size() ||
        DayEntries[index].StartTime != chosen.StartTime ||
        DayEntries[index].ProjectName != chosen.ProjectName)
        return; // the date changed behind the question
    DayEntries.removeAt(index);
    CurrentEntryIndex = RunningIndex();
    if (CurrentEntryIndex < 0)
        ForgetBreak();
    step([] { RecomputeTotals(DayEntries); });
    step([&] { DeleteSpecificProjectFromDB(chosen.ProjectName); });
    step([] { SaveDayFile(); });
    step([] { Control().smuiBreakDown.clear(); });
    step([] { FillBreakDownList(); });
    step([] { UpdateDailyChart(); });
    step([] { UpdateDayStatistics(); });
    step([] { FillWeekView(); });
    step([] { RearmRunningEntry(); }); // the running entry may be the one that went
}

} // namespace kelvrane
