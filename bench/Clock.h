#pragma once

#include <chrono>

namespace zem::bench {

using Clock = std::chrono::steady_clock;

inline double Seconds(Clock::duration duration) {
    return std::chrono::duration<double>(duration).count();
}

} // namespace zem::bench
