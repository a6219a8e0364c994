#include "collections/sheet_name.h"

#include "collections/collection_builder.h"
#include "collections/current_collection.h"
#include "collections/file_clash.h"
#include "frame/error_report.h"
#include "frame/globals.h"
#include "platform/ports.h"
#include "timevalues/time_values.h"

#include <QScopeGuard>

#include <utility>

namespace kelvrane {

namespace {

const QString nameField = QStringLiteral("txtFileName");

void fileSheet() {
    SheetNaming& naming = Naming();
    QString name = StripAtNull(naming.controls.value(nameField));
    if (name.trimmed().isEmpty()) {
        MsgBox(QStringLiteral("Please select a valid filename."), {}, BoxIcon::Exclamation);
        return;
    }
    // Whoever asked waits until the dialog is gone, also when the sheet can't be had.
    const auto done = qScopeGuard([] { ports.screens->unload(Screen::frmSelFilename); });
    emit naming.HideWanted();
    if (naming.sheetHtml && naming.progress)
        AddSheetToCollection(name, naming.sheetHtml(), *naming.progress);
}

} // namespace

SheetNaming::SheetNaming() {
    controls.append(
        {.key = QStringLiteral("lblPrompt"),
         .caption = QStringLiteral("Please select a filename to add to the collection:")});
    controls.append(
        {.key = nameField, .caption = QStringLiteral("Filename"), .kind = ItemKind::Edit});
    controls.append({.key = QStringLiteral("OKButton"),
                     .caption = QStringLiteral("OK"),
                     .kind = ItemKind::Button});
    controls.append({.key = QStringLiteral("CancelButton"),
                     .caption = QStringLiteral("Cancel"),
                     .kind = ItemKind::Button});
}

SheetNaming& Naming() {
    static SheetNaming naming;
    return naming;
}

QString SheetNameOfDate(const QString& startDate) {
    return QString(startDate).replace(u'/', u'_');
}

void AskSheetName(const QString& defaultName, const std::function<QString()>& sheetHtml,
                  KeyedItems& progress) {
    SheetNaming& naming = Naming();
    naming.sheetHtml = sheetHtml;
    naming.progress = &progress;
    naming.controls.setValue(nameField, defaultName);
    Clash().DefaultName = defaultName;
    ports.screens->show(Screen::frmSelFilename);
    ports.events->waitUntil([] { return !ports.screens->isLoaded(Screen::frmSelFilename); });
    naming.sheetHtml = {};
    naming.progress = nullptr;
}

void LoadSelFilename() {
    CollectionFileName = StripAtNull(CollectionFileName);
    FillCollectionList(Naming().smuiXMLFiles, CollectionFileName);
}

void SelFilename_Click(const QString& button) {
    if (button == u"OKButton")
        fileSheet();
    else if (button == u"CancelButton")
        ports.screens->unload(Screen::frmSelFilename);
}

void WireSelFilename() {
    static bool wired = false;
    if (std::exchange(wired, true))
        return;
    QObject::connect(
        &Naming().controls, &KeyedItems::Clicked, &Naming(), [](const QString& button) {
            Guarded(QStringLiteral("frmSelFilename_Click"), [&] { SelFilename_Click(button); });
        });
}

} // namespace kelvrane
