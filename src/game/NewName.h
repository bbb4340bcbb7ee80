#pragma once

#include "game/GameIndex.h"
#include "model/NameKind.h"
#include "model/Place.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Whether something may be called by another name, and what then happens.
namespace zem {

enum class NameVerdict {
    Fine,
    Unchanged, // nothing is to be renamed
    Refused,
    Merges // makes two names one, which cannot be told apart again: only if the author says so
};

struct NewNameAnswer {
    std::string name; // without the blanks around it
    NameVerdict verdict = NameVerdict::Fine;
    std::string message;            // one sentence or two; empty when all is fine
    std::optional<Place> taken;     // what is called so already
    std::vector<std::string> notes; // what the author should know, a sentence each
};

/// What is wrong with a name of the kind whatever else the game has, one sentence; empty when it may be one.
/// @param name  without blanks around it
std::string NameProblem(NameKind kind, std::string_view name);

/// Judges a new name.
/// @param newName  as typed
/// @param only     the things to rename, where several have the old name; empty for all
NewNameAnswer JudgeNewName(const GameIndex& index, NameKind kind, const std::string& oldName,
                           std::string_view newName, const std::vector<Place>& only = {});

/// Whether names of the kind stand in no list of the game, but are made by using them.
constexpr bool IsMadeByUse(NameKind kind) {
    return kind == NameKind::Variable || kind == NameKind::Flag || kind == NameKind::Timer;
}

} // namespace zem
