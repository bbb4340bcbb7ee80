#include "pieces/FreeNames.h"

#include "base/LineText.h"
#include "game/References.h"
#include "game/TextChanges.h"
#include "game/Timers.h"
#include "model/Texts.h"

#include <charconv>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace zem {

namespace {

/// The space of names that a kind belongs to.
NameKind SpaceOf(NameKind kind) {
    return kind == NameKind::Object || kind == NameKind::Character ? NameKind::Thing : kind;
}

using NamesBySpace = std::map<NameKind, std::set<std::string>>; // in small letters

/// What a game calls its records, internal procedures aside, which have numbers.
NamesBySpace NamesOf(const GameModel& game) {
    NamesBySpace names;
    ForEachText(game, [&](const Place& place, FieldUse use, const std::string& text) {
        const bool isEmptyStandard = use.names == NameKind::TextSection && IsStandardText(Trim(text)) &&
                                     use.kind == FieldKind::Name &&
                                     game.TextSections[place.steps.front().entry].Text.empty();
        if (use.kind == FieldKind::Name && !isEmptyStandard)
            names[SpaceOf(use.names)].insert(Lower(Trim(text)));
    });
    for (const GameTimer& timer : ReadTimers(*game.UnknownBlocks))
        names[NameKind::Timer].insert(Lower(Trim(timer.name)));
    return names;
}

/// The name with the next number behind it: "lamp 2" for "lamp", "lamp 3" for "lamp 2".
class Numbered {
public:
    /// @param blank  what stands before the number
    Numbered(const std::string& name, const char* blank) : stem_(name), blank_(blank) {
        const std::size_t last = name.find_last_not_of("0123456789");
        if (last == std::string::npos || last + 1 == name.size() || name.size() - last > 6)
            return;
        if (*blank != '\0' && name[last] != ' ')
            return;
        std::from_chars(name.data() + last + 1, name.data() + name.size(), number_);
        stem_ = Trim(std::string_view(name).substr(0, last + 1));
    }

    std::string Next() { return stem_ + blank_ + std::to_string(++number_); }

private:
    std::string stem_;
    std::string blank_;
    int number_ = 1;
};

class NameGiver {
public:
    NameGiver(GameModel& piece, const GameModel& game, const CommandLookup& commands)
        : piece_(piece),
          taken_(NamesOf(game)),
          references_(commands) {
        references_.GoOnTo(piece);
    }

    std::vector<NameChange> Run() {
        FindDefined();
        for (const auto& [name, kind] : defined_)
            GiveName(SpaceOf(kind), name, kind);
        if (changes_.empty())
            return {};
        std::vector<TextChange> texts;
        references_.ForEach([&](const Reference& reference) {
            if (reference.role == ReferenceRole::MayMean || reference.sign != 0)
                return;
            const auto found = newNames_.find({SpaceOf(reference.kind), std::string(reference.name)});
            if (found != newNames_.end())
                texts.push_back({reference.place, found->second});
        });
        MakeChanges(piece_, std::move(texts));
        return std::move(changes_);
    }

private:
    void FindDefined() {
        references_.ForEach([&](const Reference& reference) {
            if (reference.role != ReferenceRole::Definition || BeginsWith(reference.name, InternalProcedure))
                return;
            const NameKind space = SpaceOf(reference.kind);
            if (own_[space].insert(std::string(reference.name)).second)
                defined_.emplace_back(reference.name, reference.kind);
            ownLower_[space].insert(Lower(reference.name));
        });
    }

    bool IsTaken(NameKind space, const std::string& name) { return taken_[space].contains(Lower(name)); }

    bool IsFree(NameKind space, const std::string& name) {
        return !IsTaken(space, name) && !ownLower_[space].contains(Lower(name));
    }

    void GiveName(NameKind space, const std::string& name, NameKind kind) {
        const NameKind other = space == NameKind::Thing  ? NameKind::Item
                               : space == NameKind::Item ? NameKind::Thing
                                                         : NameKind::None;
        const bool hasTwin = other != NameKind::None && own_[other].contains(name);
        if (!IsTaken(space, name) && !(hasTwin && IsTaken(other, name)))
            return;
        if (hasTwin)
            if (const auto twin = newNames_.find({other, name}); twin != newNames_.end())
                return Take(space, name, kind, twin->second);
        // In the list of collectables a blank ends the name.
        Numbered numbered(name, kind == NameKind::Collectable ? "" : " ");
        std::string free = numbered.Next();
        while (!IsFree(space, free) || (hasTwin && !IsFree(other, free)))
            free = numbered.Next();
        Take(space, name, kind, free);
    }

    void Take(NameKind space, const std::string& name, NameKind kind, const std::string& free) {
        newNames_[{space, name}] = free;
        ownLower_[space].insert(Lower(free));
        changes_.push_back({kind, name, free});
    }

    GameModel& piece_;
    NamesBySpace taken_;
    ReferenceIndex references_;
    std::vector<std::pair<std::string, NameKind>> defined_; // each once, in the order of the piece
    NamesBySpace own_;                                      // as they are written
    NamesBySpace ownLower_;
    std::map<std::pair<NameKind, std::string>, std::string> newNames_;
    std::vector<NameChange> changes_;
};

} // namespace

std::vector<NameChange> MakeNamesFree(GameModel& piece, const GameModel& game,
                                      const CommandLookup& commands) {
    return NameGiver(piece, game, commands).Run();
}

} // namespace zem
