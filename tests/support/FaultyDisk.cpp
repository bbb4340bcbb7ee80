#include "support/FaultyDisk.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <string_view>
#include <sys/stat.h>
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

/// Closes the file also when that is to fail.
template <class File>
int Close(const char* name, int descriptor, File file) {
    const Outcome outcome = Decide(name, Kind::Look, descriptor);
    const int result = Real<int(File)>(name)(file);
    return outcome == Outcome::Real ? result : Failed(-1);
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
// system. A function that no save calls would stand here in vain.
extern "C" {

#define ZEM_FAULTY(result, function, failure, kind, file, parameters, ...)                                   \
    result Faulty_##function parameters __asm__(#function);                                                  \
    result Faulty_##function parameters {                                                                    \
        if (Decide(#function, Kind::kind, file) != Outcome::Real)                                            \
            return Failed<result>(failure);                                                                  \
        return Real<decltype(Faulty_##function)>(#function)(__VA_ARGS__);                                    \
    }
// Whoever opens a file only to read it gives no mode; what stands in its place is then handed on unused.
ZEM_FAULTY(int, open, -1, Look, path, (const char* path, int flags, mode_t mode), path, flags, mode)
ZEM_FAULTY(int, fsync, -1, Change, file, (int file), file)
ZEM_FAULTY(int, rename, -1, Change, from, (const char* from, const char* to), from, to)
ZEM_FAULTY(int, remove, -1, Change, path, (const char* path), path)
ZEM_FAULTY(int, stat, -1, Look, path, (const char* path, struct stat* status), path, status)
ZEM_FAULTY(int, lstat, -1, Look, path, (const char* path, struct stat* status), path, status)
ZEM_FAULTY(int, fchmodat, -1, Change, path, (int folder, const char* path, mode_t mode, int flags), folder,
           path, mode, flags)
#undef ZEM_FAULTY

int FaultyClose(int descriptor) __asm__("close");
int FaultyClose(int descriptor) {
    return Close("close", descriptor, descriptor);
}

int FaultyStreamClose(std::FILE* file) __asm__("fclose");
int FaultyStreamClose(std::FILE* file) {
    return Close("fclose", fileno(file), file);
}

std::FILE* FaultyStream(const char* path, const char* mode) __asm__("fopen");
std::FILE* FaultyStream(const char* path, const char* mode) {
    if (Decide("fopen", *mode == 'r' ? Kind::Look : Kind::Change, path) != Outcome::Real)
        return Failed<std::FILE*>(nullptr);
    return Real<decltype(FaultyStream)>("fopen")(path, mode);
}

std::size_t FaultyWrite(const void* bytes, std::size_t size, std::size_t count,
                        std::FILE* file) __asm__("fwrite");
std::size_t FaultyWrite(const void* bytes, std::size_t size, std::size_t count, std::FILE* file) {
    const auto write = Real<decltype(FaultyWrite)>("fwrite");
    const Outcome outcome = Decide("fwrite", Kind::Transfer, fileno(file));
    if (outcome == Outcome::Real)
        return write(bytes, size, count, file);
    return Failed(outcome == Outcome::Fail ? 0 : write(bytes, size, count / 2, file));
}

std::size_t FaultyRead(void* bytes, std::size_t size, std::size_t count, std::FILE* file) __asm__("fread");
std::size_t FaultyRead(void* bytes, std::size_t size, std::size_t count, std::FILE* file) {
    if (Decide("fread", Kind::Look, fileno(file)) == Outcome::Real)
        return Real<decltype(FaultyRead)>("fread")(bytes, size, count, file);
    std::fputc(0, file); // A file that is open for reading refuses this and sets its error mark.
    return Failed<std::size_t>(0);
}

} // extern "C"

} // namespace zem::test
