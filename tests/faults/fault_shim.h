// Faults in this process's own file calls. The shim defines the C library's file calls in the
// executable, so that the program, Qt and the databases' driver all come through it. It counts the
// calls on files below one folder, and at the n-th either ends the process just before it, as a
// power cut would, or lets it and all later ones fail with an error number.
//
//     Arm({.root = folder, .at = n});                          // dies before the n-th call
//     Arm({.root = folder, .at = n, .failWith = ENOSPC, .kinds = Create | Write});
//
// An executable that links it needs ENABLE_EXPORTS. A program that isn't a test is steered by its
// environment: KELVRANE_FAULT_ROOT, KELVRANE_FAULT_AT, KELVRANE_FAULT_ERRNO (a number),
// KELVRANE_FAULT_KINDS (a number), KELVRANE_FAULT_LOG (a file outside the root).
#pragma once

#include <string>
#include <vector>

namespace kelvrane::faults {

/// Kinds of calls, to be or-ed.
enum Kind : unsigned {
    Open = 1,   ///< for reading
    Create = 2, ///< opened so that it can be written
    Write = 4,
    Flush = 8,   ///< of a file or a folder
    Rename = 16, ///< also links
    Remove = 32,
    Resize = 64,
    Folder = 128, ///< made or removed
    AllKinds = 255,
};

/// Exit status of a process that the shim ended.
inline constexpr int Killed = 99;

struct Plan {
    std::string root;          ///< an absolute folder; only calls on what lies below it count
    long at = 0;               ///< 1-based; 0: nothing happens, calls are counted and logged
    int failWith = 0;          ///< 0: the process ends
    unsigned kinds = AllKinds; ///< what counts, and what fails
    bool flushes = true;       ///< false: counted, but spared; an ended process loses nothing by it
    std::string log = {};      ///< a file to add the calls to; empty: none
};

/// Begins counting from 0.
void Arm(const Plan& plan);
void Disarm();
/// Counted calls since Arm.
long CallsSeen();

/// One line of the log: "write Fileinfo.dat.temp", "rename a -> b", names relative to the root, the
/// root itself as ".". Calls: open create write flush rename remove resize mkdir rmdir.
struct LoggedCall {
    std::string call;
    std::string path;
    std::string target; ///< of a rename
};
std::vector<LoggedCall> ReadLog(const std::string& file);

/// What breaks the rules of replacing a file, one sentence each: a file renamed over another with
/// unflushed writes, a rename without a flush of the folder behind it, a database replaced while a
/// journal lies beside it.
std::vector<std::string> UnsafeReplacements(const std::vector<LoggedCall>& log);

} // namespace kelvrane::faults
