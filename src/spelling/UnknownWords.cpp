#include "spelling/UnknownWords.h"

#include "base/KelError.h"
#include "base/LineText.h"
#include "figures/PrintedWords.h"
#include "game/TextChanges.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <utility>

namespace zem::spelling {

namespace {

/// What was found of each word, by its letters. It is asked for every word of a game, so it is a plain table
/// that stays small: entries beside one another, an empty one ends the search.
class WordTable {
public:
    struct Entry {
        std::string_view word; // empty for none; in the game, or kept here
        bool isKnown = false;
        std::int32_t unknown = -1; // its number among the unknown words
    };

    WordTable() : entries_(InitialSize) {}

    /// The entry of the word, a new one if it has none; good until the next call.
    /// @param isKept  whether the letters outlive the table
    std::pair<Entry*, bool> Find(std::string_view word, bool isKept) {
        if (used_ * 2 > entries_.size())
            Grow();
        Entry* entry = Look(word);
        if (!entry->word.empty())
            return {entry, false};
        entry->word = isKept ? word : std::string_view(kept_.emplace_back(word));
        ++used_;
        return {entry, true};
    }

private:
    static constexpr std::size_t InitialSize = 1 << 13;

    static std::size_t HashOf(std::string_view word) {
        std::uint64_t hash = word.size();
        for (const char c : word)
            hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3ULL;
        return static_cast<std::size_t>(hash ^ (hash >> 29));
    }

    Entry* Look(std::string_view word) {
        for (std::size_t at = HashOf(word);; ++at) {
            Entry& entry = entries_[at & (entries_.size() - 1)];
            if (entry.word.empty() || entry.word == word)
                return &entry;
        }
    }

    void Grow() {
        const std::vector<Entry> before = std::exchange(entries_, std::vector<Entry>(entries_.size() * 2));
        for (const Entry& entry : before)
            if (!entry.word.empty())
                *Look(entry.word) = entry;
    }

    std::vector<Entry> entries_; // a power of two of them
    std::size_t used_ = 0;
    std::deque<std::string> kept_;
};

/// Calls visit(field, begin, text) for what is checked of a game: pieces of the texts of fields, with the
/// byte at which they begin there.
template <class Visit>
void ForEachProse(const GameModel& game, const CommandLookup& commands, Visit visit) {
    // Its lines are packed in one, and it knows no codes.
    const Place info = Place::Of({}, FieldId::GameInfo);
    for (std::size_t begin = 0; begin < game.GameInfo.size();) {
        const std::size_t end = std::min(game.GameInfo.find("|n", begin), game.GameInfo.size());
        visit(info, begin, std::string_view(game.GameInfo).substr(begin, end - begin));
        begin = end + 2;
    }
    figures::VisitPrintedTexts(game, commands,
                               [&](const Place& place, figures::PrintKind, TextRange bytes,
                                   const std::string& text) { visit(place, bytes.begin, bytes.Of(text)); });
}

/// Whether the bytes of a word are a part that ForEachUnknownPart would give.
bool IsPartOfWord(std::string_view word, TextRange bytes) {
    std::size_t begin = bytes.begin;
    while (begin > 0 && word[begin - 1] != '-' && !IsProseLetter(word[begin - 1]))
        --begin;
    const std::size_t end = std::min(word.find('-', bytes.end), word.size());
    std::string_view part = word.substr(bytes.begin, end - bytes.begin);
    while (!part.empty() && !IsProseLetter(part.back()))
        part.remove_suffix(1);
    return (begin == 0 || word[begin - 1] == '-') &&
           (part.size() == bytes.Size() || WithoutGenitive(part).size() == bytes.Size());
}

class GameCheck {
public:
    explicit GameCheck(const Speller& speller) : speller_(speller) {}

    void Check(const Place& place, std::size_t begin, std::string_view text) {
        place_ = &place;
        begin_ = begin;
        text_ = text;
        ForEachCheckedWord(text, [&](const CheckedWord& word) {
            ++words_;
            CheckWord(word);
        });
    }

