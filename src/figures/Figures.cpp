#include "figures/Figures.h"

#include "base/LineText.h"
#include "figures/PrintedWords.h"
#include "figures/Reach.h"

#include <algorithm>
#include <array>
#include <unordered_set>

namespace zem::figures {

namespace {

constexpr std::size_t ListedRooms = 5; // of the longest and of the shortest ones

Place RoomPlace(int room) {
    return Place::Of({{FieldId::GameRooms, room}});
}

/// Collects what one walk over all texts finds.
class Collector {
public:
    Collector(const GameModel& game, const CommandLookup& commands)
        : game_(game),
          reach_(game),
          roomWords_(static_cast<std::size_t>(game.Rooms.Count()) + 1) {
        VisitPrinted(
            game, commands,
            [&](const Place& place, PrintKind kind, std::size_t words) { AddWords(place, kind, words); },
            [&](const Place& place, const FoundCommand& command) { AddCommand(place, command); });
    }

    std::vector<Figure> Run(std::size_t wordsPerMinute) {
        AddRooms();
        AddThings();
        AddItems();
        AddOthers();
        AddWordFigures(wordsPerMinute);
        AddLongestRooms();
        return std::move(figures_);
    }

private:
    static int RoomOf(const Place& place) {
        return place.steps.front().list == FieldId::GameRooms ? place.steps.front().entry : 0;
    }

    void AddWords(const Place& place, PrintKind kind, std::size_t words) {
        if (words == 0)
            return;
        AddTo(words_[static_cast<std::size_t>(kind)], place, words);
        roomWords_[static_cast<std::size_t>(RoomOf(place))] += words;
        if (kind == PrintKind::Speech && place.steps[1].list == FieldId::RoomCharacters)
            AddTo(speech_, Place::Of({place.steps[0], place.steps[1]}), words);
    }

    /// Adds to the last entry where that is of the same place: a script is visited command by command.
    static void AddTo(std::vector<FigureEntry>& entries, const Place& place, std::size_t words) {
        if (!entries.empty() && entries.back().place == place)
            entries.back().value += words;
        else
            entries.push_back({place, words});
    }

    void AddCommand(const Place& place, const FoundCommand& command) {
        if (command.keyword == "goto")
            reach_.AddGoto(RoomOf(place), command.parameter);
        else if (command.keyword == "give")
            given_.insert(Lower(Trim(command.parameter)));
        else if (command.keyword == "win" || command.keyword == "die")
            endings_.push_back({place, 1});
    }

    Figure& Add(const char* id, const char* name, std::vector<FigureEntry> entries) {
        std::size_t sum = 0;
        for (const FigureEntry& entry : entries)
            sum += entry.value;
        return figures_.emplace_back(Figure{id, name, sum, false, std::move(entries)});
    }

    template <class Records, class IsListed>
    void AddRecords(const char* id, const char* name, const Records& records, FieldId list,
                    IsListed isListed) {
        std::vector<FigureEntry> entries;
        for (int k = 1; k <= records.Count(); ++k)
            if (isListed(k))
                entries.push_back({Place::Of({{list, k}}), 1});
        Add(id, name, std::move(entries));
    }

    void AddRooms() {
        const std::vector<bool> reached = reach_.Reached();
        const auto isReached = [&](int k) { return reached[static_cast<std::size_t>(k)]; };
        const auto& rooms = game_.Rooms;
        AddRecords("rooms", "rooms", rooms, FieldId::GameRooms, [](int) { return true; });
        AddRecords("rooms.reachable", "rooms that can be reached", rooms, FieldId::GameRooms, isReached);
        AddRecords("rooms.cutOff", "rooms that are cut off", rooms, FieldId::GameRooms,
                   [&](int k) { return !isReached(k); });
        std::vector<const Room*> byEntry = {nullptr};
        for (const Room& room : rooms)
            byEntry.push_back(&room);
        AddRecords("rooms.withoutText", "rooms without a description", rooms, FieldId::GameRooms, [&](int k) {
            const Room& room = *byEntry[static_cast<std::size_t>(k)];
            return room.Look.empty() && room.Description.empty();
        });
    }

    void AddThings() {
        std::vector<FigureEntry> objects;
        std::vector<FigureEntry> characters;
        int number = 0;
        for (const Room& room : game_.Rooms) {
            ++number;
            for (int k = 1; k <= room.Objects.Count(); ++k) {
                objects.push_back({Place::Of({{FieldId::GameRooms, number}, {FieldId::RoomObjects, k}}), 1});
                if (!room.Objects[k].Take.empty())
                    takeable_.insert(Lower(Trim(room.Objects[k].Name)));
            }
            for (int k = 1; k <= room.Characters.Count(); ++k)
                characters.push_back(
                    {Place::Of({{FieldId::GameRooms, number}, {FieldId::RoomCharacters, k}}), 1});
        }
        Add("objects", "objects", std::move(objects));
        Add("characters", "characters", std::move(characters));
    }

