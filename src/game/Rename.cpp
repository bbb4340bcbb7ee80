#include "game/Rename.h"

#include "base/KelError.h"
#include "base/LineText.h"
#include "game/Mentions.h"
#include "game/PlaceOrder.h"
#include "game/WhereUsed.h"

#include <algorithm>
#include <utility>

namespace zem {

namespace {

class Planner {
public:
    Planner(const GameIndex& index, const RenameRequest& request, std::size_t most)
        : index_(index),
          request_(request),
          most_(most) {}

    RenamePlan Run() {
        plan_.answer = JudgeNewName(index_, request_.kind, request_.oldName, request_.newName, request_.only);
        plan_.twin = FindTwin();
        if (!MayGoOn())
            return std::move(plan_);
        AddNames(request_.kind, ChangeReason::Reference);
        plan_.names.push_back({request_.kind, request_.oldName, plan_.answer.name});
        if (request_.withTwin && plan_.twin) {
            AddNames(*plan_.twin, ChangeReason::Twin);
            plan_.names.push_back({*plan_.twin, request_.oldName, plan_.answer.name});
        }
        std::sort(plan_.changes.begin(), plan_.changes.end(), ComesBefore);
        const auto last = std::unique(plan_.changes.begin(), plan_.changes.end(), IsSamePlace);
        plan_.changes.erase(last,
                            plan_.changes.end()); // both of item and object may have one in other capitals
        AddMentions();
        plan_.isAllowed = IsStorable();
        return std::move(plan_);
    }

private:
    static bool ComesBefore(const RenameChange& a, const RenameChange& b) {
        return PlaceComesBefore(a.change.place, b.change.place);
    }
    static bool IsSamePlace(const RenameChange& a, const RenameChange& b) {
        return a.change.place == b.change.place;
    }

    bool MayGoOn() {
        if (plan_.answer.verdict == NameVerdict::Merges)
            return true;
        if (plan_.answer.verdict == NameVerdict::Fine && request_.withTwin && plan_.twin) {
            const NewNameAnswer other = JudgeNewName(index_, *plan_.twin, request_.oldName, request_.newName);
            if (other.verdict != NameVerdict::Fine) {
                plan_.answer.verdict = other.verdict;
                plan_.answer.message = other.message;
                plan_.answer.taken = other.taken;
            }
        }
        return plan_.answer.verdict == NameVerdict::Fine;
    }

    /// What is carried and what stands in a room until it is taken have one name by custom.
    std::optional<NameKind> FindTwin() const {
        const NameKind other = request_.kind == NameKind::Object ? NameKind::Item
                               : request_.kind == NameKind::Item ? NameKind::Object
                                                                 : NameKind::None;
        return other != NameKind::None && IsDefined(other, request_.oldName) ? std::optional(other)
                                                                             : std::nullopt;
    }

    bool IsDefined(NameKind kind, std::string_view name) const {
        const std::vector<Reference> references = index_.References().Of(kind, name);
        return std::any_of(references.begin(), references.end(), [&](const Reference& reference) {
            return reference.role == ReferenceRole::Definition && reference.name == name;
        });
    }

    bool IsMeant(NameKind kind, const Place& definition) const {
        return request_.only.empty() || kind != request_.kind ||
               std::any_of(request_.only.begin(), request_.only.end(),
                           [&](const Place& one) { return one.steps == definition.steps; });
    }

    /// The names and references of one kind.
    /// @param reason  of the references: Reference or Twin
    void AddNames(NameKind kind, ChangeReason reason) {
        const std::vector<Reference> references = index_.References().Of(kind, request_.oldName);
        const bool isAll = std::all_of(references.begin(), references.end(), [&](const Reference& reference) {
            return reference.role != ReferenceRole::Definition || IsMeant(kind, reference.place);
        });
        const bool isCharacter = kind == NameKind::Object && IsDefined(NameKind::Character, request_.oldName);
        for (const Reference& reference : references) {
            if (reference.role == ReferenceRole::MayMean) {
                plan_.mayMean.push_back(reference.place);
            } else if (reference.role == ReferenceRole::Definition) {
                if (IsMeant(kind, reference.place))
                    Add(reference, reason == ChangeReason::Twin ? reason : ChangeReason::Definition, true);
            } else {
                const bool isOthers = isCharacter && reference.kind == NameKind::Thing;
                Add(reference, reason, isAll && !isOthers);
            }
        }
        AddOtherCapitals(kind, isAll);
    }

