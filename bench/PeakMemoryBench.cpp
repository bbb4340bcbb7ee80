// The peak of memory while a generated game is loaded, as a ratio to its file; once more with the lines of
// the file from which it was read.
#include "GameFile.h"
#include "base/Host.h"
#include "base/TextFile.h"
#include "reader/LoadGame.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdlib>
#include <malloc.h>
#include <new>
#include <string>

namespace {

std::size_t heapNow = 0;
std::size_t heapPeak = 0;

/// What the allocator sets aside for a piece of memory, its own header included.
std::size_t Cost(void* memory) {
    return malloc_usable_size(memory) + sizeof(std::size_t);
}

} // namespace

// Every allocation of the program goes through here, so that the peak is counted and not sampled.
void* operator new(std::size_t size) {
    void* memory = std::malloc(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    heapNow += Cost(memory);
    heapPeak = std::max(heapPeak, heapNow);
    return memory;
}

void operator delete(void* memory) noexcept {
    if (memory != nullptr)
        heapNow -= Cost(memory);
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

namespace zem::bench {
namespace {

void Load(GameModel& game, const std::string& path) {
    SilentHost host;
    LoadGame(game, path, host);
}

void LoadWithLines(GameModel& game, const std::string& path) {
    SourceLines lines;
    ReadGame(game, ReadFile(path), &lines);
}

void PeakMemory(benchmark::State& state, void (*load)(GameModel&, const std::string&)) {
    const GameFile file(static_cast<int>(state.range(0)));
    std::size_t peak = 0;
    std::size_t held = 0;
    for (auto _ : state) {
        GameModel game;
        const std::size_t before = heapNow;
        heapPeak = heapNow;
        load(game, file.Input());
        peak = heapPeak - before;
        held = heapNow - before;
    }
    state.counters["file_bytes"] = file.Size();
    state.counters["peak_to_file"] = static_cast<double>(peak) / file.Size();
    state.counters["loaded_to_file"] = static_cast<double>(held) / file.Size();
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(100)->Arg(1000)->Arg(10000)->Arg(32767)->Iterations(1)->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(PeakMemory, Load, Load)->Apply(Sizes);
BENCHMARK_CAPTURE(PeakMemory, LoadWithLines, LoadWithLines)->Apply(Sizes);

} // namespace
} // namespace zem::bench

BENCHMARK_MAIN();
