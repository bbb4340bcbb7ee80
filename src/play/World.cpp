#include "play/World.h"

#include "base/LineText.h"
#include "play/WorldRecords.h"

#include <algorithm>
#include <unordered_map>

namespace zem::play {

/// Puts a world together from the records of its files, in their order.
class WorldMaker {
public:
    WorldMaker(GameFiles files, const World* before) : world_(new World) {
        world_->files_ = std::move(files);
        world_->names_ = before == nullptr ? std::make_shared<Names>() : before->names_;
        if (before != nullptr)
            NoteOld(*before);
    }

    std::shared_ptr<const World> Make() {
        AddBuiltInWords();
        AddFile(world_->files_.game, false);
        for (const GameModel& library : world_->files_.libraries)
            AddFile(library, true);
        world_->startRoom_ = Number_(Kind::Room, world_->files_.game.StartRoom);
        CollectVariablesAndWords();
        IndexLists();
        MakeStart();
        return world_;
    }

private:
    template <class T>
    using ByRecord = std::unordered_map<const void*, std::shared_ptr<const T>>;

    void NoteOld(const World& before) {
        // The old world keeps its records alive, so no new record can have the address of one of them.
        for (const auto& room : before.roomList_)
            oldRooms_.emplace(room->record, room);
        for (const auto& procedure : before.procedureList_)
            oldProcedures_.emplace(procedure->record, procedure);
        for (const auto& menu : before.menuList_)
            oldMenus_.emplace(menu->record, menu);
        for (const auto& text : before.textList_)
            oldTexts_.emplace(text->record, text);
    }

    Names& GetNames() { return *world_->names_; }
    Number Number_(Kind kind, std::string_view name) { return GetNames().Add(kind, name); }

    template <class T, class Record, class MakeIt>
    std::shared_ptr<const T> Reuse(const ByRecord<T>& old, const Record& record, MakeIt make) {
        if (const auto found = old.find(&record); found != old.end())
            return found->second;
        return make(GetNames(), record);
    }

    template <class T>
    static void PutFirst(std::vector<const T*>& list, Number number, const T* value) {
        if (list.size() <= number)
            list.resize(number + std::size_t{1});
        if (list[number] == nullptr)
            list[number] = value;
    }

    void AddFile(const GameModel& game, bool isLibrary) {
        world_->games_.push_back(MakeGame(GetNames(), game, isLibrary));
        AddRooms(game, isLibrary);
        for (const Procedure& record : game.Procedures) {
            const auto& made =
                world_->procedureList_.emplace_back(Reuse(oldProcedures_, record, MakeProcedure));
            PutFirst(world_->procedures_, made->number, made.get());
        }
        for (const SelectionMenu& record : game.SelectionMenus) {
            const auto& made = world_->menuList_.emplace_back(Reuse(oldMenus_, record, MakeMenu));
            PutFirst(world_->menus_, made->number, made.get());
        }
        for (const TextSection& record : game.TextSections) {
            const auto& made = world_->textList_.emplace_back(Reuse(oldTexts_, record, MakeText));
            if (!isLibrary || !record.Text.empty()) // every file has the standard texts, if empty ones
                PutFirst(world_->texts_, made->book.number, made.get());
        }
        AddItems(game, isLibrary);
        for (const SynonymEntry& synonym : game.Synonyms)
            if (auto rule = ReadSynonym(synonym.Words, synonym.ConvertTo))
                world_->synonyms_.push_back(*std::move(rule));
        AddTimers(GetNames(), world_->timerBook_, *game.UnknownBlocks, world_->timerList_);
        AddMessages(game);
    }

