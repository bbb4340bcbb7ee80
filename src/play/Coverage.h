#pragma once

#include "play/Outcome.h"
#include "play/World.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

/// What of a game was ever played: how often each command ran, each "if" line was true and false, each room
/// was entered, each thing met, each text printed.
namespace zem::play {

/// One part of a game that a run can reach.
struct CoveragePart {
    enum Kind : std::uint8_t {
        Command,
        Branch, // an answer of an "if" line
        Room,
        Thing,
        Text,
        Ending // a "win" or "die"; a command as well
    };
    static constexpr std::size_t KindCount = 6;

    Kind kind = Command;
    bool answer = true; // of the "if" line
    Source source;      // of a room, thing or text: its book, line 0
    std::uint64_t hits = 0;
    Hit hit; // what a turn that reaches it gives
};

struct CoverageCount {
    std::size_t reached = 0;
    std::size_t all = 0;
};

/// Counts for one game, its libraries left out.
class Coverage {
public:
    explicit Coverage(std::shared_ptr<const World> world);

    /// Counts what a turn has hit. Gives the number of parts that were never hit before.
    std::size_t Add(std::span<const Hit> hits);

    /// Counts what another coverage of the same world has counted.
    void Add(const Coverage& other);

    std::uint64_t HitsOf(const Hit& hit) const;

    /// All parts in the order of the game.
    std::vector<CoveragePart> Parts() const;
    CoverageCount Count(CoveragePart::Kind kind) const;
    /// How many parts of any kind were hit.
    std::size_t ReachedCount() const { return reached_; }

    const std::shared_ptr<const World>& GetWorld() const { return world_; }

private:
    std::size_t SlotOf(const Hit& hit) const;
    void AddParts(const Book& book, std::vector<CoveragePart>& parts) const;

    std::shared_ptr<const World> world_;
    std::vector<const Book*> books_;
    std::unordered_map<const Book*, std::size_t> firstSlots_;
    std::vector<std::uint64_t> counts_; // by slot: for each book its own, then two for each of its nodes
    std::size_t reached_ = 0;
    mutable const Book* lastBook_ = nullptr; // hits of a book mostly follow one another
    mutable std::size_t lastFirst_ = 0;
};

} // namespace zem::play
