// A connection to one database file. Opening never creates a file and reads the schema at once, so
// that a file that isn't a database is found out here.
//
//     Connection connection(path);                  // raises DatabaseOpen
//     Recordset rows(connection, "SELECT * FROM DayInfo WHERE Date = #3/14/2002#");
#pragma once

#include <QHash>
#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QVariant>

namespace kelvrane {

enum class ColumnType { Text, Integer, Number, Boolean, Date };

struct Column {
    QString name;
    ColumnType type;
    bool isKey; ///< the table's own integer key
};

class Connection {
  public:
    explicit Connection(const QString& path);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Runs one statement that returns no rows. Date literals #m/d/yyyy# outside quotes become the
    /// stored form. Raises Sql.
    void execute(const QString& sql);

    /// Columns of a table in their order; raises Sql when there is no such table. Kept for the
    /// connection's life.
    const QList<Column>& columns(const QString& table);

    /// Between begin and commit all writes are one transaction. Leaving the connection without a
    /// commit keeps what was written so far: the open transaction is committed on destruction.
    void begin();
    void commit();
    void rollback();

    QSqlDatabase& database() { return m_database; }
    const QString& path() const { return m_path; }

  private:
    QString m_path;
    QString m_name;
    QSqlDatabase m_database;
    QHash<QString, QList<Column>> m_columns;
    bool m_inTransaction = false;
};

/// Turns #m/d/yyyy# outside quotes into 'yyyy-mm-dd' and leaves all else as it is.
QString WithStoredDates(const QString& sql);

} // namespace kelvrane
