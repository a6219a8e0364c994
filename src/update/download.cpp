#include "update/download.h"

#include "frame/maker_hosts.h"
#include "frame/trace.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"
#include "update/internet_texts.h"
#include "update/maker_files.h"
#include "update/transfer_status.h"

#include <QCursor>
#include <QDir>
#include <QGuiApplication>
#include <QScopeGuard>

namespace kelvrane {

namespace {

// No secret: every copy of the program has it, and the account serves updates and nothing else.
constexpr char password[] = "qvnctlro";

InternetResult fetchFile(const QString& remotePath, const QString& localPath, bool failIfExists) {
    if (ports.files->exists(localPath)) {
        if (failIfExists)
            return {.error = internet_errors::AlreadyExists};
        SkipErrors step(QStringLiteral("GetFtpFile"));
        if (!step([&] { ports.files->remove(localPath, true); }))
            return {.error = internet_errors::CannotWrite};
    }
    return FetchAndWait({.address = MakerFtpAddress() + QLatin1Char('/') + remotePath,
                         .account = MakerFtpAccount(),
                         .password = QString::fromLatin1(password),
                         .agent = QString::fromLatin1(maker_files::Agent),
                         .file = localPath});
}

} // namespace

bool GetFtpFile(const QString& remotePath, const QString& localPath, FtpFindRecord& record,
                bool failIfExists) {
    InternetTransfer& transfer = CurrentTransfer();
    // Not the one that blocks: the day goes on meanwhile.
    QGuiApplication::setOverrideCursor(Qt::BusyCursor);
    const auto restore = qScopeGuard([] { QGuiApplication::restoreOverrideCursor(); });
    transfer.total = record.size;
    transfer.received = 0;
    transfer.operation = TransferOperation::Download;
    const InternetResult result = fetchFile(remotePath, localPath, failIfExists);
    record.size = transfer.total;
    transfer.lastError =
        result.error == 0 ? QString() : InternetErrorText(result.error, result.response);
    transfer.operation = TransferOperation::None;
    return result.error == 0;
}

int DownloadUpdateFiles(const QStringList& names, const QString& folder) {
    InternetTransfer& transfer = CurrentTransfer();
    const auto local = [&folder](const QString& name) -> QString {
        return folder + QDir::separator() + name;
    };
    ports.progress->show(QStringLiteral("Connecting to server..."));
    if (!MakerFtpAddress().isEmpty())
        for (const QString& name : names) {
            transfer.fileName = name;
            FtpFindRecord record;
            if (GetFtpFile(maker_files::Path(name), local(name), record, true))
                continue;
            LogStep(name + QStringLiteral(": ") + transfer.lastError);
            break;
        }
    ports.progress->close();
    int result = -1;
    for (const QString& name : names)
        result = ports.files->exists(local(name)) ? 0 : -1;
    return result;
}

} // namespace kelvrane
