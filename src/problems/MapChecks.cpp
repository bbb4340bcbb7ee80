// How the rooms hang together.
#include "base/LineText.h"
#include "map/MapGraph.h"
#include "model/Texts.h"
#include "problems/Checks.h"
#include "problems/Fixes.h"
#include "problems/PrintedTexts.h"
#include "problems/WaysThrough.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace zem::problems {

namespace {

Place RoomPlace(int room) {
    return Place::Of({{FieldId::GameRooms, room}});
}

/// The record of an exit or a place whose name is at `name`.
Place RecordOf(Place name) {
    name.field = FieldId::None;
    return name;
}

std::string NameOf(const Way& way) {
    return way.exit < 0 ? "the place" : "the exit " + std::string(ExitRows[way.exit].direction);
}

/// Makes an exit, if that direction is still free.
Fix MakeExit(const GameModel& game, int from, const ExitRow& row, int to) {
    return ChangeGame(std::string(row.direction) + " from " + game.Rooms[from].Name + " to " +
                          game.Rooms[to].Name,
                      [from, row, name = game.Rooms[to].Name](GameModel& changed) {
                          if (from <= changed.Rooms.Count() && (changed.Rooms[from].*row.exit)->Key.empty())
                              changed.Rooms.Edit(from).*row.exit = ScriptPair{name, ""};
                      });
}

bool IsFree(const Room& room, const ExitRow& row) {
    return (room.*row.exit)->Key.empty();
}

class MapSearch {
public:
    MapSearch(const CheckedGame& game, Findings& findings)
        : game_(game),
          model_(game.Game()),
          ways_(game.Ways()),
          findings_(findings) {}

    void Run() {
        int number = 0;
        for (const Room& room : model_.Rooms) {
            ++number;
            if (ways_.RoomOf(room.Name) != number)
                continue; // another room of the same name counts
            FindNoWayIn(number);
            FindNoWayOut(number);
            FindOneWays(number);
            FindBends(number);
            FindTwoWays(number);
        }
    }

private:
    bool HasWay(int from, int to) const {
        return std::any_of(ways_.Of(from).ways.begin(), ways_.Of(from).ways.end(),
                           [to](const Way& way) { return way.to == to; });
    }

    void FindNoWayIn(int room) {
        if (ways_.IsReached(room))
            return;
        Problem& problem =
            findings_.Add("M01", RoomPlace(room),
                          "Nobody can get here: no exit, place or script leads here from the start room.");
        if (ways_.HasUnknownGoto())
            problem.level = Level::Hint;
        for (const Way& way : ways_.Of(room).ways) {
            if (way.exit < 0 || static_cast<std::size_t>(way.exit) >= CompassCount ||
                !ways_.IsReached(way.to))
                continue;
            const ExitRow& back = OppositeOf(static_cast<std::size_t>(way.exit));
            if (IsFree(model_.Rooms[way.to], back))
                problem.fixes.push_back(MakeExit(model_, way.to, back, room));
        }
    }

    bool CanLeave(int room) const {
        const RoomWays& ways = ways_.Of(room);
        return ways.mayLeave || ways_.MayBeMovedFrom(model_.Rooms[room].Name) ||
               std::any_of(ways.ways.begin(), ways.ways.end(),
                           [room](const Way& way) { return way.to != room; });
    }

    void FindNoWayOut(int room) {
        if (CanLeave(room) || !ways_.IsReached(room) || model_.Rooms.Count() == 1)
            return;
        Problem& problem = findings_.Add(
            "M02", RoomPlace(room),
            "Nobody can leave: no exit, place or script leads on, and nothing ends the game here.");
        if (const Entrance& entrance = EntranceTo(room); entrance.from != 0)
            problem.fixes = {MakeExit(model_, room, OppositeOf(entrance.exit), entrance.from)};
    }

    /// An exit of the compass through which one comes to a room.
    struct Entrance {
        int from = 0; // 0 where there is none
        std::size_t exit = 0;
    };

