#include "game/Replace.h"

#include "base/KelError.h"
#include "game/PlaceOrder.h"
#include "game/RegularExpression.h"
#include "game/ReplaceRules.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

namespace zem {

namespace {

/// What comes in the place of each hit.
class NewWords {
public:
    NewWords(const FindQuery& query, const std::string& words) : words_(words) {
        if (query.isRegularExpression)
            expression_.emplace(query.words, query.capitals ? RegularExpression::ExactCapitals
                                                            : RegularExpression::AnyCapitals);
    }

    /// @param text  of the field, whose hits are asked for in their order
    std::string For(const Place& hit, std::string_view text) {
        if (!expression_)
            return words_;
        if (!(hit.WholeField() == field_)) {
            field_ = hit.WholeField();
            expression_->SetText(text);
        }
        while (const auto bytes = expression_->Next())
            if (*bytes == hit.bytes)
                return expression_->Expand(words_);
        return words_;
    }

private:
    const std::string& words_;
    std::optional<RegularExpression> expression_;
    Place field_ = Place::Of({{FieldId::None, -1}}); // of the text that is searched; at first, none
};

/// The changes by the record, or the field of the game's own, that they are made in.
std::map<std::tuple<FieldId, int, FieldId>, std::vector<TextChange>>
ByRecord(const std::vector<TextChange>& changes) {
    std::map<std::tuple<FieldId, int, FieldId>, std::vector<TextChange>> records;
    for (const TextChange& change : changes) {
        const PlaceStep step = change.place.steps.front();
        const FieldId own = step.list == FieldId::None ? change.place.field : FieldId::None;
        records[{step.list, step.entry, own}].push_back(change);
    }
    return records;
}

} // namespace

ReplacePlan PlanReplace(const GameIndex& index, const FindQuery& query, const std::string& words,
                        std::size_t most) {
    FindResult found = Find(index, query, most);
    ReplacePlan plan;
    plan.count = found.count;
    plan.problem = found.problem;
    NewWords newWords(query, words);
    for (const FindHit& hit : found.hits) {
        const std::string_view text = TextAt(index.Game(), hit.place);
        Replacement& added = plan.replacements.emplace_back();
        added.change = {hit.place, newWords.For(hit.place, text)};
        added.kind = hit.kind;
        added.before = InContext(text, hit.place.bytes);
        added.after = added.before;
        const TextRange marked = added.before.marked;
        added.after.text.replace(marked.begin, marked.Size(), added.change.words);
        added.after.marked.end = marked.begin + added.change.words.size();
        added.isName = hit.kind == HitKind::Name || hit.kind == HitKind::Reference;
        added.refusal = added.isName ? "This is a name: rename it instead." : WhyNot(index, {added.change});
        added.isTicked = added.refusal.empty();
    }
    return plan;
}

ReplaceOutcome CarryOut(const GameIndex& index, const ReplacePlan& plan, GameModel& game) {
    if (!SameGame(index.Game(), game))
        throw KelError("the game has changed since the list was made");
    std::vector<TextChange> wanted;
    for (const Replacement& replacement : plan.replacements)
        if (replacement.isTicked && replacement.refusal.empty())
            wanted.push_back(replacement.change);
    ReplaceOutcome outcome;
    std::vector<TextChange> made;
    for (const auto& [record, changes] : ByRecord(wanted)) {
        if (WhyNot(index, changes).empty()) {
            made.insert(made.end(), changes.begin(), changes.end());
            continue;
        }
        for (const TextChange& change : changes)
            outcome.left.push_back(change.place);
    }
    outcome.made = static_cast<int>(made.size());
    MakeChanges(game, std::move(made));
    return outcome;
}

} // namespace zem
