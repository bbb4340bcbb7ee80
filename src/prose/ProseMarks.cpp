#include "prose/ProseMarks.h"

#include "figures/PrintedWords.h"
#include "forms/ColourRoles.h"
#include "kel/ScriptLine.h"
#include "qt/QtText.h"
#include "session/GameSpelling.h"

#include <QPalette>

#include <algorithm>
#include <utility>

namespace zem {

namespace {

constexpr qsizetype LongestWord = 256; // that is looked at as a whole

/// A byte for each character of a box: what no game holds is a blank.
std::string BytesOf(QString text) {
    if (UnstorableCharacter(text))
        for (QChar& character : text)
            if (UnstorableCharacter(QString(character)))
                character = u' ';
    return FromQt(text);
}

} // namespace

ProseParts PartsOfLine(const CommandLookup& commands) {
    return [&commands](std::string_view line) {
        std::vector<TextRange> parts;
        ForEachCall(TakeApart(line, commands), [&](const ScriptCall& call) {
            const int printed = call.entry == nullptr ? -1 : figures::PrintedPart(*call.entry);
            if (!call.hasParameter || printed < 0)
                return;
            const TextRange part = figures::PartOf(call.parameter.Of(line), call.entry->syntax, printed);
            parts.push_back({call.parameter.begin + part.begin, call.parameter.begin + part.end});
        });
        return parts;
    };
}

ProseParts PartsOfParameter(const CommandLookup& commands,
                            std::function<const CommandDefinition*()> command) {
    return [&commands, command = std::move(command)](std::string_view parameter) -> std::vector<TextRange> {
        const CommandDefinition* definition = command();
        const CommandEntry* entry =
            definition == nullptr ? nullptr : commands.FindKeyword(definition->Keyword);
        const int printed = entry == nullptr ? -1 : figures::PrintedPart(*entry);
        if (printed < 0)
            return {};
        return {figures::PartOf(parameter, entry->syntax, printed)};
    };
}

std::vector<ProseMark> FindProseMarks(const QString& text, const ProseParts& parts,
                                      const spelling::Speller& speller) {
    const std::string bytes = BytesOf(text);
    std::vector<ProseMark> marks;
    const auto read = [&](TextRange part) {
        const std::string_view prose = part.Of(bytes);
        const auto add = [&](ProseMark::Kind kind, TextRange range) {
            marks.push_back(
                {kind, static_cast<int>(part.begin + range.begin), static_cast<int>(part.begin + range.end)});
        };
        ForEachProsePart(
            prose,
            [&](const zem::ProsePart& found) {
                if (found.kind != ProseKind::Word)
                    add(ProseMark::Code, found.range);
            },
            spelling::IsLikeVariable());
        ForEachUnknownWord(prose, speller,
                           [&](const spelling::CheckedWord& word) { add(ProseMark::Unknown, word.range); });
    };
    if (!parts)
        read({0, bytes.size()});
    else
        for (const TextRange part : parts(bytes))
            read(part);
    return marks;
}

const spelling::Speller& SpellerOf(const GameSpelling* spelling) {
    static const spelling::Speller KnowsAll;
    return spelling == nullptr ? KnowsAll : spelling->Speller();
}

QTextCharFormat LookOf(ProseMark::Kind kind, const QPalette& palette) {
    QTextCharFormat look;
    if (kind == ProseMark::Code) {
        look.setForeground(ColourOf(ColourRole::SecondaryText, palette));
    } else {
        look.setUnderlineStyle(QTextCharFormat::WaveUnderline);
        look.setUnderlineColor(ColourOf(ColourRole::Error, palette));
    }
    return look;
}

TextRange WholeWordsAround(const QString& text, qsizetype begin, qsizetype end) {
    begin = std::clamp<qsizetype>(begin, 0, text.size());
    end = std::clamp(end, begin, text.size());
    const qsizetype first = std::max<qsizetype>(begin - LongestWord, 0);
    const qsizetype last = std::min(end + LongestWord, text.size());
    while (begin > first && text[begin - 1] != u' ')
        --begin;
    while (end < last && text[end] != u' ')
        ++end;
    return {static_cast<std::size_t>(begin), static_cast<std::size_t>(end)};
}

} // namespace zem
