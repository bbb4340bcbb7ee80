// What it takes to tell the unknown words of the largest game that an author may have, 3 million words, in
// processor time: the dictionary, the words that the game knows by itself, all that is printed. And what may
// have been meant by a word. With the British dictionary of the system, or that of the tests where it is not
// installed.
#include "Clock.h"
#include "LargeGame.h"
#include "kel/CommandCatalogue.h"
#include "reader/LoadGame.h"
#include "spelling/DictionaryList.h"
#include "spelling/UnknownWords.h"

#include <algorithm>
#include <benchmark/benchmark.h>

namespace zem::bench {
namespace {

std::string DictionaryPath() {
    const auto installed = spelling::ListDictionaries({"/usr/share/hunspell", ZEM_TEST_DATA "/spelling"});
    return spelling::FindDictionary(installed, "en_GB")->affPath;
}

void WholeGameSpelling(benchmark::State& state) {
    CommandCatalogue shipped;
    LoadCommandCatalogue(shipped, ZEM_PROGRAM_FOLDER "/zem.dat");
    const CommandLookup commands(shipped);
    GameModel game;
    ReadGame(game, LargeGame().Make());
    double loading = 0, names = 0, checking = 0;
    spelling::CheckedTexts checked;
    for (auto _ : state) {
        const auto start = ProcessClock::now();
        const auto dictionary = std::make_shared<const spelling::Dictionary>(DictionaryPath());
        const auto loaded = ProcessClock::now();
        const auto words = std::make_shared<const spelling::GameWords>(game);
        const auto named = ProcessClock::now();
        checked = spelling::CheckTexts(game, commands, {dictionary, words});
        loading += Seconds(loaded - start);
        names += Seconds(named - loaded);
        checking += Seconds(ProcessClock::now() - named);
    }
    const auto count = static_cast<double>(state.iterations());
    state.counters["ms_dictionary"] = loading * 1000 / count;
    state.counters["ms_names"] = names * 1000 / count;
    state.counters["ms_check"] = checking * 1000 / count;
    state.counters["words"] = static_cast<double>(checked.words);
    state.counters["unknown"] = static_cast<double>(checked.unknown.size());
}

void Suggestions(benchmark::State& state) {
    const spelling::Dictionary dictionary(DictionaryPath());
    double worst = 0, sum = 0, count = 0;
    for (auto _ : state)
        for (const char* word :
             {"lanturn", "Kervella", "harbuor", "definately", "gritstone", "teh", "unforgetable"}) {
            const auto start = ProcessClock::now();
            benchmark::DoNotOptimize(dictionary.Suggest(word));
            const double seconds = Seconds(ProcessClock::now() - start);
            worst = std::max(worst, seconds);
            sum += seconds;
            ++count;
        }
    state.counters["ms"] = sum * 1000 / count;
    state.counters["ms_worst"] = worst * 1000;
}

BENCHMARK(WholeGameSpelling)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(Suggestions)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace
} // namespace zem::bench

BENCHMARK_MAIN();
