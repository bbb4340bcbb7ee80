#pragma once

#include <string>
#include <vector>

namespace zem::test {

enum class Fault {
    Once,     // One call fails.
    Short,    // A write gets half of its bytes to the disk, as on a full one.
    ReadOnly, // Nothing can be changed from then on, as after a remount.
    Dead,     // Every call fails from then on.
};

/// While one lives, the calls of the C library that touch a folder or the files in it are counted, and made
/// to fail. Links to a program that has FaultyDisk.cpp in it, whose functions stand before those of the
/// library. One at a time.
class FaultyDisk {
public:
    /// @param folder   absolute and without links
    /// @param failing  1 for the first call, and so on; 0 for none
    /// @param error    the value of errno
    FaultyDisk(std::string folder, int failing, Fault fault, int error);
    ~FaultyDisk();
    FaultyDisk(const FaultyDisk&) = delete;
    FaultyDisk& operator=(const FaultyDisk&) = delete;

    /// The calls so far: the function, a blank and the name of the file, or "." for the folder.
    const std::vector<std::string>& Calls() const { return calls_; }
    bool HasFailed() const { return hasFailed_; }

    enum class Kind { Look, Change, Transfer }; // Transfer is a change that carries bytes.
    enum class Outcome { Real, Half, Fail };
    Outcome Decide(const char* function, Kind kind, const std::string& path);
    int Error() const { return error_; }

private:
    Outcome Choose(Kind kind) const;

    std::string folder_;
    int failing_;
    Fault fault_;
    int error_;
    bool hasFailed_ = false;
    std::vector<std::string> calls_;
};

} // namespace zem::test
