#include "report.h"

#include <cerrno>
#include <string>
#include <unistd.h>

namespace transfer {

namespace {

void say(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t put = ::write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (put < 0 && errno == EINTR)
            continue;
        if (put <= 0)
            ::_exit(1);
        bytes.remove_prefix(static_cast<size_t>(put));
    }
}

/// A text that came over the network, as one line without control characters.
std::string oneLine(std::string_view text) {
    std::string line(text.substr(0, 1024));
    for (char& byte : line)
        if (static_cast<unsigned char>(byte) < ' ' || byte == '\x7f')
            byte = ' ';
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

} // namespace

void ReportStatus(Phase phase, long long number, long long total, std::string_view text) {
    say("status " + std::to_string(static_cast<int>(phase)) + ' ' + std::to_string(number) + ' ' +
        std::to_string(total) + ' ' + oneLine(text) + '\n');
}

void ReportVerified() {
    say("verified 1\n");
}

void ReportText(std::string_view bytes) {
    say("text " + std::to_string(bytes.size()) + '\n');
    say(bytes);
}

void ReportDone(int code, std::string_view text) {
    say("done " + std::to_string(code) + ' ' + oneLine(text) + '\n');
}

} // namespace transfer
