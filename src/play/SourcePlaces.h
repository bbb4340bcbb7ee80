#pragma once

#include "game/ScriptOwners.h"
#include "play/StoryPlaces.h"
#include "reader/SourceLines.h"

#include <memory>
#include <optional>
#include <string>

namespace zem::play {

/// Says in which line of a game's file something stands that was played: a command, an "if" line, a printed
/// text.
class SourcePlaces {
public:
    explicit SourcePlaces(std::shared_ptr<const World> world);

    /// The line of a text or script; the record where no line is told. Nothing for what stands in no file of
    /// the author's game: a library, or the player program itself.
    std::optional<Place> PlaceOf(const Source& source) const;

    /// In plain words, as its owner's: "object lamp in Hall, take, line 2". Empty for a place that is none.
    std::string Describe(const Source& source) const;

    /// The line of the game's file, from 1; 0 where it is not known.
    std::size_t LineOf(const Source& source, const SourceLines& lines) const;

private:
    const GameModel& Game() const { return places_.GetWorld().Game(); }

    StoryPlaces places_;
    ScriptOwners owners_;
};

} // namespace zem::play