    void AddRooms(const GameModel& game, bool isLibrary) {
        const std::vector<const WorldRoom*> own =
            isLibrary ? world_->rooms_ : std::vector<const WorldRoom*>();
        for (const Room& record : game.Rooms) {
            const auto& made = world_->roomList_.emplace_back(Reuse(oldRooms_, record, MakeRoom));
            PutFirst(world_->rooms_, made->number, made.get());
            if (made->number >= own.size() || own[made->number] == nullptr)
                world_->rooms_[made->number] = made.get(); // the last of a name counts
            for (const WorldThing& thing : made->things)
                AddThing(thing, made->number);
        }
    }

    void AddThing(const WorldThing& thing, Number room) {
        if (occurrences_.size() <= thing.firstOfName)
            occurrences_.resize(thing.firstOfName + std::size_t{1});
        const int occurrence = ++occurrences_[thing.firstOfName];
        const Number number =
            occurrence == 1
                ? thing.firstOfName
                : Number_(Kind::Thing, Names::ThingKey(thing.isCharacter, thing.record->Name, occurrence));
        PutFirst(world_->things_, number, &thing);
        thingStarts_.push_back({number, room, thing.record->Hidden});
    }

    void AddItems(const GameModel& game, bool isLibrary) {
        for (const ItemEntry& item : game.Items) {
            const Number number = Number_(Kind::Item, item.Name);
            if (!item.Name.empty() && IsNew(seenItems_, number))
                world_->itemList_.push_back({number, item.Name, Fold(item.Name)});
            if (item.IsStartItem && !isLibrary)
                startItems_.push_back(number);
        }
        for (const Collectable& record : game.Collectables) {
            std::int64_t initial = 0;
            WorldCollectable made = MakeCollectable(GetNames(), record, initial);
            if (!IsNew(seenCollectables_, made.number))
                continue;
            amounts_.emplace_back(made.number, initial);
            world_->collectableList_.push_back(std::move(made));
        }
    }

    static bool IsNew(std::vector<bool>& seen, Number number) {
        if (seen.size() <= number)
            seen.resize(number + std::size_t{1});
        const bool isNew = !seen[number];
        seen[number] = true;
        return isNew;
    }

    void AddMessages(const GameModel& game) {
        for (std::size_t k = 0; k < MessageCount; ++k) {
            if (world_->messages_[k].empty())
                world_->messages_[k] = MessageRows[k].text;
            if (world_->isReplaced_[k])
                continue;
            for (const ErrorMessage& message : game.ErrorMessages)
                if (!message.GameText.empty() && EqualIgnoringCase(message.Name, MessageRows[k].name)) {
                    world_->messages_[k] = message.GameText;
                    world_->isReplaced_[k] = true;
                    break;
                }
        }
    }

    void AddBuiltInWords() {
        AddWords(
            builtIn_, GetNames(),
            "north n northeast ne east e southeast se south s southwest sw west w northwest nw out o exit "
            "leave up down in go walk run to enter look l around at examine x read inspect take get pick "
            "drop put use on with give offer show speak talk ask greet inventory inv i items wait z help "
            "save restore load restart quit q undo about version transcript off again g oops the a an "
            "some my it him her them me myself self yourself");
    }

    void CollectVariablesAndWords() {
        const auto mark = [](std::vector<bool>& marks, Number number) {
            if (marks.size() <= number)
                marks.resize(number + std::size_t{1});
            marks[number] = true;
        };
        const auto add = [&](const Book& book) {
            for (const Number variable : book.variables)
                mark(world_->isVariable_, variable);
            for (const Number word : book.words)
                mark(world_->isWord_, word);
        };
        add(builtIn_);
        add(world_->timerBook_);
        for (const auto& game : world_->games_)
            add(game->book);
        for (const auto& room : world_->roomList_) {
            add(room->book);
            for (const WorldThing& thing : room->things)
                add(thing.book);
        }
        for (const auto& procedure : world_->procedureList_)
            add(procedure->book);
        for (const auto& menu : world_->menuList_)
            add(menu->book);
    }

