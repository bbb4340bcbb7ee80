// Each ready-made piece is put into an empty game and into large ones, checked, and played.
#include "pieces/ReadyMade.h"

#include "base/LineText.h"
#include "map/MapEdits.h"
#include "play/Libraries.h"
#include "play/Session.h"
#include "play/World.h"
#include "problems/CheckedFile.h"
#include "readback/ReadBack.h"
#include "support/Cases.h"
#include "support/OutcomeText.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

ReadyMade PieceNamed(const std::string& name) {
    return ReadReadyMade(ReadBytes(ZEM_PROGRAM_FOLDER "/pieces/" + name + ".kel"));
}

std::vector<std::string> AllPieceNames() {
    std::vector<std::string> names;
    for (const std::filesystem::path& path : FilesIn(ZEM_PROGRAM_FOLDER "/pieces"))
        names.push_back(path.stem().string());
    return names;
}

GameModel GameToFill(const std::string& sample) {
    GameModel game;
    play::NameMessages(game);
    NewGame(game);
    if (!sample.empty())
        ReadGame(game, ReadBytes(ZEM_SAMPLES "/" + sample + ".kel"));
    return game;
}

Told ProblemsOf(const GameModel& game) {
    problems::CheckInput input;
    input.commands = &ShippedCommands();
    input.game = game;
    return ToldOf(problems::FindProblems(problems::CheckedGame(input)));
}

/// What is said of a game and was not known of it before.
std::string NewProblems(Told known, const GameModel& after) {
    std::string text;
    for (const auto& problem : ProblemsOf(after)) {
        const auto found = known.find(problem);
        // That nobody can win yet is true of every game that has just been begun.
        if (found == known.end() && problem.first != "G02")
            text += problem.first + ": " + problem.second + "\n";
        else if (found != known.end())
            known.erase(found);
    }
    return text;
}

TEST(ReadyMade, EachComesIntoAnyGameWithoutAProblemAndOnceMore) {
    const std::vector<std::string> names = AllPieceNames();
    ASSERT_GE(names.size(), 20U);
    for (const char* sample : {"", "lighthouse", "archipelago"}) {
        const GameModel game = GameToFill(sample);
        const Told known = ProblemsOf(game);
        for (const std::string& name : names) {
            const ReadyMade piece = PieceNamed(name);
            const Pasted once =
                InsertReadyMade(game, piece, SuggestAnswers(piece, game, ""), ShippedCommands());
            EXPECT_EQ(NewProblems(known, once.game), "") << name << " in \"" << sample << '"';
            if (name == "lamp" ||
                game.Rooms.Count() > 100) // A room is described by one script; enough is enough.
                continue;
            const Pasted twice =
                InsertReadyMade(once.game, piece, SuggestAnswers(piece, once.game, ""), ShippedCommands());
            EXPECT_EQ(NewProblems(known, twice.game), "") << name << " twice in \"" << sample << '"';
            EXPECT_TRUE(ReadBack(twice.game, GameFile(twice.game)).empty()) << name;
        }
    }
}

/// The game as it was comes out again if what was put in is taken away: nothing of it was changed.
TEST(ReadyMade, ChangesNothingThatWasThere) {
    const GameModel game = GameToFill("lighthouse");
    for (const std::string& name : AllPieceNames()) {
        const ReadyMade piece = PieceNamed(name);
        const GameModel after =
            InsertReadyMade(game, piece, SuggestAnswers(piece, game, ""), ShippedCommands()).game;
        ASSERT_GE(after.Rooms.Count(), game.Rooms.Count()) << name;
        for (int k = 2; k <= game.Rooms.Count(); ++k) // the first is the one that all of them begin in
            EXPECT_EQ(after.Rooms[k], game.Rooms[k]) << name << " " << game.Rooms[k].Name;
        for (int k = 1; k <= game.Procedures.Count(); ++k) // The start script may have got a line.
            EXPECT_TRUE(after.Procedures[k] == game.Procedures[k] ||
                        game.StartScript == "do <" + game.Procedures[k].Name + ">")
                << name << ": " << game.Procedures[k].Name;
        for (int k = 1; k <= game.TextSections.Count(); ++k)
            EXPECT_EQ(after.TextSections[k], game.TextSections[k]) << name;
        EXPECT_EQ(after.StartRoom, game.StartRoom);
    }
}

std::string Played(const GameModel& game, const std::vector<std::string>& lines) {
    play::GameFiles files;
    files.game = game;
    play::Session session(play::World::Compile(std::move(files)), 1);
    std::string told = TextOf(session.Begin());
    for (const std::string& line : lines)
        told += "\n> " + line + "\n" +
                TextOf(session.Needs() == play::Need::Line ? session.Type(line) : session.Answer(line));
    return told;
}

