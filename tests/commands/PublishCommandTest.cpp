// Games as web pages: what goes into a page, what is told, and what is not published.
#include "base/TextFile.h"
#include "commands/CommandLine.h"
#include "commands/Sha256.h"
#include "support/Cases.h"
#include "support/TempFolder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace zem::test {
namespace {

const std::string SmallGame = "define game <Small>\r\n  start <Hall>\r\nend define\r\n"
                              "define room <Hall>\r\n  look <A hall.>\r\nend define\r\n";

/// A program with a player for pages, and a folder with games.
class Publish : public testing::Test {
protected:
    Publish() {
        std::filesystem::create_directories(folder_.Path("web"));
        for (const char* part : {"page.html", "page.css", "page.js"})
            std::filesystem::copy_file(ZEM_SOURCES "/../web/" + std::string(part),
                                       folder_.Path("web/") + part);
        for (const char* part : {"zem.dat", "zemerr.dat"})
            std::filesystem::copy_file(ZEM_SOURCES "/../data/" + std::string(part), folder_.Path(part));
        folder_.Write("web/player.wasm.gz", "PLAYER");
    }

    /// Publishes a game; gives the status, and keeps what was said and the page.
    int Run(std::vector<std::string> more = {}) {
        std::ostringstream out;
        std::ostringstream err;
        std::vector<std::string> arguments = {"publish", folder_.Path("small.kel"),
                                              folder_.Path("small.html")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const int status = RunCommandLine(arguments, folder_.Folder().string(), out, err).exitStatus;
        told_ = err.str();
        const bool isThere = std::filesystem::exists(folder_.Path("small.html"));
        page_ = isThere ? ReadFile(folder_.Path("small.html")) : "";
        return status;
    }

    bool HasPage(const std::string& text) const { return page_.find(text) != std::string::npos; }
    bool HasTold(const std::string& text) const { return told_.find(text) != std::string::npos; }

    TempFolder folder_;
    std::string told_;
    std::string page_;
};

struct PublishCase {
    std::string lines; // of the game block
    std::string more;  // blocks behind it
    int status;
    std::string told; // part of it; empty for nothing at all
};

TEST_F(Publish, TellsWhatTheGameIsLike) {
    const std::string hall = "define room <Hall>\r\nend define\r\n";
    for (const PublishCase& c : std::vector<PublishCase>{
             {"start <Hall>", hall, 0, ""},
             {"", hall, 1, "it has no start room"},
             {"start <Cellar>", hall, 1, "its start room, Cellar, does not exist"},
             {"start <Hall>\r\nstartscript picture <map.png>", hall, 0,
              "does without map.png, which is not beside the game"},
             {"start <Hall>\r\nstartscript music <song.mid>", hall, 0,
              "does without song.mid, which is of a kind that browsers do not show"},
             {"start <Hall>\r\nstartscript sound <../secret.wav>", hall, 0, "does without ../secret.wav"},
             {"start <Hall>\r\nstartscript goto <Attic>", hall, 0, "small.kel:3: error: "},
             {"start <Hall>", "!include <lost.kel>\r\n" + hall, 0, "library \"lost.kel\" is missing"},
             {"start <Hall>", hall + "define room <Open>\r\n", 1, "small.kel:"},
         }) {
        std::filesystem::remove(folder_.Path("small.html"));
        folder_.Write("song.mid", "x");
        folder_.Write("small.kel", "define game <Small>\r\n" + c.lines + "\r\nend define\r\n" + c.more);
        EXPECT_EQ(Run(), c.status) << c.lines << told_;
        EXPECT_TRUE(c.told.empty() ? told_.empty() : HasTold(c.told)) << c.lines << ": " << told_;
        EXPECT_EQ(HasPage("<title>Small</title>"), c.status == 0) << c.lines;
    }
}

TEST_F(Publish, PutsAllOfTheGameIntoThePage) {
    folder_.Write(
        "small.kel",
        "!include <more.kel>\r\n"
        "define game <A & <b\"c@GAME@>\r\n  start <Hall>\r\n  game author <In\xE9s </p>\r\nend define\r\n"
        "define room <Hall>\r\n  script do <show>\r\nend define\r\n");
    folder_.Write("more.kel",
                  "define procedure <show>\r\n  picture <a.png>\r\n  sound <</script.wav>\r\nend define\r\n");
    folder_.Write("a.png", "picture");
    folder_.Write("small.jpg", "cover");
    EXPECT_EQ(Run(), 0) << told_;
    EXPECT_TRUE(HasPage("<title>A &amp; &lt;b&quot;c@GAME@</title>"));
    EXPECT_TRUE(HasPage("by In\xC3\xA9s &lt;/p"));
    EXPECT_TRUE(HasPage("\"a.png\":\"data:image/png;base64,cGljdHVyZQ==\""))
        << "a picture that only a library shows";
    EXPECT_TRUE(HasPage("src=\"data:image/jpeg;base64,Y292ZXI=\""));
    EXPECT_TRUE(HasPage(">UExBWUVS<")) << "the player";
    EXPECT_FALSE(HasPage("@STYLE@") || HasPage("@SCRIPT@") || HasPage("@FILES@") || HasPage("@STATE_KEY@"));
    const std::string first = page_;
    folder_.Write("b.svg", "<svg/>");
    EXPECT_EQ(Run({"--cover", folder_.Path("b.svg")}), 0) << told_;
    EXPECT_TRUE(HasPage("src=\"data:image/svg+xml;base64,PHN2Zy8+\""));
    EXPECT_EQ(Run({"--cover", folder_.Path("more.kel")}), 1);
    EXPECT_TRUE(HasTold("is no picture that browsers show"));
    EXPECT_EQ(Run({"--cover", folder_.Path("none.png")}), 1);
}

TEST_F(Publish, NamesWhatItLacks) {
    folder_.Write("small.kel", SmallGame);
    folder_.Write("small.html", "mine");
    std::filesystem::remove(folder_.Path("web/player.wasm.gz"));
    EXPECT_EQ(Run(), 1);
    EXPECT_TRUE(HasTold("the player for web pages is not there yet")) << told_;
    EXPECT_EQ(page_, "mine");
    std::filesystem::remove(folder_.Path("small.kel"));
    EXPECT_EQ(Run(), 1);
    EXPECT_EQ(page_, "mine");
}

TEST_F(Publish, RefusesMoreThanAPageCanHold) {
    folder_.Write("small.kel",
                  "define game <Small>\r\n  start <Hall>\r\n  startscript do <show>\r\nend define\r\n"
                  "define room <Hall>\r\nend define\r\n"
                  "define procedure <show>\r\n  picture <a.png>\r\n  sound <b.wav>\r\nend define\r\n");
    folder_.Write("a.png", "x");
    folder_.Write("b.wav", "x");
    std::filesystem::resize_file(folder_.Path("b.wav"), 32 * 1024 * 1024);
    EXPECT_EQ(Run(), 1);
    EXPECT_TRUE(HasTold("take more than 32 MB, which is too much for a page; b.wav is one too many"))
        << told_;
    EXPECT_EQ(page_, "");
}

TEST(Sha256, KnowsThePublishedSums) {
    const auto sumOf = [](const std::string& bytes) {
        std::string hex;
        for (const char c : Sha256(bytes))
            for (const unsigned part :
                 {static_cast<unsigned char>(c) / 16U, static_cast<unsigned char>(c) % 16U})
                hex += "0123456789abcdef"[part];
        return hex;
    };
    for (const auto& [bytes, sum] : Cases<std::string, std::string>{
             {"", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
             {"abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
             {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
             {std::string(1'000'000, 'a'),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"},
         })
        EXPECT_EQ(sumOf(bytes), sum) << bytes.substr(0, 60);
}

} // namespace
} // namespace zem::test
