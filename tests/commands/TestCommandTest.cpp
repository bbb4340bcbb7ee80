// The command that plays recorded runs: what it tells, what it ends with, and what it writes.
#include "commands/JUnitReport.h"
#include "support/Cases.h"
#include "support/TempFolder.h"
#include "support/ZemCall.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

constexpr const char* Game = R"(define game <G>
  start <Hall>
  command <sing> msg <Caf)"
                             "\xE9"
                             R"( song.>
  command <ask me> {
    if ask <Sure?> then msg <Fine.> else msg <Well.>
    msg <Done.>
  }
end define
define room <Hall>
  look <A hall.>
  north <Cellar>
end define
define room <Cellar>
  look <A cellar.>
end define
)";

constexpr const char* Runs = "run both ways seed 1\n"
                             "\n"
                             "  Hall\n"
                             "  A hall.\n"
                             "  You can go north.\n"
                             "\n"
                             "> sing\n"
                             "  Caf\xC3\xA9 song.\n"
                             "\n"
                             "> ask me\n"
                             "  Sure?\n"
                             "< yes\n"
                             "  Fine.\n"
                             "  Done.\n"
                             "\n"
                             "run second seed 7\n"
                             "\n"
                             "  Hall\n"
                             "  A hall.\n"
                             "  You can go north.\n"
                             "\n"
                             "> n\n"
                             "\n"
                             "  Cellar\n"
                             "  A cellar.\n";

std::string With(std::string text, const std::string& part, const std::string& other) {
    const std::size_t at = text.find(part);
    EXPECT_NE(at, std::string::npos) << part;
    return text.replace(at, part.size(), other);
}

TEST(TestCommand, TellsByLineWhatIsToldDifferently) {
    for (const auto& [part, other, told] : Cases<std::string, std::string, std::string>{
             {"G", "G", "2 of 2 runs as approved, 4 lines played\n"},
             {"song.>", "sung.>",
              "FILE.tests:8: run \"both ways\": told differently after \"> sing\"\n"
              "  - Caf\xC3\xA9 song.\n"
              "  + Caf\xC3\xA9 sung.\n"
              "          ^\n"
              "1 of 2 runs as approved, 4 lines played\n"},
             {"<A cellar.>", "<A cellar.|nDamp.>",
              "FILE.tests:26: run \"second\": told differently after \"> n\"\n"
              "  + Damp.\n"
              "1 of 2 runs as approved, 4 lines played\n"},
             {"    msg <Done.>\n", "",
              "FILE.tests:14: run \"both ways\": told differently after \"< yes\"\n"
              "  - Done.\n"
              "1 of 2 runs as approved, 4 lines played\n"},
             {"  command <sing>", "  command <song>",
              "FILE.tests:8: run \"both ways\": told differently after \"> sing\"\n"
              "  - Caf\xC3\xA9 song.\n"
              "  + I do not know that word. \xE2\x80\x9Csing\xE2\x80\x9D\n"
              "    ^\n"
              "1 of 2 runs as approved, 4 lines played\n"},
             {"if ask <Sure?> then msg <Fine.> else msg <Well.>", "msg <Sure?>",
              "FILE.tests:12: run \"both ways\": told differently after \"> ask me\"\n"
              "  + Done.\n"
              "FILE.tests:12: run \"both ways\": nothing is asked here: < yes\n"
              "1 of 2 runs as approved, 3 lines played\n"},
         }) {
        const TempFolder folder;
        const std::string file = folder.Write("game.kel", With(Game, part, other));
        folder.Write("game.kel.tests", Runs);
        const ZemCall call({"test", file});
        std::string wanted = told;
        for (std::size_t at = 0; (at = wanted.find("FILE", at)) != std::string::npos;)
            wanted.replace(at, 4, file);
        EXPECT_EQ(call.out, wanted);
        EXPECT_EQ(call.err, "");
        EXPECT_EQ(call.result.exitStatus, told.find("2 of 2") == std::string::npos ? 1 : 0) << other;
    }
}

TEST(TestCommand, TellsTroubleAndNeverTouchesADamagedFile) {
    for (const auto& [game, tests, told] : Cases<std::string, std::string, std::string>{
             {Game, "", "FILE.tests: there is no run in the file\n"},
             {Game, "run a seed 1\n> n\nA cellar.\n",
              "FILE.tests:3: a line begins with \">\", \"<\", \"@\" and a number, or two blanks\n"},
             {Game, "> n\n", "FILE.tests:1: a run begins with \"run NAME seed N\"\n"},
             {"define game <G>\nstart <Gone>\nend define\n", Runs,
              "FILE: The game cannot begin: its start room, Gone, does not exist.\n"},
             {"define game G\nend define\n", Runs,
              "FILE:1: a parameter in angle brackets is missing: define game G\n"},
         }) {
        const TempFolder folder;
        const std::string file = folder.Write("game.kel", game);
        const std::string testsFile = folder.Write("game.kel.tests", tests);
        const ZemCall call({"test", file, "--approve"});
        std::string wanted = told;
        wanted.replace(wanted.find("FILE"), 4, file);
        EXPECT_EQ(call.err, wanted);
        EXPECT_EQ(call.result.exitStatus, 2) << told;
        EXPECT_EQ(ReadBytes(testsFile), tests);
    }
    const TempFolder folder;
    const std::string file = folder.Write("game.kel", Game);
    EXPECT_EQ(ZemCall({"test", file}).result.exitStatus, 2);
    EXPECT_EQ(ZemCall({"test", folder.Path("gone.kel")}).result.exitStatus, 2);
    folder.Write("game.kel.tests", Runs);
    EXPECT_EQ(ZemCall({"test", file, "--run", "third"}).result.exitStatus, 2);
    EXPECT_EQ(ZemCall({"test", file, "--seconds", "soon"}).result.exitStatus, 2);
    EXPECT_EQ(ZemCall({"test", file, "--junit", folder.Path("gone/report.xml")}).result.exitStatus, 2);
}

