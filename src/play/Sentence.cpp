#include "play/Sentence.h"

#include "base/LineText.h"
#include "play/Book.h"

#include <algorithm>
#include <utility>

namespace zem::play {

namespace {

Pattern ReadPattern(Names& names, std::string_view text) {
    Pattern pattern;
    Folder folder;
    bool hasDash = false; // since the last letter
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::size_t close = text[at] == '#' ? text.find('#', at + 1) : std::string_view::npos;
        if (close == std::string_view::npos || close == at + 1) {
            folder.Add(text[at], 0);
            hasDash = IsDash(text[at]) || (hasDash && text[at] == ' ');
            continue;
        }
        pattern.hasDashBefore.push_back(std::exchange(hasDash, false));
        pattern.variables.push_back(names.Add(Kind::Variable, text.substr(at + 1, close - at - 1)));
        folder.AddMark();
        at = close;
    }
    const std::string folded = folder.Take().text;
    for (const std::string_view literal : SplitAt(folded, std::string_view(&VariableMark, 1)))
        pattern.literals.emplace_back(literal);
    return pattern;
}

} // namespace

std::vector<Pattern> ReadPatterns(Names& names, std::string_view text) {
    std::vector<Pattern> patterns;
    for (const std::string_view part : SplitAt(text, ";"))
        if (Pattern pattern = ReadPattern(names, part); !pattern.IsEmpty())
            patterns.push_back(std::move(pattern));
    return patterns;
}

namespace {

/// What the player typed for a variable. A dash at its front, as that of "bet -5", is compared as a blank
/// like any other but belongs to what was typed, unless the author's pattern has one there, or it hangs on to
/// the word before it as in "sign-Ann".
std::string Captured(const Sentence& sentence, std::size_t at, std::size_t stop, bool isDashOfPattern) {
    const std::string_view typed = sentence.typed;
    const FoldedText& folded = sentence.folded;
    const std::string_view captured = folded.Original(typed, at, stop);
    if (isDashOfPattern || captured.empty())
        return std::string(captured);
    std::size_t begin = folded.origin[at];
    while (begin > 0 && (IsDash(typed[begin - 1]) || typed[begin - 1] == ' '))
        --begin;
    if (begin > 0 && IsDash(typed[begin]))
        return std::string(captured);
    const auto end = static_cast<std::size_t>(captured.data() + captured.size() - typed.data());
    return std::string(Trim(typed.substr(begin, end - begin)));
}

} // namespace

std::optional<Captures> MatchPattern(const Pattern& pattern, const Sentence& sentence) {
    const std::string& text = sentence.folded.text;
    const std::string& first = pattern.literals.front();
    const std::string& last = pattern.literals.back();
    if (pattern.variables.empty())
        return text == first ? std::optional<Captures>(Captures()) : std::nullopt;
    if (text.size() < first.size() + last.size() || !text.starts_with(first) || !text.ends_with(last))
        return std::nullopt;
    const std::size_t end = text.size() - last.size();
    Captures captures;
    std::size_t at = first.size();
    for (std::size_t k = 0; k < pattern.variables.size(); ++k) {
        std::size_t stop = end;
        if (k + 1 < pattern.variables.size()) {
            stop = text.find(pattern.literals[k + 1], at + 1);
            if (stop == std::string::npos || stop + pattern.literals[k + 1].size() > end)
                return std::nullopt;
        }
        if (stop <= at)
            return std::nullopt;
        captures.emplace_back(pattern.variables[k], Captured(sentence, at, stop, pattern.hasDashBefore[k]));
        at = stop + (k + 1 < pattern.variables.size() ? pattern.literals[k + 1].size() : 0);
    }
    return captures;
}

std::optional<SynonymRule> ReadSynonym(std::string_view words, std::string_view result) {
    SynonymRule rule;
    for (const std::string_view part : SplitAt(words, ";")) {
        std::vector<std::string> row;
        const std::string folded = Fold(part);
        for (const std::string_view word : WordsOf(folded))
            row.emplace_back(word);
        if (!row.empty())
            rule.words.push_back(std::move(row));
    }
    const FoldedText folded = FoldWithPlaces(result);
    std::size_t at = 0;
    for (const std::string_view word : WordsOf(folded.text)) {
        rule.result.emplace_back(word);
        rule.written.emplace_back(folded.Original(result, at, at + word.size()));
        at += word.size() + 1;
    }
    if (rule.words.empty() || rule.result.empty())
        return std::nullopt;
    return rule;
}

