// The format codes in printed texts.
#include "base/LineText.h"
#include "problems/Checks.h"
#include "problems/Fixes.h"
#include "problems/PrintedTexts.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

namespace zem::problems {

namespace {

enum class Effect { None, On, Off, Colour, Clear, Size, Side, NewLine };

/// A "|" and what belongs to it.
struct Code {
    TextRange range;
    Effect effect = Effect::None;
    char style = 0;      // of On and Off
    bool isKnown = true; // also false for a "|" at the end
};

Code ReadCode(std::string_view text, std::size_t at) {
    const auto letter = [&](std::size_t offset) {
        return at + offset < text.size() ? text[at + offset] : '\0';
    };
    const auto isOneOf = [](char c, std::string_view letters) {
        return c != '\0' && letters.find(c) != std::string_view::npos;
    };
    const char first = letter(1);
    if (isOneOf(first, "bui"))
        return {{at, at + 2}, Effect::On, first, true};
    if (first == 'x' && isOneOf(letter(2), "bui"))
        return {{at, at + 3}, Effect::Off, letter(2), true};
    if (first == 'c')
        return isOneOf(letter(2), "rblyg") ? Code{{at, at + 3}, Effect::Colour, letter(2), true}
                                           : Code{{at, at + 2}, Effect::Clear, 0, true};
    if (first == 'j' && isOneOf(letter(2), "clr"))
        return {{at, at + 3}, Effect::Side, 0, true};
    if (isOneOf(first, "nw"))
        return {{at, at + 2}, first == 'n' ? Effect::NewLine : Effect::None, 0, true};
    if (first == 's')
        return {{at, std::min(at + (IsDigit(letter(2)) ? IsDigit(letter(3)) ? 4 : 3 : 2), text.size())},
                Effect::Size,
                0,
                true};
    return {{at, std::min(at + 2, text.size())}, Effect::None, 0, false};
}

std::vector<Code> CodesOf(std::string_view text) {
    std::vector<Code> codes;
    for (std::size_t at = text.find('|'); at != std::string_view::npos;) {
        codes.push_back(ReadCode(text, at));
        at = text.find('|', codes.back().range.end);
    }
    return codes;
}

class CodeSearch {
public:
    CodeSearch(const CheckedGame& game, Findings& findings) : texts_(game.Prints()), findings_(findings) {}

    void Run() {
        for (const PrintedText& text : texts_) {
            if (text.text.find('|') == std::string_view::npos)
                continue;
            const std::vector<Code> codes = CodesOf(text.text);
            for (const Code& code : codes)
                FindUnknown(text, code);
            FindSwitches(text, codes);
            FindOpenColour(text, codes);
            FindOpenSetting(text, codes, Effect::Size);
            FindOpenSetting(text, codes, Effect::Side);
        }
    }

private:
    void FindUnknown(const PrintedText& text, const Code& code) {
        const std::string_view written = code.range.Of(text.text);
        if (!code.isKnown) {
            const std::string small = Lower(written);
            const bool isSmallOneKnown = small != written && ReadCode(small + Rest(text, code), 0).isKnown;
            Problem& problem = findings_.Add(
                "T03", text.At(code.range),
                written.size() < 2 ? "A \"|\" at the end of a text is no code."
                                   : "There is no code " + QuoteShortly(written) +
                                         ": neither the bar nor the character behind it is printed.");
            if (isSmallOneKnown)
                problem.fixes.push_back(ReplaceBytes(ChangeTo(small), text.At(code.range), written, small));
            problem.fixes.push_back(
                ReplaceBytes("Remove the bar", text.At({code.range.begin, code.range.begin + 1}), "|", ""));
        } else if (code.effect == Effect::Size && written.size() < 4) {
            Problem& problem = findings_.Add(
                "T04", text.At(code.range),
                "A size has two digits, as in \"|s09\": " + QuoteShortly(written) + " changes nothing.");
            if (written.size() == 3) {
                const std::string mended = "|s0" + std::string(written.substr(2));
                problem.fixes = {ReplaceBytes(ChangeTo(mended), text.At(code.range), written, mended)};
                problem.fixes.front().needsNoChoice = true;
            }
        } else if (code.effect == Effect::Clear) {
            FindLostColour(text, code);
        } else if (code.effect == Effect::Colour) {
            FindColourWord(text, code);
        } else if (code.effect == Effect::NewLine && text.place.field == FieldId::TextText) {
            const TextRange whole = WithBlanks(text, code.range);
            findings_
                .Add("T08", text.At(code.range),
                     "In a text block a new line can simply begin; \"|n\" is for texts "
                     "that stand on one line.")
                .fixes = {ReplaceBytes("Begin a new line", text.At(whole), whole.Of(text.text), "\r\n")};
        }
    }

