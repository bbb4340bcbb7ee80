#include "pieces/PastePiece.h"

#include "base/KelError.h"
#include "base/LineText.h"
#include "kel/ScriptTree.h"
#include "map/MapGraph.h"
#include "pieces/FreeNames.h"
#include "pieces/InternalNames.h"
#include "pieces/Piece.h"

#include <algorithm>
#include <set>
#include <utility>

namespace zem {

namespace {

/// The lines by which rooms have their places on the map.
std::set<std::string> PlacesOnMap(const Table<Room>& rooms) {
    std::set<std::string> lines;
    for (const Room& room : rooms)
        for (const std::string_view line : SplitAt(room.MiscTags, "\r\n"))
            if (BeginsWith(line, map::PinKeyword))
                lines.emplace(Trim(line));
    return lines;
}

/// Puts the parts of a piece into a game, at the end of its lists.
class Paster {
public:
    Paster(const GameModel& game, const PasteTarget& target) : target_(target) { result_.game = game; }

    Pasted Run(Piece piece, const CommandLookup& commands) {
        RefuseWithoutPlace(piece);
        MakeFree(piece, commands);
        result_.what = DescribePiece(piece);
        AddRooms(piece.game);
        AddThings(piece.things);
        AddTexts(piece.game);
        Append(piece.game, &GameModel::Items, FieldId::GameItems);
        Append(piece.game, &GameModel::Collectables, FieldId::GameCollectables);
        Append(piece.game, &GameModel::Procedures, FieldId::GameProcedures);
        Append(piece.game, &GameModel::SelectionMenus, FieldId::GameSelectionMenus);
        Append(piece.game, &GameModel::GameUses, FieldId::GameUses);
        AddSynonyms(piece.game);
        AddCommands(piece.game);
        AddOfGame(piece.game);
        result_.lines = std::move(piece.lines);
        return std::move(result_);
    }

private:
    [[noreturn]] static void RefuseHere(const Piece& piece) {
        throw KelError("The text holds " + DescribePiece(piece) + ", which cannot be pasted here.");
    }

    void RefuseWithoutPlace(const Piece& piece) const {
        const std::string what = DescribePiece(piece);
        const GameModel& game = piece.game;
        const bool hasScripts = !game.StartScript.empty() || !game.BeforeTurnScript.empty() ||
                                !game.AfterTurnScript.empty() || !game.GameDescription.empty();
        if (what.empty() && !hasScripts && game.GameMiscTags->empty())
            throw KelError("There is no Kel in the text.");
        const bool hasThings = !piece.things.Characters.IsEmpty() || !piece.things.Objects.IsEmpty();
        if (!piece.lines.empty() && !target_.takesLines)
            throw KelError("The text holds lines of a script; they can be pasted in the window of a script.");
        if (!target_.only.empty()) {
            RefuseOthers(piece, hasThings, hasScripts);
        } else if (hasThings && target_.room == 0) {
            throw KelError("The text holds " + what + ": select the room that is to get it.");
        }
    }

    void RefuseOthers(const Piece& piece, bool hasThings, bool hasScripts) const {
        const auto takes = [&](FieldId list) {
            return std::find(target_.only.begin(), target_.only.end(), list) != target_.only.end();
        };
        bool isRefused = hasScripts || !piece.game.GameMiscTags->empty() ||
                         (hasThings && !takes(FieldId::RoomCharacters) && !takes(FieldId::RoomObjects)) ||
                         (!piece.game.UnknownBlocks->empty() && !takes(FieldId::GameUnknownBlocks));
        ForEachField<GameModel>([&](const auto& field) {
            using Value = std::remove_cvref_t<decltype(piece.game.*field.member)>;
            if constexpr (RecordList<Value>)
                if (field.id != FieldId::GameErrorMessages && field.id != FieldId::GameProcedures)
                    isRefused = isRefused || (!(piece.game.*field.member).IsEmpty() && !takes(field.id));
        });
        const Table<Procedure>& procedures = piece.game.Procedures;
        const bool hasProcedures = std::any_of(procedures.begin(), procedures.end(), [](const auto& one) {
            return !BeginsWith(one.Name, InternalProcedure);
        });
        if (isRefused || (hasProcedures && !takes(FieldId::GameProcedures)))
            RefuseHere(piece);
    }

    /// Names and numbers change in all of the piece at once, so that its parts go on meaning one another.
    void MakeFree(Piece& piece, const CommandLookup& commands) {
        GameModel& whole = piece.game;
        const int rooms = whole.Rooms.Count();
        const int procedures = whole.Procedures.Count();
        whole.Rooms.Append(piece.things);
        std::string script;
        for (const std::string& line : piece.lines)
            script.append(line).append("\r\n");
        whole.Procedures.Append({{}, std::move(script)});
        result_.game.NextInternalProcedure = MakeNumbersFree(whole, result_.game);
        result_.renamed = MakeNamesFree(whole, result_.game, commands);
        piece.things = whole.Rooms[rooms + 1];
        whole.Rooms.Remove(rooms + 1);
        if (!piece.lines.empty()) {
            const std::string_view changed = whole.Procedures[procedures + 1].Script;
            const std::vector<std::string_view> lines =
                SplitAt(changed.substr(0, changed.size() - 2), "\r\n");
            piece.lines.assign(lines.begin(), lines.end());
        }
        whole.Procedures.Remove(procedures + 1);
    }

