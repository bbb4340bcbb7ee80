// The command that tells what is wrong with a game, and puts right what needs no choice.
#include "base/TextEncoding.h"
#include "commands/Command.h"
#include "game/Notes.h"
#include "kel/CommandLookup.h"
#include "problems/Checks.h"
#include "problems/FindProblems.h"
#include "problems/Silenced.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <utility>

namespace zem {

namespace {

using namespace problems;
using Json = nlohmann::ordered_json;

/// The checks whose fixes are made without asking: there is one way, and nothing that works changes by it.
constexpr std::string_view FixedUnasked[] = {"A10", "A11", "B09", "B14", "D14", "F02",
                                             "S01", "S04", "S06", "T04", "U05", "Y02"};

struct CheckArguments {
    std::string file;
    bool asJson = false;
    bool withHints = false;
    bool fix = false;
    CheckChoice choice;
};

/// A problem as it is told.
struct ToldProblem {
    std::size_t line = 1; // of the file; the first where no line says it
    Problem problem;
    std::string place; // in plain words; empty for what stands in the file and in no place of the game
    std::string fix;   // the words of the fix that was made
};

/// What is told about a file.
struct Told {
    std::vector<ToldProblem> problems;
    std::vector<ToldProblem> fixed;
    int silenced = 0;

    int CountOf(Level level) const {
        return static_cast<int>(std::count_if(problems.begin(), problems.end(), [&](const ToldProblem& told) {
            return told.problem.level == level;
        }));
    }
};

ToldProblem Tell(const CheckedGame& game, const Problem& problem) {
    if (problem.fileLine != 0)
        return {problem.fileLine, problem, "", ""};
    const std::size_t line = game.Source()->lines.LineOf(game.Game(), problem.place);
    return {std::max<std::size_t>(line, 1), problem, ToTerminal(game.Describe(problem.place)), ""};
}

void SortByLine(std::vector<ToldProblem>& told) {
    std::stable_sort(told.begin(), told.end(),
                     [](const ToldProblem& a, const ToldProblem& b) { return a.line < b.line; });
}

/// The way to put a problem right that nobody need be asked about; null when there is none.
const Fix* FixUnasked(const Problem& problem) {
    if (std::find(std::begin(FixedUnasked), std::end(FixedUnasked), problem.id) == std::end(FixedUnasked))
        return nullptr;
    const auto fix = std::find_if(problem.fixes.begin(), problem.fixes.end(),
                                  [](const Fix& one) { return one.needsNoChoice; });
    return fix == problem.fixes.end() ? nullptr : &*fix;
}

class Checker {
public:
    Checker(CommandContext& context, const CheckArguments& arguments)
        : context_(context),
          arguments_(arguments),
          commands_(LoadCommands(context)) {
        try {
            notes_ = LoadNotes(arguments.file);
        } catch (const KelError& error) {
            context.Report(NotesPath(arguments.file), error); // and nothing counts as silenced
        }
    }

    int Run() {
        if (arguments_.fix && !FixFile())
            return FileProblem;
        CheckInput input;
        input.commands = &commands_;
        input.language = notes_.language;
        if (!context_.LoadForCheck(input, arguments_.file))
            return FileProblem;
        const CheckedGame game(std::move(input));
        for (const Problem& problem : Unsilenced(game))
            if (problem.level != Level::Hint || arguments_.withHints)
                told_.problems.push_back(Tell(game, problem));
        SortByLine(told_.problems);
        arguments_.asJson ? PrintJson() : PrintLines();
        return told_.CountOf(Level::Error) + told_.CountOf(Level::Warning) == 0 ? Success : FileProblem;
    }

private:
    static CommandCatalogue LoadCommands(CommandContext& context) {
        CommandCatalogue commands;
        context.Load(commands);
        return commands;
    }

    std::vector<Problem> Unsilenced(const CheckedGame& game) {
        const std::vector<Problem> all = FindProblems(game, arguments_.choice);
        std::vector<Problem> problems = WithoutSilenced(game, notes_, all);
        told_.silenced = static_cast<int>(all.size() - problems.size());
        return problems;
    }

    /// Puts right what needs no choice, and saves the file if that was anything. What fails is told.
    bool FixFile() {
        CheckInput input;
        input.commands = &commands_;
        input.language = notes_.language;
        if (!context_.LoadForCheck(input, arguments_.file))
            return false;
        const CheckedGame read(input);
        GameModel fixed = read.Game();
        for (int round = 0; round < 10; ++round) { // one fix may uncover another
            CheckInput next = input;
            next.game = fixed;
            const CheckedGame game(std::move(next));
            GameModel better = FixAll(game, Fixable(game));
            if (SameGame(better, fixed))
                break;
            fixed = std::move(better);
        }
        if (SameGame(fixed, read.Game()))
            return true;
        NoteFixed(read, fixed);
        return context_.Save(fixed, arguments_.file) == Success;
    }

