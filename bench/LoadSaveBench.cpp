// Load and save of a generated game, as a ratio to copying the same file line by line through the C++
// streams, both measured in turn in the same run; and the peak of memory while loading, as a ratio to the
// file.
#include "GeneratedGame.h"
#include "model/Host.h"
#include "reader/LoadGame.h"
#include "writer/SaveGame.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <new>
#include <string>
#include <vector>

namespace {

std::size_t heapNow = 0;
std::size_t heapPeak = 0;

} // namespace

// Every allocation of the program goes through here, so that the peak is counted and not sampled.
void* operator new(std::size_t size) {
    void* memory = std::malloc(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    heapNow += malloc_usable_size(memory) + sizeof(std::size_t);
    heapPeak = std::max(heapPeak, heapNow);
    return memory;
}

void operator delete(void* memory) noexcept {
    if (memory != nullptr)
        heapNow -= malloc_usable_size(memory) + sizeof(std::size_t);
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

class SilentHost : public zem::Host {
public:
    zem::MessageResult ShowMessage(const std::string&, const std::string&, zem::MessageButtons) override {
        return zem::MessageResult::Ok;
    }
    void ShowNotice(const std::string&, const std::string&) override {}
    void ShowStage(const std::string&) override {}
    void ShowProgress(int) override {}
    void CloseProgress() override {}
};

class GameFile {
public:
    explicit GameFile(int rooms) : folder_(fs::temp_directory_path() / "zem-bench") {
        fs::create_directories(folder_);
        std::ofstream(Input(), std::ios::binary) << zem::bench::GenerateGame(rooms);
    }
    ~GameFile() { fs::remove_all(folder_); }
    GameFile(const GameFile&) = delete;
    GameFile& operator=(const GameFile&) = delete;

    std::string Input() const { return (folder_ / "input.kel").string(); }
    std::string Output() const { return (folder_ / "output.kel").string(); }
    double Size() const { return static_cast<double>(fs::file_size(Input())); }

private:
    fs::path folder_;
};

void CopyLines(const GameFile& file) {
    std::ifstream in(file.Input(), std::ios::binary);
    std::ofstream out(file.Output(), std::ios::binary);
    std::string line;
    while (std::getline(in, line))
        out << line << '\n';
}

double Seconds(Clock::duration duration) {
    return std::chrono::duration<double>(duration).count();
}

void LoadAndSave(benchmark::State& state) {
    const GameFile file(static_cast<int>(state.range(0)));
    SilentHost host;
    double copying = 0;
    double loadingAndSaving = 0;
    for (auto _ : state) {
        const auto start = Clock::now();
        CopyLines(file);
        const auto copied = Clock::now();
        {
            zem::GameModel game;
            zem::LoadGame(game, file.Input(), host);
            zem::SaveGame(game, file.Output(), host);
        }
        const auto saved = Clock::now();
        copying += Seconds(copied - start);
        loadingAndSaving += Seconds(saved - copied);
        state.SetIterationTime(Seconds(saved - copied));
    }
    state.counters["file_bytes"] = file.Size();
    state.counters["ratio_to_copy"] = loadingAndSaving / copying;
}

void PeakMemory(benchmark::State& state) {
    const GameFile file(static_cast<int>(state.range(0)));
    SilentHost host;
    std::size_t peak = 0;
    for (auto _ : state) {
        zem::GameModel game;
        const std::size_t before = heapNow;
        heapPeak = heapNow;
        zem::LoadGame(game, file.Input(), host);
        peak = heapPeak - before;
    }
    state.counters["ratio_to_file"] = static_cast<double>(peak) / file.Size();
}

const std::vector<std::int64_t> RoomCounts = {100, 1000, 10000, 32767};

BENCHMARK(LoadAndSave)->ArgsProduct({RoomCounts})->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(PeakMemory)->ArgsProduct({RoomCounts})->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
