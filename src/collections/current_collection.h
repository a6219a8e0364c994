// The current collection: where sheets are filed. Two settings, held as CollectionLoc and
// CollectionFileName; the collection need not exist before its first sheet.
#pragma once

#include <QString>

namespace kelvrane {

class KeyedItems;

/// Both globals from the settings.
void ReadCollectionSettings();
/// Both globals and both settings.
void StoreCollection(const QString& location, const QString& name);

/// Fills a list with a heading (key NAME), the collection's name, and the sheets that it has by now
/// (keys I0, I1, ...).
void FillCollectionList(KeyedItems& list, const QString& name);

} // namespace kelvrane
