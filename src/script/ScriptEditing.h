#pragma once

#include "forms/EditorContext.h"
#include "game/GameNames.h"
#include "kel/CommandLookup.h"
#include "kel/RenderScript.h"
#include "kel/ScriptTree.h"

#include <QString>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class QTextEdit;
class QWidget;

namespace zem {

class ScriptDraft;
struct ReachedLines;

/// Shows and edits the scripts of the game: what every form that has a script field works with.
class ScriptEditing {
public:
    /// All but the last outlive this object.
    /// @param isFriendly  whether scripts are shown in plain English
    ScriptEditing(ChangeDoor& door, OpenEdits& edits, Dialogs& dialogs, EditorShell& shell,
                  const CommandLookup& commands, std::function<bool()> isFriendly);
    ScriptEditing(const ScriptEditing&) = delete;
    ScriptEditing& operator=(const ScriptEditing&) = delete;

    /// Edits the value of a script field in a window of its own. A script of several lines becomes an
    /// internal procedure, and the value a call of it. False when the author cancelled; the value is as it
    /// was then.
    /// @param what  said at the top of the window: "take"; empty where the window around it says enough
    bool EditScript(QWidget* parent, std::string& script, const QString& what = {});

    /// Edits one line; an empty line for a new one. False when the author cancelled.
    bool EditScriptLine(QWidget* parent, std::string& line, const QString& what = {});

    /// Edits one "if" line; an empty line for a new one. False when the author cancelled; the internal
    /// procedures of its branches are as they were then.
    bool EditConditional(QWidget* parent, std::string& line, const QString& what = {});

    /// Edits one line of a script, wherever in its branches and procedures it stands, in the editor of its
    /// kind. False when the author cancelled, or when there is no such line.
    bool EditPart(QWidget* parent, std::string& script, const ScriptPath& path, const QString& what = {});

    /// Makes something that a script names: a procedure, whose script is asked for, a text block, whose text
    /// is, or an item, a menu or a room. False when the author cancelled.
    bool Create(QWidget* parent, NameKind kind, const std::string& name);

    /// Makes a change to a script that may need changes of internal procedures: `change` gets the game and
    /// gives the new value. Throws what it throws; everything is as it was then.
    std::string ChangeScript(const std::function<std::string(GameModel&)>& change);

    /// The script as it is shown; each line that cannot be rendered as it is.
    std::string Render(const std::string& script, ScriptForm form, InternalProcedures internal) const;

    /// The whole script, branches indented, as plain text of at most so many lines.
    QString WholeText(const std::string& script, std::size_t most) const;

    /// Paints the script, internal procedures expanded, into a read-only box.
    void Show(const std::string& script, QTextEdit& box) const;

    /// The game with the internal procedures that open editors hold back.
    GameModel Game() const;

    /// Changes the internal procedures: in the innermost open draft, in the game where there is none. When
    /// the change throws, everything is as it was before, and the exception goes on.
    void ChangeProcedures(const std::function<void(GameModel&)>& change);

    /// What runs have reached of the game as it was played last; null at first, when nothing is known.
    void SetReached(std::shared_ptr<const ReachedLines> reached) { reached_ = std::move(reached); }
    const std::shared_ptr<const ReachedLines>& Reached() const { return reached_; }

    bool IsFriendly() const { return isFriendly_(); }
    const CommandLookup& Commands() const { return commands_; }

    /// The names of the game, for choosing one.
    std::shared_ptr<const std::vector<std::string>> Names(NameKind kind) const {
        return names_.Names(Game(), kind);
    }

private:
    friend class ScriptDraft;

    EditorContext context_; // of the windows that this object opens
    const CommandLookup& commands_;
    std::function<bool()> isFriendly_;
    mutable NameCache names_; // of the game as it was when a name was last to be chosen
    std::shared_ptr<const ReachedLines> reached_;
    std::vector<ScriptDraft*> drafts_; // of the open editors, the innermost last
};

} // namespace zem
