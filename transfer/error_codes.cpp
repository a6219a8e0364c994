#include "error_codes.h"

#include <algorithm>
#include <iterator>

namespace transfer {

namespace {

constexpr int timedOut = 12002;
constexpr int serverResponse = 12003;
constexpr int unknownScheme = 12006;
constexpr int unknownName = 12007;
constexpr int wrongPassword = 12014;
constexpr int loginFailed = 12015;
constexpr int notPermitted = 12016;
constexpr int cancelled = 12017;
constexpr int notLocated = 12028;
constexpr int cannotConnect = 12029;
constexpr int terminated = 12030;
constexpr int reset = 12031;

struct Row {
    CURLcode result;
    int code;
};
constexpr Row rows[] = {
    {CURLE_OK, 0},
    {CURLE_UNSUPPORTED_PROTOCOL, unknownScheme},
    {CURLE_URL_MALFORMAT, BadAddress},
    {CURLE_COULDNT_RESOLVE_PROXY, unknownName},
    {CURLE_COULDNT_RESOLVE_HOST, unknownName},
    {CURLE_COULDNT_CONNECT, cannotConnect},
    {CURLE_PROXY, cannotConnect},
    {CURLE_WEIRD_SERVER_REPLY, serverResponse},
    {CURLE_REMOTE_ACCESS_DENIED, serverResponse},
    {CURLE_FTP_WEIRD_PASS_REPLY, loginFailed},
    {CURLE_FTP_WEIRD_PASV_REPLY, serverResponse},
    {CURLE_FTP_WEIRD_227_FORMAT, serverResponse},
    {CURLE_FTP_CANT_GET_HOST, unknownName},
    {CURLE_FTP_COULDNT_SET_TYPE, serverResponse},
    {CURLE_FTP_COULDNT_RETR_FILE, serverResponse},
    {CURLE_REMOTE_FILE_NOT_FOUND, serverResponse},
    {CURLE_PARTIAL_FILE, terminated},
    {CURLE_HTTP_RETURNED_ERROR, notLocated},
    {CURLE_WRITE_ERROR, CannotWrite},
    {CURLE_OPERATION_TIMEDOUT, timedOut},
    {CURLE_ABORTED_BY_CALLBACK, cancelled},
    {CURLE_TOO_MANY_REDIRECTS, notLocated},
    {CURLE_GOT_NOTHING, terminated},
    {CURLE_SEND_ERROR, reset},
    {CURLE_RECV_ERROR, reset},
    {CURLE_FILESIZE_EXCEEDED, notPermitted},
    {CURLE_LOGIN_DENIED, wrongPassword},
    {CURLE_USE_SSL_FAILED, cannotConnect},
    {CURLE_SSL_CONNECT_ERROR, cannotConnect},
    {CURLE_PEER_FAILED_VERIFICATION, cannotConnect},
    {CURLE_SSL_CERTPROBLEM, cannotConnect},
    {CURLE_SSL_CIPHER, cannotConnect},
    {CURLE_SSL_CACERT_BADFILE, cannotConnect},
};

} // namespace

int ErrorCode(CURLcode result) {
    const auto* row = std::find_if(std::begin(rows), std::end(rows),
                                   [result](const Row& entry) { return entry.result == result; });
    return row == std::end(rows) ? InternalError : row->code;
}

} // namespace transfer
