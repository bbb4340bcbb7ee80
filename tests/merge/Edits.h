#pragma once

#include "base/LineText.h"
#include "merge/Describe.h"
#include "model/InternalScripts.h"
#include "model/Texts.h"
#include "support/Games.h"

#include <functional>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

/// Small changes that an author makes, and ways to compare what comes of them.
namespace zem::test {

inline GameModel Lighthouse() {
    return LoadBytes(ReadBytes(ZEM_SAMPLES "/lighthouse.kel"));
}

/// The game as its file gives it back.
inline GameModel Saved(const GameModel& game) {
    GameModel back;
    back.ErrorMessages = game.ErrorMessages;
    ReadGame(back, SaveToBytes(game));
    return back;
}

struct Edit {
    std::string kind;
    // What two edits must not both touch; what stands in a room begins with the room.
    std::vector<std::string> touches;
    std::function<void(GameModel&)> apply;
};

inline bool TouchTheSame(const Edit& a, const Edit& b) {
    for (const std::string& one : a.touches)
        for (const std::string& other : b.touches)
            if (one.starts_with(other) || other.starts_with(one))
                return true;
    return false;
}

inline GameModel Changed(GameModel game, const Edit& edit) {
    edit.apply(game);
    return Saved(game);
}

inline int RoomCalled(const GameModel& game, const std::string& name) {
    for (int k = 1; k <= game.Rooms.Count(); ++k)
        if (game.Rooms[k].Name == name)
            return k;
    throw KelError("no room " + name);
}

inline int EntryCalled(const auto& list, const std::string& name) {
    for (int k = 1; k <= list.Count(); ++k)
        if (list[k].Name == name)
            return k;
    throw KelError("no entry " + name);
}

/// Picks edits of one game. Rooms and things are found by their names again, because the edits are applied to
/// other versions, too.
class Editor {
public:
    Editor(const GameModel& game, std::mt19937& random) : game_(game), random_(random) {}

    Edit Pick() {
        using Make = Edit (Editor::*)();
        static constexpr Make Makers[] = {
            &Editor::RoomText,  &Editor::ThingLook,      &Editor::Exit,         &Editor::NewRoom,
            &Editor::NewThing,  &Editor::DropThing,      &Editor::MoveThing,    &Editor::NewItem,
            &Editor::StartItem, &Editor::NewCollectable, &Editor::NewProcedure, &Editor::ProcedureLine,
            &Editor::NewScript, &Editor::MoreLines,      &Editor::TextLine,     &Editor::Synonym,
            &Editor::Command,   &Editor::Message,        &Editor::Author,       &Editor::RoomTag,
            &Editor::Choice,    &Editor::UseRule,        &Editor::RenameRoom,   &Editor::DropRoom,
            &Editor::NewBlock};
        return (this->*Makers[Any(static_cast<int>(std::size(Makers)))])();
    }

private:
    int Any(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }
    std::string Word() { return "w" + std::to_string(Any(1000000)); }
    std::string AnyRoom() { return game_.Rooms[1 + Any(game_.Rooms.Count())].Name; }

    static Room& Find(GameModel& game, const std::string& room) {
        return game.Rooms.Edit(RoomCalled(game, room));
    }

    /// A room with an object, and its object.
    std::pair<std::string, std::string> AnyObject() {
        while (true) {
            const Room& room = game_.Rooms[1 + Any(game_.Rooms.Count())];
            if (!room.Objects.IsEmpty())
                return {room.Name, room.Objects[1 + Any(room.Objects.Count())].Name};
        }
    }