TEST(TestCommand, ApprovesWhatIsToldNowAndLeavesARunThatStops) {
    const TempFolder folder;
    const std::string file = folder.Write("game.kel", With(Game, "song.>", "sung.>"));
    const std::string tests = folder.Write("game.kel.tests", Runs);
    EXPECT_EQ(ZemCall({"test", file, "--run", "second", "--approve"}).result.exitStatus, 0);
    EXPECT_EQ(ReadBytes(tests), Runs);
    const ZemCall call({"test", file, "--approve"});
    EXPECT_EQ(call.out, "run \"both ways\": approved\n2 of 2 runs as approved, 4 lines played\n");
    EXPECT_EQ(call.result.exitStatus, 0);
    EXPECT_EQ(ReadBytes(tests), With(Runs, "song.", "sung."));

    const std::string asked = "if ask <Sure?> then msg <Fine.> else msg <Well.>";
    folder.Write("game.kel", With(With(Game, asked, "msg <Sure?>"), "A cellar", "The cellar"));
    EXPECT_EQ(ZemCall({"test", file, "--approve"}).result.exitStatus, 1);
    EXPECT_EQ(ReadBytes(tests), With(With(Runs, "song.", "sung."), "A cellar", "The cellar"));
}

TEST(TestCommand, EndsWhenTheTimeIsOver) {
    const TempFolder folder;
    const std::string file = folder.Write("game.kel", Game);
    std::string runs = "run long seed 1\n";
    for (int k = 0; k < 200'000; ++k)
        runs += "> sing\n";
    folder.Write("game.kel.tests", runs);
    const ZemCall call({"test", file, "--seconds", "0.01"});
    EXPECT_EQ(call.result.exitStatus, 1);
    EXPECT_NE(call.out.find("run \"long\": the time was over here\n"), std::string::npos) << call.out;
}

TEST(TestCommand, WritesAReportThatIsXmlWhateverTheRunsSay) {
    const TempFolder folder;
    const std::string file = folder.Write("game.kel", Game);
    folder.Write("game.kel.tests", "run a <b> & \"c\" \x01\xFF seed 1\n> sing\n  ]]>\n");
    const std::string report = folder.Path("report.xml");
    EXPECT_EQ(ZemCall({"test", file, "--junit", report}).result.exitStatus, 1);
    const std::string xml = ReadBytes(report);
    EXPECT_NE(xml.find("tests=\"1\" failures=\"1\""), std::string::npos) << xml;
    EXPECT_NE(xml.find("name=\"a &lt;b&gt; &amp; &quot;c&quot; \xEF\xBF\xBD\xEF\xBF\xBD\""),
              std::string::npos);
    EXPECT_NE(xml.find("- ]]&gt;\n"), std::string::npos) << xml;
    EXPECT_NE(xml.find("+ Caf\xC3\xA9 song.\n"), std::string::npos) << xml;
}

TEST(JUnitReport, HoldsOnlyCharactersThatXmlHas) {
    const std::string gone = "\xEF\xBF\xBD";
    for (const auto& [text, held] : Cases<std::string, std::string>{
             {"\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x8E\xB2", "\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x8E\xB2"},
             {"a\r\nb\tc", "a\nb\tc"},
             {"\xC0\x80", gone + gone},
             {"\xE2\x82", gone + gone},
             {"\xED\xA0\x80", gone + gone + gone},
             {"\xEF\xBF\xBE", gone + gone + gone},
             {std::string("\0", 1), gone},
         })
        EXPECT_NE(JUnitReport("s", {{"n", ReportedTest::Failed, "", text, 0}})
                      .find("<failure message=\"\">" + held + "</failure>"),
                  std::string::npos)
            << held;
}

TEST(TestCommand, ListsWhatNoRunHasReached) {
    const TempFolder folder;
    const std::string file = folder.Write("game.kel", Game);
    folder.Write("game.kel.tests", Runs);
    const ZemCall all({"test", file, "--coverage"});
    EXPECT_EQ(all.out, "2 of 2 runs as approved, 4 lines played\n"
                       "commands: 4 of 5, 80%\n"
                       "answers of \"if\" lines: 1 of 2, 50%\n"
                       "rooms: 2 of 2, 100%\n"
                       "things: 0 of 0, 100%\n"
                       "texts: 0 of 0, 100%\n"
                       "endings: 0 of 0, 100%\n" +
                           file + ":5: player command ask me, action, line 1: never false\n" + file +
                           ":5: player command ask me, action, line 1: never ran\n");
    const ZemCall second({"test", file, "--coverage", "--run", "second"});
    EXPECT_NE(second.out.find(file + ":3: "), std::string::npos) << second.out;
}

} // namespace
} // namespace zem::test
