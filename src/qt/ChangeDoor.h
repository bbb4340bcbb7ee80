#pragma once

#include "model/GameModel.h"

#include <functional>

namespace zem {

/// The one door for changes of the game, as the forms see it.
class ChangeDoor {
public:
    virtual ~ChangeDoor() = default;

    virtual const GameModel& Game() const = 0;

    /// Runs an editing command on the game, tells everybody, and marks the game as modified. When the command
    /// throws, the game is as it was before, and the exception goes on.
    virtual void Change(const std::function<void(GameModel&)>& change) = 0;

    /// Marks the game as holding changes that are not saved, without changing it.
    virtual void MarkModified() = 0;
};

} // namespace zem
