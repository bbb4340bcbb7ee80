#include "game/Rename.h"

#include "base/KelError.h"
#include "game/GameNames.h"
#include "game/Mentions.h"
#include "game/WhereUsed.h"
#include "readback/ReadBack.h"
#include "support/Cases.h"
#include "support/Catalogue.h"
#include "support/Games.h"
#include "support/NamedGame.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace zem::test {
namespace {

constexpr NameKind Renamed[] = {NameKind::Room,        NameKind::Object,      NameKind::Character,
                                NameKind::Item,        NameKind::Procedure,   NameKind::Menu,
                                NameKind::TextSection, NameKind::Collectable, NameKind::Variable,
                                NameKind::Flag,        NameKind::Timer};

class Rename : public testing::Test {
protected:
    /// The ticked changes are made; what was answered if that is not allowed.
    std::string Do(GameModel& game, const RenameRequest& request) {
        const RenamePlan plan = PlanRename(game, commands, request);
        if (!plan.isAllowed)
            return plan.answer.message;
        CarryOut(plan, game);
        return "";
    }

    std::string Told(const GameModel& game, const RenamePlan& plan) const {
        std::string text;
        for (const RenameChange& change : plan.changes)
            text += std::string(change.isTicked ? "[x] " : "[ ] ") +
                    DescribePlace(game, change.change.place) + " (" + Describe(change.reason) +
                    "): " + change.before.text + " -> " + change.after.text + "\n";
        return text;
    }

    /// The kinds and roles of references that lead nowhere; the names themselves may change.
    std::multiset<std::pair<NameKind, std::string>> Unresolved(const GameModel& game) const {
        std::multiset<std::pair<NameKind, std::string>> lost;
        std::set<std::pair<NameKind, std::string>> known;
        ForEachReference(game, commands, [&](const Reference& reference) {
            if (reference.role == ReferenceRole::Definition)
                known.emplace(reference.kind, reference.name);
        });
        ForEachReference(game, commands, [&](const Reference& reference) {
            const std::string name(reference.name);
            const bool isThing =
                reference.kind == NameKind::Thing &&
                (known.contains({NameKind::Object, name}) || known.contains({NameKind::Character, name}));
            if (reference.role == ReferenceRole::Use && !IsMadeByUse(reference.kind) && !isThing &&
                !known.contains({reference.kind, name}))
                lost.emplace(reference.kind, DescribePlace(game, reference.place.WholeField()));
        });
        return lost;
    }

