// How true to the compass maps are, and what they cost: a row for each size of made games and share of untrue
// exits, as means over seeds, with the drawing at the true places beside it; and a row for each sample.
#include "MadeMap.h"
#include "MapFigures.h"
#include "map/Layout.h"
#include "reader/LoadGame.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace zem::bench {
namespace {

double ProcessorMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// Sums over the seeds of a row.
struct Sums {
    int runs = 0;
    double exact = 0, within = 0, over = 0, allOver = 0, crossings = 0, allCrossings = 0, length = 0,
           cells = 0;
    double overlaps = 0, docked = 0, dockedNear = 0, missed = 0;
    int maxLength = 0;

    void Add(const MapFigures& f) {
        ++runs;
        exact += f.exact;
        within += f.within;
        over += f.straightOver;
        allOver += f.allOver;
        crossings += f.straightCrossings;
        allCrossings += f.allCrossings;
        length += f.meanLength;
        cells += f.cellsPerRoom;
        overlaps += f.overlaps;
        docked += f.docked;
        dockedNear += f.dockedNear;
        missed += f.missed;
        maxLength = std::max(maxLength, f.maxLength);
    }
    double Mean(double sum) const { return sum / std::max(1, runs); }
};

struct Laid {
    std::vector<map::Cell> cells;
    double milliseconds = 0;
    double firstMilliseconds = 0;
};

Laid LayOutTimed(const map::MapGraph& graph) {
    Laid laid;
    const double start = ProcessorMilliseconds();
    map::LayoutControl control;
    control.firstPicture = [&](const std::vector<map::Cell>&) {
        laid.firstMilliseconds = ProcessorMilliseconds() - start;
    };
    laid.cells = map::LayOut(graph, control);
    laid.milliseconds = ProcessorMilliseconds() - start;
    return laid;
}

map::MapGraph GraphOf(const std::string& file) {
    GameModel game;
    ReadGame(game, file);
    return map::ReadMapGraph(game);
}

void PrintRow(const char* name, double share, const Sums& truth, const Sums& got, double first, double all) {
    std::printf("| %s | %g | %.1f, **%.1f** | %.1f, **%.1f** | %.1f / %.1f | %.1f / %.1f | %.1f, %d | %.1f | "
                "%.0f, %.0f | %.0f%% of %.0f | %.0f |\n",
                name, share, truth.Mean(truth.exact), got.Mean(got.exact), truth.Mean(truth.within),
                got.Mean(got.within), got.Mean(got.over), got.Mean(got.allOver), got.Mean(got.crossings),
                got.Mean(got.allCrossings), got.Mean(got.length), got.maxLength, got.Mean(got.cells),
                got.Mean(first), got.Mean(all), got.docked > 0 ? 100 * got.dockedNear / got.docked : 100.0,
                got.Mean(got.docked), got.overlaps);
    std::fflush(stdout);
}

void RunMade(int rooms, double untrue, double places, int firstSeed, int seeds) {
    Sums truth;
    Sums got;
    double first = 0;
    double all = 0;
    for (int seed = firstSeed; seed < firstSeed + seeds; ++seed) {
        const MadeMap made = MakeMap({rooms, untrue, places, static_cast<std::uint32_t>(seed)});
        const map::MapGraph graph = GraphOf(made.file);
        std::vector<map::Cell> cells;
        std::vector<int> blocks;
        for (const MadeMap::Place& place : made.truth) {
            cells.push_back(place.cell);
            blocks.push_back(place.block);
        }
        truth.Add(Measure(graph, cells, blocks));
        const Laid laid = LayOutTimed(graph);
        first += laid.firstMilliseconds;
        all += laid.milliseconds;
        got.Add(Measure(graph, laid.cells));
    }
    PrintRow(std::to_string(rooms).c_str(), untrue, truth, got, first, all);
}

void RunSample(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    const map::MapGraph graph = GraphOf({std::istreambuf_iterator<char>(in), {}});
    const Laid laid = LayOutTimed(graph);
    Sums got;
    got.Add(Measure(graph, laid.cells));
    PrintRow(file.substr(file.find_last_of('/') + 1).c_str(), 0, Sums{}, got, laid.firstMilliseconds,
             laid.milliseconds);
}

void PrintHead() {
    std::puts(
        "| rooms | untrue % | exact: truth, **got** | within 22.5: truth, **got** | over rooms straight / "
        "all | crossings straight / all | mean, max length | cells a room | CPU ms first, all | docked "
        "within 2 | overlaps |\n|---|---|---|---|---|---|---|---|---|---|---|");
}

} // namespace
} // namespace zem::bench

/// usage: MapBench [SEEDS [FIRST [ROOMS UNTRUE [PLACES]]]] or MapBench FILE.kel...
int main(int argc, char** argv) {
    using namespace zem::bench;
    PrintHead();
    if (argc > 1 && std::atoi(argv[1]) == 0) {
        for (int k = 1; k < argc; ++k)
            RunSample(argv[k]);
        return 0;
    }
    const int seeds = argc > 1 ? std::atoi(argv[1]) : 10;
    const int first = argc > 2 ? std::atoi(argv[2]) : 1;
    if (argc > 4) {
        RunMade(std::atoi(argv[3]), std::atof(argv[4]), argc > 5 ? std::atof(argv[5]) : 0, first, seeds);
        return 0;
    }
    for (const int rooms : {30, 200, 1000, 5000})
        for (const double untrue : {0.0, 2.0, 5.0, 10.0})
            RunMade(rooms, untrue, 0, first, seeds);
    for (const int rooms : {200, 1000})
        for (const double places : {10.0, 25.0})
            RunMade(rooms, 5, places, first, seeds);
    for (const char* sample : {"cottage", "gatehouse", "lighthouse", "archipelago"})
        RunSample(ZEM_SAMPLES "/" + std::string(sample) + ".kel");
    return 0;
}
