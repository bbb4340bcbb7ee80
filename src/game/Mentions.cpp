#include "game/Mentions.h"

#include "base/LineText.h"
#include "game/HitKinds.h"
#include "game/PlaceOrder.h"
#include "game/WholeWords.h"

#include <algorithm>

namespace zem {

namespace {

/// Whether players read and type such names.
bool IsSpoken(NameKind kind) {
    return kind == NameKind::Room || kind == NameKind::Object || kind == NameKind::Character ||
           kind == NameKind::Item || kind == NameKind::Collectable;
}

/// Whether the bytes fill a part between brackets.
bool FillsPart(std::string_view text, TextRange bytes) {
    const std::size_t before =
        bytes.begin == 0 ? std::string_view::npos : text.find_last_not_of(' ', bytes.begin - 1);
    const std::size_t after = text.find_first_not_of(' ', bytes.end);
    return before != std::string_view::npos && (text[before] == '<' || text[before] == ';') &&
           after != std::string_view::npos && (text[after] == '>' || text[after] == ';');
}

bool Overlaps(const std::vector<Place>& taken, const Place& place) {
    Place from = place.WholeField();
    auto at = std::lower_bound(taken.begin(), taken.end(), from, PlaceComesBefore);
    for (; at != taken.end() && at->WholeField() == place.WholeField(); ++at)
        if (at->bytes.begin < place.bytes.end && place.bytes.begin < at->bytes.end)
            return true;
    return false;
}

bool IsComment(std::string_view text, std::size_t at) {
    const std::size_t before = text.substr(0, at).rfind('\n');
    const std::string_view line = TrimLeft(text.substr(before == std::string_view::npos ? 0 : before + 1));
    return line.starts_with('\'');
}

char Upper(char letter) {
    if (Lower(letter) != letter)
        return letter;
    for (int code = 1; code < 256; ++code) {
        const char other = static_cast<char>(code);
        if (other != letter && Lower(other) == letter)
            return other;
    }
    return letter;
}

} // namespace

std::vector<Place> FindMentions(const GameIndex& index, NameKind kind, std::string_view name,
                                const std::vector<Place>& taken, std::size_t most) {
    using GoOn = TextIndex::GoOn;
    HitJudge judge(index);
    std::vector<Place> mentions;
    const auto isMention = [&](const RecordText& text, TextRange bytes) {
        if (!IsWholeWord(text.text, bytes))
            return false;
        switch (judge.KindOf(text, bytes)) {
        case HitKind::PrintedText:
        case HitKind::Pattern:
            return IsSpoken(kind);
        case HitKind::Script: {
            if (IsComment(text.text, bytes.begin))
                return false;
            const bool isTyped =
                IsSpoken(kind) && text.text.substr(0, bytes.begin).rfind("type <") != std::string_view::npos;
            return FillsPart(text.text, bytes) || isTyped;
        }
        case HitKind::RawLine:
            return FillsPart(text.text, bytes);
        case HitKind::Name:
        case HitKind::Reference:
        case HitKind::Setting:
            break;
        }
        return false;
    };
    index.Texts().ForEachHit(name, [&](PlaceStep record, const RecordText& text, TextRange bytes) {
        if (!isMention(text, bytes))
            return GoOn::AtTheNextCharacter;
        Place place = InGame(record, text.place);
        place.bytes = bytes;
        if (!Overlaps(taken, place))
            mentions.push_back(place);
        return mentions.size() < most ? GoOn::BehindTheHit : GoOn::NotAtAll;
    });
    return mentions;
}

std::string InCapitalsOf(std::string_view mention, std::string_view oldName, std::string_view newName) {
    std::string words(newName);
    if (mention == oldName || words.empty())
        return words;
    if (mention == Lower(oldName))
        return Lower(newName);
    const bool isCapital = Lower(mention.front()) != mention.front();
    const bool isOnlyFirst = mention.substr(1) == oldName.substr(1);
    if (isOnlyFirst || mention.substr(1) == Lower(oldName.substr(1)))
        words = (isOnlyFirst ? words : Lower(words));
    words.front() = isCapital ? Upper(words.front()) : Lower(words.front());
    return words;
}

} // namespace zem