    /// The first entrance from another room. All are looked up at once: most games need none of them, some
    /// many.
    const Entrance& EntranceTo(int room) {
        if (entrances_.empty()) {
            entrances_.resize(static_cast<std::size_t>(model_.Rooms.Count()) + 1);
            for (int from = 1; from <= model_.Rooms.Count(); ++from)
                for (const Way& way : ways_.Of(from).ways)
                    NoteEntrance(from, way);
        }
        return entrances_[static_cast<std::size_t>(room)];
    }

    void NoteEntrance(int from, const Way& way) {
        const auto exit = static_cast<std::size_t>(way.exit);
        if (exit >= CompassCount || way.to == from) // a place is no exit, and its number too large
            return;
        Entrance& entrance = entrances_[static_cast<std::size_t>(way.to)];
        if (entrance.from == 0)
            entrance = {from, exit};
    }

    void FindOneWays(int room) {
        for (const Way& way : ways_.Of(room).ways) {
            if (way.to == room) {
                findings_
                    .Add("M04", way.place,
                         NameOf(way) == "the place" ? "The place is the room itself."
                                                    : "The exit leads to the room itself.")
                    .fixes = {RemoveRecord("Remove it", RecordOf(way.place))};
                continue;
            }
            const std::string& name = model_.Rooms[room].Name;
            if (HasWay(way.to, room) || ways_.Of(way.to).gotos.contains(name) || !CanLeave(way.to) ||
                ways_.Of(way.to).mayLeave)
                continue;
            Problem& problem =
                findings_.Add("M03", way.place,
                              "There is no way back from " + QuoteShortly(model_.Rooms[way.to].Name) +
                                  " to " + QuoteShortly(name) + '.');
            if (way.exit >= 0 && static_cast<std::size_t>(way.exit) < CompassCount) {
                const ExitRow& back = OppositeOf(static_cast<std::size_t>(way.exit));
                if (IsFree(model_.Rooms[way.to], back))
                    problem.fixes = {MakeExit(model_, way.to, back, room)};
            }
        }
    }

    bool HasExitTo(int room, std::string_view direction, int to) const {
        return std::any_of(ways_.Of(room).ways.begin(), ways_.Of(room).ways.end(), [&](const Way& way) {
            return way.to == to && way.exit >= 0 && ExitRows[way.exit].direction == direction;
        });
    }

    /// North there, and east back.
    void FindBends(int room) {
        for (const Way& way : ways_.Of(room).ways) {
            if (way.exit < 0 || static_cast<std::size_t>(way.exit) >= CompassCount || way.to <= room)
                continue;
            const ExitRow& opposite = OppositeOf(static_cast<std::size_t>(way.exit));
            const Way* back = nullptr;
            bool fits = false;
            for (const Way& other : ways_.Of(way.to).ways) {
                if (other.to != room || other.exit < 0 ||
                    static_cast<std::size_t>(other.exit) >= CompassCount)
                    continue;
                const std::string_view there = OppositeOf(static_cast<std::size_t>(other.exit)).direction;
                fits = fits || HasExitTo(room, there, way.to); // of several ways one is enough
                back = &other;
            }
            if (back != nullptr && !fits)
                AddBend(room, way, *back, opposite);
        }
    }

    void AddBend(int room, const Way& way, const Way& back, const ExitRow& opposite) {
        Problem& problem = findings_.Add(
            "M05", way.place,
            QuoteShortly(model_.Rooms[way.to].Name) + " is " + std::string(ExitRows[way.exit].direction) +
                " of here, but the way back goes " + std::string(ExitRows[back.exit].direction) + '.');
        if (IsFree(model_.Rooms[way.to], opposite))
            problem.fixes = {ChangeGame("Make the way back go " + std::string(opposite.direction),
                                        [from = way.to, back = ExitRows[back.exit], opposite,
                                         name = model_.Rooms[room].Name](GameModel& game) {
                                            if (from > game.Rooms.Count() ||
                                                (game.Rooms[from].*back.exit)->Key != name ||
                                                !IsFree(game.Rooms[from], opposite))
                                                return;
                                            Room& changed = game.Rooms.Edit(from);
                                            std::swap(changed.*back.exit, changed.*opposite.exit);
                                        })};
    }

