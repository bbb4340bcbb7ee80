// Words that players must type and that look misspelt: nothing that they read has them.
#include "base/LineText.h"
#include "model/Texts.h"
#include "play/Fold.h"
#include "problems/Checks.h"
#include "problems/PrintedTexts.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace zem::problems {

namespace {

constexpr std::size_t ShortestWord = 4; // of shorter ones any two look alike
constexpr std::size_t Shortest = 3;     // where there are few to compare with

/// A word of a name or a pattern.
struct TypedWord {
    Place place;
    int count = 0;
    bool isPattern = false; // of a command
};

using TypedWords = std::map<std::string, TypedWord>; // in order, so that the same is said everywhere

void AddWords(const Place& place, std::string_view text, bool isPattern, TypedWords& words) {
    ForEachWord(text, [&](TextRange range) {
        if (range.Size() < Shortest)
            return;
        Place at = place;
        at.bytes = range;
        TypedWord& word = words[play::Fold(range.Of(text))];
        ++word.count;
        word.place = at;
        word.isPattern = isPattern;
    });
}

/// The pattern with its variables blanked out, which players do not type.
std::string WithoutVariables(std::string_view pattern) {
    std::string words(pattern);
    ForEachVariable(pattern, [&](TextRange range, char sign) {
        if (sign == '#')
            std::fill(words.begin() + static_cast<std::ptrdiff_t>(range.begin),
                      words.begin() + static_cast<std::ptrdiff_t>(range.end), '#');
        return sign == '#';
    });
    return words;
}

TypedWords CollectTyped(const CheckedGame& game) {
    TypedWords words;
    ForEachText(game.Game(), [&](const Place& place, FieldUse use, const std::string& text) {
        const bool isName = use.kind == FieldKind::Name &&
                            (use.names == NameKind::Object || use.names == NameKind::Character ||
                             use.names == NameKind::Item || use.names == NameKind::Room);
        if (isName)
            AddWords(place, text, false, words);
        else if (use.kind == FieldKind::Pattern)
            AddWords(place, WithoutVariables(text), true, words);
    });
    return words;
}

/// Words of the verbs that every game has, and those that may stand around names.
constexpr std::string_view BuiltInWords =
    "north n northeast ne east e southeast se south s southwest sw west w northwest nw out o exit leave up "
    "down in go walk run enter look l around at examine x read inspect take get pick up drop put down use on "
    "with give to offer show speak talk ask greet inventory inv i items wait z help save restore load "
    "restart "
    "quit q undo about version transcript off oops again g the a an some my it him her them me myself self "
    "yourself of from for and";

/// What players of any game try. A word that looks like one of them, and is none, was hardly meant.
constexpr std::string_view CommonWords =
    "answer apologise attack awake balance bang bathe beat bend blow board borrow bounce bow break bribe "
    "bring brush build burn bury buy call carry catch celebrate chase check cheer chew chop clap clean clear "
    "climb close collect comb come cook count cover crawl cross crush cry curse cut dance descend destroy "
    "dial "
    "dig dive drag draw drink drive dry dust eat empty escape explore extinguish fasten feed feel fetch "
    "fight "
    "fill find fish fix flip float flush fly fold follow free gather grab hang heat hide hit hold hug ignite "
    "insert jump kick kill kiss kneel knock laugh launch lean leap lick lie lift light listen load lock "
    "lower "
    "melt mend mix mount move open operate order paint pause pay peel pinch plant play please plug point "
    "polish pour pray press promise pull pump punch push raise reach recite remove repair replace rescue "
    "rest "
    "return ride ring rinse roll rotate row rub sail saw scan scatter scrape scratch scream screw search "
    "seize sell send sew shake sharpen shoot shout shove sign sing sit skip sleep slice slide smash smell "
    "smile smoke sneeze solve spill spin splash spray squeeze stab stamp stand start steal step stir stop "
    "strike study summon surrender swallow sweep swim swing switch taste tear tell think throw tickle tie "
    "touch trade translate trap turn twist type unfold unlock unroll unscrew untie unwrap wait wake wash "
    "watch "
    "water wave weigh whisper whistle wind wipe wish wrap write xyzzy yell yes";

/// Short words as numbers, in a table that is searched from where the number sends it. A large game has
/// millions of words, nearly all of which are there already: this tells so in a few steps.
class ShortWords {
public:
    static constexpr std::size_t Longest = 8; // letters, a byte of the number each

