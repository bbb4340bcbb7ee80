#include "play/Names.h"

namespace zem::play {

namespace {

/// How many cells a name of the kind has.
std::size_t CellsOf(Kind kind) {
    switch (kind) {
    case Kind::Room:
        return RoomCells;
    case Kind::Thing:
        return ThingCells;
    case Kind::Timer:
        return TimerCells;
    case Kind::Item:
    case Kind::Flag:
    case Kind::Variable:
    case Kind::Collectable:
        return 1;
    default:
        return 0;
    }
}

CellUse FirstUseOf(Kind kind) {
    if (kind == Kind::Variable)
        return CellUse::Text;
    return kind == Kind::Thing ? CellUse::Where : CellUse::Plain;
}

} // namespace

Names::Names() {
    AddCells(FixedCells, CellUse::Plain, None);
    uses_[Colour] = CellUse::Text;
    uses_[FontName] = CellUse::Text;
}

Number Names::Add(Kind kind, std::string_view name) {
    Space& space = Of(kind);
    if (const auto found = space.numbers.find(name); found != space.numbers.end())
        return found->second;
    const auto number = static_cast<Number>(space.names.size());
    space.numbers.emplace(name, number);
    space.names.emplace_back(name);
    space.cells.push_back(static_cast<Cell>(uses_.size()));
    AddCells(CellsOf(kind), FirstUseOf(kind), number);
    return number;
}

Number Names::Find(Kind kind, std::string_view name) const {
    const Space& space = Of(kind);
    const auto found = space.numbers.find(name);
    return found == space.numbers.end() ? None : found->second;
}

void Names::AddCells(std::size_t count, CellUse firstUse, Number owner) {
    for (std::size_t k = 0; k < count; ++k) {
        uses_.push_back(k == 0 ? firstUse : CellUse::Plain);
        owners_.push_back(owner);
    }
}

std::string Names::ThingKey(bool isCharacter, std::string_view name, int occurrence) {
    std::string key(1, isCharacter ? 'c' : 'o');
    key.append(name);
    if (occurrence > 1)
        key.append(1, '\n').append(std::to_string(occurrence));
    return key;
}

} // namespace zem::play
