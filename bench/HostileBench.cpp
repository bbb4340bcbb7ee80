// Reading what was made to be slow, as a ratio to reading an ordinary game of the same size, both measured in
// turn in the same run. A file that is refused counts up to its refusal.
//
// What counts is the time per byte of what a save makes of the file: the limit is 3 times that of the
// ordinary game, and the time must grow no faster than the file. A file beyond that is marked, and the exit
// status is 1.
#include "Clock.h"
#include "GeneratedGame.h"
#include "readback/ReadBack.h"
#include "reader/LoadGame.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <iterator>
#include <malloc.h>
#include <string>
#include <utility>

namespace zem::bench {

bool anyTooSlow = false;

namespace {

std::string Repeat(const std::string& piece, int times) {
    std::string text;
    text.reserve(piece.size() * static_cast<std::size_t>(times));
    for (; times > 0; --times)
        text += piece;
    return text;
}

std::string Procedure(const std::string& lines) {
    return "define procedure <p>\r\n" + lines + "end define\r\n";
}

struct Hostile {
    const char* name;
    int size; // Pieces in the file.
    std::string (*make)(int size);
};

std::string ManyProcedures(int size) {
    std::string file;
    for (int k = 1; k <= size; ++k)
        file += "define procedure <" + std::to_string(k) + ">\r\ndo <x>\r\nend define\r\n";
    return file;
}

const Hostile Inputs[] = {
    {"only \"else\" lines", 100000, [](int size) { return Procedure(Repeat("else msg <x>\r\n", size)); }},
    {"one \"if\", many \"else\"", 100000,
     [](int size) { return Procedure("if a then b\r\n" + Repeat("else msg <x>\r\n", size)); }},
    {"\"if\" and \"else\" in turn", 50000,
     [](int size) { return Procedure(Repeat("if a then b\r\nelse c\r\n", size)); }},
    {"only \"__\" lines", 300000, [](int size) { return Procedure(Repeat("x__\r\n", size) + "y\r\n"); }},
    {"nested braces", 30000,
     [](int size) { return Procedure(Repeat("{ do <x>\r\n", size) + Repeat("}", size) + "\r\n"); }},
    {"braces one after the other", 32000, [](int size) { return Procedure(Repeat("{ do <x> }\r\n", size)); }},
    {"braces on one line", 32000, [](int size) { return Procedure(Repeat("{ a } ", size) + "\r\n"); }},
    {"unclosed braces", 150000, [](int size) { return Procedure(Repeat("{ do <x>\r\n", size)); }},
    {"lines of one character", 500000, [](int size) { return Procedure(Repeat("x\r\n", size)); }},
    {"empty lines", 1500000,
     [](int size) { return Repeat("\n", size) + "define game <x>\r\nend define\r\n"; }},
    {"rooms of one name with things", 32000,
     [](int size) {
         return Repeat("define room <a>\r\ndefine object <o>\r\nend define\r\nend define\r\n", size);
     }},
    {"30,000 procedures", 30000, ManyProcedures},
    {"one long line", 3000000, [](int size) { return Procedure("msg <" + Repeat("x", size) + ">\r\n"); }},
    {"one long line of tabs", 1000000,
     [](int size) { return Procedure("msg <" + Repeat("\t", size) + ">\r\n"); }},
    {"many includes", 32000,
     [](int size) { return Repeat("!include <x>\r\n", size) + "define game <x>\r\nend define\r\n"; }},
    {"nested blocks", 50000,
     [](int size) { return Repeat("define timer <x>\r\n", size) + Repeat("end define\r\n", size); }},
    {"unclosed blocks", 100000, [](int size) { return Repeat("define timer <x>\r\n", size); }},
    {"blocks of other kinds", 50000,
     [](int size) { return Repeat("define timer <x>\r\nend define\r\n", size); }},
    {"many synonyms", 32000,
     [](int size) { return "define synonyms\r\n" + Repeat("a = b\r\n", size) + "end define\r\n"; }},
    {"many items", 32000,
     [](int size) {
         return "define game <x>\r\nitems <" + Repeat("a,", size) + ">\r\nstartitems <" + Repeat("b,", size) +
                ">\r\nend define\r\n";
     }},
    {"many texts", 32000, [](int size) { return Repeat("define text <x>\r\nend define\r\n", size); }},
    {"many tags", 300000,
     [](int size) { return "define game <x>\r\n" + Repeat("x\r\n", size) + "end define\r\n"; }},
};

/// The game that is read from the bytes; an empty one when they are refused.
GameModel GameOf(const std::string& bytes) {
    GameModel game;
    try {
        ReadGame(game, bytes);
    } catch (const KelError&) {
        NewGame(game);
    }
    return game;
}

double SecondsToRead(const std::string& bytes) {
    GameModel game;
    std::string copy = bytes;
    const auto start = ThreadClock::now();
    try {
        ReadGame(game, std::move(copy));
    } catch (const KelError&) {
        // Some inputs are refused on purpose; the time until then counts.
    }
    return Seconds(ThreadClock::now() - start);
}

/// An ordinary game of about this size.
std::string OrdinaryGame(std::size_t size) {
    static const std::size_t roomSize = GenerateGame(100).size() / 100;
    return GenerateGame(static_cast<int>(std::max<std::size_t>(1, size / roomSize)));
}

/// A file, and the least time of several that it took to be read.
class Reading {
public:
    explicit Reading(std::string bytes) : bytes_(std::move(bytes)) {}

    void Measure() { seconds_ = std::min(seconds_, SecondsToRead(bytes_)); }

    std::size_t Size() const { return bytes_.size(); }
    double PerByte() const { return seconds_ / static_cast<double>(bytes_.size()); }

    /// Of what a save makes of the file: a few bytes in braces become a procedure with a name of its own.
    double PerByteMade() const {
        return seconds_ / static_cast<double>(std::max(bytes_.size(), GameFile(GameOf(bytes_)).size()));
    }

private:
    std::string bytes_;
    double seconds_ = 1e9;
};

constexpr double MostPerByteMade = 3;
constexpr double MostGrowth = 1.5; // Four times the file may take six times as long: caches are small.

void ReadHostile(benchmark::State& state) {
    const Hostile& hostile = Inputs[state.range(0)];
    Reading whole(hostile.make(hostile.size));
    Reading quarter(hostile.make(hostile.size / 4));
    Reading ordinary(OrdinaryGame(whole.Size()));
    for (auto _ : state) {
        ordinary.Measure();
        quarter.Measure();
        whole.Measure();
    }
    const double perByteMade = whole.PerByteMade() / ordinary.PerByteMade();
    const double growth = whole.PerByte() / quarter.PerByte();
    const bool isTooSlow = perByteMade > MostPerByteMade || growth > MostGrowth;
    state.SetLabel(hostile.name + std::string(isTooSlow ? ": TOO SLOW" : ""));
    anyTooSlow = anyTooSlow || isTooSlow;
    state.counters["bytes"] = static_cast<double>(whole.Size());
    state.counters["ns_per_byte"] = whole.PerByte() * 1e9;
    state.counters["ratio_per_byte"] = whole.PerByte() / ordinary.PerByte();
    state.counters["ratio_per_byte_made"] = perByteMade;
    state.counters["ratio_to_quarter"] = growth; // Near 1: linear.
}

BENCHMARK(ReadHostile)->DenseRange(0, std::size(Inputs) - 1)->Iterations(20)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace zem::bench

int main(int argc, char** argv) {
    // Keeps freed memory in the process, so that no reading pays for page faults of the one before it.
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return zem::bench::anyTooSlow ? 1 : 0;
}
