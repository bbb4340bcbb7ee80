// What players type: the words that synonyms replace.
#include "base/LineText.h"
#include "play/Sentence.h"
#include "problems/Checks.h"
#include "problems/Fixes.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace zem::problems {

namespace {

/// One of the words, or rows of words, on the left of a line.
struct Word {
    int entry = 0;
    TextRange bytes; // of SynonymEntry::Words
    std::string folded;
};

Place At(const Word& word) {
    return Place::Of({{FieldId::GameSynonyms, word.entry}}, FieldId::SynonymWords, word.bytes);
}

std::vector<Word> WordsOf(const GameModel& game) {
    std::vector<Word> words;
    int entry = 0;
    for (const SynonymEntry& synonym : game.Synonyms) {
        ++entry;
        const std::string_view text = synonym.Words;
        for (std::size_t begin = 0; begin <= text.size();) {
            const std::size_t end = std::min(text.find(';', begin), text.size());
            const TextRange range = TrimmedRange(text, {begin, end});
            words.push_back({entry, range, play::Fold(range.Of(text))});
            begin = end + 1;
        }
    }
    return words;
}

/// Takes the word off its line, and the line away when it was the only one.
Fix RemoveWord(const GameModel& game, const Word& word) {
    const std::string& words = game.Synonyms[word.entry].Words;
    std::string rest;
    for (const std::string_view piece : SplitAt(words, ";"))
        if (Trim(piece).data() != words.data() + word.bytes.begin && !Trim(piece).empty())
            rest.append(rest.empty() ? "" : "; ").append(Trim(piece));
    const Place record = Place::Of({{FieldId::GameSynonyms, word.entry}});
    if (rest.empty())
        return RemoveRecord("Remove it", record);
    return SetField("Remove " + QuoteShortly(word.bytes.Of(words)), At(word).WholeField(), words, rest);
}

void FindEmptySides(const CheckedGame& game, Findings& findings) {
    int entry = 0;
    for (const SynonymEntry& synonym : game.Game().Synonyms) {
        ++entry;
        const Place place = Place::Of({{FieldId::GameSynonyms, entry}});
        const bool isLeftEmpty = play::Fold(synonym.Words).find_first_not_of("; ") == std::string::npos;
        const bool isRightEmpty = play::Fold(synonym.ConvertTo).empty();
        if (!isLeftEmpty && !isRightEmpty)
            continue;
        Problem& problem =
            findings.Add("Y05", place,
                         isRightEmpty ? "Nothing stands on the right, so these words are not replaced."
                                      : "Nothing stands on the left, so the line does nothing.");
        if (isLeftEmpty)
            problem.level = Level::Hint;
        problem.fixes = {RemoveRecord("Remove it", place)};
    }
}

/// The words of a line that come to the same, found by what they look like folded.
void FindTwice(const CheckedGame& game, const std::vector<Word>& words, Findings& findings) {
    const GameModel& model = game.Game();
    std::unordered_map<std::string_view, const Word*> first;
    for (const Word& word : words) {
        const std::string& result = model.Synonyms[word.entry].ConvertTo;
        if (word.folded.empty() || play::Fold(result).empty())
            continue;
        const std::string_view written = word.bytes.Of(model.Synonyms[word.entry].Words);
        if (word.folded == play::Fold(result)) {
            Problem& problem = findings.Add(
                "Y02", At(word), QuoteShortly(written) + " is replaced by itself, which changes nothing.");
            problem.fixes = {RemoveWord(model, word)};
            problem.fixes.front().needsNoChoice = true;
            continue;
        }
        const auto [known, isNew] = first.emplace(word.folded, &word);
        if (isNew)
            continue;
        const std::string& earlier = model.Synonyms[known->second->entry].ConvertTo;
        if (play::Fold(earlier) != play::Fold(result)) {
            findings.Add("Y03", At(word),
                         QuoteShortly(written) + " is replaced by " + QuoteShortly(earlier) +
                             " already, so it never becomes " + QuoteShortly(result) + '.');
            continue;
        }
        Problem& problem =
            findings.Add("Y03", At(word), QuoteShortly(written) + " is replaced by the same words already.");
        problem.level = Level::Hint;
        problem.fixes = {RemoveWord(model, word)};
    }
}

struct Rules {
    std::vector<play::SynonymRule> rules;
    std::vector<int> entries; // of the rules

    explicit Rules(const GameModel& game) {
        int entry = 0;
        for (const SynonymEntry& synonym : game.Synonyms) {
            ++entry;
            if (auto rule = play::ReadSynonym(synonym.Words, synonym.ConvertTo)) {
                rules.push_back(*std::move(rule));
                entries.push_back(entry);
            }
        }
    }

