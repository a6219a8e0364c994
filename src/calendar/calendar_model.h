// What the day calendar shows: the month, the day chosen, and the panel with the rows of the day.
// The panel has five rows a group; their keys are a word and the group's number, counted from 1:
// PROJECT1, PN1, BREAK1, WORK1, LINE1.
#pragma once

#include "calendar/day_store.h"
#include "calendar/month_grid.h"
#include "platform/keyed_items.h"

#include <QDate>
#include <QHash>
#include <QObject>
#include <QString>

namespace kelvrane {

class CalendarModel : public QObject {
    Q_OBJECT
  public:
    CalendarModel();

    /// MonthList and YearList, MonthDn, Monthup, YearDn, YearUp; the captions of MonthYearLabel,
    /// lblDataStatus, lblShownDay (the date of the panel) and lblHint.
    KeyedItems controls;
    KeyedItems smuiDaysInfo; ///< the panel
    KeyedItems mnuFile;      ///< mnuClose
    KeyedItems mnuPopup;     ///< mnuAddInfo

    QDate DisplayDate;        ///< within the month shown; after a click the day clicked
    QString SelectedDay;      ///< caption of the day chosen; "" for none
    QString DisplayedDate;    ///< m/d/yyyy of the day on the panel; "" for none
    bool ListsLocked = false; ///< the lists are being filled; a change in them does nothing

    const MonthGrid& grid() const { return m_grid; }
    void setGrid(const MonthGrid& grid);

    MonthOfYear shownMonth() const;
    void setShownMonth(MonthOfYear month);

    /// The panel is shown, or "No data available" in its place.
    bool isPanelShown() const;
    void setPanelShown(bool shown);

    int groupCount() const;
    QList<DayGroup> groups() const;
    /// Those whose rows on the panel differ from what was put there.
    QList<DayGroup> editedGroups() const;
    /// Another group of the panel than the one of this project row has the project, or had it when
    /// it was put there.
    bool hasElsewhere(const QString& key, const QString& project) const;
    void appendGroups(const QList<DayGroup>& groups, const QStringList& projects);
    /// Empties the panel; no row is being changed any more.
    void clearGroups();

    /// Sets a project row and what is remembered of it; raises BadArgument for an absent row.
    void setProject(const QString& key, const QString& name);
    /// The project that the row held before its list was used.
    QString formerProject(const QString& key) const { return m_projects.value(key); }
    /// Until a project comes from the Database Manager the row shows "More ... "; key "": none.
    void awaitProject(const QString& key) { m_awaiting = key; }
    bool isAwaitingProject() const { return !m_awaiting.isEmpty(); }
    /// Puts the project back in the row that waits.
    void endAwaiting();

    /// True at the first call for a date.
    bool offersJoining(const QString& date);

    /// As a newly opened screen has it.
    void reset();

  signals:
    void GridChanged();

  private:
    MonthGrid m_grid;
    QHash<QString, QString> m_projects; ///< by row; the panel tells only new values
    QString m_awaiting;
    QList<DayGroup> m_original;   ///< the panel's groups as they were put there
    QStringList m_offeredJoining; ///< dates
};

/// The one model; it lives with the process.
CalendarModel& Calendar();

} // namespace kelvrane
