#include "transfer.h"

#include "error_codes.h"
#include "report.h"
#include "target.h"

#include <curl/curl.h>

#include <chrono>
#include <memory>
#include <poll.h>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace transfer {

namespace {

using Clock = std::chrono::steady_clock;
constexpr auto reportEvery = std::chrono::milliseconds(100);
constexpr int pollMilliseconds = 1000;

/// What the library's callbacks share.
struct State {
    State(const Request& what, CURL* handle) : request(what), easy(handle), target(what.limit) {}

    const Request& request;
    CURL* easy;
    Target target;
    CURLcode refused = CURLE_OK; ///< why the answer wasn't taken
    std::string lastResponse;    ///< the server's last line
    long long unreported = 0;    ///< bytes received since the last report
    Clock::time_point reported{};
    bool closing = false;
    bool encryptionRequired = true; ///< of a connection over FTP, its data included
};

/// Schemes are compared without regard to case, as the library does.
bool hasScheme(const std::string& url, std::string_view scheme) {
    return url.size() > scheme.size() && url[scheme.size()] == ':' &&
           curl_strnequal(url.c_str(), scheme.data(), scheme.size()) != 0;
}

bool isFtp(const std::string& url) {
    return hasScheme(url, "ftp") || hasScheme(url, "ftps");
}

/// Whether every byte came from the host asked, over TLS with a certificate that holds. A redirect
/// over an open line could have led anywhere; and a proxy may have spoken HTTP in FTP's place,
/// which only the scheme of the connection tells.
bool isVerified(const State& state) {
    const char* used = nullptr;
    if (curl_easy_getinfo(state.easy, CURLINFO_SCHEME, &used) != CURLE_OK || used == nullptr)
        return false;
    const std::string connection = std::string(used) + ':';
    if (hasScheme(state.request.url, "https"))
        return hasScheme(connection, "https");
    return state.encryptionRequired && isFtp(state.request.url) && isFtp(connection);
}

void reportReceived(State& state) {
    curl_off_t total = -1;
    curl_easy_getinfo(state.easy, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &total);
    ReportStatus(Phase::ResponseReceived, std::exchange(state.unreported, 0), total < 0 ? 0 : total,
                 {});
    state.reported = Clock::now();
}

size_t onBody(char* bytes, size_t, size_t count, void* data) {
    State& state = *static_cast<State*>(data);
    const Target::Taken taken = state.target.take(bytes, count);
    if (taken != Target::Taken::All) {
        state.refused =
            taken == Target::Taken::TooMuch ? CURLE_FILESIZE_EXCEEDED : CURLE_WRITE_ERROR;
        return 0;
    }
    state.unreported += static_cast<long long>(count);
    if (Clock::now() - state.reported >= reportEvery)
        reportReceived(state);
    return count;
}

size_t onHeader(char* bytes, size_t, size_t count, void* data) {
    State& state = *static_cast<State*>(data);
    const std::string_view line(bytes, count);
    if (line.find_first_not_of(" \r\n") != std::string_view::npos)
        state.lastResponse = line;
    return count;
}

int onResolve(void*, void*, void* data) {
    const State& state = *static_cast<const State*>(data);
    ReportStatus(Phase::ResolvingName, 0, 0, state.request.url);
    return 0;
}

curl_socket_t onOpenSocket(void*, curlsocktype, curl_sockaddr* address) {
    const curl_socket_t opened =
        ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
    if (opened != CURL_SOCKET_BAD)
        ReportStatus(Phase::Connecting, 0, 0, {});
    return opened;
}

int onCloseSocket(void* data, curl_socket_t closed) {
    // Only the end of the whole is worth a word, not each try and each data connection.
    const bool closing = static_cast<const State*>(data)->closing;
    if (closing)
        ReportStatus(Phase::ClosingConnection, 0, 0, {});
    const int result = ::close(closed);
    if (closing)
        ReportStatus(Phase::ConnectionClosed, 0, 0, {});
    return result;
}

int onConnected(void*, char* address, char*, int, int) {
    ReportStatus(Phase::Connected, 0, 0, address ? address : "");
    return CURL_PREREQFUNC_OK;
}

/// Of all the library says only the size of what was sent: a password goes by here.
int onDebug(CURL*, curl_infotype type, char*, size_t count, void*) {
    if (type == CURLINFO_HEADER_OUT) {
        const auto bytes = static_cast<long long>(count);
        ReportStatus(Phase::SendingRequest, bytes, 0, {});
        ReportStatus(Phase::RequestSent, bytes, 0, {});
    }
    return 0;
}

/// Sets options and remembers whether each was taken.
class Options {
  public:
    explicit Options(CURL* easy) : m_easy(easy) {}
    template <typename Value>
    void set(CURLoption option, Value value) {
        m_taken = curl_easy_setopt(m_easy, option, value) == CURLE_OK && m_taken;
    }
    void setText(CURLoption option, const std::string& text) {
        if (!text.empty())
            set(option, text.c_str());
    }
    bool taken() const { return m_taken; }

