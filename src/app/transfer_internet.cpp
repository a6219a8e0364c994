#include "app/transfer_internet.h"

#include "app/transfer_process.h"

#include <QTimer>

#include <utility>

namespace kelvrane {

TransferInternet::TransferInternet(TransferSettings settings, QObject* parent)
    : QObject(parent), m_settings(std::move(settings)) {}

TransferInternet::~TransferInternet() {
    qDeleteAll(findChildren<TransferProcess*>());
}

void TransferInternet::fetch(const InternetRequest& request, OnStatus onStatus, OnResult onResult) {
    auto* process = new TransferProcess(request, std::move(onStatus), std::move(onResult), this);
    QTimer::singleShot(request.quiet ? m_settings.quietMilliseconds : 0, process,
                       [this, process] { process->start(m_settings); });
}

void TransferInternet::cancelAll() {
    for (TransferProcess* process : findChildren<TransferProcess*>())
        process->cancel();
}

} // namespace kelvrane
