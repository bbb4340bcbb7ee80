#pragma once

#include "play/Fold.h"
#include "play/Names.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What a player's line is made of, and what may be meant by it.
namespace zem::play {

/// A line, as typed and as it is compared.
struct Sentence {
    std::string typed;
    FoldedText folded;

    explicit Sentence(std::string line) : typed(std::move(line)), folded(FoldWithPlaces(typed)) {}
};

/// One pattern of a command: "give #what# to #whom#".
struct Pattern {
    std::vector<std::string> literals; // folded; one more than there are variables
    std::vector<Number> variables;
    std::vector<bool> hasDashBefore; // whether the author put one between a variable and the word before it

    bool IsEmpty() const { return variables.empty() && literals.front().empty(); }
};

/// The patterns of a command line, between its ";". Those with nothing in them are left out.
std::vector<Pattern> ReadPatterns(Names& names, std::string_view text);

/// What the variables of a pattern take, as typed.
using Captures = std::vector<std::pair<Number, std::string>>;

/// The captures of a whole sentence, nothing when the pattern does not match it. Each variable takes at least
/// one character, each but the last as few as possible.
std::optional<Captures> MatchPattern(const Pattern& pattern, const Sentence& sentence);

/// One line of synonyms.
struct SynonymRule {
    std::vector<std::vector<std::string>> words; // each a row of folded words
    std::vector<std::string> result;             // the folded words that replace them
    std::vector<std::string> written;            // the same as the author wrote them
};

/// Reads a line of synonyms; nothing when a side is empty.
std::optional<SynonymRule> ReadSynonym(std::string_view words, std::string_view result);

/// The sentence with all synonyms replaced, each rule in turn over the whole sentence.
Sentence ReplaceSynonyms(const Sentence& sentence, const std::vector<SynonymRule>& rules);

/// Sentences stop growing there.
inline constexpr std::size_t MostWords = 200;

/// The name of something, as a player may type it. All parts are folded.
struct NameForms {
    std::string name;
    std::string prefix;
    std::string suffix;
};

/// How well a phrase names something.
enum class Fit { No, Words, Whole };

/// @param phrase  folded, without articles at its front
Fit FitOf(std::string_view phrase, const NameForms& forms);

} // namespace zem::play
