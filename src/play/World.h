#pragma once

#include "model/GameModel.h"
#include "play/Book.h"
#include "play/Messages.h"
#include "play/Names.h"
#include "play/Sentence.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// A game made ready for playing: names are numbers, scripts are nodes. Nothing in it changes while a game is
/// played; what changes is in the State.
namespace zem::play {

/// One way out of a room, as the file has it.
struct WorldExit {
    bool exists = false;
    bool hasScript = false; // which runs instead of moving
    Number room = None;     // None for a scripted exit of the compass
    std::int32_t script = -1;
};

struct WorldPlace {
    const ScriptPair* record = nullptr;
    std::string prefix; // as written
    std::string foldedPrefix;
    Number room = None;
    bool hasScript = false;
    std::int32_t script = -1;
};

/// What a player may type here, and the script for it.
struct WorldCommand {
    std::vector<Pattern> patterns;
    std::int32_t script = -1; // -1 does nothing
};

/// A "use" or "give" line.
struct ItemRule {
    Number item = None;
    std::int32_t script = -1;
};

struct WorldThing {
    const Thing* record = nullptr;
    bool isCharacter = false;
    Number firstOfName = None; // the number of the first thing of its name
    NameForms forms;
    Book book;
    std::int32_t look = -1;
    std::int32_t speak = -1;
    std::int32_t take = -1;
    std::vector<ItemRule> uses;
    std::vector<ItemRule> gives;
};

struct WorldRoom {
    const Room* record = nullptr;
    Number number = None;
    NameForms forms;
    std::string foldedAlias;
    Book book;
    std::array<WorldExit, DirectionCount> exits;
    std::vector<WorldPlace> places;
    std::vector<WorldCommand> commands;
    std::vector<ItemRule> uses;
    std::int32_t enter = -1;
    std::int32_t description = -1;
    std::vector<WorldThing> things; // characters, then objects
};

struct WorldProcedure {
    const Procedure* record = nullptr;
    Number number = None;
    Book book;
    std::int32_t body = -1;
};

struct WorldMenu {
    const SelectionMenu* record = nullptr;
    Number number = None;
    Book book;
    std::vector<std::int32_t> choices; // the script of each, -1 for none
};

struct WorldText {
    const TextSection* record = nullptr;
    Book book;
};

struct WorldItem {
    Number number = None;
    std::string name;
    std::string folded;
};

struct WorldCollectable {
    Number number = None;
    std::int64_t lowest = 0;
    std::int64_t highest = 0;
    bool isShown = false;
    bool hiddenAtZero = false;
    std::string display;
};

struct WorldTimer {
    std::int64_t interval = 0; // in seconds, at least 1; 0 for a timer without a definition
    Script action;
};

/// The scripts of a game block. Of libraries only the commands and uses count.
struct WorldGame {
    Book book;
    std::int32_t start = -1;
    std::int32_t description = -1;
    std::int32_t beforeTurn = -1;
    std::int32_t afterTurn = -1;
    std::vector<WorldCommand> commands;
    std::vector<ItemRule> uses;
};

/// A game with the libraries that it includes, in the order in which they are read.
struct GameFiles {
    GameModel game;
    std::vector<GameModel> libraries;
    std::vector<std::string> libraryNames;
    std::vector<std::string> problems; // with libraries, in plain words, for the author
};

class World {
public:
    /// Makes a game ready.
    static std::shared_ptr<const World> Compile(GameFiles files);

    /// Makes a changed game ready, taking over what is made of records that both share, and the numbers of
    /// all names, so that a state can go on.
    static std::shared_ptr<const World> Compile(GameFiles files, const World& before);

    const GameModel& Game() const { return files_.game; }
    const GameFiles& Files() const { return files_; }
    const std::shared_ptr<Names>& NamesOfGame() const { return names_; }
    const Names& GetNames() const { return *names_; }

    /// What the cells hold when the game begins.
    const std::vector<std::int64_t>& Start() const { return start_; }
    /// The place of each thing in the file, by its number.
    const std::vector<std::uint32_t>& ThingOrder() const { return order_; }

