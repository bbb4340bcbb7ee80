#pragma once

#include "forms/Dialogs.h"
#include "forms/EditorShell.h"
#include "qt/ChangeDoor.h"
#include "qt/OpenEdits.h"

namespace zem {

class ScriptEditing;

/// What the editors of a game work with. Everything outlives the editors; copies are cheap.
struct EditorContext {
    ChangeDoor& door;
    OpenEdits& edits;
    Dialogs& dialogs;
    EditorShell& shell;
    ScriptEditing& scripts;
};

} // namespace zem
