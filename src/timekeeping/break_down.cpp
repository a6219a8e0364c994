#include "timekeeping/break_down.h"

#include "timekeeping/control_model.h"

namespace kelvrane {

namespace {

constexpr int rowsPerEntry = 6;

struct Row {
    EntryRow kind;
    const char* key;
    const char* caption;
    QString DayEntry::*field;
};

const Row rows[] = {
    {EntryRow::Number, "ProjNum", "Project Number", &DayEntry::ProjectNumber},
    {EntryRow::StartTime, "START TIME", "Start Time", &DayEntry::StartTime},
    {EntryRow::StopTime, "STOP TIME", "Stop Time", &DayEntry::StopTime},
    {EntryRow::BreakTime, "BREAK TIME", "Break Time", &DayEntry::BreakTime},
    {EntryRow::TotalTime, "TOTAL TIME", "Total Time", &DayEntry::TotalTime},
};
static_assert(std::size(rows) + 1 == rowsPerEntry, "a heading and the rows");

} // namespace

QString BreakDownKey(EntryRow row, int index) {
    for (const Row& candidate : rows)
        if (candidate.kind == row)
            return QString::fromLatin1(candidate.key) + QString::number(index);
    return {};
}

int BreakDownIndex(const QString& key) {
    qsizetype digits = key.size();
    while (digits > 0 && key[digits - 1].isDigit())
        --digits;
    bool isNumber = false;
    const int index = key.mid(digits).toInt(&isNumber);
    return isNumber ? index : -1;
}

int BreakDownEntryCount() {
    return int(Control().smuiBreakDown.count()) / rowsPerEntry;
}

void AppendBreakDown(const DayEntry& entry, int index) {
    KeyedItems& list = Control().smuiBreakDown;
    list.append({.key = {}, .caption = entry.ProjectName, .kind = ItemKind::Heading});
    for (const Row& row : rows)
        list.append({.key = QString::fromLatin1(row.key) + QString::number(index),
                     .caption = QString::fromLatin1(row.caption),
                     .value = entry.*row.field});
}

void CutBreakDown(int count) {
    KeyedItems& list = Control().smuiBreakDown;
    if (list.count() > qsizetype(count) * rowsPerEntry)
        list.refill(list.items().first(qsizetype(count) * rowsPerEntry));
}

} // namespace kelvrane
