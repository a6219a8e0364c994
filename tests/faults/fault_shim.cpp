#include "fault_shim.h"

#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

namespace kelvrane::faults {
namespace {

// Plain data only: the calls below come before any constructor of this file has run, too.
struct State {
    char root[PATH_MAX];
    size_t rootLength;
    long at;
    long seen;
    int failWith;
    unsigned kinds;
    bool flushes;
    int log;
};
State state = {{}, 0, 0, 0, 0, 0, true, -1};

// The shim's own calls go to the kernel, past its own definitions.
int CloseOnExec(const char* path, int flags) {
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags | O_CLOEXEC, 0600));
}

/// The name below the root, "." for the root itself; null for anything else.
const char* BelowRoot(const char* path) {
    if (state.rootLength == 0 || std::strncmp(path, state.root, state.rootLength) != 0)
        return nullptr;
    const char* rest = path + state.rootLength;
    if (*rest == '\0')
        return ".";
    return *rest == '/' ? rest + 1 : nullptr;
}

/// The path behind a descriptor (AT_FDCWD: the present folder) in the buffer; false when unknown.
bool PathOf(int descriptor, char (&path)[PATH_MAX]) {
    if (descriptor == AT_FDCWD)
        return syscall(SYS_getcwd, path, sizeof path) > 0;
    char link[64];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
    const long length = syscall(SYS_readlinkat, AT_FDCWD, link, path, sizeof path - 1);
    if (length < 0)
        return false;
    path[length] = '\0';
    return true;
}

/// The name below the root of a path as given to a call; null when it lies elsewhere.
const char* Locate(int folder, const char* path, char (&buffer)[PATH_MAX]) {
    if (state.rootLength == 0 || !path)
        return nullptr;
    if (path[0] == '/') {
        std::snprintf(buffer, sizeof buffer, "%s", path);
        return BelowRoot(buffer);
    }
    if (!PathOf(folder, buffer))
        return nullptr;
    const size_t length = std::strlen(buffer);
    std::snprintf(buffer + length, sizeof buffer - length, "/%s", path);
    return BelowRoot(buffer);
}

/// Counts one call and carries out the plan. True when the call has to fail; errno is set then.
bool Fault(Kind kind, const char* call, const char* name, const char* target = nullptr) {
    if (!name || !(state.kinds & kind))
        return false;
    const int kept = errno;
    ++state.seen;
    const bool due = state.at > 0 && state.seen >= state.at;
    if (due && state.failWith == 0)
        syscall(SYS_exit_group, Killed); // no handler, no flush, no leak check comes after this
    if (state.log >= 0) {
        const std::string line = std::string(call) + ' ' + name +
                                 (target ? std::string(" -> ") + target : std::string()) + '\n';
        syscall(SYS_write, state.log, line.data(), line.size());
    }
    errno = due ? state.failWith : kept;
    return due;
}

bool FaultAt(Kind kind, const char* call, int folder, const char* path) {
    char buffer[PATH_MAX];
    return Fault(kind, call, Locate(folder, path, buffer));
}

bool FaultOn(Kind kind, const char* call, int descriptor) {
    char buffer[PATH_MAX];
    return state.rootLength > 0 && PathOf(descriptor, buffer) &&
           Fault(kind, call, BelowRoot(buffer));
}

/// Whether flushes are left out now.
bool Spared() {
    return state.rootLength > 0 && !state.flushes;
}

int DoOpen(int folder, const char* path, int flags, unsigned mode) {
    const bool changes = (flags & O_ACCMODE) != O_RDONLY || (flags & (O_CREAT | O_TRUNC)) != 0;
    if (changes ? FaultAt(Create, "create", folder, path) : FaultAt(Open, "open", folder, path))
        return -1;
    return static_cast<int>(syscall(SYS_openat, folder, path, flags, mode));
}

