#include "frame/help_topics.h"

#include "platform/ports.h"

namespace kelvrane {

namespace {
struct Row {
    int first, last; ///< topic numbers, both included
    const char* page;
};
// The names are those inside the help file, odd ones included.
constexpr Row pages[] = {
    {0, 0, "Chart_Setup_Screen/Chart_Setup_Main.htm"},
    {1, 1, "Chart_Setup_Screen/Chart_Setup_3D_View.htm"},
    {100, 100, "Collections/Collections.htm"},
    {101, 101, "Collections/Collection_Info_Screen/Adding_files_to_a_collection.htm"},
    {102, 102, "Collections/Collection_Location_Screen/Select_Collection_Location.htm"},
    {200, 299, "Control_Screen/Kelvrane_Control_Screen.htm"},
    {300, 300, "Database_Screen/Database_Options_Panel.htm"},
    {301, 301, "Database_Screen/Database_Views_Panels.htm"},
    {302, 302, "Database_Screen/Database_List_View.htm"},
    {303, 303, "Database_Screen/Database_Show_Find_Panel.htm"},
    {304, 304, "Database_Screen/Database_Manager-Projects.htm"},
    {305, 305, "Database_Screen/Database_Manager-Customer.htm"},
    {400, 499, "Exit/Exiting_Kelvrane.htm"},
    {500, 599, "Graph_Screen/Chart_Form.htm"},
    {600, 699, "Icon_Control/Icon_Control_Main.htm"},
    {800, 899, "Modify_ScreenModify_Form.htm"},
    {900, 900, "Options_Screen/Options_Database.htm"},
    {901, 901, "Options_Screen/Options_Spreadsheet.htm"},
    {902, 902, "Options_Screen/Options_Kelvrane.htm"},
    {903, 903, "Options_Screen/Options_Misc.htm"},
    {1000, 1000, "Spread_Sheet_Screen/SpreadSheet_Form.htm"},
    {1001, 1001, "Spread_Sheet_Screen/SS_SetupVew.htm"},
    {1200, 1299, "Collections/Viewing_Collections/Viewing_Collections.htm"},
    {1300, 1300, "Tutorial/Getting_to_Know_Kelvrane.htm"},
};
} // namespace

QString HelpPage(int topic) {
    for (const Row& row : pages)
        if (topic >= row.first && topic <= row.last)
            return QString::fromLatin1(row.page);
    return {};
}

void ShowHelpTopic(int topic) {
    ports.help->show(HelpPage(topic));
}

} // namespace kelvrane