    /// The problems that can be fixed, each with that fix alone.
    std::vector<Problem> Fixable(const CheckedGame& game) {
        std::vector<Problem> fixable;
        for (Problem& problem : Unsilenced(game))
            if (const Fix* fix = FixUnasked(problem)) {
                problem.fixes = {Fix(*fix)};
                fixable.push_back(std::move(problem));
            }
        return fixable;
    }

    /// Notes which problems of the file as it was are gone.
    void NoteFixed(const CheckedGame& before, const GameModel& fixed) {
        CheckInput input = before.Input();
        input.game = fixed;
        const CheckedGame after(std::move(input));
        std::multiset<std::pair<std::string, std::string>> left;
        for (const Problem& problem : Fixable(after))
            left.emplace(problem.id, problem.text);
        for (const Problem& problem : Fixable(before)) {
            if (const auto same = left.find({problem.id, problem.text}); same != left.end()) {
                left.erase(same);
                continue;
            }
            told_.fixed.push_back(Tell(before, problem));
            told_.fixed.back().fix = problem.fixes.front().button;
        }
        SortByLine(told_.fixed);
    }

    void PrintLine(const ToldProblem& told, const char* word) {
        context_.Out() << arguments_.file << ':' << told.line << ": " << word << ": " << told.place
                       << (told.place.empty() ? "" : ": ") << ToTerminal(told.problem.text) << " ["
                       << told.problem.id << "]\n";
    }

    void PrintLines() {
        for (const ToldProblem& told : told_.fixed)
            PrintLine(told, "fixed");
        for (const ToldProblem& told : told_.problems)
            PrintLine(told, WordFor(told.problem.level));
    }

    static Json AsJson(const ToldProblem& told) {
        return {{"id", told.problem.id},
                {"level", WordFor(told.problem.level)},
                {"line", told.line},
                {"place", told.place},
                {"text", ToTerminal(told.problem.text)},
                {"fixable", FixUnasked(told.problem) != nullptr}};
    }

    /// The shape is for good, because build scripts read it; members may be added. "line" counts from 1, and
    /// is 1 where no line says it; "place" is empty for what stands in the file and in no place of the game,
    /// "fixable" says whether --fix would put it right, and "fixed" is what it did, with the lines as they
    /// were before.
    void PrintJson() {
        Json json = {{"file", arguments_.file},
                     {"errors", told_.CountOf(Level::Error)},
                     {"warnings", told_.CountOf(Level::Warning)},
                     {"hints", told_.CountOf(Level::Hint)},
                     {"silenced", told_.silenced},
                     {"fixed", Json::array()},
                     {"problems", Json::array()}};
        for (const ToldProblem& told : told_.fixed) {
            Json fixed = AsJson(told);
            fixed["fix"] = ToTerminal(told.fix);
            json["fixed"].push_back(std::move(fixed));
        }
        for (const ToldProblem& told : told_.problems)
            json["problems"].push_back(AsJson(told));
        context_.Out() << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
    }

    CommandContext& context_;
    const CheckArguments& arguments_;
    CommandLookup commands_;
    GameNotes notes_;
    Told told_;
};

std::string UnlessKnown(const std::string& id) {
    return FindCheck(id) == nullptr ? "there is no check " + id : "";
}

} // namespace

void AddCheckCommand(CLI::App& app, CommandContext& context, int& status) {
    CLI::App* check = app.add_subcommand(
        "check", "tell what is wrong with a game, a problem a line; status 1 for errors and warnings");
    auto arguments = std::make_shared<CheckArguments>();
    check->add_option("FILE", arguments->file, "the game to check")->required();
    check->add_flag("--json", arguments->asJson, "tell it as JSON");
    check->add_flag("--hints", arguments->withHints, "tell what is only worth a look, too");
    check->add_flag("--fix", arguments->fix,
                    "put right in FILE what needs no choice, and tell what that was");
    check->add_option("--only", arguments->choice.only, "the ids of the checks that count, as in A01,B03")
        ->delimiter(',')
        ->check(UnlessKnown);
    check->add_option("--skip", arguments->choice.skip, "the ids of checks that do not count")
        ->delimiter(',')
        ->check(UnlessKnown);
    check->final_callback([&context, &status, arguments] { status = Checker(context, *arguments).Run(); });
}

} // namespace zem
