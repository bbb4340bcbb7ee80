#include "problems/ReadAgain.h"

#include "base/LineText.h"
#include "base/TextFile.h"
#include "problems/Fixes.h"
#include "readback/ReadBack.h"
#include "reader/LoadGame.h"

#include <utility>

namespace zem::problems {

namespace {

bool ReadRoomAgain(GameModel& game, int number) {
    GameModel alone;
    alone.Rooms.Append(game.Rooms[number]);
    GameModel back;
    ReadGame(back, GameFile(alone));
    if (back.Rooms.Count() != 1)
        return false;
    game.Rooms.Edit(number) = back.Rooms[1];
    return true;
}

bool ReadGameBlockAgain(GameModel& game) {
    GameModel alone = game;
    alone.Rooms.Clear();
    alone.TextSections.Clear();
    alone.Procedures.Clear();
    alone.SelectionMenus.Clear();
    alone.UnknownBlocks = std::string();
    GameModel back;
    back.ErrorMessages = game.ErrorMessages;
    ReadGame(back, GameFile(alone));
    const bool wasEmpty = game.Items.IsEmpty() && back.Items.Count() == 1 && back.Items[1].Name.empty();
    if (wasEmpty)
        back.Items.Clear(); // a file cannot tell no item from one without a name
    back.Rooms = game.Rooms;
    back.TextSections = game.TextSections;
    back.Procedures = game.Procedures;
    back.SelectionMenus = game.SelectionMenus;
    back.UnknownBlocks = game.UnknownBlocks;
    back.NextInternalProcedure = game.NextInternalProcedure;
    back.FileName = game.FileName;
    back.Modified = game.Modified;
    game = std::move(back);
    return true;
}

} // namespace

bool ReadAgain(GameModel& game, const Place& place) {
    try {
        const PlaceStep step = place.steps[0];
        if (step.list == FieldId::GameRooms)
            return ReadRoomAgain(game, step.entry);
        return ReadGameBlockAgain(game);
    } catch (const KelError&) {
        return false; // something else in it cannot be read
    }
}

std::string_view FileLine(const SourceFile& source, std::size_t line) {
    std::string_view bytes = source.bytes;
    for (std::size_t number = 1; !bytes.empty(); ++number) {
        const std::string_view text = TakeLine(bytes);
        if (number == line)
            return Trim(text);
    }
    return {};
}

std::optional<GameModel> ReadWithLine(const SourceFile& source, const GameModel& game, std::size_t line,
                                      const std::string& text) {
    std::string bytes = source.bytes;
    if (const std::string_view old = FileLine(source, line); !old.empty())
        bytes.replace(static_cast<std::size_t>(old.data() - source.bytes.data()), old.size(), text);
    GameModel read;
    read.ErrorMessages = game.ErrorMessages;
    try {
        ReadGame(read, std::move(bytes));
    } catch (const KelError&) {
        return std::nullopt;
    }
    return read;
}

Fix ChangeFileLine(std::string button, std::shared_ptr<const SourceFile> source, std::size_t line,
                   std::string text) {
    return ChangeGame(std::move(button),
                      [source = std::move(source), line, text = std::move(text)](GameModel& game) {
                          const std::optional<GameModel> before = ReadWithLine(*source, game, 0, {});
                          std::optional<GameModel> after = ReadWithLine(*source, game, line, text);
                          if (!before || !after || !SameGame(*before, game))
                              return;
                          after->FileName = game.FileName;
                          after->Modified = game.Modified;
                          game = *std::move(after);
                      });
}

} // namespace zem::problems
