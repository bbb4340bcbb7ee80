#include "base/LineText.h"
#include "problems/CheckedFile.h"
#include "problems/MadeGame.h"
#include "problems/Seeder.h"

#include <gtest/gtest.h>
#include <iostream>

namespace zem::test {
namespace {

using namespace problems;

/// What is said of a file; nothing when it is refused.
std::optional<Told> CheckFile(const std::string& bytes) {
    try {
        return ToldOf(FindProblems(CheckedGame(InputOfFile(bytes))));
    } catch (const KelError&) {
        return std::nullopt;
    }
}

bool SaysMore(const Told& before, const std::optional<Told>& after) {
    return !after || !std::includes(before.begin(), before.end(), after->begin(), after->end());
}

/// A game without faults, or with those that it always had.
struct Sound {
    std::string name;
    GameModel game;
    std::string bytes;
    Told told;

    Sound(std::string gameName, const std::string& file) : name(std::move(gameName)) {
        play::NameMessages(game);
        ReadGame(game, file);
        bytes = SaveToBytes(game);
        told = CheckFile(bytes).value();
    }
};

std::vector<std::string> LinesOf(const std::string& bytes) {
    std::vector<std::string> lines;
    for (const std::string_view line : SplitAt(bytes, "\r\n"))
        lines.emplace_back(line);
    return lines;
}

std::string Joined(const std::vector<std::string>& lines) {
    std::string bytes;
    for (const std::string& line : lines)
        bytes += line + "\r\n";
    return bytes;
}

/// The file of the game with one such fault; nothing when it cannot have it, or when a save undoes it.
std::optional<std::string> Spoilt(const Sound& sound, const FaultKind& kind, std::uint32_t seed) {
    Seeder seeder(seed);
    if (kind.inFile != nullptr) {
        std::vector<std::string> lines = LinesOf(sound.bytes);
        return kind.inFile(lines, seeder) ? std::optional(Joined(lines)) : std::nullopt;
    }
    GameModel game = sound.game;
    if (!kind.inGame(game, seeder))
        return std::nullopt;
    std::string bytes = SaveToBytes(game);
    return bytes == sound.bytes ? std::nullopt : std::optional(std::move(bytes));
}

std::vector<Sound> SoundGames() {
    std::vector<Sound> games;
    for (const auto& [name, file] : SampleFiles())
        games.emplace_back(name, file);
    for (std::uint32_t seed = 1; seed <= 3; ++seed)
        games.emplace_back("made " + std::to_string(seed), CrLf(MadeGame(seed)));
    return games;
}

TEST(SeededFaults, ChangesThatAreNoFaultAreNotTold) {
    for (const Sound& sound : SoundGames()) {
        GameModel game = sound.game;
        Room& room = game.Rooms.Edit(game.Rooms.Count());
        room.Look += " There is nothing else to be seen here, |iat least|xi from where you stand.";
        room.MiscTags += "zem-map <700; -700>\r\n";
        game.Procedures.Append({"a sigh", "msg <You sigh.>"});
        game.PlayerCommands.Append({"sigh deeply", "do <a sigh>"});
        EXPECT_FALSE(SaysMore(sound.told, CheckFile(SaveToBytes(game)))) << sound.name;
    }
}

TEST(SeededFaults, AlmostAllAreFound) {
    const std::vector<Sound> games = SoundGames();
    EXPECT_GE(FaultKinds().size(), 50U);
    const char* more = std::getenv("ZEM_FAULTS"); // how many of each kind and game; one takes a few seconds
    const int rounds = more == nullptr ? 1 : std::stoi(more);
    int planted = 0;
    int found = 0;
    for (const FaultKind& kind : FaultKinds()) {
        int ofKind = 0;
        for (const Sound& sound : games)
            for (int round = 0; round < rounds; ++round) {
                const auto seed = static_cast<std::uint32_t>(1000 * round + planted);
                const std::optional<std::string> bytes = Spoilt(sound, kind, seed);
                if (!bytes)
                    continue;
                ++ofKind;
                ++planted;
                const bool isFound = SaysMore(sound.told, CheckFile(*bytes));
                found += isFound ? 1 : 0;
                if (!isFound && more != nullptr)
                    std::cout << "missed: " << kind.name << " in " << sound.name << ", seed " << seed << '\n';
            }
        EXPECT_GT(ofKind, 0) << kind.name << " can be planted nowhere";
    }
    std::cout << found << " of " << planted << " faults found\n";
    EXPECT_GE(found * 100, planted * 95);
}

} // namespace
} // namespace zem::test
