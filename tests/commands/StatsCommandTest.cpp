#include "base/TextEncoding.h"
#include "figures/PrintedWords.h"
#include "support/Cases.h"
#include "support/Games.h"
#include "support/ZemCall.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <regex>

namespace zem::test {
namespace {

using Json = nlohmann::json;

Json Figure(const Json& stats, const std::string& id) {
    for (const Json& figure : stats["figures"])
        if (figure["id"] == id)
            return figure;
    throw KelError("no figure " + id);
}

Json Stats(const std::string& file) {
    const ZemCall run({"stats", file, "--json"});
    EXPECT_EQ(run.result.exitStatus, 0) << run.err;
    return Json::parse(run.out);
}

TEST(Stats, CountsWords) {
    for (const auto& [text, words] : Cases<std::string, std::size_t>{
             {"", 0},
             {"One two  three.", 3},
             {"don't mother-in-law 4 o'clock", 4},
             {"- ' -- '", 0},
             {"'tis -x-", 2},
             {"Kerl\xE9van caf\xE9\x92s \x8Cuvre 5\xD7"
              "5",
              5},
             {"one|ntwo", 2},
             {"|bbold|xb word|crred|cb", 2},
             {"|bbold|xb word |crred|cb", 3},
             {"|s12small |jcmiddle|w|c", 2},
             {"#visitor# says #it#", 1},
             {"5% of the 10% in", 5},
             {"%nerve% left", 1},
             {"# alone", 1},
         })
        EXPECT_EQ(figures::CountWords(text), words) << text;
}

/// Counts the words of a game in another way: line by line of its file, by regular expressions alone.
std::size_t CountByLines(const std::string& file) {
    GameModel game = LoadBytes(ReadBytes(file));
    std::string bytes = SaveToBytes(game); // one statement a line
    std::size_t words = 0;
    const auto count = [&](std::string text) {
        text = std::regex_replace(text, std::regex("\\|(c[rblyg]|x[biu]|j[clr]|s..|[biu])"), "");
        text = std::regex_replace(text, std::regex("\\|[nwc]"), " ");
        text = std::regex_replace(text, std::regex("#[^# \r\n]+#|%[^% \r\n]+%"), " ");
        std::string plain;
        for (const char c : text) {
            const bool isLetter = static_cast<unsigned char>(c) >= 0xC0 && c != '\xD7' && c != '\xF7';
            const bool isLigature = std::string("\x8C\x9C").find(c) != std::string::npos;
            plain += isLetter || isLigature ? 'x' : c == '\x92' ? '\'' : c;
        }
        const std::regex word("[-'A-Za-z0-9]*[A-Za-z0-9][-'A-Za-z0-9]*");
        words += static_cast<std::size_t>(
            std::distance(std::sregex_iterator(plain.begin(), plain.end(), word), std::sregex_iterator()));
    };
    std::string block;
    std::istringstream lines(bytes);
    for (std::string line; std::getline(lines, line);) {
        if (line.ends_with('\r'))
            line.pop_back();
        if (line.starts_with("define "))
            block = line.substr(7, line.find(' ', 7) - 7);
        else if (line.starts_with("end define"))
            block = block == "object" || block == "character" ? "room" : "";
        else if (block == "text")
            count(line);
        else if (block == "room" && (line.starts_with("look <") || line.starts_with("indescription  <")))
            count(line.substr(line.find('<') + 1, line.rfind('>') - line.find('<') - 1));
        else if (block == "selection" && line.starts_with("info <"))
            count(line.substr(6, line.rfind('>') - 6));
        else if (block == "game" && line.starts_with("error <"))
            count(line.substr(line.find(';') + 1, line.rfind('>') - line.find(';') - 1));
        else if (!line.starts_with("'")) {
            if (block == "selection" && line.starts_with("choice <"))
                count(line.substr(8, line.find('>') - 8));
            const std::regex printed("(^|[^A-Za-z])(msg|say|key|ask) <([^>]*)>");
            for (std::sregex_iterator at(line.begin(), line.end(), printed), end; at != end; ++at)
                count((*at)[2] == "ask" ? (*at)[3].str().substr((*at)[3].str().find(';') + 1)
                                        : (*at)[3].str());
        }
    }
    return words;
}

TEST(Stats, CountsTheWordsOfTheSamplesAsAnotherCountDoes) {
    for (const std::filesystem::path& file : FilesIn(ZEM_SAMPLES)) {
        const Json stats = Stats(file.string());
        EXPECT_EQ(Figure(stats, "words")["value"], CountByLines(file.string())) << file;
        std::size_t sum = 0;
        for (const char* id :
             {"words.descriptions", "words.speech", "words.menus", "words.texts", "words.messages"}) {
            std::size_t listed = 0;
            const Json figure = Figure(stats, id);
            for (const Json& entry : figure["entries"]) {
                EXPECT_TRUE(entry["place"].is_object()) << entry;
                listed += entry["value"].get<std::size_t>();
            }
            EXPECT_EQ(figure["value"], listed) << id;
            sum += listed;
        }
        EXPECT_EQ(Figure(stats, "words")["value"], sum);
    }
}

TEST(Stats, TellsWhatCanBeReachedAndHad) {
    const TempFolder folder;
    const std::string game = folder.Write(
        "game.kel",
        CrLf("define game <x>\nstart <Hall>\nitems <key; coin; rope; crown>\nstartitems <key>\n"
             "command <sing> goto <Choir>\nend define\n"
             "define room <Hall>\nlook <A hall.>\nnorth <Attic>\nplace <the; Yard>\neast msg <No.>\n"
             "define object <coin>\ntake msg <Yours.>\nend define\n"
             "define character <Ann>\nspeak {\nsay <Good day to you.>\nif has <key> then say <And "
             "you.>\n}\nend define\nend define\n"
             "define room <Attic>\nlook <Dust.>\nscript if has <key> then goto <Loft 2>\nend define\n"
             "define room <Yard>\nend define\ndefine room <Choir>\nlook <Singing.>\nend define\n"
             "define room <Loft 2>\nlook <High.>\nscript give <rope>\nend define\n"
             "define room <Cellar>\nlook <Deep down below.>\nnorth <Vault>\nend define\n"
             "define room <Vault>\nlook <Gold.>\nscript win\nend define\n"));
    const Json stats = Stats(game);
    const auto names = [&](const std::string& id) {
        std::string text;
        const Json figure = Figure(stats, id);
        for (const Json& entry : figure["entries"])
            text += entry["place"]["steps"].back()["name"].get<std::string>() + ";";
        return text;
    };
    EXPECT_EQ(names("rooms.cutOff"), "Cellar;Vault;");
    EXPECT_EQ(names("rooms.withoutText"), "Yard;");
    EXPECT_EQ(names("items.obtainable"), "key;coin;rope;");
    EXPECT_EQ(names("items.notObtainable"), "crown;");
    EXPECT_EQ(names("rooms.longest"), "Hall;Cellar;Attic;Choir;Loft 2;");
    EXPECT_EQ(Figure(stats, "rooms.longest")["value"], 10) << "a hall, yours, no, good day to you, and you";
    EXPECT_EQ(Figure(stats, "rooms")["value"], 7);
    EXPECT_EQ(Figure(stats, "endings")["value"], 1);
    EXPECT_EQ(Figure(stats, "procedures")["value"], 0) << "a script of several lines is no procedure";
    EXPECT_EQ(names("words.byCharacter"), "Ann;");
    EXPECT_EQ(Figure(stats, "words.byCharacter")["value"], 6);
    EXPECT_EQ(Figure(stats, "readingMinutes")["value"], 1);
    EXPECT_EQ(Figure(stats, "readingMinutes")["estimate"], true);
    const std::string text = ZemCall({"stats", game}).out;
    EXPECT_NE(text.find("rooms that are cut off: 2\n  room Cellar\n  room Vault\n"), std::string::npos)
        << text;
    EXPECT_EQ(ZemCall({"stats", folder.Path("none.kel")}).result.exitStatus, 1);
}

} // namespace
} // namespace zem::test
