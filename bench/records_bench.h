// Single records of the history reached through a record set on the whole table, which may read no
// others: the first one, one by its key, the last one.
#pragma once

#include <QString>

namespace kelvrane::bench {

/// Opens the table, goes to the three records and reads their names. Returns the names' length.
qsizetype ReachRecords(const QString& history, qint32 key);
/// The same three records through Qt SQL. Returns the rows read.
qsizetype FloorReachRecords(const QString& history, qint32 key);

} // namespace kelvrane::bench
