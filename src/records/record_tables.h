// The two process-wide record sets: projects and customers. Each has its own connection, and its
// cursor carries meaning: the project on display, and that project's customer.
//
//     OpenProjectTable("ReadOnly");
//     ProjectRecords().find("Project_Name = 'Alpha'");
//     name = ProjectRecords().text(1);
//     CloseProjectTable();
#pragma once

#include "platform/recordset.h"

#include <QString>

#include <memory>

namespace kelvrane {

namespace project_column {
inline constexpr int Name = 1;
inline constexpr int Number = 2;
inline constexpr int Active = 4;
} // namespace project_column

/// A record set with the connection that it stands on.
struct OpenTable {
    OpenTable(const QString& path, const QString& table, Recordset::Lock lock)
        : connection(path), rows(connection, table, lock) {}
    Connection connection;
    Recordset rows;
};

/// Null while closed. Reached through ProjectRecords() and CustomerRecords(), which raise
/// NoObject then.
inline std::unique_ptr<OpenTable> ProjectTable;
inline std::unique_ptr<OpenTable> CustomerTable;
Recordset& ProjectRecords();
Recordset& CustomerRecords();
inline bool ProjectRecordsOpen = false;

/// Opens ProjectInfo of ProjectDatabase; "ReadOnly" read-only, any other mode for writing. While
/// another opener holds the table, the new opener gets a set of its own and closing gives the
/// former back. Count, when given, gets the number of rows. Raises DatabaseOpen, Sql: then nothing
/// was opened and the former opener keeps its set.
void OpenProjectTable(const QString& mode, int* count = nullptr);
/// Closes the set opened last. After an open that failed it closes nothing, so that a routine that
/// always closes doesn't take the set of another opener.
void CloseProjectTable();
/// Closes this set wherever it stands among the openers' sets; nothing when it isn't open. For an
/// opener that stays while others come and go.
void CloseProjectTable(const OpenTable* opened);
void OpenCustomerTable(const QString& mode, int* count = nullptr);
void CloseCustomerTable();
void CloseCustomerTable(const OpenTable* opened);

/// Whether the tables that a routine began on are still in use: while a box waits, their screen may
/// go.
class TablesInUse {
  public:
    bool gone() const {
        return ProjectTable.get() != m_projects || CustomerTable.get() != m_customers;
    }

  private:
    const OpenTable* m_projects = ProjectTable.get();
    const OpenTable* m_customers = CustomerTable.get();
};

} // namespace kelvrane
