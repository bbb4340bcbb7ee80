#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

/// Input kept in few bytes: entries of fields, one behind the other.
namespace zem::play {

/// The first letter of the first field of a log entry.
inline constexpr char BeginEntry = 'B';
inline constexpr char LineEntry = 'L';
inline constexpr char RestartLineEntry = 'P'; // a line that began the game again, which is no turn
inline constexpr char ChoiceEntry = 'C';
inline constexpr char SecondsEntry = 'S';
inline constexpr char RestartEntry = 'R';
inline constexpr char RestoreEntry = 'V';
inline constexpr char HandEntry = 'H';

/// The bytes of an entry.
std::string PackEntry(const std::vector<std::string>& fields);

/// Takes the first entry off the front. The log is one of entries that PackEntry made.
std::vector<std::string> TakeEntry(std::string_view& log);

/// Entries behind each other, in blocks: a long game costs no turn the time to move the whole log to a larger
/// place. Positions are bytes from the first entry, and each is where an entry begins, or the end.
class InputLog {
public:
    bool IsEmpty() const { return size_ == 0; }
    std::size_t Size() const { return size_; }

    /// @param entry  what PackEntry gave for one entry
    void Add(std::string_view entry);

    /// Takes off what stands from a position on.
    void Truncate(std::size_t size);

    /// The entry at a position before the end.
    std::vector<std::string> EntryAt(std::size_t position) const;

    /// All entries from a position on, as TakeEntry takes them.
    std::string From(std::size_t position) const;

private:
    /// Whole entries.
    struct Block {
        std::size_t begin = 0;
        std::string bytes;
    };

    /// The block that holds the position, or ends with it.
    std::deque<Block>::const_iterator BlockOf(std::size_t position) const;

    std::deque<Block> blocks_; // none is empty
    std::size_t size_ = 0;
};

} // namespace zem::play
