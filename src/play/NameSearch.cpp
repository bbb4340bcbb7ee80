#include "play/NameSearch.h"

#include <algorithm>

namespace zem::play {

namespace {

// More would help no player, and comparing all their names would take long.
constexpr std::size_t MostMeant = 50;

} // namespace

bool IsThere(const World& world, const State& state, Number thing) {
    if (thing == None || world.FindThing(thing) == nullptr || state[PlayerRoom] == 0)
        return false;
    const Cell cell = world.GetNames().CellOf(Kind::Thing, thing);
    return state[cell + Where] == state[PlayerRoom] && state[cell + Switches] == 0;
}

std::vector<Reference> NameSearch::ThingsHere() const {
    std::vector<Reference> things;
    if (state_[PlayerRoom] == 0)
        return things;
    for (const Number thing : state_.ThingsIn(state_[PlayerRoom])) {
        work_ += 4;
        if (IsThere(world_, state_, thing))
            things.push_back({Reference::Thing, thing});
    }
    return things;
}

std::vector<Reference> NameSearch::ItemsHad(Had had) const {
    std::vector<Reference> items;
    for (const WorldItem& item : world_.Items()) {
        const bool isHad = state_[world_.GetNames().CellOf(Kind::Item, item.number)] != 0;
        work_ += 2;
        if (had == Had::Either || isHad == (had == Had::Yes))
            items.push_back({Reference::Item, item.number});
    }
    return items;
}

std::string_view NameSearch::NameOf(const Reference& reference) const {
    if (reference.kind == Reference::Item)
        return world_.FindItem(reference.number) == nullptr ? std::string_view()
                                                            : world_.FindItem(reference.number)->name;
    return world_.FindThing(reference.number) == nullptr ? std::string_view()
                                                         : world_.FindThing(reference.number)->record->Name;
}

Fit NameSearch::FitOfReference(std::string_view phrase, const Reference& reference) const {
    if (reference.kind == Reference::Thing)
        return FitOf(phrase, world_.FindThing(reference.number)->forms);
    return FitOf(phrase, {world_.FindItem(reference.number)->folded, {}, {}});
}

std::optional<Reference> NameSearch::PronounMeans(std::string_view phrase) const {
    if (phrase == "it")
        return Reference::Unpack(state_[LastIt]);
    if (phrase == "him")
        return Reference::Unpack(state_[LastHe]);
    if (phrase == "her")
        return Reference::Unpack(state_[LastShe]);
    if (phrase == "them")
        return Reference::Unpack(state_[LastAny]);
    return std::nullopt;
}

Found NameSearch::SearchPronoun(Reference meant, const std::vector<Reference>& candidates) const {
    if (meant.kind == Reference::Nothing)
        return {Found::NoName, {}, {}};
    // An item goes by the name of the object that it was taken from, so IT means both.
    for (const Reference& candidate : candidates)
        if (candidate == meant)
            return {Found::One, candidate, {}};
    for (const Reference& candidate : candidates)
        if (candidate.kind != meant.kind && NameOf(candidate) == NameOf(meant))
            return {Found::One, candidate, {}};
    return {};
}

Found NameSearch::Search(std::string_view phrase, const std::vector<Reference>& candidates) const {
    phrase = WithoutArticles(phrase);
    if (phrase.empty())
        return {Found::NoName, {}, {}};
    if (phrase == "me" || phrase == "myself" || phrase == "self" || phrase == "yourself")
        return {Found::One, {Reference::Player, 0}, {}};
    if (const std::optional<Reference> meant = PronounMeans(phrase))
        return SearchPronoun(*meant, candidates);
    if (choice_ && choice_->phrase == phrase &&
        std::find(candidates.begin(), candidates.end(), choice_->meant) != candidates.end())
        return {Found::One, choice_->meant, {}};

    Fit best = Fit::Words;
    std::vector<Reference> fitting;
    for (const Reference& candidate : candidates) {
        work_ += 16;
        const Fit fit = FitOfReference(phrase, candidate);
        if (fit == Fit::No || fit < best)
            continue;
        if (fit > best)
            fitting.clear();
        best = fit;
        const bool hasNewName = std::none_of(fitting.begin(), fitting.end(), [&](const Reference& other) {
            return NameOf(other) == NameOf(candidate);
        });
        if (hasNewName && fitting.size() < MostMeant)
            fitting.push_back(candidate);
    }
    if (fitting.empty())
        return {};
    if (fitting.size() == 1)
        return {Found::One, fitting.front(), {}};
    return {Found::Many, {}, std::move(fitting)};
}

} // namespace zem::play