    Edit RoomText() {
        return {"room text",
                {"room " + (at_ = AnyRoom()) + "\nlook\n"},
                [room = at_, word = Word()](GameModel& game) { Find(game, room).Look += " " + word; }};
    }
    Edit ThingLook() {
        const auto [room, object] = AnyObject();
        return {"look of a thing",
                {"room " + room + "\nobject " + object + "\nlook\n"},
                [room = room, object = object, word = Word()](GameModel& game) {
                    Room& found = Find(game, room);
                    found.Objects.Edit(EntryCalled(found.Objects, object)).Look = "msg <" + word + ">";
                }};
    }
    Edit Exit() {
        return {"exit",
                {"room " + (at_ = AnyRoom()) + "\nnorth\n"},
                [room = at_, to = AnyRoom()](GameModel& game) {
                    Find(game, room).SouthWest = ScriptPair{to, ""};
                }};
    }
    Edit NewRoom() {
        return {"new room", {"new " + (at_ = Word())}, [name = at_](GameModel& game) {
                    Room& room = game.Rooms.Append();
                    room.Name = name;
                    room.Look = "A new room.";
                }};
    }
    Edit NewThing() {
        const std::string room = AnyRoom();
        return {
            "new thing", {"room " + room + "\nnew " + (at_ = Word())}, [name = at_, room](GameModel& game) {
                Thing& thing = Find(game, room).Objects.Append();
                thing.Name = name;
                thing.Look = "msg <New.>";
            }};
    }
    Edit DropThing() {
        const auto [room, object] = AnyObject();
        return {"thing deleted",
                {"room " + room + "\nobject " + object + "\n"},
                [room = room, object = object](GameModel& game) {
                    Room& found = Find(game, room);
                    found.Objects.Remove(EntryCalled(found.Objects, object));
                }};
    }
    Edit MoveThing() {
        const auto [room, object] = AnyObject();
        const std::string to = AnyRoom();
        return {"thing moved",
                {"room " + room + "\nobject " + object + "\n", "room " + to + "\nnew\n"},
                [room = room, object = object, to](GameModel& game) {
                    Room& found = Find(game, room);
                    const int entry = EntryCalled(found.Objects, object);
                    const Thing thing = found.Objects[entry];
                    found.Objects.Remove(entry);
                    Find(game, to).Objects.Append(thing);
                }};
    }
    Edit NewItem() {
        return {"new item", {"new " + (at_ = Word())}, [name = at_](GameModel& game) {
                    game.Items.Append({name, true});
                }};
    }
    Edit StartItem() {
        const std::string item = game_.Items[1 + Any(game_.Items.Count())].Name;
        return {"start item", {"item " + item + "\n"}, [item](GameModel& game) {
                    ItemEntry& entry = game.Items.Edit(EntryCalled(game.Items, item));
                    entry.IsStartItem = !entry.IsStartItem;
                }};
    }
    Edit NewCollectable() {
        return {"new collectable", {"new " + (at_ = Word())}, [name = at_](GameModel& game) {
                    game.Collectables.Append({name + " p=0 [! x]", name});
                }};
    }
    Edit NewProcedure() {
        return {"new procedure", {"new " + (at_ = Word())}, [name = at_](GameModel& game) {
                    game.Procedures.Append({name, "msg <a>\r\nmsg <b>\r\n"});
                }};
    }
    Edit ProcedureLine() {
        const Procedure& procedure = game_.Procedures[1 + Any(game_.Procedures.Count())];
        return {"line of a procedure",
                {"procedure " + procedure.Name + "\n"},
                [name = procedure.Name, word = Word()](GameModel& game) {
                    std::string& script = game.Procedures.Edit(EntryCalled(game.Procedures, name)).Script;
                    script.insert(script.find("\r\n") + 2, "msg <" + word + ">\r\n");
                }};
    }
    Edit NewScript() {
        return {"new script of several lines",
                {"room " + (at_ = AnyRoom()) + "\ndescription\n"},
                [room = at_, word = Word()](GameModel& game) {
                    const std::string name = AddInternalProcedure(game, "msg <" + word + ">\r\nwait <>\r\n");
                    Find(game, room).Description = "do <" + name + ">";
                }};
    }
    Edit MoreLines() {
        const auto [room, object] = AnyObject();
        return {"a take of several lines",
                {"room " + room + "\nobject " + object + "\ntake\n"},
                [room = room, object = object, word = Word()](GameModel& game) {
                    const std::string name = AddInternalProcedure(game, "msg <" + word + ">\r\ntake\r\n");
                    Room& found = Find(game, room);
                    found.Objects.Edit(EntryCalled(found.Objects, object)).Take =
                        "if flag <x> then do <" + name + "> else msg <No.>";
                }};
    }
    Edit TextLine() {
        const TextSection& text = game_.TextSections[1 + Any(game_.TextSections.Count())];
        return {"line of a text",
                {"text " + text.Name + "\n"},
                [name = text.Name, word = Word()](GameModel& game) {
                    game.TextSections.Edit(EntryCalled(game.TextSections, name)).Text += "\r\n" + word;
                }};
    }
    Edit Synonym() {
        return {"new synonym", {"new " + (at_ = Word())}, [word = at_](GameModel& game) {
                    game.Synonyms.Append({word, "look"});
                }};
    }
    Edit Command() {
        const std::string room = AnyRoom();
        return {
            "new command", {"room " + room + "\nnew " + (at_ = Word())}, [room, word = at_](GameModel& game) {
                game.PlayerCommands.Append({word, "msg <a>"});
                Find(game, room).Commands.Append({word, "msg <b>"});
            }};
    }
    Edit Message() {
        const int entry = 1 + Any(game_.ErrorMessages.Count());
        return {"message",
                {"message " + std::to_string(entry) + "\n"},
                [entry, word = Word()](GameModel& game) { game.ErrorMessages.Edit(entry).GameText = word; }};
    }
    Edit Author() {
        return {"author", {"author"}, [word = Word()](GameModel& game) { game.GameAuthor += word; }};
    }
    Edit RoomTag() {
        const std::string room = AnyRoom();
        return {"tag", {"room " + room + "\nnew " + (at_ = Word())}, [room, word = at_](GameModel& game) {
                    Find(game, room).MiscTags += word + " <1>\r\n";
                }};
    }
    Edit Choice() {
        const std::string menu = game_.SelectionMenus[1 + Any(game_.SelectionMenus.Count())].Name;
        return {"choice", {"new " + (at_ = Word())}, [menu, word = at_](GameModel& game) {
                    game.SelectionMenus.Edit(EntryCalled(game.SelectionMenus, menu))
                        .Choices.Append({word, "msg <x>"});
                }};
    }
    Edit UseRule() {
        const auto [room, object] = AnyObject();
        return {"use rule",
                {"room " + room + "\nobject " + object + "\nuse\n"},
                [room = room, object = object, word = Word()](GameModel& game) {
                    Room& found = Find(game, room);
                    found.Objects.Edit(EntryCalled(found.Objects, object)).Uses.Append({word, "msg <x>"});
                }};
    }
    Edit RenameRoom() {
        return {"room renamed",
                {"room " + (at_ = AnyRoom()) + "\n"},
                [room = at_, word = Word()](GameModel& game) {
                    game.Rooms.Edit(RoomCalled(game, room)).Name += word;
                }};
    }
    Edit DropRoom() {
        return {"room deleted", {"room " + (at_ = AnyRoom()) + "\n"}, [room = at_](GameModel& game) {
                    game.Rooms.Remove(RoomCalled(game, room));
                }};
    }
    Edit NewBlock() {
        return {"block of another kind", {"new " + (at_ = Word())}, [word = at_](GameModel& game) {
                    game.UnknownBlocks.Edit() += "define timer <" + word + ">\r\nend define\r\n\r\n";
                }};
    }

