#pragma once

#include "play/World.h"

#include <memory>
#include <optional>
#include <string_view>

/// Single records made ready for playing. What they make hangs on the record and the numbers of names alone,
/// so it can be taken over as long as the record is the same.
namespace zem::play {

std::shared_ptr<const WorldRoom> MakeRoom(Names& names, const Room& record);
std::shared_ptr<const WorldProcedure> MakeProcedure(Names& names, const Procedure& record);
std::shared_ptr<const WorldMenu> MakeMenu(Names& names, const SelectionMenu& record);
std::shared_ptr<const WorldText> MakeText(Names& names, const TextSection& record);

/// @param isLibrary  of a library's game block only commands and uses count
std::shared_ptr<const WorldGame> MakeGame(Names& names, const GameModel& game, bool isLibrary);

WorldCollectable MakeCollectable(Names& names, const Collectable& record, std::int64_t& initial);

/// The timers that blocks of other kinds define; their actions go to the book.
void AddTimers(Names& names, Book& book, std::string_view blocks,
               std::vector<std::pair<Number, WorldTimer>>& timers);

/// The value kept between the limits of the collectable.
std::int64_t InRange(const WorldCollectable& collectable, std::int64_t value);

/// The number at the start of a text, rounded as collectables are.
std::int64_t RoundedNumber(std::string_view text);

} // namespace zem::play
