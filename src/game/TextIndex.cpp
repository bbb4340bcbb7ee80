#include "game/TextIndex.h"

#include <algorithm>
#include <cstring>

namespace zem {

namespace {

/// Whether a game file holds the text as its own. The catalogue of messages, and the name of a collectable
/// beside its definition, are nothing that an author has written there; an exit that runs a script has no
/// name.
bool IsInFile(const RecordText& text, const std::vector<RecordText>& record) {
    switch (text.place.field) {
    case FieldId::ErrorDescription:
    case FieldId::CollectableName:
        return false;
    case FieldId::ErrorName:
        return std::any_of(record.begin(), record.end(), [](const RecordText& other) {
            return other.place.field == FieldId::ErrorGameText;
        });
    default:
        return text.use.kind != FieldKind::Exit || text.text != ActionExit;
    }
}

SearchedTexts MakeSearched(const std::vector<RecordText>& record) {
    SearchedTexts searched;
    for (const RecordText& text : record) {
        if (!IsInFile(text, record))
            continue;
        searched.texts.push_back({searched.letters.size(), text});
        searched.letters += Lower(text.text);
        searched.letters += '\0';
    }
    return searched;
}

} // namespace

TextIndex::TextIndex() : records_(MakeSearched) {}

std::size_t TextIndex::FindIn(const std::string& letters, const std::string& wanted, std::size_t from) {
    if (from >= letters.size())
        return std::string::npos;
    const void* found = memmem(letters.data() + from, letters.size() - from, wanted.data(), wanted.size());
    return found == nullptr ? std::string::npos
                            : static_cast<std::size_t>(static_cast<const char*>(found) - letters.data());
}

} // namespace zem
