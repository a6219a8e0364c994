#include "options/sheet_options.h"

#include "collections/collection_location.h"
#include "frame/program_folder.h"
#include "frame/settings.h"
#include "options/options_model.h"
#include "options/stored_option.h"
#include "platform/ports.h"
#include "platform/texts.h"

namespace kelvrane {

namespace {

constexpr int daysInWeek = 7;
const QString incrementRow = QStringLiteral("Time Increment");
const QString weekRow = QStringLiteral("WEEKSTARTDAY");
const QString daysRow = QStringLiteral("CALCNUMDAYS");
const QString templateRow = QStringLiteral("TIMESHEETLOC");
const QString locationRow = QStringLiteral("COLLOC");
const QString collectionRow = QStringLiteral("COLFILENAME");

QString stored(const char* name) {
    return StoredOption(name, keys::SpreadSheetInfo);
}

/// Sunday is day 1; the list of names begins with Monday.
int dayOfPlace(qsizetype place) {
    return int((place + 1) % daysInWeek) + 1;
}

void showCollection(const QString& location, const QString& name) {
    KeyedItems& panel = Options().smuiSpreadSheet;
    panel.setValue(locationRow, location);
    panel.setValue(collectionRow,
                   name.trimmed().isEmpty() ? QString() : name + QStringLiteral(".col"));
}

/// Once a process. While the sheet screen is open, it is the one that shows the choice.
void followCollection() {
    static const auto connection =
        QObject::connect(&CollectionPlace(), &CollectionLocation::Chosen, &Options(),
                         [](const QString& location, const QString& name) {
                             if (!SpreadsheetOpen)
                                 showCollection(location, name);
                         });
    Q_UNUSED(connection)
}

/// The name of a stored day number; anything else as it is.
QString weekStartText(const QString& day) {
    const QStringList names = Options().smuiSpreadSheet.item(weekRow).choices;
    for (qsizetype place = 0; place < names.size(); ++place)
        if (day == QString::number(dayOfPlace(place)))
            return names[place];
    return day;
}

} // namespace

void GetSpreadSheetOptions() {
    KeyedItems& panel = Options().smuiSpreadSheet;
    panel.setValue(incrementRow, stored("TimeIncrements"));
    panel.setValue(weekRow, weekStartText(stored("StartOfWeek")));
    panel.setValue(daysRow, stored("CalcNumDays"));
    panel.setValue(templateRow, stored("SS_Template"));
    showCollection(stored("CollectionLoc"), stored("CollectionFileName"));
    followCollection();
}

void TakeTimeIncrement(const QString& increment) {
    TimeIncrements = increment;
    SaveRegText(increment, keys::SpreadSheetInfo, QStringLiteral("TimeIncrements"));
}

void TakeWeekStart(const QString& name) {
    const qsizetype place = Options().smuiSpreadSheet.item(weekRow).choices.indexOf(name);
    if (place < 0)
        return;
    const int day = dayOfPlace(place);
    StartOfWeek = QString::number(day);
    SaveRegNumber(day, keys::SpreadSheetInfo, QStringLiteral("StartOfWeek"));
}

void TakeNumDays(const QString& text) {
    SkipErrors step(QStringLiteral("TakeNumDays"));
    step([&] {
        if (const Int16 days = ToInt16(text); days >= 0)
            SaveRegNumber(days, keys::SpreadSheetInfo, QStringLiteral("CalcNumDays"));
    });
    Options().smuiSpreadSheet.setValue(daysRow, stored("CalcNumDays"));
}

void BrowseTemplate() {
    const auto chosen =
        ports.dialogs->openFile({.title = QStringLiteral("Invoice/TimeSheet Template"),
                                 .folder = InAppPath(QString::fromLatin1(files::DataFolder)),
                                 .filter = QStringLiteral("HTML Files ( *.htm ) |*.htm"),
                                 .defaultExtension = QStringLiteral(".htm")});
    if (!chosen)
        return;
    SaveRegText(*chosen, keys::SpreadSheetInfo, QStringLiteral("SS_Template"));
    Options().smuiSpreadSheet.setValue(templateRow, *chosen);
}

void BrowseCollection() {
    ports.screens->show(Screen::frmCollectionLoc);
}

} // namespace kelvrane