    /// Whether the number was not there yet. It is not 0.
    bool Add(std::uint64_t word) {
        if ((count_ + 1) * 2 > table_.size())
            Grow();
        std::uint64_t& slot = SlotOf(word);
        if (slot == word)
            return false;
        slot = word;
        ++count_;
        return true;
    }

private:
    std::uint64_t& SlotOf(std::uint64_t word) {
        std::size_t at = (word * 0x9E3779B97F4A7C15U) >> 20U;
        for (;; ++at) {
            std::uint64_t& slot = table_[at & (table_.size() - 1)];
            if (slot == 0 || slot == word)
                return slot;
        }
    }

    void Grow() {
        std::vector<std::uint64_t> old(table_.size() * 2);
        old.swap(table_);
        for (const std::uint64_t word : old)
            if (word != 0)
                SlotOf(word) = word;
    }

    std::vector<std::uint64_t> table_ =
        std::vector<std::uint64_t>(1024); // 0 where nothing is; a power of two
    std::size_t count_ = 0;
};

/// Words as they are compared.
class WordSet {
public:
    /// @param word  of a text, in any capitals
    void Add(std::string_view word) {
        std::uint64_t number = 0;
        unsigned high = 0;
        if (word.size() <= ShortWords::Longest) {
            for (const char c : word) {
                number = number << 8U | static_cast<unsigned char>(Lower(c));
                high |= static_cast<unsigned char>(c);
            }
            if (high < 0x80 && number != 0 && !short_.Add(number))
                return;
        }
        const std::string folded = play::Fold(word);
        if (!known_.contains(folded))
            known_.insert(words_.emplace_back(folded));
    }

