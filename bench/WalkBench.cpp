// What a walker reaches of a game as processor time goes by, from nothing and with one seed, and how many
// turns it makes a second in a game of 5,000 rooms. The yardstick, in the same run, is playing one line after
// the other in that game with nothing chosen and nothing kept.
//
// WalkBench [SECONDS [SAMPLE...]]: the most time that each sample takes, 60 seconds if nothing is given.
#include "Clock.h"
#include "GeneratedGame.h"
#include "base/TextFile.h"
#include "play/Libraries.h"
#include "play/Session.h"
#include "reader/LoadGame.h"
#include "walk/Walker.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace zem::bench {
namespace {

using play::CoveragePart;
using walk::Walker;

std::shared_ptr<const play::World> Compile(const std::string& text) {
    play::GameFiles files;
    play::NameMessages(files.game);
    ReadGame(files.game, text);
    return play::World::Compile(std::move(files));
}

void TellRow(double seconds, const Walker& walker) {
    const auto share = [&](CoveragePart::Kind kind) {
        const play::CoverageCount count = walker.Reached().Count(kind);
        return std::to_string(count.reached) + "/" + std::to_string(count.all);
    };
    const auto won = std::find_if(walker.Findings().begin(), walker.Findings().end(),
                                  [](const auto& finding) { return finding.kind == walk::WalkFinding::Win; });
    std::printf(
        "%8.2f s %9llu turns  rooms %8s  commands %9s  answers %9s  endings %5s  states %7zu  win %s\n",
        seconds, static_cast<unsigned long long>(walker.Figures().turns), share(CoveragePart::Room).c_str(),
        share(CoveragePart::Command).c_str(), share(CoveragePart::Branch).c_str(),
        share(CoveragePart::Ending).c_str(), walker.Figures().states,
        won == walker.Findings().end() ? "none" : std::to_string(won->way.size()).c_str());
    std::fflush(stdout);
}

void WalkThrough(const std::string& name, double most) {
    const auto world = Compile(ReadFile(ZEM_SAMPLES "/" + name + ".kel"));
    std::printf("%s\n", name.c_str());
    const Walker* running = nullptr;
    const auto begin = ThreadClock::now();
    double next = most / 1024;
    const auto goesOn = [&] {
        const double seconds = Seconds(ThreadClock::now() - begin);
        if (seconds >= next) {
            TellRow(seconds, *running);
            next *= 2;
        }
        return seconds < most;
    };
    Walker walker(world, {UINT64_MAX, 1, goesOn});
    running = &walker;
    walker.Run();
    TellRow(Seconds(ThreadClock::now() - begin), walker);
}

void WalkLargeGame() {
    constexpr int Rooms = 5000;
    constexpr std::uint64_t Turns = 1'000'000;
    const auto world = Compile(GenerateGame(Rooms));
    const char* const lines[] = {"north", "look at ledger", "take ledger", "listen to something"};
    play::Session session(world, 1);
    session.Begin();
    auto begin = ThreadClock::now();
    constexpr int Played = 100'000;
    for (int k = 0; k < Played; ++k)
        session.Type(lines[static_cast<std::size_t>(k) % std::size(lines)]);
    const double yardstick = Seconds(ThreadClock::now() - begin) / Played;

    begin = ThreadClock::now();
    Walker walker(world, {Turns, 1, {}});
    walker.Run();
    const double seconds = Seconds(ThreadClock::now() - begin);
    std::printf("%d rooms\n", Rooms);
    TellRow(seconds, walker);
    std::printf("%.0f turns a second, a turn is %.2f of one that is only played\n", Turns / seconds,
                seconds / static_cast<double>(Turns) / yardstick);
}

} // namespace
} // namespace zem::bench

int main(int count, char** arguments) {
    const double seconds = count > 1 ? std::atof(arguments[1]) : 60;
    std::vector<std::string> names(arguments + std::min(count, 2), arguments + count);
    if (names.empty())
        names = {"gatehouse", "cottage", "lighthouse", "archipelago", "5000"};
    for (const std::string& name : names)
        if (name == "5000")
            zem::bench::WalkLargeGame();
        else
            zem::bench::WalkThrough(name, seconds);
}
