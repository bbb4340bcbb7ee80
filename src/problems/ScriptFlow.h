#pragma once

#include "problems/CheckedGame.h"

#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace zem::problems {

/// Which scripts run which others.
class ScriptFlow {
public:
    explicit ScriptFlow(const CheckedGame& game);

    /// The script of a procedure; null when there is none, or an empty one.
    const CheckedScript* Procedure(std::string_view name) const;

    /// The script, and all that it runs by way of procedures and menus.
    std::vector<const CheckedScript*> RunBy(const CheckedScript& script) const;

    /// Whether anything at all can run the script: it is no procedure, or one that such a script runs; and it
    /// does not belong to a thing that stays hidden for ever.
    bool CanRun(const CheckedScript& script) const { return live_.contains(&script); }

    /// Whether a name made of variables in a command of this keyword may become the name.
    bool MayMean(NameKind kind, std::string_view name) const;

    /// Items that the player has at the start or that a script gives which can run.
    const std::unordered_set<std::string_view>& ItemsToBeHad() const { return had_; }

private:
    bool MayShow(std::string_view name) const;
    void AddShownBy(const CheckedScript& script, std::vector<const CheckedScript*>& found);
    void AddCallees(const CheckedScript& script, std::vector<const CheckedScript*>& found) const;
    void AddAll(std::vector<const CheckedScript*>& found,
                std::unordered_set<const CheckedScript*>& seen) const;

    const CheckedGame& game_;
    std::unordered_map<std::string_view, const CheckedScript*> procedures_;
    std::unordered_map<std::string_view, std::vector<const CheckedScript*>> choices_; // of menus
    std::unordered_map<std::string_view, std::vector<const CheckedScript*>> hidden_;  // of such things
    std::unordered_set<const CheckedScript*> live_;
    std::unordered_set<std::string_view> had_;                // items
    std::vector<std::pair<NameKind, std::string_view>> made_; // names that variables make
};

/// Whether the call is a line of its own, which runs whenever its script does.
bool IsUnconditional(const CheckedCall& call);

/// Whether the call has exactly this keyword, given in small letters ("if has" for a condition).
bool Is(const CheckedCall& call, std::string_view keyword);

/// Whether the call ends the game or begins it again, so that nothing behind it runs.
bool EndsGame(const CheckedCall& call);

} // namespace zem::problems
