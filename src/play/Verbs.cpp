#include "base/LineText.h"
#include "play/Interpreter.h"
#include "play/Limits.h"
#include "play/NameSearch.h"

#include <algorithm>

/// Carrying out what the player wants.
namespace zem::play {

namespace {

/// The script for an item among "use" or "give" lines, null when there is none.
const ItemRule* FindRule(const std::vector<ItemRule>& rules, Number item) {
    const auto found =
        std::find_if(rules.begin(), rules.end(), [&](const ItemRule& rule) { return rule.item == item; });
    return found == rules.end() ? nullptr : &*found;
}

/// What the Items pane shows of a collectable: every "!" is the value, and what stands between two "*" is
/// there for the plural only.
std::string DisplayOf(const WorldCollectable& collectable, std::int64_t value) {
    const bool isPlural = value != 1 && value != -1;
    std::string shown;
    const std::string& display = collectable.display;
    for (std::size_t at = 0; at < display.size(); ++at) {
        const std::size_t close = display[at] == '*' ? display.find('*', at + 1) : std::string::npos;
        if (display[at] == '!')
            shown += std::to_string(value);
        else if (close == std::string::npos)
            shown += display[at];
        else {
            for (std::size_t k = at + 1; isPlural && k < close; ++k)
                shown += display[k] == '!' ? std::to_string(value) : std::string(1, display[k]);
            at = close;
        }
    }
    return shown;
}

} // namespace

void Interpreter::Remember(const Reference& named) {
    if (named.kind != Reference::Thing && named.kind != Reference::Item)
        return;
    state_.Set(LastAny, named.Packed());
    if (named.kind == Reference::Thing)
        NoteHit(world_.FindThing(named.number)->book);
    Cell cell = LastIt;
    if (named.kind == Reference::Thing && world_.FindThing(named.number)->isCharacter) {
        const std::string gender = Fold(world_.FindThing(named.number)->record->Gender);
        cell = gender == "he" ? LastHe : gender == "she" ? LastShe : LastIt;
    }
    state_.Set(cell, named.Packed());
}

bool Interpreter::CarryOut(const Meaning& meaning) {
    for (const auto& [variable, text] : meaning.captures)
        SetVariable(variable, text);
    Remember(meaning.first);
    Remember(meaning.second);
    if (meaning.fails)
        return PrintMessage(meaning.message);
    switch (meaning.verb) {
    case Verb::Scripted:
        return Run(meaning.script);
    case Verb::Go:
        return Go(meaning.direction);
    case Verb::GoToPlace:
        return GoToPlace(meaning.place);
    case Verb::NoWay:
        return PrintMessage(Message::BadGo);
    case Verb::Look:
        return Describe();
    case Verb::LookAt:
        return LookAt(meaning.first);
    case Verb::Take:
        return Take(meaning.first);
    case Verb::Drop:
        return Drop(meaning.first);
    case Verb::Use:
        return Use(meaning.first);
    case Verb::UseOn:
        return UseOn(meaning.first, meaning.second);
    case Verb::Give:
        return Give(meaning.first, meaning.second);
    case Verb::SpeakTo:
        return SpeakTo(meaning.first);
    case Verb::Inventory:
        return TellInventory();
    case Verb::Wait:
        return PrintLine(TimePasses, {});
    case Verb::Help:
        for (const std::string_view line : SplitAt(HelpPage, "\r\n"))
            if (!PrintLine(line, {}))
                return false;
        return true;
    default:
        return true;
    }
}

bool Interpreter::Go(std::uint8_t direction) {
    const WorldRoom* room = Here();
    if (room == nullptr)
        return PrintMessage(Message::BadGo);
    const std::int64_t cell = state_[CellOf(Kind::Room, room->number) + FirstExit + direction];
    const WorldExit& exit = room->exits[direction];
    const bool isRedirected = cell >> 1 != 0;
    if ((cell & ExitClosed) == 0 && !isRedirected && exit.exists && exit.room == None)
        return Run({&room->book, exit.script});
    const Number leadsTo = ExitLeadsTo(world_, state_, *room, direction);
    if (leadsTo == None)
        return PrintMessage(Message::BadGo);
    if (!isRedirected && exit.hasScript)
        return Run({&room->book, exit.script});
    return Enter(leadsTo, Message::BadGo);
}

bool Interpreter::GoToPlace(std::size_t place) {
    const WorldRoom* room = Here();
    const WorldPlace& there = room->places[place];
    if (!IsOpenRoom(world_, state_, there.room))
        return PrintMessage(Message::BadPlace);
    if (there.hasScript)
        return Run({&room->book, there.script});
    return Enter(there.room, Message::BadPlace);
}

bool Interpreter::LookAt(const Reference& what) {
    if (what.kind == Reference::Player)
        return PrintMessage(Message::LookSelf);
    Number thing = what.number;
    if (what.kind == Reference::Item)
        thing =
            world_.GetNames().Find(Kind::Thing, Names::ThingKey(false, world_.FindItem(what.number)->name));
    const WorldThing* found = thing == None ? nullptr : world_.FindThing(thing);
    if (found == nullptr || found->look < 0)
        return PrintMessage(Message::DefaultLook);
    return Run({&found->book, found->look});
}

bool Interpreter::Take(const Reference& what) {
    const WorldThing* thing = world_.FindThing(what.number);
    if (thing->take < 0)
        return PrintMessage(Message::BadTake);
    const std::size_t printed = printer_.Count();
    gaveItem_ = false;
    if (!Run({&thing->book, thing->take}))
        return false;
    return !gaveItem_ || printer_.Count() != printed || PrintMessage(Message::Taken);
}

bool Interpreter::Drop(const Reference& what) {
    const Number object =
        world_.GetNames().Find(Kind::Thing, Names::ThingKey(false, world_.FindItem(what.number)->name));
    if (object == None || world_.FindThing(object) == nullptr || state_[PlayerRoom] == 0)
        return PrintMessage(Message::BadDrop);
    state_.Set(CellOf(Kind::Item, what.number), 0);
    const Cell cell = CellOf(Kind::Thing, object);
    state_.Set(cell + Where, state_[PlayerRoom]);
    state_.Set(cell + Switches, 0);
    return Spend(state_.ThingsIn(state_[PlayerRoom]).size() / 4) && PrintMessage(Message::Dropped);
}

bool Interpreter::Use(const Reference& item) {
    if (const WorldRoom* room = Here())
        if (const ItemRule* rule = FindRule(room->uses, item.number))
            return Run({&room->book, rule->script});
    for (const auto& game : world_.GameBlocks())
        if (const ItemRule* rule = FindRule(game->uses, item.number))
            return Run({&game->book, rule->script});
    return PrintMessage(Message::BadUse);
}

bool Interpreter::UseOn(const Reference& item, const Reference& on) {
    const WorldThing* thing = world_.FindThing(on.number);
    const ItemRule* rule = FindRule(thing->uses, item.number);
    return rule == nullptr ? PrintMessage(Message::BadUseOn) : Run({&thing->book, rule->script});
}

bool Interpreter::Give(const Reference& item, const Reference& to) {
    const WorldThing* thing = world_.FindThing(to.number);
    const ItemRule* rule = thing->isCharacter ? FindRule(thing->gives, item.number) : nullptr;
    if (rule == nullptr)
        return PrintMessage(Message::BadGive);
    if (rule->script >= 0)
        return Run({&thing->book, rule->script});
    state_.Set(CellOf(Kind::Item, item.number), 0);
    return PrintMessage(Message::Given);
}

bool Interpreter::SpeakTo(const Reference& whom) {
    if (whom.kind == Reference::Player)
        return PrintMessage(Message::SpeakToSelf);
    const WorldThing* thing = world_.FindThing(whom.number);
    if (!thing->isCharacter)
        return PrintMessage(Message::SpeakToThing);
    if (thing->speak < 0)
        return PrintMessage(Message::NoReply);
    return Run({&thing->book, thing->speak});
}

bool Interpreter::TellInventory() {
    std::vector<std::string> items;
    for (const WorldItem& item : world_.Items())
        if (state_[CellOf(Kind::Item, item.number)] != 0)
            items.push_back(item.name);
    if (!Spend(world_.Items().size()))
        return false;
    if (!(items.empty() ? PrintMessage(Message::EmptyHanded) : PrintList(Message::Inventory, items)))
        return false;
    for (const WorldCollectable& collectable : world_.Collectables()) {
        const std::int64_t value = state_[CellOf(Kind::Collectable, collectable.number)];
        const bool isShown = collectable.isShown && !(collectable.hiddenAtZero && value == 0);
        if (isShown && !PrintLine(DisplayOf(collectable, value), {}))
            return false;
    }
    return true;
}

bool Interpreter::TellAbout() {
    const GameModel& game = world_.Game();
    for (const std::string* text :
         {&game.GameName, &game.GameAuthor, &game.GameVersion, &game.GameCopyright, &game.GameInfo}) {
        if (text->empty())
            continue;
        printer_.Begin({});
        for (const std::string_view line : SplitAt(*text, "|n"))
            printer_.Raw(std::string(line) + "\n");
    }
    return true;
}

} // namespace zem::play
