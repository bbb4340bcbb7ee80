// A step of the author (one room changed, the step recorded) as a ratio to copying that one room deeply, and
// the memory that many steps take.
#include "Clock.h"
#include "DeepCopy.h"
#include "GeneratedGame.h"
#include "model/History.h"
#include "reader/LoadGame.h"

#include <benchmark/benchmark.h>
#include <cstddef>
#include <malloc.h>
#include <string>

namespace zem::bench {
namespace {

constexpr int Rooms = 5000;

GameModel LoadedGame() {
    GameModel game;
    ReadGame(game, GenerateGame(Rooms));
    return game;
}

/// Changes a room, another one each time.
void ChangeRoom(GameModel& game, int step) {
    game.Rooms.Edit(1 + step * 7 % Rooms).Alias = "changed in step " + std::to_string(step);
}

void Step(benchmark::State& state) {
    GameModel game = LoadedGame();
    History history;
    history.Begin(game, true);
    int step = 0;
    double stepping = 0;
    double copying = 0;
    for (auto _ : state) {
        const int room = 1 + ++step * 7 % Rooms;
        const auto start = Clock::now();
        {
            Room copy;
            CopyDeeply(game.Rooms[room], copy);
            benchmark::DoNotOptimize(copy);
        }
        const auto copied = Clock::now();
        ChangeRoom(game, step);
        history.Record("edit room", game);
        const auto stepped = Clock::now();
        copying += Seconds(copied - start);
        stepping += Seconds(stepped - copied);
        state.SetIterationTime(Seconds(stepped - copied));
    }
    state.counters["rooms"] = Rooms;
    state.counters["ratio_to_copy_of_room"] = stepping / copying;
}

/// Adds a room instead, which the next step does again.
void AddRoom(GameModel& game, int step) {
    game.Rooms.Append().Name = "added in step " + std::to_string(step);
}

void Memory(benchmark::State& state, void (*change)(GameModel&, int)) {
    const auto steps = static_cast<int>(state.range(0));
    std::size_t used = 0;
    for (auto _ : state) {
        GameModel game = LoadedGame();
        const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
        History history;
        history.Begin(game, true);
        for (int step = 1; step <= steps; ++step) {
            change(game, step);
            history.Record("step", game);
        }
        used = mallinfo2().uordblks + mallinfo2().hblkhd - before;
    }
    state.counters["megabytes"] = static_cast<double>(used) / 1e6;
    state.counters["bytes_per_step"] = static_cast<double>(used) / steps;
}

BENCHMARK(Step)->UseManualTime()->Iterations(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Memory, Change, ChangeRoom)->Arg(10000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Memory, Add, AddRoom)->Arg(10000)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace zem::bench

BENCHMARK_MAIN();
