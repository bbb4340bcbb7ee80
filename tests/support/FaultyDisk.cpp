#include "support/FaultyDisk.h"

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>
#include <utility>

namespace zem::test {

namespace {

using Kind = FaultyDisk::Kind;
using Outcome = FaultyDisk::Outcome;

FaultyDisk* current = nullptr;

/// The path of an open file.
std::string PathOf(int descriptor) {
    std::array<char, 4096> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = readlink(link.c_str(), path.data(), path.size());
    return {path.data(), length < 0 ? 0 : static_cast<std::size_t>(length)};
}

Outcome Decide(const char* function, Kind kind, const char* path) {
    return current == nullptr ? Outcome::Real : current->Decide(function, kind, path);
}

Outcome Decide(const char* function, Kind kind, int descriptor) {
    return current == nullptr ? Outcome::Real : current->Decide(function, kind, PathOf(descriptor));
}

/// What a function returns that has failed.
template <class Result>
Result Failed(Result result) {
    errno = current->Error();
    return result;
}

/// The function that is hidden by the one of the same name in this file.
template <class Function>
Function* Real(const char* name) {
    void* function = dlsym(RTLD_NEXT, name);
    if (function == nullptr)
        std::abort();
    return reinterpret_cast<Function*>(function);
}

template <class Result, class File, class... Arguments>
Result Call(const char* name, Kind kind, File file, Arguments... arguments) {
    if (Decide(name, kind, file) != Outcome::Real)
        return Failed<Result>(-1);
    return Real<Result(File, Arguments...)>(name)(file, arguments...);
}

/// A call that moves bytes to a file and may move fewer than it was asked to.
template <class Write>
ssize_t Transfer(const char* name, int descriptor, std::size_t count, Write write) {
    const Outcome outcome = Decide(name, Kind::Transfer, descriptor);
    if (outcome == Outcome::Fail)
        return Failed<ssize_t>(-1);
    return write(outcome == Outcome::Half ? (count + 1) / 2 : count);
}

Kind KindOfOpen(int flags) {
    return (flags & (O_WRONLY | O_RDWR | O_CREAT | O_TRUNC)) != 0 ? Kind::Change : Kind::Look;
}

int Open(const char* name, const char* path, int flags, mode_t mode) {
    if (Decide(name, KindOfOpen(flags), path) != Outcome::Real)
        return Failed(-1);
    return Real<int(const char*, int, ...)>(name)(path, flags, mode);
}

std::FILE* OpenStream(const char* name, const char* path, const char* mode) {
    if (Decide(name, *mode == 'r' ? Kind::Look : Kind::Change, path) != Outcome::Real)
        return Failed<std::FILE*>(nullptr);
    return Real<std::FILE*(const char*, const char*)>(name)(path, mode);
}

} // namespace

FaultyDisk::FaultyDisk(std::string folder, int failing, Fault fault, int error)
    : folder_(std::move(folder)),
      failing_(failing),
      fault_(fault),
      error_(error) {
    current = this;
}

FaultyDisk::~FaultyDisk() {
    current = nullptr;
}

FaultyDisk::Outcome FaultyDisk::Decide(const char* function, Kind kind, const std::string& path) {
    if (!std::string_view(path).starts_with(folder_))
        return Outcome::Real;
    const std::string name = path.size() > folder_.size() ? path.substr(folder_.size() + 1) : ".";
    calls_.push_back(std::string(function) + ' ' + name);
    const Outcome outcome = Choose(kind);
    hasFailed_ = hasFailed_ || outcome != Outcome::Real;
    return outcome;
}

FaultyDisk::Outcome FaultyDisk::Choose(Kind kind) const {
    const int call = static_cast<int>(calls_.size());
    if (failing_ == 0 || call < failing_)
        return Outcome::Real;
    switch (fault_) {
    case Fault::Once:
        return call == failing_ ? Outcome::Fail : Outcome::Real;
    case Fault::Short:
        return call == failing_ && kind == Kind::Transfer ? Outcome::Half : Outcome::Real;
    case Fault::ReadOnly:
        return kind == Kind::Look ? Outcome::Real : Outcome::Fail;
    case Fault::Dead:
        break;
    }
    return Outcome::Fail;
}

// The library's headers declare these functions differently from release to release, and as inline ones.
// Under names of their own, nothing is declared twice. Only calls from outside the C library come here: what
// a stream does with its file happens inside, so the functions of streams stand here beside those of the
// system.
extern "C" {

int FaultyOpen(const char* path, int flags, ...) __asm__("open");
int FaultyOpen(const char* path, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return Open("open", path, flags, mode);
}

int FaultyOpen64(const char* path, int flags, ...) __asm__("open64");
int FaultyOpen64(const char* path, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return Open("open64", path, flags, mode);
}

// A file is closed also when that fails.
int FaultyClose(int descriptor) __asm__("close");
int FaultyClose(int descriptor) {
    const Outcome outcome = Decide("close", Kind::Look, descriptor);
    const int result = Real<int(int)>("close")(descriptor);
    return outcome == Outcome::Real ? result : Failed(-1);
}

// A function that names the file first and returns -1 when it fails.
#define ZEM_FAULTY(result, function, kind, parameters, ...)                                                  \
    result Faulty_##function parameters __asm__(#function);                                                  \
    result Faulty_##function parameters {                                                                    \
        return Call<result>(#function, Kind::kind, __VA_ARGS__);                                             \
    }
ZEM_FAULTY(ssize_t, read, Look, (int file, void* bytes, std::size_t count), file, bytes, count)
ZEM_FAULTY(int, fsync, Change, (int file), file)
ZEM_FAULTY(int, fdatasync, Change, (int file), file)
ZEM_FAULTY(int, truncate, Change, (const char* path, off_t size), path, size)
ZEM_FAULTY(int, ftruncate, Change, (int file, off_t size), file, size)
ZEM_FAULTY(int, fchmod, Change, (int file, mode_t mode), file, mode)
ZEM_FAULTY(int, rename, Change, (const char* from, const char* to), from, to)
ZEM_FAULTY(int, remove, Change, (const char* path), path)
ZEM_FAULTY(int, unlink, Change, (const char* path), path)
ZEM_FAULTY(int, stat, Look, (const char* path, struct stat* status), path, status)
ZEM_FAULTY(int, lstat, Look, (const char* path, struct stat* status), path, status)
#undef ZEM_FAULTY

ssize_t FaultyWrite(int descriptor, const void* bytes, std::size_t count) __asm__("write");
ssize_t FaultyWrite(int descriptor, const void* bytes, std::size_t count) {
    return Transfer("write", descriptor, count, [&](std::size_t most) {
        return Real<ssize_t(int, const void*, std::size_t)>("write")(descriptor, bytes, most);
    });
}

// Half of the pieces are at least one, so that the call makes headway.
ssize_t FaultyWritev(int descriptor, const iovec* pieces, int count) __asm__("writev");
ssize_t FaultyWritev(int descriptor, const iovec* pieces, int count) {
    return Transfer("writev", descriptor, static_cast<std::size_t>(count), [&](std::size_t most) {
        return Real<ssize_t(int, const iovec*, int)>("writev")(descriptor, pieces, static_cast<int>(most));
    });
}

ssize_t FaultySendfile(int to, int from, off_t* offset, std::size_t count) __asm__("sendfile");
ssize_t FaultySendfile(int to, int from, off_t* offset, std::size_t count) {
    return Transfer("sendfile", to, count, [&](std::size_t most) {
        return Real<ssize_t(int, int, off_t*, std::size_t)>("sendfile")(to, from, offset, most);
    });
}

ssize_t FaultyCopy(int from, off64_t* in, int to, off64_t* out, std::size_t count,
                   unsigned flags) __asm__("copy_file_range");
ssize_t FaultyCopy(int from, off64_t* in, int to, off64_t* out, std::size_t count, unsigned flags) {
    return Transfer("copy_file_range", to, count, [&](std::size_t most) {
        using Copy = ssize_t(int, off64_t*, int, off64_t*, std::size_t, unsigned);
        return Real<Copy>("copy_file_range")(from, in, to, out, most, flags);
    });
}

int FaultyModeAt(int folder, const char* path, mode_t mode, int flags) __asm__("fchmodat");
int FaultyModeAt(int folder, const char* path, mode_t mode, int flags) {
    if (Decide("fchmodat", Kind::Change, path) != Outcome::Real)
        return Failed(-1);
    return Real<int(int, const char*, mode_t, int)>("fchmodat")(folder, path, mode, flags);
}

std::FILE* FaultyStream(const char* path, const char* mode) __asm__("fopen");
std::FILE* FaultyStream(const char* path, const char* mode) {
    return OpenStream("fopen", path, mode);
}

std::FILE* FaultyStream64(const char* path, const char* mode) __asm__("fopen64");
std::FILE* FaultyStream64(const char* path, const char* mode) {
    return OpenStream("fopen64", path, mode);
}

std::size_t FaultyStreamWrite(const void* bytes, std::size_t size, std::size_t count,
                              std::FILE* file) __asm__("fwrite");
std::size_t FaultyStreamWrite(const void* bytes, std::size_t size, std::size_t count, std::FILE* file) {
    using Write = std::size_t(const void*, std::size_t, std::size_t, std::FILE*);
    const Outcome outcome = Decide("fwrite", Kind::Transfer, fileno(file));
    if (outcome == Outcome::Real)
        return Real<Write>("fwrite")(bytes, size, count, file);
    return Failed(outcome == Outcome::Fail ? 0 : Real<Write>("fwrite")(bytes, size, count / 2, file));
}

std::size_t FaultyStreamRead(void* bytes, std::size_t size, std::size_t count,
                             std::FILE* file) __asm__("fread");
std::size_t FaultyStreamRead(void* bytes, std::size_t size, std::size_t count, std::FILE* file) {
    using Read = std::size_t(void*, std::size_t, std::size_t, std::FILE*);
    if (Decide("fread", Kind::Look, fileno(file)) == Outcome::Real)
        return Real<Read>("fread")(bytes, size, count, file);
    std::fputc(0, file); // which a file that is open for reading refuses, and so has its mark of an error
    return Failed<std::size_t>(0);
}

int FaultyStreamClose(std::FILE* file) __asm__("fclose");
int FaultyStreamClose(std::FILE* file) {
    const Outcome outcome = Decide("fclose", Kind::Look, fileno(file));
    const int result = Real<int(std::FILE*)>("fclose")(file);
    return outcome == Outcome::Real ? result : Failed(EOF);
}

} // extern "C"

} // namespace zem::test
