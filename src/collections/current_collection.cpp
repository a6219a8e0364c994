#include "collections/current_collection.h"

#include "collections/collection_file.h"
#include "frame/globals.h"
#include "frame/settings.h"
#include "platform/keyed_items.h"
#include "platform/skip_errors.h"
#include "timevalues/time_values.h"

namespace kelvrane {

namespace {

const QString locationSetting = QStringLiteral("CollectionLoc");
const QString nameSetting = QStringLiteral("CollectionFileName");

} // namespace

void ReadCollectionSettings() {
    // A text that is all digits comes with its terminator.
    CollectionLoc = StripAtNull(RegQueryValue(keys::SpreadSheetInfo, locationSetting));
    CollectionFileName = StripAtNull(RegQueryValue(keys::SpreadSheetInfo, nameSetting));
}

void StoreCollection(const QString& location, const QString& name) {
    CollectionLoc = location;
    CollectionFileName = name;
    SaveRegText(location, keys::SpreadSheetInfo, locationSetting);
    SaveRegText(name, keys::SpreadSheetInfo, nameSetting);
}

void FillCollectionList(KeyedItems& list, const QString& name) {
    QList<KeyedItem> items;
    items.append({.key = QStringLiteral("NAME"), .caption = name, .kind = ItemKind::Heading});
    SkipErrors step(QStringLiteral("FillCollectionList"));
    step([&] {
        const QStringList names = ReadCollectionHrefs(CollectionListFile(CollectionLoc, name));
        for (qsizetype index = 0; index < names.size(); ++index)
            items.append({.key = u'I' + QString::number(index), .caption = names[index]});
    });
    list.refill(items);
}

} // namespace kelvrane
