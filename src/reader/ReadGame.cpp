#include "base/LineText.h"
#include "reader/BlockReaders.h"
#include "reader/InternalProcedures.h"
#include "reader/ReadWholeGame.h"
#include "reader/SourceText.h"

#include <string_view>
#include <utility>

/// From the bytes of a file to a game. No file is touched here, so that the web player reads games, too.
namespace zem {

namespace {

/// Reads what counts on every line of the file, those inside blocks, too: the included libraries, which are
/// not opened, and the marker of the next internal procedure. Only the first marker counts. Without one, the
/// number of the game that was open before goes on.
void ReadLoneLines(GameModel& game, const SourceText& source) {
    game.Includes.Clear();
    bool hasMarker = false;
    for (std::size_t index = 1; index <= source.LineCount(); ++index) {
        const std::string_view line = source.Line(index);
        const bool isMarker = !hasMarker && BeginsWith(line, "'ZEM-NIP ");
        if (!isMarker && !BeginsWith(line, "!include "))
            continue;
        source.UseLine(index, [&](std::string_view text) {
            const std::string_view parameter = GetParameter(text);
            if (isMarker)
                game.NextInternalProcedure = LeadingNumber(parameter);
            else
                game.Includes.Append(std::string(parameter));
        });
        if (!isMarker)
            source.NoteLastOf(FieldId::GameIncludes, game.Includes, index);
        hasMarker = hasMarker || isMarker;
    }
}

/// How many lines may have something to note: for all of them, the notes would take more memory than the game
/// leaves.
std::size_t CountTellingLines(const SourceText& source) {
    std::size_t count = 100; // A line of items has a note for each.
    for (std::size_t index = 1; index <= source.LineCount(); ++index) {
        const std::string_view line = TrimLeft(source.Line(index));
        count += line.empty() || BeginsWith(line, "end define") ? 0 : 1;
    }
    return count;
}

/// Tells who asked for the lines which procedures will be those that were made of scripts in braces.
void NoteMadeProcedures(const SourceText& source, int firstNumber) {
    int written = 0;
    for (const BlockSpan& block : source.Blocks())
        if (source.IsInFile(block.FirstLine) && BeginsWith(source.Line(block.FirstLine), "define procedure "))
            ++written;
    source.NotedLines()->NoteFirstMade(written + 1, firstNumber);
}

/// The file pass: from the bytes of the file to lines in which every script stands on one line. False when
/// the host has told the author what is wrong.
bool PassFile(GameModel& game, SourceText& source, const std::string& path, Host& host) {
    ReadLoneLines(game, source);
    source.IndexBlocks();
    const int firstNumber = game.NextInternalProcedure;
    MakeInternalProcedures(game, source);
    if (source.NotedLines() != nullptr)
        NoteMadeProcedures(source, firstNumber);

    // The place for errors that the pass could go on after; it has none, so the flag stays unset.
    const bool errorsFound = false;
    if (errorsFound)
        host.ShowMessage("Errors found in " + path + ": Read logfile (if enabled) for details.",
                         "Failed to load game", MessageButtons::Ok);
    return !errorsFound;
}

struct Stage {
    const char* text;
    void (*read)(GameModel&, const SourceText&);
    int progressAfter;
};

constexpr Stage Stages[] = {
    {"Initializing game data...", ReadGameBlock, 10},
    {"Initializing room data...", ReadRooms, 20},
    {"Initializing character/object data...", ReadThings, 30},
    {"Initializing text data...", ReadTextSections, 40},
    {"Initializing item data...", ReadItems, 50},
    {"Initializing collectable data...", ReadCollectables, 60},
    {"Initializing procedures...", ReadProcedures, 70},
    {"Initializing menus...", ReadSelectionMenus, 80},
    {"Initializing misc data...",
     [](GameModel& game, const SourceText& source) {
         ReadSynonyms(game, source);
         ReadErrorMessages(game, source);
         CollectUnknownBlocks(game, source);
     },
     100},
};

} // namespace

bool ReadWholeGame(GameModel& game, std::string bytes, const std::string& path, Host& host,
                   SourceLines* lines) {
    NewGame(game);
    try {
        SourceText source(std::move(bytes));
        source.NoteLinesIn(lines);
        if (lines != nullptr)
            lines->Reserve(CountTellingLines(source));
        if (!PassFile(game, source, path, host))
            return false;
        host.ShowStage("Initializing...");
        host.ShowProgress(5);
        source.TrimLines();
        source.NoteKinds();
        for (const Stage& stage : Stages) {
            host.ShowStage(stage.text);
            stage.read(game, source);
            host.ShowProgress(stage.progressAfter);
        }
        if (lines != nullptr)
            lines->Finish();
        host.ShowStage("Completed intialization");
        return true;
    } catch (...) {
        NewGame(game); // half a game must not look like a whole one
        throw;
    }
}

void ReadGame(GameModel& game, std::string bytes, SourceLines* lines) {
    if (lines != nullptr)
        *lines = {};
    SilentHost host;
    ReadWholeGame(game, std::move(bytes), {}, host, lines);
}

} // namespace zem
