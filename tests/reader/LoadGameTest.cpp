#include "reader/LoadGame.h"

#include "base/LineText.h"
#include "support/Cases.h"
#include "support/Games.h"
#include "support/Unprivileged.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace zem::test {
namespace {

namespace fs = std::filesystem;

std::string ProblemOfFile(std::string_view bytes) {
    return ProblemOf([&] { LoadBytes(bytes); });
}

// Every file beside a ".saved" file must be saved as exactly those bytes.
TEST(LoadGame, ReadsWhatTheWriterLaysOut) {
    for (const fs::path& input : FilesIn(ZEM_TEST_DATA "/format")) {
        SCOPED_TRACE(input.filename());
        const std::string saved = ReadBytes(fs::path(input).replace_extension(".saved"));
        EXPECT_EQ(SaveToBytes(LoadBytes(ReadBytes(input))), saved);
    }
}

// Every file beside a ".message" file must be refused with exactly that sentence.
TEST(LoadGame, TellsWhatIsWrongAndOnWhichLine) {
    for (const fs::path& input : FilesIn(ZEM_TEST_DATA "/bad")) {
        SCOPED_TRACE(input.filename());
        const std::string message = ReadBytes(fs::path(input).replace_extension(".message"));
        EXPECT_EQ(ProblemOfFile(ReadBytes(input)) + "\n", message);
    }
}

TEST(LoadGame, ShowsItsStages) {
    const TempFolder folder;
    const std::string path = folder.Write("Tower.KEL", "define game <x>\r\nend define\r\n");
    RecordingHost host;
    GameModel game;
    ASSERT_TRUE(LoadGame(game, path, host));
    EXPECT_EQ(game.FileName, path);
    EXPECT_EQ(host.stages,
              (std::vector<std::string>{
                  "Parsing file...", "Initializing... 5", "Initializing game data... 10",
                  "Initializing room data... 20", "Initializing character/object data... 30",
                  "Initializing text data... 40", "Initializing item data... 50",
                  "Initializing collectable data... 60", "Initializing procedures... 70",
                  "Initializing menus... 80", "Initializing misc data... 100", "Completed intialization"}));
}

/// What the author is told, in a message or by the exception, when a file is not opened.
std::string Refusal(const std::string& path) {
    RecordingHost host;
    GameModel game = LoadBytes("define game <before>\r\nerror <badgo;No.>\r\nend define\r\n");
    const std::string problem = ProblemOf([&] { EXPECT_FALSE(LoadGame(game, path, host)); });
    GameModel empty = GameWithErrorNames();
    NewGame(empty);
    EXPECT_EQ(game, empty) << path;
    return problem.empty() ? host.messages.at(0) : problem;
}

TEST(LoadGame, TellsWhyAFileIsRefusedAndLeavesAnEmptyGame) {
    const TempFolder folder;
    const std::string good = "define game <x>\r\nend define\r\n";
    folder.Write("game.kel.bak", good);
    folder.Write("file", good);
    folder.Write("bad.kel", "define game <x>\nstart <Hall>\nend define\ndefine room Hall\nend define");
    fs::create_directory(folder.Path("folder.kel"));
    ASSERT_EQ(mkfifo(folder.Path("pipe.kel").c_str(), 0600), 0);
    fs::permissions(folder.Write("locked.kel", good), fs::perms::none);
    fs::permissions(folder.Folder(), fs::perms::all);

    const std::string extension = "Error: Unrecognized file extension!\r\n\r\nVeldt can only read game files "
                                  "with .KEL or .NYX extensions.";
    for (const auto& [name, refusal] :
         Cases<const char*, std::string>{{"game.kel.bak", extension},
                                         {"game.nyx", extension},
                                         {"", extension},
                                         {"missing.kel", "Error: Error - file not found"},
                                         {"no folder/game.kel", "Error: Error - path not found"},
                                         {"file/game.kel", "Error: Error - path not found"},
                                         {"bad.kel", "line 4: a parameter in angle brackets is missing: "
                                                     "define room Hall"},
                                         {"folder.kel", "this is a folder, not a file"},
                                         {"pipe.kel", "this is not an ordinary file"}})
        EXPECT_EQ(Refusal(folder.Path(name)), refusal) << name;
    const Unprivileged unprivileged;
    EXPECT_EQ(Refusal(folder.Path("locked.kel")), "the file cannot be read: you have no permission");
}

TEST(LoadGame, AcceptsEveryKindOfLineEnd) {
    const std::string text =
        "define game <x>\ngame author <me>\nend define\ndefine text <t>\na\n\nb\nend define";
    const GameModel expected = LoadBytes(CrLf(text));
    EXPECT_EQ(expected.TextSections[1].Text, "a\r\n\r\nb");
    for (const std::string& bytes : {text, text + "\n", CrLf(text + "\n"), CrLf(text) + "\r"})
        EXPECT_TRUE(SameGame(LoadBytes(bytes), expected)) << bytes;
    // A carriage return alone is a character of the line, and so is a NUL byte.
    const std::string odd("define text <a\0b>\r\r\nx\r\0y\r\nend define\r\n", 36);
    const GameModel game = LoadBytes(odd);
    EXPECT_EQ(game.TextSections[1].Name, std::string("a\0b", 3));
    EXPECT_EQ(game.TextSections[1].Text, std::string("x\r\0y", 4));
}

TEST(LoadGame, FillsFieldsWhoseSavedFormCannotTell) {
    GameModel before = GameWithErrorNames();
    before.ErrorMessages.Append({"again", "badgo", ""});
    before.NextInternalProcedure = 5;
    GameModel game = LoadBytes("define game <x>\nerror <  BADGO  ; No. >\nend define\n"
                               "define synonyms\nget = take = grab\nend define\n"
                               "define procedure <p>\n{ msg <x> }\nend define\n",
                               before);
    EXPECT_EQ(game.ErrorMessages[2].GameText, "No.");
    EXPECT_EQ(game.ErrorMessages[3].GameText, "") << "only the first of two equal names";
    EXPECT_EQ(game.Synonyms[1], (SynonymEntry{"get", "take = grab"}));
    EXPECT_EQ(game.NextInternalProcedure, 6) << "goes on counting without a marker";
    game = LoadBytes("define game <x>\nend define\n'ZEM-NIP <text>\n", game);
    EXPECT_EQ(game.NextInternalProcedure, 0);
}

TEST(LoadGame, RefusesMoreThanATableHolds) {
    std::string rooms;
    for (int k = 1; k <= 32767; ++k)
        rooms += "define room <" + std::to_string(k) + ">\nend define\n";
    EXPECT_EQ(LoadBytes(rooms).Rooms.Count(), 32767);
    EXPECT_EQ(ProblemOfFile(rooms + "define room <x>\nend define\n"),
              "line 65535: a list of the game cannot hold more than 32,767 entries: define room <x>");

    // A brace makes the procedure that is one too many, so the message names the line of the brace.
    std::string braces = "define procedure <p>\n";
    for (int k = 0; k < 32767; ++k)
        braces += "{ msg <x> }\n";
    EXPECT_EQ(ProblemOfFile(braces + "end define\n"),
              "line 32768: a list of the game cannot hold more than 32,767 "
              "entries: define procedure <~Internal Procedure 32766>");
}

// Each of these took time or memory in the square of its size before it was read in one pass.
TEST(LoadGame, ReadsHostileFilesInOnePass) {
    constexpr int Many = 30000;
    const std::string longLine(10'000'000, 'x');
    const GameModel wide = LoadBytes("define room <a>\nlook <" + longLine + ">\nend define\n");
    EXPECT_EQ(wide.Rooms[1].Look.size(), longLine.size());
    EXPECT_LT(ProblemOfFile("define room <a>\nlook " + longLine + "\nend define\n").size(), 200u);
    EXPECT_LT(ProblemOfFile("define game <a>\ncollectables <" + longLine + ">\nend define\n").size(), 600u);

    std::string nested = "define procedure <p>\n";
    for (int k = 0; k < Many; ++k)
        nested += "{ do <x>\n";
    nested += std::string(Many, '}') + "\nend define\n";
    const GameModel deep = LoadBytes(nested);
    ASSERT_EQ(deep.Procedures.Count(), Many + 1);
    EXPECT_EQ(deep.Procedures[2].Script, "do <x>\r\ndo <~Internal Procedure 1>\r\n");
    EXPECT_EQ(deep.Procedures[Many + 1].Script, "do <x>\r\n");

    std::string joins = "define procedure <p>\nif a then b\n";
    for (int k = 0; k < 400'000; ++k)
        joins += "else c\n";
    for (int k = 0; k < 400'000; ++k)
        joins += "x__\n";
    const GameModel joined = LoadBytes(joins + "end\nend define\n");
    EXPECT_EQ(joined.Procedures[1].Script.size(), 11u + 400'000 * 7 + 2 + 400'000 + 3 + 2);
}

} // namespace
} // namespace zem::test
