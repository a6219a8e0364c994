#include "calendar/calendar_model.h"

#include "platform/item_rows.h"

#include <utility>

namespace kelvrane {

namespace {

constexpr int rowsPerGroup = 5;
const QString dataStatus = QStringLiteral("lblDataStatus");
const QString monthList = QStringLiteral("MonthList");
const QString yearList = QStringLiteral("YearList");

constexpr ItemRow controlRows[] = {
    {.key = "MonthDn", .caption = "Previous Month", .image = "prev"},
    {.key = "MonthList", .caption = "Month", .kind = ItemKind::DropDown},
    {.key = "Monthup", .caption = "Next Month", .image = "next"},
    {.key = "YearDn", .caption = "Previous Year", .image = "prev"},
    {.key = "YearList", .caption = "Year", .kind = ItemKind::DropDown},
    {.key = "YearUp", .caption = "Next Year", .image = "next"},
    {.key = "MonthYearLabel", .kind = ItemKind::Text},
    {.key = "lblShownDay", .kind = ItemKind::Text},
    {.key = "lblDataStatus", .caption = "No data available", .kind = ItemKind::Text},
    {.key = "lblHint", .kind = ItemKind::Text},
};

struct GroupRow {
    const char* key;
    const char* caption;
    ItemKind kind;
    QString DayGroup::*value = nullptr;
};
const GroupRow groupRows[] = {
    {"PROJECT", "\tProject Name", ItemKind::DropDown, &DayGroup::project},
    {"PN", "\tProject Number", ItemKind::Edit, &DayGroup::number},
    {"BREAK", "\tBreak Time", ItemKind::Browse, &DayGroup::breakTime},
    {"WORK", "\tWork Time", ItemKind::Browse, &DayGroup::workTime},
    {"LINE", "", ItemKind::Separator},
};
static_assert(std::size(groupRows) == rowsPerGroup, "the row count tells the groups");

QString keyOf(const GroupRow& row, int group) {
    return QString::fromLatin1(row.key) + QString::number(group);
}

} // namespace

CalendarModel::CalendarModel() {
    mnuFile.append({.key = QStringLiteral("mnuClose"),
                    .caption = QStringLiteral("Close"),
                    .kind = ItemKind::Button,
                    .image = QStringLiteral("close")});
    mnuPopup.append({.key = QStringLiteral("mnuAddInfo"),
                     .caption = QStringLiteral("Add Info"),
                     .kind = ItemKind::Button,
                     .image = QStringLiteral("add")});
    reset();
}

void CalendarModel::reset() {
    controls.refill(ItemsOf(controlRows));
    clearGroups();
    DisplayDate = {};
    SelectedDay.clear();
    DisplayedDate.clear();
    ListsLocked = false;
    m_offeredJoining.clear();
    setGrid({});
}

void CalendarModel::setGrid(const MonthGrid& grid) {
    m_grid = grid;
    emit GridChanged();
}

MonthOfYear CalendarModel::shownMonth() const {
    return {.month = controls.value(monthList).toInt(), .year = controls.value(yearList).toInt()};
}

void CalendarModel::setShownMonth(MonthOfYear month) {
    controls.setValue(monthList, QString::number(month.month));
    controls.setValue(yearList, QString::number(month.year));
}

bool CalendarModel::isPanelShown() const {
    return !controls.item(dataStatus).visible;
}

void CalendarModel::setPanelShown(bool shown) {
    controls.setVisible(dataStatus, !shown);
}

int CalendarModel::groupCount() const {
    return int(smuiDaysInfo.count()) / rowsPerGroup;
}

QList<DayGroup> CalendarModel::groups() const {
    QList<DayGroup> groups = m_original;
    auto item = smuiDaysInfo.items().begin();
    for (DayGroup& group : groups)
        for (const GroupRow& row : groupRows) {
            if (row.value)
                group.*row.value = item->value;
            ++item;
        }
    return groups;
}

QList<DayGroup> CalendarModel::editedGroups() const {
    QList<DayGroup> edited;
    const QList<DayGroup> shown = groups();
    for (qsizetype group = 0; group < shown.size(); ++group)
        if (shown[group] != m_original[group])
            edited.append(shown[group]);
    return edited;
}

bool CalendarModel::hasElsewhere(const QString& key, const QString& project) const {
    const QList<DayGroup> shown = groups();
    for (qsizetype group = 0; group < shown.size(); ++group)
        if (keyOf(groupRows[0], int(group) + 1) != key &&
            (shown[group].project == project ||
             (m_original[group].id != 0 && m_original[group].project == project)))
            return true;
    return false;
}

bool CalendarModel::offersJoining(const QString& date) {
    if (m_offeredJoining.contains(date))
        return false;
    m_offeredJoining.append(date);
    return true;
}

void CalendarModel::appendGroups(const QList<DayGroup>& groups, const QStringList& projects) {
    QList<KeyedItem> items = smuiDaysInfo.items();
    int number = groupCount();
    for (const DayGroup& group : groups) {
        ++number;
        m_projects.insert(keyOf(groupRows[0], number), group.project);
        for (const GroupRow& row : groupRows)
            items.append({.key = keyOf(row, number),
                          .caption = QString::fromLatin1(row.caption),
                          .value = row.value ? group.*row.value : QString(),
                          .kind = row.kind,
                          .choices = row.kind == ItemKind::DropDown ? projects : QStringList()});
    }
    m_original.append(groups);
    smuiDaysInfo.refill(items); // all at once: the panel measures its rows at each change
}

void CalendarModel::clearGroups() {
    smuiDaysInfo.clear();
    m_original.clear();
    m_projects.clear();
    m_awaiting.clear();
}

void CalendarModel::setProject(const QString& key, const QString& name) {
    smuiDaysInfo.setValue(key, name);
    m_projects.insert(key, name);
}

void CalendarModel::endAwaiting() {
    if (const QString key = std::exchange(m_awaiting, {}); smuiDaysInfo.contains(key))
        smuiDaysInfo.setValue(key, m_projects.value(key));
}

CalendarModel& Calendar() {
    static CalendarModel model;
    return model;
}

} // namespace kelvrane
