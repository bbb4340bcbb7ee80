#include "merge/MarkedText.h"

#include "merge/CommonRuns.h"

#include <algorithm>

namespace zem::merge {

namespace {

constexpr std::size_t ContextBytes = 40; // of a line that are shown before and behind a change

using Pieces = std::vector<std::string_view>;

std::string Join(const Pieces& words, std::size_t begin, std::size_t end) {
    std::string text;
    for (std::size_t k = begin; k < end; ++k)
        text += words[k];
    return text;
}

void Add(std::vector<MarkedPiece>& pieces, MarkedPiece::Kind kind, std::string text) {
    if (text.empty())
        return;
    if (!pieces.empty() && pieces.back().kind == kind)
        pieces.back().text += text;
    else
        pieces.push_back({kind, std::move(text)});
}

/// Cuts a stretch that is the same to what stands next to changes, at blanks.
void AddSame(std::vector<MarkedPiece>& pieces, const std::string& text, bool isFirst, bool isLast) {
    const std::size_t front = isFirst ? 0 : ContextBytes;
    const std::size_t back = isLast ? 0 : ContextBytes;
    if (text.size() <= front + back + ContextBytes) {
        Add(pieces, MarkedPiece::Same, text);
        return;
    }
    const std::size_t begin = isFirst ? 0 : std::min(text.find(' ', front), text.size());
    const std::size_t end = isLast ? text.size() : text.rfind(' ', text.size() - back);
    if (end == std::string::npos || begin >= end) {
        Add(pieces, MarkedPiece::Same, text);
        return;
    }
    Add(pieces, MarkedPiece::Same, text.substr(0, begin));
    Add(pieces, MarkedPiece::LeftOut, text.substr(begin, end - begin));
    Add(pieces, MarkedPiece::Same, text.substr(end));
}

std::vector<MarkedPiece> MarkWords(std::string_view from, std::string_view to) {
    const Pieces a = WordsOf(from);
    const Pieces b = WordsOf(to);
    std::vector<CommonRun> runs = CommonRuns(a, b);
    // A blank or a comma that both happen to have between other words would tear the change into crumbs.
    std::erase_if(runs, [&](const CommonRun& run) {
        const bool atEnd = run.a == 0 || run.a + run.count == a.size();
        return !atEnd && run.count == 1 && a[run.a].size() == 1;
    });
    runs.push_back({a.size(), b.size(), 0});
    std::vector<MarkedPiece> pieces;
    std::size_t atA = 0;
    std::size_t atB = 0;
    for (const CommonRun& run : runs) {
        Add(pieces, MarkedPiece::Removed, Join(a, atA, run.a));
        Add(pieces, MarkedPiece::Added, Join(b, atB, run.b));
        atA = run.a + run.count;
        atB = run.b + run.count;
        const bool isFirst = run.a == 0 && run.b == 0;
        const bool isLast = atA == a.size() && atB == b.size();
        AddSame(pieces, Join(a, run.a, atA), isFirst, isLast);
    }
    return pieces;
}

} // namespace

std::vector<MarkedLine> MarkChanges(std::string_view from, std::string_view to) {
    const Pieces a = LinesOf(from);
    const Pieces b = LinesOf(to);
    std::vector<CommonRun> runs = CommonRuns(a, b);
    runs.push_back({a.size(), b.size(), 0});
    std::vector<MarkedLine> lines;
    std::size_t atA = 0;
    std::size_t atB = 0;
    for (const CommonRun& run : runs) {
        // Lines that stand for each other are shown as one.
        for (; atA < run.a && atB < run.b; ++atA, ++atB)
            lines.push_back({atB + 1, MarkWords(a[atA], b[atB])});
        for (; atA < run.a; ++atA)
            lines.push_back({atA + 1, {{MarkedPiece::Removed, std::string(a[atA])}}});
        for (; atB < run.b; ++atB)
            lines.push_back({atB + 1, {{MarkedPiece::Added, std::string(b[atB])}}});
        atA = run.a + run.count;
        atB = run.b + run.count;
    }
    // The end of the last line of a script is no line of its own.
    std::erase_if(lines, [](const MarkedLine& line) {
        return line.pieces.empty() || (line.pieces.size() == 1 && line.pieces.front().text.empty());
    });
    return lines;
}

} // namespace zem::merge
