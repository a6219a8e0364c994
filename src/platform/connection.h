// A connection to one database file. Opening never creates a file and reads the schema at once, so
// that a file that isn't a database is found out here.
//
// A database that another process keeps locked is the error DatabaseLocked after a quarter of a
// second, or at once where nothing may wait.
// Record sets on a connection are gone before it is.
//
//     Connection connection(path);                  // raises DatabaseOpen
//     Recordset rows(connection, "SELECT * FROM DayInfo WHERE Date = #3/14/2002#");
#pragma once

#include <QHash>
#include <QList>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariantList>

#include <map>

namespace kelvrane {

enum class ColumnType { Text, Integer, Number, Boolean, Date };

struct Column {
    QString name;
    ColumnType type;
    bool isKey; ///< the table's own integer key
    bool allowsNull = true;
};

/// How long a statement waits for a database that another process keeps locked.
enum class LockWait { Brief, None };

class Connection {
  public:
    explicit Connection(const QString& path, LockWait wait = LockWait::Brief);
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
    /// Beginning takes the write lock at once, so no statement in between can wait for it.
    void begin();
    void commit();
    /// Takes back what was written since begin; nothing outside a transaction. Raises nothing.
    void rollback();

    /// All that the writes do is one transaction, or nothing of it when they raise.
    template <typename Writes>
    void inTransaction(Writes&& writes);

    /// Whether this process has a connection open on that file.
    static bool isOpenOn(const QString& path);

    /// A statement with ? for its values, prepared once for the connection's life. Reset it with
    /// finish() after use. Raises Sql.
    QSqlQuery& prepared(const QString& sql);
    /// Runs a statement of that kind that returns no rows, with these values. Raises Sql.
    void run(const QString& sql, const QVariantList& values);
    /// Runs a SELECT with ? for its values; its rows are read forward. Raises Sql.
    QSqlQuery select(const QString& sql, const QVariantList& values = {});

    QSqlDatabase& database() { return m_database; }
    const QString& path() const { return m_path; }

  private:
    void open();
    void close();

    QString m_path;
    LockWait m_wait;
    QString m_name;
    QSqlDatabase m_database;
    QHash<QString, QList<Column>> m_columns;
    std::map<QString, QSqlQuery> m_prepared;
    bool m_inTransaction = false;
};

template <typename Writes>
void Connection::inTransaction(Writes&& writes) {
    begin();
    try {
        writes();
        commit();
    } catch (...) {
        rollback();
        throw;
    }
}

/// Raises Sql, or DatabaseLocked, with the text of the query's error.
[[noreturn]] void RaiseSql(const QSqlQuery& query);

/// A name between double quotes, as SQL wants it whatever it holds.
QString QuotedName(const QString& name);

/// Turns #m/d/yyyy# outside quotes into 'yyyy-mm-dd' and leaves all else as it is.
QString WithStoredDates(const QString& sql);

} // namespace kelvrane
