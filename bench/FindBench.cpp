// Finding, where used, renaming and duplicating in a game larger than any author's, each time after one room
// was changed, as after a key: in processor time, and as a ratio to copying the bytes of its file, measured
// in the same run.
#include "LargeGame.h"
#include "game/Find.h"
#include "game/Rename.h"
#include "game/Replace.h"
#include "game/WhereUsed.h"
#include "kel/CommandCatalogue.h"
#include "pieces/CopyPiece.h"
#include "pieces/PastePiece.h"
#include "reader/LoadGame.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <ctime>
#include <string>
#include <vector>

namespace zem::bench {
namespace {

double CpuMilliseconds() {
    return static_cast<double>(std::clock()) * 1000 / CLOCKS_PER_SEC;
}

struct Largest {
    Largest() {
        LoadCommandCatalogue(catalogue, ZEM_PROGRAM_FOLDER "/zem.dat");
        file = LargeGame().Make();
        ReadGame(game, file);
    }

    CommandCatalogue catalogue;
    std::string file;
    GameModel game;
};

Largest& Shared() {
    static Largest largest;
    return largest;
}

/// The median of some runs; each is measured beside a copy of the file.
template <class Work>
void Measure(benchmark::State& state, Work work) {
    std::vector<double> times;
    double copying = 0;
    for (auto _ : state) {
        double start = CpuMilliseconds();
        std::string copy = Shared().file;
        benchmark::DoNotOptimize(copy.data());
        copying += CpuMilliseconds() - start;
        times.push_back(work());
    }
    std::sort(times.begin(), times.end());
    double sum = 0;
    for (const double time : times)
        sum += time;
    state.counters["median_ms"] = times[times.size() / 2];
    state.counters["worst_ms"] = times.back();
    state.counters["ratio_to_copy"] = sum / copying;
}

void First(benchmark::State& state) {
    const CommandLookup commands(Shared().catalogue);
    Measure(state, [&] {
        const double start = CpuMilliseconds();
        const GameIndex index(commands, Shared().game);
        return CpuMilliseconds() - start;
    });
    state.counters["file_MB"] = static_cast<double>(Shared().file.size()) / 1e6;
    state.counters["words"] =
        static_cast<double>(std::count(Shared().file.begin(), Shared().file.end(), ' '));
    std::size_t references = 0;
    ForEachReference(Shared().game, commands, [&](const Reference&) { ++references; });
    state.counters["references"] = static_cast<double>(references);
}

/// Goes on to a game in which another room was changed, and then asks.
template <class Ask>
void AfterChange(benchmark::State& state, Ask ask) {
    const CommandLookup commands(Shared().catalogue);
    GameModel game = Shared().game;
    GameIndex index(commands, game);
    int room = 0;
    Measure(state, [&] {
        room = room % LargeGame::Rooms + 1;
        game.Rooms.Edit(room).Look += '!';
        const double start = CpuMilliseconds();
        index.GoOnTo(game);
        state.counters["found"] = static_cast<double>(ask(index));
        return CpuMilliseconds() - start;
    });
}

void FindQueryOf(benchmark::State& state, const FindQuery& query) {
    AfterChange(state, [&](const GameIndex& index) { return Find(index, query).count; });
}

void WhereUsedOf(benchmark::State& state, NameKind kind, const std::string& name) {
    AfterChange(state, [&](const GameIndex& index) { return WhereUsed(index, kind, name).size(); });
}

void RenameOf(benchmark::State& state, NameKind kind, const std::string& name) {
    AfterChange(state, [&](const GameIndex& index) {
        return PlanRename(index, {.kind = kind, .oldName = name, .newName = "new name"}).changes.size();
    });
}

void ReplaceOf(benchmark::State& state, const FindQuery& query, const std::string& words) {
    AfterChange(state,
                [&](const GameIndex& index) { return PlanReplace(index, query, words).replacements.size(); });
}

void CarryOutReplace(benchmark::State& state) {
    const CommandLookup commands(Shared().catalogue);
    const GameIndex index(commands, Shared().game);
    const ReplacePlan plan = PlanReplace(index, {.words = "lamp"}, "lantern");
    Measure(state, [&] {
        GameModel game = Shared().game;
        const double start = CpuMilliseconds();
        state.counters["found"] = CarryOut(index, plan, game).made;
        return CpuMilliseconds() - start;
    });
}

void CarryOutRename(benchmark::State& state) {
    const CommandLookup commands(Shared().catalogue);
    const GameIndex index(commands, Shared().game);
    const RenamePlan plan =
        PlanRename(index, {.kind = NameKind::Variable, .oldName = "words", .newName = "new name"});
    Measure(state, [&] {
        GameModel game = Shared().game;
        const double start = CpuMilliseconds();
        state.counters["found"] = CarryOut(plan, game);
        return CpuMilliseconds() - start;
    });
}

/// One of the rooms, with its objects and what their scripts call.
void DuplicateRoom(benchmark::State& state) {
    const CommandLookup commands(Shared().catalogue);
    const GameModel& game = Shared().game;
    int room = 0;
    Measure(state, [&] {
        room = room % LargeGame::Rooms + 1;
        const double start = CpuMilliseconds();
        const PieceText copied = CopyPiece(game, {Place::Of({{FieldId::GameRooms, room}})});
        const Pasted pasted = PastePiece(game, copied.text, {}, commands);
        state.counters["found"] = static_cast<double>(pasted.renamed.size());
        return CpuMilliseconds() - start;
    });
}

BENCHMARK(First)->Iterations(5);
BENCHMARK_CAPTURE(FindQueryOf, no_such_words, FindQuery{.words = "no such words"})->Iterations(40);
BENCHMARK_CAPTURE(FindQueryOf, lamp, FindQuery{.words = "lamp"})->Iterations(40);
BENCHMARK_CAPTURE(FindQueryOf, qu, FindQuery{.words = "qu"})->Iterations(40);
BENCHMARK_CAPTURE(FindQueryOf, e, FindQuery{.words = "e"})->Iterations(40);
BENCHMARK_CAPTURE(FindQueryOf, room_4999, FindQuery{.words = "room 4999", .wholeWords = true})
    ->Iterations(40);
BENCHMARK_CAPTURE(FindQueryOf, e_in_scripts, FindQuery{.words = "e", .kinds = {HitKind::Script}})
    ->Iterations(20);
BENCHMARK_CAPTURE(FindQueryOf, expression_lamps, FindQuery{.words = "lamps?\\b", .isRegularExpression = true})
    ->Iterations(20);
BENCHMARK_CAPTURE(FindQueryOf, expression_words,
                  FindQuery{.words = "\\w+ning\\b", .isRegularExpression = true})
    ->Iterations(10);
BENCHMARK_CAPTURE(WhereUsedOf, room, NameKind::Room, "room 4999")->Iterations(40);
BENCHMARK_CAPTURE(WhereUsedOf, variable, NameKind::Variable, "words")->Iterations(40);
BENCHMARK_CAPTURE(WhereUsedOf, flag, NameKind::Flag, "flag 7")->Iterations(40);
BENCHMARK_CAPTURE(RenameOf, room, NameKind::Room, "room 4999")->Iterations(40);
BENCHMARK_CAPTURE(RenameOf, object, NameKind::Object, "object 1")->Iterations(40);
BENCHMARK_CAPTURE(RenameOf, variable, NameKind::Variable, "words")->Iterations(40);
BENCHMARK_CAPTURE(ReplaceOf, lamp, FindQuery{.words = "lamp"}, "lantern")->Iterations(10);
BENCHMARK_CAPTURE(ReplaceOf, e, FindQuery{.words = "e"}, "a")->Iterations(10);
BENCHMARK(CarryOutReplace)->Iterations(10);
BENCHMARK(CarryOutRename)->Iterations(20);
BENCHMARK(DuplicateRoom)->Iterations(40);

} // namespace
} // namespace zem::bench

BENCHMARK_MAIN();
