// Filing a sheet in the current collection.
//
//     QString name = "Acme";
//     AddSheetToCollection(name, ss1.HTMLData(), statusBar);   // Acme.htm
#pragma once

#include <QString>

namespace kelvrane {

class KeyedItems;

/// Files the sheet's text under the name, which comes without its extension and becomes the name
/// that the sheet got; characters that no file name has become _. The collection comes into being
/// with its first sheet. When the name is listed already, in any case, frmFileExists asks.
/// The item PROGRESS of the panel shows the steps, where there is one.
///
/// False when the sheet couldn't be filed or listed; the user was told. Before the sheet is safe on
/// disk nothing of the collection changes, and each file is replaced as a whole.
bool AddSheetToCollection(QString& name, const QString& sheetHtml, KeyedItems& progress);

} // namespace kelvrane
