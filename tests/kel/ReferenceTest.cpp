#include "base/LineText.h"
#include "base/TextFile.h"
#include "kel/CommandLookup.h"
#include "kel/FormatCodes.h"
#include "kel/ScriptLine.h"
#include "model/Texts.h"
#include "support/Cases.h"
#include "support/Catalogue.h"
#include "support/Games.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

/// The reference page is written by hand. It is held against the catalogues, and its examples against the
/// reader, so that a line which an author copies from the page does what the page says.
namespace zem::test {
namespace {

/// The text of a page with its entities turned into what they stand for.
std::string WithoutEntities(std::string text) {
    for (const auto& [entity, character] : {std::pair("&lt;", "<"), {"&gt;", ">"}, {"&amp;", "&"}})
        for (std::size_t at = text.find(entity); at != std::string::npos; at = text.find(entity, at + 1))
            text.replace(at, std::strlen(entity), character);
    return text;
}

/// The texts on the page that stand between `begin` and the next `end`, in order.
std::vector<std::string> TextsBetween(const std::string& page, std::string_view begin, char end) {
    std::vector<std::string> texts;
    for (std::size_t at = page.find(begin); at != std::string::npos; at = page.find(begin, at)) {
        at += begin.size();
        texts.push_back(page.substr(at, page.find(end, at) - at));
    }
    return texts;
}

/// What stands in the elements that have a class, each with its class before it.
std::vector<std::pair<std::string, std::string>> Samples(const std::string& page) {
    std::vector<std::pair<std::string, std::string>> samples;
    for (const std::string& element : TextsBetween(page, " class=\"", '<')) {
        const std::size_t quote = element.find("\">");
        samples.emplace_back(element.substr(0, quote), WithoutEntities(element.substr(quote + 2)));
    }
    return samples;
}

std::vector<std::string> SamplesOf(const std::string& page, std::string_view wanted) {
    std::vector<std::string> texts;
    for (const auto& [kind, text] : Samples(page))
        if (kind == wanted)
            texts.push_back(text);
    EXPECT_FALSE(texts.empty()) << wanted;
    return texts;
}

class Reference : public testing::Test {
protected:
    /// What is wrong with a command or a condition; nothing when all is as the catalogue has it.
    static std::string ProblemOfCall(const std::string& line, const ScriptCall& call) {
        const std::string name(call.keyword.Of(line));
        if (call.entry == nullptr)
            return "not in the catalogue: " + name;
        const CommandDefinition& entry = *call.entry->definition;
        if (entry.RawSyntax == "!")
            return call.parameter.IsEmpty() ? "" : "takes no parameter: " + name;
        if (!call.hasParameter || !call.rest.IsEmpty())
            return "takes one parameter in brackets: " + name;
        const std::string_view parameter = call.parameter.Of(line);
        const auto needed = std::count(entry.RawSyntax.begin(), entry.RawSyntax.end(), ';');
        const auto found = std::count(parameter.begin(), parameter.end(), ';');
        const bool mayHaveMore = needed == 0 || call.entry->syntax.lastRepeats;
        return found == needed || (found > needed && mayHaveMore)
                   ? ""
                   : "takes <" + entry.RawSyntax + ">: " + name;
    }

    std::string ProblemOfLine(const std::string& line) const {
        const ScriptLine parsed = TakeApart(line, commands);
        std::string problem = Explain(parsed.problem);
        ForEachCall(parsed, [&](const ScriptCall& call) { problem += ProblemOfCall(line, call); });
        return problem;
    }

    /// Expects that the reader understands every line of the game, and the catalogue every command.
    void ExpectUnderstood(const GameModel& game) const {
        ForEachText(game, [&](const Place& place, FieldUse use, const std::string& text) {
            EXPECT_NE(use.kind, FieldKind::RawLines) << "not understood: " << text;
            if (use.kind == FieldKind::Script)
                ForEachLine(text, [&](TextRange line, int) {
                    EXPECT_EQ(ProblemOfLine(std::string(line.Of(text))), "")
                        << line.Of(text) << " in " << DescribePlace(game, place);
                });
        });
    }

    bool Says(const std::string& text) const { return plainPage.find(text) != std::string::npos; }