    /// The code with the blanks around it, which would stand at the ends of two lines and be lost.
    static TextRange WithBlanks(const PrintedText& text, TextRange range) {
        while (range.begin > 0 && text.text[range.begin - 1] == ' ')
            --range.begin;
        while (range.end < text.text.size() && text.text[range.end] == ' ')
            ++range.end;
        return range;
    }

    static std::string Rest(const PrintedText& text, const Code& code) {
        return std::string(text.text.substr(code.range.end, 2));
    }

    /// "|cblue" is "lue" in black: the author meant to clear the screen, or to name the colour.
    void FindColourWord(const PrintedText& text, const Code& code) {
        std::size_t end = code.range.end;
        while (end < text.text.size() && IsLetter(text.text[end]))
            ++end;
        const std::size_t begin = code.range.end - 1;
        const std::string whole = Lower(text.text.substr(begin, end - begin));
        const std::string rest = Lower(text.text.substr(begin + 1, end - begin - 1));
        if (rest.empty() || !IsWord(whole) || IsWord(rest))
            return;
        findings_
            .Add("T07", text.At({code.range.begin, end}),
                 QuoteShortly(text.text.substr(code.range.begin, 3)) + " is a colour, so " +
                     QuoteShortly(rest) + " is printed in it: put a blank behind \"|c\" to clear the screen.")
            .fixes = {ReplaceBytes("Insert a blank", text.At({begin, end}),
                                   text.text.substr(begin, end - begin),
                                   ' ' + std::string(text.text.substr(begin, end - begin)))};
    }

    /// "|cR" clears the screen and prints an R, which the author hardly meant.
    void FindLostColour(const PrintedText& text, const Code& code) {
        const std::size_t at = code.range.end;
        if (at >= text.text.size() || !IsLetter(text.text[at]))
            return;
        const bool isAlone = at + 1 == text.text.size() || !IsLetter(text.text[at + 1]);
        const char small = Lower(text.text[at]);
        const bool isColour =
            small != text.text[at] && std::string_view("rblyg").find(small) != std::string::npos;
        if (!isAlone && !isColour)
            return;
        std::size_t end = at;
        while (end < text.text.size() && IsLetter(text.text[end]))
            ++end;
        if (!isAlone && IsWord(Lower(text.text.substr(at, end - at))))
            return;
        const TextRange range = {code.range.begin, at + 1};
        const std::string_view written = range.Of(text.text);
        Problem& problem = findings_.Add("T03", text.At(range),
                                         "There is no colour " + QuoteShortly(written) +
                                             ": this clears the screen and prints the letter.");
        if (isColour) {
            const std::string mended = std::string("|c") + small;
            problem.fixes = {ReplaceBytes(ChangeTo(mended), text.At(range), written, mended)};
        }
    }

    static bool StandsBehindColour(std::string_view text, std::size_t at) {
        return at >= 3 && text.substr(at - 3, 2) == "|c";
    }

    /// Whether the texts of the game have the word, or it is the name of a colour.
    bool IsWord(const std::string& word) {
        if (words_.empty()) {
            words_ = {"red",   "black", "blue", "yellow", "green", "lack",
                      "right", "look",  "back", "good",   "you"};
            words_.erase("lack");
            for (const PrintedText& text : texts_)
                ForEachWord(text.text, [&](TextRange range) {
                    if (!StandsBehindColour(text.text, range.begin))
                        words_.insert(Lower(range.Of(text.text)));
                });
        }
        return words_.contains(word);
    }

