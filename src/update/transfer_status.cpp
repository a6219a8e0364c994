#include "update/transfer_status.h"

#include "platform/ports.h"
#include "platform/texts.h"

#include <algorithm>
#include <memory>
#include <optional>

namespace kelvrane {

namespace {

namespace codes {
constexpr int Information = 10;
constexpr int BytesSending = 30;
constexpr int BytesReceived = 41;
constexpr int HandleCreated = 60;
constexpr int HandleClosing = 70;
constexpr int StateChanged = 200;
} // namespace codes

enum class Info { None, Text, Bytes };

// What a code shows: the words, with the status's text or its bytes behind them. Two rows of one
// code are shown one after the other.
struct TextRow {
    int code;
    const char* words;
    Info info = Info::None;
};
constexpr TextRow textRows[] = {
    {0, "Looking up the IP address for ", Info::Text},
    {1, "Name resolved ", Info::Text},
    {20, "Connecting to server..."},
    {21, "Connected to server."},
    {21, "Connected to ", Info::Text},
    {31, "Request sent: ", Info::Bytes},
    {50, "Closing connection"},
    {51, "Connection closed"},
    {codes::HandleCreated, "Establishing Connection: ", Info::Text},
    {80, "Detecting proxy"},
};

struct StateRow {
    int flag;
    const char* text;
};
constexpr StateRow stateRows[] = {
    {1, "Connected state moved between secure and nonsecure site"},
    {2, "Disconnected from network."},
    {16, "Disconnected by user request."},
    {256, "No network requests are being made (by Wininet)."},
    {512, "Network requests are being made (by Wininet)."},
    {40, "The request requires user input to complete."},
};

int percent(const InternetTransfer& transfer) {
    if (transfer.total <= 0)
        return 0;
    return static_cast<int>(std::min(100.0, transfer.received / transfer.total * 100));
}

void show(const QString& text) {
    ports.progress->show(text);
    ports.progress->setPercent(percent(CurrentTransfer()));
}

void showBytes(const char* words, double bytes) {
    show(QString::fromLatin1(words) + DoubleText(bytes) + QStringLiteral(" bytes"));
}

void showFileBytes(const char* words, const char* between, double bytes) {
    const InternetTransfer& transfer = CurrentTransfer();
    show(QString::fromLatin1(words) + transfer.fileName + QString::fromLatin1(between) +
         DoubleText(bytes) + QStringLiteral(" of ") + DoubleText(transfer.total));
}

void showTexts(const InternetStatus& status) {
    for (const TextRow& row : textRows) {
        if (row.code != status.code)
            continue;
        if (row.info == Info::Bytes)
            showBytes(row.words, status.number);
        else
            show(QString::fromLatin1(row.words) +
                 (row.info == Info::Text ? status.text : QString()));
    }
}

void bytesSending(const InternetStatus& status) {
    InternetTransfer& transfer = CurrentTransfer();
    transfer.sent += status.number;
    if (transfer.operation == TransferOperation::Upload)
        showFileBytes("Uploading   ", "", transfer.sent);
    else
        showBytes("Sending request: ", status.number);
}

void bytesReceived(const InternetStatus& status) {
    InternetTransfer& transfer = CurrentTransfer();
    transfer.received += status.number;
    if (transfer.operation == TransferOperation::Download) {
        if (status.total > 0)
            transfer.total = status.total;
        showFileBytes("Downloading: ", " - ", transfer.received);
    } else {
        showBytes("Response received: ", status.number);
    }
}

void handleClosing() {
    InternetTransfer& transfer = CurrentTransfer();
    show(QStringLiteral("Connection Closed"));
    if (transfer.operation == TransferOperation::Download)
        show(QStringLiteral("Download complete. "));
    else if (transfer.operation == TransferOperation::Upload)
        show(QStringLiteral("Upload complete. "));
    transfer.operation = TransferOperation::None;
}

void stateChanged(const InternetStatus& status) {
    for (const StateRow& row : stateRows)
        if (row.flag == static_cast<int>(status.number))
            show(QString::fromLatin1(row.text));
}

} // namespace

InternetTransfer& CurrentTransfer() {
    static InternetTransfer transfer;
    return transfer;
}

void OnInternetStatus(const InternetStatus& status) {
    InternetTransfer& transfer = CurrentTransfer();
    switch (status.code) {
    case codes::Information:
        transfer.currentText = status.text;
        return;
    case codes::BytesSending:
        return bytesSending(status);
    case codes::BytesReceived:
        return bytesReceived(status);
    case codes::HandleClosing:
        return handleClosing();
    case codes::StateChanged:
        return stateChanged(status);
    case codes::HandleCreated:
        transfer.received = transfer.sent = 0;
        break;
    default:
        break;
    }
    showTexts(status);
}

InternetResult FetchAndWait(const InternetRequest& request) {
    const auto answer = std::make_shared<std::optional<InternetResult>>();
    ports.internet->fetch(request, OnInternetStatus,
                          [answer](const InternetResult& result) { *answer = result; });
    if (ports.events->waitUntil([&answer] { return answer->has_value(); })) {
        InternetTransfer& transfer = CurrentTransfer();
        transfer.allVerified = transfer.allVerified && (*answer)->verified;
        return **answer;
    }
    ports.internet->cancelAll();
    CurrentTransfer().cancelled = true;
    return {.error = internet_errors::InternalError};
}

} // namespace kelvrane
