#pragma once

#include "play/Meaning.h"

#include <optional>
#include <string_view>
#include <vector>

namespace zem::play {

/// What a phrase of the player names.
struct Found {
    enum Result : std::uint8_t { Nothing, One, Many, NoName };
    Result result = Nothing;
    Reference one;
    std::vector<Reference> many; // with different names, in the order of the file
};

/// Looks for what a player may have named, among what can be meant.
class NameSearch {
public:
    NameSearch(const World& world, const State& state, const std::optional<Choice>& choice, std::size_t& work)
        : world_(world),
          state_(state),
          choice_(choice),
          work_(work) {}

    enum class Had { Yes, No, Either };

    /// @param phrase  folded; empty for no name
    Found ThingHere(std::string_view phrase) const { return Search(phrase, ThingsHere()); }
    Found Item(std::string_view phrase, Had had) const { return Search(phrase, ItemsHad(had)); }
    Found Among(std::string_view phrase, const std::vector<Reference>& candidates) const {
        return Search(phrase, candidates);
    }

    /// What can be named in the room: things that are there.
    std::vector<Reference> ThingsHere() const;

    /// The name under which a reference is told and compared.
    std::string_view NameOf(const Reference& reference) const;

private:
    Found Search(std::string_view phrase, const std::vector<Reference>& candidates) const;
    Found SearchPronoun(Reference meant, const std::vector<Reference>& candidates) const;
    std::optional<Reference> PronounMeans(std::string_view phrase) const;
    std::vector<Reference> ItemsHad(Had had) const;
    Fit FitOfReference(std::string_view phrase, const Reference& reference) const;

    const World& world_;
    const State& state_;
    const std::optional<Choice>& choice_;
    std::size_t& work_;
};

/// True when the player can do something with a thing: it is available, not hidden, and in his room.
bool IsThere(const World& world, const State& state, Number thing);

} // namespace zem::play
