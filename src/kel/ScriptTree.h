#pragma once

#include "kel/IfLine.h"
#include "model/GameModel.h"

#include <string>
#include <vector>

/// A script as its author sees it: lines, of which some hold scripts themselves. Several lines in one field,
/// or in one branch of an "if", stand in an internal procedure that the field or branch calls; authors never
/// see that.
namespace zem {

/// Which script of a line a way goes into.
enum class Branch { None, Then, Else, Called };

/// One step of the way to a line.
struct ScriptStep {
    int line = 0;                 // of the script that the step stands in, from 0
    Branch branch = Branch::None; // what the next step stands in; None for the last one
    std::string procedure = {};   // for Called: the name, as the line has it

    bool operator==(const ScriptStep&) const = default;
};

/// The way to a line through all the branches and procedures around it.
using ScriptPath = std::vector<ScriptStep>;

/// The lines of a script: of the internal procedure that it calls, if that is all it does, otherwise its own.
/// Empty lines stay, but for those at the end.
std::vector<std::string> UnfoldScript(const GameModel& game, const std::string& script);

/// The value of a field or a branch that holds these lines. One line stands in the value itself; of several,
/// or where `before` calls an internal procedure already, the procedure in the game gets the lines.
/// @param before  the value that the lines were unfolded from
/// Throws KelError when there is no number left for an internal procedure.
std::string FoldScript(GameModel& game, const std::string& before, const std::vector<std::string>& lines);

/// WriteIfLine, with an internal procedure for an action that would be read as something else behind "then"
/// or "else": an "if" without an "else" before an "else", for one. Throws KelError where no line can be made.
std::string WriteWholeIfLine(GameModel& game, IfLine line);

/// The line at the end of a way; empty where there is none (the script may have changed).
std::string LineAt(const GameModel& game, const std::string& script, const ScriptPath& path);

/// The script with other lines in the place of one: none to take it away. What stands in procedures is
/// changed in the game. Throws KelError where there is no such line, or where nothing is left of a "then".
std::string ReplaceLine(GameModel& game, const std::string& script, const ScriptPath& path,
                        const std::vector<std::string>& lines);

/// The script with one line moved up (-1) or down (+1) among the lines around it; as it is at either end.
/// @param path  to the line; leads to where it stands afterwards
/// Throws KelError where there is no such line.
std::string MoveLineAt(GameModel& game, const std::string& script, ScriptPath& path, int by);

/// The names of all internal procedures that the script needs, directly or through one another.
std::vector<std::string> InternalProceduresOf(const GameModel& game, const std::string& script);

} // namespace zem
