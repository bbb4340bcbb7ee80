#include "export/Export.h"

#include "base/TextEncoding.h"
#include "export/Outline.h"
#include "routing/RoutedMap.h"
#include "support/Cases.h"
#include "support/Games.h"
#include "support/RandomGame.h"
#include "support/ZemCall.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>

namespace zem::test {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

std::string Export(const std::string& file, const TempFolder& folder, const std::string& name,
                   const std::vector<std::string>& more = {}) {
    const std::string out = folder.Path(name);
    std::vector<std::string> arguments = {"export", file, out};
    arguments.insert(arguments.end(), more.begin(), more.end());
    const ZemCall run(arguments);
    EXPECT_EQ(run.result.exitStatus, 0) << run.err;
    return ReadBytes(out);
}

/// What a game looks like that breaks pages and tables unless all is escaped.
std::string NastyGame() {
    return CrLf(
        "define game <a & b\"c>\nstart <R&D>\nitems <x\"y>\nend define\n"
        "define room <R&D>\nlook <|bBold|xb & \"brave\"|nsecond # line *star* [x](y)>\nalias <&amp;>\n"
        "north <Caf\xE9, \"old\">\nsouth <Nowhere>\neast if has <x\"y> then msg <a & b> else goto <R&D>\n"
        "place <the; Caf\xE9, \"old\">\n"
        "define object <x\"y>\nlook <\x01\x0B control>\ntake {\nmsg <a>\nmsg <b>\n}\nend define\nend define\n"
        "define room <Caf\xE9, \"old\">\nout <R&D>\ndefine character <O'Neil & son>\nspeak <Hi.>\nend "
        "define\nend define\n"
        "define procedure <p & q>\nmsg <x>\nend define\n"
        "define selection <m>\ninfo <Which?>\nchoice <one & two> do <p & q>\nend define\n"
        "define text <t>\nline one\n\nline <three>\nend define\n");
}

std::vector<std::string> GameFiles(const TempFolder& folder) {
    std::vector<std::string> files = {folder.Write("nasty.kel", NastyGame()),
                                      folder.Write("empty.kel", "define game <>\r\nend define\r\n")};
    for (const fs::path& file : FilesIn(ZEM_SAMPLES))
        files.push_back(file.string());
    return files;
}

/// What is wrong with a page: elements that are not closed in order, ids that stand twice, links that lead
/// nowhere, bare signs, scripts.
std::string ProblemOfPage(const std::string& html) {
    static const std::set<std::string> Empty = {"meta", "!DOCTYPE"};
    std::vector<std::string> open;
    std::set<std::string> ids;
    std::vector<std::string> targets;
    const std::regex tag("<(/?)([!A-Za-z0-9]+)([^<>]*)>");
    const std::regex attribute("(id|href)=\"([^\"]*)\"");
    for (std::sregex_iterator at(html.begin(), html.end(), tag), end; at != end; ++at) {
        const std::string name = (*at)[2];
        if (name == "script")
            return "a script";
        if ((*at)[1] == "/") {
            if (open.empty() || open.back() != name)
                return "</" + name + "> closes " + (open.empty() ? "nothing" : open.back());
            open.pop_back();
        } else if (!Empty.contains(name)) {
            open.push_back(name);
        }
        const std::string attributes = (*at)[3];
        for (std::sregex_iterator found(attributes.begin(), attributes.end(), attribute); found != end;
             ++found) {
            if ((*found)[1] == "id" && !ids.insert((*found)[2]).second)
                return "the id " + (*found)[2].str() + " twice";
            if ((*found)[1] == "href")
                targets.push_back((*found)[2]);
        }
    }
    if (!open.empty())
        return open.back() + " is not closed";
    for (const std::string& target : targets)
        if (!target.starts_with("#") || !ids.contains(target.substr(1)))
            return "the link " + target + " is dead";
    const std::string text = std::regex_replace(html, tag, "");
    if (std::regex_search(text, std::regex("[<>]|&(?!(lt|gt|amp|quot);)")))
        return "a bare sign";
    for (const char c : html)
        if (static_cast<unsigned char>(c) < ' ' && c != '\n')
            return "a control character";
    return "";
}

TEST(Export, WritesPagesThatAreValidAndWhole) {
    const TempFolder folder;
    for (const std::string& file : GameFiles(folder)) {
        const std::string html = Export(file, folder, "book.html");
        EXPECT_EQ(ProblemOfPage(html), "") << file;
        const GameModel game = LoadBytes(ReadBytes(file));
        for (int k = 1; k <= game.Rooms.Count(); ++k)
            EXPECT_NE(html.find("<h3 id=\"room-" + std::to_string(k) + "\">"), std::string::npos)
                << file << k;
    }
    const std::string html = Export(folder.Path("nasty.kel"), folder, "book.html");
    for (const char* part :
         {"<p>Bold &amp; &quot;brave&quot;</p>\n<p>second # line *star* [x](y)</p>",
          "<li>north: <a href=\"#room-2\">Caf\xC3\xA9, &quot;old&quot;</a></li>", "<li>south: Nowhere</li>",
          "Person: O'Neil &amp; son", "used by <a href=\"#menu-1\">menu m</a>",
          "used by <a href=\"#game\">the game itself</a>, <a href=\"#room-1\">R&amp;D</a>"})
        EXPECT_NE(html.find(part), std::string::npos) << part << html;
    EXPECT_EQ(ProblemOfPage("<p><b></p></b>"), "</p> closes b") << "the check itself";
    EXPECT_EQ(ProblemOfPage("<a href=\"#x\"></a>"), "the link #x is dead");
}

TEST(Export, WritesMarkdownWhoseLinksLeadSomewhere) {
    const TempFolder folder;
    for (const std::string& file : GameFiles(folder)) {
        const std::string text = Export(file, folder, "book.md");
        std::set<std::string> anchors;
        const std::regex anchor("<a id=\"([^\"]+)\"></a>");
        for (std::sregex_iterator at(text.begin(), text.end(), anchor), end; at != end; ++at)
            EXPECT_TRUE(anchors.insert((*at)[1]).second) << (*at)[1];
        const std::regex link("\\]\\(#([^)]+)\\)");
        for (std::sregex_iterator at(text.begin(), text.end(), link), end; at != end; ++at)
            EXPECT_TRUE(anchors.contains((*at)[1])) << file << (*at)[1];
    }
    const std::string text = Export(folder.Path("nasty.kel"), folder, "book.md");
    EXPECT_NE(text.find("second # line \\*star\\* \\[x\\](y)"), std::string::npos) << text;
}

TEST(Export, PutsRoomsInTheOrderOfTheWayThere) {
    const GameModel game =
        LoadBytes(CrLf("define game <x>\nstart <B>\nend define\n"
                       "define room <Far>\nend define\ndefine room <A>\nplace <Far>\nend define\n"
                       "define room <B>\nnorth <A>\neast goto <C>\nend define\n"
                       "define room <C>\nend define\ndefine room <Alone>\nend define\n"));
    EXPECT_EQ(exports::RoomsInOrder(game), (std::vector<int>{3, 2, 4, 1, 5}));
}

/// Reads what an export wrote, by the names of docs/json.md.
void Fill(std::string& text, const Json& json) {
    text = FromUtf8(json.get<std::string>());
}
void Fill(bool& mark, const Json& json) {
    mark = json.get<bool>();
}
void Fill(std::int16_t& number, const Json& json) {
    number = json.get<std::int16_t>();
}
template <class Record>
void Fill(Record& record, const Json& json);
template <class Record>
void Fill(Shared<Record>& record, const Json& json) {
    Fill(record.Edit(), json);
}
void Fill(RecordList auto& list, const Json& json) {
    list.Clear();
    for (const Json& entry : json)
        Fill(list.Append(), entry);
}
template <class Record>
void Fill(Record& record, const Json& json) {
    ForEachField<Record>([&](const auto& field) { Fill(record.*field.member, json.at(field.name)); });
}

TEST(Export, WritesJsonThatGivesTheGameBack) {
    const auto expectBack = [](const GameModel& game) {
        const Json json = Json::parse(exports::AsJson(game));
        EXPECT_EQ(json["format"], "zem-game");
        GameModel back;
        Fill(back, json["game"]);
        EXPECT_TRUE(SameGame(game, back));
    };
    const TempFolder folder;
    for (const std::string& file : GameFiles(folder))
        expectBack(LoadBytes(ReadBytes(file)));
    for (unsigned seed = 1; seed <= 50; ++seed)
        expectBack(RandomGame(seed, 8).Make());
    GameModel every;
    for (int byte = 1; byte < 256; ++byte)
        every.GameName += static_cast<char>(byte);
    expectBack(every);
}

std::vector<std::vector<std::string>> ParseCsv(const std::string& csv) {
    std::vector<std::vector<std::string>> rows(1, {""});
    bool quoted = false;
    for (std::size_t k = 0; k < csv.size(); ++k) {
        if (csv[k] == '"' && quoted && k + 1 < csv.size() && csv[k + 1] == '"')
            rows.back().back() += csv[k++];
        else if (csv[k] == '"')
            quoted = !quoted;
        else if (csv[k] == ',' && !quoted)
            rows.back().emplace_back();
        else if (csv[k] == '\r' && !quoted && csv[k + 1] == '\n') {
            rows.push_back({""});
            ++k;
        } else
            rows.back().back() += csv[k];
    }
    rows.pop_back();
    return rows;
}

TEST(Export, WritesTheRoomsAsATable) {
    const TempFolder folder;
    const auto rows = ParseCsv(Export(folder.Write("nasty.kel", NastyGame()), folder, "rooms.csv"));
    ASSERT_EQ(rows.size(), 3u);
    const auto cell = [&](std::size_t row, const std::string& column) {
        const auto at = std::find(rows[0].begin(), rows[0].end(), column);
        return rows[row].at(static_cast<std::size_t>(at - rows[0].begin()));
    };
    EXPECT_EQ(cell(1, "name"), "R&D");
    EXPECT_EQ(cell(1, "north"), "Caf\xC3\xA9, \"old\"");
    EXPECT_EQ(cell(1, "east"), "[action]");
    EXPECT_EQ(cell(1, "places"), "the; Caf\xC3\xA9, \"old\"");
    EXPECT_EQ(cell(1, "objects"), "x\"y");
    EXPECT_EQ(cell(2, "characters"), "O'Neil & son");
    for (const fs::path& file : FilesIn(ZEM_SAMPLES)) {
        const auto all = ParseCsv(Export(file.string(), folder, "rooms.csv"));
        EXPECT_EQ(all.size(), static_cast<std::size_t>(LoadBytes(ReadBytes(file)).Rooms.Count()) + 1);
        for (const auto& row : all)
            EXPECT_EQ(row.size(), all.front().size());
    }
}

TEST(Export, WritesTheMapAsAGraph) {
    const TempFolder folder;
    EXPECT_EQ(
        Export(folder.Write("nasty.kel", NastyGame()), folder, "map.dot"),
        "digraph \"a & b\\\"c\" {\n  node [shape=box];\n  r1 [label=\"R&D\", penwidth=2];\n"
        "  r2 [label=\"Caf\xC3\xA9, \\\"old\\\"\"];\n  r1 -> r2 [label=\"north\"];\n"
        "  r1 -> r1 [label=\"east\", style=dashed];\n  r1 -> r2 [label=\"the; Caf\xC3\xA9, \\\"old\\\"\"];\n"
        "  r2 -> r1 [label=\"out\"];\n}\n");
}

TEST(Export, GivesTheSameBytesForTheSameGame) {
    const TempFolder folder;
    const std::string bytes = ReadBytes(ZEM_SAMPLES "/lighthouse.kel");
    const std::string one = folder.Write("one.kel", bytes);
    const std::string other = folder.Write("other.kel", bytes);
    for (const char* name : {"x.html", "x.md", "x.csv", "x.json", "x.dot"})
        EXPECT_EQ(Export(one, folder, name), Export(other, folder, name)) << name;
}

TEST(Export, WritesAWalkthroughOfARecordedRun) {
    const TempFolder folder;
    const std::string game = folder.Write("g.kel", "define game <Keys>\r\nend define\r\n");
    folder.Write(
        "g.kel.tests",
        "run first seed 1\n  Welcome.\n\n> n\n\n  A hall.\n\nrun second seed 2\n\n> wait\n\n  Tick.\n");
    EXPECT_EQ(Export(game, folder, "walk.txt"), "Keys\nWalkthrough: first\n\nWelcome.\n\n> n\n\nA hall.\n");
    EXPECT_NE(Export(game, folder, "walk.txt", {"--run", "second"}).find("> wait\n\nTick.\n"),
              std::string::npos);
    EXPECT_EQ(ZemCall({"export", game, folder.Path("x.txt"), "--run", "third"}).result.exitStatus, 1);
    EXPECT_NE(Export(ZEM_SAMPLES "/lighthouse.kel", folder, "walk.txt").find("\n> give letter to brehat\n"),
              std::string::npos);
}

TEST(Export, RefusesWhatItCannotWrite) {
    const TempFolder folder;
    const std::string game = folder.Write("g.kel", "define game <x>\r\nend define\r\n");
    for (const char* name : {"book.doc", "book", "book.kel"}) {
        const ZemCall run({"export", game, folder.Path(name)});
        EXPECT_EQ(run.result.exitStatus, 2);
        EXPECT_NE(run.err.find("its ending tells what to write"), std::string::npos) << run.err;
        EXPECT_FALSE(fs::exists(folder.Path(name)));
    }
    EXPECT_EQ(ReadBytes(game), "define game <x>\r\nend define\r\n");
    const std::string kept = folder.Write("kept.html", "as it was");
    EXPECT_EQ(ZemCall({"export", folder.Path("none.kel"), kept}).result.exitStatus, 1);
    EXPECT_EQ(ReadBytes(kept), "as it was");
    EXPECT_EQ(ZemCall({"export", game, folder.Path("walk.txt")}).result.exitStatus, 1);
}

TEST(Export, LeavesPagesToWhoCanPaint) {
    const TempFolder folder;
    const std::string game =
        folder.Write("g.kel", "define game <Keys>\r\nend define\r\ndefine room <A>\r\nend "
                              "define\r\n");
    const std::string out = folder.Write("book.pdf", "as it was");
    using Book = decltype(Painters::book);
    for (const auto& [book, status, content] : Cases<Book, int, std::string>{
             {{}, 1, "as it was"},
             {[](const std::string&, const routing::RoutedMap&) -> std::string { throw KelError("no"); }, 1,
              "as it was"},
             {[](const std::string&html, const routing::RoutedMap&map) {
                  return std::to_string(map.rooms.size()) + html.substr(0, 15);
              },
              0, "1<!DOCTYPE html>"},
         }) {
        const ZemCall run({"export", game, out}, {{}, book});
        EXPECT_EQ(run.result.exitStatus, status);
        EXPECT_EQ(run.err.empty(), status == 0) << run.err;
        EXPECT_EQ(ReadBytes(out), content);
    }
}

} // namespace
} // namespace zem::test