    void AddItems() {
        const auto isNamed = [&](int k) { return !Trim(game_.Items[k].Name).empty(); };
        const auto isObtainable = [&](int k) {
            const std::string name = Lower(Trim(game_.Items[k].Name));
            return game_.Items[k].IsStartItem || given_.contains(name) || takeable_.contains(name);
        };
        AddRecords("items", "items", game_.Items, FieldId::GameItems, isNamed);
        AddRecords("items.obtainable", "items that can be had", game_.Items, FieldId::GameItems,
                   [&](int k) { return isNamed(k) && isObtainable(k); });
        AddRecords("items.notObtainable", "items that nothing gives", game_.Items, FieldId::GameItems,
                   [&](int k) { return isNamed(k) && !isObtainable(k); });
    }

    void AddOthers() {
        std::vector<FigureEntry> commands;
        for (int k = 1; k <= game_.PlayerCommands.Count(); ++k)
            commands.push_back({Place::Of({{FieldId::GamePlayerCommands, k}}), 1});
        int number = 0;
        for (const Room& room : game_.Rooms) {
            ++number;
            for (int k = 1; k <= room.Commands.Count(); ++k)
                commands.push_back(
                    {Place::Of({{FieldId::GameRooms, number}, {FieldId::RoomCommands, k}}), 1});
        }
        Add("commands", "player commands", std::move(commands));
        Add("endings", "endings", std::move(endings_));
        std::vector<FigureEntry> procedures;
        number = 0;
        for (const Procedure& procedure : game_.Procedures)
            if (++number; !procedure.Name.starts_with(InternalProcedure))
                procedures.push_back({Place::Of({{FieldId::GameProcedures, number}}), 1});
        Add("procedures", "procedures", std::move(procedures));
        AddRecords("texts", "text blocks", game_.TextSections, FieldId::GameTextSections,
                   [](int) { return true; });
        AddRecords("menus", "menus", game_.SelectionMenus, FieldId::GameSelectionMenus,
                   [](int) { return true; });
    }

    void AddWordFigures(std::size_t wordsPerMinute) {
        static constexpr std::array Names = {std::pair{"words.descriptions", "words in descriptions"},
                                             std::pair{"words.speech", "words spoken"},
                                             std::pair{"words.menus", "words in menus"},
                                             std::pair{"words.texts", "words in text blocks"},
                                             std::pair{"words.messages", "words in messages"}};
        std::size_t all = 0;
        for (const auto& words : words_)
            for (const FigureEntry& entry : words)
                all += entry.value;
        figures_.push_back({"words", "printed words", all, false, {}});
        for (std::size_t kind = 0; kind < Names.size(); ++kind)
            Add(Names[kind].first, Names[kind].second, std::move(words_[kind]));
        Add("words.byCharacter", "words spoken by characters", std::move(speech_));
        const std::size_t minutes = (all + wordsPerMinute - 1) / std::max<std::size_t>(wordsPerMinute, 1);
        figures_.push_back({"readingMinutes", "minutes to read it all, about", minutes, true, {}});
    }

    void AddLongestRooms() {
        std::vector<FigureEntry> rooms;
        for (int k = 1; k <= game_.Rooms.Count(); ++k)
            rooms.push_back({RoomPlace(k), roomWords_[static_cast<std::size_t>(k)]});
        const auto add = [&](const char* id, const char* name, auto isBefore) {
            std::vector<FigureEntry> sorted = rooms;
            std::stable_sort(sorted.begin(), sorted.end(), isBefore);
            sorted.resize(std::min(sorted.size(), ListedRooms));
            const std::size_t first = sorted.empty() ? 0 : sorted.front().value;
            Add(id, name, std::move(sorted)).value = first;
        };
        add("rooms.longest", "words of the longest room",
            [](const FigureEntry& a, const FigureEntry& b) { return a.value > b.value; });
        add("rooms.shortest", "words of the shortest room",
            [](const FigureEntry& a, const FigureEntry& b) { return a.value < b.value; });
    }

    const GameModel& game_;
    Reach reach_;
    std::vector<Figure> figures_;
    std::array<std::vector<FigureEntry>, 5> words_; // by PrintKind
    std::vector<FigureEntry> speech_;
    std::vector<FigureEntry> endings_;
    std::vector<std::size_t> roomWords_; // by room; 0 for what stands in no room
    std::unordered_set<std::string> given_;
    std::unordered_set<std::string> takeable_;
};

} // namespace

std::vector<Figure> FiguresOf(const GameModel& game, const CommandLookup& commands,
                              std::size_t wordsPerMinute) {
    return Collector(game, commands).Run(wordsPerMinute);
}

} // namespace zem::figures
