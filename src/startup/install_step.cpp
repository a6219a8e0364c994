#include "startup/install_step.h"

#include "frame/error_report.h"
#include "frame/help_file.h"
#include "frame/program_folder.h"
#include "frame/settings.h"
#include "history/day_history.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"
#include "startup/database_schema.h"

#include <QDir>
#include <QFile>
#include <QVersionNumber>

#include <optional>

// Outside the namespace, as the macro wants it. A static library leaves this to its users.
static void LoadTemplates() {
    Q_INIT_RESOURCE(templates);
}

namespace kelvrane {

namespace {

constexpr char versionName[] = "Version";

struct Default {
    const char* name;
    const char* text; ///< null: the number
    qint32 number = 0;
};

constexpr Default mainDefaults[] = {
    {"ShowNumProjects", nullptr, 5},
    {"EndOfDayTimeInterval", nullptr, 15},
    {"StartWorkTime", "8:00 AM"},
    {"StopWorkTime", "5:00 PM"},
    {"EndDayReminder", "On"},
    {"AutoStartDay", "Off"},
    {"AutoSave", "On"},
    {"AutoDayReminder", "Off"},
    {"AutoDayReminderValue", nullptr, 60},
    {"Show Tips at Startup", "Yes"},
    {"UpdateWebHost", ""},
    {"UpdateFtpHost", ""},
    {"UpdateFtpUser", ""},
};

constexpr Default sheetDefaults[] = {
    {"TimeIncrements", "15 Minutes"}, {"StartOfWeek", nullptr, 2}, {"CalcNumDays", nullptr, 7},
    {"SortOrder", "By Project"},      {"CollectionLoc", ""},       {"CollectionFileName", ""},
};

/// The first is the one in use until another is chosen.
constexpr const char* readyTemplates[] = {"Timesheet.htm", "Invoice.htm"};

QString joined(const QString& folder, const char* name) {
    return folder + QDir::separator() + QString::fromLatin1(name);
}

void require(bool written) {
    if (!written)
        Raise(errors::PathAccess, QStringLiteral("The settings in %1 could not be written")
                                      .arg(InAppPath(QString::fromLatin1(files::Settings))));
}

/// A value that is there stays, whatever it is.
void addValue(const QString& key, const QString& name, const SettingValue& value) {
    if (!ports.settings->value(key, name))
        require(ports.settings->setValue(key, name, value));
}

template <typename Defaults>
void addValues(const QString& key, const Defaults& defaults) {
    for (const Default& row : defaults)
        addValue(key, QString::fromLatin1(row.name),
                 row.text ? SettingValue(QString::fromLatin1(row.text)) : SettingValue(row.number));
}

void addSettings() {
    SettingsStore& settings = *ports.settings;
    settings.beginChanges();
    for (const QString& key : {keys::Main, keys::RecentInfo, keys::SpreadSheetInfo})
        settings.createKey(key);
    addValues(keys::Main, mainDefaults);
    addValue(keys::Main, QStringLiteral("ProjectDatabase"),
             InAppPath(QString::fromLatin1(files::ProjectDatabase)));
    addValues(keys::SpreadSheetInfo, sheetDefaults);
    addValue(keys::SpreadSheetInfo, QStringLiteral("SS_Template"),
             joined(InAppPath(QString::fromLatin1(files::DataFolder)), readyTemplates[0]));
    require(settings.endChanges());
}

void addDatabase(const QString& path, void (*create)(const QString&)) {
    if (!ports.files->exists(path))
        create(path);
}

/// A template that is there may be the user's own work.
void addTemplates() {
    [[maybe_unused]] static const bool loaded = (LoadTemplates(), true);
    const QString folder = InAppPath(QString::fromLatin1(files::DataFolder));
    ports.files->createFolder(folder);
    for (const char* name : readyTemplates) {
        if (ports.files->exists(joined(folder, name)))
            continue;
        QFile resource(QStringLiteral(":/templates/") + QString::fromLatin1(name));
        if (!resource.open(QIODevice::ReadOnly))
            Raise(errors::FileNotFound, resource.fileName() + QStringLiteral(" is missing"));
        ports.files->writeAtomically(joined(folder, name), resource.readAll());
    }
}

void addStarterDatabases() {
    const QString folder = InAppPath(QString::fromLatin1(files::StarterFolder));
    ports.files->createFolder(folder);
    addDatabase(joined(folder, files::StarterDayHistory), CreateStarterDayInfoDatabase);
    addDatabase(joined(folder, files::ProjectDatabase), CreateStarterProjectDatabase);
}

} // namespace

void RunInstallStep() {
    const QVersionNumber program = QVersionNumber::fromString(QStringLiteral(KELVRANE_VERSION));
    const std::optional<SettingValue> stored =
        ports.settings->value(keys::Main, QString::fromLatin1(versionName));
    const QString* installed = stored ? std::get_if<QString>(&*stored) : nullptr;
    if (installed && QVersionNumber::fromString(*installed) >= program)
        return;

    std::optional<RuntimeError> first;
    SkipErrors step(QStringLiteral("RunInstallStep"), [&](const RuntimeError& error) {
        if (!first)
            first = error;
    });
    step([] { ports.files->createFolder(AppPath()); });
    if (!stored) {
        step([] { addDatabase(DayHistoryPath(), CreateDayInfoDatabase); });
        step([] {
            addDatabase(InAppPath(QString::fromLatin1(files::ProjectDatabase)),
                        CreateProjectDatabase);
        });
    }
    step([] { addStarterDatabases(); });
    step([] { addTemplates(); });
    step([] { RenewHelpFile(); });
    step([] { addSettings(); });
    if (!first)
        step([] {
            require(ports.settings->setValue(keys::Main, QString::fromLatin1(versionName),
                                             QStringLiteral(KELVRANE_VERSION)));
        });
    if (first)
        ReportError(*first, QStringLiteral("RunInstallStep"));
}

} // namespace kelvrane