    /// The first rule that changes the sentence; nothing when none does.
    std::optional<std::size_t> FirstFor(const play::Sentence& sentence) const {
        for (std::size_t k = 0; k < rules.size(); ++k)
            if (play::ReplaceSynonyms(sentence, {rules[k]}).folded.text != sentence.folded.text)
                return k;
        return std::nullopt;
    }
};

/// The rules that make something else of a row of words, by the row: at most two, which are all that a look
/// for another rule than the own one needs.
std::unordered_map<std::string, std::vector<std::size_t>> RulesByRow(const GameModel& game,
                                                                     const Rules& rules) {
    std::unordered_map<std::string, std::vector<std::size_t>> found;
    for (std::size_t k = 0; k < rules.rules.size(); ++k) {
        const std::string result = play::Fold(game.Synonyms[rules.entries[k]].ConvertTo);
        for (const std::vector<std::string>& row : rules.rules[k].words) {
            std::string words;
            for (const std::string& word : row)
                words.append(words.empty() ? "" : " ").append(word);
            if (words == result)
                continue; // the line replaces the words by themselves
            std::vector<std::size_t>& of = found[words];
            if (of.size() < 2 && (of.empty() || of.back() != k))
                of.push_back(k);
        }
    }
    return found;
}

void FindChains(const CheckedGame& game, const Rules& rules, Findings& findings) {
    const GameModel& model = game.Game();
    const auto rulesByRow = RulesByRow(model, rules);
    for (std::size_t k = 0; k < rules.rules.size(); ++k) {
        const int entry = rules.entries[k];
        const std::string& result = model.Synonyms[entry].ConvertTo;
        const auto row = rulesByRow.find(play::Fold(result));
        if (row == rulesByRow.end())
            continue;
        const std::vector<std::size_t>& of = row->second;
        const auto other = std::find_if(of.begin(), of.end(), [&](std::size_t rule) { return rule != k; });
        if (other == of.end())
            continue;
        const std::string& last = model.Synonyms[rules.entries[*other]].ConvertTo;
        const Place place = Place::Of({{FieldId::GameSynonyms, entry}}, FieldId::SynonymConvertTo);
        findings
            .Add("Y04", place,
                 QuoteShortly(result) + " is itself replaced by " + QuoteShortly(last) +
                     (*other > k ? ", so that is what the words on the left come to."
                                 : ", but in a line above this one, so the words on the left do not come "
                                   "to that."))
            .fixes = {SetField(ChangeTo(last), place, result, last)};
    }
}

/// Names of things and items that nobody can type, because a synonym makes something else of them.
class NameSearch {
public:
    NameSearch(const CheckedGame& game, const std::vector<Word>& words, const Rules& rules,
               Findings& findings)
        : game_(game.Game()),
          words_(words),
          rules_(rules),
          findings_(findings) {
        for (const play::SynonymRule& rule : rules_.rules)
            for (const std::vector<std::string>& row : rule.words)
                beginnings_.insert(row.front());
    }

    void Run() {
        for (const Room& room : game_.Rooms) {
            for (const Thing& thing : room.Characters)
                Look(thing.Name, thing.Prefix, thing.Suffix);
            for (const Thing& thing : room.Objects)
                Look(thing.Name, thing.Prefix, thing.Suffix);
        }
        for (const ItemEntry& item : game_.Items)
            Look(item.Name, {}, {});
    }

private:
    void Look(const std::string& name, const std::string& prefix, const std::string& suffix) {
        if (rules_.rules.empty() || !seen_.insert(name).second)
            return;
        const std::string folded = play::Fold(name);
        const std::vector<std::string_view> parts = play::WordsOf(folded);
        if (std::none_of(parts.begin(), parts.end(),
                         [&](std::string_view part) { return beginnings_.contains(std::string(part)); }))
            return;
        const play::NameForms forms{folded, play::Fold(prefix), play::Fold(suffix)};
        const play::Sentence typed(name);
        const std::string made = play::ReplaceSynonyms(typed, rules_.rules).folded.text;
        if (made == forms.name || play::FitOf(play::WithoutArticles(made), forms) != play::Fit::No)
            return;
        const std::optional<std::size_t> rule = rules_.FirstFor(typed);
        if (!rule)
            return;
        for (const Word& word : words_)
            if (word.entry == rules_.entries[*rule] && Holds(forms.name, word.folded)) {
                findings_
                    .Add("Y01", At(word),
                         "Who types " + QuoteShortly(name) + " is taken to mean " + QuoteShortly(made) +
                             ", so nobody can type the name of what is called so.")
                    .fixes = {RemoveWord(game_, word)};
                return;
            }
    }

    /// Whether the words stand in the name.
    static bool Holds(const std::string& name, const std::string& words) {
        return !words.empty() && (' ' + name + ' ').find(' ' + words + ' ') != std::string::npos;
    }

    const GameModel& game_;
    const std::vector<Word>& words_;
    const Rules& rules_;
    Findings& findings_;
    std::unordered_set<std::string> beginnings_; // the first words of what is replaced
    std::unordered_set<std::string> seen_;
};

void FindInSynonyms(const CheckedGame& game, Findings& findings) {
    const std::vector<Word> words = WordsOf(game.Game());
    const Rules rules(game.Game());
    FindEmptySides(game, findings);
    FindTwice(game, words, findings);
    FindChains(game, rules, findings);
    NameSearch(game, words, rules, findings).Run();
}

} // namespace

std::span<const Check> SynonymChecks() {
    static constexpr Check Rows[] = {
        {"Y01", Level::Warning, "Synonyms that hide a name", FindInSynonyms},
        {"Y02", Level::Warning, "Words replaced by themselves", FindInSynonyms},
        {"Y03", Level::Error, "Words with two replacements", FindInSynonyms},
        {"Y04", Level::Warning, "Replacements that are replaced themselves", FindInSynonyms},
        {"Y05", Level::Error, "Synonyms with an empty side", FindInSynonyms},
    };
    return Rows;
}

} // namespace zem::problems
