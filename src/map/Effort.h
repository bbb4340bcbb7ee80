#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <utility>

namespace zem::map {

/// How much work a layout may do, and whether it was told to stop. Counted in steps of the network, not in
/// seconds, so that a map comes out the same on a slow machine; the clock is only the last resort.
class Effort {
public:
    Effort(std::int64_t steps, std::function<bool()> stop) : steps_(steps), stop_(std::move(stop)) {}

    /// A part of what is left, at most so many steps; whoever uses it up spends that here, too.
    Effort Part(std::int64_t steps) const { return {std::min(steps, steps_ - spent_), stop_}; }

    void Spend(std::int64_t steps) { spent_ += steps; }
    bool IsOver() const { return spent_ >= steps_ || stop_(); }
    std::int64_t Spent() const { return spent_; }

private:
    std::int64_t steps_;
    std::int64_t spent_ = 0;
    std::function<bool()> stop_;
};

} // namespace zem::map
