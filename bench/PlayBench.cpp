// Playing, as processor time: turns in games of growing size, turns that an author wrote to go on for ever,
// going on in a changed game, transcripts, and what the way back takes. The yardstick, in the same run, is
// folding a line of 40 characters 1,000 times.
#include "Clock.h"
#include "GeneratedGame.h"
#include "play/Fold.h"
#include "play/Libraries.h"
#include "play/Session.h"
#include "play/Transcript.h"
#include "reader/LoadGame.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <string>
#include <vector>

namespace zem::bench {
namespace {

using play::Session;
using play::World;

GameModel Read(const std::string& text) {
    GameModel game;
    play::NameMessages(game);
    ReadGame(game, text);
    return game;
}

std::shared_ptr<const World> Compile(GameModel game) {
    play::GameFiles files;
    files.game = std::move(game);
    return World::Compile(std::move(files));
}

double SecondsOfYardstick() {
    const std::string line = "Give the Letter of Appointment to Br\xE9hat";
    const auto start = ThreadClock::now();
    for (int k = 0; k < 1000; ++k)
        benchmark::DoNotOptimize(play::Fold(line));
    return Seconds(ThreadClock::now() - start);
}

constexpr const char* Lines[] = {"north",
                                 "look",
                                 "s",
                                 "x ledger",
                                 "take ledger",
                                 "i",
                                 "listen to water",
                                 "xyzzy",
                                 "out",
                                 "take it",
                                 "go to the place numbered 7",
                                 "wait"};

void Turns(benchmark::State& state) {
    Session session(Compile(Read(GenerateGame(static_cast<int>(state.range(0))))), 1);
    session.Begin();
    std::vector<double> times;
    std::size_t k = 0;
    for (auto _ : state) {
        const auto start = ThreadClock::now();
        benchmark::DoNotOptimize(session.Type(Lines[k++ % std::size(Lines)]));
        times.push_back(Seconds(ThreadClock::now() - start));
        state.SetIterationTime(times.back());
    }
    std::sort(times.begin(), times.end());
    state.counters["median_us"] = times[times.size() / 2] * 1e6;
    state.counters["p999_us"] = times[times.size() * 999 / 1000] * 1e6;
    state.counters["worst_us"] = times.back() * 1e6;
    state.counters["median_per_yardstick"] = times[times.size() / 2] / SecondsOfYardstick();
    state.counters["undo_bytes_a_turn"] = static_cast<double>(session.BytesForUndo());
}
BENCHMARK(Turns)->Arg(200)->Arg(5000)->UseManualTime()->MinTime(1)->Unit(benchmark::kMicrosecond);

const char* const Hostile[] = {"while <f; nothing>",
                               "repeat <1000000000; nothing>",
                               "do <body>",
                               "do <twice>",
                               "repeat <100000; grow>",
                               "repeat <100000; talk>",
                               "type <go>",
                               "repeat <100000; compare>",
                               "repeat <100000; wait>",
                               "repeat <100000; gibberish>",
                               "repeat <100000; look round>"};

void HostileTurn(benchmark::State& state) {
    const std::string longText(2000, 'x');
    const std::string line = Hostile[state.range(0)];
    const std::string text =
        "define game <G>\n start <R>\n command <go> do <body>\n command <deep> do <twice>\nend define\n"
        "define room <R>\n look <Here.>\nend define\ndefine procedure <body>\n flag on <f>\n " +
        line +
        "\nend define\ndefine procedure <nothing>\nend define\n"
        "define procedure <twice>\n do <twice>\n do <twice>\nend define\n"
        "define procedure <grow>\n append <t; #t#" +
        longText +
        ">\nend define\n"
        "define procedure <talk>\n msg <" +
        longText +
        ">\nend define\n"
        "define procedure <compare>\n if contains <t; " +
        longText +
        "> then do <nothing>\nend define\n"
        "define procedure <wait>\n after <1; wait>\nend define\n"
        "define procedure <gibberish>\n type <frotz the gibberish with every word unknown>\nend define\n"
        "define procedure <look round>\n look\nend define\n";
    Session session(Compile(Read(text)), 1);
    session.Begin();
    double worst = 0;
    for (auto _ : state) {
        const auto start = ThreadClock::now();
        benchmark::DoNotOptimize(session.Type("go"));
        const double took = Seconds(ThreadClock::now() - start);
        worst = std::max(worst, took);
        state.SetIterationTime(took);
    }
    state.counters["worst_ms"] = worst * 1e3;
    state.SetLabel(line);
}
BENCHMARK(HostileTurn)
    ->DenseRange(0, std::size(Hostile) - 1)
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);

void Reload(benchmark::State& state) {
    GameModel game = Read(GenerateGame(static_cast<int>(state.range(0))));
    Session session(Compile(game), 1);
    session.Begin();
    session.Type("north");
    double worst = 0;
    for (auto _ : state) {
        game.Rooms.Edit(1).Look += "!";
        const auto start = ThreadClock::now();
        play::GameFiles files;
        files.game = game;
        benchmark::DoNotOptimize(session.Reload(World::Compile(std::move(files), session.GetWorld())));
        const double took = Seconds(ThreadClock::now() - start);
        worst = std::max(worst, took);
        state.SetIterationTime(took);
    }
    state.counters["worst_ms"] = worst * 1e3;
}
BENCHMARK(Reload)->Arg(200)->Arg(5000)->UseManualTime()->MinTime(1)->Unit(benchmark::kMillisecond);

void FirstCompile(benchmark::State& state) {
    const GameModel game = Read(GenerateGame(static_cast<int>(state.range(0))));
    for (auto _ : state)
        benchmark::DoNotOptimize(Compile(game));
}
BENCHMARK(FirstCompile)->Arg(200)->Arg(5000)->Unit(benchmark::kMillisecond);

void Transcripts(benchmark::State& state) {
    const std::shared_ptr<const World> world = Compile(Read(GenerateGame(200)));
    std::size_t lines = 0;
    double seconds = 0;
    for (auto _ : state) {
        const auto start = ThreadClock::now();
        Session session(world, 1);
        play::TranscriptPlayer player(session);
        std::string text = player.Begin();
        for (std::size_t k = 0; k < 1000; ++k)
            text += *player.Play(*play::ReadInputLine(std::string("> ") + Lines[k % std::size(Lines)], k));
        benchmark::DoNotOptimize(text);
        seconds += Seconds(ThreadClock::now() - start);
        lines += 1000;
        state.SetIterationTime(Seconds(ThreadClock::now() - start));
    }
    state.counters["lines_a_second"] = static_cast<double>(lines) / seconds;
}
BENCHMARK(Transcripts)->UseManualTime()->MinTime(1)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace zem::bench

BENCHMARK_MAIN();
