// The words and letters of a game.
#include "base/LineText.h"
#include "base/TextEncoding.h"
#include "model/Texts.h"
#include "problems/Checks.h"
#include "problems/Fixes.h"
#include "problems/PrintedTexts.h"

#include <algorithm>
#include <array>
#include <utility>

namespace zem::problems {

namespace {

bool IsHighByte(char c) {
    return static_cast<unsigned char>(c) >= 0x80;
}

/// The text with letters of UTF-8 that were read as two or three others put together again.
std::string Repaired(std::string_view text) {
    std::string repaired;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t size = 1;
        for (std::size_t length = 2; IsHighByte(text[at]) && length <= 3 && at + length <= text.size();
             ++length) {
            const std::string_view bytes = text.substr(at, length);
            const bool allHigh = std::all_of(bytes.begin(), bytes.end(), IsHighByte);
            if (!allHigh || DetectEncoding(bytes) != TextEncoding::Utf8)
                continue;
            const ConvertedText letter = Utf8ToWindows1252(bytes);
            if (letter.lacking.empty() && letter.bytes.size() == 1) {
                repaired += letter.bytes;
                size = length;
                break;
            }
        }
        if (size == 1)
            repaired += text[at];
        at += size;
    }
    return repaired;
}

/// Whether a letter of UTF-8 may stand in the text; most texts are told apart by this alone.
bool MayBeSpoilt(std::string_view text) {
    for (std::size_t at = 1; at < text.size(); ++at)
        if (IsHighByte(text[at]) && static_cast<unsigned char>(text[at]) < 0xC0 &&
            static_cast<unsigned char>(text[at - 1]) >= 0xC2)
            return true;
    return false;
}

/// The first byte that no text of the format should have; npos for none.
std::size_t FindStrangeByte(std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto code = static_cast<unsigned char>(text[at]);
        const bool isLineEnd = (code == '\r' && text.substr(at, 2) == "\r\n") ||
                               (code == '\n' && at > 0 && text[at - 1] == '\r');
        if ((code < 0x20 && !isLineEnd) || code == 0x7F || code == 0x81 || code == 0x8D || code == 0x8F ||
            code == 0x90 || code == 0x9D)
            return at;
    }
    return std::string_view::npos;
}

bool IsPlain(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; });
}

void FindStrangeLetters(const CheckedGame& game, Findings& findings) {
    ForEachText(game.Game(), [&](const Place& place, FieldUse, const std::string& text) {
        if (IsPlain(text))
            return;
        const std::string repaired = MayBeSpoilt(text) ? Repaired(text) : text;
        if (repaired != text) {
            const std::size_t at = static_cast<std::size_t>(
                std::mismatch(text.begin(), text.end(), repaired.begin(), repaired.end()).first -
                text.begin());
            Place letters = place;
            letters.bytes = {at, at + 2};
            findings
                .Add("T01", letters,
                     "Letters were spoiled by another encoding: " + QuoteShortly(text.substr(at, 2)) +
                         " was a single letter.")
                .fixes = {ChangeGame("Repair the letters of the whole game", [](GameModel& changed) {
                ReplaceTexts(changed, [](const Place&, FieldUse, const std::string& other) {
                    return IsPlain(other) ? std::nullopt : std::optional(Repaired(other));
                });
            })};
            return; // what is strange in them comes from that
        }
        const std::size_t at = FindStrangeByte(text);
        if (at == std::string_view::npos)
            return;
        Place letter = place;
        letter.bytes = {at, at + 1};
        findings.Add(
            "T02", letter,
            "A character stands here that the format does not have: nobody can tell what players will see.");
    });
}

bool IsVowel(char c) {
    return std::string_view("aeiou").find(Lower(c)) != std::string_view::npos;
}

bool BeginsWithOneOf(std::string_view lower, std::initializer_list<std::string_view> beginnings) {
    return std::any_of(beginnings.begin(), beginnings.end(),
                       [&](std::string_view beginning) { return lower.starts_with(beginning); });
}

