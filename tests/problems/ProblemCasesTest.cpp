#include "support/ProblemCases.h"

#include "base/TextEncoding.h"
#include "play/Libraries.h"
#include "problems/Checks.h"
#include "problems/FindProblems.h"
#include "readback/ReadBack.h"
#include "reader/LoadGame.h"
#include "support/Catalogue.h"
#include "support/Games.h"

#include <gtest/gtest.h>
#include <set>

namespace zem::problems {
namespace {

using test::ProblemCase;

const CommandLookup& Commands() {
    static const CommandLookup commands(test::ShippedCatalogue());
    return commands;
}

class CaseFiles : public FilesBeside {
public:
    explicit CaseFiles(const std::map<std::string, std::string>& files) {
        for (const auto& [name, text] : files)
            files_[FromUtf8(name)] = FromUtf8(text);
    }
    std::optional<std::string> Read(const std::string& name) const override {
        const auto found = files_.find(name);
        return found == files_.end() ? std::nullopt : std::optional(found->second);
    }
    std::vector<std::string> Names() const override {
        std::vector<std::string> names;
        for (const auto& [name, text] : files_)
            names.push_back(name);
        return names;
    }

private:
    std::map<std::string, std::string> files_;
};

/// The game of a case with what every case needs.
CheckInput InputOf(const ProblemCase& one) {
    std::string text = one.game;
    if (text.find("define game") == std::string::npos)
        text += "define game <Test>\r\nstart <Hall>\r\nend define\r\n";
    if (text.find("start <Hall>") != std::string::npos &&
        text.find("define room <Hall>") == std::string::npos)
        text += "define room <Hall>\r\nend define\r\n";
    CheckInput input;
    input.commands = &Commands();
    const auto source = std::make_shared<SourceFile>();
    source->bytes = FromUtf8(text);
    play::NameMessages(input.game);
    ReadGame(input.game, source->bytes, &source->lines);
    source->inspection = InspectFile(source->bytes);
    input.source = source;
    const auto files = std::make_shared<CaseFiles>(one.beside);
    input.files = files;
    input.libraries = std::make_shared<Libraries>(ReadLibraries(input.game, *files));
    return input;
}

std::string WordsFor(const CheckedGame& game, const Problem& problem) {
    const std::string place =
        problem.fileLine == 0 ? game.Describe(problem.place) : "line " + std::to_string(problem.fileLine);
    return ToUtf8(std::string(WordFor(problem.level)) + " | " + place + " | " + problem.text);
}

bool HasLine(const GameModel& game, const std::string& line) {
    return ("\n" + ToUtf8(test::SaveToBytes(game))).find("\n" + line + "\r\n") != std::string::npos;
}

/// How many problems of the game have the same words.
std::ptrdiff_t CountLike(const CheckedGame& game, const Problem& problem, const std::string& words) {
    const std::vector<Problem> problems = FindProblems(game, {{problem.id}, {}});
    return std::count_if(problems.begin(), problems.end(),
                         [&](const Problem& other) { return WordsFor(game, other) == words; });
}

/// Tries a fix: the problem is gone, no new error is there, the game it was found in is as it was, and what
/// came out survives a save.
void TryFix(const CheckedGame& game, const Problem& problem, const Fix& fix) {
    const std::string before = test::SaveToBytes(game.Game());
    const GameModel after = fix.apply(game.Game());
    EXPECT_EQ(test::SaveToBytes(game.Game()), before);
    CheckInput changed = game.Input();
    changed.game = after;
    const CheckedGame checked(std::move(changed));
    EXPECT_LT(CountLike(checked, problem, WordsFor(game, problem)),
              CountLike(game, problem, WordsFor(game, problem)))
        << fix.button;
    EXPECT_TRUE(HasNoNewError(game, after)) << fix.button;
    for (const LostPlace& lost : ReadBack(after, test::SaveToBytes(after)))
        ADD_FAILURE() << fix.button << ": " << lost.text;
}

void CheckFixes(const CheckedGame& game, const Problem& problem, const std::vector<test::FixCase>& expected) {
    for (const test::FixCase& wanted : expected) {
        const auto fix = std::find_if(problem.fixes.begin(), problem.fixes.end(), [&](const Fix& other) {
            return ToUtf8(other.button) == wanted.button;
        });
        ASSERT_NE(fix, problem.fixes.end()) << wanted.button;
        const GameModel after = fix->apply(game.Game());
        EXPECT_NE(HasLine(game.Game(), wanted.line), wanted.hasLine) << wanted.line;
        EXPECT_EQ(HasLine(after, wanted.line), wanted.hasLine) << wanted.line << "\nin\n"
                                                               << ToUtf8(test::SaveToBytes(after));
    }
    for (const Fix& fix : OffersOf(game, problem))
        TryFix(game, problem, fix);
}

TEST(Problems, AreFoundToldAndFixedAsTheCasesSay) {
    std::set<std::string> tried;
    for (const auto& file : test::FilesIn(ZEM_TEST_DATA "/problems", ".cases")) {
        for (const ProblemCase& one : test::ProblemCasesIn(file)) {
            SCOPED_TRACE(one.file + ": " + one.title);
            ASSERT_NE(FindCheck(one.id), nullptr);
            const CheckedGame game(InputOf(one));
            const std::vector<Problem> problems = FindProblems(game, {{one.id}, {}});
            std::string found;
            std::string expected;
            for (const Problem& problem : problems)
                found += WordsFor(game, problem) + '\n';
            for (const test::ExpectedProblem& problem : one.problems)
                expected += problem.words + '\n';
            EXPECT_EQ(found, expected);
            if (found != expected)
                continue;
            for (std::size_t k = 0; k < problems.size(); ++k) {
                SCOPED_TRACE(one.problems[k].words);
                CheckFixes(game, problems[k], one.problems[k].fixes);
            }
            if (!problems.empty())
                tried.insert(one.id);
        }
    }
    for (const Check& check : AllChecks())
        EXPECT_TRUE(tried.contains(check.id)) << "no case has the problem " << check.id;
}

} // namespace
} // namespace zem::problems
