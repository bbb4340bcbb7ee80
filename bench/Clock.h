#pragma once

#include <chrono>
#include <ctime>

namespace zem::bench {

using Clock = std::chrono::steady_clock;

/// The processor time that one of the system's clocks counts, so that other programs disturb as little as can
/// be and waiting for the disk counts nothing.
template <clockid_t Id>
struct ProcessorClock {
    using duration = std::chrono::nanoseconds;
    using rep = duration::rep;
    using period = duration::period;
    using time_point = std::chrono::time_point<ProcessorClock>;
    static constexpr bool is_steady = true;

    static time_point now() {
        timespec time{};
        clock_gettime(Id, &time);
        return time_point(std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec));
    }
};
using ProcessClock = ProcessorClock<CLOCK_PROCESS_CPUTIME_ID>;
using ThreadClock = ProcessorClock<CLOCK_THREAD_CPUTIME_ID>;

inline double Seconds(std::chrono::nanoseconds duration) {
    return std::chrono::duration<double>(duration).count();
}

} // namespace zem::bench
