// The program for players, run as a whole without a display.
#include "base/TextFile.h"
#include "support/TempFolder.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/wait.h>

namespace zem {
namespace {

namespace fs = std::filesystem;

struct Ran {
    int status = 0;
    std::string out;
    std::string err;
};

Ran RunVeldt(const fs::path& folder, const std::string& arguments, const std::string& input = {}) {
    const std::string in = (folder / "in.txt").string();
    const std::string out = (folder / "out.txt").string();
    const std::string err = (folder / "err.txt").string();
    std::ofstream(in) << input;
    const int status =
        std::system(("cd '" + folder.string() + "' && env -u DISPLAY " ZEM_PROGRAM_FOLDER "/veldt " +
                     arguments + " < '" + in + "' > '" + out + "' 2> '" + err + "'")
                        .c_str());
    return {WEXITSTATUS(status), ReadFile(out), ReadFile(err)};
}

void Write(const fs::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

constexpr const char* Game = "!include <lib.kel>\n!include <link.kel>\n!include <gone.kel>\ndefine game <G>\n"
                             "  start <R>\n  command <end> win\n  command <ask> ask <x; Who?>\n"
                             "  command <roll> do <roll>\nend define\ndefine room <R>\n"
                             "  look <Caf\xE9.>\nend define\n"
                             "define procedure <roll>\n  roll <d; 1000000>\n  msg <%d%>\nend define\n";

TEST(VeldtText, StatusAndMessages) {
    const test::TempFolder folder;
    const fs::path home = folder.Folder();
    fs::create_directory(home / "sub");
    Write(home / "sub/secret.kel", "define game <S>\n  command <sesame> msg <Open.>\nend define\n");
    Write(home / "lib.kel", "define game <L>\n  command <lib> msg <Library.>\nend define\n");
    fs::create_symlink(home / "sub/secret.kel", home / "link.kel");
    Write(home / "g.kel", Game);
    Write(home / "bad.kel", "define game <G>\n");
    Write(home / "nostart.kel", "define game <G>\nend define\n");
    Write(home / "ok.lines", "> lib\n\n> sesame\n> ask\n< \xC3\xA9t\xC3\xA9\n@ 5\n");
    struct Case {
        const char* arguments;
        const char* input;
        int status;
        const char* out; // its beginning
        const char* err; // a part of it
    };
    const char* const room = "\nR\nCaf\xC3\xA9.\n";
    for (const Case& one : {
             Case{"--text g.kel --lines ok.lines", "", 0,
                  "\nR\nCaf\xC3\xA9.\n\n> lib\nLibrary.\n\n> sesame\nI do not know that word. "
                  "\xE2\x80\x9Csesame"
                  "\xE2\x80\x9D\n\n> ask\nWho?\n< \xC3\xA9t\xC3\xA9\n\n@ 5\n",
                  "gone.kel"},
             Case{"--text g.kel --lines -", "> end\n< no\n> look\n", 1, "\nR\n",
                  "3: the game has ended: > look"},
             Case{"--text g.kel --lines -", "\xEF\xBB\xBF> lib\n", 0, "\nR\nCaf\xC3\xA9.\n\n> lib\nLib", ""},
             Case{"--text g.kel --lines -", "< yes\n", 1, room, "nothing is asked"},
             Case{"--text g.kel --lines -", "> ask\n> look\n", 1, "\nR\n", "a question is open"},
             Case{"--text g.kel --lines -", "look\n", 1, room, "a line begins with"},
             Case{"--text g.kel --lines -", "> quit\n> look\n", 1, "\nR\n", "the game has ended"},
             Case{"--text g.kel --lines -", "> end\n< no\n> undo\n> look\n", 0, "\nR\n", ""},
             Case{"--text g.kel --lines gone.lines", "", 1, "", "gone.lines"},
             Case{"--text bad.kel", "", 1, "", "bad.kel:1: "},
             Case{"--text gone.kel", "", 1, "", "file not found"},
             Case{"--text nostart.kel --lines -", "", 1, "", "The game cannot begin: it has no start room."},
             Case{"--text g.kel", "lib\nquit\ny\n", 0, room, ""},
             Case{"--text", "", 2, "", "FILE"},
             Case{"--wrong g.kel", "", 2, "", "wrong"},
             Case{"--text g.kel --seed x", "", 2, "", "seed"},
             Case{"--help", "", 0, "Plays text adventures", ""},
             Case{"--version", "", 0, "Veldt 1.0", ""},
         }) {
        const Ran ran = RunVeldt(home, one.arguments, one.input);
        EXPECT_EQ(ran.status, one.status) << one.arguments << ' ' << one.input << ran.err;
        EXPECT_TRUE(ran.out.starts_with(one.out)) << one.arguments << '\n' << ran.out;
        EXPECT_NE(ran.err.find(one.err), std::string::npos) << one.arguments << '\n' << ran.err;
    }
    EXPECT_EQ(RunVeldt(home, "--text g.kel --lines -", "> roll\n").out,
              RunVeldt(home, "--text g.kel --seed 1 --lines -", "> roll\n").out);
    EXPECT_NE(RunVeldt(home, "--text g.kel --seed 2 --lines -", "> roll\n").out,
              RunVeldt(home, "--text g.kel --seed 1 --lines -", "> roll\n").out);
}

} // namespace
} // namespace zem
