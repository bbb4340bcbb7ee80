// Load and save of a generated game, as a ratio to copying the same file line by line through the C++
// streams, both measured in turn in the same run.
//
// The save is the whole one, which copies the version before and waits for the disk. Processor time is what
// counts: the waiting would measure the disk.
#include "Clock.h"
#include "GameFile.h"
#include "base/Host.h"
#include "reader/LoadGame.h"
#include "writer/SaveGame.h"

#include <benchmark/benchmark.h>
#include <fstream>
#include <string>

namespace zem::bench {
namespace {

void CopyLines(const GameFile& file) {
    std::ifstream in(file.Input(), std::ios::binary);
    std::ofstream out(file.Output(), std::ios::binary);
    std::string line;
    while (std::getline(in, line))
        out << line << '\n';
}

void LoadAndSave(benchmark::State& state) {
    const GameFile file(static_cast<int>(state.range(0)));
    SilentHost host;
    double copying = 0;
    double loadingAndSaving = 0;
    for (auto _ : state) {
        GameModel game;
        const auto start = ProcessClock::now();
        CopyLines(file);
        const auto copied = ProcessClock::now();
        LoadGame(game, file.Input(), host);
        SaveGame(game, file.Output(), host);
        const auto saved = ProcessClock::now();
        copying += Seconds(copied - start);
        loadingAndSaving += Seconds(saved - copied);
        state.SetIterationTime(Seconds(saved - copied));
    }
    const double bytes = file.Size() * static_cast<double>(state.iterations());
    state.counters["file_bytes"] = file.Size();
    state.counters["ns_per_byte"] = loadingAndSaving * 1e9 / bytes;
    state.counters["copy_ns_per_byte"] = copying * 1e9 / bytes;
    state.counters["ratio_to_copy"] = loadingAndSaving / copying;
}

BENCHMARK(LoadAndSave)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(32767)
    ->UseManualTime()
    ->MinTime(2)
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace zem::bench

BENCHMARK_MAIN();
