#pragma once

#include "play/NameSearch.h"

namespace zem::play {

/// A phrase parted at one of its words.
struct Halves {
    std::string_view before;
    std::string_view after;
};

/// Understands the verbs that every game has.
class VerbParser {
public:
    VerbParser(const World& world, const State& state, const std::optional<Choice>& choice, std::size_t& work)
        : world_(world),
          state_(state),
          choice_(choice),
          names_(world, state, choice, work) {}

    /// What a folded sentence means, its synonyms replaced; nothing when it begins with none of the verbs.
    std::optional<Meaning> Parse(std::string_view sentence) const;

private:
    std::optional<Meaning> ParseMove(std::string_view sentence) const;
    std::optional<Meaning> ParseNamed(std::string_view sentence) const;

    Meaning GoTo(std::string_view name) const;
    Meaning LookAt(std::string_view name) const;
    Meaning Take(std::string_view name) const;
    Meaning Drop(std::string_view name) const;
    Meaning Use(std::string_view rest) const;
    std::optional<Halves> BestWay(const std::vector<Halves>& ways) const;
    Meaning UseOn(std::string_view item, std::string_view thing) const;
    Meaning Give(std::string_view rest) const;
    Meaning GiveTo(std::string_view item, std::string_view whom) const;
    Meaning SpeakTo(std::string_view name) const;

    /// The message, or the list of what may be meant, when a search did not find one thing.
    std::optional<Meaning> Unclear(const Found& found, std::string_view phrase) const;
    Meaning Ambiguous(const Found& found, std::string_view phrase) const;
    bool IsAnyThingListed() const;

    const World& world_;
    const State& state_;
    const std::optional<Choice>& choice_;
    NameSearch names_;
};

} // namespace zem::play
