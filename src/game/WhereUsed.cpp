#include "game/WhereUsed.h"

#include "base/LineText.h"
#include "game/PlaceOrder.h"
#include "game/WholeWords.h"

#include <algorithm>

namespace zem {

namespace {

/// Whether players type what stands in the field.
bool IsTyped(const RecordText& text) {
    switch (text.use.kind) {
    case FieldKind::Pattern:
        return true;
    case FieldKind::Name:
        return text.use.names == NameKind::Room || text.use.names == NameKind::Object ||
               text.use.names == NameKind::Character || text.use.names == NameKind::Item;
    default:
        return text.place.field == FieldId::RoomAlias;
    }
}

/// Whether the bytes stand in a command that the script types for the player.
bool IsTypedByScript(std::string_view script, TextRange bytes, const CommandLookup& commands) {
    bool isTyped = false;
    ForEachLine(script, [&](TextRange lineRange, int) {
        if (bytes.begin < lineRange.begin || bytes.end > lineRange.end)
            return;
        const std::string_view line = lineRange.Of(script);
        ForEachCall(TakeApart(line, commands), [&](const ScriptCall& call) {
            const bool types = call.entry != nullptr && call.entry->keyword == "type";
            isTyped = isTyped || (types && call.parameter.begin + lineRange.begin <= bytes.begin &&
                                  bytes.end <= call.parameter.end + lineRange.begin);
        });
    });
    return isTyped;
}

} // namespace

std::vector<Reference> WhereUsed(const GameIndex& index, NameKind kind, std::string_view name) {
    std::vector<Reference> uses = index.References().Of(kind, name);
    bool isCharacter = false;
    if (kind == NameKind::Object)
        for (const Reference& other : index.References().Of(NameKind::Character, name))
            isCharacter = isCharacter || other.role == ReferenceRole::Definition;
    std::erase_if(uses, [&](Reference& use) {
        if (isCharacter && use.kind == NameKind::Thing)
            use.role = ReferenceRole::MayMean;
        return use.role == ReferenceRole::Definition;
    });
    return uses;
}

std::vector<Place> WhereSynonymUsed(const GameIndex& index, int synonym) {
    std::vector<Place> places;
    const Table<SynonymEntry>& synonyms = index.Game().Synonyms;
    if (synonym < 1 || synonym > synonyms.Count())
        return places;
    for (const std::string_view piece : SplitAt(synonyms[synonym].Words, ";")) {
        const std::string_view words = Trim(piece);
        index.Texts().ForEachHit(words, [&](PlaceStep record, const RecordText& text, TextRange bytes) {
            const bool isTyped = IsWholeWord(text.text, bytes) &&
                                 (IsTyped(text) || (text.use.kind == FieldKind::Script &&
                                                    IsTypedByScript(text.text, bytes, index.Commands())));
            if (isTyped) {
                places.push_back(InGame(record, text.place));
                places.back().bytes = bytes;
            }
            return isTyped ? TextIndex::GoOn::BehindTheHit : TextIndex::GoOn::AtTheNextCharacter;
        });
    }
    std::sort(places.begin(), places.end(), PlaceComesBefore);
    return places;
}

const char* Describe(NameKind kind) {
    switch (kind) {
    case NameKind::None:
    case NameKind::Thing:
        break;
    case NameKind::Room:
        return "room";
    case NameKind::Object:
        return "object";
    case NameKind::Character:
        return "character";
    case NameKind::Item:
        return "item";
    case NameKind::Procedure:
        return "procedure";
    case NameKind::TextSection:
        return "text";
    case NameKind::Menu:
        return "menu";
    case NameKind::Variable:
        return "variable";
    case NameKind::Collectable:
        return "collectable";
    case NameKind::Flag:
        return "flag";
    case NameKind::Timer:
        return "timer";
    case NameKind::File:
        return "file";
    }
    return "thing";
}

} // namespace zem
