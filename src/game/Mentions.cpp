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

/// Whether the byte stands in a command that the script types for the player, which is no long one.
bool IsTyped(std::string_view script, std::size_t byte) {
    const std::size_t begin = byte - std::min<std::size_t>(byte, 500);
    const std::string_view before = script.substr(begin, byte - begin);
    const std::size_t type = before.rfind("type <");
    return type != std::string_view::npos && before.find('>', type) == std::string_view::npos;
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
            const std::string_view line = judge.LineAt(text.text, bytes.begin).Of(text.text);
            if (TrimLeft(line).starts_with('\''))
                return false; // a comment
            return FillsPart(text.text, bytes) || (IsSpoken(kind) && IsTyped(text.text, bytes.begin));
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
