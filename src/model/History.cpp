#include "model/History.h"

namespace zem {

void History::Begin(const GameModel& game, bool isSaved) {
    steps_.assign(1, {{}, game});
    current_ = 0;
    saved_ = isSaved ? std::optional<std::size_t>(0) : std::nullopt;
}

bool History::Record(const std::string& name, const GameModel& game) {
    if (SameGame(game, steps_[current_].game))
        return false;
    steps_.resize(current_ + 1);
    if (saved_ > current_)
        saved_.reset();
    steps_.push_back({name, game});
    ++current_;
    return true;
}

} // namespace zem