    /// Null when the game has none of that number.
    const WorldRoom* FindRoom(Number number) const { return At(rooms_, number); }
    const WorldThing* FindThing(Number number) const { return At(things_, number); }
    const WorldProcedure* FindProcedure(Number number) const { return At(procedures_, number); }
    const WorldMenu* FindMenu(Number number) const { return At(menus_, number); }
    const WorldText* FindText(Number number) const { return At(texts_, number); }
    /// The text that a script names: capitals matter but in "intro", "win" and "lose", which every game has.
    const WorldText* FindTextOfScript(Number number) const;
    const WorldItem* FindItem(Number number) const { return At(items_, number); }
    const WorldCollectable* FindCollectable(Number number) const { return At(collectables_, number); }
    const WorldTimer* FindTimer(Number number) const { return At(timers_, number); }

    /// The text that is called so, whatever its capitals.
    const WorldText* FindTextIgnoringCase(std::string_view name) const;

    const std::vector<WorldItem>& Items() const { return itemList_; }
    const std::vector<WorldCollectable>& Collectables() const { return collectableList_; }
    const std::vector<std::pair<Number, WorldTimer>>& Timers() const { return timerList_; }
    const std::vector<std::shared_ptr<const WorldGame>>& GameBlocks() const { return games_; }
    const std::vector<SynonymRule>& Synonyms() const { return synonyms_; }

    const std::vector<std::shared_ptr<const WorldProcedure>>& AllProcedures() const { return procedureList_; }
    const std::vector<std::shared_ptr<const WorldMenu>>& AllMenus() const { return menuList_; }
    const std::vector<std::shared_ptr<const WorldText>>& AllTexts() const { return textList_; }
    /// The scripts of all timers.
    const Book& TimerBook() const { return timerBook_; }

    Number StartRoom() const { return startRoom_; }
    const std::string& TextOf(Message message) const { return messages_[static_cast<std::size_t>(message)]; }
    bool IsReplaced(Message message) const { return isReplaced_[static_cast<std::size_t>(message)]; }

    bool IsVariable(Number variable) const { return variable < isVariable_.size() && isVariable_[variable]; }
    /// True for a folded word that means something somewhere in the game.
    bool IsKnownWord(std::string_view word) const;

    /// All rooms in the order of the files, those included that share a name with a later one.
    const std::vector<std::shared_ptr<const WorldRoom>>& AllRooms() const { return roomList_; }

    /// The scripts of all records of the game itself, in the order in which the editor lists them.
    std::vector<const Book*> OwnBooks() const;

private:
    friend class WorldMaker;
    World() = default;

    template <class T>
    static const T* At(const std::vector<const T*>& list, Number number) {
        return number < list.size() ? list[number] : nullptr;
    }

    GameFiles files_;
    std::shared_ptr<Names> names_;
    std::vector<std::int64_t> start_;
    std::vector<std::uint32_t> order_;

    std::vector<const WorldRoom*> rooms_;
    std::vector<const WorldThing*> things_;
    std::vector<const WorldProcedure*> procedures_;
    std::vector<const WorldMenu*> menus_;
    std::vector<const WorldText*> texts_;
    std::vector<const WorldItem*> items_;
    std::vector<const WorldCollectable*> collectables_;
    std::vector<const WorldTimer*> timers_;

    std::vector<std::shared_ptr<const WorldRoom>> roomList_;
    std::vector<std::shared_ptr<const WorldProcedure>> procedureList_;
    std::vector<std::shared_ptr<const WorldMenu>> menuList_;
    std::vector<std::shared_ptr<const WorldText>> textList_;
    std::vector<std::shared_ptr<const WorldGame>> games_;
    std::vector<WorldItem> itemList_;
    std::vector<WorldCollectable> collectableList_;
    std::vector<std::pair<Number, WorldTimer>> timerList_;
    Book timerBook_;
    std::vector<SynonymRule> synonyms_;
    std::array<std::string, MessageCount> messages_;
    std::array<bool, MessageCount> isReplaced_{};
    Number startRoom_ = None;
    std::vector<bool> isVariable_;
    std::vector<bool> isWord_;
};

} // namespace zem::play
