#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What is compared whenever the player's words meet the author's: small letters without accents, single
/// blanks, no quotation marks that a keyboard lacks. Players have no é on their keyboard; authors use it.
namespace zem::play {

/// A text as it is compared, and where each of its characters came from.
struct FoldedText {
    std::string text;
    std::vector<std::uint32_t> origin; // for each character of the text, its place in the original

    /// The part of the original that the characters from `begin` to before `end` came from, trimmed.
    std::string_view Original(std::string_view original, std::size_t begin, std::size_t end) const;
};

/// Stands in patterns for a variable; no folded text has it.
inline constexpr char VariableMark = '\x01';

/// A hyphen or dash, which is compared as a blank.
inline bool IsDash(char c) {
    return c == '-' || c == '\x96' || c == '\x97';
}

/// The text as it is compared.
std::string Fold(std::string_view text);

/// The text as it is compared, with the places of its characters.
FoldedText FoldWithPlaces(std::string_view text);

/// The words of a folded text, in order. The views are good as long as the text.
std::vector<std::string_view> WordsOf(std::string_view folded);

/// Takes the first word off the front of a folded text; empty at the end.
std::string_view TakeWord(std::string_view& folded);

/// Without the articles at its front, as long as a word follows them: "the", "a", "an", "some", "my".
std::string_view WithoutArticles(std::string_view folded);

/// Folds text that comes in pieces, for patterns, where marks for variables stand between the letters.
class Folder {
public:
    /// Adds a character of the original.
    /// @param place  where it stands in the original
    void Add(char c, std::uint32_t place);

    /// Adds the mark of a variable, which is as good as a letter.
    void AddMark() { AddLetter(VariableMark, 0); }

    /// The whole, without what goes at the end; the folder is used up.
    FoldedText Take();

private:
    void AddLetter(char c, std::uint32_t place);

    FoldedText folded_;
    bool blankWaits_ = false;
    std::uint32_t blankPlace_ = 0; // of the first character that the blank stands for
};

} // namespace zem::play
