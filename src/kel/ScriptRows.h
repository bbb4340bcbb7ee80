#pragma once

#include "kel/ScriptTree.h"

#include <cstddef>
#include <set>
#include <string>
#include <vector>

/// A whole script to be read where it stands: a row for each line, branches indented, internal procedures in
/// the place of their calls.
namespace zem {

/// What a stretch of a row is, which says how it looks.
enum class RowRole {
    Words,     // what happens
    Parameter, // with what: a name, a text, a number
    Frame,     // "If", "and", "Otherwise"
    Remark,    // comments, and what stands in no file
    Problem    // a line that is not understood
};

struct RowSpan {
    std::string text;
    RowRole role = RowRole::Words;
    std::string procedure = {}; // the author's procedure that is called here, as the line names it

    bool operator==(const RowSpan&) const = default;
};

struct ScriptRow {
    int indent = 0;
    std::vector<RowSpan> spans;
    ScriptPath path;         // to the line that it shows; of an "Otherwise" to its "if"
    std::string remark = {}; // what is to be said of it besides: "never run"

    /// The row without its colours.
    std::string Text() const;
};

struct RowOptions {
    bool friendly = true;           // plain English; otherwise the lines as the file has them
    std::set<std::string> unfolded; // in small letters: the procedures whose lines follow each call of them
    std::size_t most = 2000;        // rows; the last one says that there are more
};

/// The rows of a script. Whatever a line holds, nothing is thrown; a procedure that calls itself is unfolded
/// once.
std::vector<ScriptRow> RowsOfScript(const GameModel& game, const std::string& script,
                                    const CommandLookup& commands, const RowOptions& options = {});

} // namespace zem
