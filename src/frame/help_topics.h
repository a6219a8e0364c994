// The help map: topic numbers to pages of the help file.
#pragma once

#include <QString>

namespace kelvrane {

/// The numbers by what they are about. Ranges begin at theirs.
namespace topics {
inline constexpr int Contents = -1; ///< no page of its own
inline constexpr int ChartSetup = 0;
inline constexpr int ChartView = 1;
inline constexpr int Collections = 100;
inline constexpr int AddingToCollection = 101;
inline constexpr int CollectionLocation = 102;
inline constexpr int ControlScreen = 200;
inline constexpr int DatabaseOptions = 300;
inline constexpr int DatabaseViews = 301;
inline constexpr int DatabaseList = 302;
inline constexpr int DatabaseFind = 303;
inline constexpr int Projects = 304;
inline constexpr int Customers = 305;
inline constexpr int Exiting = 400;
inline constexpr int Chart = 500;
inline constexpr int TrayIcon = 600;
inline constexpr int ModifyEntry = 800;
inline constexpr int OptionsDatabase = 900;
inline constexpr int OptionsSpreadsheet = 901;
inline constexpr int OptionsKelvrane = 902;
inline constexpr int OptionsMisc = 903;
inline constexpr int Sheet = 1000;
inline constexpr int SheetSetup = 1001;
inline constexpr int CollectionViewer = 1200;
inline constexpr int Tutorial = 1300;
} // namespace topics

/// The page of a topic number; "" for a number without one.
QString HelpPage(int topic);

/// Opens the help file at the topic's page, or at its contents.
void ShowHelpTopic(int topic);

} // namespace kelvrane
