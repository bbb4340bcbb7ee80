#include "play/Interpreter.h"
#include "play/Limits.h"

#include <algorithm>

/// What runs by itself when time passes at the prompt.
namespace zem::play {

namespace {

Cell WaitAt(std::int64_t index) {
    return static_cast<Cell>(FirstWait + static_cast<Cell>(index) * WaitCells);
}

/// Something that is due: the earlier first, and of the same time what was started first.
struct Due {
    std::int64_t time = 0;
    std::int64_t sequence = 0;
    Cell cells = 0; // of the wait, or of the timer
    const WorldTimer* timer = nullptr;

    bool IsBefore(const Due& other) const {
        return time < other.time || (time == other.time && sequence < other.sequence);
    }
};

} // namespace

void Interpreter::StartWait(Number procedure, std::int64_t seconds) {
    const std::int64_t count = state_[WaitCount];
    if (count >= static_cast<std::int64_t>(MostWaits))
        return;
    const Cell cells = WaitAt(count);
    state_.Set(cells + WaitDue, state_[Now] + std::max<std::int64_t>(seconds, 0));
    state_.Set(cells + WaitSequence, state_[Sequence]);
    state_.Set(cells + WaitProcedure, static_cast<std::int64_t>(procedure) + 1);
    state_.Set(WaitCount, count + 1);
    state_.Set(Sequence, state_[Sequence] + 1);
}

void Interpreter::StartTimer(Number timer) {
    const Cell cells = CellOf(Kind::Timer, timer);
    state_.Set(cells + TimerOn, 1);
    if (const WorldTimer* definition = world_.FindTimer(timer)) {
        state_.Set(cells + TimerDue, state_[Now] + definition->interval);
        state_.Set(cells + TimerSequence, state_[Sequence]);
        state_.Set(Sequence, state_[Sequence] + 1);
    }
}

std::optional<std::int64_t> Interpreter::NextDue() const {
    std::optional<std::int64_t> next;
    const auto offer = [&](std::int64_t time) { next = std::min(next.value_or(time), time); };
    for (std::int64_t k = 0; k < state_[WaitCount]; ++k)
        offer(state_[WaitAt(k) + WaitDue]);
    for (const auto& [timer, definition] : world_.Timers()) {
        const Cell cells = CellOf(Kind::Timer, timer);
        if (state_[cells + TimerOn] != 0)
            offer(state_[cells + TimerDue]);
    }
    return next;
}

bool Interpreter::RunDue() {
    // What starts while this runs waits for the next prompt, or it might go on for ever.
    const std::int64_t horizon = state_[Sequence];
    while (stop_ == Stop::None) {
        Due first;
        const auto offer = [&](const Due& due) {
            if (due.time <= state_[Now] && due.sequence < horizon &&
                (first.cells == 0 || due.IsBefore(first)))
                first = due;
        };
        for (std::int64_t k = 0; k < state_[WaitCount]; ++k)
            if (const Cell cells = WaitAt(k); state_[cells + WaitProcedure] != 0)
                offer({state_[cells + WaitDue], state_[cells + WaitSequence], cells, nullptr});
        for (const auto& [timer, definition] : world_.Timers())
            if (const Cell cells = CellOf(Kind::Timer, timer);
                state_[cells + TimerOn] != 0 && world_.FindTimer(timer) == &definition)
                offer({state_[cells + TimerDue], state_[cells + TimerSequence], cells, &definition});
        if (first.cells == 0)
            break;
        Spend(static_cast<std::size_t>(state_[WaitCount]) + world_.Timers().size());
        if (first.timer != nullptr) {
            state_.Set(first.cells + TimerDue, first.time + first.timer->interval);
            Run(first.timer->action);
        } else {
            const auto procedure = static_cast<Number>(state_[first.cells + WaitProcedure] - 1);
            state_.Set(first.cells + WaitProcedure, 0);
            RunProcedure(procedure, {});
        }
    }
    DropRunWaits();
    return stop_ == Stop::None;
}

void Interpreter::DropRunWaits() {
    std::int64_t kept = 0;
    for (std::int64_t k = 0; k < state_[WaitCount]; ++k) {
        if (state_[WaitAt(k) + WaitProcedure] == 0)
            continue;
        for (Cell part = 0; part < WaitCells; ++part)
            state_.Set(WaitAt(kept) + part, state_[WaitAt(k) + part]);
        ++kept;
    }
    for (std::int64_t k = kept; k < state_[WaitCount]; ++k)
        for (Cell part = 0; part < WaitCells; ++part)
            state_.Set(WaitAt(k) + part, 0);
    state_.Set(WaitCount, kept);
}

void Interpreter::PassSeconds(std::int64_t seconds) {
    const std::int64_t end = state_[Now] + seconds;
    while (stop_ == Stop::None && state_[Now] < end) {
        const std::optional<std::int64_t> next = NextDue();
        const std::int64_t time = std::max(next.value_or(end), state_[Now] + 1);
        state_.Set(Now, std::min(time, end));
        if (time <= end)
            RunDue();
    }
    if (stop_ == Stop::None || stop_ == Stop::Limit)
        state_.Set(Now, std::max(end, state_[Now]));
}

} // namespace zem::play
