#include "reader/InternalProcedures.h"

#include "model/LineText.h"
#include "reader/LineJoins.h"

#include <deque>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace zem {

namespace {

/// A position between two characters of a block: the index of a line within the block, and a byte in it.
struct Position {
    std::size_t line = 0;
    std::size_t column = 0;
};

/// A "{" with its matching "}".
struct Brace {
    Position open;
    Position close;
    std::size_t next = 0; // index of the first brace that opens after this one is closed
};

/// The lines of a block as they stood before its braces were replaced, and its braces in order of opening.
struct BracedBlock {
    std::size_t firstLine = 0;
    std::vector<std::string_view> lines;
    std::vector<Brace> braces;
};

/// A braced script that waits to become a procedure: one brace of a block, with everything nested in it.
struct PendingScript {
    std::shared_ptr<const BracedBlock> block;
    std::size_t brace;
    std::int16_t number;
};

/// The name of an internal procedure, in its brackets.
std::string NameInBrackets(std::int16_t number) {
    return "<~Internal Procedure " + std::to_string(number) + ">";
}

std::shared_ptr<const BracedBlock> FindBraces(const SourceText& source, const BlockSpan& span) {
    auto block = std::make_shared<BracedBlock>();
    block->firstLine = span.FirstLine;
    std::vector<std::size_t> open;
    for (std::size_t index = span.FirstLine; index <= span.LastLine; ++index) {
        const std::string_view line = source.Line(index);
        block->lines.push_back(line);
        for (std::size_t at = line.find_first_of("{}"); at != std::string_view::npos;
             at = line.find_first_of("{}", at + 1)) {
            const Position here{index - span.FirstLine, at};
            if (line[at] == '{') {
                open.push_back(block->braces.size());
                block->braces.push_back({here, {}, 0});
            } else if (!open.empty()) {
                Brace& brace = block->braces[open.back()];
                brace.close = here;
                brace.next = block->braces.size();
                open.pop_back();
            }
        }
    }
    if (!open.empty()) {
        const std::size_t line = span.FirstLine + block->braces[open.front()].open.line;
        throw KelError("the \"{\" on this line is never closed", source.LineInFile(line), source.Line(line));
    }
    return block;
}

std::string_view TextBetween(const BracedBlock& block, Position from, Position to) {
    return block.lines[from.line].substr(from.column, to.column - from.column);
}

class BraceReplacer {
public:
    BraceReplacer(GameModel& game, SourceText& source) : game_(game), source_(source) {}

    void Run() {
        const std::size_t written = source_.Blocks().size();
        for (std::size_t k = 0; k < written; ++k)
            ReplaceInBlock(source_.Blocks()[k]);
        // A procedure made here may call for more: numbers go to all scripts of one depth before the next.
        for (; !pending_.empty(); pending_.pop_front())
            AppendProcedure(pending_.front());
    }

private:
    void ReplaceInBlock(const BlockSpan& span) {
        if (BeginsWith(source_.Line(span.FirstLine), "define text") || !HoldsBrace(span))
            return;
        const auto block = FindBraces(source_, span);
        const Position end{block->lines.size() - 1, block->lines.back().size()};
        Flatten(
            block, {0, 0}, end, 0, block->braces.size(),
            [&](std::size_t line, std::string_view text, bool isRewritten) {
                if (isRewritten)
                    source_.SetLine(span.FirstLine + line, std::string(text));
            },
            [&](std::size_t first, std::size_t last) {
                for (std::size_t line = first; line <= last; ++line)
                    source_.ClearLine(span.FirstLine + line);
            });
    }

    bool HoldsBrace(const BlockSpan& span) const {
        for (std::size_t index = span.FirstLine; index <= span.LastLine; ++index)
            if (source_.Line(index).find('{') != std::string_view::npos)
                return true;
        return false;
    }

    void AppendProcedure(const PendingScript& script) {
        const BracedBlock& block = *script.block;
        const Brace& brace = block.braces[script.brace];
        const Position begin{brace.open.line, brace.open.column + 1};
        const std::size_t first = source_.LineCount() + 1;
        source_.AppendSourceLine("define procedure " + NameInBrackets(script.number),
                                 Origin(block, begin.line));
        Flatten(
            script.block, begin, brace.close, script.brace + 1, brace.next,
            [&](std::size_t line, std::string_view text, bool /*isRewritten*/) {
                if (line == begin.line)
                    text = Trim(text);
                if (line != begin.line || !text.empty())
                    source_.AppendSourceLine(std::string(text), Origin(block, line));
            },
            // One empty line stands for all: a line above it that ends "__" is joined to the next one, and no
            // further. A line for each would add up to the square of the depth.
            [&](std::size_t first, std::size_t /*last*/) {
                source_.AppendSourceLine({}, Origin(block, first));
            });
        source_.AppendSourceLine("end define", Origin(block, brace.close.line));
        source_.Blocks().push_back({first, source_.LineCount()});
    }

    std::size_t Origin(const BracedBlock& block, std::size_t line) const {
        return source_.LineInFile(block.firstLine + line);
    }

    /// Walks the text from `begin` to `end`, in which the outermost braces are among `brace` to `pastBrace`,
    /// and emits its lines with each outermost braced script replaced by a call. What follows a "}" goes on
    /// on the line of its "{"; the lines below that a braced script took up are emitted empty. `emit` gets
    /// the line's number in the block, its text, and whether that differs from the block's.
    template <class Emit, class Take>
    void Flatten(const std::shared_ptr<const BracedBlock>& block, Position begin, Position end,
                 std::size_t brace, std::size_t pastBrace, Emit emit, Take take) {
        Position at = begin;
        std::size_t startingLine = begin.line;
        std::string rewritten;
        bool isRewritten = false;
        const auto finishLine = [&](Position lineEnd) {
            const std::string_view rest = TextBetween(*block, at, lineEnd);
            emit(startingLine, isRewritten ? std::string_view(rewritten.append(rest)) : rest, isRewritten);
            if (startingLine < lineEnd.line)
                take(startingLine + 1, lineEnd.line);
            rewritten.clear();
            isRewritten = false;
        };
        const auto goToLine = [&](std::size_t line) {
            while (at.line < line) {
                finishLine({at.line, block->lines[at.line].size()});
                at = {at.line + 1, 0};
                startingLine = at.line;
            }
        };
        for (; brace < pastBrace; brace = block->braces[brace].next) {
            const Brace& script = block->braces[brace];
            goToLine(script.open.line);
            rewritten.append(TextBetween(*block, at, script.open)).append(" do ");
            rewritten.append(NameInBrackets(AddPending(block, brace)));
            isRewritten = true;
            at = {script.close.line, script.close.column + 1};
        }
        goToLine(end.line);
        finishLine(end);
    }

    /// Gives the number of the procedure that the brace is to become.
    std::int16_t AddPending(const std::shared_ptr<const BracedBlock>& block, std::size_t brace) {
        std::int16_t& number = game_.NextInternalProcedure;
        const std::size_t line = block->braces[brace].open.line;
        if (number == std::numeric_limits<std::int16_t>::max())
            throw KelError("the game has too many scripts in braces: their numbers end at 32,767",
                           Origin(*block, line), block->lines[line]);
        pending_.push_back({block, brace, number});
        return number++;
    }

    GameModel& game_;
    SourceText& source_;
    std::deque<PendingScript> pending_;
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
