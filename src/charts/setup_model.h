// What the chart setup shows: its tabs, the families and types of charts, buttons and title field.
// The chart itself, its type and its view are the chart screen's.
#pragma once

#include "platform/keyed_items.h"

#include <QObject>

namespace kelvrane {

namespace setup_tabs {
inline const QString Type = QStringLiteral("TYPE");
inline const QString View3D = QStringLiteral("VIEW3D");
inline const QString BorderFill = QStringLiteral("BORDERFILL");
} // namespace setup_tabs

class SetupModel : public QObject {
    Q_OBJECT
  public:
    SetupModel();

    KeyedItems smuiToolBar;     ///< CLOSE, HELP
    KeyedItems SSTab1;          ///< one of setup_tabs:: each
    KeyedItems smuiChartType;   ///< Column, Bar, Pie; the one on display is ticked
    KeyedItems smuiAvailCharts; ///< the family's types, keyed by description; the chosen one ticked
    KeyedItems controls;        ///< cmdAddLegend, cmdAddTitle, txtTitle, cmdRestoreDefaults

    bool LegendShown = false;
    bool TitleShown = false;
    QString Tab; ///< the one on display

    /// Buttons and field as the two booleans want them.
    void showLegendAndTitle();

    /// As a newly opened screen has it.
    void reset();

  signals:
    void SlidersMoved();     ///< the view in the chart screen's settings is another one
    void TypePageWanted();   ///< the page on display can't be used any more
    void TitleFocusWanted(); ///< the title was added and wants its text
};

/// The one setup; it lives with the process.
SetupModel& ChartSetup();

} // namespace kelvrane
