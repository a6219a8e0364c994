#include "floors.h"

#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUrl>
#include <QVariant>

#include <libxml/HTMLparser.h>

#include <fcntl.h>
#include <unistd.h>

namespace kelvrane::bench {

namespace {

void check(bool succeeded, const char* what) {
    if (!succeeded)
        qFatal("floor: %s failed", what);
}

/// Opened as the program opens a database, and its schema read.
class RawDatabase {
  public:
    explicit RawDatabase(const QString& path)
        : m_database(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name)) {
        m_database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_URI"));
        m_database.setDatabaseName(QStringLiteral("file:") +
                                   QString::fromLatin1(QUrl::toPercentEncoding(path, "/")) +
                                   QStringLiteral("?mode=rw"));
        check(m_database.open(), "open");
        execute(QStringLiteral("SELECT 1 FROM sqlite_master LIMIT 1"));
    }
    ~RawDatabase() {
        m_database = {};
        QSqlDatabase::removeDatabase(m_name);
    }
    RawDatabase(const RawDatabase&) = delete;
    RawDatabase& operator=(const RawDatabase&) = delete;

    QSqlQuery execute(const QString& sql) {
        QSqlQuery query(m_database);
        query.setForwardOnly(true);
        check(query.exec(sql), qPrintable(sql));
        return query;
    }

  private:
    const QString m_name = QStringLiteral("floor");
    QSqlDatabase m_database;
};

void flush(const QString& path, int flags) {
    const int descriptor = open(QFile::encodeName(path).constData(), flags | O_CLOEXEC);
    check(descriptor >= 0 && fsync(descriptor) == 0 && close(descriptor) == 0, "flush");
}

void replace(const QString& source, const QString& target) {
    check(::rename(QFile::encodeName(source).constData(), QFile::encodeName(target).constData()) ==
              0,
          "rename");
    flush(QFileInfo(target).path(), O_RDONLY | O_DIRECTORY);
}

QString quoted(QDate day) {
    return u'\'' + day.toString(Qt::ISODate) + u'\'';
}

} // namespace

void FloorRollUp(const QString& database, QDate day, const QStringList& projects) {
    RawDatabase raw(database);
    raw.execute(QStringLiteral("BEGIN IMMEDIATE"));
    static int minutes = 0; // each run changes the rows, as a running day does
    ++minutes;
    for (const QString& project : projects) {
        int key = 0;
        {
            QSqlQuery row = raw.execute(
                QStringLiteral("SELECT * FROM DayInfo WHERE Date = %1 and ( ProjectName "
                               "= '%2')")
                    .arg(quoted(day), project));
            check(row.next(), "row of the day");
            key = row.value(0).toInt();
        }
        raw.execute(QStringLiteral("UPDATE DayInfo SET BreakTime = 5, TotalTime = %1 WHERE ID = %2")
                        .arg(minutes % 600)
                        .arg(key));
    }
    raw.execute(QStringLiteral("COMMIT"));
}

qsizetype FloorWeekView(const QString& database, QDate firstDay) {
    RawDatabase raw(database);
    check(raw.execute(QStringLiteral("SELECT * FROM DayInfo LIMIT 1")).next(), "first row");
    const QString period =
        QStringLiteral("Date BETWEEN %1 and %2").arg(quoted(firstDay), quoted(firstDay.addDays(6)));
    QStringList names;
    QSqlQuery week = raw.execute(QStringLiteral("SELECT * FROM DayInfo WHERE ") + period +
                                 QStringLiteral(" ORDER BY ProjectName"));
    while (week.next()) {
        const QString name = week.value(2).toString();
        if (names.isEmpty() || names.last() != name)
            names.append(name);
    }
    QStringList cells;
    for (const QString& name : names) {
        QSqlQuery rows = raw.execute(
            QStringLiteral("SELECT * FROM DayInfo WHERE ( ProjectName = '%1' ) AND ( ").arg(name) +
            period + u')');
        while (rows.next())
            cells.append(QString::number((rows.value(5).toInt() - rows.value(4).toInt()) / 60.0) +
                         rows.value(1).toString());
    }
    return cells.size();
}