    const CommandCatalogue catalogue = ShippedCatalogue();
    const CommandLookup commands{catalogue};
};

std::string FreshName(NameKind kind, int k) {
    return (kind == NameKind::Collectable ? "Fresh\xE9" : "A fresh \xE9 name ") + std::to_string(k);
}

// A game made with another name is the same game with the name changed: nothing is missed, and nothing else
// becomes different.
TEST_F(Rename, ChangesEveryReferenceAndNothingElse) {
    int renames = 0;
    for (unsigned seed = 1; seed <= 25; ++seed)
        for (const NameKind kind : Renamed) {
            const NamePools old = OrdinaryNames();
            NamePools other = old;
            std::string& name = other[kind][seed % other[kind].size()];
            const std::string oldName = std::exchange(name, FreshName(kind, 1));
            GameModel game = NamedGame(seed, old, catalogue).Make();
            const GameModel before = game;
            if (kind == NameKind::Variable) // names of rooms with it, and references to them, follow
                for (std::string& room : other[NameKind::Room])
                    if (room == "Hall #" + oldName + "#")
                        room = "Hall #" + name + "#";
            ASSERT_EQ(Do(game, {.kind = kind, .oldName = oldName, .newName = name}), "") << oldName;
            ASSERT_TRUE(SameGame(game, NamedGame(seed, other, catalogue).Make()))
                << Describe(kind) << " " << oldName << " of seed " << seed;
            EXPECT_FALSE(SameGame(game, before));
            ++renames;
            ASSERT_EQ(Do(game, {.kind = kind, .oldName = name, .newName = oldName}), "");
            ASSERT_TRUE(GameFile(game) == GameFile(before)) << "and back";
        }
    EXPECT_EQ(renames, 25 * 11);
}

TEST_F(Rename, OfEveryNameOfEverySampleKeepsTheLaws) {
    int names = 0;
    for (const auto& path : FilesIn(ZEM_SAMPLES)) {
        const GameModel original = LoadBytes(ReadBytes(path));
        const auto lost = Unresolved(original);
        GameModel game = original;
        GameModel loaded = LoadBytes(GameFile(original));
        GameIndex index(commands);
        std::vector<RenameRequest> done;
        for (const NameKind kind : Renamed)
            for (const std::string& name : GameNames(original, kind, commands)) {
                const RenameRequest request = {
                    .kind = kind, .oldName = name, .newName = FreshName(kind, ++names)};
                index.GoOnTo(game);
                const RenamePlan plan = PlanRename(index, request, 10);
                if (!plan.isAllowed) {
                    EXPECT_NE(plan.answer.message.find(kind == NameKind::TextSection ? "intro" : "thing"),
                              std::string::npos)
                        << plan.answer.message;
                    continue;
                }
                EXPECT_GT(CarryOut(plan, game), 0);
                done.push_back(request);
            }
        EXPECT_FALSE(SameGame(game, original));
        for (const RenameRequest& request : done) {
            const auto left = GameNames(game, request.kind, commands);
            EXPECT_EQ(std::count(left.begin(), left.end(), request.oldName), 0) << request.oldName;
        }
        EXPECT_EQ(Unresolved(game).size(), lost.size()) << path;
        EXPECT_TRUE(ReadBack(game, GameFile(game)).size() == ReadBack(original, GameFile(original)).size())
            << path;
        for (const RenameRequest& request : done) { // to save and then to rename is the same
            index.GoOnTo(loaded);
            CarryOut(PlanRename(index, request, 0), loaded);
        }
        EXPECT_TRUE(SameGame(loaded, LoadBytes(GameFile(game)))) << path;
        for (auto request = done.rbegin(); request != done.rend(); ++request) {
            std::swap(request->oldName, request->newName);
            index.GoOnTo(game);
            EXPECT_GT(CarryOut(PlanRename(index, *request, 0), game), 0) << request->oldName;
        }
        EXPECT_TRUE(GameFile(game) == GameFile(original)) << path;
    }
    EXPECT_GT(names, 600);
}

constexpr const char* House =
    "define game <G>\nstart <Hall>\nitems <lamp; rope>\ncollectables <gold p=0 []>\n"
    "command <rub lamp> type <look at lamp>\n"
    "startscript {\nflag on <lit>\nflag on <Lit>\ntimer on <tide>\nset <x; 1>\nset <n; 1>\nmsg <#gone# %x%>\n"
    "goto <hall>\ngoto <#n#>\nthunder <lamp>\nthunder <a lamp>\nbring <Tom>\nshow <Tom>\nif here <lamp> then "
    "win\n}\n"
    "glow <Hall> lamp\nend define\n"
    "define synonyms\nlantern; key = lamp\nend define\n"
    "define room <Hall>\nlook <This hall is the HALL, no Hallway. A Lamp.>\n"
    "define object <lamp>\ntake give <lamp>\nend define\n"
    "define object <rope>\nend define\nend define\n"
    "define room <Attic>\nout <Hall>\nplace <the; Hall>\n"
    "define object <lamp>\nend define\ndefine character <Tom>\nend define\ndefine object <Tom>\nend "
    "define\nend define\n"
    "define procedure <p>\ndo <gone>\nend define\ndefine procedure <~Internal Procedure 9>\nend define\n"
    "define text <sign>\nend define\ndefine selection <m>\nend define\n"
    "define timer <tide>\nend define\ndefine timer <noon>\nend define\n";

TEST_F(Rename, AnswersToTheNewName) {
    const GameModel game = LoadBytes(CrLf(House));
    const GameIndex index(commands, game);
    using enum NameVerdict;
    for (const auto& [kind, oldName, newName, verdict, message] :
         Cases<NameKind, std::string, std::string, NameVerdict, std::string>{
             {NameKind::Room, "Hall", "", Unchanged, "Type the new name."},
             {NameKind::Room, "Hall", "   ", Unchanged, "Type the new name."},
             {NameKind::Room, "Hall", " Hall ", Unchanged, "This is its name already."},
             {NameKind::Room, "Hall", "hall", Fine, ""},
             {NameKind::Room, "Hall", " Pantry ", Fine, ""},
             {NameKind::Room, "Hall", "a<b", Refused, "A name cannot hold < or >."},
             {NameKind::Flag, "lit", "a>b", Refused, "A name cannot hold < or >."},
             {NameKind::Room, "Hall", "a;b", Refused,
              "A name cannot hold ;, which separates names in lists."},
             {NameKind::Room, "Hall", "a, b", Fine, ""},
             {NameKind::Item, "lamp", "a, b", Refused,
              "The name of an item cannot hold a comma, which separates names in lists."},
             {NameKind::Collectable, "gold", "a,b", Refused,
              "The name of a collectable cannot hold a comma, which separates names in lists."},
             {NameKind::Collectable, "gold", "a b", Refused,
              "The name of a collectable cannot hold a blank."},
             {NameKind::Room, "Hall", "{", Refused, "A name cannot hold { or }."},
             {NameKind::Room, "Hall", "a\tb", Refused,
              "A name cannot hold a line break, a TAB or another control character."},
             {NameKind::Room, "Hall", "a\r\nb", Refused,
              "A name cannot hold a line break, a TAB or another control character."},
             {NameKind::Variable, "x", "a#", Refused, "The name of a variable cannot hold # or %."},
             {NameKind::Procedure, "p", "~internal procedure 3", Refused,
              "The name ~internal procedure 3 is taken by the program."},
             {NameKind::Room, "Hall", "[ACTION]", Refused, "The name [ACTION] is taken by the program."},
             {NameKind::TextSection, "sign", "Win", Refused, "The name Win is taken by the program."},
             {NameKind::TextSection, "Intro", "sign 2", Refused,
              "The texts intro, win and lose cannot be renamed: every game has them."},
             {NameKind::Procedure, "~Internal Procedure 9", "q", Refused,
              "Zem has made this procedure of a script, and gives it its name."},
             {NameKind::Room, "Cellar", "Pantry", Refused, "There is no room Cellar."},
             {NameKind::Room, "hall", "Pantry", Refused,
              "There is no room hall, but one is called Hall: capitals count in names."},
             {NameKind::Flag, "dark", "Pantry", Refused, "There is no flag dark."},
             {NameKind::File, "a.png", "b.png", Refused, "This cannot be renamed."},
             {NameKind::Room, "Hall", "attic", Refused, "There is already a room Attic."},
             {NameKind::Object, "lamp", "Rope", Refused, "There is already an object rope."},
             {NameKind::Menu, "m", "gone", Fine, ""},
             {NameKind::Item, "lamp", "Hall", Fine, ""}, // names of one kind are no others
             {NameKind::Flag, "lit", "Lit", Merges, "Make them one? Lit is used in 1 place."},
             {NameKind::Flag, "lit", "LIT", Fine, ""},
             {NameKind::Variable, "x", "gone", Merges, "Make them one? gone is used in 1 place."},
             {NameKind::Timer, "tide", "noon", Refused, "There is already a timer noon."},
         }) {
        const NewNameAnswer answer = JudgeNewName(index, kind, oldName, newName);
        EXPECT_EQ(answer.verdict, verdict) << newName;
        EXPECT_EQ(answer.message, message);
        const bool isTaken = message.starts_with("There is already") || verdict == Merges;
        EXPECT_EQ(answer.taken && Exists(game, *answer.taken), isTaken) << newName;
    }
    EXPECT_EQ(JudgeNewName(index, NameKind::Room, "Hall", "  Old  Hall ").name, "Old  Hall");
}

TEST_F(Rename, NotesWhatANewNameBrings) {
    const GameModel game = LoadBytes(CrLf(House));
    const GameIndex index(commands, game);
    for (const auto& [kind, oldName, newName, note] : Cases<NameKind, std::string, std::string, std::string>{
             {NameKind::Room, "Hall", "Pantry", ""},
             {NameKind::Room, "Hall", "#x#", "taken for a variable"},
             {NameKind::Room, "Hall", "a|b", "format code"},
             {NameKind::Object, "rope", "Key", "A synonym replaces \"key\""},
             {NameKind::Room, "Hall", "low lantern", "A synonym replaces \"lantern\""},
             {NameKind::Room, "Hall", "monkey", ""},
             {NameKind::Flag, "lit", "key", ""}, // no player types it
             {NameKind::Object, "rope", "Tom", "There is an object Tom in another room, too"},
             {NameKind::Object, "lamp", "Tom", ""},
             {NameKind::Procedure, "p", "gone", "is used in 1 place already"},
         }) {
        std::string notes;
        for (const std::string& told : JudgeNewName(index, kind, oldName, newName).notes)
            notes += told + " ";
        EXPECT_TRUE(note.empty() ? notes.empty() : notes.find(note) != std::string::npos)
            << newName << ": " << notes;
    }
}

TEST_F(Rename, TicksWhatRefersAndOffersTheRest) {
    const GameModel game = LoadBytes(CrLf(House));
    const RenamePlan room =
        PlanRename(game, commands, {.kind = NameKind::Room, .oldName = "Hall", .newName = "Nave"});
    EXPECT_EQ(
        Told(game, room),
        "[x] game properties, start room (reference): Hall -> Nave\n"
        "[x] room Hall, name (name): Hall -> Nave\n"
        "[x] room Attic, exit out (reference): Hall -> Nave\n"
        "[x] room Attic, place the; Hall, name (reference): the; Hall -> the; Nave\n"
        "[x] procedure ~Internal Procedure 0, script, line 7 (other capitals): goto <hall> -> goto <Nave>\n"
        "[ ] game properties, miscellaneous tags, line 1 (mention): glow <Hall> lamp -> glow <Nave> lamp\n"
        "[ ] room Hall, description (mention): This hall is the HALL, no Hallway. A Lamp. -> "
        "This nave is the HALL, no Hallway. A Lamp.\n"
        "[ ] room Hall, description (mention): This hall is the HALL, no Hallway. A Lamp. -> "
        "This hall is the Nave, no Hallway. A Lamp.\n");
    EXPECT_EQ(room.mayMean.size(), 1u);
    EXPECT_FALSE(room.twin);

    const RenamePlan lamp = PlanRename(
        game, commands, {.kind = NameKind::Object, .oldName = "lamp", .newName = "torch", .withTwin = true});
    EXPECT_EQ(lamp.twin, NameKind::Item);
    EXPECT_EQ(lamp.names.size(), 2u);
    EXPECT_EQ(
        Told(game, lamp),
        "[x] object lamp in Hall, name (name): lamp -> torch\n"
        "[x] object lamp in Hall, take (of the same name): give <lamp> -> give <torch>\n"
        "[x] object lamp in Attic, name (name): lamp -> torch\n"
        "[x] item lamp, name (of the same name): lamp -> torch\n"
        "[x] procedure ~Internal Procedure 0, script, line 13 (reference): if here <lamp> then win -> "
        "if here <torch> then win\n"
        "[ ] room Hall, description (mention): This hall is the HALL, no Hallway. A Lamp. -> "
        "This hall is the HALL, no Hallway. A Torch.\n"
        "[ ] procedure ~Internal Procedure 0, script, line 9 (mention): thunder <lamp> -> thunder <torch>\n"
        "[ ] synonym lamp, word (mention): lamp -> torch\n"
        "[ ] player command rub lamp, pattern (mention): rub lamp -> rub torch\n"
        "[ ] player command rub lamp, action (mention): type <look at lamp> -> type <look at torch>\n");

    // One of two: what scripts say of both is not changed by itself.
    const RenamePlan one = PlanRename(
        game, commands,
        {.kind = NameKind::Object,
         .oldName = "lamp",
         .newName = "torch",
         .only = {Place::Of({{FieldId::GameRooms, 2}, {FieldId::RoomObjects, 1}}, FieldId::ThingName)}});
    EXPECT_EQ(std::count_if(one.changes.begin(), one.changes.end(),
                            [](const RenameChange& change) { return change.isTicked; }),
              1);

    // A script that asks for either means the character.
    const RenamePlan object =
        PlanRename(game, commands, {.kind = NameKind::Object, .oldName = "Tom", .newName = "cat"});
    const std::string told = Told(game, object);
    EXPECT_NE(told.find("[ ] procedure ~Internal Procedure 0, script, line 11 (reference): bring <Tom>"),
              std::string::npos)
        << told;
    EXPECT_NE(told.find("[x] procedure ~Internal Procedure 0, script, line 12 (reference): show <Tom>"),
              std::string::npos)
        << told;
}

TEST_F(Rename, MakesTwoNamesOneOnlyIfAsked) {
    GameModel game = LoadBytes(CrLf(House));
    RenameRequest request = {.kind = NameKind::Flag, .oldName = "lit", .newName = "Lit"};
    EXPECT_NE(Do(game, request), "");
    request.merge = true;
    EXPECT_EQ(Do(game, request), "");
    EXPECT_TRUE(game.Procedures[3].Script.starts_with("flag on <Lit>\r\nflag on <Lit>\r\n"))
        << game.Procedures[3].Script;
    request.kind = NameKind::Room;
    request.oldName = "Hall";
    request.newName = "Attic";
    EXPECT_EQ(Do(game, request), "There is already a room Attic.");
}

TEST_F(Rename, RefusesVariablesThatWouldBreakNames) {
    GameModel game;
    game.StartScript = "set <x; 1>";
    game.Items.Append({"coin #x#", true});
    EXPECT_EQ(Do(game, {.kind = NameKind::Variable, .oldName = "x", .newName = "a, b"}),
              "The variable stands in a name. The name of an item cannot hold a comma, which separates names "
              "in lists.");
    EXPECT_EQ(Do(game, {.kind = NameKind::Variable, .oldName = "x", .newName = "a b"}), "");
    EXPECT_EQ(game.Items[1].Name, "coin #a b#");
}

TEST_F(Rename, LeavesAGameAloneThatIsNotThePlans) {
    GameModel game = LoadBytes(CrLf(House));
    const RenamePlan plan =
        PlanRename(game, commands, {.kind = NameKind::Room, .oldName = "Hall", .newName = "Nave"});
    GameModel other = game;
    other.Rooms.Edit(2).Out = ScriptPair{"x", ""};
    const GameModel before = other;
    EXPECT_NE(ProblemOf([&] { CarryOut(plan, other); }), "");
    EXPECT_TRUE(SameGame(other, before));
    other = GameModel();
    EXPECT_NE(ProblemOf([&] { CarryOut(plan, other); }), "");
    EXPECT_EQ(CarryOut(plan, game), 5);
}

TEST(InCapitalsOf, KeepsThoseOfTheMention) {
    for (const auto& [mention, newName, words] : Cases<std::string, std::string, std::string>{
             {"Old Hall", "New Nave", "New Nave"},
             {"old hall", "New Nave", "new nave"},
             {"Old hall", "New Nave", "New nave"},
             {"old Hall", "New Nave", "new Nave"},
             {"OLD HALL", "New Nave", "New Nave"},
             {"Old hall", "\xE9glise", "\xC9glise"},
         })
        EXPECT_EQ(InCapitalsOf(mention, "Old Hall", newName), words) << mention;
}

TEST_F(Rename, WhereUsedTellsUsesWithoutTheNameItself) {
    const GameModel game = LoadBytes(CrLf(House));
    const GameIndex index(commands, game);
    for (const auto& [kind, name, certain, maybe] : Cases<NameKind, std::string, int, int>{
             {NameKind::Room, "Hall", 3, 1},
             {NameKind::Room, "Cellar", 0, 1},
             {NameKind::Object, "Tom", 1, 1}, // "bring" means the character
             {NameKind::Character, "Tom", 1, 0},
             {NameKind::Item, "lamp", 1, 0},
             {NameKind::Timer, "tide", 1, 0},
             {NameKind::Variable, "x", 2, 0},
         }) {
        int uses = 0;
        int others = 0;
        for (const Reference& use : WhereUsed(index, kind, name))
            ++(use.role == ReferenceRole::Use ? uses : others);
        EXPECT_EQ(uses, certain) << name;
        EXPECT_EQ(others, maybe) << name;
    }
    std::string synonym;
    GameModel other = game;
    other.Synonyms.Append({"lamp; Hall ;", "light"});
    const GameIndex otherIndex(commands, other);
    for (const Place& place : WhereSynonymUsed(otherIndex, 2))
        synonym += DescribePlace(other, place) + "\n";
    EXPECT_EQ(synonym,
              "room Hall, name\nobject lamp in Hall, name\nobject lamp in Attic, name\nitem lamp, name\n"
              "player command rub lamp, pattern\nplayer command rub lamp, action\n");
}

} // namespace
} // namespace zem::test
