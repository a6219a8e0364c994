#include "support/working_day_fixture.h"

#include "frame/globals.h"
#include "frame/tray_menus.h"
#include "frame/waiting_questions.h"
#include "history/roll_up.h"
#include "platform/recordset.h"
#include "startup/database_schema.h"
#include "timekeeping/control_model.h"
#include "timekeeping/control_screen.h"

namespace kelvrane::testing {

WorkingDayTest::WorkingDayTest() {
    timer.setInterval(cTimer::designInterval);
    counter = std::make_unique<cTimer>(&timer);
    TMR = counter.get();
    counter->StartCounting();
    clock.set(QStringLiteral("2026-03-02 09:00"));
    CreateDayInfoDatabase(path(QStringLiteral("DayInfo.mdb")));
    CreateProjectDatabase(ProjectDatabase);
    Connection connection(ProjectDatabase);
    Recordset projects(connection, QStringLiteral("ProjectInfo"), Recordset::Optimistic);
    const char* rows[][2] = {{"Alpha", "1001"}, {"Beta", "1002"}, {"Gamma", "Alpha"}};
    for (const auto& row : rows) {
        projects.addNew();
        projects.setValue(QStringLiteral("Project_Name"), QString::fromLatin1(row[0]));
        projects.setValue(QStringLiteral("Project_Number"), QString::fromLatin1(row[1]));
        projects.setValue(QStringLiteral("Active"), true);
        projects.update();
    }
    NoRecentProjects = true;
    screens.onUnload = [](Screen screen) {
        if (screen == Screen::frmSTM)
            UnloadControlScreen();
    };
    screens.onLoad = [](Screen screen) {
        if (screen == Screen::frmSTM)
            EnsureControlScreenLoaded();
    };
}

WorkingDayTest::~WorkingDayTest() {
    TMR = nullptr;
}

void WorkingDayTest::start(const QString& name) {
    StartProjectByName(name);
}

void WorkingDayTest::passMinutes(int minutes) {
    for (int minute = 0; minute < minutes; ++minute) {
        for (int tick = 0; tick < 6; ++tick) {
            if (clockFollows)
                clock.pass(10);
            timer.fire();
        }
    }
}

void WorkingDayTest::fireRetry() {
    for (FakeTimer* each : std::as_const(timers.created))
        if (each->enabled && each->interval() != cTimer::designInterval)
            each->fire();
}

QString WorkingDayTest::waitingQuestion(int place) {
    const QList<WaitingQuestion> waiting = Questions().waiting();
    if (place >= waiting.size())
        return {};
    return waiting[place].text + QLatin1Char('|') + waiting[place].answers.join(QLatin1Char('|'));
}

QStringList WorkingDayTest::history() {
    Connection connection(path(QStringLiteral("DayInfo.mdb")));
    Recordset rows(connection, QStringLiteral("DayInfo"));
    QStringList lines;
    for (; !rows.atEnd(); rows.moveNext())
        lines.append(QStringList{
            rows.text(QStringLiteral("ProjectName")), rows.text(QStringLiteral("Date")),
            rows.text(QStringLiteral("TotalTime")), rows.text(QStringLiteral("BreakTime"))}
                         .join(QLatin1Char('|')));
    return lines;
}

void WorkingDayTest::restart() {
    const Globals fresh;
    const Globals old = globals;
    globals = fresh;
    ShowNumProjects = old.ShowNumProjects;
    EndOfDayTimeInterval = old.EndOfDayTimeInterval;
    StartWorkTime = old.StartWorkTime;
    StopWorkTime = old.StopWorkTime;
    AutoSave = old.AutoSave;
    TimeIncrements = old.TimeIncrements;
    StartOfWeek = old.StartOfWeek;
    ProjectDatabase = old.ProjectDatabase;
    NoRecentProjects = old.NoRecentProjects;
    ResetRollUp();
    Questions().clear();
    Menus().reset();
    counter = std::make_unique<cTimer>(&timer);
    TMR = counter.get();
    Control().reset();
}

} // namespace kelvrane::testing
