// The find panel's two searches, through the list and through the records. Both run forward only.
#pragma once

#include <QString>

namespace kelvrane {

/// A change in the find panel: text, field, or case.
void FindChange(const QString& key, const QString& value);
/// A choice of the FIELDS row by its 0-based place.
void FindFieldChosen(int place);
/// A click on a check or choice of the find panel.
void FindClick(const QString& key);
/// Reads the find panel and makes the next search begin anew.
void Restart_Search();
/// cmdFind: searches what is up, the list or the record panel.
void Find();

void FindInListItem();
void FindInSingleRecordView();

} // namespace kelvrane
