#pragma once

#include "game/MadeOfRecords.h"
#include "kel/CommandLookup.h"
#include "kel/ScriptLine.h"
#include "model/GameModel.h"
#include "model/NameKind.h"
#include "model/Place.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <unordered_set>
#include <vector>

/// Every place of a game where something is called by its name.
namespace zem {

enum class ReferenceRole : std::uint8_t {
    Definition, // what is called so stands here
    Use,        // names it
    MayMean     // is made of variables: "goto <#where#>", "goto <Room #n#>"
};

/// A place where a name stands. The name is exactly the bytes of the place.
struct Reference {
    Place place;
    // Thing where a script means a character or an object. Never None, nor Thing in a definition.
    NameKind kind = NameKind::None;
    ReferenceRole role = ReferenceRole::Use;
    // Of the parameter of a command: which part of it, from 0. A variable between "#" or "%" has none, -1.
    std::int8_t part = -1;
    // The sign around a variable in a text, "#" or "%"; 0 for every other reference.
    char sign = 0;
    const CommandEntry* command = nullptr; // in whose parameter it stands; null for a field
    std::string_view name;
};

namespace detail {

/// The references of one record, its places without the step to it.
struct RecordReferences {
    /// A text in which variables may stand. Which of its signs do stand for one, the whole game tells.
    struct Printed {
        Place place; // its bytes are those of the text
        std::string_view text;
        const CommandEntry* command = nullptr;
        std::vector<std::string_view> candidates; // what stands between two of the same signs

        bool MayHold(std::string_view name) const {
            return std::find(candidates.begin(), candidates.end(), name) != candidates.end();
        }
    };
    std::vector<Reference> references; // parts that hold a variable are still called uses
    std::vector<Printed> printed;
    std::vector<std::string_view> variables; // that the record uses in commands or patterns, each once
};

RecordReferences FindReferences(const std::vector<RecordText>& texts, const CommandLookup& commands);

bool HoldsVariable(std::string_view text, const std::unordered_set<std::string_view>& variables);

} // namespace detail

/// The references of a game. Going on to another version of it reads only the records that differ.
///
/// Read are the fields, every line of every script, inner "if"s included, and scripts that stand in raw lines
/// and unknown blocks. Lines that make no sense have no references, and neither has what stands behind a
/// command's brackets.
class ReferenceIndex {
public:
    /// @param commands  outlives this object
    explicit ReferenceIndex(const CommandLookup& commands);

    /// What is asked from now on is asked of this version. Places and names that were given before are good
    /// as long as their own version is kept.
    void GoOnTo(const GameModel& game);

    /// The version that is asked.
    const GameModel& Game() const { return records_.Game(); }

    /// Whether commands, conditions or patterns of the game use a variable of this name. Only then does "#x#"
    /// or "%x%" in a text stand for it.
    bool IsVariable(std::string_view name) const { return variables_.contains(name); }

    /// Calls visit(reference) for every reference of the game, record by record.
    template <class Visit>
    void ForEach(Visit visit) const {
        records_.ForEach([&](PlaceStep record, const detail::RecordReferences& made) {
            for (Reference reference : made.references) {
                Finish(reference, record);
                visit(static_cast<const Reference&>(reference));
            }
            for (const detail::RecordReferences::Printed& printed : made.printed)
                VisitVariables(printed, record, variables_, visit);
        });
    }

    /// The references that mean this name, in the order of the game: exactly this name of this kind, things
    /// as characters and objects, and what may mean it. A part that is made of variables and yet is the name,
    /// letter for letter, is a use.
    std::vector<Reference> Of(NameKind kind, std::string_view name) const;

    /// The references of the kind whose name differs from this one by nothing but capitals.
    std::vector<Reference> InOtherCapitals(NameKind kind, std::string_view name) const;

    /// The texts in which "#name#" or "%name%" stands and prints as it is, because no command or pattern uses
    /// such a variable. They would print the variable if one came to be called so.
    std::vector<Reference> WouldBeVariable(std::string_view name) const;

private:
    template <class Visit>
    static void VisitVariables(const detail::RecordReferences::Printed& printed, PlaceStep record,
                               const std::unordered_set<std::string_view>& variables, Visit& visit) {
        ForEachVariable(printed.text, [&](TextRange range, char sign) {
            const std::string_view name = range.Of(printed.text);
            if (!variables.contains(name))
                return false;
            Reference reference;
            reference.place = InGame(record, printed.place);
            const std::size_t at = printed.place.bytes.begin;
            reference.place.bytes = {at + range.begin, at + range.end};
            reference.kind = NameKind::Variable;
            reference.sign = sign;
            reference.command = printed.command;
            reference.name = name;
            visit(static_cast<const Reference&>(reference));
            return true;
        });
    }

    void Finish(Reference& reference, PlaceStep record) const;
    template <class Fits, class MayFit>
    std::vector<Reference> Select(NameKind kind, Fits fits, MayFit mayFit) const;

    MadeOfRecords<detail::RecordReferences> records_;
    std::unordered_set<std::string_view> variables_;
};

/// Calls visit(reference) for every reference of the game. Who asks often keeps a ReferenceIndex instead.
template <class Visit>
void ForEachReference(const GameModel& game, const CommandLookup& commands, Visit visit) {
    ReferenceIndex index(commands);
    index.GoOnTo(game);
    index.ForEach(visit);
}

/// Whether a reference of one kind may mean something of the other: a thing is a character or an object.
constexpr bool MeansKind(NameKind reference, NameKind kind) {
    const auto isThing = [](NameKind of) {
        return of == NameKind::Object || of == NameKind::Character || of == NameKind::Thing;
    };
    return reference == kind ||
           ((reference == NameKind::Thing || kind == NameKind::Thing) && isThing(reference) && isThing(kind));
}

/// Whether a name that is made of variables ("Room #n#") can become this name: what stands outside of the
/// variables is found in it, in this order.
bool CanBecome(std::string_view made, std::string_view name);

} // namespace zem
