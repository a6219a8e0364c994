#include "timekeeping/week_view.h"

#include "frame/globals.h"
#include "frame/program_folder.h"
#include "platform/ports.h"
#include "platform/recordset.h"
#include "platform/skip_errors.h"
#include "platform/texts.h"
#include "timekeeping/control_model.h"
#include "timevalues/day_history.h"
#include "timevalues/time_values.h"

#include <algorithm>

namespace kelvrane {

namespace {

constexpr int daysInWeek = 7;
constexpr const char* dayNames[daysInWeek] = {"Sun", "Mon", "Tues", "Wed", "Thur", "Fri", "Sat"};

/// Sunday is 1.
int weekdayOf(QDate date) {
    return date.dayOfWeek() % daysInWeek + 1;
}

/// Work below the increment shows as a bound and not as nothing.
QString belowIncrement() {
    return QStringLiteral("< ") + DoubleText(ToMinutes(TimeIncrements) / 60.0);
}

WeekView::Row readRow(Connection& connection, const QString& name, QDate start) {
    WeekView::Row row;
    row.name = name;
    Recordset records(connection, ProjectPeriodQuery(name, start, start.addDays(daysInWeek - 1)));
    float sum = 0;
    for (; !records.atEnd(); records.moveNext()) {
        const int minutes = records.value(QStringLiteral("TotalTime")).toInt() -
                            records.value(QStringLiteral("BreakTime")).toInt();
        const double hours = RoundToIncrement(float(minutes), TimeIncrements);
        sum += float(hours);
        const qint64 day = start.daysTo(records.value(QStringLiteral("Date")).toDate());
        if (day >= 0 && day < daysInWeek)
            row.cells[day] = hours == 0 ? belowIncrement() : DoubleText(hours);
    }
    row.cells.last() = sum == 0 ? belowIncrement() : SingleText(sum);
    return row;
}

} // namespace

void CalcLVWStartDate() {
    WeekView& view = Control().lvwWeekView;
    const QDate today = ports.clock->today();
    const Int16 firstDay = ToInt16(StartOfWeek);
    for (int back = 0; back < daysInWeek; ++back)
        if (weekdayOf(today.addDays(-back)) == firstDay)
            view.WeekStartDate = today.addDays(-back);
    view.WeekEndDate = view.WeekStartDate.addDays(daysInWeek);
}

void SetLVWColumnHeaders() {
    CalcLVWStartDate();
    WeekView& view = Control().lvwWeekView;
    const int firstDay = ToInt16(StartOfWeek);
    QStringList names;
    QList<int> daysOfMonth;
    for (int day = 0; day < daysInWeek; ++day) {
        const int weekday = Modulo(day + firstDay - 1, daysInWeek);
        names.append(QString::fromLatin1(dayNames[std::max(weekday, 0)]));
        daysOfMonth.append(view.WeekStartDate.addDays(day).day());
    }
    view.setHeaders(names, daysOfMonth);
    emit Control().LayoutChanged();
}

void FillWeekView() {
    SkipErrors guard(QStringLiteral("FillWeekView"));
    guard([] {
        WeekView& view = Control().lvwWeekView;
        Connection connection(InAppPath(QString::fromLatin1(files::DayHistory)));
        if (Recordset(connection, QStringLiteral("DayInfo")).isEmpty())
            return;
        const QDate start = view.WeekStartDate;
        QStringList names;
        Recordset week(connection, PeriodQuery(start, start.addDays(daysInWeek - 1)));
        for (; !week.atEnd(); week.moveNext()) {
            const QString name = week.text(QStringLiteral("ProjectName"));
            if (names.isEmpty() || names.last() != name)
                names.append(name);
        }
        QList<WeekView::Row> rows;
        SkipErrors each(QStringLiteral("FillWeekView"));
        // Every name is listed; one that breaks its query ends the filling of cells there.
        each([&] {
            for (const QString& name : names)
                rows.append(readRow(connection, name, start));
        });
        for (const QString& name : names.mid(rows.size()))
            rows.append({.name = name});
        view.setRows(rows);
    });
}

void WeekView::setHeaders(const QStringList& newNames, const QList<int>& newDays) {
    if (m_dayNames == newNames && m_daysOfMonth == newDays)
        return;
    m_dayNames = newNames;
    m_daysOfMonth = newDays;
    emit headerDataChanged(Qt::Horizontal, 0, columnsInAll - 1);
}

void WeekView::setRows(const QList<Row>& newRows) {
    const qsizetype kept = std::min(m_rows.size(), newRows.size());
    for (int row = 0; row < kept; ++row) {
        if (m_rows[row] == newRows[row])
            continue;
        m_rows[row] = newRows[row];
        emit dataChanged(index(row, 0), index(row, columnsInAll - 1));
    }
    if (m_rows.size() > kept) {
        beginRemoveRows({}, int(kept), int(m_rows.size()) - 1);
        m_rows.resize(kept);
        endRemoveRows();
    } else if (newRows.size() > kept) {
        beginInsertRows({}, int(kept), int(newRows.size()) - 1);
        m_rows = newRows;
        endInsertRows();
    }
}

int WeekView::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_rows.size());
}

int WeekView::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columnsInAll;
}

QVariant WeekView::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= m_rows.size())
        return {};
    const Row& row = m_rows[index.row()];
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return index.column() == 0 ? row.name : row.cells[index.column() - 1];
    if (role == Qt::TextAlignmentRole)
        return int((index.column() == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    return {};
}

QVariant WeekView::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnsInAll)
        return {};
    const bool day = section > 0 && section <= m_dayNames.size();
    if (role == Qt::DisplayRole) {
        if (section == 0)
            return QStringLiteral("Projects");
        return day                           ? m_dayNames[section - 1]
               : section == columnsInAll - 1 ? QStringLiteral("Total")
                                             : QString();
    }
    if (role == DayOfMonthRole)
        return day ? m_daysOfMonth[section - 1] : 0;
    if (role == Qt::TextAlignmentRole)
        return int((section == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    return {};
}

} // namespace kelvrane