int DoRename(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) {
    char source[PATH_MAX];
    char target[PATH_MAX];
    const char* toName = Locate(toFolder, to, target);
    if (Fault(Rename, "rename", Locate(fromFolder, from, source), toName ? toName : "elsewhere"))
        return -1;
    return static_cast<int>(syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
}

int DoRemove(int folder, const char* path, int flags) {
    const bool isFolder = (flags & AT_REMOVEDIR) != 0;
    if (isFolder ? FaultAt(Folder, "rmdir", folder, path) : FaultAt(Remove, "remove", folder, path))
        return -1;
    return static_cast<int>(syscall(SYS_unlinkat, folder, path, flags));
}

__attribute__((constructor)) void ArmFromEnvironment() {
    const auto text = [](const char* name) {
        const char* value = std::getenv(name);
        return std::string(value ? value : "");
    };
    if (text("KELVRANE_FAULT_ROOT").empty())
        return;
    const std::string kinds = text("KELVRANE_FAULT_KINDS");
    Arm({.root = text("KELVRANE_FAULT_ROOT"),
         .at = std::atol(text("KELVRANE_FAULT_AT").c_str()),
         .failWith = std::atoi(text("KELVRANE_FAULT_ERRNO").c_str()),
         .kinds =
             kinds.empty() ? unsigned(AllKinds) : static_cast<unsigned>(std::atoi(kinds.c_str())),
         .log = text("KELVRANE_FAULT_LOG")});
}

} // namespace

void Arm(const Plan& plan) {
    Disarm();
    state.at = plan.at;
    state.seen = 0;
    state.failWith = plan.failWith;
    state.kinds = plan.kinds;
    state.flushes = plan.flushes;
    if (!plan.log.empty())
        state.log = CloseOnExec(plan.log.c_str(), O_WRONLY | O_CREAT | O_APPEND);
    std::snprintf(state.root, sizeof state.root, "%s", plan.root.c_str());
    state.rootLength = std::strlen(state.root);
}

void Disarm() {
    state.rootLength = 0;
    state.flushes = true;
    if (state.log >= 0)
        syscall(SYS_close, state.log);
    state.log = -1;
}

long CallsSeen() {
    return state.seen;
}

} // namespace kelvrane::faults

// The C library's calls, as the program and its libraries find them.
namespace shim = kelvrane::faults;

