// The day calendar on a history of its own. Today is Monday, March 2, 2026; the month begins on a
// Sunday, so the label of a day is the day less one.
#pragma once

#include "calendar/calendar_model.h"
#include "calendar/day_calendar.h"
#include "frame/globals.h"
#include "platform/recordset.h"
#include "records/selection_sinks.h"
#include "support/raised_error.h"
#include "support/working_day_fixture.h"

namespace kelvrane::testing {

class CalendarTest : public WorkingDayTest {
  protected:
    CalendarTest() {
        WireDayCalendar();
        RecentProjects = {QStringLiteral("Alpha"), QStringLiteral("Beta")};
        NoRecentProjects = false;
    }
    ~CalendarTest() override { Calendar().reset(); }

    void addRow(const QString& date, const QString& name, int total, int pause) {
        Connection connection(path(QStringLiteral("DayInfo.mdb")));
        Recordset rows(connection, QStringLiteral("DayInfo"), Recordset::Optimistic);
        rows.addNew();
        rows.setValue(QStringLiteral("Date"), date);
        rows.setValue(QStringLiteral("ProjectName"), name);
        rows.setValue(QStringLiteral("ProjectNumber"), QString(QStringLiteral("N-") + name));
        rows.setValue(QStringLiteral("TotalTime"), total);
        rows.setValue(QStringLiteral("BreakTime"), pause);
        rows.update();
    }
    void execute(const QString& file, const QString& sql) { Connection(path(file)).execute(sql); }
    static void clickDay(int day) { DateLabelClick(Calendar().grid().FirstWeekday + day - 2); }
    static bool rightClickDay(int day) {
        return DateLabelRightClick(Calendar().grid().FirstWeekday + day - 2);
    }
    static QString row(const char* key) {
        return Calendar().smuiDaysInfo.value(QString::fromLatin1(key));
    }
    static void set(const char* key, const QString& value) {
        Calendar().smuiDaysInfo.setValue(QString::fromLatin1(key), value);
    }
    static void choose(const char* key, int place) {
        Calendar().smuiDaysInfo.choose(QString::fromLatin1(key), place);
    }
    static void press(const char* key) { Calendar().controls.click(QString::fromLatin1(key)); }
    static QString title() {
        return Calendar().controls.item(QStringLiteral("MonthYearLabel")).caption;
    }
};

} // namespace kelvrane::testing