    void IndexLists() {
        for (auto& [timer, made] : world_->timerList_) {
            made.action.book = &world_->timerBook_;
            PutFirst<WorldTimer>(world_->timers_, timer, &made);
        }
        world_->timerBook_.owner = Owner::Timer;
        for (const WorldItem& item : world_->itemList_)
            PutFirst(world_->items_, item.number, &item);
        for (const WorldCollectable& collectable : world_->collectableList_)
            PutFirst(world_->collectables_, collectable.number, &collectable);
    }

    void MakeStart() {
        world_->start_.assign(GetNames().CellCount(), 0);
        world_->order_.assign(GetNames().Count(Kind::Thing), None);
        std::uint32_t order = 0;
        for (const ThingStart& thing : thingStarts_) {
            const Cell cell = GetNames().CellOf(Kind::Thing, thing.number);
            world_->start_[cell + Where] = static_cast<std::int64_t>(thing.room) + 1;
            world_->start_[cell + Switches] = thing.isHidden ? std::int64_t{Hidden} : 0;
            world_->order_[thing.number] = order++;
        }
        for (const Number item : startItems_)
            world_->start_[GetNames().CellOf(Kind::Item, item)] = 1;
        for (const auto& [collectable, amount] : amounts_)
            world_->start_[GetNames().CellOf(Kind::Collectable, collectable)] = amount;
    }

    struct ThingStart {
        Number number;
        Number room;
        bool isHidden;
    };

    std::shared_ptr<World> world_;
    ByRecord<WorldRoom> oldRooms_;
    ByRecord<WorldProcedure> oldProcedures_;
    ByRecord<WorldMenu> oldMenus_;
    ByRecord<WorldText> oldTexts_;
    std::vector<int> occurrences_; // of things, by the number of the first of their name
    std::vector<ThingStart> thingStarts_;
    std::vector<Number> startItems_;
    std::vector<bool> seenItems_;
    std::vector<bool> seenCollectables_;
    std::vector<std::pair<Number, std::int64_t>> amounts_;
    Book builtIn_;
};

std::shared_ptr<const World> World::Compile(GameFiles files) {
    return WorldMaker(std::move(files), nullptr).Make();
}

std::shared_ptr<const World> World::Compile(GameFiles files, const World& before) {
    return WorldMaker(std::move(files), &before).Make();
}

const WorldText* World::FindTextIgnoringCase(std::string_view name) const {
    const auto found = std::find_if(textList_.begin(), textList_.end(), [&](const auto& text) {
        return EqualIgnoringCase(text->record->Name, name) && !text->record->Text.empty();
    });
    return found == textList_.end() ? nullptr : found->get();
}

const WorldText* World::FindTextOfScript(Number number) const {
    if (const WorldText* exactly = FindText(number))
        return exactly;
    const std::string& name = names_->Name(Kind::Text, number);
    for (const std::string_view own : {"intro", "win", "lose"})
        if (EqualIgnoringCase(name, own))
            return FindTextIgnoringCase(own);
    return nullptr;
}

std::vector<const Book*> World::OwnBooks() const {
    // Each list begins with the records of the game; those of its libraries follow.
    std::vector<const Book*> books = {&games_.front()->book};
    for (std::size_t k = 0; k < static_cast<std::size_t>(files_.game.Rooms.Count()); ++k) {
        books.push_back(&roomList_[k]->book);
        for (const WorldThing& thing : roomList_[k]->things)
            books.push_back(&thing.book);
    }
    const auto add = [&](const auto& list, int count) {
        for (std::size_t k = 0; k < static_cast<std::size_t>(count); ++k)
            books.push_back(&list[k]->book);
    };
    add(procedureList_, files_.game.Procedures.Count());
    add(menuList_, files_.game.SelectionMenus.Count());
    add(textList_, files_.game.TextSections.Count());
    books.push_back(&timerBook_);
    return books;
}

bool World::IsKnownWord(std::string_view word) const {
    const Number number = names_->Find(Kind::Word, word);
    return number < isWord_.size() && isWord_[number];
}

} // namespace zem::play
