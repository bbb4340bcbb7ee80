// From the start of a process to its first painted window, as a ratio to an empty Qt window: the editor's
// start window, the editor with the 200-room sample, and the first text of that sample for players. They are
// started in turn. Without a display they run on Qt's offscreen platform.
#include "Clock.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace zem::bench {
namespace {

double SecondsToRun(std::vector<std::string> command) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (std::string& argument : command)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    const auto start = Clock::now();
    pid_t child = 0;
    int status = 0;
    if (posix_spawn(&child, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0 ||
        waitpid(child, &status, 0) != child || status != 0)
        throw std::runtime_error("cannot run " + command[0]);
    return Seconds(Clock::now() - start);
}

void Start(benchmark::State& state) {
    double empty = 0;
    double start = 0;
    double sample = 0;
    double story = 0;
    for (auto _ : state) {
        empty += SecondsToRun({ZEM_EMPTY_WINDOW});
        const double now = SecondsToRun({ZEM_START_WINDOW});
        start += now;
        sample += SecondsToRun({ZEM_START_WINDOW, ZEM_LARGE_SAMPLE});
        story += SecondsToRun({ZEM_STORY_WINDOW, ZEM_LARGE_SAMPLE});
        state.SetIterationTime(now);
    }
    const auto runs = static_cast<double>(state.iterations());
    state.counters["empty_ms"] = empty * 1000 / runs;
    state.counters["ratio_start_to_empty"] = start / empty;
    state.counters["ratio_sample_to_empty"] = sample / empty;
    state.counters["ratio_story_to_empty"] = story / empty;
}

BENCHMARK(Start)->UseManualTime()->Iterations(30)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace zem::bench

int main(int argc, char** argv) {
    if (std::getenv("DISPLAY") == nullptr && std::getenv("WAYLAND_DISPLAY") == nullptr)
        setenv("QT_QPA_PLATFORM", "offscreen", 0);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
