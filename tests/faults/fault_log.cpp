#include "fault_shim.h"

#include <fstream>
#include <map>
#include <set>

namespace kelvrane::faults {

std::vector<LoggedCall> ReadLog(const std::string& file) {
    std::vector<LoggedCall> calls;
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        const size_t blank = line.find(' ');
        const size_t arrow = line.find(" -> ");
        LoggedCall call;
        call.call = line.substr(0, blank);
        call.path = line.substr(blank + 1, arrow == std::string::npos ? arrow : arrow - blank - 1);
        if (arrow != std::string::npos)
            call.target = line.substr(arrow + 4);
        calls.push_back(call);
    }
    return calls;
}

std::vector<std::string> UnsafeReplacements(const std::vector<LoggedCall>& log) {
    std::vector<std::string> faults;
    std::set<std::string> unflushed, created;
    std::map<std::string, std::string> awaitingFolder; // folder -> the file renamed in it
    const auto folderOf = [](const std::string& path) {
        const size_t slash = path.rfind('/');
        return slash == std::string::npos ? std::string(".") : path.substr(0, slash);
    };
    for (const LoggedCall& call : log) {
        if (call.call == "create") {
            created.insert(call.path);
        } else if (call.call == "write" || call.call == "resize") {
            unflushed.insert(call.path);
        } else if (call.call == "flush") {
            unflushed.erase(call.path);
            awaitingFolder.erase(call.path);
        } else if (call.call == "remove") {
            unflushed.erase(call.path);
            created.erase(call.path);
        } else if (call.call == "rename") {
            if (unflushed.erase(call.path) > 0)
                faults.push_back(call.path + " was renamed with writes that weren't flushed");
            if (created.contains(call.target + "-journal"))
                faults.push_back(call.target + " was replaced with a journal beside it");
            awaitingFolder[folderOf(call.target)] = call.target;
        }
    }
    for (const auto& [folder, file] : awaitingFolder)
        faults.push_back("the folder wasn't flushed after " + file + " came into place");
    return faults;
}

} // namespace kelvrane::faults
