#pragma once

#include "model/GameModel.h"
#include "model/NameKind.h"

#include <string>
#include <vector>

namespace zem {

class ScriptEditing;

/// Holds back, while an editor is open, the procedures that its script windows make and change, and what was
/// made in passing because a script names it. They go where the editor's own values go on OK; with Cancel
/// they are gone, too, and their numbers are free again. Whoever takes the values over keeps the draft.
class ScriptDraft {
public:
    /// Begins with what the innermost open draft has, or the game where there is none.
    /// @param scripts  outlives the draft; what is edited through it goes into this draft from now on
    explicit ScriptDraft(ScriptEditing& scripts);

    /// Drops what was not kept.
    ~ScriptDraft();

    ScriptDraft(const ScriptDraft&) = delete;
    ScriptDraft& operator=(const ScriptDraft&) = delete;

    /// Hands the procedures on to the editor around this one, or to the game where there is none. The draft
    /// is over then.
    void Keep();

    /// Writes the procedures into the game, as a part of the change that writes the editor's values.
    void Keep(GameModel& game) const;

    /// Writes just the procedures that the script needs into the game, for a script that is stored although
    /// its editor may still be cancelled. No number of the draft is given away a second time.
    void KeepCalled(const std::string& script, GameModel& game) const;

    /// Makes an empty item, menu or room, or a text block with a text, which is there together with the
    /// procedures.
    void Create(NameKind kind, const std::string& name, const std::string& text);

private:
    friend class ScriptEditing;

    struct Creation {
        NameKind kind = NameKind::None;
        std::string name;
        std::string text;
    };

    ScriptEditing& scripts_;
    GameModel game_; // Only its procedures and their counter count.
    std::vector<Creation> created_;
};

} // namespace zem
