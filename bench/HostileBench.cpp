// Reading what was made to be slow, as a ratio per byte to reading an ordinary game of the same size, both
// measured in turn in the same run. A file that is refused counts up to its refusal.
#include "GeneratedGame.h"
#include "reader/LoadGame.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <string>

namespace zem::bench {
namespace {

using Clock = std::chrono::steady_clock;

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
    std::string bytes;
};

std::string EqualRooms() {
    return Repeat("define room <a>\r\ndefine object <o>\r\nend define\r\nend define\r\n", 32000);
}

std::string ManyProcedures() {
    std::string file;
    for (int k = 1; k <= 30000; ++k)
        file += "define procedure <" + std::to_string(k) + ">\r\ndo <x>\r\nend define\r\n";
    return file;
}

std::string ManyNestedBraces() {
    return Procedure(Repeat("{ do <x>\r\n", 30000) + std::string(30000, '}') + "\r\n");
}

const Hostile* Inputs(std::size_t& count) {
    static const Hostile inputs[] = {
        {"only \"else\" lines", Procedure(Repeat("else msg <x>\r\n", 100000))},
        {"one \"if\", many \"else\"", Procedure("if a then b\r\n" + Repeat("else msg <x>\r\n", 100000))},
        {"\"if\" and \"else\" in turn", Procedure(Repeat("if a then b\r\nelse c\r\n", 50000))},
        {"only \"__\" lines", Procedure(Repeat("x__\r\n", 300000) + "y\r\n")},
        {"nested braces", ManyNestedBraces()},
        {"braces one after the other", Procedure(Repeat("{ do <x> }\r\n", 32000))},
        {"braces on one line", Procedure(Repeat("{ a } ", 32000) + "\r\n")},
        {"unclosed braces", Procedure(Repeat("{ do <x>\r\n", 150000))},
        {"lines of one character", Procedure(Repeat("x\r\n", 500000))},
        {"empty lines", Procedure(Repeat("\r\n", 700000))},
        {"empty lines outside", Repeat("\n", 1500000) + "define game <x>\r\nend define\r\n"},
        {"rooms of one name with things", EqualRooms()},
        {"30,000 procedures", ManyProcedures()},
        {"one long line", Procedure("msg <" + std::string(3000000, 'x') + ">\r\n")},
        {"one long line of tabs", Procedure("msg <" + std::string(1000000, '\t') + ">\r\n")},
        {"many includes", Repeat("!include <x>\r\n", 32000) + "define game <x>\r\nend define\r\n"},
        {"nested blocks", Repeat("define timer <x>\r\n", 50000) + Repeat("end define\r\n", 50000)},
        {"unclosed blocks", Repeat("define timer <x>\r\n", 100000)},
        {"blocks of other kinds", Repeat("define timer <x>\r\nend define\r\n", 50000)},
        {"many synonyms", "define synonyms\r\n" + Repeat("a = b\r\n", 32000) + "end define\r\n"},
        {"many items", "define game <x>\r\nitems <" + Repeat("a,", 32000) + ">\r\nstartitems <" +
                           Repeat("b,", 32000) + ">\r\nend define\r\n"},
        {"many texts", Repeat("define text <x>\r\nend define\r\n", 32000)},
        {"many tags", "define game <x>\r\n" + Repeat("x\r\n", 300000) + "end define\r\n"},
    };
    count = std::size(inputs);
    return inputs;
}

double SecondsToRead(const std::string& bytes) {
    GameModel game;
    std::string copy = bytes;
    const auto start = Clock::now();
    try {
        ReadGame(game, std::move(copy));
    } catch (const KelError&) {
        // some of them are refused
    }
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// An ordinary game of about this size.
std::string OrdinaryGame(std::size_t size) {
    static const std::size_t roomSize = GenerateGame(100).size() / 100;
    return GenerateGame(static_cast<int>(std::max<std::size_t>(1, size / roomSize)));
}

void ReadHostile(benchmark::State& state) {
    std::size_t count = 0;
    const Hostile& hostile = Inputs(count)[static_cast<std::size_t>(state.range(0))];
    const std::string ordinary = OrdinaryGame(hostile.bytes.size());
    double reading = 0;
    double readingOrdinary = 0;
    for (auto _ : state) {
        readingOrdinary += SecondsToRead(ordinary);
        const double seconds = SecondsToRead(hostile.bytes);
        reading += seconds;
        state.SetIterationTime(seconds);
    }
    const auto perByte = [&](double seconds, const std::string& bytes) {
        return seconds * 1e9 / static_cast<double>(bytes.size()) / static_cast<double>(state.iterations());
    };
    state.SetLabel(hostile.name);
    state.counters["bytes"] = static_cast<double>(hostile.bytes.size());
    state.counters["ns_per_byte"] = perByte(reading, hostile.bytes);
    state.counters["ratio_per_byte"] = perByte(reading, hostile.bytes) / perByte(readingOrdinary, ordinary);
}

void AllInputs(benchmark::internal::Benchmark* bench) {
    std::size_t count = 0;
    Inputs(count);
    for (std::size_t k = 0; k < count; ++k)
        bench->Arg(static_cast<std::int64_t>(k));
}

BENCHMARK(ReadHostile)->Apply(AllInputs)->UseManualTime()->MinTime(0.2)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace zem::bench

BENCHMARK_MAIN();
