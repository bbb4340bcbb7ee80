#pragma once

#include "kel/CommandLookup.h"
#include "model/GameModel.h"

#include <string>

namespace zem {

/// How a script is shown.
enum class ScriptForm {
    Plain, // one line for lists: no codes and nothing between the script's lines
    Rich   // for ShowFormattedText: a line each, with a red semicolon between them
};

/// Whether a script that only calls an internal procedure is shown as that procedure's body.
enum class InternalProcedures { Expand, ShowCall };

/// Turns a script, lines separated by CR LF, into the text that is shown for it. With `friendly` off that is
/// the script itself, otherwise plain English from the catalogue's templates.
/// Throws KelError for a line whose template shows a parameter and which has none.
std::string RenderScript(const std::string& script, ScriptForm form, InternalProcedures internal,
                         const Table<Procedure>& procedures, const CommandLookup& commands, bool friendly);

/// The same for people to read: a line that lacks its parameter is shown as it is, and the others are
/// rendered all the same.
std::string RenderForReading(const std::string& script, ScriptForm form, InternalProcedures internal,
                             const Table<Procedure>& procedures, const CommandLookup& commands,
                             bool friendly);

} // namespace zem
