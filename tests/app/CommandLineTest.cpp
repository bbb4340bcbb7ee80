#include "app/CommandLine.h"

#include "support/TempFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

namespace zem::test {
namespace {

struct ZemCall {
    CommandLineResult result;
    std::string out;
    std::string err;

    explicit ZemCall(const std::vector<std::string>& arguments) {
        std::ostringstream outStream;
        std::ostringstream errStream;
        result = RunCommandLine(arguments, ZEM_PROGRAM_FOLDER, outStream, errStream);
        out = outStream.str();
        err = errStream.str();
    }
};

TEST(CommandLine, OpensTheEditorWithOrWithoutAFile) {
    EXPECT_EQ(ZemCall({}).result.editFile, "");
    EXPECT_EQ(ZemCall({"two words.kel"}).result.editFile, "two words.kel");
}

TEST(CommandLine, ExplainsItself) {
    const ZemCall help({"--help"});
    EXPECT_EQ(help.result.exitStatus, 0);
    for (const char* verb : {"format", "print", "FILE"})
        EXPECT_NE(help.out.find(verb), std::string::npos) << verb;
    EXPECT_EQ(ZemCall({"--version"}).out, "ZEM 1.0\n");
    for (const std::vector<std::string>& wrong : {std::vector<std::string>{"format"},
                                                  {"format", "one.kel"},
                                                  {"--nonsense"},
                                                  {"print"},
                                                  {"a.kel", "b.kel"},
                                                  {"a.kel", "print", "b.kel"},
                                                  {"format", "a.kel", "b.kel", "print", "c.kel"}}) {
        const ZemCall run(wrong);
        EXPECT_EQ(run.result.exitStatus, 2);
        EXPECT_FALSE(run.result.editFile);
        EXPECT_FALSE(run.err.empty());
    }
}

TEST(CommandLine, FormatsAGameAndTakesTheOutputPathAsGiven) {
    const TempFolder folder;
    const std::string in =
        folder.Write("in.kel", "define game <x>\nstart <Hall>\nerror <badgo; No.>\nend define");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Folder());
    const ZemCall run({"format", "in.kel", "./out.txt"});
    std::filesystem::current_path(before);
    EXPECT_EQ(run.result.exitStatus, 0);
    EXPECT_EQ(run.err, "");
    const std::string saved = ReadBytes(folder.Path("out.txt"));
    EXPECT_EQ(saved.substr(0, saved.find('\r')), "' ./out.txt created by ZEM 1.0");
    EXPECT_NE(saved.find("\r\nerror <badgo;No.>\r\n"), std::string::npos)
        << "the error names are known here, too";
}

TEST(CommandLine, ReportsProblemsByFileAndLineAndLeavesTheOutput) {
    const TempFolder folder;
    const std::string out = folder.Write("out.kel", "as it was");
    const std::string bad =
        folder.Write("bad.kel", "define game <x>\nend define\ndefine room Caf\xE9\nend define\n");
    const ZemCall run({"format", bad, out});
    EXPECT_EQ(run.result.exitStatus, 1);
    EXPECT_EQ(run.err, bad + ":3: a parameter in angle brackets is missing: define room Caf\xC3\xA9\n");
    EXPECT_EQ(ReadBytes(out), "as it was");

    const ZemCall missing({"print", folder.Path("missing.kel")});
    EXPECT_EQ(missing.result.exitStatus, 1);
    EXPECT_EQ(missing.err, folder.Path("missing.kel") + ": Error - file not found\n");

    const std::string good = folder.Write("good.kel", "define game <x>\nstart <Hall>\nend define\n");
    const ZemCall unwritable({"format", good, folder.Path("gone/out.kel")});
    EXPECT_EQ(unwritable.result.exitStatus, 1);
    EXPECT_EQ(unwritable.err,
              folder.Path("gone/out.kel") +
                  ": the file cannot be written: its folder or the file itself is not there\n");
}

TEST(CommandLine, PrintsAGame) {
    const TempFolder folder;
    const ZemCall run(
        {"print",
         folder.Write("game.kel",
                      "define game <Caf\xE9>\nstart <Hall>\nitems <lamp>\nend define\n"
                      "define room <Hall>\nalias <the hall>\nnorth <Attic>\n"
                      "south msg <No.>\nout <Street> msg <Bye>\nplace <the; Shed>\n"
                      "define object <lamp>\nprefix <a>\nhidden\nlook <Old.>\n"
                      "end define\nuse <oil> {\n msg <a>\n if has <key> then win\n}\nend define\n")});
    EXPECT_EQ(run.out,
              "Caf\xC3\xA9\n  about: Created with ZEM 1.0\n  start room: Hall\n  items: lamp\n\n"
              "Room Hall [the hall]\n  out: Street\n  on the way out: Print \"Bye\"\n  north: Attic\n  "
              "south: Print \"No.\"\n"
              "  place \"the; Shed\"\n  use \"oil\":\n    Print \"a\"\n    If the player has \"key\", then: "
              "The player wins\n  object: a lamp (hidden)\n    look: Print \"Old.\"\n\nProcedure ~Internal "
              "Procedure 0:\n  Print \"a\"\n"
              "  If the player has \"key\", then: The player wins\n");
}

} // namespace
} // namespace zem::test
