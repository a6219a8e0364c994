#include "records/record_tables.h"

#include "frame/globals.h"
#include "platform/error.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace kelvrane {

namespace {

/// One of the two tables: the set in use, and those of the openers that it stands before.
struct Openers {
    const char* table;
    std::unique_ptr<OpenTable>& current;
    std::vector<std::unique_ptr<OpenTable>> former = {};
    bool openFailed = false; ///< the next close answers an open that failed

    void open(const QString& mode, int* count) {
        openFailed = true;
        const auto lock = mode == u"ReadOnly" ? Recordset::ReadOnly : Recordset::Optimistic;
        auto opened =
            std::make_unique<OpenTable>(ProjectDatabase, QString::fromLatin1(table), lock);
        if (count)
            *count = opened->rows.count();
        if (current)
            former.push_back(std::move(current));
        current = std::move(opened);
        openFailed = false;
    }

    void closeLast() {
        if (!std::exchange(openFailed, false))
            close(current.get());
    }

    void close(const OpenTable* opened) {
        if (!opened)
            return;
        if (current.get() != opened) {
            std::erase_if(former, [&](const auto& held) { return held.get() == opened; });
            return;
        }
        current.reset();
        if (former.empty())
            return;
        current = std::move(former.back());
        former.pop_back();
    }
};

Openers& Projects() {
    static Openers openers{"ProjectInfo", ProjectTable};
    return openers;
}

Openers& Customers() {
    static Openers openers{"CustomerInfo", CustomerTable};
    return openers;
}

Recordset& RowsOf(const std::unique_ptr<OpenTable>& table) {
    if (!table)
        Raise(errors::NoObject);
    return table->rows;
}

} // namespace

Recordset& ProjectRecords() {
    return RowsOf(ProjectTable);
}
Recordset& CustomerRecords() {
    return RowsOf(CustomerTable);
}

void OpenProjectTable(const QString& mode, int* count) {
    Projects().open(mode, count);
    ProjectRecordsOpen = true;
}

void CloseProjectTable() {
    Projects().closeLast();
    ProjectRecordsOpen = ProjectTable != nullptr;
}

void CloseProjectTable(const OpenTable* opened) {
    Projects().close(opened);
    ProjectRecordsOpen = ProjectTable != nullptr;
}

void OpenCustomerTable(const QString& mode, int* count) {
    Customers().open(mode, count);
}

void CloseCustomerTable() {
    Customers().closeLast();
}

void CloseCustomerTable(const OpenTable* opened) {
    Customers().close(opened);
}

} // namespace kelvrane