    CheckedTexts Result() {
        std::vector<UnknownWord>& unknown = unknown_;
        for (std::size_t k = 0; k < unknown.size(); ++k)
            unknown[k].looksLikeName = isNameLike_[k] && unknown[k].count >= 3;
        std::sort(unknown.begin(), unknown.end(), [](const UnknownWord& a, const UnknownWord& b) {
            if (a.count != b.count)
                return a.count > b.count;
            const std::string lowerA = Lower(a.word), lowerB = Lower(b.word);
            return lowerA != lowerB ? lowerA < lowerB : a.word < b.word;
        });
        return {words_, std::move(unknown)};
    }

private:
    void CheckWord(const CheckedWord& word) {
        const auto [entry, isNew] = table_.Find(word.word, word.isWhole);
        if (isNew)
            entry->isKnown = speller_.Knows(word.word);
        if (entry->isKnown)
            return;
        ForEachUnknownPart(word, speller_, [&](const CheckedWord& part) { AddUnknown(part); });
    }

    void AddUnknown(const CheckedWord& word) {
        WordTable::Entry& entry = *table_.Find(word.word, word.isWhole).first;
        if (entry.unknown < 0) {
            entry.unknown = static_cast<std::int32_t>(unknown_.size());
            unknown_.push_back({std::string(word.word), 0, {}, false});
            isNameLike_.push_back(false);
        }
        const auto number = static_cast<std::size_t>(entry.unknown);
        UnknownWord& unknown = unknown_[number];
        ++unknown.count;
        if (unknown.places.size() < UnknownWord::MostPlaces) {
            unknown.places.push_back(*place_);
            unknown.places.back().bytes = {begin_ + word.range.begin, begin_ + word.range.end};
        }
        if (!isNameLike_[number])
            isNameLike_[number] =
                Lower(word.word.front()) != word.word.front() && IsInMidSentence(text_, word.range.begin);
    }

    const Speller& speller_;
    WordTable table_;
    std::vector<UnknownWord> unknown_;
    std::vector<bool> isNameLike_;
    std::size_t words_ = 0;
    const Place* place_ = nullptr; // what is checked now
    std::size_t begin_ = 0;
    std::string_view text_;
};

} // namespace

CheckedTexts CheckTexts(const GameModel& game, const CommandLookup& commands, const Speller& speller,
                        const std::atomic<bool>* isOutdated) {
    if (!speller.IsOn())
        return {};
    GameCheck check(speller);
    ForEachProse(game, commands, [&](const Place& place, std::size_t begin, std::string_view text) {
        if (isOutdated == nullptr || !*isOutdated)
            check.Check(place, begin, text);
    });
    return check.Result();
}

bool CanBeWritten(std::string_view word) {
    return !Trim(word).empty() && std::none_of(word.begin(), word.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20;
    }) && word.find_first_of("<>|#%;{}") == std::string_view::npos;
}

std::size_t CorrectEverywhere(GameModel& game, const CommandLookup& commands, std::string_view word,
                              std::string_view correct) {
    if (!CanBeWritten(correct))
        throw KelError("a word of a text has none of the signs < > | # % ; { } in it");
    std::vector<TextChange> changes;
    ForEachProse(game, commands, [&](const Place& place, std::size_t begin, std::string_view text) {
        const auto add = [&](TextRange range) {
            Place found = place;
            found.bytes = {begin + range.begin, begin + range.end};
            changes.push_back({found, std::string(correct)});
        };
        if (text.find(word) == std::string_view::npos)
            return;
        ForEachCheckedWord(text, [&](const CheckedWord& checked) {
            if (!checked.isWhole)
                return;
            // A part of a word, or all of it: nothing but hyphens and the like beside it.
            for (std::size_t at = checked.word.find(word); at != std::string_view::npos;
                 at = checked.word.find(word, at + word.size())) {
                const TextRange range{at, at + word.size()};
                if (IsPartOfWord(checked.word, range))
                    add({checked.range.begin + range.begin, checked.range.begin + range.end});
            }
        });
    });
    const std::size_t count = changes.size();
    if (count > 0)
        MakeChanges(game, std::move(changes));
    return count;
}

} // namespace zem::spelling
