#include "problems/PrintedTexts.h"

#include "base/LineText.h"
#include "model/Texts.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace zem::problems {

namespace {

/// The part of a command's parameter that is printed, from 0; -1 for none.
int PrintedPart(const CommandEntry& entry) {
    int index = 0;
    for (const std::string_view piece : SplitAt(entry.definition->RawSyntax, ";")) {
        const std::string_view part = Trim(piece);
        if (EqualIgnoringCase(part, "message") || EqualIgnoringCase(part, "question"))
            return index;
        ++index;
    }
    return -1;
}

} // namespace

Place PrintedText::At(TextRange range) const {
    Place part = place;
    part.bytes = {place.bytes.begin + range.begin, place.bytes.begin + range.end};
    return part;
}

std::vector<PrintedText> PrintedTexts(const CheckedGame& game) {
    std::vector<PrintedText> texts;
    ForEachText(game.Game(), [&](const Place& place, FieldUse use, const std::string& text) {
        if (use.kind == FieldKind::Text)
            texts.push_back({place, text, nullptr});
    });
    std::unordered_map<const CommandEntry*, int> printed;
    for (const CheckedCall& call : game.Calls()) {
        const CommandEntry* entry = call.call->entry;
        if (entry == nullptr || call.parts.empty())
            continue;
        const auto [row, isNew] = printed.try_emplace(entry, 0);
        if (isNew)
            row->second = PrintedPart(*entry);
        const int part = row->second;
        if (part >= 0 && static_cast<std::size_t>(part) < call.parts.size())
            texts.push_back(
                {call.At(static_cast<std::size_t>(part)), call.Part(static_cast<std::size_t>(part)), &call});
    }
    return texts;
}

bool IsEnglish(const CheckedGame& game, const std::vector<PrintedText>& texts) {
    if (!game.Input().language.empty())
        return game.Input().language.starts_with("en");
    constexpr std::array<std::string_view, 8> Commonest = {"the", "and", "of", "is",
                                                           "you", "to",  "it", "your"};
    constexpr int Enough = 2000; // words tell a language well
    int words = 0;
    int english = 0;
    for (const PrintedText& text : texts) {
        if (words >= Enough)
            break;
        ForEachWord(text.text, [&](TextRange range) {
            ++words;
            const std::string_view word = range.Of(text.text);
            if (std::any_of(Commonest.begin(), Commonest.end(),
                            [&](std::string_view common) { return EqualIgnoringCase(word, common); }))
                ++english;
        });
    }
    return english * 10 >= words; // nearly every fifth word is one of them in most texts
}

} // namespace zem::problems
