#pragma once

#include "model/GameModel.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace zem {

/// The steps that the author has gone, each with the whole game after it, so that all of them can be gone
/// back and forth. The games share what did not change.
class History {
public:
    /// Forgets all steps and begins with this game.
    /// @param isSaved  whether the file on disk holds it
    void Begin(const GameModel& game, bool isSaved);

    /// Adds a step after the current one; steps that were undone are gone. False, and nothing happens, for a
    /// game that is as it was before.
    /// @param name  as a menu would say it: "add room"
    bool Record(const std::string& name, const GameModel& game);

    /// The file on disk holds the game of the current step from now on.
    void MarkSaved() { saved_ = current_; }
    bool IsSaved() const { return saved_ == current_; }

    /// How many steps there are, and how many of them are done; the others were undone.
    std::size_t Count() const { return steps_.size() - 1; }
    std::size_t Done() const { return current_; }

    /// The name of a step, 1 to Count().
    const std::string& Name(std::size_t step) const { return steps_[step].name; }

    /// The game after so many steps, 0 to Count().
    const GameModel& Game(std::size_t step) const { return steps_[step].game; }

    /// Makes it as if just so many steps were done, 0 to Count().
    const GameModel& GoTo(std::size_t step) {
        current_ = step;
        return steps_[step].game;
    }

private:
    struct Step {
        std::string name; // empty for the first, which is where all begins
        GameModel game;
    };

    std::vector<Step> steps_{1};
    std::size_t current_ = 0;
    std::optional<std::size_t> saved_ = 0; // none once that step is gone
};

} // namespace zem
