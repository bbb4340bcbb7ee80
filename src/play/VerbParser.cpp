#include "play/VerbParser.h"

#include <algorithm>
#include <array>

namespace zem::play {

namespace {

struct WholeLine {
    std::string_view words;
    Verb verb;
};

constexpr WholeLine WholeLines[] = {
    {"up", Verb::NoWay},
    {"down", Verb::NoWay},
    {"in", Verb::NoWay},
    {"look", Verb::Look},
    {"l", Verb::Look},
    {"look around", Verb::Look},
    {"inventory", Verb::Inventory},
    {"inv", Verb::Inventory},
    {"i", Verb::Inventory},
    {"items", Verb::Inventory},
    {"wait", Verb::Wait},
    {"z", Verb::Wait},
    {"help", Verb::Help},
    {"save", Verb::Save},
    {"restore", Verb::Restore},
    {"load", Verb::Restore},
    {"restart", Verb::RestartGame},
    {"quit", Verb::Quit},
    {"q", Verb::Quit},
    {"undo", Verb::Undo},
    {"about", Verb::About},
    {"version", Verb::About},
    {"transcript", Verb::TranscriptOn},
    {"transcript on", Verb::TranscriptOn},
    {"transcript off", Verb::TranscriptOff},
};

struct DirectionWord {
    std::string_view word;
    Direction direction;
};

constexpr DirectionWord DirectionWords[] = {
    {"north", Direction::North},
    {"n", Direction::North},
    {"northeast", Direction::NorthEast},
    {"ne", Direction::NorthEast},
    {"east", Direction::East},
    {"e", Direction::East},
    {"southeast", Direction::SouthEast},
    {"se", Direction::SouthEast},
    {"south", Direction::South},
    {"s", Direction::South},
    {"southwest", Direction::SouthWest},
    {"sw", Direction::SouthWest},
    {"west", Direction::West},
    {"w", Direction::West},
    {"northwest", Direction::NorthWest},
    {"nw", Direction::NorthWest},
    {"out", Direction::Out},
    {"o", Direction::Out},
    {"exit", Direction::Out},
    {"leave", Direction::Out},
};

Meaning Fails(Verb verb, Message message) {
    Meaning meaning;
    meaning.verb = verb;
    meaning.message = message;
    meaning.fails = true;
    return meaning;
}

Meaning NotUnderstood(Message message) {
    Meaning meaning;
    meaning.message = message;
    return meaning;
}

Meaning Does(Verb verb, const Reference& first, const Reference& second = {}) {
    Meaning meaning;
    meaning.verb = verb;
    meaning.first = first;
    meaning.second = second;
    return meaning;
}

/// What follows a verb, nothing when the sentence does not begin with it. The verb may be the whole sentence.
std::optional<std::string_view> After(std::string_view sentence, std::string_view verb) {
    if (!sentence.starts_with(verb))
        return std::nullopt;
    if (sentence.size() == verb.size())
        return std::string_view();
    if (sentence[verb.size()] != ' ')
        return std::nullopt;
    return sentence.substr(verb.size() + 1);
}

/// The ways to part a phrase at a word, from left to right; with no word, between any two of its words.
std::vector<Halves> PartAtWord(std::string_view phrase, std::string_view word) {
    std::vector<Halves> ways;
    for (std::size_t blank = phrase.find(' '); blank != std::string_view::npos;
         blank = phrase.find(' ', blank + 1)) {
        std::string_view after = phrase.substr(blank + 1);
        if (!word.empty()) {
            const std::optional<std::string_view> behind = After(after, word);
            if (!behind)
                continue;
            after = *behind;
        }
        ways.push_back({phrase.substr(0, blank), after});
    }
    return ways;
}

} // namespace

std::optional<Meaning> VerbParser::Parse(std::string_view sentence) const {
    for (const WholeLine& line : WholeLines)
        if (sentence == line.words) {
            Meaning meaning;
            meaning.verb = line.verb;
            return meaning;
        }
    if (auto meaning = ParseMove(sentence))
        return meaning;
    return ParseNamed(sentence);
}

std::optional<Meaning> VerbParser::ParseMove(std::string_view sentence) const {
    std::string_view where = sentence;
    bool isGo = false;
    for (const std::string_view verb : {"go", "walk", "run"})
        if (const auto rest = After(sentence, verb)) {
            where = *rest;
            isGo = true;
        }
    if (isGo && where.empty())
        return NotUnderstood(Message::NeedName);
    for (const DirectionWord& word : DirectionWords)
        if (where == word.word) {
            Meaning meaning;
            meaning.verb = Verb::Go;
            meaning.direction = static_cast<std::uint8_t>(word.direction);
            return meaning;
        }
    if (isGo && (where == "up" || where == "down" || where == "in"))
        return Does(Verb::NoWay, {});
    if (const auto name = After(where, "to"))
        return GoTo(*name);
    if (const auto name = After(sentence, "enter"))
        return GoTo(*name);
    return std::nullopt;
}

std::optional<Meaning> VerbParser::ParseNamed(std::string_view sentence) const {
    struct Named {
        std::string_view verb;
        Meaning (VerbParser::*parse)(std::string_view) const;
    };
    static constexpr std::array<Named, 23> Verbs = {{
        {"look at", &VerbParser::LookAt},   {"examine", &VerbParser::LookAt},
        {"x", &VerbParser::LookAt},         {"read", &VerbParser::LookAt},
        {"inspect", &VerbParser::LookAt},   {"take", &VerbParser::Take},
        {"get", &VerbParser::Take},         {"pick up", &VerbParser::Take},
        {"drop", &VerbParser::Drop},        {"put down", &VerbParser::Drop},
        {"use", &VerbParser::Use},          {"give", &VerbParser::Give},
        {"offer", &VerbParser::Give},       {"show", &VerbParser::Give},
        {"speak to", &VerbParser::SpeakTo}, {"speak with", &VerbParser::SpeakTo},
        {"talk to", &VerbParser::SpeakTo},  {"talk with", &VerbParser::SpeakTo},
        {"speak", &VerbParser::SpeakTo},    {"talk", &VerbParser::SpeakTo},
        {"ask", &VerbParser::SpeakTo},      {"greet", &VerbParser::SpeakTo},
        {"l at", &VerbParser::LookAt},
    }};
    for (const Named& named : Verbs)
        if (const auto rest = After(sentence, named.verb))
            return (this->*named.parse)(*rest);
    return std::nullopt;
}

Meaning VerbParser::Ambiguous(const Found& found, std::string_view phrase) const {
    Meaning meaning = NotUnderstood(Message::Ambiguous);
    meaning.choices = found.many;
    meaning.phrase = WithoutArticles(phrase);
    const std::size_t count = found.many.size();
    for (std::size_t k = 0; k < count; ++k) {
        meaning.detail += k == 0 ? "the " : k + 1 < count ? ", the " : " or the ";
        meaning.detail += names_.NameOf(found.many[k]);
    }
    meaning.detail += '?';
    return meaning;
}

std::optional<Meaning> VerbParser::Unclear(const Found& found, std::string_view phrase) const {
    if (found.result == Found::NoName)
        return NotUnderstood(Message::NeedName);
    if (found.result == Found::Many)
        return Ambiguous(found, phrase);
    return std::nullopt;
}

Meaning VerbParser::GoTo(std::string_view name) const {
    const std::string_view phrase = WithoutArticles(name);
    if (phrase.empty())
        return NotUnderstood(Message::NeedName);
    const WorldRoom* room =
        state_[PlayerRoom] == 0 ? nullptr : world_.FindRoom(static_cast<Number>(state_[PlayerRoom] - 1));
    if (room == nullptr)
        return NotUnderstood(Message::BadPlace);
    const auto fitOfRoom = [&](const WorldRoom* there, const std::string& prefix) {
        if (there == nullptr)
            return Fit::No;
        const Fit alias =
            there->foldedAlias.empty() ? Fit::No : FitOf(phrase, {there->foldedAlias, prefix, {}});
        return std::max(FitOf(phrase, {there->forms.name, prefix, {}}), alias);
    };
    Meaning best = NotUnderstood(Message::BadPlace);
    Fit bestFit = Fit::No;
    std::vector<Number> rooms; // that fit best
    const auto offer = [&](Fit fit, Number there, const Meaning& meaning) {
        const bool isOther = choice_ && choice_->phrase == phrase && choice_->meant.kind == Reference::Room &&
                             choice_->meant.number != there;
        if (fit == Fit::No || fit < bestFit || isOther)
            return;
        if (fit > bestFit) {
            bestFit = fit;
            rooms.clear();
            best = meaning;
        }
        if (std::find(rooms.begin(), rooms.end(), there) == rooms.end())
            rooms.push_back(there);
    };
    for (std::size_t k = 0; k < room->places.size(); ++k) {
        Meaning meaning;
        meaning.verb = Verb::GoToPlace;
        meaning.place = k;
        offer(fitOfRoom(world_.FindRoom(room->places[k].room), room->places[k].foldedPrefix),
              room->places[k].room, meaning);
    }
    if (rooms.empty())
        for (std::uint8_t k = 0; k < static_cast<std::uint8_t>(Direction::Out); ++k) {
            const Number leadsTo = ExitLeadsTo(world_, state_, *room, k);
            Meaning meaning;
            meaning.verb = Verb::Go;
            meaning.direction = k;
            if (leadsTo != None)
                if (const WorldRoom* there = world_.FindRoom(leadsTo))
                    offer(fitOfRoom(there, there->forms.prefix), leadsTo, meaning);
        }
    if (rooms.size() <= 1)
        return best;
    Meaning meaning = NotUnderstood(Message::Ambiguous);
    for (std::size_t k = 0; k < rooms.size(); ++k) {
        meaning.detail += k == 0 ? "the " : k + 1 < rooms.size() ? ", the " : " or the ";
        meaning.detail += world_.GetNames().Name(Kind::Room, rooms[k]);
        meaning.choices.push_back({Reference::Room, rooms[k]});
    }
    meaning.detail += '?';
    meaning.phrase = phrase;
    return meaning;
}

bool VerbParser::IsAnyThingListed() const {
    const std::vector<Reference> things = names_.ThingsHere();
    return std::any_of(things.begin(), things.end(), [&](const Reference& thing) {
        return !world_.FindThing(thing.number)->record->Invisible;
    });
}

Meaning VerbParser::LookAt(std::string_view name) const {
    if (name.empty())
        return NotUnderstood(IsAnyThingListed() ? Message::NeedName : Message::NothingHere);
    Found found = names_.ThingHere(name);
    if (found.result == Found::Nothing)
        found = names_.Item(name, NameSearch::Had::Yes);
    if (auto unclear = Unclear(found, name))
        return *unclear;
    return found.result == Found::One ? Does(Verb::LookAt, found.one) : NotUnderstood(Message::BadExamine);
}

Meaning VerbParser::Take(std::string_view name) const {
    Found found = names_.ThingHere(name);
    if (found.result == Found::Nothing && names_.Item(name, NameSearch::Had::Yes).result == Found::One)
        return Fails(Verb::Take, Message::AlreadyTaken);
    if (auto unclear = Unclear(found, name))
        return *unclear;
    if (found.result != Found::One || found.one.kind == Reference::Player)
        return NotUnderstood(Message::BadThing);
    return Does(Verb::Take, found.one);
}

Meaning VerbParser::Drop(std::string_view name) const {
    const Found found = names_.Item(name, NameSearch::Had::Yes);
    if (auto unclear = Unclear(found, name))
        return *unclear;
    if (found.result != Found::One || found.one.kind == Reference::Player)
        return Fails(Verb::Drop, Message::NoItem);
    return Does(Verb::Drop, found.one);
}

std::optional<Halves> VerbParser::BestWay(const std::vector<Halves>& ways) const {
    // The name of an item may have such a word itself, so the way that makes the most sense is taken.
    std::optional<Halves> best;
    int bestSense = -1;
    for (const Halves& way : ways) {
        const Found had = names_.Item(way.before, NameSearch::Had::Yes);
        const Found any = names_.Item(way.before, NameSearch::Had::Either);
        const int sense = (had.result == Found::One ? 8 : 0) + (any.result == Found::One ? 4 : 0) +
                          (any.result != Found::Nothing ? 2 : 0) +
                          (names_.ThingHere(way.after).result != Found::Nothing ? 1 : 0);
        if (sense > bestSense)
            best = way;
        bestSense = std::max(bestSense, sense);
    }
    return best;
}

Meaning VerbParser::Use(std::string_view rest) const {
    const Found whole = names_.Item(rest, NameSearch::Had::Yes);
    std::vector<Halves> ways = PartAtWord(rest, "on");
    const std::vector<Halves> withs = PartAtWord(rest, "with");
    ways.insert(ways.end(), withs.begin(), withs.end());
    if (whole.result != Found::One && !ways.empty()) {
        const Halves way = *BestWay(ways);
        return UseOn(way.before, way.after);
    }
    if (auto unclear = Unclear(whole, rest))
        return *unclear;
    if (whole.result == Found::One && whole.one.kind == Reference::Item)
        return Does(Verb::Use, whole.one);
    if (names_.Item(rest, NameSearch::Had::No).result != Found::Nothing && whole.result == Found::Nothing)
        return Fails(Verb::Use, Message::NoItem);
    if (names_.ThingHere(rest).result == Found::One && whole.result == Found::Nothing)
        return Fails(Verb::Use, Message::BadUse);
    return NotUnderstood(Message::BadThing);
}

Meaning VerbParser::UseOn(std::string_view item, std::string_view thing) const {
    const Found what = names_.Item(item, NameSearch::Had::Yes);
    if (auto unclear = Unclear(what, item))
        return *unclear;
    if (what.result != Found::One || what.one.kind == Reference::Player)
        return Fails(Verb::UseOn, Message::NoItem);
    const Found on = names_.ThingHere(thing);
    if (auto unclear = Unclear(on, thing))
        return *unclear;
    if (on.result != Found::One || on.one.kind == Reference::Player)
        return NotUnderstood(Message::BadThing);
    return Does(Verb::UseOn, what.one, on.one);
}

Meaning VerbParser::Give(std::string_view rest) const {
    if (rest.empty())
        return NotUnderstood(Message::NeedName);
    if (const std::optional<Halves> way = BestWay(PartAtWord(rest, "to")))
        return GiveTo(way->before, way->after);
    if (names_.Item(rest, NameSearch::Had::Either).result != Found::Nothing)
        return GiveTo(rest, {});
    for (const NameSearch::Had had : {NameSearch::Had::Yes, NameSearch::Had::Either})
        for (const Halves& way : PartAtWord(rest, {}))
            if (names_.ThingHere(way.before).result != Found::Nothing &&
                names_.Item(way.after, had).result != Found::Nothing)
                return GiveTo(way.after, way.before);
    return GiveTo(rest, {});
}

Meaning VerbParser::GiveTo(std::string_view item, std::string_view whom) const {
    const Found what = names_.Item(item, NameSearch::Had::Yes);
    if (auto unclear = Unclear(what, item))
        return *unclear;
    if (what.result != Found::One || what.one.kind == Reference::Player)
        return Fails(Verb::Give, Message::NoItem);
    if (whom.empty())
        return NotUnderstood(Message::BadGiveTo);
    const Found to = names_.ThingHere(whom);
    if (auto unclear = Unclear(to, whom))
        return *unclear;
    if (to.result != Found::One || to.one.kind == Reference::Player)
        return NotUnderstood(Message::BadCharacter);
    return Does(Verb::Give, what.one, to.one);
}

Meaning VerbParser::SpeakTo(std::string_view name) const {
    const Found found = names_.ThingHere(name);
    if (auto unclear = Unclear(found, name))
        return *unclear;
    return found.result == Found::One ? Does(Verb::SpeakTo, found.one) : NotUnderstood(Message::BadSpeak);
}

} // namespace zem::play