    /// A colour that is not the normal one when the text ends. One that begins with the text is meant for all
    /// of it.
    void FindOpenColour(const PrintedText& text, const std::vector<Code>& codes) {
        const auto last = std::find_if(codes.rbegin(), codes.rend(),
                                       [](const Code& code) { return code.effect == Effect::Colour; });
        if (last == codes.rend() || last->style == 'b' || last->range.begin == 0)
            return;
        const std::string_view rest = text.text.substr(last->range.begin);
        findings_
            .Add("T05", text.At(last->range),
                 "Nothing ends the colour of " + QuoteShortly(last->range.Of(text.text)) +
                     " again: it holds to the end of the text.")
            .fixes = {ReplaceBytes("Add |cb at the end", text.At({last->range.begin, text.text.size()}), rest,
                                   std::string(rest) + "|cb")};
    }

    /// A size, or a side, that is set once and not at the beginning: what follows was not meant to have it.
    void FindOpenSetting(const PrintedText& text, const std::vector<Code>& codes, Effect effect) {
        const auto isIt = [&](const Code& code) { return code.effect == effect; };
        const auto code = std::find_if(codes.begin(), codes.end(), isIt);
        if (code == codes.end() || std::count_if(codes.begin(), codes.end(), isIt) > 1)
            return;
        std::size_t begin = 0; // of what is printed
        for (const Code& other : codes)
            if (other.range.begin == begin)
                begin = other.range.end;
        if (code->range.begin > begin)
            findings_.Add("T05", text.At(code->range),
                          "Nothing takes " + QuoteShortly(code->range.Of(text.text)) +
                              " back again: it holds to the end of the text.");
    }

    void FindSwitches(const PrintedText& text, const std::vector<Code>& codes) {
        std::string on;       // the styles that are on
        std::string switched; // the codes that switch them off
        for (const Code& code : codes) {
            const bool isOn = on.find(code.style) != std::string::npos;
            if ((code.effect == Effect::On && isOn) || (code.effect == Effect::Off && !isOn)) {
                const std::string_view written = code.range.Of(text.text);
                findings_
                    .Add("T06", text.At(code.range),
                         QuoteShortly(written) +
                             (isOn ? " switches on what is on already." : " switches off what is not on."))
                    .fixes = {ReplaceBytes("Remove it", text.At(code.range), written, "")};
            } else if (code.effect == Effect::On) {
                on += code.style;
            } else if (code.effect == Effect::Off) {
                on.erase(on.find(code.style), 1);
            }
        }
        if (on.empty())
            return;
        const auto last = std::find_if(codes.rbegin(), codes.rend(), [&](const Code& code) {
            return code.effect == Effect::On && code.style == on.back();
        });
        const std::string_view rest = text.text.substr(last->range.begin);
        for (auto style = on.rbegin(); style != on.rend(); ++style)
            switched += std::string("|x") + *style;
        findings_
            .Add("T05", text.At(last->range),
                 "Nothing switches " + QuoteShortly(last->range.Of(text.text)) +
                     " off again: it holds to the end of the text.")
            .fixes = {ReplaceBytes("Add " + switched + " at the end",
                                   text.At({last->range.begin, text.text.size()}), rest,
                                   std::string(rest) + switched)};
    }

    const std::vector<PrintedText>& texts_;
    Findings& findings_;
    std::unordered_set<std::string> words_;
};

void FindInCodes(const CheckedGame& game, Findings& findings) {
    CodeSearch(game, findings).Run();
}

} // namespace

std::span<const Check> CodeChecks() {
    static constexpr Check Rows[] = {
        {"T03", Level::Warning, "Unknown format codes", FindInCodes},
        {"T04", Level::Warning, "Sizes without two digits", FindInCodes},
        {"T05", Level::Hint, "Codes that are never switched off", FindInCodes},
        {"T06", Level::Hint, "Codes that switch nothing", FindInCodes},
        {"T07", Level::Warning, "Colours that begin a word", FindInCodes},
        {"T08", Level::Hint, "New lines by code in text blocks", FindInCodes},
    };
    return Rows;
}

} // namespace zem::problems
