#pragma once

#include "model/GameModel.h"

#include <string>
#include <string_view>
#include <vector>

/// Internal procedures are numbers that authors never see: what they know is one script of several lines. So
/// versions are compared with the bodies of these procedures in the place of their calls, in braces as an
/// author would write them, and the numbers are given anew afterwards.
///
/// A brace that stands for a procedure is marked with a tab, which no line of a game file keeps:
///
///     if flag <x> then {\to12\t       opens number 12 of version 'o'
///     msg <Hello.>
///     }\t+ else msg <No.>             closes it; "-" when the last line of the body has no line end
namespace zem::merge {

struct InlineGame {
    GameModel game;            // all procedures still stand in their places
    std::vector<bool> inlined; // by entry, from 1: procedures that now stand where they are called
};

/// @param version  a letter that tells the numbers of one version from those of another
InlineGame WithInlineScripts(const GameModel& game, char version);

/// Puts procedures back in the place of marked braces. Numbers of version 'o' stay, others change where they
/// are taken. Returns, for each procedure of the game before, the entry it has now.
/// @param order  the version whose procedures' order is kept
std::vector<int> PutProceduresBack(GameModel& game, const GameModel& order);

/// The text with plain braces, for people.
std::string WithoutMarks(std::string_view text);

/// True when both are the same but for the numbers of internal procedures.
bool SameText(std::string_view a, std::string_view b);

/// Whether each marked brace has its partner: lines taken from two versions may have lost one.
bool BracesMatch(std::string_view text);

} // namespace zem::merge
