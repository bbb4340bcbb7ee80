// Load and save of a generated game, as a ratio to copying the same file line by line through the C++
// streams, measured in turn in the same run.
//
// The save is the whole one: it keeps the version before, makes a new file, waits for the disk and renames.
// What that takes has little to do with the game, so the copy is put in its place with the same care; the
// ratio tells what reading and writing the format costs. The other ratio, to a bare copy that overwrites its
// file, tells what an author's save costs in all. Processor time is what counts: the waiting would measure
// the disk.
#include "Clock.h"
#include "GameFile.h"
#include "base/Host.h"
#include "files/ReplaceFile.h"
#include "reader/LoadGame.h"
#include "writer/SaveGame.h"

#include <benchmark/benchmark.h>
#include <fstream>
#include <string>

namespace zem::bench {
namespace {

void CopyLines(const std::string& from, const std::string& to) {
    std::ifstream in(from, std::ios::binary);
    std::ofstream out(to, std::ios::binary);
    std::string line;
    while (std::getline(in, line))
        out << line << '\n';
}

void LoadAndSave(benchmark::State& state) {
    const GameFile file(static_cast<int>(state.range(0)));
    SilentHost host;
    double barelyCopying = 0;
    double copying = 0;
    double loadingAndSaving = 0;
    for (auto _ : state) {
        GameModel game;
        const auto start = ProcessClock::now();
        CopyLines(file.Input(), file.Output() + ".copy");
        const auto barelyCopied = ProcessClock::now();
        ReplaceFile(file.Output(), [&](const std::string& path) { CopyLines(file.Input(), path); });
        const auto copied = ProcessClock::now();
        LoadGame(game, file.Input(), host);
        SaveGame(game, file.Output(), host);
        const auto saved = ProcessClock::now();
        barelyCopying += Seconds(barelyCopied - start);
        copying += Seconds(copied - barelyCopied);
        loadingAndSaving += Seconds(saved - copied);
        state.SetIterationTime(Seconds(saved - copied));
    }
    const double bytes = file.Size() * static_cast<double>(state.iterations());
    state.counters["file_bytes"] = file.Size();
    state.counters["ns_per_byte"] = loadingAndSaving * 1e9 / bytes;
    state.counters["copy_ns_per_byte"] = copying * 1e9 / bytes;
    state.counters["bare_copy_ns_per_byte"] = barelyCopying * 1e9 / bytes;
    state.counters["ratio_to_copy"] = loadingAndSaving / copying;
    state.counters["ratio_to_bare_copy"] = loadingAndSaving / barelyCopying;
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
