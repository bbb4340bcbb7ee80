// What tools that look at a whole game pay, in processor time: visiting every text of a game of 5,000 rooms
// with 20,000 things, taking every script of it apart, collecting its variables; as ratios to searching the
// bytes of its file for "<" and ">" once, measured in turn in the same run. And the same names in the largest
// game.
#include "GeneratedGame.h"
#include "game/GameNames.h"
#include "game/PrintGame.h"
#include "kel/ScriptLine.h"
#include "model/Texts.h"
#include "reader/LoadGame.h"

#include <benchmark/benchmark.h>
#include <ctime>
#include <string>
#include <utility>

namespace zem::bench {
namespace {

double CpuSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

/// With so many things in each room.
GameModel MakeGame(const std::string& file, int things) {
    GameModel game;
    ReadGame(game, file);
    for (int k = 1; k <= game.Rooms.Count(); ++k) {
        Room& room = game.Rooms.Edit(k);
        while (room.Characters.Count() + room.Objects.Count() < things) {
            Thing object = room.Objects[1];
            object.Name += " " + std::to_string(room.Objects.Count());
            room.Objects.Append(object);
        }
    }
    return game;
}

std::size_t VisitTexts(const GameModel& game) {
    std::size_t bytes = 0;
    ForEachText(game, [&](const Place&, FieldUse, const std::string& text) { bytes += text.size(); });
    return bytes;
}

std::size_t TakeScriptsApart(const GameModel& game, const CommandLookup& commands) {
    std::size_t actions = 0;
    ForEachText(game, [&](const Place&, FieldUse use, const std::string& text) {
        if (use.kind == FieldKind::Script)
            ForEachLine(text, [&](TextRange line, int) {
                actions += TakeApart(line.Of(text), commands).actions.size();
            });
    });
    return actions;
}

std::size_t SearchBrackets(const std::string& file) {
    std::size_t found = 0;
    for (std::size_t at = file.find('<'); at != std::string::npos; at = file.find('<', at + 1))
        found += file.find('>', at) - at;
    return found;
}

class Stopwatch {
public:
    template <class Work>
    void Time(Work work) {
        const double start = CpuSeconds();
        benchmark::DoNotOptimize(work());
        seconds += CpuSeconds() - start;
    }
    double seconds = 0;
};

void WholeGame(benchmark::State& state) {
    CommandCatalogue shipped;
    LoadCommandCatalogue(shipped, ZEM_PROGRAM_FOLDER "/zem.dat");
    const CommandLookup commands(shipped);
    const std::string file = GenerateGame(static_cast<int>(state.range(0)));
    const GameModel game = MakeGame(file, static_cast<int>(state.range(1)));
    Stopwatch searching, visiting, takingApart, names;
    for (auto _ : state) {
        searching.Time([&] { return SearchBrackets(file); });
        visiting.Time([&] { return VisitTexts(game); });
        takingApart.Time([&] { return TakeScriptsApart(game, commands); });
        names.Time([&] { return GameNames(game, NameKind::Variable, commands).size(); });
    }
    const auto runs = static_cast<double>(state.iterations());
    for (const auto& [name, watch] :
         {std::pair{"visit", &visiting}, {"take_apart", &takingApart}, {"names", &names}}) {
        state.counters[std::string(name) + "_ms"] = watch->seconds * 1000 / runs;
        state.counters[std::string("ratio_") + name] = watch->seconds / searching.seconds;
    }
}

/// A game in which every room has a script that became a procedure of its own.
void PrintingProcedures(benchmark::State& state) {
    CommandCatalogue shipped;
    LoadCommandCatalogue(shipped, ZEM_PROGRAM_FOLDER "/zem.dat");
    const CommandLookup commands(shipped);
    GameModel game;
    for (int k = 1; k <= state.range(0); ++k) {
        const std::string name = "~Internal Procedure " + std::to_string(k);
        game.Rooms.Append().Script = "do <" + name + ">";
        game.Procedures.Append({name, "msg <x>"});
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(PrintGame(game, commands));
    state.SetComplexityN(state.range(0));
}

BENCHMARK(PrintingProcedures)->Arg(2000)->Arg(16000)->Complexity()->Unit(benchmark::kMillisecond);
BENCHMARK(WholeGame)->Args({5000, 4})->Args({32767, 1})->MinTime(2)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace zem::bench

BENCHMARK_MAIN();
