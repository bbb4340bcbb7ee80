#include "reader/InternalProcedures.h"

#include "base/LineText.h"
#include "reader/LineJoins.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <deque>
#include <limits>
#include <string>
#include <vector>

namespace zem {

namespace {

/// A position between two characters of a block: the index of a line within the block, and a byte in it.
struct Position {
    std::uint32_t line = 0;
    std::uint32_t column = 0;
};

/// A "{" with its matching "}".
struct Brace {
    Position open;
    Position close;
    std::uint32_t next = 0; // index of the first brace that opens after this one is closed
};

/// A part of a block from one position to another, in which the outermost braces are `brace`, the one that
/// opens after it is closed, and so on to before `pastBrace`.
struct Stretch {
    Position begin;
    Position end;
    std::uint32_t brace = 0;
    std::uint32_t pastBrace = 0;
};

/// The lines of a block as they stood before its braces were replaced, and its braces in order of opening.
struct BracedBlock {
    std::size_t firstLine = 0;
    std::vector<SourceText::Piece> lines;
    std::vector<Brace> braces;

    Stretch Whole() const {
        return {{},
                EndOf(static_cast<std::uint32_t>(lines.size() - 1)),
                0,
                static_cast<std::uint32_t>(braces.size())};
    }
    Stretch Inside(std::uint32_t brace) const {
        const auto& [open, close, next] = braces[brace];
        return {{open.line, open.column + 1}, close, brace + 1, next};
    }

    Position EndOf(std::uint32_t line) const { return {line, lines[line].size}; }

    /// The text between two positions on one line.
    SourceText::Piece Between(Position from, Position to) const {
        assert(from.line == to.line && from.column <= to.column);
        return {lines[from.line].start + from.column, to.column - from.column};
    }
};

/// A line with calls in the place of its braced scripts, and the lines of the block that it came from: what
/// follows a "}" goes on on the line of its "{".
struct FlatLine {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    SourceText::Piece text;
};

/// A braced script that waits to become a procedure: one brace of a block, with everything nested in it.
struct PendingScript {
    const BracedBlock* block;
    std::uint32_t brace;
    std::int16_t number;
};

/// @param count  of the "{" in the block
BracedBlock FindBraces(const SourceText& source, const BlockSpan& span, std::size_t count) {
    BracedBlock block;
    block.lines.reserve(span.LastLine - span.FirstLine + 1);
    block.braces.reserve(count);
    block.firstLine = span.FirstLine;
    std::vector<std::uint32_t> open;
    for (std::size_t index = span.FirstLine; index <= span.LastLine; ++index) {
        const std::string_view line = source.Line(index);
        block.lines.push_back(source.LinePiece(index));
        for (std::size_t at = line.find_first_of("{}"); at != std::string_view::npos;
             at = line.find_first_of("{}", at + 1)) {
            const Position here{static_cast<std::uint32_t>(index - span.FirstLine),
                                static_cast<std::uint32_t>(at)};
            if (line[at] == '{') {
                open.push_back(static_cast<std::uint32_t>(block.braces.size()));
                block.braces.push_back({here, {}, 0});
            } else if (!open.empty()) {
                Brace& brace = block.braces[open.back()];
                brace.close = here;
                brace.next = static_cast<std::uint32_t>(block.braces.size());
                open.pop_back();
            }
        }
    }
    if (!open.empty()) {
        const std::size_t line = span.FirstLine + block.braces[open.front()].open.line;
        throw KelError("the \"{\" on this line is never closed", source.LineInFile(line), source.Line(line));
    }
    return block;
}

class BraceReplacer {
public:
    BraceReplacer(GameModel& game, SourceText& source) : game_(game), source_(source) {}

    void Run() {
        if (!source_.Holds('{'))
            return;
        const std::size_t written = source_.Blocks().size();
        for (std::size_t k = 0; k < written; ++k)
            ReplaceInBlock(source_.Blocks()[k]);
        // A procedure made here may call for more: numbers go to all scripts of one depth before the next.
        for (; !pending_.empty(); pending_.pop_front())
            AppendProcedure(pending_.front());
    }

private:
    void ReplaceInBlock(const BlockSpan& span) {
        if (BeginsWith(source_.Line(span.FirstLine), "define text"))
            return;
        const std::size_t count = CountBraces(span);
        if (count == 0)
            return;
        const BracedBlock& block = blocks_.emplace_back(FindBraces(source_, span, count));
        for (const FlatLine& line : Flatten(block, block.Whole())) {
            source_.SetLine(span.FirstLine + line.first, line.text);
            for (std::size_t taken = line.first + 1; taken <= line.last; ++taken)
                source_.ClearLine(span.FirstLine + taken);
        }
    }

