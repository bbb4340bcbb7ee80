#include "figures/Reach.h"

#include "base/LineText.h"
#include "game/References.h"

namespace zem::figures {

Reach::Reach(const GameModel& game) : game_(game), ways_(static_cast<std::size_t>(game.Rooms.Count()) + 1) {
    int number = 0;
    for (const Room& room : game.Rooms)
        rooms_[Lower(room.Name)] = ++number;
    AddWay(0, game.StartRoom);
    number = 0;
    for (const Room& room : game.Rooms)
        AddExits(++number, room);
}

void Reach::AddExits(int from, const Room& room) {
    AddWay(from, room.Out->Key);
    for (const auto& [direction, exit] : CompassExits)
        if ((room.*exit)->Key != ActionExit)
            AddWay(from, (room.*exit)->Key);
    for (const ScriptPair& place : room.Places) {
        const std::size_t semicolon = place.Key.find(';');
        AddWay(from, semicolon == std::string::npos ? std::string_view(place.Key)
                                                    : std::string_view(place.Key).substr(semicolon + 1));
    }
}

void Reach::AddWay(int from, std::string_view target) {
    if (const auto found = rooms_.find(Lower(Trim(target))); found != rooms_.end())
        ways_[static_cast<std::size_t>(from)].push_back(found->second);
}

void Reach::AddGoto(int from, std::string_view target) {
    if (target.find('#') == std::string_view::npos) {
        AddWay(from, target);
        return;
    }
    int number = 0;
    for (const Room& room : game_.Rooms) { // a name with variables may become that of any such room
        ++number;
        if (CanBecome(Trim(target), room.Name))
            ways_[static_cast<std::size_t>(from)].push_back(number);
    }
}

std::vector<bool> Reach::Reached() const {
    std::vector<bool> reached(ways_.size(), false);
    std::vector<int> waiting = {0};
    while (!waiting.empty()) {
        const int from = waiting.back();
        waiting.pop_back();
        for (const int to : ways_[static_cast<std::size_t>(from)])
            if (!reached[static_cast<std::size_t>(to)]) {
                reached[static_cast<std::size_t>(to)] = true;
                waiting.push_back(to);
            }
    }
    return reached;
}

} // namespace zem::figures
