#include "update/auto_update.h"

#include "collections/sheet_file_name.h"
#include "frame/error_report.h"
#include "frame/maker_hosts.h"
#include "frame/program_folder.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"
#include "platform/texts.h"
#include "timekeeping/shut_down.h"
#include "update/download.h"
#include "update/internet_texts.h"
#include "update/maker_files.h"
#include "update/transfer_status.h"
#include "update/update_folder.h"
#include "update/version_file.h"

#include <QScopedValueRollback>
#include <QTemporaryDir>

namespace kelvrane {

namespace {

const QString routine = QStringLiteral("AutoUpdate");

/// "" when no host is set.
QString webAddress(const QString& name) {
    const QString host = MakerWebAddress();
    return host.isEmpty() || !IsBareFileName(name)
               ? QString()
               : QString(host + QLatin1Char('/') + maker_files::Path(name));
}

InternetRequest request(const QString& address, bool quiet) {
    return {.address = address, .agent = QString::fromLatin1(maker_files::Agent), .quiet = quiet};
}

void sayNoUpdate() {
    MsgBox(QStringLiteral("There is not an update available at this time."),
           QStringLiteral("Kelvrane up to date."));
}

void sayTransferFailed() {
    if (!CurrentTransfer().cancelled)
        MsgBox(QStringLiteral("Error in transfer, please visit ") + MakerWebAddress() +
               QStringLiteral(" for the update."));
}

/// Says the same of every error, and goes on behind it.
SkipErrors connectionSteps() {
    return SkipErrors(routine, [](const RuntimeError&) {
        MsgBox(QStringLiteral("Internet connection could not be established, Please check your "
                              "connection and try again"),
               QStringLiteral("No internet connection found"));
    });
}

/// Waits. Raises when no server could be reached; what a server doesn't have is an empty text.
QString versionText(const QString& address) {
    if (address.isEmpty())
        return {};
    ports.progress->show(QStringLiteral("Checking for update"));
    const InternetResult result = FetchAndWait(request(address, false));
    ports.progress->close();
    if (result.error != 0 && result.error != internet_errors::NotLocated &&
        !CurrentTransfer().cancelled)
        Raise(result.error, InternetErrorText(result.error, result.response));
    return FromFileBytes(result.text);
}

bool wantsUpdate() {
    return MsgBox(QStringLiteral("There is a Kelvrane Update available, would you like to download "
                                 "and install the update?"),
                  QStringLiteral("Kelvrane Update Available"), BoxIcon::Question,
                  BoxButtons::YesNo) == BoxAnswer::Yes;
}

/// Where the files of an update went.
enum class Fetched {
    Nowhere, ///< one isn't there, whole: nothing is installed
    ForTheInstaller,
    ForTheUser, ///< saved, and the user was shown where
};

/// What anybody on the way could have changed is never started: the version file counts, since it
/// says what to start.
Fetched saveUnverified(const QStringList& names, const QString& from) {
    const QString folder = SaveUpdateFiles(names, from);
    if (folder.isEmpty())
        return Fetched::Nowhere;
    MsgBox(
        QStringLiteral("The update was downloaded, but Kelvrane doesn't start it: it came over a "
                       "connection that is not secure, and could have been changed on the way.") +
            QStringLiteral("\n\nIt is saved in\n") + folder +
            QStringLiteral("\n\nIf you trust it, close Kelvrane and install it from there: ") +
            names.last(),
        QStringLiteral("Kelvrane Update"), BoxIcon::Exclamation);
    return Fetched::ForTheUser;
}

/// Fetches the files into a private folder and moves them on, together.
Fetched fetchUpdate(const QStringList& names) {
    RemoveOldDownloads();
    const QTemporaryDir folder(InAppPath(QString::fromLatin1(DownloadFolder)));
    if (!folder.isValid() || DownloadUpdateFiles(names, folder.path()) != 0)
        return Fetched::Nowhere;
    if (!CurrentTransfer().allVerified)
        return saveUnverified(names, folder.path());
    return TakeUpdateFiles(names, folder.path()) ? Fetched::ForTheInstaller : Fetched::Nowhere;
}

void installUpdate(const QStringList& names, bool force) {
    const Fetched fetched = fetchUpdate(names);
    if (fetched == Fetched::ForTheUser)
        return;
    if (fetched == Fetched::Nowhere) {
        sayTransferFailed();
        return;
    }
    MsgBox(QStringLiteral("Kelvrane will now close."));
    if (!StartInstaller(names.last())) {
        SkipErrors step(routine);
        step([] { ClearUpdateFolder(); });
        sayTransferFailed();
        return;
    }
    if (force)
        EndProgram(); // no day was loaded, and another instance may hold its file
    else
        ShutDownProgram();
}

/// What follows the answer, empty or not.
bool decide(const QString& text, bool showMessages, bool force) {
    UpdateVersion version;
    QStringList names;
    ParseVersionFile(text, version, names);
    const bool current = IsCurrentVersion(version);
    const bool install = current ? force && !names.isEmpty() : wantsUpdate();
    if (install)
        installUpdate(names, force);
    else if (showMessages || (force && current))
        sayNoUpdate(); // also when the user just declined
    return current;
}

void checkQuietly(const QString& address) {
    if (address.isEmpty())
        return;
    ports.internet->fetch(request(address, true), {}, [](const InternetResult& result) {
        InternetTransfer& transfer = CurrentTransfer();
        if (transfer.busy)
            return;
        transfer = {.allVerified = result.verified};
        const QScopedValueRollback<bool> busy(transfer.busy, true);
        Guarded(routine, [&result] { decide(FromFileBytes(result.text), false, false); });
    });
}

} // namespace

bool AutoUpdate(bool ShowMessages, bool Force, const QString& FileName) {
    InternetTransfer& transfer = CurrentTransfer();
    if (transfer.busy)
        return true;
    SkipErrors step = connectionSteps();
    if (UpdateWasStarted()) {
        step([] { ClearUpdateFolder(); });
        MsgBox(QStringLiteral("Update successful"));
        return true;
    }
    const QString address =
        webAddress(Force ? FileName : QString::fromLatin1(maker_files::VersionFile));
    if (!ShowMessages && !Force) {
        checkQuietly(address);
        return true;
    }
    transfer = {};
    const QScopedValueRollback<bool> busy(transfer.busy, true);
    QString text;
    step([&] { text = versionText(address); });
    return transfer.cancelled || decide(text, ShowMessages, Force);
}

void FetchUsageLog() {
    const QString address = webAddress(QString::fromLatin1(maker_files::UsageLog));
    if (!address.isEmpty())
        ports.internet->fetch(request(address, true), {}, [](const InternetResult&) {});
}

} // namespace kelvrane
