#include "spelling/GameWords.h"

#include "base/LineText.h"
#include "kel/ProseParts.h"
#include "model/Texts.h"

#include <algorithm>

namespace zem::spelling {

namespace {

constexpr const char* Built[] = {"north",        "south",       "east",      "west",         "northeast",
                                 "northwest",    "southeast",   "southwest", "out",          "northern",
                                 "southern",     "ne",          "nw",        "se",           "sw",
                                 "zem",          "kel",         "veldt",     "northeastern", "northwestern",
                                 "southeastern", "southwestern"};

/// Whether players see the name, so that it stands in texts.
bool IsSeenName(NameKind kind) {
    return kind == NameKind::Room || kind == NameKind::Object || kind == NameKind::Character ||
           kind == NameKind::Thing || kind == NameKind::Item || kind == NameKind::Collectable;
}

bool IsOfNames(FieldId field) {
    switch (field) {
    case FieldId::GameName:
    case FieldId::GameAuthor:
    case FieldId::GameVersion:
    case FieldId::GameCopyright:
    case FieldId::RoomAlias:
    case FieldId::RoomPrefix:
    case FieldId::ThingPrefix:
    case FieldId::ThingSuffix:
    case FieldId::SynonymWords:
    case FieldId::SynonymConvertTo:
    case FieldId::CollectableName:
        return true;
    default:
        return false;
    }
}

} // namespace

GameWords::GameWords() {
    for (const char* word : Built)
        words_.emplace(word);
}

GameWords::GameWords(const GameModel& game) : GameWords() {
    ForEachText(game, [&](const Place& place, FieldUse use, const std::string& text) {
        const bool isName = use.kind == FieldKind::Name && IsSeenName(use.names);
        if (isName || use.kind == FieldKind::Target || IsOfNames(place.field))
            AddNames(text);
    });
}

void GameWords::AddNames(std::string_view text) {
    ForEachProsePart(text, [&](const ProsePart& part) {
        if (part.kind != ProseKind::Word || part.hasCode)
            return;
        std::string word = Lower(part.range.Of(text));
        std::replace(word.begin(), word.end(), '\x92', '\'');
        std::size_t begin = 0;
        for (std::size_t end = word.find('-'); end != std::string::npos; end = word.find('-', begin)) {
            words_.insert(word.substr(begin, end - begin));
            begin = end + 1;
        }
        if (begin > 0)
            words_.insert(word.substr(begin));
        if (!words_.contains(word))
            words_.insert(std::move(word));
    });
}

void GameWords::Add(std::string_view word) {
    std::string text(word);
    std::replace(text.begin(), text.end(), '\x92', '\'');
    words_.insert(std::move(text));
}

bool GameWords::KnowsItself(const std::string& word) const {
    if (words_.contains(word))
        return true;
    std::string lower = Lower(word);
    if (lower == word)
        return false;
    if (words_.contains(lower))
        return true;
    // All in capitals it is the name in ordinary ones.
    const bool isLoud = std::none_of(word.begin(), word.end(),
                                     [](char c) { return IsProseLetter(c) && Lower(c) == c && !IsDigit(c); });
    if (!isLoud)
        return false;
    lower[0] = word[0];
    return words_.contains(lower);
}

bool GameWords::Knows(std::string_view word) const {
    std::string text(word);
    std::replace(text.begin(), text.end(), '\x92', '\'');
    if (KnowsItself(text))
        return true;
    const std::size_t apostrophe = text.find('\'');
    if (apostrophe == std::string::npos)
        return false;
    const std::size_t last = text.rfind('\'');
    const std::string_view ending = std::string_view(text).substr(last);
    if ((ending == "'s" || ending == "'S") && KnowsItself(text.substr(0, last)))
        return true;
    constexpr std::size_t LongestArticle = 2; // "d'", "l'", "qu'"
    return apostrophe > 0 && apostrophe <= LongestArticle && KnowsItself(text.substr(apostrophe + 1));
}

} // namespace zem::spelling
