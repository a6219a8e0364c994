#include "platform/connection.h"

#include "platform/error.h"
#include "platform/texts.h"

#include <QFileInfo>
#include <QSqlError>
#include <QStringList>
#include <QUrl>
#include <QVariant>

#include <algorithm>
#include <iterator>
#include <utility>

namespace kelvrane {

namespace {

/// Connect options, by LockWait.
constexpr const char* lockWaits[] = {"QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=250",
                                     "QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=0"};

/// SQLite's codes for a database that somebody else uses, without their extended part.
constexpr int busyCodes[] = {5, 6};

/// Files that this process has open, each as often as it is open.
QStringList& openFiles() {
    static QStringList files;
    return files;
}

bool isBusy(const QSqlError& error) {
    bool isNumber = false;
    const int code = error.nativeErrorCode().toInt(&isNumber) & 0xFF;
    return isNumber && std::ranges::find(busyCodes, code) != std::end(busyCodes);
}

QString databaseSource() {
    return QStringLiteral("SQLite");
}

struct TypeRow {
    const char* part; ///< of the declared type, in capitals
    ColumnType type;
};
/// The first row whose part stands in the declared type counts.
constexpr TypeRow declaredTypes[] = {
    {"DATE", ColumnType::Date},       {"TIME", ColumnType::Date},
    {"BOOL", ColumnType::Boolean},    {"BIT", ColumnType::Boolean},
    {"YESNO", ColumnType::Boolean},   {"INT", ColumnType::Integer},
    {"LONG", ColumnType::Integer},    {"SHORT", ColumnType::Integer},
    {"BYTE", ColumnType::Integer},    {"COUNTER", ColumnType::Integer},
    {"REAL", ColumnType::Number},     {"DOUB", ColumnType::Number},
    {"FLOA", ColumnType::Number},     {"SINGLE", ColumnType::Number},
    {"CURRENCY", ColumnType::Number}, {"MONEY", ColumnType::Number},
    {"NUM", ColumnType::Number},      {"DEC", ColumnType::Number},
};

ColumnType typeOf(const QString& declared) {
    const QString capitals = declared.toUpper();
    for (const TypeRow& row : declaredTypes)
        if (capitals.contains(QLatin1String(row.part)))
            return row.type;
    return ColumnType::Text;
}

/// SQLite would open a folder or an absent file with a message that names neither.
QString unusable(const QString& path) {
    if (path.isEmpty() || path.contains(QChar::Null))
        return QStringLiteral("this is not a file name");
    const QFileInfo file(path);
    if (!file.exists())
        return QStringLiteral("the file does not exist");
    if (!file.isFile())
        return QStringLiteral("this is not a file");
    return {};
}

} // namespace

Connection::Connection(const QString& path, LockWait wait) : m_path(path), m_wait(wait) {
    static quint64 opened = 0;
    m_name = QStringLiteral("kelvrane-%1").arg(++opened);
    try {
        open();
        openFiles().append(m_path);
    } catch (...) {
        close();
        throw;
    }
}

Connection::~Connection() {
    if (m_inTransaction) {
        QSqlQuery query(m_database);
        query.exec(QStringLiteral("COMMIT")); // a failure rolls back on closing
    }
    close();
    openFiles().removeOne(m_path);
}

bool Connection::isOpenOn(const QString& path) {
    return openFiles().contains(path);
}

void Connection::open() {
    const auto fail = [this](const QString& text, int number = errors::DatabaseOpen) {
        Raise(number,
              QStringLiteral("The database '%1' could not be opened: %2")
                  .arg(QString(m_path).replace(QChar::Null, u'?'), text),
              databaseSource());
    };
    if (const QString text = unusable(m_path); !text.isEmpty())
        fail(text);
    m_database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
    m_database.setConnectOptions(QLatin1String(lockWaits[int(m_wait)]));
    const QByteArray encoded = QUrl::toPercentEncoding(QFileInfo(m_path).absoluteFilePath(), "/");
    m_database.setDatabaseName(QStringLiteral("file:") + QString::fromLatin1(encoded) +
                               QStringLiteral("?mode=rw"));
    if (!m_database.open())
        fail(m_database.lastError().databaseText());
    QSqlQuery schema(m_database);
    if (!schema.exec(QStringLiteral("SELECT 1 FROM sqlite_master LIMIT 1")))
        fail(schema.lastError().databaseText(),
             isBusy(schema.lastError()) ? errors::DatabaseLocked : errors::DatabaseOpen);
}

void Connection::close() {
    m_prepared.clear();
    m_database = QSqlDatabase();
    if (QSqlDatabase::contains(m_name))
        QSqlDatabase::removeDatabase(m_name);
}

void Connection::execute(const QString& sql) {
    QSqlQuery query(m_database);
    if (!query.exec(WithStoredDates(sql)))
        RaiseSql(query);
}

const QList<Column>& Connection::columns(const QString& table) {
    const auto known = m_columns.constFind(table);
    if (known != m_columns.constEnd())
        return *known;
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    if (!query.exec(QStringLiteral("PRAGMA table_info(%1)").arg(QuotedName(table))))
        RaiseSql(query);
    QList<Column> columns;
    qsizetype keys = 0;
    while (query.next()) {
        const QString declared = query.value(2).toString();
        const bool inKey = query.value(5).toInt() > 0;
        keys += inKey ? 1 : 0;
        columns.append({.name = query.value(1).toString(),
                        .type = typeOf(declared),
                        .isKey = inKey && declared.toUpper() == u"INTEGER",
                        .allowsNull = query.value(3).toInt() == 0});
    }
    if (columns.isEmpty())
        Raise(errors::Sql, QStringLiteral("There is no table '%1'").arg(table), databaseSource());
    if (keys > 1) // a key of several columns is none of the table's own
        for (Column& column : columns)
            column.isKey = false;
    return *m_columns.insert(table, columns);
}

QSqlQuery& Connection::prepared(const QString& sql) {
    const auto known = m_prepared.find(sql);
    if (known != m_prepared.end())
        return known->second;
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    if (!query.prepare(sql))
        RaiseSql(query);
    return m_prepared.emplace(sql, std::move(query)).first->second;
}

void Connection::run(const QString& sql, const QVariantList& values) {
    QSqlQuery& query = prepared(sql);
    for (qsizetype place = 0; place < values.size(); ++place)
        query.bindValue(int(place), values[place]);
    if (!query.exec())
        RaiseSql(query);
    query.finish();
}

QSqlQuery Connection::select(const QString& sql, const QVariantList& values) {
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    if (!query.prepare(sql))
        RaiseSql(query);
    for (const QVariant& value : values)
        query.addBindValue(value);
    if (!query.exec())
        RaiseSql(query);
    return query;
}

void Connection::begin() {
    execute(QStringLiteral("BEGIN IMMEDIATE"));
    m_inTransaction = true;
}

void Connection::commit() {
    execute(QStringLiteral("COMMIT"));
    m_inTransaction = false;
}

void Connection::rollback() {
    if (!std::exchange(m_inTransaction, false))
        return;
    QSqlQuery query(m_database);
    query.exec(QStringLiteral("ROLLBACK"));
}

void RaiseSql(const QSqlQuery& query) {
    const QSqlError error = query.lastError();
    Raise(isBusy(error) ? errors::DatabaseLocked : errors::Sql,
          error.databaseText().isEmpty() ? error.driverText() : error.databaseText(),
          databaseSource());
}

QString QuotedName(const QString& name) {
    return u'"' + QString(name).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

QString WithStoredDates(const QString& sql) {
    if (!sql.contains(u'#'))
        return sql;
    QString result;
    QChar quote;
    for (qsizetype at = 0; at < sql.size(); ++at) {
        const QChar c = sql[at];
        if (!quote.isNull()) {
            if (c == quote)
                quote = QChar();
        } else if (c == u'\'' || c == u'"') {
            quote = c;
        } else if (c == u'#') {
            const qsizetype end = sql.indexOf(u'#', at + 1);
            // The longest literal is #mm/dd/yyyy#.
            const QDate date =
                end - at <= 11 ? DateFromText(sql.mid(at + 1, end - at - 1)) : QDate();
            if (end > at && date.isValid()) {
                result += u'\'' + StoredDateText(date) + u'\'';
                at = end;
                continue;
            }
        }
        result += c;
    }
    return result;
}

} // namespace kelvrane