TEST(ReadyMade, EachDoesWhatItSays) {
    for (const auto& [name, lines, told] :
         Cases<const char*, std::vector<std::string>, std::vector<const char*>>{
             {"locked-door", {"north", "take brass key", "north"}, {"The door is locked.", "in the Cellar"}},
             {"hidden-thing",
              {"take ring", "look at pot", "take silver ring"},
              {"There is a silver ring", "You take the silver ring."}},
             {"talkative-person", {"talk to sailor", "2"}, {"What do you talk about?", "nobody has asked"}},
             {"guard",
              {"n", "take bottle of wine", "give wine to guard", "n"},
              {"bars the way", "steps aside", "in the Tower"}},
             {"lamp", {"take lamp", "use lamp", "look"}, {"too dark to see anything", "steady light"}},
             {"shop",
              {"buy loaf of bread", "inventory", "talk to grocer", "1"},
              {"You pay", "7 coins", "You have one already."}},
             {"ferry",
              {"board ferry", "take ferry"},
              {"takes you across", "in the Far Bank", "takes you back"}},
             {"timed-event",
              {"z", "z", "z", "z", "z", "z", "z", "z", "z", "z", "z"},
              {"Far away a bell strikes twelve."}},
             {"score", {"points"}, {"raises your score", "10 points"}},
             {"code-lock",
              {"n", "press keypad", "1904", "press keypad", "1905", "n"},
              {"waits for a number", "A red light", "A green light", "in the Vault"}},
             {"thing-to-take",
              {"take candle", "x candle", "drop candle"},
              {"You take the candle.", "would still burn", "Dropped."}},
             {"secret-passage",
              {"n", "push bookcase", "n"},
              {"You cannot go that way.", "gives way", "in the Priest Hole"}},
             {"hungry-animal",
              {"take bag", "take bone", "give bone to dog", "take bag"},
              {"shows its teeth", "and is gone", "You take the leather bag."}},
             {"lever",
              {"n", "pull lever", "n", "s", "pull lever", "n"},
              {"You cannot go that way.", "Something heavy opens", "in the Courtyard", "falls shut"}},
             {"password",
              {"n", "herring", "n", "swordfish"},
              {"The word?", "The door stays shut", "in the Club"}},
             {"strength", {"take apple", "i", "eat red apple"}, {"99% strength", "That was good."}},
             {"weather",
              std::vector<std::string>(300, "z"),
              {"A gust of wind", "a shutter bangs", "quite still"}},
             {"wanderer", std::vector<std::string>(12, "look"), {"a night watchman"}},
             {"letter", {"read letter", "take letter"}, {"Come at once.", "You take the letter."}},
             {"ending",
              {"take cup", "drop golden cup"},
              {"where it belongs", "You have done what you came for."}},
             {"lift",
              {"go to lift", "press button", "1", "go to lift", "press", "3"},
              {"in the Roof", "in the Basement"}},
             {"riddle",
              {"talk to head", "sand", "talk to head", "a river", "i", "talk to head"},
              {"Think again", "This is yours", "green stone", "You have been told"}},
             {"tool",
              {"take lantern", "take crowbar", "use crowbar on crate", "take lantern"},
              {"There is a storm lantern", "You take the storm lantern."}},
         }) {
        const ReadyMade piece = PieceNamed(name);
        const GameModel empty = GameToFill("");
        const GameModel game =
            InsertReadyMade(empty, piece, SuggestAnswers(piece, empty, ""), ShippedCommands()).game;
        const std::string story = Played(game, lines);
        std::size_t from = 0;
        for (const char* words : told) { // in this order
            const std::size_t at = story.find(words, from);
            EXPECT_NE(at, std::string::npos) << name << " lacks \"" << words << "\" in:\n" << story;
            from = at == std::string::npos ? from : at + 1;
        }
    }
}

TEST(ReadyMade, WorksWithWhatTheGameHas) {
    GameModel game = GameToFill("lighthouse");
    const ReadyMade piece = PieceNamed("locked-door");
    PieceAnswers answers = SuggestAnswers(piece, game, game.Rooms[2].Name);
    answers["To"] = Lower(game.Rooms[3].Name); // as an author may type it
    answers["Key"] = Lower(game.Items[1].Name);
    const std::vector<PieceQuestion>& questions = piece.questions;
    EXPECT_FALSE(IsAsked(piece, questions.back(), game, answers)) << "a key that is there lies somewhere";
    const GameModel after = InsertReadyMade(game, piece, answers, ShippedCommands()).game;
    EXPECT_EQ(after.Rooms.Count(), game.Rooms.Count());
    EXPECT_EQ(after.Items.Count(), game.Items.Count());
    const std::string way = GameFile(after);
    EXPECT_NE(way.find("if has <" + game.Items[1].Name + "> then goto <" + game.Rooms[3].Name + ">"),
              std::string::npos);
    EXPECT_EQ(after.Procedures.Count(), game.Procedures.Count());
    EXPECT_EQ(NewProblems(ProblemsOf(game), after), "");
}

