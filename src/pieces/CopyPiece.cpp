#include "pieces/CopyPiece.h"

#include "base/KelError.h"
#include "pieces/InternalNames.h"
#include "pieces/Piece.h"
#include "readback/ReadBack.h"

#include <utility>

namespace zem {

namespace {

[[noreturn]] void RefusePlace() {
    throw KelError("this cannot be copied by itself");
}

void TakeInRoom(Piece& piece, const Room& room, PlaceStep step) {
    switch (step.list) {
    case FieldId::RoomCharacters:
        piece.things.Characters.Append(room.Characters[step.entry]);
        return;
    case FieldId::RoomObjects:
        piece.things.Objects.Append(room.Objects[step.entry]);
        return;
    case FieldId::RoomCommands:
        piece.game.PlayerCommands.Append({room.Commands[step.entry].Key, room.Commands[step.entry].Script});
        return;
    default:
        RefusePlace();
    }
}

void TakeRecord(Piece& piece, const GameModel& game, PlaceStep step) {
    bool isTaken = false;
    ForEachField<GameModel>([&](const auto& field) {
        using Value = std::remove_cvref_t<decltype(game.*field.member)>;
        if constexpr (RecordList<Value>)
            if (field.id == step.list && field.id != FieldId::GameIncludes &&
                field.id != FieldId::GameErrorMessages) {
                (piece.game.*field.member).Append((game.*field.member)[step.entry]);
                isTaken = true;
            }
    });
    if (!isTaken)
        RefusePlace();
}

void TakePlace(Piece& piece, const GameModel& game, const Place& place) {
    if (place.Depth() == 0 && place.field == FieldId::GameUnknownBlocks)
        piece.game.UnknownBlocks = game.UnknownBlocks;
    else if (place.field != FieldId::None || !Exists(game, place))
        RefusePlace();
    else if (place.Depth() == 1)
        TakeRecord(piece, game, place.steps[0]);
    else if (place.Depth() == 2 && place.steps[0].list == FieldId::GameRooms)
        TakeInRoom(piece, game.Rooms[place.steps[0].entry], place.steps[1]);
    else
        RefusePlace();
}

/// The piece as one game: what stands in no record is put into records without a name.
GameModel AsGame(const Piece& piece) {
    GameModel game = piece.game;
    if (!piece.things.Characters.IsEmpty() || !piece.things.Objects.IsEmpty()) {
        game.Rooms.Append(piece.things).Name = "\x01";
    }
    if (!piece.lines.empty()) {
        std::string& script = game.Procedures.Append({"\x01", {}}).Script;
        for (const std::string& line : piece.lines)
            script.append(line).append("\r\n");
    }
    return game;
}

PieceText Finish(Piece piece, const GameModel& game) {
    GameModel whole = AsGame(piece);
    const int own = whole.Procedures.Count();
    AddInternalProcedures(whole, game);
    for (int k = own + 1; k <= whole.Procedures.Count(); ++k)
        piece.game.Procedures.Append(whole.Procedures[k]);
    const std::vector<LostPlace> lost = ReadBack(whole, GameFile(whole), 1);
    if (!lost.empty())
        throw KelError("This cannot be copied as text. " + lost.front().text);
    return {WritePiece(piece), DescribePiece(piece)};
}

} // namespace

PieceText CopyPiece(const GameModel& game, const std::vector<Place>& places) {
    Piece piece;
    for (const Place& place : places)
        TakePlace(piece, game, place);
    return Finish(std::move(piece), game);
}

PieceText CopyLines(const GameModel& game, const std::vector<std::string>& lines) {
    Piece piece;
    piece.lines = lines;
    return Finish(std::move(piece), game);
}

} // namespace zem
