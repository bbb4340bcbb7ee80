// How the reason is found. All that is known of a text is whether it comes back from a file in its place, and
// the same can be asked of any other text there. So nothing here knows which field it is about or how that is
// written:
//
// - What kind of place it is, is asked first. Where a text of two lines comes back each line means something
// in
//   itself (tags, procedures, text blocks); where "x" does it is a line of a field; where a whole block does
//   it is the blocks of other kinds.
// - Of a field, each cause of the table below is tried in turn. A cause knows how to take itself out of a
// text, for
//   instance by turning each ">" into a ".". The text with all causes taken out but one is asked for: if that
//   does not come back, this cause is enough to lose it, and its sentence is the answer. The order of the
//   table is that of the effects: a line break acts before a bracket does.
// - Of lines, the first one that does not come back by itself is looked for, and then why, by the causes that
// act
//   on lines. A line that begins or ends a block counts only when no other line is to blame, because it may
//   well have its counterpart. When every line comes back alone, "else" lines may join others.
// - Of blocks, each is tried alone.
//
// When no cause is enough by itself the sentence says that it means something else, and quotes it.
#include "readback/LossReason.h"

#include "base/LineText.h"
#include "base/TextFile.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <vector>

namespace zem {

namespace {

using ComesBack = std::function<bool(const std::string&)>;

std::string Replace(std::string text, char from, char to) {
    std::replace(text.begin(), text.end(), from, to);
    return text;
}

bool IsBlank(const std::string& text) {
    return Trim(text).empty();
}

/// What a line must not begin with, in any place of a file.
std::string_view SpecialWord(std::string_view text) {
    for (const std::string_view word : {"define", "end define", "!include"})
        if (BeginsWith(text, word))
            return word;
    return {};
}

/// Something that keeps a text from coming back, and the text without it.
struct Cause {
    std::string (*without)(const std::string& text);
    std::string (*sentence)(const std::string& text, const std::string& noun);
};

template <char Sign>
std::string WithoutSign(const std::string& text) {
    return Replace(text, Sign, '.');
}

// The first ones concern every line, the others what stands in brackets or in a list.
constexpr Cause Causes[] = {
    {[](const std::string& text) { return Replace(Replace(text, '\n', '.'), '\r', '.'); },
     [](const std::string&, const std::string& noun) {
         return "the line break in " + noun + " ends it early";
     }},
    {WithoutSign<'\t'>,
     [](const std::string&, const std::string& noun) { return "the tab in " + noun + " becomes blanks"; }},
    {[](const std::string& text) { return IsBlank(text) ? "x" : text; },
     [](const std::string&, const std::string& noun) { return noun + " is nothing but blanks"; }},
    {[](const std::string& text) { return SpecialWord(text).empty() ? text : "x" + text; },
     [](const std::string& text, const std::string& noun) {
         return '"' + std::string(SpecialWord(text)) + "\" at the start of " + noun +
                " means something of its own there";
     }},
    {[](const std::string& text) { return Replace(WithoutSign<'{'>(text), '}', '.'); },
     [](const std::string&, const std::string& noun) {
         return "the \"{\" in " + noun + " begins a script of several lines";
     }},
    {[](const std::string& text) {
         return text.ends_with("__") ? text.substr(0, text.size() - 2) + ".." : text;
     },
     [](const std::string&, const std::string& noun) {
         return "the \"__\" at the end of " + noun + " joins its line with the next";
     }},
    {[](const std::string& text) { return text.starts_with('<') ? "x" + text : text; },
     [](const std::string&, const std::string& noun) {
         return "the \"<\" at the start of " + noun + " keeps it from being read as a script";
     }},
    {WithoutSign<'>'>,
     [](const std::string&, const std::string& noun) { return "the \">\" in " + noun + " ends it early"; }},
    {WithoutSign<','>,
     [](const std::string&, const std::string& noun) { return "the comma in " + noun + " ends it early"; }},
    {WithoutSign<';'>, [](const std::string&,
                          const std::string& noun) { return "the semicolon in " + noun + " ends it early"; }},
    {WithoutSign<'='>,
     [](const std::string&, const std::string& noun) { return "the \"=\" in " + noun + " ends it early"; }},
};

constexpr std::span<const Cause> CausesOfLines = std::span(Causes).first(6);

/// The text without all causes but one.
std::string WithOnly(const Cause* kept, std::string text) {
    for (const Cause& cause : Causes)
        if (&cause != kept)
            text = cause.without(text);
    return text;
}

/// The sentence for the first cause that keeps the text from coming back all by itself; empty if there is
/// none.
std::string CauseOf(std::span<const Cause> causes, const std::string& text, const ComesBack& comesBack,
                    const std::string& noun) {
    for (const Cause& cause : causes)
        if (cause.without(text) != text && !comesBack(WithOnly(&cause, text)))
            return cause.sentence(text, noun);
    return {};
}

std::vector<std::string> FilledLines(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty())
        if (const std::string_view line = TakeLine(text); !Trim(line).empty())
            lines.emplace_back(line);
    return lines;
}

std::string ReasonOfLine(const std::string& line, const ComesBack& comesBack) {
    const std::string shown = "the line " + QuoteShortly(line);
    if (line.starts_with(' ') && comesBack(std::string(Trim(line))))
        return "the blanks at the start of " + shown + " are lost";
    if (BeginsWith(line, "'"))
        return shown + " is a comment there, and dropped";
    const std::string cause = CauseOf(CausesOfLines, line, comesBack, shown);
    return cause.empty() ? shown + " means something of its own there" : cause;
}

/// The text with its "else" lines marked as others.
std::string WithoutElse(const std::string& text) {
    std::string other;
    for (const std::string& line : FilledLines(text))
        other += (BeginsWith(line, "else") ? "." : "") + line + "\r\n";
    return other;
}

/// For a text of several lines, each of which means something in itself.
std::string ReasonOfLines(const std::string& text, const ComesBack& comesBack) {
    // The first line that begins or ends a block. Alone it never comes back, but its counterpart may follow.
    std::string block;
    for (const std::string& line : FilledLines(text)) {
        if (comesBack(line + "\r\n"))
            continue;
        if (!BeginsWith(line, "define") && !BeginsWith(line, "end define"))
            return ReasonOfLine(line, comesBack);
        if (block.empty())
            block = line;
    }
    if (!block.empty())
        return ReasonOfLine(block, comesBack);
    const bool joins = comesBack(WithoutElse(text));
    return joins ? "an \"else\" line in it joins an \"if\" line above it"
                 : "its lines mean something else together";
}

/// For one whole block that is read as something else.
std::string ReasonOfBlock(const std::string& block, const ComesBack& comesBack) {
    const std::string shown = "the block " + QuoteShortly(block.substr(0, block.find("\r\n")));
    if (comesBack(Replace(Replace(block, '{', '('), '}', ')')))
        return "the \"{\" in " + shown + " begins a script of several lines";
    return shown + " means something of its own there";
}

/// For a text that is made of whole blocks.
std::string ReasonOfBlocks(const std::string& text, const ComesBack& comesBack) {
    std::string block;
    int depth = 0;
    for (const std::string& line : FilledLines(text)) {
        depth += BeginsWith(line, "define") ? 1 : BeginsWith(line, "end define") ? -1 : 0;
        if (block.empty() && depth <= 0)
            return "the line " + QuoteShortly(line) + " stands outside of all blocks";
        block += line + "\r\n";
        if (depth > 0)
            continue;
        if (!comesBack(block + "\r\n"))
            return ReasonOfBlock(block, comesBack);
        block.clear();
    }
    if (!block.empty())
        return "the block " + QuoteShortly(block.substr(0, block.find("\r\n"))) + " has no \"end define\"";
    return "its blocks are not kept apart there";
}

std::string ReasonOfText(const std::string& text, const ComesBack& comesBack, const std::string& noun) {
    const std::string cause = CauseOf(Causes, text, comesBack, noun);
    return cause.empty() ? QuoteShortly(text) + " means something else there" : cause;
}

} // namespace

std::string LossReason(const std::string& text, const ComesBack& comesBack, const std::string& noun) {
    if (comesBack("x\r\ny\r\n") || comesBack("x\r\ny"))
        return ReasonOfLines(text, comesBack);
    if (comesBack("x"))
        return ReasonOfText(text, comesBack, noun);
    if (comesBack("define x\r\nend define\r\n\r\n"))
        return ReasonOfBlocks(text, comesBack);
    return noun + " is not kept there";
}

} // namespace zem
