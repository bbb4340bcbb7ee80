#include "play/Fold.h"

#include "base/LineText.h"

#include <array>
#include <utility>

namespace zem::play {

namespace {

/// What a character is compared as: one or two letters; a blank for what parts words.
struct FoldedLetter {
    char first = ' ';
    char second = '\0'; // none
};

struct LetterRow {
    unsigned char from;
    unsigned char to;
    char first;
    char second;
};

// Small letters of Windows-1252 and signs, by their codes.
constexpr LetterRow LetterRows[] = {
    {0xE0, 0xE5, 'a', '\0'}, {0xE6, 0xE6, 'a', 'e'},  {0xE7, 0xE7, 'c', '\0'}, {0xE8, 0xEB, 'e', '\0'},
    {0xEC, 0xEF, 'i', '\0'}, {0xF1, 0xF1, 'n', '\0'}, {0xF2, 0xF6, 'o', '\0'}, {0xF8, 0xF8, 'o', '\0'},
    {0xF9, 0xFC, 'u', '\0'}, {0xFD, 0xFD, 'y', '\0'}, {0xFF, 0xFF, 'y', '\0'}, {0x9A, 0x9A, 's', '\0'},
    {0x9E, 0x9E, 'z', '\0'}, {0x9C, 0x9C, 'o', 'e'},  {0xDF, 0xDF, 's', 's'},  {0x91, 0x92, '\'', '\0'},
    {0x93, 0x94, '"', '\0'}, {0x96, 0x97, ' ', '\0'}, {'-', '-', ' ', '\0'},   {0x00, 0x20, ' ', '\0'},
};

constexpr std::array<FoldedLetter, 256> MakeFoldTable() {
    std::array<FoldedLetter, 256> table{};
    for (unsigned code = 0; code < 256; ++code) {
        const auto lower = static_cast<unsigned char>(Lower(static_cast<char>(code)));
        table[code] = {static_cast<char>(lower), '\0'};
        for (const LetterRow& row : LetterRows)
            if (lower >= row.from && lower <= row.to)
                table[code] = {row.first, row.second};
    }
    return table;
}

constexpr std::array<FoldedLetter, 256> FoldTable = MakeFoldTable();

bool GoesAtTheEnd(char c) {
    return c == '.' || c == '!' || c == '?' || c == ' ';
}

} // namespace

std::string_view FoldedText::Original(std::string_view original, std::size_t begin, std::size_t end) const {
    if (begin >= end)
        return {};
    return Trim(original.substr(origin[begin], origin[end - 1] + 1 - origin[begin]));
}

void Folder::Add(char c, std::uint32_t place) {
    const FoldedLetter letter = FoldTable[static_cast<unsigned char>(c)];
    if (letter.first == ' ') {
        if (!blankWaits_)
            blankPlace_ = place;
        blankWaits_ = true;
        return;
    }
    AddLetter(letter.first, place);
    if (letter.second != '\0')
        AddLetter(letter.second, place);
}

void Folder::AddLetter(char c, std::uint32_t place) {
    if (blankWaits_ && !folded_.text.empty()) {
        folded_.text += ' ';
        folded_.origin.push_back(blankPlace_);
    }
    blankWaits_ = false;
    folded_.text += c;
    folded_.origin.push_back(place);
}

FoldedText Folder::Take() {
    while (!folded_.text.empty() && GoesAtTheEnd(folded_.text.back())) {
        folded_.text.pop_back();
        folded_.origin.pop_back();
    }
    return std::move(folded_);
}

std::string Fold(std::string_view text) {
    std::string folded;
    folded.reserve(text.size() + 4);
    bool blankWaits = false;
    for (const char c : text) {
        const FoldedLetter letter = FoldTable[static_cast<unsigned char>(c)];
        if (letter.first == ' ') {
            blankWaits = !folded.empty();
            continue;
        }
        if (blankWaits)
            folded += ' ';
        blankWaits = false;
        folded += letter.first;
        if (letter.second != '\0')
            folded += letter.second;
    }
    while (!folded.empty() && GoesAtTheEnd(folded.back()))
        folded.pop_back();
    return folded;
}

FoldedText FoldWithPlaces(std::string_view text) {
    Folder folder;
    for (std::size_t k = 0; k < text.size(); ++k)
        folder.Add(text[k], static_cast<std::uint32_t>(k));
    return folder.Take();
}

std::string_view TakeWord(std::string_view& folded) {
    const std::string_view word = folded.substr(0, folded.find(' '));
    folded.remove_prefix(std::min(word.size() + 1, folded.size()));
    return word;
}

std::vector<std::string_view> WordsOf(std::string_view folded) {
    std::vector<std::string_view> words;
    while (!folded.empty())
        words.push_back(TakeWord(folded));
    return words;
}

std::string_view WithoutArticles(std::string_view folded) {
    constexpr std::string_view Articles[] = {"the ", "a ", "an ", "some ", "my "};
    for (bool found = true; found;) {
        found = false;
        for (const std::string_view article : Articles)
            if (folded.size() > article.size() && folded.starts_with(article)) {
                folded.remove_prefix(article.size());
                found = true;
            }
    }
    return folded;
}

} // namespace zem::play
