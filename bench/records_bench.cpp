#include "records_bench.h"

#include "floors.h"
#include "platform/recordset.h"

namespace kelvrane::bench {

qsizetype ReachRecords(const QString& history, qint32 key) {
    const QString name = QStringLiteral("ProjectName");
    Connection connection(history);
    Recordset rows(connection, QStringLiteral("DayInfo"), Recordset::Optimistic);
    rows.moveFirst();
    qsizetype length = rows.text(name).size();
    rows.find(QStringLiteral("ID = '%1'").arg(key));
    length += rows.text(name).size();
    rows.moveLast();
    return length + rows.text(name).size();
}

qsizetype FloorReachRecords(const QString& history, qint32 key) {
    return FloorQueries(history,
                        {QStringLiteral("SELECT * FROM DayInfo ORDER BY ID LIMIT 1"),
                         QStringLiteral("SELECT * FROM DayInfo WHERE ID = %1").arg(key),
                         QStringLiteral("SELECT * FROM DayInfo ORDER BY ID DESC LIMIT 1")});
}

} // namespace kelvrane::bench
