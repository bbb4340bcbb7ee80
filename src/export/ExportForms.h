#pragma once

#include "kel/CommandLookup.h"
#include "model/GameModel.h"
#include "play/RecordedRuns.h"

#include <functional>
#include <string>
#include <vector>

namespace zem::exports {

/// A kind of file that a game alone gives.
struct ExportForm {
    const char* ending; // of the file's name, in small letters: ".html"
    const char* name;   // for people
    std::function<std::string(const GameModel&, const CommandLookup&)> write;
};

/// All of them; a form may have several endings, of which the first is the one to offer.
const std::vector<ExportForm>& ExportForms();

/// The form of a file by the ending of its name; null for others.
const ExportForm* FormOf(const std::string& fileName);

/// A recorded run by its name, the first one for no name. Throws KelError when the file is damaged, or holds
/// no such run.
/// @param bytes  of the file of the game's recorded runs
play::RecordedRun RunCalled(const std::string& bytes, const std::string& name);

} // namespace zem::exports
