// The record panel of the Database Manager: one row a field, drawn from the current records. It
// lives with the process; the record rules read what the user typed from its rows.
//
//     DisplayProject({.editable = true, .showProject = true, .showCustomer = true});
//     name = RecordPanel().value("PROJECT_NAME");
#pragma once

#include "platform/keyed_items.h"

#include <QString>

#include <span>

namespace kelvrane {

/// The items of smuiDataBase.
KeyedItems& RecordPanel();
/// What stands in a row of the panel. Raises BadArgument for a row that isn't drawn.
QString PanelText(const char* key);

inline const QString NotAssigned = QStringLiteral("< Not Assigned >");

/// A row of the panel and the record's field that fills it.
struct PanelField {
    const char* key;
    const char* caption;
    const char* field;
};
/// The ten customer rows, in order.
std::span<const PanelField> CustomerFields();

struct ProjectDrawing {
    bool editable = false;           ///< project rows can be edited
    bool showProject = false;        ///< clear the panel, add and fill the project rows
    bool showCustomer = false;       ///< fill the customer rows
    bool rowsExist = false;          ///< the customer rows are there: don't add them again
    bool keepCustomerCursor = false; ///< don't look for the project's customer
    bool force = false;              ///< fill the customer rows without an assigned customer too
};

/// Draws the current project. Unless told to keep it, moves the customer table to the project's
/// customer: from the first row, off the end when there is no such customer, on the first row when
/// none is assigned. A field that can't be read leaves its row empty. A project table that
/// is empty or closed draws as ShowNoProjects.
void DisplayProject(const ProjectDrawing& drawing);

/// Draws the customer table's current row alone, editable, after going to CustomerPosition when
/// that is set and told to. A table that is empty or closed draws its
/// NORECORDS row.
void DisplayCustomer(bool goToPosition = true);

/// The panel with the one row "Project database is empty".
void ShowNoProjects();

/// Whether the current project has a customer: CustInfoDBID is neither empty nor 0.
bool ProjectHasCustomer();

/// The user changed a row: an inactive project's flag is marked at once.
void MarkInactive(const QString& key, const QString& value);

/// Adds the entries of a text separated by ";" to the row's list. Errors are reported.
void FillCombo(KeyedItems& items, const QString& row, const QString& entries);

} // namespace kelvrane
