#pragma once

#include "game/GameIndex.h"

#include <mutex>

namespace zem {

/// The index of the open game that finding, "where used" and renaming share. Questions come from several
/// threads and are answered one at a time.
class SearchIndex {
public:
    /// @param commands  outlives this object
    explicit SearchIndex(const CommandLookup& commands) : index_(commands) {}

    /// What question(index) gives for this version of the game.
    template <class Question>
    auto Ask(const GameModel& game, const Question& question) {
        const std::lock_guard<std::mutex> lock(mutex_);
        index_.GoOnTo(game);
        return question(index_);
    }

private:
    std::mutex mutex_;
    GameIndex index_;
};

} // namespace zem