/// Whether English has "an" before the word; by its sound and not by its letter.
bool TakesAn(std::string_view word) {
    const std::string lower = Lower(word);
    if (BeginsWithOneOf(lower, {"hour", "honest", "honour", "honor", "heir"}))
        return true;
    if (BeginsWithOneOf(lower, {"uni", "use", "usu", "eu", "ewe", "one", "once", "ub", "uk", "ut"}))
        return BeginsWithOneOf(lower, {"unin", "unim", "unid", "utt", "utm", "oner"});
    return IsVowel(lower.front());
}

void CheckArticle(const Place& prefixPlace, const std::string& prefix, std::string_view name,
                  Findings& findings) {
    const std::string lower = Lower(prefix);
    const std::size_t blank = lower.rfind(' ');
    const std::size_t begin = blank == std::string::npos ? 0 : blank + 1;
    const std::string_view article = std::string_view(lower).substr(begin);
    if ((article != "a" && article != "an") || name.empty() || !IsLetter(name.front()) ||
        IsHighByte(name.front()))
        return;
    const std::string_view wanted = TakesAn(name) ? "an" : "a";
    if (article == wanted)
        return;
    Place place = prefixPlace;
    place.bytes = {begin, prefix.size()};
    std::string right(wanted);
    if (prefix[begin] == 'A')
        right.front() = 'A';
    findings.Add("T09", place, "The player reads " + QuoteShortly(prefix + ' ' + std::string(name)) + '.')
        .fixes = {ReplaceBytes(ChangeTo(right), place, prefix.substr(begin), right)};
}

void FindArticles(const CheckedGame& game, Findings& findings) {
    int number = 0;
    for (const Room& room : game.Game().Rooms) {
        ++number;
        CheckArticle(Place::Of({{FieldId::GameRooms, number}}, FieldId::RoomPrefix), room.Prefix,
                     room.Alias.empty() ? room.Name : room.Alias, findings);
        const auto look = [&](const List<Thing>& things, FieldId list) {
            int entry = 0;
            for (const Thing& thing : things)
                CheckArticle(Place::Of({{FieldId::GameRooms, number}, {list, ++entry}}, FieldId::ThingPrefix),
                             thing.Prefix, thing.Name, findings);
        };
        look(room.Characters, FieldId::RoomCharacters);
        look(room.Objects, FieldId::RoomObjects);
    }
}

/// Words that stand twice on purpose, if anything does.
bool MayStandTwice(std::string_view word) {
    constexpr std::array<std::string_view, 14> Words = {"had", "that",  "very", "so",   "no",
                                                        "ha",  "bye",   "tut",  "tick", "knock",
                                                        "now", "there", "long", "far"};
    return std::any_of(Words.begin(), Words.end(),
                       [&](std::string_view known) { return EqualIgnoringCase(word, known); });
}

void FindDoubledWords(const PrintedText& text, Findings& findings) {
    TextRange before;
    ForEachWord(text.text, [&](TextRange word) {
        const std::string_view written = word.Of(text.text);
        const bool isSame = !before.IsEmpty() && EqualIgnoringCase(before.Of(text.text), written);
        const std::string_view between = text.text.substr(before.end, word.begin - before.end);
        if (isSame && !between.empty() && between.find_first_not_of(" \r\n") == std::string_view::npos &&
            !MayStandTwice(written)) {
            const TextRange both{before.begin, word.end};
            findings.Add("T10", text.At(both), "The word " + QuoteShortly(written) + " stands here twice.")
                .fixes = {ReplaceBytes("Remove one", text.At(both), both.Of(text.text),
                                       std::string(before.Of(text.text)))};
        }
        before = word;
    });
}

/// One gap of two or three blanks between words; several on a line make a table.
void FindGaps(const PrintedText& text, Findings& findings) {
    if (text.text.find("  ") == std::string_view::npos)
        return;
    ForEachLine(text.text, [&](TextRange line, int) {
        const std::string_view words = line.Of(text.text);
        TextRange gap;
        int gaps = 0;
        for (std::size_t at = words.find("  "); at != std::string_view::npos;) {
            const std::size_t end = std::min(words.find_first_not_of(' ', at), words.size());
            if (at > 0 && end < words.size()) {
                ++gaps;
                gap = {line.begin + at, line.begin + end};
            }
            at = words.find("  ", end);
        }
        const bool isBetweenWords = gaps == 1 && gap.Size() < 4 && IsLetter(text.text[gap.end]) &&
                                    (IsLetter(text.text[gap.begin - 1]) || text.text[gap.begin - 1] == ',');
        if (isBetweenWords)
            findings.Add("T11", text.At(gap), "Several blanks stand between two words.").fixes = {
                ReplaceBytes("Leave one", text.At(gap), gap.Of(text.text), " ")};
    });
}

