// The transfer that is under way, and what frmProgress says of it.
#pragma once

#include "platform/internet.h"

#include <QString>

namespace kelvrane {

enum class TransferOperation { None = 0, Download = 3, Upload = 5 };

/// The one transfer of the process.
struct InternetTransfer {
    bool busy = false;       ///< an update is being looked for or fetched, or its question is open
    bool cancelled = false;  ///< the program shut down meanwhile: nothing may be asked any more
    bool allVerified = true; ///< whatever was fetched since the check began came over verified TLS
    QString fileName;        ///< the file that is fetched
    QString currentText;     ///< the last status information that isn't shown
    QString lastError;       ///< what went wrong, as a sentence; "" after a success
    TransferOperation operation = TransferOperation::None;
    double total = 0;    ///< bytes of the file; 0: not known
    double received = 0; ///< bytes of it so far
    double sent = 0;
};
InternetTransfer& CurrentTransfer();

/// Shows a status on frmProgress and counts the bytes. A code that isn't known shows nothing. Lets
/// events through.
void OnInternetStatus(const InternetStatus& status);

/// Starts a request and waits for its result with the window alive. An unfinished one is cancelled
/// when the program shuts down; CurrentTransfer().cancelled is then set and the result an error.
InternetResult FetchAndWait(const InternetRequest& request);

} // namespace kelvrane
