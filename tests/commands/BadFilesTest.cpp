// What commands do with files that are damaged, missing, empty or would not come back: a status, a sentence
// that names the file, and what was there stays.
#include "support/Cases.h"
#include "support/Games.h"
#include "support/ZemCall.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <random>

namespace zem::test {
namespace {

namespace fs = std::filesystem;

/// A game that is read although a thing of it is not closed, and whose file could not be read again.
const char* const UnclosedThing = "define game <G>\r\nstart <R>\r\nend define\r\ndefine room <R>\r\n"
                                  "define character <A>\r\nlook <x>\r\ndefine object <B>\r\nlook <y>\r\n"
                                  "end define\r\nend define\r\nend define\r\n";
/// Two rooms of one name, whose things a file keeps in the last.
const char* const TwinRooms =
    "define game <G>\r\nstart <R>\r\nend define\r\ndefine room <R>\r\nend define\r\n"
    "define room <R>\r\ndefine object <a>\r\ntake msg <x> \r\nend define\r\nend define\r\n"
    "define room <S>\r\nmsg {\r\ny\r\n}\r\nend define\r\n";

TEST(BadFiles, AGameThatCouldNotBeOpenedAgainIsNotWritten) {
    const TempFolder folder;
    const std::string file = folder.Write("bad.kel", UnclosedThing);
    const std::string out = folder.Write("out.kel", "as it was");
    const std::vector<std::vector<std::string>> calls = {
        {"format", file, out},
        {"format", file, file},
        {"rename", file, "room", "R", "Q", out},
        {"rename", file, "room", "R", "Q", "-o", file},
        {"merge", file, file, file, "-o", out},
    };
    for (const std::vector<std::string>& call : calls) {
        const ZemCall run(call);
        EXPECT_EQ(run.result.exitStatus, call[0] == "merge" ? 2 : 1) << call[0];
        EXPECT_NE(run.err.find("could not be "), std::string::npos) << run.err;
        EXPECT_NE(run.err.find("nothing is written"), std::string::npos) << run.err;
        EXPECT_EQ(ReadBytes(out), "as it was");
        EXPECT_EQ(ReadBytes(file), UnclosedThing);
        EXPECT_FALSE(fs::exists(file + "~") || fs::exists(out + "~")) << call[0];
    }
    const std::string names = ZemCall({"format", file, out}).err;
    EXPECT_NE(names.find(file + ":7: warning: inside a character or object no block is read"),
              std::string::npos)
        << names;
    EXPECT_NE(
        names.find(out + ": warning: this does not come back from a save: Character A in R, miscellaneous"),
        std::string::npos)
        << names;
}

TEST(BadFiles, WhatDoesNotComeBackIsToldAndTheRestIsWritten) {
    const TempFolder folder;
    const std::string file = folder.Write("twins.kel", TwinRooms);
    const std::string out = folder.Path("out.kel");
    const ZemCall plain({"format", file, out});
    EXPECT_EQ(plain.result.exitStatus, 0) << plain.err;
    EXPECT_EQ(plain.err, "") << "things of rooms of one name are in the last already";
    EXPECT_EQ(ZemCall({"diff", file, out}).result.exitStatus, 0);
    // A rename may make a name that is fine in the window and not in a file.
    const ZemCall run({"rename", file, "object", "a", "b", out});
    EXPECT_EQ(run.result.exitStatus, 0) << run.err;
    EXPECT_EQ(run.err, "");
}

TEST(BadFiles, EveryCommandNamesTheFileThatIsNotThere) {
    const TempFolder folder;
    const std::string gone = folder.Path("gone.kel");
    const std::string out = folder.Write("out.html", "as it was");
    const std::string game = folder.Write("game.kel", "define game <G>\r\nstart <R>\r\nend define\r\n");
    const std::vector<std::pair<std::vector<std::string>, int>> calls = {
        {{"format", gone, out}, 1},
        {{"print", gone}, 1},
        {{"check", gone}, 1},
        {{"check", gone, "--json"}, 1},
        {{"find", gone, "x"}, 1},
        {{"rename", gone, "room", "a", "b", out}, 1},
        {{"map", gone, "--positions", out}, 1},
        {{"test", gone}, 2},
        {{"walk", gone}, 1},
        {{"publish", gone, out}, 1},
        {{"export", gone, out}, 1},
        {{"stats", gone}, 1},
        {{"stats", gone, "--json"}, 1},
        {{"spell", gone}, 1},
        {{"diff", gone, game}, 2},
        {{"diff", game, gone}, 2},
        {{"merge", gone, game, game, "-o", out}, 2},
        {{"merge", game, game, gone, "-o", out}, 2},
    };
    for (const auto& [call, status] : calls) {
        const ZemCall run(call);
        EXPECT_EQ(run.result.exitStatus, status) << call[0] << ": " << run.err;
        EXPECT_NE(run.err.find(gone), std::string::npos) << call[0] << ": " << run.err;
        EXPECT_EQ(ReadBytes(out), "as it was") << call[0];
        EXPECT_FALSE(fs::exists(gone)) << call[0];
    }
}

TEST(BadFiles, WrongUseIsStatusTwoAndTouchesNothing) {
    const TempFolder folder;
    const std::string game = folder.Write("game.kel", "define game <G>\r\nstart <R>\r\nend define\r\n");
    const std::string out = folder.Write("out.html", "as it was");
    const std::vector<std::vector<std::string>> calls = {
        {"check", game, "--only", "A99"},
        {"check", game, "--skip", "x"},
        {"check", game, "--only", ""},
        {"check", game, "--nonsense"},
        {"find", game},
        {"find", game, "x", "--kind", "nonsense"},
        {"find", game, "(", "--regex"},
        {"rename", game, "planet", "a", "b", out},
        {"rename", game, "room", "a", out},
        {"walk", game, "--turns", "x"},
        {"walk", game, "--turns", "1.5"},
        {"walk", game, "--seconds", "0"},
        {"walk", game, "--seconds", "-1"},
        {"walk", game, "--seed", "18446744073709551616"},
        {"walk", game, "--seed", "-1"},
        {"walk", game, "--turns", "0x10"},
        {"walk", game, "--seconds", "nan"},
        {"test", game, "--seconds", "-3"},
        {"test", game, "--seconds", "0"},
        {"walk", game, "--seed", "one"},
        {"test", game, "--seconds", "soon"},
        {"test", game, "--run"},
        {"diff", game, game, "--html", "--json"},
        {"diff", game},
        {"merge", game, game, game},
        {"merge", game, game, "-o", out},
        {"stats", game, out},
        {"publish", game},
        {"git-setup", game},
        {"spell", game, "--language"},
    };
    for (const std::vector<std::string>& call : calls) {
        const ZemCall run(call);
        std::string words;
        for (const std::string& word : call)
            words += word + ' ';
        EXPECT_EQ(run.result.exitStatus, 2) << words << run.err;
        EXPECT_NE(run.err, "") << words;
        EXPECT_LE(run.err.size(), 300U) << run.err;
        EXPECT_EQ(run.out, "") << words;
        EXPECT_EQ(ReadBytes(out), "as it was") << words;
    }
}

/// Games with lines lost, doubled, swapped or with a letter changed, as editors and mails damage them.
std::string DamagedGame(std::string text, std::mt19937& random) {
    const auto any = [&](std::size_t count) { return random() % count; };
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        lines.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    for (std::size_t count = 1 + any(4); count > 0; --count) {
        std::string& line = lines[any(lines.size())];
        switch (any(4)) {
        case 0:
            line.clear();
            break;
        case 1:
            line = lines[any(lines.size())];
            break;
        case 2:
            std::swap(line, lines[any(lines.size())]);
            break;
        default:
            if (!line.empty())
                line[any(line.size())] = "<>{}|#;'\xE9"[any(9)];
        }
    }
    text.clear();
    for (const std::string& line : lines)
        text += line + "\n";
    return text;
}

TEST(BadFiles, WhatIsWrittenOfADamagedGameIsTheGame) {
    const TempFolder folder;
    const std::string games[] = {ReadBytes(ZEM_SAMPLES "/cottage.kel"),
                                 ReadBytes(ZEM_TEST_DATA "/every-field.kel"),
                                 ReadBytes(ZEM_TEST_DATA "/play/things.kel")};
    int written = 0;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        std::mt19937 random(seed);
        const std::string file = folder.Write("in.kel", DamagedGame(games[seed % 3], random));
        const std::string out = folder.Write("out.kel", "as it was");
        const ZemCall run({"format", file, out});
        if (run.result.exitStatus != 0) {
            EXPECT_EQ(ReadBytes(out), "as it was") << seed;
            EXPECT_NE(run.err, "") << seed;
            continue;
        }
        ++written;
        // Told or the same: nothing of the game is lost in silence.
        const ZemCall diff({"diff", file, out});
        EXPECT_TRUE(diff.result.exitStatus == 0 || run.err.find("does not come back") != std::string::npos)
            << seed << diff.out << diff.err;
        const std::string again = folder.Path("again.kel");
        EXPECT_EQ(ZemCall({"format", out, again}).result.exitStatus, 0) << seed;
        const auto body = [](const std::string& path) {
            const std::string bytes = ReadBytes(path);
            return bytes.substr(bytes.find('\n')); // the first line has the name of the file
        };
        if (diff.result.exitStatus == 0) {
            EXPECT_EQ(body(out), body(again)) << seed;
        }
        EXPECT_EQ(ZemCall({"diff", file, file}).out, "") << seed;
        EXPECT_EQ(ZemCall({"merge", file, file, file, "-o", again}).result.exitStatus, 0) << seed;
    }
    EXPECT_GE(written, 12);
}

} // namespace
} // namespace zem::test