qsizetype FloorPeriodPass(const QString& database, QDate first, QDate last) {
    struct Sum {
        QString name;
        int work = 0;
        int pause = 0;
    };
    RawDatabase raw(database);
    QList<Sum> sums;
    QSqlQuery rows = raw.execute(
        QStringLiteral("SELECT ProjectName, BreakTime, TotalTime FROM DayInfo WHERE Date BETWEEN "
                       "%1 and %2 ORDER BY ProjectName")
            .arg(quoted(first), quoted(last)));
    while (rows.next()) {
        const QString name = rows.value(0).toString();
        if (sums.isEmpty() || sums.last().name != name)
            sums.append({.name = name});
        const int pause = rows.value(1).toInt();
        sums.last().pause += pause;
        sums.last().work += rows.value(2).toInt() - pause;
    }
    return sums.size();
}

qsizetype FloorTwoDays(const QString& database, QDate first, QDate second) {
    RawDatabase raw(database);
    QStringList cells;
    for (const QDate day : {first, second}) {
        QSqlQuery rows =
            raw.execute(QStringLiteral("SELECT * FROM DayInfo WHERE Date = ") + quoted(day));
        const int fields = rows.record().count();
        while (rows.next())
            for (int field = 0; field < fields; ++field)
                cells.append(rows.value(field).toString());
    }
    return cells.size();
}

void FloorSave(const QString& target, const QByteArray& bytes) {
    const QString temporary = target + QStringLiteral(".floor");
    const int file = open(QFile::encodeName(temporary).constData(),
                          O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    check(file >= 0 &&
              write(file, bytes.constData(), static_cast<size_t>(bytes.size())) == bytes.size(),
          "write");
    check(fsync(file) == 0 && close(file) == 0, "flush");
    replace(temporary, target);
}

bool FloorProjectPass(const QString& database, const QString& wanted) {
    RawDatabase raw(database);
    bool found = false;
    QSqlQuery rows = raw.execute(QStringLiteral("SELECT * FROM ProjectInfo"));
    const int fields = rows.record().count();
    while (rows.next())
        for (int field = 0; field < fields; ++field)
            found |= rows.value(field).toString().toLower().contains(wanted);
    return found;
}

void FloorHtmlParses(const QByteArray& html, int times) {
    for (int i = 0; i < times; ++i) {
        const htmlDocPtr page = htmlReadMemory(html.constData(), int(html.size()), nullptr, "UTF-8",
                                               HTML_PARSE_RECOVER | HTML_PARSE_NOERROR |
                                                   HTML_PARSE_NOWARNING | HTML_PARSE_NONET);
        check(page != nullptr, "parse");
        xmlFreeDoc(page);
    }
}

qsizetype FloorQueries(const QString& database, const QStringList& queries) {
    RawDatabase raw(database);
    QStringList cells;
    for (const QString& query : queries) {
        QSqlQuery rows = raw.execute(query);
        const int fields = rows.record().count();
        while (rows.next())
            for (int field = 0; field < fields; ++field)
                cells.append(rows.value(field).toString());
    }
    return cells.size();
}

void FloorCompaction(const QString& database, const QString& backup) {
    const QString copy = database + QStringLiteral(".floor");
    const auto vacuumInto = [](RawDatabase& raw, const QString& target) {
        QFile::remove(target);
        raw.execute(QStringLiteral("VACUUM INTO '%1'").arg(target));
        flush(target, O_RDWR);
    };
    {
        RawDatabase raw(database);
        raw.execute(QStringLiteral("PRAGMA locking_mode = EXCLUSIVE"));
        raw.execute(QStringLiteral("BEGIN EXCLUSIVE"));
        raw.execute(QStringLiteral("COMMIT"));
        vacuumInto(raw, copy);
        replace(copy, backup);
        vacuumInto(raw, copy);
    }
    replace(copy, database);
}

} // namespace kelvrane::bench
