#pragma once

#include "play/Names.h"
#include "play/Texts.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zem::play {

/// Everything that changes while a game is played: one list of cells. Each write goes through one function,
/// which notes what was there before; so any number of turns can be taken back, and what a turn changed is
/// known.
class State {
public:
    /// How far the journal went at some time.
    struct Mark {
        std::size_t writes = 0;
        std::uint32_t texts = 1;
    };

    /// One write: the cell, and what it held before. Twelve bytes, because there are many.
    struct Write {
        Cell cell;
        std::uint32_t low, high;

        std::int64_t Before() const {
            return static_cast<std::int64_t>((static_cast<std::uint64_t>(high) << 32U) | low);
        }
    };

    /// @param start  what the cells hold when the game begins
    /// @param order  the place of each thing in the file, by its number; None for one that is not there
    State(std::shared_ptr<const Names> names, std::span<const std::int64_t> start,
          std::span<const std::uint32_t> order);

    std::int64_t operator[](Cell cell) const { return cells_[cell]; }
    void Set(Cell cell, std::int64_t value);

    std::string Text(Cell cell) const { return texts_.Text(cells_[cell]); }
    void SetText(Cell cell, std::string_view text) { Set(cell, texts_.Add(text)); }
    const TextTable& Texts() const { return texts_; }

    Mark Here() const { return {journal_.size(), static_cast<std::uint32_t>(texts_.Count())}; }

    /// True when something was written since.
    bool HasChangedSince(const Mark& mark) const { return journal_.size() != mark.writes; }

    /// Takes everything back that was written since.
    void GoBackTo(const Mark& mark);

    /// Forgets what was written since and overwritten again, and the texts that no cell holds any more.
    void Tidy(const Mark& mark);

    /// The cells that were written since, with what they held before, each once if tidied.
    template <class Visit>
    void ForEachWriteSince(const Mark& mark, Visit visit) const {
        for (std::size_t k = mark.writes; k < journal_.size(); ++k)
            visit(journal_[k].cell, journal_[k].Before());
    }

    /// A number for the whole state; 0 for that in which the game begins. Equal states have equal numbers,
    /// and different ones as good as never.
    std::uint64_t Fingerprint() const { return fingerprint_; }

    /// The things in a room, in the order of the file.
    /// @param room  a room's number + 1
    const std::vector<Number>& ThingsIn(std::int64_t room) const;

    /// A whole number from 1 to `highest`, each as likely; 1 when it is below 1.
    std::int64_t Roll(std::int64_t highest);

    static constexpr std::size_t BytesPerWrite = sizeof(Write);

    /// Goes on with a changed game, in which there may be more cells: those that hold what they held at the
    /// start hold what they hold at the new start. The journal is forgotten.
    void Rebase(std::span<const std::int64_t> oldStart, std::span<const std::int64_t> newStart,
                std::span<const std::uint32_t> order);

private:
    void Put(Cell cell, std::int64_t value);
    void MoveThing(Number thing, std::int64_t from, std::int64_t to);
    void IndexRooms();
    std::uint64_t HashOf(Cell cell, std::int64_t value) const;

    std::shared_ptr<const Names> names_;
    std::vector<std::int64_t> cells_;
    std::vector<std::uint32_t> order_;
    std::vector<std::vector<Number>> thingsIn_; // by the number of the room + 1
    TextTable texts_;
    std::deque<Write> journal_;
    std::uint64_t fingerprint_ = 0;
};

/// The next number of the generator that all chance comes from, and its next state.
std::uint64_t NextRandom(std::uint64_t& state);

} // namespace zem::play
