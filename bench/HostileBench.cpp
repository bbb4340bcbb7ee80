// Reading what was made to be slow, as a ratio per byte to reading an ordinary game of the same size, both
// measured in turn in the same run. A file that is refused counts up to its refusal.
#include "DeepCopy.h"
#include "GeneratedGame.h"
#include "readback/ReadBack.h"
#include "reader/LoadGame.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <ctime>
#include <iterator>
#include <malloc.h>
#include <string>
#include <utility>

namespace zem::bench {
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
    int size; // of the file, in pieces
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

/// Of this thread, so that other programs count as little as can be.
double ProcessorSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

double SecondsToRead(const std::string& bytes) {
    GameModel game;
    std::string copy = bytes;
    const double start = ProcessorSeconds();
    try {
        ReadGame(game, std::move(copy));
    } catch (const KelError&) {
        // some of them are refused
    }
    return ProcessorSeconds() - start;
}

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

double SecondsToMakeRecords(const GameModel& game) {
    GameModel copy;
    const double start = ProcessorSeconds();
    CopyDeeply(game, copy);
    return ProcessorSeconds() - start;
}

/// An ordinary game of about this size.
std::string OrdinaryGame(std::size_t size) {
    static const std::size_t roomSize = GenerateGame(100).size() / 100;
    return GenerateGame(static_cast<int>(std::max<std::size_t>(1, size / roomSize)));
}

/// The least time of several, per byte: what the file itself takes.
struct PerByte {
    const std::string& bytes;
    double least = 1e9;

    void Measure() { least = std::min(least, SecondsToRead(bytes) / static_cast<double>(bytes.size())); }
};

void ReadHostile(benchmark::State& state) {
    const Hostile& hostile = Inputs[state.range(0)];
    const std::string whole = hostile.make(hostile.size);
    const std::string quarter = hostile.make(hostile.size / 4);
    const std::string ordinary = OrdinaryGame(whole.size());
    PerByte wholeTime{whole};
    PerByte quarterTime{quarter};
    PerByte ordinaryTime{ordinary};
    const GameModel game = GameOf(whole);
    double recordsTime = 1e9;
    for (auto _ : state) {
        ordinaryTime.Measure();
        quarterTime.Measure();
        wholeTime.Measure();
        recordsTime = std::min(recordsTime, SecondsToMakeRecords(game));
    }
    state.SetLabel(hostile.name);
    state.counters["bytes"] = static_cast<double>(whole.size());
    state.counters["ns_per_byte"] = wholeTime.least * 1e9;
    state.counters["ratio_per_byte"] = wholeTime.least / ordinaryTime.least;
    // A few bytes in braces become a procedure with a name of its own, which is more to make than to read:
    // what the records alone take, without any reading, and the time by the size of the game as it is saved.
    const auto bytes = static_cast<double>(whole.size());
    state.counters["ratio_records_alone"] = recordsTime / bytes / ordinaryTime.least;
    const double made = std::max(1.0, static_cast<double>(GameFile(game).size()) / bytes);
    state.counters["ratio_per_byte_made"] = wholeTime.least / made / ordinaryTime.least;
    state.counters["ratio_to_quarter"] = wholeTime.least / quarterTime.least; // near 1: linear
}

BENCHMARK(ReadHostile)->DenseRange(0, std::size(Inputs) - 1)->Iterations(20)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace zem::bench

int main(int argc, char** argv) {
    // Memory that was freed stays with the program: what is measured is the reading, and not whether the
    // system happens to take the memory of the former reading back.
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