TEST(ReadyMade, GuardsAWayThatIsThereAlready) {
    GameModel game = GameToFill("");
    for (const char* name : {"Hall", "Vault", "Attic"})
        map::AddRoom(game, name, {});
    map::Connect(game, {0, 0, 1, 4});            // north of the hall is the vault
    map::Connect(game, {0, 2, 2, std::nullopt}); // east of it the attic, and no way back
    game.Rooms.Edit(1).West.Edit() = {ActionExit, "msg <A wall.>"};
    const auto insert = [&](const std::string& name, const char* way, const char* to) {
        const ReadyMade piece = PieceNamed(name);
        PieceAnswers answers = SuggestAnswers(piece, game, "Hall");
        answers["Way"] = way;
        answers["To"] = to;
        return InsertReadyMade(game, piece, answers, ShippedCommands()).game;
    };
    for (const char* name : {"code-lock", "guard", "locked-door", "password"}) {
        const GameModel north = insert(name, "north", "vault");
        EXPECT_EQ(north.Rooms.Count(), 3) << name;
        EXPECT_EQ(north.Rooms[1].North->Key, ActionExit) << name;
        EXPECT_EQ(*north.Rooms[2].South, *game.Rooms[2].South) << name;
        EXPECT_EQ(*north.Rooms[1].East, *game.Rooms[1].East) << name;
        const GameModel east = insert(name, "east", "Attic");
        EXPECT_EQ(east.Rooms[3].West->Key, "Hall") << name << ": the way back that was not there";
    }
    for (const char* name : {"lever", "secret-passage"})
        EXPECT_EQ(*insert(name, "north", "Vault").Rooms[1].North, *game.Rooms[1].North) << name;
    for (const auto& [way, to, words] : Cases<const char*, const char*, const char*>{
             {"north", "Attic", "This exit leads to \"Vault\" already."},
             {"north", "Somewhere New", "This exit leads to \"Vault\" already."},
             {"west", "Attic", "has an exit there already"},
         })
        EXPECT_NE(ProblemOf([&, way = way, to = to] { insert("locked-door", way, to); }).find(words),
                  std::string::npos)
            << way << ' ' << to;
}

TEST(ReadyMade, RefusesWhatWouldNotWorkAndSaysWhy) {
    const GameModel game = GameToFill("lighthouse");
    const std::string taken = game.Rooms[1].Objects[1].Name;
    for (const auto& [name, question, answer, words] :
         Cases<const char*, const char*, std::string, const char*>{
             {"locked-door", "Way", "up", "has an exit there already"},
             {"locked-door", "From", "", "still to be answered"},
             {"locked-door", "From", "Larder", "no room \"Larder\""},
             {"locked-door", "To", "Cellar > Attic", "cannot hold any of"},
             {"locked-door", "Key", "key; lock", "cannot hold any of"},
             {"hidden-thing", "Cover", taken, "already; choose another name"},
             {"code-lock", "Code", "twelve", "must be a number"},
             {"shop", "Money", "gold pieces", "one word"},
             {"shop", "Gender", "them", "one of the choices"},
         }) {
        const ReadyMade piece = PieceNamed(name);
        PieceAnswers answers = SuggestAnswers(piece, game, "");
        answers[question] = answer;
        const std::string problem =
            ProblemOf([&] { InsertReadyMade(game, piece, answers, ShippedCommands()); });
        EXPECT_NE(problem.find(words), std::string::npos) << name << ", " << question << ": " << problem;
    }
}

TEST(ReadyMade, NamesTheLineOfADamagedFile) {
    for (const auto& [file, words] : Cases<const char*, const char*>{
             {"", "no title"},
             {"'title Door\n'ask From; room; In\ndefine room <x>\nend define\n", "line 2: a question has"},
             {"'title Door\n'ask From; cellar; In; Hall\ndefine room <x>\nend define\n",
              "line 2: there is no kind"},
             {"'title Door\n'ask Way; exit of From; On; north\ndefine room <x>\nend define\n",
              "depends on one"},
         })
        EXPECT_NE(ProblemOf([&text = file] { ReadReadyMade(text); }).find(words), std::string::npos) << file;
}

} // namespace
} // namespace zem::test