extern "C" {

#define KELVRANE_OPEN(name)                                                                        \
    int name(const char* path, int flags, ...) {                                                   \
        va_list rest;                                                                              \
        va_start(rest, flags);                                                                     \
        const unsigned mode = (flags & (O_CREAT | __O_TMPFILE)) ? va_arg(rest, unsigned) : 0U;     \
        va_end(rest);                                                                              \
        return shim::DoOpen(AT_FDCWD, path, flags, mode);                                          \
    }
#define KELVRANE_OPENAT(name)                                                                      \
    int name(int folder, const char* path, int flags, ...) {                                       \
        va_list rest;                                                                              \
        va_start(rest, flags);                                                                     \
        const unsigned mode = (flags & (O_CREAT | __O_TMPFILE)) ? va_arg(rest, unsigned) : 0U;     \
        va_end(rest);                                                                              \
        return shim::DoOpen(folder, path, flags, mode);                                            \
    }
KELVRANE_OPEN(open)
KELVRANE_OPEN(open64)
KELVRANE_OPENAT(openat)
KELVRANE_OPENAT(openat64)
#undef KELVRANE_OPEN
#undef KELVRANE_OPENAT

// What the fortified headers make of an open without a mode.
int __open_2(const char* path, int flags) {
    return shim::DoOpen(AT_FDCWD, path, flags, 0);
}
int __open64_2(const char* path, int flags) {
    return shim::DoOpen(AT_FDCWD, path, flags, 0);
}
int __openat_2(int folder, const char* path, int flags) {
    return shim::DoOpen(folder, path, flags, 0);
}
int __openat64_2(int folder, const char* path, int flags) {
    return shim::DoOpen(folder, path, flags, 0);
}
int creat(const char* path, mode_t mode) {
    return shim::DoOpen(AT_FDCWD, path, O_CREAT | O_WRONLY | O_TRUNC, mode);
}
int creat64(const char* path, mode_t mode) {
    return shim::DoOpen(AT_FDCWD, path, O_CREAT | O_WRONLY | O_TRUNC, mode);
}

ssize_t write(int file, const void* bytes, size_t count) {
    if (shim::FaultOn(shim::Write, "write", file))
        return -1;
    return syscall(SYS_write, file, bytes, count);
}
ssize_t pwrite(int file, const void* bytes, size_t count, off_t offset) {
    if (shim::FaultOn(shim::Write, "write", file))
        return -1;
    return syscall(SYS_pwrite64, file, bytes, count, offset);
}
ssize_t pwrite64(int file, const void* bytes, size_t count, off64_t offset) {
    if (shim::FaultOn(shim::Write, "write", file))
        return -1;
    return syscall(SYS_pwrite64, file, bytes, count, offset);
}
ssize_t writev(int file, const iovec* parts, int count) {
    if (shim::FaultOn(shim::Write, "write", file))
        return -1;
    return syscall(SYS_writev, file, parts, count);
}
ssize_t sendfile(int file, int source, off_t* offset, size_t count) {
    if (shim::FaultOn(shim::Write, "write", file))
        return -1;
    return syscall(SYS_sendfile, file, source, offset, count);
}
ssize_t sendfile64(int file, int source, off64_t* offset, size_t count) {
    if (shim::FaultOn(shim::Write, "write", file))
        return -1;
    return syscall(SYS_sendfile, file, source, offset, count);
}
ssize_t copy_file_range(int source, off64_t* sourceOffset, int file, off64_t* offset, size_t count,
                        unsigned flags) {
    if (shim::FaultOn(shim::Write, "write", file))
        return -1;
    return syscall(SYS_copy_file_range, source, sourceOffset, file, offset, count, flags);
}

int fsync(int file) {
    if (shim::FaultOn(shim::Flush, "flush", file))
        return -1;
    if (shim::Spared())
        return 0;
    return static_cast<int>(syscall(SYS_fsync, file));
}
int fdatasync(int file) {
    if (shim::FaultOn(shim::Flush, "flush", file))
        return -1;
    if (shim::Spared())
        return 0;
    return static_cast<int>(syscall(SYS_fdatasync, file));
}

int ftruncate(int file, off_t length) noexcept {
    if (shim::FaultOn(shim::Resize, "resize", file))
        return -1;
    return static_cast<int>(syscall(SYS_ftruncate, file, length));
}
int ftruncate64(int file, off64_t length) noexcept {
    if (shim::FaultOn(shim::Resize, "resize", file))
        return -1;
    return static_cast<int>(syscall(SYS_ftruncate, file, length));
}
int truncate(const char* path, off_t length) noexcept {
    if (shim::FaultAt(shim::Resize, "resize", AT_FDCWD, path))
        return -1;
    return static_cast<int>(syscall(SYS_truncate, path, length));
}
int truncate64(const char* path, off64_t length) noexcept {
    if (shim::FaultAt(shim::Resize, "resize", AT_FDCWD, path))
        return -1;
    return static_cast<int>(syscall(SYS_truncate, path, length));
}

int rename(const char* from, const char* to) noexcept {
    return shim::DoRename(AT_FDCWD, from, AT_FDCWD, to, 0);
}
int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept {
    return shim::DoRename(fromFolder, from, toFolder, to, 0);
}
int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
              unsigned flags) noexcept {
    return shim::DoRename(fromFolder, from, toFolder, to, flags);
}
int link(const char* from, const char* to) noexcept {
    if (shim::FaultAt(shim::Rename, "link", AT_FDCWD, to))
        return -1;
    return static_cast<int>(syscall(SYS_linkat, AT_FDCWD, from, AT_FDCWD, to, 0));
}
int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept {
    if (shim::FaultAt(shim::Rename, "link", toFolder, to))
        return -1;
    return static_cast<int>(syscall(SYS_linkat, fromFolder, from, toFolder, to, flags));
}

int unlink(const char* path) noexcept {
    return shim::DoRemove(AT_FDCWD, path, 0);
}
int unlinkat(int folder, const char* path, int flags) noexcept {
    return shim::DoRemove(folder, path, flags);
}
int rmdir(const char* path) noexcept {
    return shim::DoRemove(AT_FDCWD, path, AT_REMOVEDIR);
}
int remove(const char* path) noexcept {
    const int done = shim::DoRemove(AT_FDCWD, path, 0);
    return done != 0 && errno == EISDIR ? shim::DoRemove(AT_FDCWD, path, AT_REMOVEDIR) : done;
}
int mkdir(const char* path, mode_t mode) noexcept {
    if (shim::FaultAt(shim::Folder, "mkdir", AT_FDCWD, path))
        return -1;
    return static_cast<int>(syscall(SYS_mkdirat, AT_FDCWD, path, mode));
}
int mkdirat(int folder, const char* path, mode_t mode) noexcept {
    if (shim::FaultAt(shim::Folder, "mkdir", folder, path))
        return -1;
    return static_cast<int>(syscall(SYS_mkdirat, folder, path, mode));
}

} // extern "C"
