#include "reader/InternalProcedures.h"

#include "base/LineText.h"
#include "reader/LineJoins.h"

#include <algorithm>
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

/// The lines of a block as they stood before its braces were replaced, and its braces in order of opening.
struct BracedBlock {
    std::size_t firstLine = 0;
    std::vector<SourceText::Piece> lines;
    std::vector<Brace> braces;

    Position End() const { return {static_cast<std::uint32_t>(lines.size() - 1), lines.back().size}; }

    /// The text between two positions on one line.
    SourceText::Piece Between(Position from, Position to) const {
        return {lines[from.line].start + from.column, to.column - from.column};
    }
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
        Flatten(
            block, {0, 0}, block.End(), 0, static_cast<std::uint32_t>(block.braces.size()),
            [&](std::size_t line, SourceText::Piece text) { source_.SetLine(span.FirstLine + line, text); },
            [&](std::size_t first, std::size_t last) {
                for (std::size_t line = first; line <= last; ++line)
                    source_.ClearLine(span.FirstLine + line);
            });
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
        const Brace& brace = block.braces[script.brace];
        const Position begin{brace.open.line, brace.open.column + 1};
        const std::size_t first = source_.LineCount() + 1;
        text_ = "define procedure ";
        AppendName(script.number);
        source_.AppendSourceLine(source_.MakeText(text_), Origin(block, begin.line));
        Flatten(
            block, begin, brace.close, script.brace + 1, brace.next,
            [&](std::size_t line, SourceText::Piece text) {
                if (line == begin.line)
                    text = source_.Trimmed(text);
                if (line != begin.line || text.size != 0)
                    source_.AppendSourceLine(text, Origin(block, line));
            },
            // One empty line stands for all: a line above it that ends "__" is joined to the next one, and no
            // further. A line for each would add up to the square of the depth.
            [&](std::size_t firstTaken, std::size_t /*last*/) {
                source_.AppendSourceLine({}, Origin(block, firstTaken));
            });
        source_.AppendSourceLine(source_.MakeText("end define"), Origin(block, brace.close.line));
        source_.Blocks().push_back({first, source_.LineCount()});
    }

    std::size_t Origin(const BracedBlock& block, std::size_t line) const {
        return source_.LineInFile(block.firstLine + line);
    }

    /// Walks the text from `begin` to `end`, in which the outermost braces are among `brace` to `pastBrace`,
    /// and emits its lines with each outermost braced script replaced by a call. What follows a "}" goes on
    /// on the line of its "{"; the lines below that a braced script took up go to `take`. `emit` gets the
    /// line's number in the block and its text.
    template <class Emit, class Take>
    void Flatten(const BracedBlock& block, Position begin, Position end, std::uint32_t brace,
                 std::uint32_t pastBrace, Emit emit, Take take) {
        Position at = begin;
        std::uint32_t startingLine = begin.line;
        bool isRewritten = false; // then the line's text up to `at` is in text_
        const auto finishLine = [&](Position lineEnd) {
            SourceText::Piece text = block.Between(at, lineEnd);
            if (isRewritten)
                text = source_.MakeText(text_.append(source_.Text(text)));
            emit(startingLine, text);
            if (startingLine < lineEnd.line)
                take(startingLine + 1, lineEnd.line);
            isRewritten = false;
        };
        const auto goToLine = [&](std::uint32_t line) {
            while (at.line < line) {
                finishLine({at.line, block.lines[at.line].size});
                at = {at.line + 1, 0};
                startingLine = at.line;
            }
        };
        for (; brace < pastBrace; brace = block.braces[brace].next) {
            const Brace& script = block.braces[brace];
            goToLine(script.open.line);
            if (!isRewritten)
                text_.clear();
            isRewritten = true;
            text_.append(source_.Text(block.Between(at, script.open))).append(" do ");
            AppendName(AddPending(block, brace));
            at = {script.close.line, script.close.column + 1};
        }
        goToLine(end.line);
        finishLine(end);
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
