#pragma once

#include "base/TextRange.h"
#include "model/Fields.h"

#include <array>
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zem {

/// One step on the way to a record: an entry of a list, or a record of its own such as an exit.
struct PlaceStep {
    FieldId list = FieldId::None;
    int entry = 0; // from 1; 0 for a record of its own

    bool operator==(const PlaceStep&) const = default;
};

/// A place in a game: what problems, hits and errors point at, and what editors open. It is a plain value
/// that stays good as long as the entries before it keep their numbers; Resolve tells whether it still leads
/// somewhere.
///
/// The look of the first object of the second room is Of({{GameRooms, 2}, {RoomObjects, 1}}, ThingLook).
struct Place {
    static constexpr std::size_t Deepest = 3; // room, object, use

    std::array<PlaceStep, Deepest> steps; // to the record; those that are not needed are None
    FieldId field = FieldId::None;        // None for the record as a whole
    TextRange bytes;                      // of the field's text; empty for all of it

    /// @param steps  at most Deepest
    static Place Of(std::initializer_list<PlaceStep> steps, FieldId field = FieldId::None,
                    TextRange bytes = {});

    /// How many steps lead to the record, 0 for the game's own fields.
    std::size_t Depth() const;

    /// The same place without bytes: of the whole field.
    Place WholeField() const;

    bool operator==(const Place&) const = default;
};

/// What a place leads to. The pointers are good as long as the game is not changed.
struct ResolvedPlace {
    struct Step {
        const char* list = nullptr;       // in plain words: "object"
        const std::string* key = nullptr; // what the entry is called by; null for a record of its own
        int entry = 0;
    };

    std::vector<Step> steps;
    const char* field = nullptr;       // in plain words: "look"; null for the record as a whole
    FieldUse use;                      // of the field, or of the list of texts whose entry this is
    const std::string* text = nullptr; // null where no text stands
};

/// Where the place leads to; nothing when the game has no such entry, or no so many bytes there.
std::optional<ResolvedPlace> Resolve(const GameModel& game, const Place& place);

/// The whole text of the field of a place; empty where the game has no such place or it holds no text.
std::string_view TextAt(const GameModel& game, const Place& place);

/// Whether the game has the place.
bool Exists(const GameModel& game, const Place& place);

/// The place in plain words: "object flowerpot in Garden, look, line 2". The line is told where the text
/// has several.
std::string DescribePlace(const GameModel& game, const Place& place);

/// The 1-based line of a text in which the byte stands.
int LineOfByte(std::string_view text, std::size_t byte);

} // namespace zem
