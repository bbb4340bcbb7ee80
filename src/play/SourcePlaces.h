#pragma once

#include "game/ScriptOwners.h"
#include "play/World.h"
#include "reader/SourceLines.h"

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

namespace zem::play {

/// Says where in a game something stands that was played: a command, an "if" line, a printed text.
class SourcePlaces {
public:
    explicit SourcePlaces(std::shared_ptr<const World> world);

    /// Nothing for what stands in no file of the author's game: a library, or the player program itself.
    std::optional<Place> PlaceOf(const Source& source) const;

    /// In plain words, as its owner's: "object lamp in Hall, take, line 2". Empty for a place that is none.
    std::string Describe(const Source& source) const;

    /// The line of the game's file, from 1; 0 where it is not known.
    std::size_t LineOf(const Source& source, const SourceLines& lines) const;

private:
    std::shared_ptr<const World> world_;
    ScriptOwners owners_;
    std::unordered_map<const Book*, Place> records_;
};

} // namespace zem::play
