#include "problems/Planting.h"

#include "base/LineText.h"
#include "model/Texts.h"
#include "problems/CheckedFile.h"

#include <algorithm>
#include <cctype>

namespace zem::test {

using problems::CheckedCall;
using problems::CheckedGame;

bool Replace(GameModel& game, const Found& found, const std::string& text) {
    std::string field = *Resolve(game, found.place)->text;
    field.replace(found.place.bytes.begin, found.place.bytes.Size(), text);
    SetText(game, found.place, field);
    return true;
}

/// One of what `collect` finds in the scripts; nothing when there is none.
std::optional<Found> PickFound(const GameModel& game, Seeder& seeder, const Wanted& collect) {
    problems::CheckInput input;
    input.game = game;
    input.commands = &ShippedCommands();
    const CheckedGame checked(std::move(input));
    std::vector<Found> all;
    collect(checked, all);
    return all.empty() ? std::nullopt : std::optional(seeder.PickOf(all));
}

Wanted PartsOf(std::vector<std::string_view> keywords, std::size_t part) {
    return [=](const CheckedGame& game, std::vector<Found>& all) {
        for (const std::string_view keyword : keywords)
            for (const CheckedCall* call : game.CallsOf(keyword))
                if (part < call->parts.size() && call->Part(part).size() > 2 &&
                    call->Part(part).find_first_of("#%") == std::string_view::npos)
                    all.push_back({call->At(part), std::string(call->Part(part))});
    };
}

Wanted KeywordsOf(bool conditions) {
    return [=](const CheckedGame& game, std::vector<Found>& all) {
        for (const CheckedCall& call : game.Calls())
            if (call.isCondition == conditions && call.call->entry != nullptr && call.call->hasParameter)
                all.push_back({call.line->At(call.call->keyword), std::string(call.Keyword())});
    };
}

/// Whole lines that begin with the word and hold the other.
Wanted LinesWith(std::string_view word, std::string_view other) {
    return [=](const CheckedGame& game, std::vector<Found>& all) {
        for (const problems::CheckedLine& line : game.Lines())
            if (BeginsWith(line.text, word) && line.text.find(other) != std::string_view::npos)
                all.push_back({line.place, std::string(line.text)});
    };
}

/// Misspells a name so that nothing else is called so.
bool MisspellPart(GameModel& game, Seeder& seeder, std::vector<std::string_view> keywords, std::size_t part) {
    const auto found = PickFound(game, seeder, PartsOf(std::move(keywords), part));
    return found && Replace(game, *found, seeder.Misspelt(found->text));
}

bool Capitals(GameModel& game, Seeder& seeder, std::vector<std::string_view> keywords) {
    const auto found = PickFound(game, seeder, PartsOf(std::move(keywords), 0));
    if (!found)
        return false;
    std::string other = Lower(found->text);
    if (other == found->text)
        other.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(other.front())));
    return other != found->text && Replace(game, *found, other);
}

/// Spoils one of the whole lines that begin with a word and hold another.
bool SpoilLine(GameModel& game, Seeder& seeder, std::string_view word, std::string_view other,
               std::string (*spoil)(std::string line)) {
    const auto found = PickFound(game, seeder, LinesWith(word, other));
    if (!found)
        return false;
    const std::string spoilt = spoil(found->text);
    return spoilt != found->text && Replace(game, *found, spoilt);
}

std::string With(std::string text, std::string_view from, std::string_view to) {
    const std::size_t at = text.find(from);
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

Thing& AddObject(GameModel& game, int room, std::string name) {
    Thing& object = game.Rooms.Edit(room).Objects.Append();
    object.Name = std::move(name);
    object.Look = "msg <It is what it is.>";
    return object;
}

int PickRoom(const GameModel& game, Seeder& seeder) {
    return 1 + seeder.Pick(game.Rooms.Count());
}

/// Places of the things that `accepts` wants.
std::vector<std::pair<int, int>> Objects(const GameModel& game, bool (*accepts)(const Thing&)) {
    std::vector<std::pair<int, int>> found;
    for (int room = 1; room <= game.Rooms.Count(); ++room)
        for (int k = 1; k <= game.Rooms[room].Objects.Count(); ++k)
            if (accepts(game.Rooms[room].Objects[k]))
                found.emplace_back(room, k);
    return found;
}

/// Printed texts of rooms and scripts, which format codes may spoil.
bool SpoilText(GameModel& game, Seeder& seeder, const std::function<std::string(const std::string&)>& spoil) {
    std::vector<Found> all;
    for (int room = 1; room <= game.Rooms.Count(); ++room)
        if (const std::string& look = game.Rooms[room].Look; look.size() > 20)
            all.push_back(
                {Place::Of({{FieldId::GameRooms, room}}, FieldId::RoomLook, {0, look.size()}), look});
    if (all.empty())
        return false;
    const Found& found = seeder.PickOf(all);
    const std::string spoilt = spoil(found.text);
    return spoilt != found.text && Replace(game, found, spoilt);
}

std::vector<Shared<ScriptPair> Room::*> Exits() {
    std::vector<Shared<ScriptPair> Room::*> exits = {&Room::Out};
    for (const CompassExit& exit : CompassExits)
        exits.push_back(exit.exit);
    return exits;
}

/// Removes all exits and places of a room, or all that lead to it, and what scripts say of it.
bool Unlink(GameModel& game, const std::string& name, bool inward) {
    bool isUnlinked = false;
    for (int room = 1; room <= game.Rooms.Count(); ++room) {
        if (!inward && game.Rooms[room].Name != name)
            continue;
        for (const auto exit : Exits())
            if (const std::string key = (game.Rooms[room].*exit)->Key; inward ? key == name : !key.empty()) {
                game.Rooms.Edit(room).*exit = ScriptPair();
                isUnlinked = true;
            }
        for (int k = game.Rooms[room].Places.Count(); k >= 1; --k)
            if (!inward || game.Rooms[room].Places[k].Key.ends_with(name)) {
                game.Rooms.Edit(room).Places.Remove(k);
                isUnlinked = true;
            }
    }
    return isUnlinked;
}

/// Whether any script has the name: then it may lead there or away.
bool IsInScripts(const GameModel& game, const std::string& name) {
    bool found = false;
    ForEachText(game, [&](const Place&, FieldUse use, const std::string& text) {
        found = found || (use.kind == FieldKind::Script && text.find('<' + name) != std::string::npos);
    });
    return found;
}

bool UnlinkRoom(GameModel& game, Seeder& seeder, bool inward) {
    for (int tries = 0; tries < 20; ++tries) {
        const int room = PickRoom(game, seeder);
        const std::string name = game.Rooms[room].Name;
        bool hasScripts = false;
        const Room& record = game.Rooms[room];
        ForEachTextOf(record, FieldUse{}, [&](const Place&, FieldUse use, const std::string& text) {
            hasScripts =
                hasScripts || (use.kind == FieldKind::Script && text.find("do <") != std::string::npos);
        });
        if (name != game.StartRoom && !IsInScripts(game, name) && (inward || !hasScripts))
            return Unlink(game, name, inward);
    }
    return false;
}

} // namespace zem::test
