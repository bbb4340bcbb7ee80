#pragma once

#include "game/GameIndex.h"
#include "game/NewName.h"
#include "game/PlaceLine.h"
#include "game/TextChanges.h"
#include "model/NameKind.h"
#include "model/Place.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Renaming something with all that refers to it: first a plan, from which the author may take ticks away,
/// then one change.
namespace zem {

struct RenameRequest {
    NameKind kind = NameKind::None; // that of something with a name of its own, so neither Thing nor File
    std::string oldName;
    std::string newName; // as typed
    // The object of the item's name, or the item of the object's: one thing to the player.
    bool withTwin = false;
    bool merge = false;           // two flags, variables or timers may become one
    std::vector<Place> only = {}; // the things to rename, where several have the name; empty for all
};

enum class ChangeReason : std::uint8_t {
    Definition,    // its name
    Reference,     // refers to it
    OtherCapitals, // would refer to it if its capitals were right: names are compared exactly
    Twin,          // name or reference of the item or object of the same name
    Mention        // the same words in what is printed or typed, or in a line that nobody knows
};

/// In plain words: "reference".
const char* Describe(ChangeReason reason);

struct RenameChange {
    TextChange change;
    ChangeReason reason = ChangeReason::Reference;
    NameKind kind = NameKind::None; // of what is referred to
    bool isTicked = false;
    LineInContext before;
    LineInContext after; // if nothing else were changed in this line
};

/// A name that becomes another one.
struct NameChange {
    NameKind kind = NameKind::None;
    std::string from;
    std::string to;
};

struct RenamePlan {
    NewNameAnswer answer;
    std::vector<RenameChange> changes; // in the order of the game, mentions last; none if the answer is no
    bool hasMoreMentions = false;      // than are in the list
    // What may mean it, being made of variables: never changed.
    std::vector<Place> mayMean;
    // The other one of item and object that is called so, too; nothing where there is none.
    std::optional<NameKind> twin;
    bool isAllowed = false; // whether the plan may be carried out

    /// The names that change with it, for what lies beside the game and calls things by name.
    std::vector<NameChange> names;
};

/// What would be changed by a rename, with what is said to the new name.
/// @param most  how many mentions are wanted
RenamePlan PlanRename(const GameIndex& index, const RenameRequest& request, std::size_t most = 1000);

/// The same for who asks once.
RenamePlan PlanRename(const GameModel& game, const CommandLookup& commands, const RenameRequest& request);

/// Makes the ticked changes. Returns how many. Throws KelError, and changes nothing, when the plan is not
/// allowed or the game is not the one that it was made for.
int CarryOut(const RenamePlan& plan, GameModel& game);

} // namespace zem
