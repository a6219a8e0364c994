// The procedures of the chart setup. Everything acts on the chart at once; what is chosen is kept
// in the chart screen's settings, which that screen stores when it closes.
#pragma once

#include <QString>

namespace kelvrane {

/// Opens on the family of the current type, without legend and title as far as the buttons know:
/// what the chart shows from before stays.
void LoadGraphControl();

/// Applies the stored view to the chart and moves the five sliders to it.
void Set3DValues();
/// Makes it the type of the chart, now and when the chart is rebuilt. A description with "3D" in it
/// enables the page of the view and applies the view.
void ChooseChart(qint16 type, const QString& description);

/// Shows the types of a family: "Column", "Bar" or "Pie". The chart stays.
void ChooseFamily(const QString& key);
/// Shows the family of a description and its types.
void ShowFamilyOf(const QString& description);

void cmdAddLegend_Click();
void cmdAddTitle_Click();
/// An empty text becomes a title of one blank.
void txtTitle_Change(const QString& text);
/// One of viewSliders by name; the value is brought into its range.
void SliderChange(const QString& name, int value);
void cmdRestoreDefaults_Click();

/// A tab came on top.
void SSTab1_Click(const QString& key);
/// CLOSE, HELP.
void GraphControlToolBar_Click(const QString& key);

/// The topic of the tab on display.
int ChartSetupHelpTopic();

/// Connects the models to the routines, once a process.
void WireGraphControl();

} // namespace kelvrane