    void FindTwoWays(int room) {
        std::map<int, const Way*> compass;
        for (const Way& way : ways_.Of(room).ways) {
            if (way.exit < 0 || static_cast<std::size_t>(way.exit) >= CompassCount || way.to == room)
                continue;
            const auto [first, isNew] = compass.emplace(way.to, &way);
            if (!isNew)
                findings_.Add("M07", way.place,
                              "The exit " + std::string(ExitRows[first->second->exit].direction) +
                                  " leads to " + QuoteShortly(model_.Rooms[way.to].Name) + ", too.");
        }
    }

    const CheckedGame& game_;
    const GameModel& model_;
    const WaysThrough& ways_;
    Findings& findings_;
    std::vector<Entrance> entrances_; // by room; empty until one is asked for
};

void FindInMap(const CheckedGame& game, Findings& findings) {
    MapSearch(game, findings).Run();
}

/// Whether a script does nothing: there is nothing in it, or it runs an internal procedure with nothing in
/// it.
bool DoesNothing(const std::map<std::string_view, const Procedure*>& made, std::string_view script) {
    const std::string_view text = Trim(script);
    if (text.empty())
        return true;
    if (!text.starts_with("do <") || text.find('>') != text.size() - 1)
        return false;
    const auto found = made.find(text.substr(4, text.size() - 5));
    return found != made.end() && found->second->Script.find_first_not_of(" \r\n") == std::string::npos;
}

void FindEmptyExits(const CheckedGame& game, Findings& findings) {
    std::map<std::string_view, const Procedure*> made;
    for (const Procedure& procedure : game.Game().Procedures)
        if (procedure.Name.starts_with(InternalProcedure))
            made.emplace(procedure.Name, &procedure);
    int number = 0;
    for (const Room& room : game.Game().Rooms) {
        ++number;
        for (const ExitRow& row : ExitRows) {
            const ScriptPair& pair = *(room.*row.exit);
            const bool runsScript =
                pair.Key == ActionExit || (!pair.Key.empty() && !Trim(pair.Script).empty());
            if (!runsScript || !DoesNothing(made, pair.Script))
                continue;
            const Place exit = Place::Of({{FieldId::GameRooms, number}, {row.field, 0}});
            findings
                .Add("M06", exit,
                     "The exit runs a script with nothing in it: who goes " + std::string(row.direction) +
                         " stays where he is and reads nothing.")
                .fixes = {RemoveRecord("Remove it", exit)};
        }
        int entry = 0;
        for (const ScriptPair& place : room.Places)
            if (++entry; std::count(place.Key.begin(), place.Key.end(), ';') > 1)
                findings.Add(
                    "M09",
                    Place::Of({{FieldId::GameRooms, number}, {FieldId::RoomPlaces, entry}}, FieldId::PairKey),
                    "There are two \";\" in " + QuoteShortly(place.Key) +
                        ", so what is behind the first is taken for the name of a room.");
    }
}

void FindSharedCells(const CheckedGame& game, Findings& findings) {
    std::map<std::pair<int, int>, int> taken;
    int number = 0;
    for (const Room& room : game.Game().Rooms) {
        ++number;
        if (room.MiscTags.empty())
            continue;
        const auto pin = map::PinOf(room.MiscTags);
        if (!pin)
            continue;
        const auto [first, isNew] =
            taken.emplace(std::pair(static_cast<int>(pin->x), static_cast<int>(pin->y)), number);
        if (isNew)
            continue;
        const Place tags = Place::Of({{FieldId::GameRooms, number}}, FieldId::RoomMiscTags);
        std::string rest;
        for (const std::string_view line : SplitAt(room.MiscTags, "\r\n"))
            if (!line.empty() && !BeginsWith(line, map::PinKeyword))
                rest.append(line).append("\r\n");
        findings
            .Add("M10", RoomPlace(number),
                 "On the map " + QuoteShortly(game.Game().Rooms[first->second].Name) +
                     " stands on the same place.")
            .fixes = {SetField("Let the map find a place", tags, room.MiscTags, rest)};
    }
}

bool IsWordEnd(std::string_view text, std::size_t at) {
    return at >= text.size() || !IsLetter(text[at]);
}

/// The sentence of a text in which the byte stands.
std::string_view SentenceAt(std::string_view text, std::size_t at) {
    const std::size_t before = text.find_last_of(".!?", at);
    const std::size_t begin = before == std::string_view::npos ? 0 : before + 1;
    return text.substr(begin, std::min(text.find_first_of(".!?", at), text.size()) - begin);
}

bool ScriptMakesExit(const CheckedGame& game, std::string_view room, std::string_view direction) {
    const auto& calls = game.CallsOf("exit to");
    return std::any_of(calls.begin(), calls.end(), [&](const CheckedCall* call) {
        return call->Part(0) == room && EqualIgnoringCase(call->Part(1), direction);
    });
}

/// The one other room whose name stands in the sentence; 0 for none.
int RoomNamedIn(const GameModel& game, std::string_view sentence, int except) {
    const std::string lower = Lower(sentence);
    int found = 0;
    int number = 0;
    for (const Room& room : game.Rooms) {
        ++number;
        if (number == except || room.Name.size() < 3 || lower.find(Lower(room.Name)) == std::string::npos)
            continue;
        if (found != 0)
            return 0;
        found = number;
    }
    return found;
}

/// @param mostFixes  how many fixes may still be looked for; each looks at the names of all rooms
void FindDirectionsInText(const CheckedGame& game, int number, const Room& room, int& mostFixes,
                          Findings& findings) {
    constexpr std::string_view Phrase = " to the ";
    const std::string& look = room.Look;
    for (std::size_t at = look.find(Phrase); at != std::string::npos; at = look.find(Phrase, at + 1)) {
        const std::size_t begin = at + Phrase.size();
        // Of "north" and "northeast" the longer one is meant.
        const ExitRow* named = nullptr;
        for (const ExitRow& row : ExitRows)
            if (row.direction != "out" && std::string_view(look).substr(begin).starts_with(row.direction) &&
                IsWordEnd(look, begin + row.direction.size()))
                named = &row;
        if (named == nullptr || !IsFree(room, *named))
            continue;
        const std::size_t end = begin + named->direction.size();
        if (std::string_view(look).substr(end).starts_with(" of") ||
            ScriptMakesExit(game, room.Name, named->direction))
            continue;
        const Place place = Place::Of({{FieldId::GameRooms, number}}, FieldId::RoomLook, {at + 1, end});
        Problem& problem = findings.Add("M08", place,
                                        "The text tells of something to the " +
                                            std::string(named->direction) + ", but there is no exit.");
        if (--mostFixes < 0)
            continue;
        if (const int to = RoomNamedIn(game.Game(), SentenceAt(look, at), number); to != 0)
            problem.fixes = {MakeExit(game.Game(), number, *named, to)};
    }
}

void FindToldExits(const CheckedGame& game, Findings& findings) {
    if (!IsEnglish(game, game.Prints()))
        return;
    int number = 0;
    int mostFixes = 50;
    for (const Room& room : game.Game().Rooms)
        FindDirectionsInText(game, ++number, room, mostFixes, findings);
}

} // namespace

std::span<const Check> MapChecks() {
    static constexpr Check Rows[] = {
        {"M01", Level::Warning, "Rooms to which no way leads", FindInMap},
        {"M02", Level::Warning, "Rooms from which no way leads on", FindInMap},
        {"M03", Level::Hint, "Exits with no way back", FindInMap},
        {"M04", Level::Hint, "Exits to the room itself", FindInMap},
        {"M05", Level::Hint, "There and back do not fit", FindInMap},
        {"M06", Level::Warning, "Exits that run an empty script", FindEmptyExits},
        {"M07", Level::Hint, "Two directions to one room", FindInMap},
        {"M08", Level::Hint, "Directions in texts without an exit", FindToldExits},
        {"M09", Level::Error, "Places with two \";\"", FindEmptyExits},
        {"M10", Level::Hint, "Rooms on one place of the map", FindSharedCells},
    };
    return Rows;
}

} // namespace zem::problems
