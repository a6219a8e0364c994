// The picker that assigns a customer to the project on the record panel. It works on
// CustomerRecords itself and leaves its cursor on the customer chosen; saving the project reads it
// there.
#pragma once

#include "platform/int16.h"
#include "platform/keyed_items.h"

#include <QObject>
#include <QString>

namespace kelvrane {

class CustomerBrowser : public QObject {
    Q_OBJECT
  public:
    CustomerBrowser();

    KeyedItems smuiCustInfo;   ///< the customer, read-only
    KeyedItems SmartStatusBar; ///< stepping, the record's number, find

    Int16 BrowseColumn;         ///< next field position of the search, 0-based
    bool RecordMissed = false;  ///< the current record's fields have been searched through
    bool BrowseRestart = false; ///< the next search begins at the first record

    /// Panels and state as a newly opened screen has them.
    void reset();
    void markRow(const QString& key) { emit RowMarked(key); }

  signals:
    void RowMarked(const QString& key);
};

/// The one browser; it lives with the process.
CustomerBrowser& Browser();

/// Opens on the customer of the project on display, else on the first one. The customer table is
/// open and has rows. A customer that is gone from it is told in a box.
void FrmBrowseForCustomer_Load();
/// Draws the customer on the cursor.
void DisplayCustInfo();
void SmartStatusBar_Click(const QString& key);
/// A change of the text to find makes the next search begin anew.
void SmartStatusBar_Change(const QString& key);
/// Searches on for the text of FINDWHAT, in any case and all fields, from where the last search
/// ended.
void FrmBrowseForCustomer_FindInSMUIView();
/// Copies the customer on the cursor to the record panel. Nothing is written before the project is
/// saved.
void AddInfo2DBForm();

/// Connects the panels to the routines; once a process.
void WireCustomerBrowser();

} // namespace kelvrane
