// What the collection viewer shows: the list of sheets, the tool bar, and the sheet on display.
#pragma once

#include "platform/int16.h"
#include "platform/keyed_items.h"
#include "worksheet/sheet_contents.h"
#include "worksheet/spreadsheet.h"

#include <QObject>
#include <QString>
#include <QStringList>

namespace kelvrane {

enum class ViewerPane {
    Web,      ///< the sheet for reading
    ss1,      ///< the sheet in the editor
    txtError, ///< "File not found"
};

namespace display_modes {
inline constexpr int View = 0;
inline constexpr int Edit = 1;
inline constexpr int Print = 2;
} // namespace display_modes

class CollectionViewer : public QObject {
    Q_OBJECT
  public:
    CollectionViewer();

    KeyedItems smuiCollections; ///< a row for each sheet, keyed by its entry
    KeyedItems smuiToolBar;
    KeyedItems smuiStatusBar; ///< LOCATION
    Spreadsheet ss1;

    QStringList CollectionFiles;   ///< the entries of the list; missing ones marked
    Int16 DisplayMode;             ///< one of display_modes::
    QString CurrentFile;           ///< path of the sheet on display; "" for none
    bool PrintSetup = false;       ///< the list has its tick boxes
    QString ViewerLoc, ViewerName; ///< the collection on display; may not be the current one
    QString LoadMode; ///< "Ignore" when a file named the collection, else "": the current one

    ViewerPane pane() const { return m_pane; }
    void setPane(ViewerPane pane);
    /// The sheet for reading.
    const SheetContents& web() const { return m_web; }
    void setWeb(const SheetContents& contents);
    /// A command is being carried out: a further one is ignored.
    bool isBusy() const { return m_busy; }
    void setBusy(bool busy);

    /// As a newly opened screen has it. The collection that LoadMode asked for stays.
    void reset();

  signals:
    void PaneChanged();
    void WebChanged();
    void BusyChanged(bool busy);
    void Loaded(); ///< another collection is on display

  private:
    ViewerPane m_pane = ViewerPane::txtError;
    SheetContents m_web;
    bool m_busy = false;
};

/// The one viewer; it lives with the process.
CollectionViewer& Viewer();

} // namespace kelvrane
