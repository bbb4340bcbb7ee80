#pragma once

#include <csignal>
#include <sys/resource.h>

namespace zem::test {

/// Lets no file grow beyond a size while it lives.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes = 100'000) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &unlimited_);
        rlimit small = unlimited_;
        small.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &unlimited_); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit unlimited_{};
};

} // namespace zem::test
