#include "records/database_manager.h"

#include "frame/error_report.h"
#include "frame/help_topics.h"
#include "frame/settings.h"
#include "frame/trace.h"
#include "platform/ports.h"
#include "records/customer_record.h"
#include "records/list_fill.h"
#include "records/manager_model.h"
#include "records/project_record.h"
#include "records/record_panel.h"
#include "records/record_search.h"
#include "records/record_state.h"
#include "records/record_tables.h"
#include "records/select_item.h"
#include "records/shown_record.h"

#include <QScopeGuard>

#include <optional>
#include <utility>

namespace kelvrane {

namespace {

/// What one opening of the screen holds.
struct Session {
    bool open = false;
    int number = 0; ///< goes up with each opening and closing
    const OpenTable* projects = nullptr;
    const OpenTable* customers = nullptr;
};
Session session;

ManagerState& state() {
    return Manager().state;
}
bool onCustomers() {
    return CurrentTable == current_table::Customers;
}

/// While it lives, a command of the screen runs.
class Command {
  public:
    Command() { state().InCommand = true; }
    ~Command() {
        if (m_isOutermost)
            state().InCommand = false;
    }
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

  private:
    bool m_isOutermost = !state().InCommand;
};

void single(int topic) {
    state().HelpTopic = topic;
    state().ViewMode = QStringLiteral("Single");
    ShowList(false);
    EnableStepping(true);
}

void tick(const char* key, const char* released) {
    Manager().smuiPanel0.setTicked(QString::fromLatin1(key), true);
    Manager().smuiPanel0.setTicked(QString::fromLatin1(released), false);
}

void showFirstProject(bool editable) {
    if (ProjectRecords().isEmpty()) {
        ShowNoProjects();
        return;
    }
    ProjectRecords().moveFirst();
    RedrawProject(editable);
}

void toSingleView() {
    state().Switching = true;
    const auto done = qScopeGuard([] { state().Switching = false; });
    tick("SINGLE_VIEW", "LIST_VIEW");
    // The row chosen in the list, or the first project after a fill.
    RedrawProject(state().InManager);
    single(topics::DatabaseList);
    Manager().layOut();
}

/// False when the screen went meanwhile.
bool fillList() {
    const int number = session.number;
    const auto stillThere = [number] { return session.open && session.number == number; };
    state().Switching = true;
    state().SelectedIndex = 0;
    state().Loading = true;
    // A fill whose screen went leaves the flags to the screen that may have come since.
    const auto done = qScopeGuard([&] {
        if (stillThere())
            state().Loading = state().Switching = false;
    });
    Manager().layOut();
    AddDataToList(ProjectRecords(), stillThere);
    return stillThere();
}

void showList() {
    ShowList(true);
    EnableStepping(false);
    Manager().layOut();
}

void toListView() {
    state().HelpTopic = topics::DatabaseList;
    state().ViewMode = QStringLiteral("List");
    tick("LIST_VIEW", "SINGLE_VIEW");
    if (fillList())
        showList();
}

/// Back from the manager: its changes are in the list, sorted as before, and the record that was
/// shown there is the one chosen.
bool refillList() {
    ProjectList& list = Manager().ListView1;
    const QString shown = CurrentProjectKey();
    const int column = list.sortColumn();
    const bool descending = list.sortedDescending();
    if (!fillList())
        return false;
    if (column >= 0)
        list.sortBy(column, descending);
    ChooseListRow(list.rowOfKey(shown));
    return true;
}

void toggleFindPanel() {
    state().HelpTopic = topics::DatabaseFind;
    if (!state().FindShown)
        Restart_Search();
    state().FindShown = !state().FindShown;
    Manager().smuiPanel0.setTicked(QStringLiteral("FIND"), state().FindShown);
    Manager().layOut();
}

void selectCurrent() {
    ItemSelected = true;
    SelectItem();
}

/// True when a refused row keeps the record panel as it is.
bool saveRefused() {
    EntryStatus = onCustomers() ? SaveNewCustomerProject() : SaveNewProject();
    return EntryStatus == status::RecordInvalid;
}

void editCommand(const QString& key) {
    const bool adds = key == u"ADD_NEW" || key == u"ADD_NEW_CUSTOMER";
    if (adds && !MayLeaveRecord())
        return;
    if (adds)
        AddNewRecord(key == u"ADD_NEW" ? 0 : 1);
    else if (key == u"SAVE" && saveRefused())
        return;
    else if (key == u"UPDATE")
        onCustomers() ? SaveNewCustomerProject() : SaveNewProject();
    else if (key == u"CANCEL")
        onCustomers() ? CancelCustomerEntry() : CancelProjectEntry();
    else if (key == u"DELETE")
        onCustomers() ? DeleteCustomer() : DeleteProject();
    ShowList(false);
    if (!adds)
        EnableStepping(true);
    Manager().layOut();
}

struct ViewCommand {
    const char* key;
    void (*run)();
};
constexpr ViewCommand viewCommands[] = {
    {"SINGLE_VIEW", toSingleView},
    {"LIST_VIEW", toListView},
    {"SELECT", selectCurrent},
    {"FIND", toggleFindPanel},
};

/// A step of one record on the table that is up. What is saved on the way keeps the record.
void stepRecord(bool forward) {
    const bool customers = onCustomers() && state().InManager;
    const auto records = [customers]() -> Recordset& {
        return customers ? CustomerRecords() : ProjectRecords();
    };
    const int by = forward ? 1 : -1;
    if (records().isEmpty() || records().position() == (forward ? records().count() : 1))
        return;
    const int number = session.number;
    const std::optional<Int16> saved = customers ? CheckCustomerChanged() : CheckProjectChanged();
    if (saved.value_or(0) != 0 || session.number != number) // the screen may go behind the question
        return;
    if (customers) {
        CustomerPosition = records().position() + by;
        DisplayCustomer();
        return;
    }
    forward ? records().moveNext() : records().movePrevious();
    // One beyond the record on display; a cancel goes there, and that is wanted.
    ProjectPosition = records().position() + by;
    RedrawProject(state().InManager);
}

void runFind() {
    const Command find;
    Find();
}

/// Binds a signal to a routine, with the report of its errors under a name.
template <typename Signal, typename Routine>
void bind(KeyedItems& items, Signal signal, const char* name, Routine routine) {
    QObject::connect(&items, signal, &Manager(), [name, routine](const auto&... given) {
        Guarded(QString::fromLatin1(name), [&] { routine(given...); });
    });
}

/// The screen goes in any case. A box would wait where nobody may be there, and hold up all that is
/// to be saved after it.
void askBeforeUnload() {
    if (!ReportsAreQuiet())
        MayLeaveRecord();
    else if (RecordIsEdited())
        ports.tray->notify(QStringLiteral("A record was not saved"),
                           QStringLiteral("What was typed in the Database Manager is lost: the "
                                          "day was saved and its screens were closed."));
}

} // namespace

void OpenDataBase() {
    if (session.open)
        return;
    LogStep(QStringLiteral("Opening Project Database"));
    SkipErrors step = ReportingSteps(QStringLiteral("frmDataBase_Load"));
    session.open = true;
    ++session.number;
    Manager().reset();
    RecordPanel().clear();
    step([] {
        OpenProjectTable(QStringLiteral("Optimistic"));
        session.projects = ProjectTable.get();
    });
    step([] {
        OpenCustomerTable(QStringLiteral("Optimistic"));
        session.customers = CustomerTable.get();
    });
    Manager().smuiFind.setChoices(QStringLiteral("FIELDS"), {QStringLiteral("All")});
    Manager().smuiFind.setValue(QStringLiteral("FIELDS"), QStringLiteral("All"));
    FillCombo(Manager().smuiPanel1, QStringLiteral("TABLE"), QStringLiteral("Projects;Customer"));
    Manager().smuiPanel1.setValue(QStringLiteral("TABLE"), QStringLiteral("Projects"));
    CurrentTable = current_table::Projects;
    if (session.projects) {
        step([] { showFirstProject(false); });
        step([] { CollectFieldNames(); });
    } else {
        ShowNoProjects();
    }
    ItemSelected = false;
    state().ViewMode = QStringLiteral("Single");
    Manager().layOut();
}

void UnloadDataBase() {
    if (!session.open)
        return;
    ports.screens->unload(Screen::frmBrowseForCust); // it works on this screen's tables
    if (!state().InCommand) { // under a box of a command the answer could change nothing
        const Command unload;
        const int number = session.number;
        const bool wasLoaded = ports.screens->isLoaded(Screen::frmDataBase);
        askBeforeUnload();
        const bool cameAgain = !wasLoaded && ports.screens->isLoaded(Screen::frmDataBase);
        if (session.number != number || cameAgain) // or it went, behind the question
            return;
    }
    const Session closing = std::exchange(session, {.number = session.number + 1});
    SkipErrors step = ReportingSteps(QStringLiteral("frmDataBase_Unload"));
    if (!ItemSelected)
        step([] { UndoSelection(); });
    CloseProjectTable(closing.projects);
    CloseCustomerTable(closing.customers);
    Manager().reset();
    RecordPanel().clear();
}

void RequestClose() {
    if (state().Loading) {
        MsgBox(QStringLiteral("Can't close while loading database"),
               QStringLiteral("Can't Close screen"));
        return;
    }
    const Command close;
    if (MayLeaveRecord())
        ports.screens->unload(Screen::frmDataBase);
}

void OptionsClick(const QString& key) {
    if (state().Loading)
        return;
    SkipErrors step = ReportingSteps(QStringLiteral("smuiOptions_Click"));
    const bool toManager = key == u"DB Manager";
    // The tab that is up would only draw the record anew, without what was typed.
    if (toManager && state().InManager)
        return;
    const Command tab;
    const int number = session.number;
    if (!MayLeaveRecord()) {
        Manager().layOut(); // the strip goes back
        return;
    }
    if (session.number != number)
        return;
    if (toManager) {
        state().InManager = true;
        ShowList(false);
        if (onCustomers()) {
            step([] { DisplayCustomer(); });
            SetEntryButtons(false, true);
        } else {
            step([] { RedrawProject(true); });
            state().HelpTopic = topics::Projects;
        }
        EnableStepping(true);
    } else {
        const bool wasInManager = std::exchange(state().InManager, false);
        const bool list = state().ViewMode != u"Single";
        if (list && wasInManager && !step.condition(refillList) && session.number != number)
            return;
        step([] { RedrawProject(false); });
        state().HelpTopic = list ? topics::DatabaseList : topics::DatabaseViews;
        ShowList(list);
        EnableStepping(!list);
        if (list && wasInManager)
            Manager().ListView1.wantRow(state().SelectedIndex);
    }
    if (key == u"OPTIONS")
        state().HelpTopic = topics::DatabaseOptions;
    Manager().layOut();
}

void TableChange(const QString& value) {
    SkipErrors step = ReportingSteps(QStringLiteral("smuiPanel_Change"));
    const Command table;
    const int number = session.number;
    if (!MayLeaveRecord()) {
        if (session.number == number)
            Manager().smuiPanel1.setValue(QStringLiteral("TABLE"),
                                          onCustomers() ? QStringLiteral("Customer")
                                                        : QStringLiteral("Projects"));
        return;
    }
    const bool customers = value != u"Projects";
    state().HelpTopic = customers ? topics::Customers : topics::Projects;
    CurrentTable = customers ? current_table::Customers : current_table::Projects;
    SetEntryButtons(false, customers);
    if (!customers) {
        step([] { showFirstProject(true); });
        return;
    }
    step([] {
        if (CustomerRecords().isEmpty())
            return;
        CustomerRecords().moveFirst();
        CustomerPosition = 1;
    });
    DisplayCustomer();
}

void ManagerClick(int panel, const QString& key) {
    if (state().Loading || state().Switching || key == u"TABLE")
        return;
    SkipErrors step = ReportingSteps(QStringLiteral("smuiPanel_Click"));
    const Command command;
    Manager().setBusy(true);
    const auto done = qScopeGuard([] { Manager().setBusy(false); });
    if (panel == 1) {
        state().HelpTopic = topics::Projects;
        step([&] { editCommand(key); });
        return;
    }
    state().HelpTopic = topics::DatabaseOptions;
    for (const ViewCommand& view : viewCommands)
        if (key == QLatin1String(view.key))
            step([&] { view.run(); });
}

void ToolBarClick(const QString& key) {
    if (key == u"CLOSE")
        RequestClose();
    else if (key == u"HELP")
        ShowHelpTopic(state().HelpTopic);
}

void ButtonClick(const QString& key) {
    if (key == u"CmdUp")
        CmdUp();
    else if (key == u"cmdDown")
        CmdDown();
    else if (key == u"cmdFind")
        runFind();
    else if (key == u"ImgClose")
        CloseFindPanel();
}

void BrowseClick(const QString& key) {
    if (key != u"CUSTID_SHOW")
        return;
    if (CustomerRecords().isEmpty())
        MsgBox(QStringLiteral("Please add a customer to the customer database before assigning a "
                              "customer ID"),
               QStringLiteral("Empty Database"), BoxIcon::Exclamation);
    else
        ports.screens->show(Screen::frmBrowseForCust);
}

void CmdUp() {
    SkipErrors step = ReportingSteps(QStringLiteral("CmdUp"));
    const Command up;
    step([] { stepRecord(true); });
}

void CmdDown() {
    SkipErrors step = ReportingSteps(QStringLiteral("CmdDown"));
    const Command down;
    step([] { stepRecord(false); });
}

void CloseFindPanel() {
    state().FindShown = false;
    Manager().smuiPanel0.setTicked(QStringLiteral("FIND"), false);
    Manager().layOut();
}

void ListClick(int row) {
    if (!state().Loading)
        ChooseListRow(row);
}

void ListDoubleClick() {
    if (!state().Loading)
        selectCurrent();
}

void WireDataBase() {
    static bool wired = false;
    if (std::exchange(wired, true))
        return;
    ManagerModel& manager = Manager();
    bind(manager.smuiToolBar, &KeyedItems::Clicked, "smuiToolBar_Click", ToolBarClick);
    bind(manager.smuiOptions, &KeyedItems::Clicked, "smuiOptions_Click", OptionsClick);
    bind(manager.smuiPanel0, &KeyedItems::Clicked, "smuiPanel_Click",
         [](const QString& key) { ManagerClick(0, key); });
    bind(manager.smuiPanel1, &KeyedItems::Clicked, "smuiPanel_Click",
         [](const QString& key) { ManagerClick(1, key); });
    bind(manager.smuiPanel1, &KeyedItems::Edited, "smuiPanel_Change",
         [](const QString& key, const QString& value) {
             if (key == u"TABLE")
                 TableChange(value);
         });
    bind(manager.smuiFind, &KeyedItems::Chosen, "smuiFind_Change",
         [](const QString&, int place, const QString&) { FindFieldChosen(place); });
    bind(manager.smuiFind, &KeyedItems::Edited, "smuiFind_Change", FindChange);
    bind(manager.smuiFind, &KeyedItems::Clicked, "smuiFind_MouseDown", FindClick);
    bind(manager.buttons, &KeyedItems::Clicked, "ButtonClick", ButtonClick);
    bind(RecordPanel(), &KeyedItems::Edited, "smuiDataBase_Change", MarkInactive);
    bind(RecordPanel(), &KeyedItems::ButtonPressed, "smuiDataBase_Click", BrowseClick);
}

} // namespace kelvrane
