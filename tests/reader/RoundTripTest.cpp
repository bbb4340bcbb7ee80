#include "readback/ReadBack.h"
#include "support/CaseFile.h"
#include "support/Games.h"

#include <cctype>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace zem::test {
namespace {

/// Loading what was saved must give the game that was saved, and saving that must give the same bytes. Nor
/// must the check that follows each save find anything.
void ExpectRoundTrip(const GameModel& game) {
    const std::string saved = SaveToBytes(game);
    const GameModel again = LoadBytes(saved);
    EXPECT_TRUE(SameGame(WithoutNamelessItem(game), WithoutNamelessItem(again))) << saved;
    EXPECT_EQ(SaveToBytes(again), saved);
    for (const LostPlace& place : ReadBack(game, saved))
        ADD_FAILURE() << place.text << '\n' << saved;
}

TEST(RoundTrip, KeepsEverySample) {
    for (const auto& sample : FilesIn(ZEM_SAMPLES)) {
        SCOPED_TRACE(sample.filename());
        ExpectRoundTrip(LoadBytes(ReadBytes(sample)));
    }
}

/// Writes random game files by the rules of random-game.cases.
class GameFileGenerator {
public:
    GameFileGenerator() {
        for (const auto& [rule, text] : CasesIn<2>("random-game"))
            rules_[rule].push_back(text);
    }

    std::string Generate(unsigned seed) {
        random_.seed(seed);
        std::string file;
        for (const char c : Expand("file")) {
            if (file.empty() || file.back() == '\n')
                file.append(2 * Pick(3), ' ');
            file += c == '\n' && Pick(4) != 0 ? "\r\n" : std::string(1, c);
        }
        return file;
    }

private:
    std::size_t Pick(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
    }

    std::string Expand(const std::string& rule) {
        if (rule == "next")
            return std::to_string(++lastNumber_);
        const std::vector<std::string>& texts = rules_.at(rule);
        std::string expanded = texts[Pick(texts.size())];
        for (std::size_t at = expanded.find('$'); at != std::string::npos; at = expanded.find('$', at)) {
            const bool isRepeated = std::isdigit(expanded.at(at + 1)) != 0;
            const std::size_t start = at + (isRepeated ? 2 : 1);
            const std::size_t end = expanded.find_first_not_of("abcdefghijklmnopqrstuvwxyz", start);
            const std::string inner = expanded.substr(start, end - start);
            std::string replacement;
            for (auto count = isRepeated ? Pick(expanded[at + 1] - '0' + 1U) : 1; count > 0; --count)
                replacement += Expand(inner);
            expanded.replace(at, end - at, replacement);
            at += replacement.size();
        }
        return expanded;
    }

    std::map<std::string, std::vector<std::string>> rules_;
    std::mt19937 random_;
    int lastNumber_ = 0;
};

TEST(RoundTrip, KeepsGeneratedGames) {
    GameFileGenerator generator;
    for (unsigned seed = 1; seed <= 400 && !::testing::Test::HasFailure(); ++seed) {
        const std::string file = generator.Generate(seed);
        SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + file);
        ExpectRoundTrip(LoadBytes(file));
    }
}

} // namespace
} // namespace zem::test