    void AddOtherCapitals(NameKind kind, bool isAll) {
        for (const Reference& reference : index_.References().InOtherCapitals(kind, request_.oldName)) {
            const bool isUse = reference.role == ReferenceRole::Use;
            const bool meansOther = reference.kind == NameKind::Thing
                                        ? IsDefined(NameKind::Object, reference.name) ||
                                              IsDefined(NameKind::Character, reference.name)
                                        : IsDefined(kind, reference.name);
            if (!isUse || (meansOther && !IsMadeByUse(kind)))
                continue;
            // Flags, variables and timers that differ by capitals are two: made one they stay so.
            Add(reference, ChangeReason::OtherCapitals, isAll && !IsMadeByUse(kind));
        }
    }

    void Add(const Reference& reference, ChangeReason reason, bool isTicked) {
        Add(reference.place, plan_.answer.name, reason, reference.kind, isTicked);
    }

    void Add(const Place& place, const std::string& words, ChangeReason reason, NameKind kind,
             bool isTicked) {
        RenameChange& added = plan_.changes.emplace_back();
        added.change = {place, words};
        added.reason = reason;
        added.kind = kind;
        added.isTicked = isTicked;
        added.before = InContext(TextAt(index_.Game(), place), place.bytes);
        added.after = added.before;
        const TextRange marked = added.before.marked;
        added.after.text.replace(marked.begin, marked.Size(), words);
        added.after.marked.end = marked.begin + words.size();
    }

    void AddMentions() {
        std::vector<Place> taken = plan_.mayMean;
        for (const RenameChange& change : plan_.changes)
            taken.push_back(change.change.place);
        std::sort(taken.begin(), taken.end(), PlaceComesBefore);
        std::vector<Place> mentions = FindMentions(index_, request_.kind, request_.oldName, taken, most_ + 1);
        plan_.hasMoreMentions = mentions.size() > most_;
        mentions.resize(std::min(mentions.size(), most_));
        for (const Place& place : mentions) {
            const std::string_view mention = place.bytes.Of(TextAt(index_.Game(), place));
            Add(place, InCapitalsOf(mention, request_.oldName, plan_.answer.name), ChangeReason::Mention,
                request_.kind, false);
        }
    }

    /// A variable may stand in a name, which then has to be one that a list can hold.
    bool IsStorable() {
        if (request_.kind == NameKind::Variable)
            for (const RenameChange& change : plan_.changes) {
                const std::string problem = ProblemOfName(change.change.place);
                if (problem.empty())
                    continue;
                plan_.answer.verdict = NameVerdict::Refused;
                plan_.answer.message = "The variable stands in a name. " + problem;
                plan_.answer.taken = change.change.place;
                plan_.changes.clear();
                return false;
            }
        return plan_.answer.verdict == NameVerdict::Fine || request_.merge;
    }

    std::string ProblemOfName(const Place& place) const {
        const auto field = Resolve(index_.Game(), place);
        if (!field)
            return {};
        if (field->use.kind == FieldKind::Name)
            return NameProblem(field->use.names, plan_.answer.name);
        // In the list of collectables a comma separates, as it does in that of the items.
        return field->use.kind == FieldKind::Definition ? NameProblem(NameKind::Item, plan_.answer.name) : "";
    }

    const GameIndex& index_;
    const RenameRequest& request_;
    std::size_t most_;
    RenamePlan plan_;
};

} // namespace

const char* Describe(ChangeReason reason) {
    switch (reason) {
    case ChangeReason::Definition:
        return "name";
    case ChangeReason::Reference:
        return "reference";
    case ChangeReason::OtherCapitals:
        return "other capitals";
    case ChangeReason::Twin:
        return "of the same name";
    case ChangeReason::Mention:
        return "mention";
    }
    return "";
}

RenamePlan PlanRename(const GameIndex& index, const RenameRequest& request, std::size_t most) {
    return Planner(index, request, most).Run();
}

RenamePlan PlanRename(const GameModel& game, const CommandLookup& commands, const RenameRequest& request) {
    return PlanRename(GameIndex(commands, game), request);
}

int CarryOut(const RenamePlan& plan, GameModel& game) {
    if (!plan.isAllowed)
        throw KelError(plan.answer.message);
    std::vector<TextChange> changes;
    for (const RenameChange& change : plan.changes) {
        if (!change.isTicked)
            continue;
        const std::string_view text = TextAt(game, change.change.place);
        const bool isSame = InContext(text, change.change.place.bytes).text == change.before.text;
        if (text.empty() || !isSame)
            throw KelError("the game has changed since: " + DescribePlace(game, change.change.place));
        changes.push_back(change.change);
    }
    const int count = static_cast<int>(changes.size());
    MakeChanges(game, std::move(changes));
    return count;
}

} // namespace zem
