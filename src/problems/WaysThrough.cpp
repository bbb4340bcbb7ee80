#include "problems/WaysThrough.h"

#include "base/LineText.h"
#include "model/Texts.h"

#include <algorithm>

namespace zem::problems {

std::string_view RoomInTarget(std::string_view target) {
    const std::size_t semicolon = target.find(';');
    return Trim(semicolon == std::string_view::npos ? target : target.substr(semicolon + 1));
}

WaysThrough::WaysThrough(const CheckedGame& game)
    : game_(game),
      rooms_(static_cast<std::size_t>(game.Game().Rooms.Count()) + 1),
      ofRoom_(rooms_.size()),
      isReached_(rooms_.size(), false) {
    CollectRooms();
    CollectMoves();
    ApplyToRooms();
    ApplyToGame();
    Reach();
}

int WaysThrough::RoomOf(std::string_view name) const {
    const auto found = numbers_.find(name);
    return found == numbers_.end() ? 0 : found->second;
}

void WaysThrough::AddWay(int room, const ScriptPair& pair, std::string_view target, const Place& place,
                         int exit) {
    const int to = RoomOf(target);
    const bool runsScript = !Trim(pair.Script).empty(); // instead of leading there
    if (to != 0 && !runsScript)
        rooms_[static_cast<std::size_t>(room)].ways.push_back({to, place, exit});
}

void WaysThrough::CollectRooms() {
    int number = 0;
    for (const Room& room : game_.Game().Rooms)
        numbers_[room.Name] = ++number;
    number = 0;
    for (const Room& room : game_.Game().Rooms) {
        ++number;
        for (int exit = 0; exit < static_cast<int>(std::size(ExitRows)); ++exit) {
            const ScriptPair& pair = *(room.*ExitRows[exit].exit);
            if (!pair.Key.empty() && pair.Key != ActionExit)
                AddWay(number, pair, pair.Key,
                       Place::Of({{FieldId::GameRooms, number}, {ExitRows[exit].field, 0}}, FieldId::PairKey),
                       exit);
        }
        int entry = 0;
        for (const ScriptPair& place : room.Places)
            AddWay(
                number, place, RoomInTarget(place.Key),
                Place::Of({{FieldId::GameRooms, number}, {FieldId::RoomPlaces, ++entry}}, FieldId::PairKey),
                -1);
    }
}

void WaysThrough::AddCall(const CheckedCall& call, Moves& moves) {
    if (call.call->entry == nullptr)
        return;
    const std::string_view keyword = call.call->entry->keyword;
    const auto addRoom = [&](std::string_view name) {
        hasUnknownGoto_ = hasUnknownGoto_ || name.find_first_of("#%") != std::string_view::npos;
        entrances_.insert(name);
    };
    if (keyword == "goto") {
        addRoom(call.Part(0));
        moves.gotos.insert(call.Part(0));
    } else if (keyword == "exit to") {
        addRoom(call.Part(2));
        moves.moves = true;
    } else if (keyword == "if in") {
        moves.asked.insert(call.Part(0));
    } else if (keyword == "back" || keyword == "type") {
        moves.moves = true;
    } else if (keyword == "win" || keyword == "die" || keyword == "restart") {
        moves.ends = true;
    } else {
        for (std::size_t part = 0; part < call.parts.size(); ++part)
            if (call.parts[part].kind == NameKind::Procedure)
                moves.calls.insert(call.Part(part));
            else if (call.parts[part].kind == NameKind::Menu && ofMenu_.contains(call.Part(part)))
                for (const std::string_view name : ofMenu_[call.Part(part)].calls)
                    moves.calls.insert(name);
    }
}

void WaysThrough::CollectMoves() {
    const GameModel& game = game_.Game();
    for (const CheckedCall& call : game_.Calls()) {
        const PlaceStep step = call.line->place.steps[0];
        if (step.list == FieldId::GameRooms)
            AddCall(call, ofRoom_[static_cast<std::size_t>(step.entry)]);
        else if (step.list == FieldId::GameProcedures)
            AddCall(call, ofProcedure_[game.Procedures[step.entry].Name]);
        else if (step.list == FieldId::GameSelectionMenus)
            AddCall(call, ofMenu_[game.SelectionMenus[step.entry].Name]);
        else
            AddCall(call, ofGame_);
    }
}

/// A menu is part of whatever shows it, so what its choices do counts for all that runs.
WaysThrough::Moves WaysThrough::WithCalled(const Moves& moves) const {
    Moves all = moves;
    std::vector<std::string_view> open(moves.calls.begin(), moves.calls.end());
    while (!open.empty()) {
        const auto found = ofProcedure_.find(open.back());
        open.pop_back();
        if (found == ofProcedure_.end())
            continue;
        const Moves& called = found->second;
        all.gotos.insert(called.gotos.begin(), called.gotos.end());
        all.asked.insert(called.asked.begin(), called.asked.end());
        all.ends = all.ends || called.ends;
        all.moves = all.moves || called.moves;
        for (const std::string_view name : called.calls)
            if (all.calls.insert(name).second)
                open.push_back(name);
    }
    return all;
}

void WaysThrough::ApplyToRooms() {
    for (std::size_t room = 1; room < rooms_.size(); ++room) {
        const Moves moves = WithCalled(ofRoom_[room]);
        rooms_[room].mayLeave = moves.ends || moves.moves || !moves.gotos.empty();
        rooms_[room].gotos = moves.gotos;
    }
}

void WaysThrough::ApplyToGame() {
    for (const auto& [name, menu] : ofMenu_) {
        ofGame_.gotos.insert(menu.gotos.begin(), menu.gotos.end());
        ofGame_.moves = ofGame_.moves || menu.moves;
    }
    const Moves moves = WithCalled(ofGame_);
    if (!moves.gotos.empty() || moves.moves) {
        movedFrom_ = moves.asked;
        mayBeMovedAnywhere_ = moves.asked.empty();
    }
    for (const GameModel& library : game_.LibraryGames())
        ForEachText(library, [&](const Place&, FieldUse use, const std::string& text) {
            if (use.kind == FieldKind::Script && text.find("goto") != std::string::npos)
                mayBeMovedAnywhere_ = true;
        });
}

void WaysThrough::Reach() {
    std::vector<int> open;
    const auto reach = [&](int room) {
        if (room != 0 && !isReached_[static_cast<std::size_t>(room)]) {
            isReached_[static_cast<std::size_t>(room)] = true;
            open.push_back(room);
        }
    };
    reach(RoomOf(game_.Game().StartRoom));
    const bool hasStart = !open.empty();
    for (const auto& [name, room] : numbers_)
        if (!hasStart || entrances_.contains(name) || game_.IsMentionedElsewhere(name))
            reach(room);
    while (!open.empty()) {
        const int room = open.back();
        open.pop_back();
        for (const Way& way : Of(room).ways)
            reach(way.to);
    }
}

} // namespace zem::problems
