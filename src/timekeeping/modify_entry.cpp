#include "timekeeping/modify_entry.h"

#include "frame/error_report.h"
#include "frame/globals.h"
#include "frame/recent_projects.h"
#include "history/roll_up.h"
#include "platform/ports.h"
#include "platform/texts.h"
#include "records/project_lookup.h"
#include "records/record_tables.h"
#include "records/selection_sinks.h"
#include "timekeeping/break_down.h"
#include "timekeeping/control_model.h"
#include "timekeeping/daily_chart.h"
#include "timekeeping/day_change.h"
#include "timekeeping/modify_model.h"
#include "timekeeping/modify_rules.h"
#include "timekeeping/tray_state.h"
#include "timekeeping/week_hours.h"
#include "timekeeping/working_day.h"
#include "timevalues/day_file.h"
#include "timevalues/entry_times.h"
#include "timevalues/time_values.h"

#include <utility>

namespace kelvrane {

namespace {

void readEntry() {
    ModifyModel& model = Modify();
    model.EntryIndex = BreakDownIndex(SelectedEntryKey);
    EditedEntry = {};
    EditedEntry = model.opened = At(std::as_const(DayEntries), model.EntryIndex);
    model.heading = EditedEntry.ProjectName;
}

void showEntry() {
    KeyedItems& rows = Modify().SmuiModify;
    rows.setValue(modify_rows::Project, EditedEntry.ProjectName);
    rows.setValue(modify_rows::Number, EditedEntry.ProjectNumber);
    rows.setValue(modify_rows::Start, EditedEntry.StartTime);
    rows.setValue(modify_rows::Stop, EditedEntry.StopTime);
    rows.setValue(modify_rows::Break, EditedEntry.BreakTime);
}

QString withCapitals(QString text) {
    text.replace(QLatin1Char('p'), QLatin1Char('P'));
    text.replace(QLatin1Char('m'), QLatin1Char('M'));
    text.replace(QLatin1Char('a'), QLatin1Char('A'));
    return text.trimmed();
}

void takeProject(const QString& name, const QString& number) {
    EditedEntry.ProjectName = name;
    EditedEntry.ProjectNumber = number;
    Modify().SmuiModify.setValue(modify_rows::Project, name);
    Modify().SmuiModify.setValue(modify_rows::Number, number);
    Modify().dirty = true;
}

void putProjectBack() {
    if (Modify().SmuiModify.contains(modify_rows::Project))
        Modify().SmuiModify.setValue(modify_rows::Project, EditedEntry.ProjectName);
}

/// Midnight and a delete renumber the entries: the edits must not land on another one.
void requireSameEntry() {
    const DayEntry& entry = At(std::as_const(DayEntries), Modify().EntryIndex);
    if (entry.StartTime != Modify().opened.StartTime ||
        entry.ProjectName != Modify().opened.ProjectName)
        Raise(errors::Subscript,
              QStringLiteral("The entry is no longer in today's list; nothing was changed"));
}

bool overlaps(const QString& stop, const QString& start) {
    return !stop.isEmpty() && ToMinutes(stop) > ToMinutes(start);
}

/// Whether the entry in front ends where the edited start lies now: they touched before, or would
/// overlap. Without an edit of the start two that overlap since the clock went back stay so.
bool isLinkedBack(const DayEntry& before, const DayEntry& old) {
    return EditedEntry.StartTime != old.StartTime &&
           (old.StartTime == before.StopTime || overlaps(before.StopTime, EditedEntry.StartTime));
}

/// The same for the entry behind. The start of a running one follows an edited stop over any gap.
bool isLinkedForward(const DayEntry& old, const DayEntry& next) {
    return EditedEntry.StopTime != old.StopTime &&
           (next.StopTime.isEmpty() || old.StopTime == next.StartTime ||
            overlaps(EditedEntry.StopTime, next.StartTime));
}

/// The day with EditedEntry in its place and one step of ripple to each side.
QList<DayEntry> rippledDay(int index) {
    QList<DayEntry> day = DayEntries;
    const DayEntry old = At(day, index);
    const bool linkedBack = index > 0 && isLinkedBack(day[index - 1], old);
    const bool linkedForward = index + 1 < day.size() && isLinkedForward(old, day[index + 1]);
    day[index] = EditedEntry;
    if (linkedBack) {
        day[index - 1].StopTime = EditedEntry.StartTime;
        day[index - 1].TotalTime = CalOtherTotalTime(day[index - 1]);
    }
    if (linkedForward) {
        day[index + 1].StartTime = EditedEntry.StopTime;
        day[index + 1].TotalTime = CalOtherTotalTime(day[index + 1]);
    }
    return day;
}

/// A break that is on goes on from now with what the running entry holds, which may be edited; the
/// break of an entry that got its stop is over.
void rearmBreak() {
    ForgetBreak();
    if (OnBreak == 1)
        BeginBreak(ClockText(ports.clock->time()));
}

bool refusedOrSaved() {
    FollowClock();
    const int index = Modify().EntryIndex;
    requireSameEntry();
    if (VerifyAllTimes(true))
        return true;
    EditedEntry.TotalTime = CalCurTotalTime();
    if (VerifyTimeOrder(index))
        return true;
    UpdateCurrentEntry(); // an open break is counted up to now, whichever entry is edited
    const QList<DayEntry> rippled = rippledDay(index);
    const QString formerProject = DayEntries[index].ProjectName;
    DayEntries = rippled;
    CurrentEntryIndex = RunningIndex();
    rearmBreak();
    Modify().opened = EditedEntry;
    if (formerProject != EditedEntry.ProjectName)
        DeleteSpecificProjectFromDB(formerProject); // entries of it that are left bring it back
    SaveDayFile();
    Control().smuiBreakDown.clear();
    FillBreakDownList();
    Modify().saved = true;
    RearmRunningEntry();
    return false;
}

void refreshDay() {
    SkipErrors step(QStringLiteral("frmModify_QueryUnload"));
    step([] { UpdateDayStatistics(); });
    step([] { AddDataToDayInfoDataBase(); });
    step([] { UpdateDailyChart(); });
    step([] { FillWeekView(); });
}

void closeScreen(bool fromCancel) {
    bool unloads = true;
    if (Modify().dirty && !Modify().saved) {
        const BoxAnswer answer =
            MsgBox(QStringLiteral("Save current changes?"), QStringLiteral("Save Changes?"),
                   BoxIcon::Question, BoxButtons::YesNoCancel);
        if (answer == BoxAnswer::Cancel)
            return;
        if (answer == BoxAnswer::No)
            Modify().dirty = false;
        unloads = answer == BoxAnswer::No || !fromCancel;
    }
    ModifyOpen = false;
    if (unloads)
        ports.screens->unload(Screen::frmModify);
    refreshDay();
}

} // namespace

void FrmModify_Load() {
    SkipErrors step = ReportingSteps(QStringLiteral("frmModify_Load"));
    Modify().reset();
    step(readEntry);
    step(FillModifyProjectList);
    step(showEntry);
}

void FrmModify_Unload() {
    ModifyOpen = false;
}

void FillModifyProjectList() {
    Modify().SmuiModify.setChoices(modify_rows::Project, ProjectChoices());
}

void SmuiModify_Change(const QString& key, const QString& value) {
    Modify().dirty = true;
    if (key == modify_rows::Start) {
        EditedEntry.StartTime = withCapitals(value);
    } else if (key == modify_rows::Stop) {
        EditedEntry.StopTime = withCapitals(value);
    } else if (key == modify_rows::Break) {
        EditedEntry.BreakTime = value.isEmpty() ? MinutesToText(0) : value;
        Modify().SmuiModify.setValue(modify_rows::Break, EditedEntry.BreakTime);
    }
    VerifyAllTimes(false);
}

void ChooseModifyProject(int place, const QString& value) {
    Modify().dirty = true;
    if (place == Modify().SmuiModify.item(modify_rows::Project).choices.size() - 1) {
        ports.screens->show(Screen::frmDataBase);
        return;
    }
    try {
        // A set of its own: the Database Manager may be open on another record.
        OpenTable projects(ProjectDatabase, QStringLiteral("ProjectInfo"), Recordset::ReadOnly);
        Recordset& records = projects.rows;
        const RecentProject chosen = RecentProjectOf(place, value);
        if (FindChosenProject(records, chosen.name, chosen.number)) {
            takeProject(records.text(project_column::Name), records.text(project_column::Number));
        } else {
            FillModifyProjectList();
            putProjectBack();
        }
    } catch (const RuntimeError&) {
        putProjectBack();
        throw;
    }
}

bool VerifyUpdate() {
    bool refused = true;
    Guarded(QStringLiteral("VerifyUpdate"), [&] { refused = refusedOrSaved(); });
    return refused;
}

void cmdUpdate_Click() {
    if (VerifyUpdate())
        return;
    ports.screens->unload(Screen::frmDataBase);
    closeScreen(false);
}

void cmdCancel_Click() {
    closeScreen(true);
}

void FrmModify_QueryUnload() {
    closeScreen(false);
}

void WireModify() {
    static bool wired = false;
    selectionSinks.modify = {takeProject, putProjectBack};
    if (std::exchange(wired, true))
        return;
    ModifyModel& model = Modify();
    QObject::connect(&model.SmuiModify, &KeyedItems::Edited, &model.SmuiModify,
                     [](const QString& key, const QString& value) {
                         if (key != modify_rows::Project) // chosen, not typed
                             Guarded(QStringLiteral("SmuiModify_Change"),
                                     [&] { SmuiModify_Change(key, value); });
                     });
    QObject::connect(&model.SmuiModify, &KeyedItems::Chosen, &model.SmuiModify,
                     [](const QString&, int place, const QString& value) {
                         Guarded(QStringLiteral("SmuiModify_Change"),
                                 [&] { ChooseModifyProject(place, value); });
                     });
    QObject::connect(&model.buttons, &KeyedItems::Clicked, &model.buttons, [](const QString& key) {
        const bool update = key == QLatin1String("cmdUpdate");
        Guarded(key + QStringLiteral("_Click"), update ? cmdUpdate_Click : cmdCancel_Click);
    });
}

} // namespace kelvrane
