// What is asked of the helper on its standard input: a line "key value" for each field, then a line
// "go". Nothing of it stands on the command line, where other users could read it.
//
//     url ftp://host/updateinfo/kelvrane/setup.deb
//     account somebody
//     file /home/me/.../setup.deb
//     go
#pragma once

#include <optional>
#include <string>

namespace transfer {

struct Request {
    std::string url;
    std::string account;  ///< "": none
    std::string password; ///< only used with an account
    std::string agent;
    std::string file;         ///< written to; "": the answer goes out as a text
    std::string certificates; ///< file with the trusted ones; "": those of the system
    long limit = 0;           ///< largest answer in bytes
    long connectSeconds = 0;  ///< until the connection stands, log-in included
    long stallSeconds = 0;    ///< without a byte
    long totalSeconds = 0;    ///< 0: as long as it takes
};

/// Reads up to the line "go". std::nullopt for an unknown key, a number that is none, or the end of
/// the input.
std::optional<Request> ReadRequest(int descriptor);

} // namespace transfer
