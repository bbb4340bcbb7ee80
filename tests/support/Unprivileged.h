#pragma once

#include <stdexcept>
#include <unistd.h>

namespace zem::test {

/// While one lives, file permissions bind this process, also when root runs the tests.
class Unprivileged {
public:
    Unprivileged() : wasRoot_(geteuid() == 0) {
        if (wasRoot_ && seteuid(65534) != 0)
            throw std::runtime_error("cannot give up privileges");
    }
    ~Unprivileged() {
        if (wasRoot_ && seteuid(0) != 0)
            _exit(1);
    }
    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;

private:
    bool wasRoot_;
};

} // namespace zem::test
