#include "support/Cases.h"
#include "support/Games.h"
#include "support/ZemCall.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zem::test {
namespace {

const char* const MisspelledGame =
    "define game <Old>\r\nstart <Hall>\r\nend define\r\n\r\ndefine room <Hall>\r\n"
    "look <The olld door.>\r\nscript {\r\nmsg <It was Kerl\xE9van.>\r\n"
    "msg <The olld one was here.>\r\n}\r\nend define\r\n";

class SpellCommandTest : public testing::Test {
protected:
    SpellCommandTest() : file(folder.Write("game.kel", MisspelledGame)) {
        setenv("DICPATH", ZEM_TEST_DATA "/spelling", 1);
        setenv("LC_ALL", "en_XX.UTF-8", 1);
    }
    ~SpellCommandTest() override {
        unsetenv("DICPATH");
        unsetenv("LC_ALL");
    }

    const TempFolder folder;
    const std::string file;
};

TEST_F(SpellCommandTest, TellsUnknownWordsInTheLanguageOfTheGame) {
    const std::string olld = file + ":6: room Hall, description: olld\n";
    const std::string inScript = ": room Hall, enter action, line ";
    for (const auto& [notes, options, out] : Cases<std::string, std::vector<std::string>, std::string>{
             {"",
              {},
              olld + file + ":8" + inScript + "1: Kerl\xC3\xA9van\n" + file + ":9" + inScript + "2: olld\n" +
                  file + ":9" + inScript + "2: one\n"},
             {"language en_XX\nword Kerl\xC3\xA9van\nword one\nword olld\n", {}, ""},
             {"language fr_AA\n",
              {"--language", "en_XX"},
              olld + file + ":8" + inScript + "1: Kerl\xC3\xA9van\n" + file + ":9" + inScript + "2: olld\n" +
                  file + ":9" + inScript + "2: one\n"}}) {
        folder.Write("game.kel.notes", notes);
        std::vector<std::string> call = {"spell", file};
        call.insert(call.end(), options.begin(), options.end());
        const ZemCall run(call);
        EXPECT_EQ(run.result.exitStatus, 0) << run.err;
        EXPECT_EQ(run.out, out) << notes;
    }
}

TEST_F(SpellCommandTest, GivesTheSameAsJson) {
    const ZemCall run({"spell", file, "--json"});
    const auto json = nlohmann::json::parse(run.out);
    EXPECT_EQ(json["words"], 14); // with those that every game has
    EXPECT_EQ(json["unknown"], 3);
    EXPECT_EQ(json["places"].size(), 4u);
    EXPECT_EQ(json["places"][0]["line"], 6);
    EXPECT_EQ(json["places"][1]["word"], "Kerl\xC3\xA9van");
}

TEST_F(SpellCommandTest, SaysWhyNothingIsChecked) {
    for (const auto& [notes, language, status, told] : Cases<const char*, const char*, int, const char*>{
             {"", "de_DE", 0, "No dictionary for de_DE is installed"},
             {"", "ru_RU", 1, "in the encoding KOI8-R"},
             {"", "cut", 1, "cut.dic is damaged"},
             {"<<<<<<< ours\n", "en_XX", 1, "not merged"}}) {
        folder.Write("game.kel.notes", notes);
        const ZemCall run({"spell", file, "--language", language});
        EXPECT_EQ(run.result.exitStatus, status) << language;
        EXPECT_EQ(run.out, "") << language;
        EXPECT_NE(run.err.find(told), std::string::npos) << run.err;
    }
    EXPECT_EQ(ZemCall({"spell", folder.Path("nowhere.kel")}).result.exitStatus, 1);
}

} // namespace
} // namespace zem::test
