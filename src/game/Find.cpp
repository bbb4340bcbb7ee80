#include "game/Find.h"

#include "game/HitKinds.h"
#include "game/PlaceOrder.h"
#include "game/RegularExpression.h"
#include "game/WholeWords.h"

#include <algorithm>
#include <chrono>

namespace zem {

namespace {

// An author who typed an expression that takes longer has something else in mind.
constexpr std::chrono::milliseconds LongestSearch(2000);

/// Takes the hits that the query wants.
class HitCollector {
public:
    HitCollector(const GameIndex& index, const FindQuery& query, std::size_t most)
        : query_(query),
          most_(most),
          judge_(index) {}

    /// Whether the words at these bytes are a hit.
    bool Take(PlaceStep record, const RecordText& text, TextRange bytes) {
        if (query_.wholeWords && !IsWholeWord(text.text, bytes))
            return false;
        const bool isWanted = query_.kinds.IsEmpty() || query_.kinds.Contains(judge_.KindOf(text, bytes));
        if (!isWanted)
            return true; // it is one all the same, so that the others stay what they are
        ++result.count;
        if (result.hits.size() < most_) {
            Place place = InGame(record, text.place);
            place.bytes = bytes;
            result.hits.push_back({place, judge_.KindOf(text, bytes)});
        }
        return true;
    }

    FindResult result;

private:
    const FindQuery& query_;
    std::size_t most_;
    HitJudge judge_;
};

void FindExpression(const GameIndex& index, const FindQuery& query, HitCollector& collector) {
    RegularExpression expression(query.words, query.capitals ? RegularExpression::ExactCapitals
                                                             : RegularExpression::AnyCapitals);
    const auto latest = std::chrono::steady_clock::now() + LongestSearch;
    bool isLate = false;
    if (expression.Problem().empty())
        index.Texts().ForEachText([&](PlaceStep record, const RecordText& text) {
            expression.SetText(text.text);
            while (const auto bytes = expression.Next())
                collector.Take(record, text, *bytes);
            isLate = std::chrono::steady_clock::now() > latest;
            return expression.Problem().empty() && !isLate;
        });
    collector.result.problem =
        isLate ? "The expression takes too long on this game. Make it simpler." : expression.Problem();
}

} // namespace

FindResult Find(const GameIndex& index, const FindQuery& query, std::size_t most) {
    HitCollector collector(index, query, most);
    if (query.words.empty())
        return {};
    if (query.isRegularExpression) {
        FindExpression(index, query, collector);
        return std::move(collector.result);
    }
    using GoOn = TextIndex::GoOn;
    index.Texts().ForEachHit(query.words, [&](PlaceStep record, const RecordText& text, TextRange bytes) {
        const bool isHit =
            (!query.capitals || bytes.Of(text.text) == query.words) && collector.Take(record, text, bytes);
        return isHit ? GoOn::BehindTheHit : GoOn::AtTheNextCharacter;
    });
    return std::move(collector.result);
}

std::optional<Reference> NameAt(const GameIndex& index, const Place& place) {
    std::optional<Reference> best;
    index.References().ForEach([&](const Reference& reference) {
        const bool isThere = reference.place.WholeField() == place.WholeField() &&
                             reference.place.bytes.begin < place.bytes.end &&
                             place.bytes.begin < reference.place.bytes.end;
        if (isThere && (!best || reference.name.size() < best->name.size()))
            best = reference;
    });
    return best;
}

namespace {

/// The name that a place without bytes is about: that of the whole record, or the one that fills the field.
std::optional<Reference> NameOfWhole(const GameIndex& index, const Place& place) {
    std::optional<Reference> name;
    index.References().ForEach([&](const Reference& reference) {
        const bool isOwn = reference.role == ReferenceRole::Definition && place.field == FieldId::None &&
                           reference.place.steps == place.steps;
        const bool fills = reference.place.WholeField() == place &&
                           reference.name.size() == TextAt(index.Game(), reference.place).size();
        if (isOwn || fills)
            name = reference;
    });
    return name;
}

} // namespace

std::optional<NamedThing> NamedAt(const GameIndex& index, const Place& place) {
    const std::optional<Reference> reference =
        place.bytes.IsEmpty() ? NameOfWhole(index, place) : NameAt(index, place);
    if (!reference || reference->kind == NameKind::File || reference->name.starts_with(InternalProcedure))
        return std::nullopt;
    NamedThing named{reference->kind, std::string(reference->name)};
    if (named.kind == NameKind::Thing) {
        const std::vector<Reference> all = index.References().Of(NameKind::Character, named.name);
        const bool isCharacter = std::any_of(all.begin(), all.end(), [](const Reference& one) {
            return one.role == ReferenceRole::Definition && one.kind == NameKind::Character;
        });
        named.kind = isCharacter ? NameKind::Character : NameKind::Object;
    }
    return named;
}

} // namespace zem
