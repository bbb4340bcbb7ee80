#pragma once

#include "base/TextRange.h"
#include "kel/ProseParts.h"
#include "spelling/Dictionary.h"
#include "spelling/GameWords.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace zem::spelling {

/// The word without the ending of an English genitive.
std::string_view WithoutGenitive(std::string_view word);

/// Whether what stands between two signs of variables is one: a name of a few words.
struct IsLikeVariable {
    bool operator()(std::string_view name) const;
};

/// Tells the words that nobody knows. A copy is cheap, and good on any thread.
class Speller {
public:
    /// @param dictionary  null where there is none: then every word is known
    Speller(std::shared_ptr<const Dictionary> dictionary, std::shared_ptr<const GameWords> words)
        : dictionary_(std::move(dictionary)),
          words_(std::move(words)) {}
    Speller() = default;

    /// Whether words are checked at all.
    bool IsOn() const { return dictionary_ != nullptr; }

    /// Whether the word is right: letters, apostrophes and hyphens. One of several parts is, too, when all
    /// its parts are.
    bool Knows(std::string_view word) const;

    const std::shared_ptr<const Dictionary>& Words() const { return dictionary_; }

private:
    bool KnowsPart(std::string_view word) const;

    std::shared_ptr<const Dictionary> dictionary_;
    std::shared_ptr<const GameWords> words_ = std::make_shared<GameWords>();
};

/// A word as it is checked.
struct CheckedWord {
    TextRange range; // of the text, never with a code inside
    std::string_view
        word;            // good during the call only; more than the range where a code stands inside the word
    bool isWhole = true; // the range holds the whole word
};

namespace detail {

/// A word with format codes inside: its letters, and what stands behind the last code.
template <class Visit>
void VisitWithoutCodes(std::string_view text, TextRange range, Visit visit) {
    std::string letters;
    std::size_t at = range.begin; // behind the last code
    ForEachProsePart(range.Of(text), [&](const ProsePart& inner) {
        if (inner.kind != ProseKind::Code)
            return;
        letters += text.substr(at, range.begin + inner.range.begin - at);
        at = range.begin + inner.range.end;
    });
    letters += TextRange{at, range.end}.Of(text);
    visit(CheckedWord{{at, range.end}, letters, false});
}

} // namespace detail

/// Calls visit(word) for the words of a printed text that are spelled: not those with digits, nor those that
/// go on in a variable.
template <class Visit>
void ForEachCheckedWord(std::string_view text, Visit visit) {
    ForEachProsePart(
        text,
        [&](const ProsePart& part) {
            if (part.kind != ProseKind::Word || part.hasDigit || part.touchesVariable)
                return;
            if (part.hasCode)
                detail::VisitWithoutCodes(text, part.range, visit);
            else
                visit(CheckedWord{part.range, part.range.Of(text)});
        },
        IsLikeVariable());
}

/// Calls visit(part) for the parts of an unknown word that are unknown themselves.
template <class Visit>
void ForEachUnknownPart(const CheckedWord& word, const Speller& speller, Visit visit) {
    if (!word.isWhole) {
        visit(word);
        return;
    }
    for (std::size_t begin = 0; begin <= word.word.size();) {
        const std::size_t end = std::min(word.word.find('-', begin), word.word.size());
        // A part has no apostrophes around it, as no word has.
        TextRange part{begin, end};
        while (!part.IsEmpty() && !IsProseLetter(word.word[part.begin]))
            ++part.begin;
        while (!part.IsEmpty() && !IsProseLetter(word.word[part.end - 1]))
            --part.end;
        if (part.IsEmpty() || speller.Knows(part.Of(word.word))) {
            begin = end + 1;
            continue;
        }
        part.end = part.begin + WithoutGenitive(part.Of(word.word)).size();
        visit(CheckedWord{{word.range.begin + part.begin, word.range.begin + part.end}, part.Of(word.word)});
        begin = end + 1;
    }
}

/// Calls visit(word) for the words of a printed text that the speller does not know; of a word of several
/// parts only the parts that it does not know.
template <class Visit>
void ForEachUnknownWord(std::string_view text, const Speller& speller, Visit visit) {
    if (!speller.IsOn())
        return;
    ForEachCheckedWord(text, [&](const CheckedWord& word) {
        if (!speller.Knows(word.word))
            ForEachUnknownPart(word, speller, visit);
    });
}

/// Whether the byte of a text stands within a sentence, so that a capital there is the word's own.
bool IsInMidSentence(std::string_view text, std::size_t byte);

} // namespace zem::spelling