    const std::string page = ReadFile(ZEM_PROGRAM_FOLDER "/KEL.HTM");
    const std::string plainPage = WithoutEntities(page);
    const CommandLookup commands{ShippedCatalogue()};
};

TEST_F(Reference, DescribesEveryCommandAndConditionWithAnExample) {
    std::map<std::string, std::vector<std::string>> examples; // The key is the syntax above them.
    std::string syntax;
    for (const auto& [kind, text] : Samples(page)) {
        if (kind == "syntax") {
            syntax = text;
            EXPECT_TRUE(examples.try_emplace(syntax).second) << syntax << " is described twice";
        } else if (kind == "example") {
            examples[syntax].push_back(text);
        }
    }
    for (const CommandDefinition& entry : commands.Catalogue()) {
        const std::string itsSyntax =
            entry.Keyword + (entry.RawSyntax == "!" ? "" : " <" + entry.RawSyntax + ">");
        EXPECT_TRUE(Says("\"><code class=\"syntax\">" + itsSyntax + "</code></dt>"))
            << itsSyntax << " stands nowhere with an id";
        EXPECT_TRUE(Says("<code>" + entry.Keyword + "</code></a></li>"))
            << entry.Keyword << " is not in the index";
        EXPECT_FALSE(examples[itsSyntax].empty()) << itsSyntax << " has no example";
        for (const std::string& example : examples[itsSyntax]) {
            const bool isOther = &entry == commands.Other();
            EXPECT_EQ(commands.Find(example), isOther ? nullptr : &entry)
                << "is no example of " << itsSyntax << ": " << example;
            EXPECT_EQ(isOther ? "" : ProblemOfLine(example), "");
        }
    }
    EXPECT_EQ(examples.size(), static_cast<std::size_t>(commands.Catalogue().Count()))
        << "the page describes commands that are not in the catalogue";
}

TEST_F(Reference, ShowsLinesThatTheirBlockKnows) {
    for (const auto& [kind, before, after] : Cases<const char*, std::string, const char*>{
             {"in-game", "define game <x>\nitems <brass key; oars>\n", "end define\n"},
             {"in-synonyms", "define synonyms\n", "end define\n"},
             {"in-room", "define room <x>\n", "end define\n"},
             {"in-character", "define room <x>\ndefine character <y>\n", "end define\nend define\n"},
             {"in-object", "define room <x>\ndefine object <y>\n", "end define\nend define\n"},
             {"in-selection", "define selection <x>\n", "end define\n"},
         }) {
        const GameModel without = LoadBytes(CrLf(before + after));
        for (const std::string& line : SamplesOf(page, kind)) {
            SCOPED_TRACE(line);
            const GameModel with = LoadBytes(CrLf(before + line + "\n" + after));
            EXPECT_FALSE(SameGame(with, without)) << "the line says nothing";
            ExpectUnderstood(with);
        }
    }
}

TEST_F(Reference, ShowsGamesAndScriptsThatAreUnderstood) {
    for (const std::string& text : SamplesOf(page, "game")) {
        SCOPED_TRACE(text);
        ExpectUnderstood(LoadBytes(CrLf(text)));
    }
    for (const std::string& text : SamplesOf(page, "script")) {
        SCOPED_TRACE(text);
        const GameModel game = LoadBytes(CrLf("define procedure <x>\n" + text + "\nend define\n"));
        EXPECT_FALSE(game.Procedures[1].Script.empty());
        ExpectUnderstood(game);
    }
}

TEST_F(Reference, ShowsFormatCodesTheWayScriptsAreListed) {
    std::vector<std::string> words;
    for (const std::string& code : SamplesOf(page, "format"))
        words.push_back(FormatCodesToText(code, true));
    EXPECT_EQ(words, SamplesOf(page, "shown"));
}

TEST_F(Reference, ListsEveryErrorMessage) {
    const std::string errors = ReadFile(ZEM_PROGRAM_FOLDER "/zemerr.dat");
    int count = 0;
    for (std::string_view rest = errors; !rest.empty();) {
        const std::string line(TakeLine(rest));
        const std::size_t semicolon = line.find("; ");
        if (line.starts_with('#') || semicolon == std::string::npos)
            continue;
        EXPECT_TRUE(Says("<code>" + line.substr(0, semicolon) + "</code></td><td>" +
                         line.substr(semicolon + 2) + "</td>"))
            << line;
        ++count;
    }
    EXPECT_GT(count, 0);
}

TEST_F(Reference, LeadsNowhereButToItself) {
    const std::vector<std::string> ids = TextsBetween(page, " id=\"", '"');
    const std::set<std::string> targets(ids.begin(), ids.end());
    EXPECT_EQ(targets.size(), ids.size()) << "an id stands twice";
    const std::vector<std::string> links = TextsBetween(page, " href=\"", '"');
    EXPECT_FALSE(links.empty());
    for (const std::string& link : links)
        EXPECT_TRUE(link.starts_with('#') && targets.contains(link.substr(1))) << link;
    for (const char* foreign : {"<script", "<link", "src=", "url("})
        EXPECT_EQ(page.find(foreign), std::string::npos) << foreign;
}

} // namespace
} // namespace zem::test