/// A blank at the end of a text that stands between others, where one is printed anyway.
void FindEndBlanks(const PrintedText& text, Findings& findings) {
    const bool isInLine = text.place.field == FieldId::PairKey || text.place.field == FieldId::RoomAlias ||
                          text.place.field == FieldId::RoomPrefix ||
                          text.place.field == FieldId::ThingPrefix ||
                          text.place.field == FieldId::ThingSuffix;
    const std::string_view trimmed = Trim(text.text);
    if (isInLine && trimmed.size() < text.text.size())
        findings.Add("T11", text.place, "A blank stands at the end of " + QuoteShortly(trimmed) + '.')
            .fixes = {SetField("Remove it", text.place, text.text, std::string(trimmed))};
}

bool IsQuote(char c) {
    return c == '"' || c == '\x93' || c == '\x94' || c == '\x84';
}

void FindQuotes(const PrintedText& text, Findings& findings) {
    const std::string_view words = text.text;
    const bool isSaid = text.call != nullptr && text.call->call->entry->keyword == "say";
    if (isSaid && words.size() > 2 && IsQuote(words.front()) && IsQuote(words.back()) &&
        std::none_of(words.begin() + 1, words.end() - 1, IsQuote)) {
        const TextRange whole{0, words.size()};
        findings
            .Add("T12", text.At(whole),
                 "\"say\" puts quotation marks around its text by itself, so the player reads two.")
            .fixes = {ReplaceBytes("Remove them", text.At(whole), words,
                                   std::string(words.substr(1, words.size() - 2)))};
    }
    const std::size_t straight = words.find('"');
    if (straight != std::string_view::npos && words.find_first_of("\x93\x94") != std::string_view::npos)
        findings.Add("T13", text.At({straight, straight + 1}),
                     "Straight and typographic quotation marks stand in one text.");
}

/// The same of what a field refers to: other names are compared to the letter.
void FindBlanksAtReferences(const CheckedGame& game, Findings& findings) {
    ForEachText(game.Game(), [&](const Place& place, FieldUse use, const std::string& text) {
        const bool isReference = use.kind == FieldKind::Reference || use.kind == FieldKind::Exit;
        if (isReference && (text.front() == ' ' || text.back() == ' '))
            findings.Add("T11", place, "A blank stands at the end of " + QuoteShortly(text) + '.').fixes = {
                SetField("Remove it", place, text, std::string(Trim(text)))};
    });
}

void FindInWords(const CheckedGame& game, Findings& findings) {
    FindBlanksAtReferences(game, findings);
    const std::vector<PrintedText>& texts = game.Prints();
    for (const PrintedText& text : texts) {
        FindDoubledWords(text, findings);
        FindGaps(text, findings);
        FindEndBlanks(text, findings);
        FindQuotes(text, findings);
    }
    if (IsEnglish(game, texts))
        FindArticles(game, findings);
}

} // namespace

std::span<const Check> TextChecks() {
    static constexpr Check Rows[] = {
        {"T01", Level::Error, "Letters spoiled by another encoding", FindStrangeLetters},
        {"T02", Level::Warning, "Characters that the format lacks", FindStrangeLetters},
        {"T09", Level::Hint, "\"a\" and \"an\"", FindInWords},
        {"T10", Level::Hint, "Words that stand twice", FindInWords},
        {"T11", Level::Hint, "Several blanks between words", FindInWords},
        {"T12", Level::Hint, "Quotation marks in what somebody says", FindInWords},
        {"T13", Level::Hint, "Two kinds of quotation marks", FindInWords, true},
    };
    return Rows;
}

} // namespace zem::problems
