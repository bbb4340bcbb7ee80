#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

namespace zem::play {

/// What a variable holds: a number, or a text by its number in a TextTable. 0 is the empty text.
using Value = std::int64_t;

inline constexpr Value EmptyText = 0;

constexpr bool IsNumber(Value value) {
    return (value & 1) != 0;
}
constexpr Value FromNumber(std::int64_t number) {
    return number * 2 + 1;
}
constexpr std::int64_t NumberIn(Value value) {
    return value >> 1;
}

/// The texts that variables hold, each once. Texts are added at the end and dropped from the end, as a state
/// is gone back over.
class TextTable {
public:
    TextTable();
    TextTable(const TextTable& other);
    TextTable& operator=(const TextTable& other);
    TextTable(TextTable&&) = default;
    TextTable& operator=(TextTable&&) = default;
    ~TextTable() = default;

    /// The value of a text. A text that is the usual way to write a number becomes that number, which prints
    /// the same and takes no room.
    Value Add(std::string_view text);

    /// The text of a value, a number written out.
    std::string Text(Value value) const;

    /// True for the value of an empty text.
    static bool IsEmpty(Value value) { return value == EmptyText; }

    /// The number that a value counts as: its own, or the one at the start of its text.
    std::int64_t ToNumber(Value value) const;

    /// The same for equal texts in all tables.
    std::uint64_t Hash(Value value) const;

    std::size_t Count() const { return texts_.size(); }

    /// Drops all texts but the first ones.
    void Shrink(std::size_t count);

    /// True for a value whose text is not among the first `count`.
    static bool IsBehind(Value value, std::size_t count) {
        return !IsNumber(value) && value / 2 >= static_cast<Value>(count);
    }

private:
    std::deque<std::string> texts_; // the first is empty; a deque, because the views stay
    std::unordered_map<std::string_view, Value> values_;
};

/// The lowest and highest number that a variable can hold.
inline constexpr std::int64_t LowestNumber = -2147483647 - 1;
inline constexpr std::int64_t HighestNumber = 2147483647;

/// The number, or the end of the range that it lies beyond.
constexpr std::int64_t Bounded(std::int64_t number) {
    return number < LowestNumber ? LowestNumber : number > HighestNumber ? HighestNumber : number;
}

/// The whole number at the start of a text, after any blanks, kept in bounds; 0 where there is none.
/// @param isAll  set, if given, when the text is this number and nothing else, blanks around it aside
std::int64_t LeadingInteger(std::string_view text, bool* isAll = nullptr);

} // namespace zem::play