namespace {

/// A word of a sentence while its synonyms are replaced.
struct SentenceWord {
    std::string folded;
    std::string typed;
    std::string gap = " "; // what was typed before it
};

std::vector<SentenceWord> TakeWords(const Sentence& sentence) {
    std::vector<SentenceWord> words;
    std::size_t at = 0;
    std::size_t typedEnd = 0;
    const FoldedText& folded = sentence.folded;
    for (const std::string_view word : WordsOf(folded.text)) {
        const std::size_t begin = folded.origin[at];
        const std::size_t end = folded.origin[at + word.size() - 1] + std::size_t{1};
        words.push_back({std::string(word), sentence.typed.substr(begin, end - begin),
                         begin > typedEnd ? sentence.typed.substr(typedEnd, begin - typedEnd) : " "});
        typedEnd = end;
        at += word.size() + 1;
    }
    return words;
}

bool StandAt(const std::vector<SentenceWord>& words, std::size_t at, const std::vector<std::string>& wanted) {
    if (wanted.size() > words.size() - at)
        return false;
    for (std::size_t k = 0; k < wanted.size(); ++k)
        if (words[at + k].folded != wanted[k])
            return false;
    return true;
}

/// True when the words at `at` are a part of what would replace them, and the rest of it stands around them.
bool StandInResult(const std::vector<SentenceWord>& words, std::size_t at, const SynonymRule& rule,
                   const std::vector<std::string>& row) {
    for (std::size_t k = 0; k + row.size() <= rule.result.size() && k <= at; ++k)
        if (std::equal(row.begin(), row.end(), rule.result.begin() + static_cast<std::ptrdiff_t>(k)) &&
            StandAt(words, at - k, rule.result))
            return true;
    return false;
}

/// Replaces what stands at `at`; gives the place behind what was put in or passed over.
std::size_t ReplaceAt(std::vector<SentenceWord>& words, std::size_t at, const SynonymRule& rule) {
    for (const std::vector<std::string>& row : rule.words) {
        if (!StandAt(words, at, row))
            continue;
        if (StandInResult(words, at, rule, row) || words.size() - row.size() + rule.result.size() > MostWords)
            return at + row.size();
        std::vector<SentenceWord> put;
        for (std::size_t k = 0; k < rule.result.size(); ++k)
            put.push_back({rule.result[k], rule.written[k], k == 0 ? words[at].gap : " "});
        const auto begin = words.begin() + static_cast<std::ptrdiff_t>(at);
        words.insert(words.erase(begin, begin + static_cast<std::ptrdiff_t>(row.size())), put.begin(),
                     put.end());
        return at + put.size();
    }
    return at + 1;
}

} // namespace

Sentence ReplaceSynonyms(const Sentence& sentence, const std::vector<SynonymRule>& rules) {
    if (rules.empty())
        return sentence;
    std::vector<SentenceWord> words = TakeWords(sentence);
    for (const SynonymRule& rule : rules)
        for (std::size_t at = 0; at < words.size();)
            at = ReplaceAt(words, at, rule);
    std::string typed;
    for (const SentenceWord& word : words)
        typed.append(typed.empty() ? "" : word.gap).append(word.typed);
    return Sentence(std::move(typed));
}

namespace {

bool HasWord(std::string_view folded, std::string_view word) {
    while (!folded.empty())
        if (TakeWord(folded) == word)
            return true;
    return false;
}

bool IsJoined(std::string_view phrase, std::string_view a, std::string_view b, std::string_view c) {
    std::string joined;
    for (const std::string_view part : {a, b, c})
        if (!part.empty())
            joined.append(joined.empty() ? "" : " ").append(part);
    return WithoutArticles(joined) == phrase;
}

} // namespace

Fit FitOf(std::string_view phrase, const NameForms& forms) {
    bool namesIt = false;
    for (std::string_view rest = phrase; !rest.empty();) {
        const std::string_view word = TakeWord(rest);
        const bool isOfName = HasWord(forms.name, word);
        if (!isOfName && !HasWord(forms.prefix, word) && !HasWord(forms.suffix, word))
            return Fit::No;
        namesIt = namesIt || isOfName;
    }
    if (!namesIt)
        return Fit::No;
    const bool isWhole = WithoutArticles(forms.name) == phrase ||
                         IsJoined(phrase, forms.prefix, forms.name, {}) ||
                         IsJoined(phrase, forms.name, forms.suffix, {}) ||
                         IsJoined(phrase, forms.prefix, forms.name, forms.suffix);
    return isWhole ? Fit::Whole : Fit::Words;
}

} // namespace zem::play
