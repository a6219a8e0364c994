// The current collection with three sheets that can be read, of which the second is missing, and
// screens that load and unload the viewer as the real ones do.
#pragma once

#include "collections/collection_fixture.h"
#include "collections/collection_viewer.h"
#include "collections/viewer_model.h"

namespace kelvrane::testing {

class ViewerTest : public CollectionTest {
  protected:
    ViewerTest() {
        Viewer().LoadMode.clear();
        Viewer().reset();
        WireCollectionViewer();
        screens.onUnload = [](Screen screen) {
            if (screen == Screen::frmCollectionViewer)
                UnloadCollectionViewer();
        };
        fileSheets({"Acme.htm", "Bold.htm", "Crisp"});
        fileSheet("Acme.htm", "Acme");
        fileSheet("Crisp", "Crisp");
        disk.remove(path("Week_data/Bold.htm"), true);
    }
    ~ViewerTest() override {
        screens.onUnload = {};
        Viewer().LoadMode.clear();
        Viewer().reset();
    }

    void fileSheet(const QString& name, const QString& text) const {
        Spreadsheet ss1;
        ss1.Range("A1").setValue(text);
        writeFile("Week_data/" + name, SheetBytes(ss1.HTMLData()));
    }
    /// Cell A1 of a filed sheet.
    QString filed(const QString& name) const {
        Spreadsheet ss1;
        ss1.setHTMLURL(path("Week_data/" + name));
        return ss1.Range("A1").Value();
    }
    void open() {
        screens.onLoad = [](Screen screen) {
            if (screen == Screen::frmCollectionViewer)
                LoadCollectionViewer();
        };
        screens.show(Screen::frmCollectionViewer);
    }
    static QString shown() {
        Worksheet sheet;
        sheet.setContents(Viewer().web());
        return sheet.text({0, 0});
    }
    static void type(const QString& text) {
        Viewer().ss1.edit([&](Worksheet& sheet) { sheet.enter({0, 0}, text); });
    }
    static void click(const char* key) { Viewer().smuiToolBar.click(QString::fromLatin1(key)); }
    static void choose(const char* entry) {
        Viewer().smuiCollections.select(QString::fromLatin1(entry));
    }
    static bool enabled(const char* key) {
        return Viewer().smuiToolBar.item(QString::fromLatin1(key)).enabled;
    }
    static QString location() { return Viewer().smuiStatusBar.value("LOCATION"); }

    static constexpr char missing[] = "Bold.htm ** Missing **";
    static constexpr char question[] = "Changes were found between this file and the saved file.  "
                                       "Do you wish to save changes?";
};

} // namespace kelvrane::testing
