#include "walk/StateArchive.h"

#include <algorithm>
#include <utility>

namespace zem::walk {

int StateArchive::Find(std::uint64_t key) const {
    const auto found = numbers_.find(key);
    return found == numbers_.end() ? -1 : found->second;
}

bool StateArchive::IsWanted(std::uint64_t key, std::uint32_t depth) const {
    const int known = Find(key);
    if (known < 0)
        return states_.size() < most_ && bytes_ < MostBytes;
    // Ways of other states begin in it, so a little shorter is not worth the longer way of those.
    return depth + 2 < states_[static_cast<std::size_t>(known)].depth;
}

int StateArchive::Keep(KeptState kept) {
    const auto number = static_cast<int>(states_.size());
    if (const int known = Find(kept.key); known >= 0)
        kept.trials = states_[static_cast<std::size_t>(known)].trials;
    numbers_[kept.key] = number; // one that is known stays for those whose way begins in it
    bytes_ += sizeof(KeptState) + kept.changes.size() * sizeof(KeptState::Change) +
              kept.traits.size() * sizeof(KeptState::Trait);
    for (const std::string& text : kept.texts)
        bytes_ += sizeof(text) + text.size();
    for (const WalkStep& step : kept.steps)
        bytes_ += sizeof(step) + step.line.size() + step.answers.size() * sizeof(std::string);
    states_.push_back(std::move(kept));
    return number;
}

std::vector<WalkStep> StateArchive::WayTo(int number) const {
    std::vector<const KeptState*> chain;
    for (; number >= 0; number = chain.back()->parent)
        chain.push_back(&states_[static_cast<std::size_t>(number)]);
    std::vector<WalkStep> way;
    for (auto state = chain.rbegin(); state != chain.rend(); ++state)
        way.insert(way.end(), (*state)->steps.begin(), (*state)->steps.end());
    return way;
}

void NoteChanges(const play::State& state, const play::Names& names, const play::State::Mark& since,
                 KeptState& kept) {
    std::vector<play::Cell> cells;
    state.ForEachWriteSince(since, [&](play::Cell cell, std::int64_t) { cells.push_back(cell); });
    std::sort(cells.begin(), cells.end());
    cells.erase(std::unique(cells.begin(), cells.end()), cells.end());
    for (const play::Cell cell : cells) {
        KeptState::Change change{cell, state[cell], -1};
        if (names.Use(cell) == play::CellUse::Text) {
            change.text = static_cast<std::int32_t>(kept.texts.size());
            kept.texts.push_back(state.Text(cell));
        }
        kept.changes.push_back(change);
    }
}

void StateArchive::GoTo(int number, play::State& state, const play::State::Mark& start) {
    state.GoBackTo(start);
    ++round_;
    // From the last state to the first: what was written later counts.
    while (number >= 0) {
        const KeptState& kept = states_[static_cast<std::size_t>(number)];
        for (const KeptState::Change& change : kept.changes) {
            if (std::exchange(writtenIn_[change.cell], round_) == round_)
                continue;
            if (change.text < 0)
                state.Set(change.cell, change.value);
            else
                state.SetText(change.cell, kept.texts[static_cast<std::size_t>(change.text)]);
        }
        number = kept.parent;
    }
}

} // namespace zem::walk