    bool contains(std::string_view folded) const { return known_.contains(folded); }
    auto begin() const { return words_.begin(); }
    auto end() const { return words_.end(); }

private:
    ShortWords short_;
    std::deque<std::string> words_; // do not move
    std::unordered_set<std::string_view> known_;
};

void AddTo(WordSet& words, std::string_view text) {
    ForEachWord(text, [&](TextRange range) { words.Add(range.Of(text)); });
}

/// All words that players read, and what else the game calls things by.
WordSet CollectRead(const CheckedGame& game) {
    WordSet words;
    AddTo(words, BuiltInWords);
    for (const PrintedText& text : game.Prints())
        AddTo(words, text.text);
    for (const SynonymEntry& synonym : game.Game().Synonyms) {
        AddTo(words, synonym.Words);
        AddTo(words, synonym.ConvertTo);
    }
    for (const Procedure& procedure : game.Game().Procedures)
        AddTo(words, procedure.Name);
    return words;
}

/// All words that mean something when a player types them. A library that is missing may know others.
WordSet CollectUnderstood(const CheckedGame& game) {
    WordSet words;
    AddTo(words, BuiltInWords);
    const auto addGame = [&](const GameModel& model) {
        ForEachText(model, [&](const Place& place, FieldUse use, const std::string& text) {
            const bool isPart = place.field == FieldId::ThingPrefix || place.field == FieldId::ThingSuffix ||
                                place.field == FieldId::RoomPrefix || place.field == FieldId::RoomAlias;
            if (use.kind == FieldKind::Name || isPart || place.field == FieldId::SynonymWords)
                AddTo(words, text);
            else if (use.kind == FieldKind::Pattern)
                AddTo(words, WithoutVariables(text));
        });
    };
    addGame(game.Game());
    for (const GameModel& library : game.LibraryGames())
        addGame(library);
    return words;
}

/// Whether one is the plural of the other: "lamp" and "lamps".
bool IsFormOf(std::string_view a, std::string_view b) {
    const auto isPlural = [](std::string_view one, std::string_view many) {
        return many.size() == one.size() + 1 && many.starts_with(one) && many.back() == 's';
    };
    return isPlural(a, b) || isPlural(b, a);
}

/// A word that players read and that differs by one letter; empty for none.
std::string_view NeighbourOf(std::string_view word, const WordSet& read) {
    for (const std::string& other : read) {
        if (other != word && other.size() >= Shortest && !IsFormOf(other, word) &&
            LettersApart(other, word, 1) <= 1)
            return other;
    }
    return {};
}

void FindMisspelt(const CheckedGame& game, Findings& findings) {
    const TypedWords typed = CollectTyped(game);
    const WordSet read = CollectRead(game);
    WordSet common;
    AddTo(common, CommonWords);
    constexpr std::size_t MostAsked = 300; // a game that has more has a language of its own
    WordSet names;
    std::vector<std::string_view> asked;
    for (const auto& [word, use] : typed) {
        names.Add(word);
        if (use.count == 1 && !read.contains(word) && !common.contains(word))
            asked.push_back(word);
    }
    asked.resize(std::min(asked.size(), MostAsked));
    for (const std::string_view word : asked) {
        const TypedWord& use = typed.find(std::string(word))->second;
        const char* where = "one has ";
        std::string_view neighbour =
            word.size() < ShortestWord ? std::string_view() : NeighbourOf(word, read);
        if (neighbour.empty()) {
            where = "another name or pattern has ";
            neighbour = NeighbourOf(word, names);
        }
        if (neighbour.empty() && use.isPattern && word.size() >= ShortestWord) {
            where = "players may well type ";
            neighbour = NeighbourOf(word, common);
        }
        if (!neighbour.empty())
            findings.Add("T14", use.place,
                         "No text has the word " + QuoteShortly(word) +
                             ", which players must type here, but " + where + QuoteShortly(neighbour) + '.');
    }
}

/// Whether some command takes any line at all, because its pattern begins with a variable.
bool HasOpenPattern(const CheckedGame& game) {
    bool isOpen = false;
    ForEachText(game.Game(), [&](const Place&, FieldUse use, const std::string& text) {
        if (use.kind == FieldKind::Pattern)
            for (const std::string_view pattern : SplitAt(text, ";"))
                isOpen |= Trim(pattern).starts_with('#');
    });
    return isOpen;
}

/// What a synonym or a script makes of the player's line should be words that mean something. Others may
/// still be what a pattern's variable takes, so only those are told that look like one that does.
void FindNotUnderstood(const CheckedGame& game, Findings& findings) {
    const WordSet understood = CollectUnderstood(game);
    const bool isAllKnown = game.Input().libraries->missing.empty() && !HasOpenPattern(game);
    const auto look = [&](const Place& place, std::string_view text, bool isLine) {
        const std::string words = WithoutVariables(text);
        bool isFirst = isLine && isAllKnown;
        ForEachWord(words, [&](TextRange range) {
            const bool mustBeKnown = std::exchange(isFirst, false) && words.find('#') > range.begin;
            const std::string word = play::Fold(range.Of(words));
            if ((word.size() < Shortest && !mustBeKnown) || understood.contains(word))
                return;
            const std::string_view neighbour =
                word.size() < Shortest ? std::string_view() : NeighbourOf(word, understood);
            if (neighbour.empty() && !mustBeKnown)
                return;
            Place at = place;
            at.bytes = {place.bytes.begin + range.begin, place.bytes.begin + range.end};
            findings.Add("T14", at,
                         "No verb, pattern or name has the word " + QuoteShortly(word) +
                             (neighbour.empty() ? "." : ", but one has " + QuoteShortly(neighbour) + '.'));
        });
    };
    int entry = 0;
    for (const SynonymEntry& synonym : game.Game().Synonyms)
        look(Place::Of({{FieldId::GameSynonyms, ++entry}}, FieldId::SynonymConvertTo), synonym.ConvertTo,
             false);
    for (const CheckedCall* call : game.CallsOf("type"))
        if (!call->parts.empty())
            look(call->At(0), call->Part(0), true);
}

/// Words on the left of synonyms that are a letter away from one that every game knows.
void FindMisspeltSynonyms(const CheckedGame& game, Findings& findings) {
    WordSet verbs;
    AddTo(verbs, BuiltInWords);
    int entry = 0;
    for (const SynonymEntry& synonym : game.Game().Synonyms) {
        ++entry;
        ForEachWord(synonym.Words, [&](TextRange range) {
            const std::string word = play::Fold(range.Of(synonym.Words));
            if (word.size() < ShortestWord + 1 || verbs.contains(word))
                return;
            const std::string_view neighbour = NeighbourOf(word, verbs);
            if (!neighbour.empty())
                findings.Add("T14", Place::Of({{FieldId::GameSynonyms, entry}}, FieldId::SynonymWords, range),
                             QuoteShortly(word) + " is a letter away from " + QuoteShortly(neighbour) + '.');
        });
    }
}

void FindInTypedWords(const CheckedGame& game, Findings& findings) {
    FindMisspelt(game, findings);
    FindMisspeltSynonyms(game, findings);
    FindNotUnderstood(game, findings);
}

} // namespace

std::span<const Check> MisspeltNameChecks() {
    static constexpr Check Rows[] = {
        {"T14", Level::Hint, "Words to type that look misspelt", FindInTypedWords},
    };
    return Rows;
}

} // namespace zem::problems
