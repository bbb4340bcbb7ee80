// What whole commands take for the largest game that an author may have: 5,000 rooms, 20,000 objects, 3,000
// procedures, 2,000 texts, 3 million words. Loading, and writing the result, is part of the time. And the
// printed book of the sample with 200 rooms.
#include "commands/CommandLine.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>

namespace zem::bench {
namespace {

/// Writes a game of prose in random words.
class Novel {
public:
    std::string Make() {
        file_ = "define game <A long story>\r\nstart <Room 1>\r\nitems <lamp>\r\nend define\r\n";
        for (int room = 1; room <= 5000; ++room)
            AddRoom(room);
        for (int k = 1; k <= 3000; ++k) {
            file_ += "define procedure <procedure " + std::to_string(k) + ">\r\n";
            for (int line = 0; line < 8; ++line)
                file_ += "if flag <f" + std::to_string(k) + "> then msg <" + Prose(25) + ">\r\n";
            file_ += "end define\r\n";
        }
        for (int k = 1; k <= 2000; ++k)
            file_ += "define text <text " + std::to_string(k) + ">\r\n" + Prose(150) + "\r\n" + Prose(150) +
                     "\r\nend define\r\n";
        return std::move(file_);
    }

private:
    void AddRoom(int room) {
        const auto name = [](int k) { return "Room " + std::to_string(k); };
        file_ += "define room <" + name(room) + ">\r\nlook <" + Prose(120) + ">\r\nnorth <" +
                 name(room % 5000 + 1) + ">\r\nsouth <" + name((room + 4998) % 5000 + 1) + ">\r\n";
        for (int k = 1; k <= 4; ++k)
            file_ += "define object <thing " + std::to_string(room * 4 + k) + ">\r\nlook <" + Prose(35) +
                     ">\r\ntake {\r\nmsg <" + Prose(25) + ">\r\ngive <lamp>\r\n}\r\nend define\r\n";
        file_ += "end define\r\n";
    }

    std::string Prose(int words) {
        std::string text;
        for (int k = 0; k < words; ++k) {
            text += k == 0 ? "" : " ";
            for (auto letters = 2 + random_() % 6; letters > 0; --letters)
                text += static_cast<char>('a' + random_() % 26);
        }
        return text;
    }

    std::string file_;
    std::mt19937 random_{1};
};

/// The game and two versions of it, each with another word in every hundredth description.
class Versions {
public:
    Versions()
        : folder_(std::filesystem::temp_directory_path() /
                  ("zem-bench-" + std::to_string(std::random_device()()))) {
        std::filesystem::create_directory(folder_);
        const std::string base = Novel().Make();
        Write("base.kel", base);
        Write("ours.kel", Edited(base, 0));
        Write("theirs.kel", Edited(base, 50));
    }
    ~Versions() { std::filesystem::remove_all(folder_); }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

private:
    void Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(Path(name), std::ios::binary) << bytes;
    }

    static std::string Edited(std::string file, int first) {
        int number = 0;
        for (std::size_t at = 0; (at = file.find("\r\nlook <", at)) != std::string::npos; at += 8)
            if (number++ % 100 == first)
                file.insert(at + 8, "changed ");
        return file;
    }

    std::filesystem::path folder_;
};

void Run(benchmark::State& state, const std::vector<std::string>& arguments) {
    std::size_t bytes = 0;
    for (auto _ : state) {
        std::ostringstream out;
        std::ostringstream err;
        benchmark::DoNotOptimize(RunCommandLine(arguments, ZEM_PROGRAM_FOLDER, out, err));
        bytes = out.str().size();
        if (!err.str().empty())
            state.SkipWithError(err.str().c_str());
    }
    state.counters["bytes_told"] = static_cast<double>(bytes);
}

const Versions& Files() {
    static const Versions versions;
    return versions;
}

void Diff(benchmark::State& state) {
    Run(state, {"diff", Files().Path("base.kel"), Files().Path("ours.kel")});
}
void Merge(benchmark::State& state) {
    Run(state, {"merge", Files().Path("base.kel"), Files().Path("ours.kel"), Files().Path("theirs.kel"), "-o",
                Files().Path("merged.kel")});
}
void Stats(benchmark::State& state) {
    Run(state, {"stats", Files().Path("base.kel")});
}
void Load(benchmark::State& state) { // what stands in each of the others once, twice or three times
    Run(state, {"format", Files().Path("base.kel"), Files().Path("formatted.kel")});
}
void Book(benchmark::State& state) {
    Run(state, {"export", ZEM_LARGE_SAMPLE, Files().Path("book.html")});
}

BENCHMARK(Load)->Unit(benchmark::kMillisecond);
BENCHMARK(Diff)->Unit(benchmark::kMillisecond);
BENCHMARK(Merge)->Unit(benchmark::kMillisecond);
BENCHMARK(Stats)->Unit(benchmark::kMillisecond);
BENCHMARK(Book)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace zem::bench

BENCHMARK_MAIN();
