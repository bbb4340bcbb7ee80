// The game as a whole.
#include "base/LineText.h"
#include "problems/Checks.h"
#include "problems/Fixes.h"
#include "problems/ScriptFlow.h"

#include <algorithm>

namespace zem::problems {

namespace {

Place FieldOfGame(FieldId field) {
    return Place::Of({}, field);
}

void FindBeginning(const CheckedGame& game, Findings& findings) {
    const GameModel& model = game.Game();
    if (model.Rooms.IsEmpty())
        findings.Add("G10", {}, "The game has no rooms, so there is nothing to play.");
    if (!model.StartRoom.empty())
        return;
    Problem& problem = findings.Add("G01", FieldOfGame(FieldId::GameStartRoom),
                                    "Nothing says in which room the game begins, so it cannot begin.");
    for (int entry = 1; entry <= std::min<int>(model.Rooms.Count(), 3); ++entry)
        if (const std::string& name = model.Rooms[entry].Name; !name.empty())
            problem.fixes.push_back(
                SetField("Begin in " + name, FieldOfGame(FieldId::GameStartRoom), "", name));
}

/// Whether a script says so, those in raw lines, unknown blocks and libraries included.
bool IsSaid(const CheckedGame& game, std::string_view keyword) {
    const ScriptFlow& flow = game.Flow();
    for (const CheckedScript& script : game.Scripts())
        for (const CheckedCall& call : script.calls)
            if (Is(call, keyword) && flow.CanRun(script))
                return true;
    return game.IsWordElsewhere(keyword);
}

struct EndRow {
    const char* keyword;
    const char* text;
    const char* emptyId;
    const char* words;
};

constexpr EndRow Ends[] = {{"win", "win", "G03", "won"}, {"die", "lose", "G04", "lost"}};

void FindEnds(const CheckedGame& game, Findings& findings) {
    const GameModel& model = game.Game();
    for (const EndRow& end : Ends) {
        const bool isSaid = IsSaid(game, end.keyword);
        if (!isSaid && end.keyword == Ends[0].keyword && !model.Rooms.IsEmpty() &&
            game.Input().libraries->missing.empty())
            findings.Add("G02", {}, "No script ever says \"win\", so nobody can win this game.");
        int entry = 0;
        for (const TextSection& text : model.TextSections) {
            const Place place = Place::Of({{FieldId::GameTextSections, ++entry}});
            if (!EqualIgnoringCase(text.Name, end.text))
                continue;
            if (isSaid && Trim(text.Text).empty())
                findings.Add(end.emptyId, place,
                             std::string("This text is empty, so whoever has ") + end.words +
                                 " reads the standard message alone.");
            bool isPrinted = isSaid || game.IsMentionedElsewhere(text.Name);
            for (const CheckedCall* call : game.CallsOf("text"))
                isPrinted |= EqualIgnoringCase(call->Part(0), text.Name);
            if (!isPrinted && !text.Text.empty() && game.Input().libraries->missing.empty())
                findings.Add("G05", place,
                             std::string("No script says \"") + end.keyword +
                                 "\", so nothing prints this text.");
        }
    }
}

void FindSettings(const CheckedGame& game, Findings& findings) {
    const GameModel& model = game.Game();
    int entry = 0;
    for (const TextSection& text : model.TextSections) {
        ++entry;
        if (EqualIgnoringCase(text.Name, "intro") && Trim(text.Text).empty())
            findings.Add("G06", Place::Of({{FieldId::GameTextSections, entry}}),
                         "The text at the beginning is empty.");
    }
    if (Trim(model.GameName).empty())
        findings.Add("G07", FieldOfGame(FieldId::GameName), "The game has no name.");
    if (Trim(model.GameAuthor).empty())
        findings.Add("G08", FieldOfGame(FieldId::GameAuthor), "Nothing says who made the game.");
    if (model.DefaultFontSize < 0 || model.DefaultFontSize > 72)
        findings
            .Add("G09", FieldOfGame(FieldId::GameDefaultFontSize),
                 "The size of the text, " + std::to_string(model.DefaultFontSize) + ", is beyond 0 to 72.")
            .fixes = {
            ChangeGame("Leave it to the player", [](GameModel& changed) { changed.DefaultFontSize = 0; })};
}

} // namespace

std::span<const Check> GameChecks() {
    static constexpr Check Rows[] = {
        {"G01", Level::Error, "No room to begin in", FindBeginning},
        {"G02", Level::Warning, "Nothing ever wins", FindEnds},
        {"G03", Level::Warning, "Nothing to read for the winner", FindEnds},
        {"G04", Level::Warning, "Nothing to read for the loser", FindEnds},
        {"G05", Level::Hint, "Texts for an end that never comes", FindEnds},
        {"G06", Level::Hint, "No text at the beginning", FindSettings},
        {"G07", Level::Warning, "No name", FindSettings},
        {"G08", Level::Hint, "No author", FindSettings},
        {"G09", Level::Warning, "Odd sizes of text", FindSettings},
        {"G10", Level::Error, "No rooms", FindBeginning},
    };
    return Rows;
}

} // namespace zem::problems
