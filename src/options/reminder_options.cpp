#include "options/reminder_options.h"

#include "frame/settings.h"
#include "options/options_model.h"
#include "options/stored_option.h"
#include "platform/ports.h"
#include "platform/texts.h"
#include "timevalues/time_values.h"

#include <algorithm>

namespace kelvrane {

namespace {

constexpr int minutesInHour = 60;
const QString soundRow = QStringLiteral("SOUNDFILE");

QString T(const char* text) {
    return QString::fromLatin1(text);
}

struct TimeField {
    OptionPanel panel;
    const char* key;
    QString Globals::*option;
};
constexpr TimeField startTime{&OptionsModel::smuiAutoStartTime, "StartWorkTime",
                              &Globals::StartWorkTime};
constexpr TimeField stopTime{&OptionsModel::smuiEndDayReminderTime, "StopWorkTime",
                             &Globals::StopWorkTime};

void fillTime(const TimeField& field) {
    constexpr qsizetype suffix = 3; // " AM"
    const QString time = StoredOption(field.key);
    const QStringList parts = time.chopped(std::min(suffix, time.size())).split(QLatin1Char(':'));
    KeyedItems& panel = Options().*field.panel;
    panel.setValue(T("HOUR"), parts.value(0));
    panel.setValue(T("MINUTE"), parts.value(1));
    panel.setValue(T("AMPM"), time.right(2));
}

void takeTime(const TimeField& field) {
    const KeyedItems& panel = Options().*field.panel;
    const QString time = panel.value(T("HOUR")) + QLatin1Char(':') + panel.value(T("MINUTE")) +
                         QLatin1Char(' ') + panel.value(T("AMPM"));
    globals.*field.option = time;
    SaveRegText(time, keys::Main, T(field.key));
}

struct IntervalField {
    const char* control;
    const char* key;
    Int16 Globals::*option;
};
constexpr IntervalField endDayInterval{"cboEndDayInterval", "EndOfDayTimeInterval",
                                       &Globals::EndOfDayTimeInterval};
constexpr IntervalField intraDayInterval{"cboIntraDayInterval", "AutoDayReminderValue",
                                         &Globals::AutoDayReminderValue};

QString intervalText(double minutes) {
    if (minutes == minutesInHour)
        return QStringLiteral("1 Hour");
    return minutes < minutesInHour ? DoubleText(minutes) + QStringLiteral(" Minutes")
                                   : DoubleText(minutes / minutesInHour) + QStringLiteral(" Hours");
}

/// What isn't a number is shown as it is.
void fillInterval(const IntervalField& field) {
    QString text = StoredOption(field.key);
    SkipErrors step(T("fillInterval"));
    step([&] { text = intervalText(ToDouble(text)); });
    Options().controls.setValue(T(field.control), text);
}

void takeInterval(const IntervalField& field, const QString& choice) {
    const Int16 minutes = choice.contains(QLatin1String("Hour"))
                              ? Int16(ToInt16(choice.left(1)) * minutesInHour)
                              : ToInt16(choice.left(2));
    globals.*field.option = minutes;
    SaveRegMinutes(choice, T(field.key));
}

void enableFields(const char* control, bool on) {
    for (const OptionField& field : OptionFields()) {
        if (qstrcmp(field.control, control) != 0)
            continue;
        KeyedItems& panel = Options().*field.panel;
        for (qsizetype place = 0; place < panel.count(); ++place) {
            const QString key = panel.items().at(place).key;
            if (field.panel != &OptionsModel::controls || key == QLatin1String(field.name))
                panel.setEnabled(key, on);
        }
    }
}

void showSwitch(const OptionSwitch& row, const QString& word) {
    const bool on = word == u"On";
    Options().controls.setTicked(T(row.control), on);
    Options().controls.setCaption(T(row.control), T(on ? row.on : row.off));
    enableFields(row.control, on);
}

void fillSwitch(const char* control) {
    for (const OptionSwitch& row : OptionSwitches())
        if (qstrcmp(row.control, control) == 0)
            showSwitch(row, StoredOption(row.key));
}

void showSoundFile(const QString& path) {
    Options().smuiSoundFile.setValue(soundRow, path);
    Options().smuiSoundFile.setRole(soundRow, TextRole::Value);
}

void storeSoundFile(const QString& path) {
    AutoDayReminderSoundFile = path;
    SaveRegText(path, keys::Main, T("AutoDayReminderSoundFile"));
    showSoundFile(path);
}

} // namespace

void SetAutoStartup() {
    fillTime(startTime);
    fillSwitch("chkAutoStartup");
}

void SetEndDayReminder() {
    fillTime(stopTime);
    fillInterval(endDayInterval);
    fillSwitch("chkEndDayReminder");
}

void SetIntraDayReminder() {
    AutoDayReminderSoundFile = StoredOption("AutoDayReminderSoundFile");
    showSoundFile(AutoDayReminderSoundFile);
    fillInterval(intraDayInterval);
    fillSwitch("chkUseIntraDayReminder");
}

void SetAutoSave() {
    fillSwitch("chkAutoSave");
}

void ToggleOptionSwitch(const QString& control) {
    for (const OptionSwitch& row : OptionSwitches()) {
        if (control != QLatin1String(row.control))
            continue;
        const QString word = Options().controls.item(control).ticked ? T("Off") : T("On");
        globals.*row.option = word;
        SaveRegText(word, keys::Main, T(row.key));
        showSwitch(row, word);
    }
}

void TakeStartTime() {
    takeTime(startTime);
}
void TakeStopTime() {
    takeTime(stopTime);
}
void TakeEndDayInterval(const QString& choice) {
    takeInterval(endDayInterval, choice);
}
void TakeIntraDayInterval(const QString& choice) {
    takeInterval(intraDayInterval, choice);
}

void TakeSoundFile(const QString& name) {
    if (name.trimmed().isEmpty()) {
        storeSoundFile({});
    } else if (OptionFileExists(name)) {
        storeSoundFile(name);
    } else {
        Options().smuiSoundFile.setRole(soundRow, TextRole::Inactive);
        MsgBox(name + QStringLiteral(" is an invalid filename"));
    }
}

void BrowseSoundFile() {
    const auto chosen =
        ports.dialogs->openFile({.title = QStringLiteral("Sound File"),
                                 .folder = PathOfFile(AutoDayReminderSoundFile),
                                 .filter = QStringLiteral("Wav Files ( *.wav ) |*.wav"),
                                 .defaultExtension = QStringLiteral(".wav")});
    if (chosen)
        storeSoundFile(*chosen);
}

void TestSoundFile() {
    const QString path = Options().smuiSoundFile.value(soundRow).trimmed();
    if (OptionFileExists(path))
        ports.sound->play(path);
}

} // namespace kelvrane