    std::size_t CountBraces(const BlockSpan& span) const {
        std::size_t count = 0;
        for (std::size_t index = span.FirstLine; index <= span.LastLine; ++index) {
            const std::string_view line = source_.Line(index);
            count += static_cast<std::size_t>(std::count(line.begin(), line.end(), '{'));
        }
        return count;
    }

    void AppendProcedure(const PendingScript& script) {
        const BracedBlock& block = *script.block;
        const Stretch stretch = block.Inside(script.brace);
        const std::size_t first = source_.LineCount() + 1;
        text_ = "define procedure ";
        AppendName(script.number);
        source_.AppendSourceLine(source_.MakeText(text_), Origin(block, stretch.begin.line));
        for (const FlatLine& line : Flatten(block, stretch))
            AppendProcedureLine(block, line, line.first == stretch.begin.line);
        source_.AppendSourceLine(source_.MakeText("end define"), Origin(block, stretch.end.line));
        source_.Blocks().push_back({first, source_.LineCount()});
    }

    void AppendProcedureLine(const BracedBlock& block, const FlatLine& line, bool isFirst) {
        const SourceText::Piece text = isFirst ? source_.Trimmed(line.text) : line.text;
        if (!isFirst || text.size != 0)
            source_.AppendSourceLine(text, Origin(block, line.first));
        // One empty line stands for all: a line above it that ends "__" is joined to the next one, and no
        // further. A line for each would add up to the square of the depth.
        if (line.last > line.first)
            source_.AppendSourceLine({}, Origin(block, line.first + 1));
    }

    std::size_t Origin(const BracedBlock& block, std::size_t line) const {
        return source_.LineInFile(block.firstLine + line);
    }

    /// The lines of a part of a block, with a call of a procedure to be made for each outermost braced
    /// script.
    std::vector<FlatLine> Flatten(const BracedBlock& block, const Stretch& stretch) {
        std::vector<FlatLine> lines;
        std::uint32_t brace = stretch.brace;
        for (Position at = stretch.begin; at.line <= stretch.end.line; at = {at.line + 1, 0}) {
            const std::uint32_t first = at.line;
            const std::uint32_t firstBrace = brace;
            text_.clear();
            for (; brace < stretch.pastBrace && block.braces[brace].open.line == at.line;
                 brace = block.braces[brace].next) {
                const Brace& script = block.braces[brace];
                text_.append(source_.Text(block.Between(at, script.open))).append(" do ");
                AppendName(AddPending(block, brace));
                at = {script.close.line, script.close.column + 1};
            }
            SourceText::Piece text =
                block.Between(at, at.line == stretch.end.line ? stretch.end : block.EndOf(at.line));
            if (brace != firstBrace)
                text = source_.MakeText(text_.append(source_.Text(text)));
            lines.push_back({first, at.line, text});
        }
        return lines;
    }

    /// Adds the name of an internal procedure, in its brackets, to the text that is being made.
    void AppendName(std::int16_t number) {
        text_.append("<").append(InternalProcedure).append(" ").append(std::to_string(number)).append(">");
    }

    /// Gives the number of the procedure that the brace is to become.
    std::int16_t AddPending(const BracedBlock& block, std::uint32_t brace) {
        std::int16_t& number = game_.NextInternalProcedure;
        const std::size_t line = block.braces[brace].open.line;
        if (number == std::numeric_limits<std::int16_t>::max())
            throw KelError("the game has too many scripts in braces: their numbers end at 32,767",
                           Origin(block, line), source_.Text(block.lines[line]));
        pending_.push_back({&block, brace, number});
        return number++;
    }

    GameModel& game_;
    SourceText& source_;
    std::deque<BracedBlock> blocks_; // a deque, because pending scripts point to them
    std::deque<PendingScript> pending_;
    std::string text_; // of the line that is being made
};

} // namespace

void MakeInternalProcedures(GameModel& game, SourceText& source) {
    BraceReplacer(game, source).Run();
    for (const BlockSpan& block : source.Blocks()) {
        const std::string_view first = source.Line(block.FirstLine);
        if (BeginsWith(first, "define room") || BeginsWith(first, "define procedure")) {
            JoinElseLines(source, block);
            JoinContinuedLines(source, block);
        }
    }
}

} // namespace zem
