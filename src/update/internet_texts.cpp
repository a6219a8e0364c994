#include "update/internet_texts.h"

#include <algorithm>

namespace kelvrane {

namespace {

constexpr int serverResponseCode = 12003;
constexpr int longestResponse = 256;

struct Row {
    int code;
    const char* text;
};
constexpr Row rows[] = {
    {12001, "No more handles could be generated at this time"},
    {12002, "The request has timed out."},
    {12003, "Extended error returned from server."},
    {12004, "An internal error has occurred."},
    {12005, "URL is invalid."},
    {12006, "URL scheme could not be recognized, or is not supported."},
    {12007, "Server name could not be resolved."},
    {12008, "Requested protocol could not be located."},
    {12009, "A request to InternetQueryOption or InternetSetOption specified an invalid option "
            "value."},
    {12010, "Length of an option supplied to InternetQueryOption or InternetSetOption is incorrect "
            "for the type of option specified."},
    {12011, "The request option can not be set, only queried. "},
    {12012, "The Win32 Internet support is being shutdown or unloaded."},
    {12013, "Request to connect and login to an FTP server could not be completed because the "
            "supplied user name is incorrect."},
    {12014, "Request to connect and login to an FTP server could not be completed because the "
            "supplied password is incorrect. "},
    {12015, "Request to connect to and login to an FTP server failed."},
    {12016, "Requested operation is invalid. "},
    {12017, "Operation was canceled, usually because the handle on which the request was operating "
            "was closed before the operation completed."},
    {12018, "Type of handle supplied is incorrect for this operation."},
    {12019, "Requested operation can not be carried out because the handle supplied is not in the "
            "correct state."},
    {12020, "Request can not be made via a proxy."},
    {12021, "A required registry value could not be located. "},
    {12022, "A required registry value was located but is an incorrect type or has an invalid "
            "value."},
    {12023, "Direct network access cannot be made at this time. "},
    {12024, "An asynchronous request could not be made because a zero context value was supplied."},
    {12025, "An asynchronous request could not be made because a callback function has not been "
            "set."},
    {12026, "The required operation could not be completed because one or more requests are "
            "pending."},
    {12027, "The format of the request is invalid."},
    {12028, "The requested item could not be located."},
    {12029, "The attempt to connect to the server failed."},
    {12030, "The connection with the server has been terminated."},
    {12031, "The connection with the server has been reset."},
    {12036, "The request failed because the handle already exists."},
};
static_assert(std::ranges::is_sorted(rows, {}, &Row::code));

} // namespace

QString InternetErrorText(int code, const QString& serverResponse) {
    const QString response =
        serverResponse.left(serverResponse.indexOf(QChar::Null)).left(longestResponse);
    if (code == serverResponseCode && !response.isEmpty())
        return response;
    const auto* row = std::ranges::find(rows, code, &Row::code);
    return QString::fromLatin1(row == std::end(rows) ? "Error details not available." : row->text);
}

} // namespace kelvrane
