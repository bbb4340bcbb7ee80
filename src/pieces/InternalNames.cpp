#include "pieces/InternalNames.h"

#include "base/KelError.h"
#include "model/Texts.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <unordered_map>

namespace zem {

namespace {

constexpr int LastInternalNumber = 32766; // the counter of the next one goes one further

/// The numbers of a game's internal procedures.
std::set<int> NumbersOf(const GameModel& game) {
    std::set<int> numbers;
    std::size_t size = 0;
    for (const Procedure& procedure : game.Procedures)
        if (const int number = InternalNumberAt(procedure.Name, size);
            number >= 0 && size == procedure.Name.size())
            numbers.insert(number);
    return numbers;
}

/// Calls visit(number) for every call of an internal procedure in a game.
template <class Visit>
void ForEachInternalCall(const GameModel& game, Visit visit) {
    ForEachText(game, [&](const Place&, FieldUse use, const std::string& text) {
        if (use.kind != FieldKind::Name && MayHoldInternalNames(use))
            ForEachInternalName(text, [&](TextRange, int number) { visit(number); });
    });
}

int FreeNumber(const std::set<int>& taken, int next) {
    int number = taken.empty() ? next : std::max(next, *taken.rbegin() + 1);
    for (number = number > LastInternalNumber ? 0 : number; taken.contains(number);)
        if (++number > LastInternalNumber)
            throw KelError("the numbers of internal procedures end at 32,767");
    return number;
}

std::string WithNumbers(std::string_view text, const std::map<int, int>& numbers) {
    std::string changed;
    std::size_t done = 0;
    ForEachInternalName(text, [&](TextRange range, int number) {
        const auto found = numbers.find(number);
        if (found == numbers.end())
            return;
        changed.append(text.substr(done, range.begin - done)).append(InternalNameOf(found->second));
        done = range.end;
    });
    return changed.append(text.substr(done));
}

} // namespace

std::string InternalNameOf(int number) {
    return std::string(InternalProcedure) + ' ' + std::to_string(number);
}

int InternalNumberAt(std::string_view text, std::size_t& size) {
    static const std::string start = std::string(InternalProcedure) + ' ';
    if (!EqualIgnoringCase(text.substr(0, start.size()), start))
        return -1;
    int number = -1;
    const char* const digits = text.data() + start.size();
    const auto [end, error] = std::from_chars(digits, text.data() + text.size(), number);
    if (error != std::errc() || number < 0 || number > LastInternalNumber + 1)
        return -1;
    size = static_cast<std::size_t>(end - text.data());
    return number;
}

bool MayHoldInternalNames(FieldUse use) {
    return use.kind == FieldKind::Script || use.kind == FieldKind::RawLines ||
           (use.kind == FieldKind::Name && use.names == NameKind::Procedure);
}

void AddInternalProcedures(GameModel& piece, const GameModel& game) {
    std::unordered_map<int, const Procedure*> internal;
    std::size_t size = 0;
    for (const Procedure& procedure : game.Procedures)
        if (const int number = InternalNumberAt(procedure.Name, size); number >= 0)
            internal.emplace(number, &procedure);
    const std::set<int> own = NumbersOf(piece);
    std::set<int> seen = own;
    std::vector<int> wanted;
    const auto want = [&](int number) {
        if (internal.contains(number) && seen.insert(number).second)
            wanted.push_back(number);
    };
    ForEachInternalCall(piece, want);
    for (std::size_t k = 0; k < wanted.size(); ++k)
        ForEachInternalName(internal[wanted[k]]->Script, [&](TextRange, int number) { want(number); });
    // In the order of the game, as everything else.
    for (const int number : own)
        seen.erase(number);
    for (const Procedure& procedure : game.Procedures)
        if (const int number = InternalNumberAt(procedure.Name, size);
            number >= 0 && seen.contains(number) && internal[number] == &procedure)
            piece.Procedures.Append(procedure);
}

std::int16_t MakeNumbersFree(GameModel& piece, const GameModel& game) {
    const std::set<int> own = NumbersOf(piece);
    ForEachInternalCall(piece, [&](int number) {
        if (!own.contains(number))
            throw KelError("a part of the text is missing: it calls " + InternalNameOf(number) +
                           ", which does not stand in it");
    });
    const std::set<int> taken = NumbersOf(game);
    std::set<int> used = taken;
    used.insert(own.begin(), own.end());
    std::map<int, int> numbers;
    int next = game.NextInternalProcedure;
    for (const int number : own) {
        const int free = taken.contains(number) ? FreeNumber(used, next) : number;
        used.insert(free);
        next = std::max(next, free + 1);
        if (free != number)
            numbers.emplace(number, free);
    }
    if (!numbers.empty())
        ReplaceTexts(piece, [&](const Place&, FieldUse use, const std::string& text) {
            return MayHoldInternalNames(use) ? std::optional(WithNumbers(text, numbers)) : std::nullopt;
        });
    return static_cast<std::int16_t>(std::min(next, LastInternalNumber + 1));
}

} // namespace zem
