#include "request.h"

#include <cerrno>
#include <charconv>
#include <string_view>
#include <unistd.h>

namespace transfer {

namespace {

constexpr size_t longestLine = 16384;

struct TextField {
    std::string_view key;
    std::string Request::*field;
};
constexpr TextField textFields[] = {
    {"url", &Request::url},           {"account", &Request::account},
    {"password", &Request::password}, {"agent", &Request::agent},
    {"file", &Request::file},         {"certificates", &Request::certificates},
};

struct NumberField {
    std::string_view key;
    long Request::*field;
};
constexpr NumberField numberFields[] = {
    {"limit", &Request::limit},
    {"connect-seconds", &Request::connectSeconds},
    {"stall-seconds", &Request::stallSeconds},
    {"total-seconds", &Request::totalSeconds},
};

/// Byte by byte: what follows the request is none of this program's.
std::optional<std::string> readLine(int descriptor) {
    std::string line;
    while (line.size() < longestLine) {
        char byte = 0;
        const ssize_t got = ::read(descriptor, &byte, 1);
        if (got < 0 && errno == EINTR)
            continue;
        if (got != 1)
            return std::nullopt;
        if (byte == '\n')
            return line;
        line += byte;
    }
    return std::nullopt;
}

bool setField(Request& request, std::string_view key, std::string_view value) {
    for (const TextField& row : textFields)
        if (row.key == key) {
            request.*row.field = value;
            return true;
        }
    for (const NumberField& row : numberFields)
        if (row.key == key) {
            const auto [end, error] =
                std::from_chars(value.data(), value.data() + value.size(), request.*row.field);
            return error == std::errc() && end == value.data() + value.size() &&
                   request.*row.field >= 0;
        }
    return false;
}

} // namespace

std::optional<Request> ReadRequest(int descriptor) {
    Request request;
    while (const std::optional<std::string> line = readLine(descriptor)) {
        if (*line == "go")
            return request;
        const size_t blank = line->find(' ');
        if (blank == std::string::npos ||
            !setField(request, std::string_view(*line).substr(0, blank),
                      std::string_view(*line).substr(blank + 1)))
            return std::nullopt;
    }
    return std::nullopt;
}

} // namespace transfer
