#include "records/list_fill.h"

#include "frame/error_report.h"
#include "platform/ports.h"
#include "records/manager_model.h"
#include "records/record_state.h"

#include <QElapsedTimer>

namespace kelvrane {

namespace {

constexpr int millisecondsBetweenYields = 12; // a frame at 60 Hz takes 16
const QString progressItem = QStringLiteral("PROGRESS");

QStringList readRow(Recordset& records) {
    QStringList texts{records.text(1)};
    for (int position = 2; position < FieldNames.size(); ++position)
        texts.append(records.isNull(position) ? QStringLiteral(" ") : records.text(position));
    return texts;
}

void showProgress(qsizetype row, qsizetype rows) {
    Manager().smuiProgress.setValue(progressItem, QString::number(row * 100 / rows));
}

/// False when the screen went while events ran.
bool readRows(Recordset& records, QList<QStringList>& rows, QStringList& keys,
              const std::function<bool()>& stillThere) {
    const int count = records.count();
    QElapsedTimer sinceYield;
    for (int row = 1; row <= count; ++row) {
        rows.append(readRow(records));
        keys.append(records.text(0));
        records.moveNext();
        const bool due = !sinceYield.isValid() || sinceYield.elapsed() >= millisecondsBetweenYields;
        if (!due && row < count)
            continue;
        showProgress(row, count);
        ports.events->yield();
        if (!stillThere())
            return false;
        sinceYield.restart();
    }
    return true;
}

} // namespace

void AddDataToList(Recordset& records, const std::function<bool()>& stillThere) {
    SkipErrors step = ReportingSteps(QStringLiteral("AddDataToList"));
    ManagerModel& manager = Manager();
    manager.ListView1.setRows(FieldNames.mid(1), {});
    bool ready = false;
    step([&] {
        ready = !records.isEmpty();
        if (ready)
            records.moveFirst();
    });
    if (!ready || !stillThere())
        return;
    manager.smuiProgress.setCaption(progressItem, QStringLiteral("Loading Data ..."));
    manager.smuiProgress.setValue(progressItem, QStringLiteral("0"));
    manager.smuiProgress.setVisible(progressItem, true);

    QList<QStringList> rows;
    QStringList keys;
    bool there = true;
    step([&] { there = readRows(records, rows, keys, stillThere); });
    if (!there || !stillThere()) // the report of an error waits, too
        return;
    step([&] { records.moveFirst(); });
    manager.ListView1.setRows(FieldNames.mid(1), std::move(rows), std::move(keys));
    manager.smuiProgress.setVisible(progressItem, false);
}

void listview1_ColumnClick(int column) {
    ManagerModel& manager = Manager();
    if (manager.state.Loading)
        return;
    ProjectList& list = manager.ListView1;
    const bool flip = list.sortColumn() == column;
    manager.state.SelectedIndex =
        list.sortBy(column, flip && !list.sortedDescending(), manager.state.SelectedIndex);
}

} // namespace kelvrane
