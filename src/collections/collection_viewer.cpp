#include "collections/collection_viewer.h"

#include "collections/collection_file.h"
#include "collections/current_collection.h"
#include "collections/sheet_check.h"
#include "collections/sheet_file_name.h"
#include "collections/sheet_printing.h"
#include "collections/viewer_model.h"
#include "frame/error_report.h"
#include "frame/globals.h"
#include "frame/help_topics.h"
#include "frame/program_folder.h"
#include "platform/ports.h"

#include <QFileInfo>
#include <QSet>

#include <array>
#include <utility>

namespace kelvrane {

namespace {

const QString missingMark = QStringLiteral(" ** Missing **");
const QString byFile = QStringLiteral("Ignore"); // of LoadMode
const QString save = QStringLiteral("SAVE");
const QString printMenu = QStringLiteral("P");
constexpr qsizetype extensionLength = 4; // ".col"

constexpr std::array<const char*, 3> modeKeys = {"DM_VIEW", "DM_EDIT", "DM_PRINT"};

void takeCurrentCollection() {
    ReadCollectionSettings();
    Viewer().ViewerLoc = CollectionLoc;
    Viewer().ViewerName = CollectionFileName;
}

void showLocation(const QString& text) {
    Viewer().smuiStatusBar.setValue(QStringLiteral("LOCATION"), text);
}

/// False when the changes are to be kept and couldn't be: the sheet must stay.
bool sheetMayGo() {
    CollectionViewer& viewer = Viewer();
    if (viewer.DisplayMode != display_modes::Edit)
        return true;
    const QString file = viewer.CurrentFile; // the screen may go behind a question
    QString tempPath;
    bool compared = false;
    if (!VerifyAgainstSSData(file, viewer.ss1.HTMLData(), tempPath, &compared))
        return compared || !viewer.ss1.canUndo() || MayLoseChanges();
    return PromptSaveSheetChanges(file, tempPath) != SaveAnswer::Failed;
}

void showNothing() {
    Viewer().CurrentFile.clear();
    Viewer().setPane(ViewerPane::txtError);
}

/// Raises what keeps the sheet from being shown.
void showSheet() {
    CollectionViewer& viewer = Viewer();
    const int mode = viewer.DisplayMode;
    if (viewer.CurrentFile.isEmpty() || !IsPlainFile(viewer.CurrentFile)) {
        showNothing();
        return;
    }
    if (mode == display_modes::View)
        viewer.setWeb(ReadCollectionSheet(viewer.CurrentFile));
    if (mode == display_modes::Edit) {
        RefuseLinks(viewer.CurrentFile);
        viewer.ss1.setHTMLURL(viewer.CurrentFile);
    }
    viewer.setPane(mode == display_modes::Edit ? ViewerPane::ss1 : ViewerPane::Web);
    ports.events->yield();
}

void fillList() {
    CollectionViewer& viewer = Viewer();
    const bool prints = viewer.DisplayMode == display_modes::Print;
    QList<KeyedItem> items;
    QSet<QString> listed; // a name may stand in the list twice; it is one sheet
    for (const QString& entry : std::as_const(viewer.CollectionFiles)) {
        if (listed.contains(entry))
            continue;
        listed.insert(entry);
        const bool missing = entry.contains(missingMark);
        items.append({.key = entry,
                      .caption = entry,
                      .kind = prints ? ItemKind::Check : ItemKind::Text,
                      .enabled = !(prints && missing),
                      .role = missing ? TextRole::Inactive : TextRole::Value});
    }
    viewer.smuiCollections.refill(items);
}

/// Missing ones stay without a tick.
void tickAll(bool ticked) {
    CollectionViewer& viewer = Viewer();
    viewer.smuiToolBar.setVisible(printMenu, true);
    QList<KeyedItem> items = viewer.smuiCollections.items();
    for (KeyedItem& item : items)
        item.ticked = ticked && item.enabled;
    viewer.smuiCollections.refill(items);
}

void printTicked() {
    CollectionViewer& viewer = Viewer();
    viewer.smuiToolBar.setVisible(printMenu, true);
    if (viewer.DisplayMode != display_modes::Print ||
        !ports.printer->choose(QStringLiteral("Collection Viewer")))
        return;
    QStringList paths;
    for (const KeyedItem& item : viewer.smuiCollections.items())
        if (item.ticked)
            paths.append(FormURL(item.key));
    PrintSheets(paths, [](const SheetContents& contents) {
        Viewer().setWeb(contents);
        ports.events->yield();
        ports.events->yield();
    });
}

void saveSheet() {
    CollectionViewer& viewer = Viewer();
    SkipErrors step = ReportingSteps(QStringLiteral("smuiToolBar_Click"));
    if (!viewer.CurrentFile.isEmpty())
        step([&] {
            RefuseLinks(viewer.CurrentFile);
            ReplaceFile(viewer.CurrentFile, SheetBytes(viewer.ss1.HTMLData()), Links::Refused);
        });
    viewer.smuiToolBar.setEnabled(save, true);
}

void closeViewer() {
    Viewer().DisplayMode = Int16(display_modes::View); // the question was asked
    ports.screens->unload(Screen::frmCollectionViewer);
}

void changeMode(int mode) {
    CollectionViewer& viewer = Viewer();
    viewer.DisplayMode = Int16(mode);
    if (mode != display_modes::Print)
        viewer.PrintSetup = false;
    RefreshDisplayMode();
    if (mode == display_modes::Edit)
        viewer.smuiToolBar.setEnabled(save, true);
    if (mode == display_modes::Print) {
        viewer.PrintSetup = true;
        viewer.smuiToolBar.setVisible(printMenu, true);
    }
}

struct Command {
    const char* key;
    void (*run)();
};
constexpr Command commands[] = {
    {"CLOSE", closeViewer},
    {"SAVE", saveSheet},
    {"DM_EDIT", [] { changeMode(display_modes::Edit); }},
    {"DM_VIEW", [] { changeMode(display_modes::View); }},
    {"DM_PRINT", [] { changeMode(display_modes::Print); }},
    {"P_SELECT", [] { tickAll(true); }},
    {"P_DESELECT", [] { tickAll(false); }},
    {"P_PRINT", printTicked},
    {"HELP", [] { ShowHelpTopic(topics::CollectionViewer); }},
};

/// The list of the collection that LoadMode names; False when there is nothing to show.
bool readCollection() {
    CollectionViewer& viewer = Viewer();
    const auto names = ReadCollectionNames(viewer.ViewerLoc, viewer.ViewerName);
    if (!names || names->isEmpty())
        return false;
    viewer.CollectionFiles = *names;
    SkipErrors step = ReportingSteps(QStringLiteral("MarkMissingFiles"));
    step(MarkMissingFiles);
    viewer.CurrentFile = FormURL(viewer.CollectionFiles.constFirst());
    return true;
}

} // namespace

void LoadNewCollections(const QString& path) {
    CollectionViewer& viewer = Viewer();
    if (path == u"Default") {
        takeCurrentCollection();
        return;
    }
    viewer.ViewerLoc.clear();
    viewer.ViewerName.clear();
    if (!path.isEmpty()) {
        QString file;
        SepPathAndFilenames(path, viewer.ViewerLoc, file);
        viewer.ViewerName = file.chopped(qMin(extensionLength, file.size()));
    }
    viewer.LoadMode = byFile;
    if (ports.screens->isLoaded(Screen::frmCollectionViewer))
        LoadCollectionViewer();
    else // whose opening loads it
        ports.screens->show(Screen::frmCollectionViewer);
}

void LoadCollectionViewer() {
    CollectionViewer& viewer = Viewer();
    viewer.reset();
    if (viewer.LoadMode.isEmpty())
        LoadNewCollections(QStringLiteral("Default"));
    const bool named = !viewer.ViewerLoc.isEmpty() || !viewer.ViewerName.isEmpty();
    if (named && !readCollection()) {
        viewer.LoadMode.clear();
        ports.screens->unload(Screen::frmCollectionViewer);
        return;
    }
    RefreshDisplayMode();
    ports.screens->show(Screen::frmCollectionViewer);
    showLocation(named ? CollectionListFile(viewer.ViewerLoc, viewer.ViewerName)
                       : QStringLiteral("Please Select a collection"));
    viewer.LoadMode.clear();
    emit viewer.Loaded();
}

void UnloadCollectionViewer() {
    const bool editing = Viewer().DisplayMode == display_modes::Edit;
    const QString sheet = editing ? Viewer().ss1.HTMLData() : QString();
    SkipErrors step = ReportingSteps(QStringLiteral("frmCollectionViewer_Unload"));
    if (!sheetMayGo())
        step([&] { TellKept(KeepUnsavedSheet(sheet)); });
    Viewer().LoadMode.clear();
    Viewer().reset();
}

void KeepViewerChanges() {
    if (Viewer().DisplayMode == display_modes::Edit && Viewer().ss1.canUndo())
        KeepUnsavedSheet(Viewer().ss1.HTMLData());
}

QString FormURL(const QString& entry) {
    if (entry.contains(missingMark))
        return {};
    return SheetPath(Viewer().ViewerLoc, Viewer().ViewerName, entry);
}

void MarkMissingFiles() {
    CollectionViewer& viewer = Viewer();
    const QString folder = CollectionFolder(viewer.ViewerLoc, viewer.ViewerName);
    const bool isLink = QFileInfo(folder).isSymLink();
    const QStringList names = isLink ? QStringList() : ports.files->filesIn(folder);
    const QSet<QString> present(names.begin(), names.end());
    for (QString& entry : viewer.CollectionFiles)
        if (!present.contains(entry))
            entry += missingMark;
    if (isLink) // its sheets count as missing, and the user is told why
        RefuseLinks(SheetPath(viewer.ViewerLoc, viewer.ViewerName, QStringLiteral("any")));
}

void RefreshDisplayMode() {
    CollectionViewer& viewer = Viewer();
    SkipErrors step = ReportingSteps(QStringLiteral("RefreshDisplayMode"));
    viewer.setBusy(true);
    for (int mode = 0; mode < int(modeKeys.size()); ++mode)
        viewer.smuiToolBar.setTicked(QString::fromLatin1(modeKeys[size_t(mode)]),
                                     viewer.DisplayMode == mode);
    // A sheet that can't be loaded must not be saved over by what stands in the editor.
    if (!step(showSheet))
        showNothing();
    if (!viewer.PrintSetup)
        step(fillList);
    viewer.setBusy(false);
}

void smuiCollections_Click(const QString& entry) {
    CollectionViewer& viewer = Viewer();
    if (viewer.isBusy() || !sheetMayGo())
        return;
    const QString url = FormURL(entry);
    if (url.isEmpty()) {
        viewer.setPane(ViewerPane::txtError);
        return;
    }
    viewer.CurrentFile = url;
    RefreshDisplayMode();
}

void smuiCollections_Toggle(const QString& entry) {
    KeyedItems& list = Viewer().smuiCollections;
    if (list.item(entry).kind == ItemKind::Check)
        list.setTicked(entry, !list.item(entry).ticked);
}

void ViewerToolBar_Click(const QString& key) {
    CollectionViewer& viewer = Viewer();
    if (viewer.isBusy() || (key != save && !sheetMayGo()))
        return;
    viewer.setBusy(true);
    viewer.smuiToolBar.setEnabled(save, false);
    viewer.smuiToolBar.setVisible(printMenu, false);
    SkipErrors step = ReportingSteps(QStringLiteral("smuiToolBar_Click"));
    for (const Command& command : commands)
        if (key == QLatin1String(command.key))
            step(command.run);
    viewer.setBusy(false);
}

void ViewerStatusBar_Click() {
    const auto chosen =
        ports.dialogs->openFile({.title = QStringLiteral("Select a collection"),
                                 .folder = AppPath(),
                                 .filter = QStringLiteral("Kelvrane Colleciton Files |*.col"),
                                 .defaultExtension = QStringLiteral(".col")});
    if (chosen)
        TakeCollectionFile(*chosen);
}

void TakeCollectionFile(const QString& path) {
    if (!Viewer().isBusy() && path.right(extensionLength).toLower() == u".col" && sheetMayGo())
        LoadNewCollections(path);
}

void ViewerSheetHelp() {
    ShowHelpTopic(topics::Sheet);
}

void ViewerSheetAbout() {
    ports.screens->show(Screen::frmAbout);
}

void WireCollectionViewer() {
    static bool wired = false;
    if (std::exchange(wired, true))
        return;
    CollectionViewer& viewer = Viewer();
    QObject::connect(&viewer.smuiToolBar, &KeyedItems::Clicked, &viewer, [](const QString& key) {
        Guarded(QStringLiteral("smuiToolBar_Click"), [&] { ViewerToolBar_Click(key); });
    });
    QObject::connect(
        &viewer.smuiCollections, &KeyedItems::Selected, &viewer, [](const QString& entry) {
            Guarded(QStringLiteral("smuiCollections_Click"), [&] { smuiCollections_Click(entry); });
        });
    QObject::connect(&viewer.smuiCollections, &KeyedItems::Clicked, &viewer,
                     [](const QString& entry) {
                         Guarded(QStringLiteral("smuiCollections_Click"),
                                 [&] { smuiCollections_Toggle(entry); });
                     });
    QObject::connect(&viewer.smuiStatusBar, &KeyedItems::Clicked, &viewer, [](const QString&) {
        Guarded(QStringLiteral("smuiStatusBar_Click"), ViewerStatusBar_Click);
    });
}

} // namespace kelvrane
