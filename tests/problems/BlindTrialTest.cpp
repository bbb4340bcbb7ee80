#include "base/LineText.h"
#include "problems/CheckedFile.h"
#include "problems/Seeder.h"

#include <array>
#include <gtest/gtest.h>
#include <iostream>

namespace zem::test {
namespace {

using namespace problems;

/// Whether what stands in brackets behind these words is printed, or at least what stands behind its ";".
enum class Printed { No, All, BehindSemicolon };

Printed KindOf(std::string_view words) {
    constexpr std::array<std::string_view, 19> Texts = {
        "msg",    "say",         "key",          "if ask",         "look",         "speak",   "alias",
        "prefix", "suffix",      "choice",       "info",           "game info",    "and ask", "game author",
        "or ask", "define game", "game version", "game copyright", "indescription"};
    const auto endsIn = [&](std::string_view word) {
        const std::size_t begin = words.size() - std::min(words.size(), word.size());
        const bool isWhole = begin == 0 || words[begin - 1] == ' ';
        return isWhole && EqualIgnoringCase(words.substr(begin), word);
    };
    if (std::any_of(Texts.begin(), Texts.end(), endsIn))
        return Printed::All;
    return endsIn("ask") || endsIn("error") ? Printed::BehindSemicolon : Printed::No;
}

/// Which bytes of a game file mean something: all but comments and printed texts.
std::vector<bool> MeaningfulBytes(const std::string& bytes) {
    std::vector<bool> means(bytes.size(), true);
    const auto blank = [&](std::size_t begin, std::size_t end) {
        std::fill(means.begin() + static_cast<std::ptrdiff_t>(begin),
                  means.begin() + static_cast<std::ptrdiff_t>(std::min(end, bytes.size())), false);
    };
    bool isInText = false;
    for (std::size_t begin = 0; begin < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', begin), bytes.size() - 1) + 1;
        const std::string_view line = std::string_view(bytes).substr(begin, end - begin);
        const bool isEnd = BeginsWith(line, "end define");
        if (TrimLeft(line).starts_with('\'') || (isInText && !isEnd))
            blank(begin, end);
        isInText = (isInText && !isEnd) || BeginsWith(line, "define text");
        for (std::size_t open = line.find('<'), from = 0; open != std::string_view::npos;
             open = line.find('<', from)) {
            const std::size_t close = std::min(line.find('>', open), line.size());
            const Printed kind = KindOf(Trim(line.substr(from, open - from)));
            const std::size_t semicolon = line.find(';', open);
            if (kind == Printed::All)
                blank(begin + open + 1, begin + close);
            else if (kind == Printed::BehindSemicolon && semicolon < close)
                blank(begin + semicolon + 1, begin + close);
            from = std::min(close + 1, line.size());
        }
        begin = end;
    }
    return means;
}

/// The file with one character lost, changed or swapped with the next.
std::string WithSpoiltCharacter(const std::string& bytes, std::size_t at, Seeder& seeder) {
    std::string spoilt = bytes;
    switch (seeder.Pick(3)) {
    case 0:
        return spoilt.erase(at, 1);
    case 1:
        spoilt[at] = static_cast<char>('a' + seeder.Pick(26));
        return spoilt;
    default:
        std::swap(spoilt[at], spoilt[at + 1]);
        return spoilt;
    }
}

struct Verdict {
    bool isOtherGame = false;
    bool isNoticed = false;
};

Verdict Judge(const GameModel& before, const Told& told, const std::string& bytes) {
    try {
        CheckInput input = InputOfFile(bytes);
        if (SameGame(before, input.game))
            return {};
        const Told now = ToldOf(FindProblems(CheckedGame(std::move(input))));
        return {true, !std::includes(told.begin(), told.end(), now.begin(), now.end())};
    } catch (const KelError&) {
        return {true, true};
    }
}

TEST(BlindTrial, SingleSpoiltCharactersAreNoticed) {
    const char* more = std::getenv("ZEM_LETTERS"); // how many of each game; the others take a few seconds
    const int wanted = more == nullptr ? 60 : std::stoi(more);
    int spoilt = 0;
    int noticed = 0;
    for (const char* name : {"lighthouse", "archipelago"}) {
        const std::string bytes = SampleFiles().at(name);
        const std::vector<bool> means = MeaningfulBytes(bytes);
        const CheckInput input = InputOfFile(bytes);
        const Told told = ToldOf(FindProblems(CheckedGame(input)));
        Seeder seeder(more == nullptr ? 2024 : static_cast<std::uint32_t>(wanted));
        for (int tried = 0; tried < wanted;) {
            const auto at = static_cast<std::size_t>(seeder.Pick(static_cast<int>(bytes.size()) - 2));
            const bool isBlank = std::string_view(" \r\n").find(bytes[at]) != std::string_view::npos &&
                                 std::string_view(" \r\n").find(bytes[at + 1]) != std::string_view::npos;
            if (!means[at] || !means[at + 1] || isBlank)
                continue;
            const std::string other = WithSpoiltCharacter(bytes, at, seeder);
            const Verdict verdict = Judge(input.game, told, other);
            if (!verdict.isOtherGame)
                continue;
            ++tried;
            ++spoilt;
            noticed += verdict.isNoticed ? 1 : 0;
            if (!verdict.isNoticed) {
                const std::size_t begin = other.rfind('\n', at) + 1;
                std::cout << "missed: " << other.substr(begin, other.find('\r', begin) - begin)
                          << "\n    was: " << bytes.substr(begin, bytes.find('\r', begin) - begin) << '\n';
            }
        }
    }
    std::cout << noticed << " of " << spoilt << " spoilt characters noticed\n";
    // Per cent; a small sample may by chance hold more that is missed.
    const int least = more == nullptr ? 95 : 97;
    EXPECT_GE(noticed * 100, spoilt * least);
}

} // namespace
} // namespace zem::test