  private:
    CURL* m_easy;
    bool m_taken = true;
};

void setWhat(Options& options, const Request& request) {
    constexpr const char* everything = "http,https,ftp,ftps";
    constexpr long mostRedirects = 5;
    const bool secure = hasScheme(request.url, "https");
    options.setText(CURLOPT_URL, request.url);
    options.set(CURLOPT_PROTOCOLS_STR, everything);
    options.set(CURLOPT_REDIR_PROTOCOLS_STR, secure ? "https" : everything);
    options.set(CURLOPT_FOLLOWLOCATION, 1L);
    options.set(CURLOPT_MAXREDIRS, mostRedirects);
    options.set(CURLOPT_FAILONERROR, 1L);
    options.set(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(request.limit));
    options.setText(CURLOPT_USERAGENT, request.agent);
    options.setText(CURLOPT_USERNAME, request.account);
    if (!request.account.empty())
        options.setText(CURLOPT_PASSWORD, request.password);
}

/// A certificate that doesn't hold ends the transfer, also where encryption was the server's offer.
void setSafety(Options& options, const Request& request) {
    const long encryption = isFtp(request.url) ? CURLUSESSL_ALL : CURLUSESSL_TRY;
    options.set(CURLOPT_USE_SSL, encryption);
    options.set(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    options.set(CURLOPT_SSL_VERIFYPEER, 1L);
    options.set(CURLOPT_SSL_VERIFYHOST, 2L);
    options.setText(CURLOPT_CAINFO, request.certificates);
}

void setTimes(Options& options, const Request& request) {
    options.set(CURLOPT_NOSIGNAL, 1L);
    options.set(CURLOPT_QUICK_EXIT, 1L);
    options.set(CURLOPT_CONNECTTIMEOUT, request.connectSeconds);
    options.set(CURLOPT_SERVER_RESPONSE_TIMEOUT, request.stallSeconds);
    options.set(CURLOPT_LOW_SPEED_LIMIT, 1L);
    options.set(CURLOPT_LOW_SPEED_TIME, request.stallSeconds);
    options.set(CURLOPT_TIMEOUT, request.totalSeconds);
}

void setCallbacks(Options& options, State& state) {
    options.set(CURLOPT_WRITEFUNCTION, onBody);
    options.set(CURLOPT_WRITEDATA, &state);
    options.set(CURLOPT_HEADERFUNCTION, onHeader);
    options.set(CURLOPT_HEADERDATA, &state);
    options.set(CURLOPT_RESOLVER_START_FUNCTION, onResolve);
    options.set(CURLOPT_RESOLVER_START_DATA, &state);
    options.set(CURLOPT_OPENSOCKETFUNCTION, onOpenSocket);
    options.set(CURLOPT_CLOSESOCKETFUNCTION, onCloseSocket);
    options.set(CURLOPT_CLOSESOCKETDATA, &state);
    options.set(CURLOPT_PREREQFUNCTION, onConnected);
    options.set(CURLOPT_DEBUGFUNCTION, onDebug);
    options.set(CURLOPT_VERBOSE, 1L);
}

void endIfNobodyWaits(Target& target) {
    pollfd input = {STDIN_FILENO, POLLIN, 0};
    if (::poll(&input, 1, 0) <= 0)
        return;
    target.discard();
    ::_exit(1);
}

CURLcode perform(CURLM* multi, State& state) {
    if (curl_multi_add_handle(multi, state.easy) != CURLM_OK)
        return CURLE_FAILED_INIT;
    CURLcode result = CURLE_FAILED_INIT;
    for (int running = 1; running > 0;) {
        if (curl_multi_perform(multi, &running) != CURLM_OK)
            break;
        curl_waitfd input = {STDIN_FILENO, CURL_WAIT_POLLIN, 0};
        if (running > 0 && curl_multi_poll(multi, &input, 1, pollMilliseconds, nullptr) != CURLM_OK)
            break;
        endIfNobodyWaits(state.target);
        int left = 0;
        while (const CURLMsg* message = curl_multi_info_read(multi, &left))
            if (message->msg == CURLMSG_DONE)
                result = message->data.result;
    }
    return state.refused == CURLE_OK ? result : state.refused;
}

/// A server of plain FTP need not offer encryption. It is demanded at first all the same: only so
/// is it known afterwards that the data was encrypted too. False where the address demands it.
bool allowPlainFtp(State& state) {
    state.encryptionRequired = false;
    return hasScheme(state.request.url, "ftp") &&
           curl_easy_setopt(state.easy, CURLOPT_USE_SSL, static_cast<long>(CURLUSESSL_TRY)) ==
               CURLE_OK;
}

/// With the connection closed behind it.
CURLcode run(State& state) {
    CURLM* multi = curl_multi_init();
    if (!multi)
        return CURLE_FAILED_INIT;
    CURLcode result = perform(multi, state);
    if (result == CURLE_USE_SSL_FAILED && allowPlainFtp(state)) {
        curl_multi_remove_handle(multi, state.easy);
        result = perform(multi, state);
    }
    if (result == CURLE_OK)
        reportReceived(state);
    state.closing = true;
    curl_multi_remove_handle(multi, state.easy);
    curl_multi_cleanup(multi);
    return result;
}

int carry(State& state) {
    if (!state.request.file.empty() && !state.target.create(state.request.file))
        return CannotWrite;
    Options options(state.easy);
    setWhat(options, state.request);
    setSafety(options, state.request);
    setTimes(options, state.request);
    setCallbacks(options, state);
    if (!options.taken())
        return InternalError;
    ReportStatus(Phase::Begun, 0, 0, "1");
    if (const CURLcode result = run(state); result != CURLE_OK)
        return ErrorCode(result);
    return state.target.finish() ? 0 : CannotWrite;
}

} // namespace

void Carry(const Request& request) {
    const std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> easy(curl_easy_init(),
                                                                   curl_easy_cleanup);
    if (!easy) {
        ReportDone(InternalError, {});
        return;
    }
    State state(request, easy.get());
    const int code = carry(state);
    if (code == 0) {
        ReportStatus(Phase::Ended, 0, 0, {});
        if (isVerified(state))
            ReportVerified();
        if (request.file.empty())
            ReportText(state.target.text());
    } else {
        state.target.discard();
    }
    ReportDone(code, state.lastResponse);
}

} // namespace transfer
