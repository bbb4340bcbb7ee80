#include "model/Fields.h"
#include "model/LineText.h"
#include "model/TextFile.h"
#include "script/CommandLookup.h"
#include "script/FormatCodes.h"
#include "script/IfLine.h"
#include "support/Cases.h"
#include "support/Games.h"

#include <algorithm>
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

void ReplaceAll(std::string& text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

std::string Escape(std::string text) {
    ReplaceAll(text, "&", "&amp;");
    ReplaceAll(text, "<", "&lt;");
    ReplaceAll(text, ">", "&gt;");
    return text;
}

std::string Unescape(std::string text) {
    ReplaceAll(text, "&lt;", "<");
    ReplaceAll(text, "&gt;", ">");
    ReplaceAll(text, "&amp;", "&");
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

/// What stands in an element that has a class.
struct Sample {
    std::string kind; // the class
    std::string text;
};

std::vector<Sample> Samples(const std::string& page) {
    std::vector<Sample> samples;
    for (const std::string& element : TextsBetween(page, " class=\"", '<')) {
        const std::size_t quote = element.find("\">");
        samples.push_back({element.substr(0, quote), Unescape(element.substr(quote + 2))});
    }
    return samples;
}

std::vector<std::string> SamplesOf(const std::string& page, std::string_view kind) {
    std::vector<std::string> texts;
    for (const Sample& sample : Samples(page))
        if (sample.kind == kind)
            texts.push_back(sample.text);
    return texts;
}

CommandCatalogue ShippedCatalogue() {
    CommandCatalogue catalogue;
    LoadCommandCatalogue(catalogue, ZEM_PROGRAM_FOLDER "/zem.dat");
    return catalogue;
}

/// The scripts of a game by their lines, and all that the reader has kept without understanding it.
struct Scripts {
    explicit Scripts(const GameModel& game) { Add(game); }

    std::vector<std::string> commands;
    std::string kept;

private:
    template <class Record>
    void Add(const Record& record) {
        ForEachField<Record>([&](std::string_view name, auto field) { AddField(name, record.*field); });
    }
    template <class Value>
    void AddField(std::string_view name, const Value& value) {
        if constexpr (requires { value.Count(); })
            for (const auto& entry : value)
                AddField(name, entry);
        else if constexpr (std::is_convertible_v<Value, std::string_view>)
            AddText(name, value);
        else if constexpr (requires { *value; })
            AddField(name, *value);
        else if constexpr (std::is_class_v<Value>)
            Add(value);
    }
    void AddText(std::string_view name, std::string_view text) {
        if (name == "miscellaneous tags" || name == "blocks of other kinds")
            kept += text;
        else if (name.ends_with("action") || name == "script")
            while (!text.empty())
                if (const std::string_view line = TakeLine(text); !line.empty() && line.front() != '\'')
                    commands.emplace_back(line);
    }
};

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
        const Scripts scripts(game);
        EXPECT_EQ(scripts.kept, "");
        for (const std::string& command : scripts.commands)
            EXPECT_EQ(ProblemOfCommand(command), "");
    }

    const std::string page = ReadFile(ZEM_PROGRAM_FOLDER "/KEL.HTM");
    const CommandLookup commands = CommandLookup(ShippedCatalogue());
};

TEST_F(Reference, DescribesEveryCommandAndConditionWithAnExample) {
    std::map<std::string, std::vector<std::string>> examples; // by the syntax above them
    std::string syntax;
    for (const Sample& sample : Samples(page)) {
        if (sample.kind == "syntax") {
            syntax = sample.text;
            EXPECT_TRUE(examples.try_emplace(syntax).second) << syntax << " is described twice";
        } else if (sample.kind == "example") {
            examples[syntax].push_back(sample.text);
        }
    }
    for (const CommandDefinition& entry : commands.Catalogue()) {
        const std::string itsSyntax =
            entry.RawSyntax == "!" ? entry.Keyword : entry.Keyword + " <" + entry.RawSyntax + ">";
        EXPECT_NE(page.find("\"><code class=\"syntax\">" + Escape(itsSyntax) + "</code></dt>"),
                  std::string::npos)
            << itsSyntax << " stands nowhere with an id";
        EXPECT_NE(page.find("<code>" + entry.Keyword + "</code></a></li>"), std::string::npos)
            << entry.Keyword << " is not in the index";
        EXPECT_FALSE(examples[itsSyntax].empty()) << itsSyntax << " has no example";
        for (const std::string& example : examples[itsSyntax]) {
            if (&entry == commands.Other()) {
                EXPECT_EQ(commands.Find(example), nullptr) << "is no other command: " << example;
                continue;
            }
            EXPECT_EQ(ProblemOfCommand(example), "");
            EXPECT_EQ(commands.Find(example), &entry) << "is no example of " << itsSyntax << ": " << example;
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
        const std::vector<std::string> lines = SamplesOf(page, kind);
        EXPECT_FALSE(lines.empty()) << kind;
        for (const std::string& line : lines) {
            SCOPED_TRACE(line);
            const GameModel with = LoadBytes(CrLf(before + line + "\n" + after));
            EXPECT_FALSE(SameGame(with, without)) << "the line says nothing";
            ExpectUnderstood(with);
        }
    }
}

TEST_F(Reference, ShowsGamesAndScriptsThatAreUnderstood) {
    const std::vector<std::string> games = SamplesOf(page, "game");
    const std::vector<std::string> scripts = SamplesOf(page, "script");
    EXPECT_FALSE(games.empty());
    EXPECT_FALSE(scripts.empty());
    for (const std::string& text : games) {
        SCOPED_TRACE(text);
        ExpectUnderstood(LoadBytes(CrLf(text)));
    }
    for (const std::string& text : scripts) {
        SCOPED_TRACE(text);
        const GameModel game = LoadBytes(CrLf("define procedure <x>\n" + text + "\nend define\n"));
        EXPECT_FALSE(Scripts(game).commands.empty());
        ExpectUnderstood(game);
    }
}

TEST_F(Reference, ShowsFormatCodesTheWayScriptsAreListed) {
    const std::vector<std::string> codes = SamplesOf(page, "format");
    const std::vector<std::string> shown = SamplesOf(page, "shown");
    EXPECT_FALSE(codes.empty());
    ASSERT_EQ(codes.size(), shown.size());
    for (std::size_t k = 0; k < codes.size(); ++k)
        EXPECT_EQ(FormatCodesToText(codes[k], true), shown[k]) << codes[k];
}

TEST_F(Reference, ListsEveryErrorMessage) {
    const std::string errors = ReadFile(ZEM_PROGRAM_FOLDER "/zemerr.dat");
    int count = 0;
    for (std::string_view rest = errors; !rest.empty();) {
        const std::string line(TakeLine(rest));
        const std::size_t semicolon = line.find(';');
        if (line.starts_with('#') || semicolon == std::string::npos)
            continue;
        const std::string name(Trim(line.substr(0, semicolon)));
        const std::string description(Trim(line.substr(semicolon + 1)));
        EXPECT_NE(page.find("<code>" + Escape(name) + "</code></td><td>" + Escape(description) + "</td>"),
                  std::string::npos)
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
