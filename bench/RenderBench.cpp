// Rendering 100,000 script lines in plain English, as a ratio to splitting the same lines and searching them
// for "<" and ">" in a plain loop, both measured in turn, in processor time, in the same run; with the
// shipped catalogue and with one ten times as long, because every line looks through it from the front. And
// what a key costs in a script window: the rows of a script of 500 lines in a game of 5,000 procedures, and
// what is offered for a line that is being typed.
#include "Clock.h"
#include "kel/CommandLookup.h"
#include "kel/RenderScript.h"
#include "kel/ScriptRows.h"
#include "kel/TypedLine.h"

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <string>
#include <string_view>

namespace zem::bench {
namespace {

constexpr int Lines = 100'000;

/// Lines of every kind that the catalogue knows, and some that it does not.
std::string MakeScript(const CommandCatalogue& catalogue) {
    std::string script;
    for (int k = 0; k < Lines; ++k) {
        const CommandDefinition& entry = catalogue[k % catalogue.Count() + 1];
        const bool isOther = entry.Keyword.starts_with('(');
        script += isOther ? "unheard-of <thing>" : entry.Keyword + " <parameter " + std::to_string(k) + ">";
        script += "\r\n";
    }
    return script;
}

/// The catalogue with further entries in front, which no line begins with.
CommandCatalogue Lengthen(const CommandCatalogue& catalogue, int factor) {
    CommandCatalogue longer;
    for (int k = 0; k < catalogue.Count() * (factor - 1); ++k)
        longer.Append({"zz" + std::to_string(k), "", "", "", "$"});
    for (const CommandDefinition& entry : catalogue)
        longer.Append(entry);
    return longer;
}

std::size_t SplitAndSearch(std::string_view script) {
    std::size_t found = 0;
    while (!script.empty()) {
        const std::size_t end = script.find("\r\n");
        const std::string_view line = script.substr(0, end);
        const std::size_t open = line.find('<');
        const std::size_t close = line.find('>');
        found += close - open;
        script.remove_prefix(end == std::string_view::npos ? script.size() : end + 2);
    }
    return found;
}

void Render(benchmark::State& state) {
    CommandCatalogue shipped;
    LoadCommandCatalogue(shipped, ZEM_PROGRAM_FOLDER "/zem.dat");
    const std::string script = MakeScript(shipped);
    const CommandLookup commands(Lengthen(shipped, static_cast<int>(state.range(0))));
    double searching = 0;
    double rendering = 0;
    for (auto _ : state) {
        const auto start = ThreadClock::now();
        benchmark::DoNotOptimize(SplitAndSearch(script));
        const auto searched = ThreadClock::now();
        benchmark::DoNotOptimize(
            RenderScript(script, ScriptForm::Rich, InternalProcedures::ShowCall, {}, commands, true));
        const auto rendered = ThreadClock::now();
        searching += Seconds(searched - start);
        rendering += Seconds(rendered - searched);
        state.SetIterationTime(Seconds(rendered - searched));
    }
    state.counters["entries"] = commands.Catalogue().Count();
    state.counters["ratio_to_ten_searches"] = rendering / (10 * searching);
}

/// A game with many procedures, and a script whose lines run some of them in their branches.
GameModel ManyProcedures() {
    GameModel game;
    for (int k = 0; k < 5000; ++k)
        game.Procedures.Append({"~Internal Procedure " + std::to_string(k), "msg <one>\r\nmsg <two>"});
    return game;
}

void RowsAfterAKey(benchmark::State& state) {
    CommandCatalogue shipped;
    LoadCommandCatalogue(shipped, ZEM_PROGRAM_FOLDER "/zem.dat");
    const CommandLookup commands(shipped);
    const GameModel game = ManyProcedures();
    std::string script;
    for (int k = 0; k < 500; ++k)
        script += "if has <key " + std::to_string(k) + "> then do <~Internal Procedure " + std::to_string(k) +
                  "> else msg <no>\r\n";
    std::size_t rows = 0;
    for (auto _ : state)
        rows = RowsOfScript(game, script, commands).size();
    state.counters["rows"] = static_cast<double>(rows);
}

void OffersAfterAKey(benchmark::State& state) {
    CommandCatalogue shipped;
    LoadCommandCatalogue(shipped, ZEM_PROGRAM_FOLDER "/zem.dat");
    const CommandLookup commands(shipped);
    for (auto _ : state) {
        benchmark::DoNotOptimize(EndOfTyped("if the player has an item key then give the pl", commands));
        benchmark::DoNotOptimize(ReadTypedLine("if has key then print Hello. else win", commands));
    }
}

BENCHMARK(RowsAfterAKey)->Unit(benchmark::kMillisecond);
BENCHMARK(OffersAfterAKey)->Unit(benchmark::kMillisecond);
BENCHMARK(Render)->Arg(1)->Arg(10)->UseManualTime()->MinTime(1)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace zem::bench

int main(int argc, char** argv) {
    // Keeps freed memory in the process, so that no run pays for page faults of the one before it.
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
