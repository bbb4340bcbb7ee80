#pragma once

#include "model/GameModel.h"
#include "model/Place.h"

#include <cassert>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace zem::test {

/// Plants one fault in a game. What it does is what authors do by mistake: a name misspelt, a line forgotten,
/// a sign left out.
class Seeder {
public:
    explicit Seeder(std::uint32_t seed) : random_(seed) {}

    /// A number from 0 to below the count, which is at least 1.
    int Pick(int count) {
        assert(count > 0);
        return std::uniform_int_distribution<int>(0, count - 1)(random_);
    }

    template <class Entry>
    const Entry& PickOf(const std::vector<Entry>& entries) {
        return entries[static_cast<std::size_t>(Pick(static_cast<int>(entries.size())))];
    }

    /// The word with a letter lost, doubled, changed or swapped with the next; never the same word.
    std::string Misspelt(const std::string& word);

private:
    std::mt19937 random_;
};

/// A kind of fault.
struct FaultKind {
    const char* name;
    /// Plants it; false when the game has nothing that can be spoiled so. One of the two is null.
    bool (*inGame)(GameModel& game, Seeder& seeder);
    bool (*inFile)(std::vector<std::string>& lines, Seeder& seeder);
};

std::vector<FaultKind> ScriptFaults();
std::vector<FaultKind> RecordFaults();
std::vector<FaultKind> FileFaults();

/// All kinds.
const std::vector<FaultKind>& FaultKinds();

} // namespace zem::test
