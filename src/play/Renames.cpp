#include "play/Renames.h"

namespace zem::play {

namespace {

template <class Records, class KeyOf>
void Compare(Kind kind, const Records& before, const Records& after, KeyOf keyOf,
             std::vector<Renamed>& renamed) {
    if (before.Count() != after.Count())
        return;
    for (int k = 1; k <= before.Count(); ++k)
        if (before[k].Name != after[k].Name)
            renamed.push_back({kind, keyOf(before[k].Name), keyOf(after[k].Name)});
}

std::string Itself(const std::string& name) {
    return name;
}

} // namespace

std::vector<Renamed> FindRenames(const GameModel& before, const GameModel& after) {
    std::vector<Renamed> renamed;
    Compare(Kind::Room, before.Rooms, after.Rooms, Itself, renamed);
    Compare(Kind::Item, before.Items, after.Items, Itself, renamed);
    Compare(Kind::Collectable, before.Collectables, after.Collectables, Itself, renamed);
    for (int k = 1; before.Rooms.Count() == after.Rooms.Count() && k <= before.Rooms.Count(); ++k) {
        const Room& old = before.Rooms[k];
        const Room& now = after.Rooms[k];
        if (&old == &now) // both versions share the record
            continue;
        Compare(
            Kind::Thing, old.Characters, now.Characters,
            [](const std::string& name) { return Names::ThingKey(true, name); }, renamed);
        Compare(
            Kind::Thing, old.Objects, now.Objects,
            [](const std::string& name) { return Names::ThingKey(false, name); }, renamed);
    }
    return renamed;
}

} // namespace zem::play
