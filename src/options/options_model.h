// The options screen's pages, rows and switches as tables, and the model that the screen shows. The
// model lives with the process; LoadOptions puts it back as a newly opened screen has it.
#pragma once

#include "frame/globals.h"
#include "platform/keyed_items.h"

#include <QObject>
#include <QString>

#include <span>

namespace kelvrane {

class OptionsModel : public QObject {
    Q_OBJECT
  public:
    OptionsModel();

    KeyedItems SmartTabStrip; ///< the pages
    KeyedItems smuiSelect;    ///< Close, Help
    KeyedItems controls;      ///< what stands alone: check boxes, lists, a button; key is its name
    KeyedItems smuiAutoStartTime;      ///< HOUR, MINUTE, AMPM
    KeyedItems smuiEndDayReminderTime; ///< the same
    KeyedItems smuiSoundFile;          ///< SOUNDFILE
    KeyedItems smuiSpreadSheet;
    KeyedItems smuiDatabase; ///< DATABASELOC

    QString Page;         ///< key of the page on display
    int Width = 0;        ///< of the window, in twips
    int Height = 0;       ///< likewise
    bool Loading = false; ///< the window is being sized: its size isn't the user's

    /// Panels and page as a newly opened screen has them; lists without their choices, rows empty.
    void reset();
    /// Puts a page on display, other than by its tab.
    void turnTo(const QString& page);

  signals:
    void PageTurned(const QString& page);
};

/// The one model of the options screen.
OptionsModel& Options();

using OptionPanel = KeyedItems OptionsModel::*;
/// All of them but the pages.
std::span<const OptionPanel> OptionPanels();

struct OptionPage {
    const char* key;
    const char* caption;
    const char* frame;
    const char* image;
    int helpNumber;
};
std::span<const OptionPage> OptionPages();

struct OptionRow {
    OptionPanel panel;
    const char* key;
    const char* caption;
    ItemKind kind;
    const char* choices = ""; ///< separated by ";"
    const char* image = "";
};
std::span<const OptionRow> OptionRows();

/// A check box whose caption tells its state; it writes "On" or "Off".
struct OptionSwitch {
    const char* control;
    const char* key;
    QString Globals::*option;
    const char* on;
    const char* off;
};
std::span<const OptionSwitch> OptionSwitches();

/// A group of the page KELVRANE.
struct OptionGroup {
    const char* control; ///< its switch
    const char* heading;
    const char* description;
    int column; ///< on a wide screen
};
std::span<const OptionGroup> OptionGroups();

/// A field of such a group, usable while the switch is on.
struct OptionField {
    const char* control; ///< the switch
    const char* caption;
    OptionPanel panel;
    const char* name; ///< of the panel, or of a single control
};
std::span<const OptionField> OptionFields();

} // namespace kelvrane
