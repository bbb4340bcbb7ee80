#include "problems/Silenced.h"

#include "base/TextEncoding.h"
#include "game/NotePlaces.h"
#include "problems/ReadAgain.h"

#include <set>
#include <string>

namespace zem::problems {

NotePlace NotePlaceOf(const CheckedGame& game, const Problem& problem) {
    if (problem.fileLine != 0 && game.Source() != nullptr)
        return {{"file", false, ""}, {"line", true, ToUtf8(FileLine(*game.Source(), problem.fileLine))}};
    return TellByNames(game.Game(), game.Owners(), game.Commands(), problem.place);
}

std::vector<Problem> WithoutSilenced(const CheckedGame& game, const GameNotes& notes,
                                     std::vector<Problem> problems) {
    std::set<std::string, std::less<>> checks; // most problems are of others, and places take their time
    for (const Silence& silence : notes.silences)
        checks.insert(silence.check);
    if (!checks.empty())
        std::erase_if(problems, [&](const Problem& problem) {
            return checks.contains(std::string_view(problem.id)) &&
                   notes.IsSilenced(problem.id, NotePlaceOf(game, problem));
        });
    return problems;
}

} // namespace zem::problems
