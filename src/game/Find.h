#pragma once

#include "game/GameIndex.h"
#include "model/NameKind.h"
#include "model/Place.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Finding words anywhere in a game.
namespace zem {

/// What stands where words were found.
enum class HitKind : std::uint8_t {
    Name,        // what something is called
    Reference,   // the name of something else, in a field or in a script
    PrintedText, // what the player reads
    Script,      // a command, or a part of its parameter that is neither a name nor printed
    Pattern,     // what a player may type
    RawLine,     // in lines and blocks that are kept as they are
    Setting      // anything else: a font, the gender of a character, the settings of a collectable
};

/// All kinds, in the order in which they are offered.
inline constexpr HitKind HitKinds[] = {HitKind::PrintedText, HitKind::Name,    HitKind::Reference,
                                       HitKind::Script,      HitKind::Pattern, HitKind::RawLine,
                                       HitKind::Setting};

/// In plain words: "printed text".
const char* Describe(HitKind kind);

/// A set of kinds.
class HitKindSet {
public:
    HitKindSet() = default;
    HitKindSet(std::initializer_list<HitKind> kinds) {
        for (const HitKind kind : kinds)
            Add(kind);
    }
    void Add(HitKind kind) { bits_ |= Bit(kind); }
    bool Contains(HitKind kind) const { return (bits_ & Bit(kind)) != 0; }
    bool IsEmpty() const { return bits_ == 0; }

private:
    static unsigned Bit(HitKind kind) { return 1U << static_cast<unsigned>(kind); }
    unsigned bits_ = 0;
};

struct FindQuery {
    std::string words; // in Windows-1252
    bool isRegularExpression = false;
    bool wholeWords = false;
    bool capitals = false; // they must be the same
    HitKindSet kinds = {}; // that are wanted; empty for all
};

struct FindHit {
    Place place; // with the bytes found
    HitKind kind = HitKind::PrintedText;
};

struct FindResult {
    std::vector<FindHit> hits; // the first ones
    std::size_t count = 0;     // of all
    // What is wrong with a regular expression, one sentence. The hits are those found before.
    std::string problem;
};

/// The places where the words stand, in the order of the game's lists. Hits in one text do not overlap.
/// @param most  how many hits are wanted; all are counted
FindResult Find(const GameIndex& index, const FindQuery& query, std::size_t most = 1000);

/// The name in a field or script that holds some byte of the place, the shortest one; a variable in a printed
/// text is one, too. What to rename where a hit is a name or a reference. Nothing where there is none.
std::optional<Reference> NameAt(const GameIndex& index, const Place& place);

/// Something with a name, for whoever is asked about it or shall rename it.
struct NamedThing {
    NameKind kind = NameKind::None; // neither Thing nor File
    std::string name;

    bool operator==(const NamedThing&) const = default;
};

/// What is called by the name at the place; of a place without bytes, what the record or the field is about.
/// A script that means "a character or an object" means the character where both are called so. Nothing for
/// the name of a file or of an internal procedure, which nobody gave.
std::optional<NamedThing> NamedAt(const GameIndex& index, const Place& place);

} // namespace zem
