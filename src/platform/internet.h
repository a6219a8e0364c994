// The way to the network: one text or one file at a time, never waited for by the port itself.
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

namespace kelvrane {

namespace internet_errors {
inline constexpr int CannotWrite = 112; // the disk is full, or the file can't be made
inline constexpr int TimedOut = 12002;
inline constexpr int InternalError = 12004;
inline constexpr int BadAddress = 12005;
inline constexpr int NotLocated = 12028; // the server answered, but has no such thing
inline constexpr int CannotConnect = 12029;
inline constexpr int AlreadyExists = 12036;
} // namespace internet_errors

struct InternetRequest {
    QString address;       ///< http, https, ftp or ftps; percent-encoded
    QString account = {};  ///< "": none
    QString password = {}; ///< only used with an account
    QString agent = {};
    QString file = {};  ///< written to; must not exist yet. "": the answer is a text
    bool quiet = false; ///< nobody waits: it may begin a little later and gives up sooner
};

/// How far a request is.
struct InternetStatus {
    int code = 0;
    QString text = {};
    double number = 0; ///< bytes since the last status of this code; for code 200 the state's flag
    double total = 0;  ///< bytes in all; 0 where the server didn't say
};

struct InternetResult {
    int error = 0;      ///< 0: the answer is complete
    QByteArray text;    ///< empty after an error, and for a file
    QString response{}; ///< the server's last line
    /// Every byte came over TLS from the host asked for, and its certificate holds.
    bool verified = false;
};

class Internet {
  public:
    using OnStatus = std::function<void(const InternetStatus&)>;
    using OnResult = std::function<void(const InternetResult&)>;

    virtual ~Internet() = default;
    /// Returns at once. The result comes once, from the event loop or before the return; without
    /// any progress it is an error in the end. No status comes after it. A file is there, whole and
    /// flushed, or not at all.
    virtual void fetch(const InternetRequest& request, OnStatus onStatus, OnResult onResult) = 0;
    /// Ends every request; nothing is heard of any of them again.
    virtual void cancelAll() = 0;
};

} // namespace kelvrane
