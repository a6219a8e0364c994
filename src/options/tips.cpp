#include "options/tips.h"

#include "frame/error_report.h"
#include "frame/globals.h"
#include "frame/settings.h"
#include "platform/error.h"
#include "platform/ports.h"

#include <iterator>

namespace kelvrane {

namespace {

const QString setting = QStringLiteral("Show Tips at Startup");
const QString tipText = QStringLiteral("lblTipText");
const QString atStartup = QStringLiteral("chkLoadTipsAtStartup");

// The words stand as they were given.
constexpr const char* Tips[] = {
    "To change the number of recent projects, click on on the Kelvrane icon in the sytem tray and "
    "select options, Then select Number of Recent File lists under the Kelvrane screen.",
    "Use the break button to pause billable time.",
    "Use the stop button to stop timing a project.",
    "Use the intra-day reminders to remind you to fill in Kelvrane.",
    "Turn on the View Week List from the Kelvrane control panel to view the weeks progress.",
    "In the break down view, you can modify a project's information by left clicking on the "
    "desired project and selecting Modify.",
    "In the break down view, you can delete a project's information by left clicking on the "
    "desired project and selecting Delete.",
    "Use the quit and save button to retire Kelvrane to the system tray and save the day's "
    "information.",
};

/// "Yes" or "No" here; the options write "On" or "Off" to the same value.
void switchTips() {
    const bool show = !Tip().controls.item(atStartup).ticked;
    Tip().controls.setTicked(atStartup, show);
    LastFileStatus = RegSetKeyValue(keys::Main, setting, QString::fromLatin1(show ? "Yes" : "No"));
}

void clicked(const QString& key) {
    if (key == QLatin1String("cmdNextTip"))
        DoNextTip();
    else if (key == QLatin1String("cmdOK"))
        ports.screens->unload(Screen::frmTip);
    else if (key == atStartup)
        switchTips();
}

} // namespace

TipState::TipState()
    : TipCount(std::size(Tips)),
      controls({{.key = QStringLiteral("Label1"), .caption = QStringLiteral("Did you know...")},
                {.key = tipText},
                {.key = atStartup,
                 .caption = QStringLiteral("&Show Tips at Startup"),
                 .kind = ItemKind::Check},
                {.key = QStringLiteral("cmdNextTip"),
                 .caption = QStringLiteral("&Next Tip"),
                 .kind = ItemKind::Button},
                {.key = QStringLiteral("cmdOK"),
                 .caption = QStringLiteral("OK"),
                 .kind = ItemKind::Button}}) {
    QObject::connect(&controls, &KeyedItems::Clicked, &controls, [](const QString& key) {
        Guarded(QStringLiteral("frmTip_Click"), [&] { clicked(key); });
    });
}

TipState& Tip() {
    static TipState state;
    return state;
}

bool LoadTip() {
    if (RegQueryValue(keys::Main, setting) == QLatin1String("No"))
        return false;
    Tip().controls.setTicked(atStartup, true);
    Tip().random.seed(quint32(ports.clock->now().toMSecsSinceEpoch()));
    DoNextTip();
    return true;
}

QString TipAt(int place) {
    if (place < 1 || place > Tip().TipCount)
        Raise(errors::Subscript);
    return QString::fromLatin1(Tips[place - 1]);
}

void DisplayCurrentTip() {
    if (Tip().TipCount > 0)
        Tip().controls.setValue(tipText, TipAt(Tip().CurrentTip));
}

void DoNextTip() {
    Tip().CurrentTip = int(Tip().random.generateDouble() * Tip().TipCount) + 1;
    DisplayCurrentTip();
}

} // namespace kelvrane
