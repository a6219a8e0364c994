// What the helper says on its standard output, line by line:
//
//     status CODE NUMBER TOTAL TEXT    how far it is; bytes, and of how many where that is known
//     verified 1                       every byte came over TLS, from the host asked for
//     text LENGTH                      and then so many bytes: the answer to a request without file
//     done CODE TEXT                   the last line; 0, or an error with the server's last words
//
// When nobody listens any more the process ends.
#pragma once

#include <string_view>

namespace transfer {

/// What a status line tells of.
enum class Phase {
    ResolvingName = 10,
    Connecting = 20,
    Connected = 21,
    SendingRequest = 30,
    RequestSent = 31,
    ResponseReceived = 41,
    ClosingConnection = 50,
    ConnectionClosed = 51,
    Begun = 60,
    Ended = 70,
};

void ReportStatus(Phase phase, long long number, long long total, std::string_view text);
void ReportVerified();
void ReportText(std::string_view bytes);
void ReportDone(int code, std::string_view text);

} // namespace transfer
