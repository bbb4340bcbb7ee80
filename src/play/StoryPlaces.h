#pragma once

#include "model/Place.h"
#include "play/Outcome.h"
#include "play/World.h"

#include <memory>
#include <optional>
#include <unordered_map>

namespace zem::play {

/// Where the lines of a running game stand in the game that it was made of.
class StoryPlaces {
public:
    explicit StoryPlaces(std::shared_ptr<const World> world);

    /// The line of the script, or the whole text for what is no script. Nothing for what stands in a library,
    /// is a message of the player program, or belongs to another version of the game.
    std::optional<Place> PlaceOf(const Source& source) const;

    /// The text of that line; empty where PlaceOf gives nothing.
    std::string LineOf(const Source& source) const;

    /// The place in plain words; what stands in a library is told, too. Empty without a book.
    std::string Describe(const Source& source) const;

    /// The record in which the source stands; nothing where PlaceOf could not tell it either.
    std::optional<Place> RecordOf(const Source& source) const;

    const World& GetWorld() const { return *world_; }

private:
    /// The record of a book, as the first steps of its places.
    struct Record {
        PlaceStep first;
        PlaceStep second; // of a thing
    };

    std::optional<Place> FieldOf(const Source& source) const;

    std::shared_ptr<const World> world_;
    std::unordered_map<const Book*, Record> records_;
};

/// The same source in a changed game: the text of the same name. Without a book when the game has it no more.
/// @param source  of a version of the game that still exists
Source SourceIn(const World& changed, const Source& source);

} // namespace zem::play
