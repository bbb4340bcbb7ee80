#pragma once

#include "problems/CheckedGame.h"
#include "problems/Seeder.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What the kinds of faults share: finding a place that can be spoiled, and spoiling it.
namespace zem::test {

/// A place of a script and the text that stands there: a part, a keyword or a whole line.
struct Found {
    Place place;
    std::string text;
};

/// Collects the places that a fault could be planted at.
using Wanted = std::function<void(const problems::CheckedGame&, std::vector<Found>&)>;

bool Replace(GameModel& game, const Found& found, const std::string& text);

/// One of what `collect` finds in the scripts; nothing when there is none.
std::optional<Found> PickFound(const GameModel& game, Seeder& seeder, const Wanted& collect);

Wanted PartsOf(std::vector<std::string_view> keywords, std::size_t part);

Wanted KeywordsOf(bool conditions);

/// Whole lines that begin with the word and hold the other.
Wanted LinesWith(std::string_view word, std::string_view other);

/// Misspells a name so that nothing else is called so.
bool MisspellPart(GameModel& game, Seeder& seeder, std::vector<std::string_view> keywords, std::size_t part);

bool Capitals(GameModel& game, Seeder& seeder, std::vector<std::string_view> keywords);

/// Spoils one of the whole lines that begin with a word and hold another.
bool SpoilLine(GameModel& game, Seeder& seeder, std::string_view word, std::string_view other,
               std::string (*spoil)(std::string line));

std::string With(std::string text, std::string_view from, std::string_view to);

Thing& AddObject(GameModel& game, int room, std::string name);

int PickRoom(const GameModel& game, Seeder& seeder);

/// Places of the things that `accepts` wants.
std::vector<std::pair<int, int>> Objects(const GameModel& game, bool (*accepts)(const Thing&));

/// Printed texts of rooms and scripts, which format codes may spoil.
bool SpoilText(GameModel& game, Seeder& seeder, const std::function<std::string(const std::string&)>& spoil);

std::vector<Shared<ScriptPair> Room::*> Exits();

/// Removes all exits and places of a room, or all that lead to it, and what scripts say of it.
bool Unlink(GameModel& game, const std::string& name, bool inward);

/// Whether any script has the name: then it may lead there or away.
bool IsInScripts(const GameModel& game, const std::string& name);

bool UnlinkRoom(GameModel& game, Seeder& seeder, bool inward);

} // namespace zem::test