    const GameModel& game_;
    std::mt19937& random_;
    std::string at_;
};

inline Edit RandomEdit(const GameModel& game, std::mt19937& random) {
    return Editor(game, random).Pick();
}

/// A text that an author may change alone: the names of standard texts and of messages are not.
inline Place RandomText(const GameModel& game, std::mt19937& random) {
    std::vector<Place> places;
    ForEachText(game, [&](const Place& place, FieldUse, const std::string& text) {
        if (place.field != FieldId::GameKelVersion && place.field != FieldId::TextName &&
            place.field != FieldId::ErrorName && place.field != FieldId::ErrorDescription &&
            place.field != FieldId::CollectableName && !text.starts_with(InternalProcedure) &&
            place.field != FieldId::GameUnknownBlocks)
            places.push_back(place);
    });
    return places[std::uniform_int_distribution<std::size_t>(0, places.size() - 1)(random)];
}

/// Puts a word into the first line of a text.
inline void ChangeText(GameModel& game, const Place& place, const std::string& word) {
    std::string text = *Resolve(game, place)->text;
    const std::size_t bracket = text.find('>');
    text.insert(bracket == std::string::npos ? std::min(text.find("\r\n"), text.size()) : bracket,
                " " + word);
    SetText(game, place, text);
}

/// The game as an author sees it, in order, without the numbers of internal procedures.
inline std::string AsShown(const GameModel& game) {
    const merge::RecordTree tree(game, 'x');
    return merge::RecordText(tree, 0);
}

namespace detail {

inline std::string SortedText(const merge::RecordTree& tree, int record) {
    std::multimap<std::string, std::string> children;
    for (const int child : tree[record].children)
        children.emplace(std::string(tree[child].listName) + " " + std::string(tree[child].key),
                         SortedText(tree, child));
    std::string text;
    for (const merge::TreeField& field : tree[record].fields) {
        std::string value = merge::WithoutMarks(field.text);
        if (field.id == FieldId::RoomMiscTags) {
            auto lines = std::multiset<std::string>();
            for (const std::string_view line : SplitAt(value, "\r\n"))
                lines.emplace(line);
            value.clear();
            for (const std::string& line : lines)
                value += line + "\n";
        }
        text += std::string(field.name) + ": " + value + "\n";
    }
    for (const auto& [name, child] : children)
        text += name + "\n" + child + "end\n";
    return text;
}

} // namespace detail

/// The same with lists as sets: for games that may differ in order.
inline std::string AsSet(const GameModel& game) {
    const merge::RecordTree tree(game, 'x');
    return detail::SortedText(tree, 0);
}

} // namespace zem::test
