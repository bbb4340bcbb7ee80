#include "support/Games.h"
#include "support/ZemCall.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

namespace zem::test {
namespace {

namespace fs = std::filesystem;

/// Two authors with a clone each of one repository, set up with the lines that git-setup prints.
class GitMerge : public ::testing::Test {
protected:
    void SetUp() override {
        if (std::system("git --version >/dev/null 2>&1") != 0)
            GTEST_SKIP() << "git is not installed";
        fs::create_directory(folder_.Path("bin"));
        fs::create_symlink(ZEM_COMMAND_LINE, folder_.Path("bin/zem"));
        Git(".", "init -q --bare -b main hub");
        Clone("ann");
        Write("ann", "the game.kel", Saved("ann", "Dark.", "Attic"));
        Write("ann", ".gitattributes", Attributes());
        Git("ann", "add -A");
        Git("ann", "commit -qm first");
        Git("ann", "push -q origin HEAD:main");
        Clone("bob");
    }

    /// Runs git in a folder; its status.
    int Git(const std::string& where, const std::string& arguments) { return Run(where, "git " + arguments); }

    int Run(const std::string& where, const std::string& command) {
        const std::string line =
            "cd '" + folder_.Path(where) + "' && PATH=\"" + folder_.Path("bin") + ":$PATH\" HOME=\"" +
            folder_.Path(".") +
            "\" GIT_CONFIG_NOSYSTEM=1 GIT_AUTHOR_NAME=a GIT_AUTHOR_EMAIL=a@example.org GIT_COMMITTER_NAME=a "
            "GIT_COMMITTER_EMAIL=a@example.org " +
            command + " >'" + folder_.Path("output") + "' 2>&1";
        const int status = std::system(line.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::string Output() const { return ReadBytes(folder_.Path("output")); }
    std::string Read(const std::string& where, const std::string& file) const {
        return ReadBytes(folder_.Path(where + "/" + file));
    }
    void Write(const std::string& where, const std::string& file, const std::string& bytes) const {
        folder_.Write(where + "/" + file, bytes);
    }

    /// The game as this author's editor saves it: with the author's path in its first line.
    std::string Saved(const std::string& author, const std::string& hall, const std::string& attic) const {
        GameModel game =
            LoadBytes(CrLf("define game <x>\nstart <Hall>\nend define\ndefine room <Hall>\nlook <" + hall +
                           ">\nend define\ndefine room <Attic>\nlook <" + attic + ">\nend define\n"));
        StringOutput output;
        WriteGame(game, folder_.Path(author + "/the game.kel"), output);
        return output.bytes;
    }

    void Commit(const std::string& author, const std::string& hall, const std::string& attic) {
        Write(author, "the game.kel", Saved(author, hall, attic));
        ASSERT_EQ(Git(author, "commit -qam change"), 0) << Output();
    }

private:
    static std::vector<std::string> SetupLines() {
        std::istringstream lines(ZemCall({"git-setup"}).out);
        std::vector<std::string> result;
        for (std::string line; std::getline(lines, line);)
            result.push_back(line);
        return result;
    }

    static std::string Attributes() {
        std::string attributes;
        for (const std::string& line : SetupLines())
            if (line.starts_with("*.kel "))
                attributes += line + " filter=zem\n";
        return attributes;
    }

    void Clone(const std::string& author) {
        Git(".", "clone -q hub " + author);
        for (const std::string& line : SetupLines())
            if (line.starts_with("git config")) {
                ASSERT_EQ(Run(author, line), 0) << line << Output();
            }
    }

    TempFolder folder_;
};

TEST_F(GitMerge, MergesEditsOfDifferentRoomsAndShowsDifferencesByRoom) {
    Commit("ann", "Bright.", "Attic");
    EXPECT_EQ(Git("ann", "push -q origin HEAD:main"), 0) << Output();
    Commit("bob", "Dark.", "Full of boxes.");
    EXPECT_EQ(Git("bob", "pull -q --no-rebase --no-edit"), 0) << Output();
    const std::string merged = Read("bob", "the game.kel");
    EXPECT_NE(merged.find("look <Bright.>"), std::string::npos) << merged;
    EXPECT_NE(merged.find("look <Full of boxes.>"), std::string::npos) << merged;
    EXPECT_EQ(Git("bob", "status --porcelain"), 0);
    EXPECT_EQ(Output(), "");
    EXPECT_EQ(Git("bob", "show --format= HEAD:'the game.kel'"), 0);
    EXPECT_TRUE(Output().starts_with("' the game.kel created by ZEM 1.0")) << Output();
    EXPECT_EQ(Git("bob", "diff HEAD~1"), 0);
    EXPECT_NE(Output().find("+  look: Bright."), std::string::npos) << Output();
}

TEST_F(GitMerge, TellsOfEditsOfTheSameRoomAndKeepsBoth) {
    Commit("ann", "Bright.", "Empty.");
    EXPECT_EQ(Git("ann", "push -q origin HEAD:main"), 0) << Output();
    Commit("bob", "Grey.", "Attic");
    EXPECT_EQ(Git("bob", "pull -q --no-rebase --no-edit"), 1);
    EXPECT_NE(Output().find("the game.kel: conflict: room Hall, description"), std::string::npos) << Output();
    EXPECT_NE(Output().find("CONFLICT (content)"), std::string::npos) << Output();
    const std::string merged = Read("bob", "the game.kel");
    EXPECT_NE(merged.find("look <Grey.>"), std::string::npos) << merged;
    EXPECT_NE(merged.find("look <Empty.>"), std::string::npos) << merged;
    EXPECT_EQ(ProblemOf([&] { LoadBytes(merged); }), "");
    EXPECT_NE(Read("bob", "the game.kel.conflicts").find("\"theirs\": \"Bright.\""), std::string::npos);
    EXPECT_EQ(Git("bob", "commit -qam settled"), 0) << Output();
}

} // namespace
} // namespace zem::test