    void AddRooms(const GameModel& piece) {
        if (piece.Rooms.IsEmpty())
            return;
        const std::set<std::string> taken = PlacesOnMap(result_.game.Rooms);
        for (const Room& room : piece.Rooms) {
            Room& added = result_.game.Rooms.Append(room);
            Note({{FieldId::GameRooms, result_.game.Rooms.Count()}});
            if (!taken.empty() && added.MiscTags.find(map::PinKeyword) != std::string::npos)
                added.MiscTags = WithoutPlaces(added.MiscTags, taken);
        }
    }

    static std::string WithoutPlaces(std::string_view lines, const std::set<std::string>& taken) {
        std::string kept;
        for (const std::string_view line : SplitAt(lines, "\r\n"))
            if (!line.empty() && !taken.contains(std::string(Trim(line))))
                kept.append(line).append("\r\n");
        return kept;
    }

    void AddThings(const Room& things) {
        if (target_.room == 0)
            return;
        const auto add = [&](List<Thing> Room::*list, FieldId id) {
            for (const Thing& thing : things.*list) {
                List<Thing>& inRoom = result_.game.Rooms.Edit(target_.room).*list;
                inRoom.Append(thing);
                Note({{FieldId::GameRooms, target_.room}, {id, inRoom.Count()}});
            }
        };
        add(&Room::Characters, FieldId::RoomCharacters);
        add(&Room::Objects, FieldId::RoomObjects);
    }

    /// A standard text that is empty is only waiting to be written.
    void AddTexts(const GameModel& piece) {
        for (const TextSection& text : piece.TextSections) {
            const int standard = EmptyStandardText(text.Name);
            if (standard != 0)
                result_.game.TextSections.Edit(standard) = text;
            else
                result_.game.TextSections.Append(text);
            Note({{FieldId::GameTextSections, standard != 0 ? standard : result_.game.TextSections.Count()}});
        }
    }

    int EmptyStandardText(std::string_view name) const {
        int entry = 0;
        for (const TextSection& text : result_.game.TextSections)
            if (++entry; IsStandardText(name) && text.Text.empty() && EqualIgnoringCase(text.Name, name))
                return entry;
        return 0;
    }

    template <class Record>
    void Append(const GameModel& piece, Table<Record> GameModel::*list, FieldId id) {
        for (const Record& record : piece.*list) {
            (result_.game.*list).Append(record);
            bool isInternal = false;
            if constexpr (std::is_same_v<Record, Procedure>)
                isInternal = BeginsWith(record.Name, InternalProcedure);
            if (!isInternal)
                Note({{id, (result_.game.*list).Count()}});
        }
    }

    void AddSynonyms(const GameModel& piece) {
        const Table<SynonymEntry> before = result_.game.Synonyms;
        for (const SynonymEntry& synonym : piece.Synonyms)
            if (std::find(before.begin(), before.end(), synonym) == before.end()) {
                result_.game.Synonyms.Append(synonym);
                Note({{FieldId::GameSynonyms, result_.game.Synonyms.Count()}});
            }
    }

    void AddCommands(const GameModel& piece) {
        for (const PlayerCommand& command : piece.PlayerCommands)
            if (target_.commandsIntoRoom) {
                List<ScriptPair>& inRoom = result_.game.Rooms.Edit(target_.room).Commands;
                inRoom.Append({command.Pattern, command.Script});
                Note({{FieldId::GameRooms, target_.room}, {FieldId::RoomCommands, inRoom.Count()}});
            } else {
                result_.game.PlayerCommands.Append(command);
                Note({{FieldId::GamePlayerCommands, result_.game.PlayerCommands.Count()}});
            }
    }

    /// What the block of the game has besides lists: added to what the game has.
    void AddOfGame(const GameModel& piece) {
        GameModel& game = result_.game;
        if (!piece.UnknownBlocks->empty())
            game.UnknownBlocks.Edit().append(*piece.UnknownBlocks);
        if (!piece.GameMiscTags->empty())
            game.GameMiscTags.Edit().append(*piece.GameMiscTags);
        for (std::string GameModel::*script : {&GameModel::StartScript, &GameModel::GameDescription,
                                               &GameModel::BeforeTurnScript, &GameModel::AfterTurnScript})
            AddScript(game.*script, piece.*script);
        for (int k = 1; k <= std::min(piece.ErrorMessages.Count(), game.ErrorMessages.Count()); ++k)
            if (game.ErrorMessages[k].GameText.empty() && !piece.ErrorMessages[k].GameText.empty())
                game.ErrorMessages.Edit(k).GameText = piece.ErrorMessages[k].GameText;
    }

    void AddScript(std::string& script, const std::string& more) {
        if (more.empty())
            return;
        if (script.empty()) {
            script = more;
            return;
        }
        std::vector<std::string> lines = UnfoldScript(result_.game, script);
        for (std::string& line : UnfoldScript(result_.game, more))
            lines.push_back(std::move(line));
        script = FoldScript(result_.game, script, lines);
    }

    void Note(std::initializer_list<PlaceStep> steps) { result_.added.push_back(Place::Of(steps)); }

    PasteTarget target_;
    Pasted result_;
};

} // namespace

Pasted PastePiece(const GameModel& game, std::string_view text, const PasteTarget& target,
                  const CommandLookup& commands) {
    return Paster(game, target).Run(ReadPiece(text, game, commands), commands);
}

} // namespace zem
