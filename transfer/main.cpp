// kelvrane-transfer: fetches one text or one file for Kelvrane. request.h tells what it reads,
// report.h what it says. It isn't meant to be run by hand.
#include "error_codes.h"
#include "report.h"
#include "request.h"
#include "transfer.h"

#include <curl/curl.h>

#include <csignal>
#include <optional>
#include <unistd.h>

int main() {
    // Both are errors of the write that meets them, not the end of the process.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    const std::optional<transfer::Request> request = transfer::ReadRequest(STDIN_FILENO);
    if (!request) {
        transfer::ReportDone(transfer::BadAddress, {});
        return 2;
    }
    if (curl_global_init(CURL_GLOBAL_DEFAULT) != CURLE_OK) {
        transfer::ReportDone(transfer::InternalError, {});
        return 1;
    }
    transfer::Carry(*request);
    curl_global_cleanup();
    return 0;
}
