#include "base/LineText.h"
#include "base/TextFile.h"
#include "kel/CommandLookup.h"
#include "kel/FormatCodes.h"
#include "kel/IfLine.h"
#include "model/Fields.h"
#include "support/Cases.h"
#include "support/Catalogue.h"
#include "support/Games.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <type_traits>
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

/// Gives every text of the value, and of all that it holds, to `use` with the name of its field.
template <class Value, class Use>
void ForEachText(std::string_view name, const Value& value, Use use) {
    if constexpr (requires { value.Count(); })
        for (const auto& entry : value)
            ForEachText(name, entry, use);
    else if constexpr (std::is_convertible_v<Value, std::string_view>)
        use(name, std::string_view(value));
    else if constexpr (requires { *value; })
        ForEachText(name, *value, use);
    else if constexpr (std::is_class_v<Value>)
        ForEachField<Value>([&](const auto& field) { ForEachText(field.name, value.*field.member, use); });
}

class Reference : public testing::Test {
protected:
    /// What is wrong with a command, or with an "if" and one condition; nothing when all is as the catalogue
    /// has it.
    std::string ProblemOfPart(const std::string& line) const {
        const CommandDefinition* entry = commands.Find(line);
        if (entry == nullptr || !EqualIgnoringCase(Trim(line.substr(0, line.find('<'))), entry->Keyword))
            return "not in the catalogue: " + line;
        const std::string_view rest = Trim(TextAfter(TrimLeft(line), entry->Keyword));
        if (entry->RawSyntax == "!")
            return rest.empty() || rest == "<>" ? "" : "takes no parameter: " + line;
        if (!rest.starts_with('<') || rest.find('>') != rest.size() - 1)
            return "takes one parameter in brackets: " + line;
        const auto needed = std::count(entry->RawSyntax.begin(), entry->RawSyntax.end(), ';');
        const auto found = std::count(rest.begin(), rest.end(), ';');
        const bool mayHaveMore = needed == 0 || entry->Keyword == "pick";
        return found == needed || (found > needed && mayHaveMore)
                   ? ""
                   : "takes <" + entry->RawSyntax + ">: " + line;
    }

    std::string ProblemOfCommand(const std::string& line) const {
        if (!BeginsWith(line, "if "))
            return ProblemOfPart(line);
        try {
            const IfLine parsed = ParseIfLine(line);
            std::string problem = ProblemOfCommand(parsed.Then);
            for (const Condition& condition : parsed.Conditions)
                problem += ProblemOfPart("if " + condition.Keyword +
                                         (condition.HasParameter ? " <" + condition.Parameter + ">" : ""));
            return parsed.Else.empty() ? problem : problem + ProblemOfCommand(parsed.Else);
        } catch (const KelError& error) {
            return error.Problem() + ": " + line;
        }
    }

    /// Expects that the reader understands every line of the game, and the catalogue every command.
    void ExpectUnderstood(const GameModel& game) const {
        ForEachText("", game, [this](std::string_view name, std::string_view text) {
            const bool isScript = name.ends_with("action") || name == "script";
            for (const std::string_view line : SplitAt(text, "\r\n"))
                if (isScript && !line.empty() && line.front() != '\'') {
                    EXPECT_EQ(ProblemOfCommand(std::string(line)), "");
                }
            EXPECT_TRUE(text.empty() || (name != "miscellaneous tags" && name != "blocks of other kinds"))
                << "not understood: " << text;
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
            EXPECT_EQ(isOther ? "" : ProblemOfCommand(example), "");
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
