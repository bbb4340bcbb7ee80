#pragma once

#include "model/TextFile.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace zem {

/// A top-level "define" block: the 1-based indices of its "define ..." line and its "end define" line.
struct BlockSpan {
    std::size_t FirstLine = 0;
    std::size_t LastLine = 0;
};

/// The lines of a game file while it is read, 1-based, and the index of its top-level blocks. A line is a
/// piece of the file's bytes, or a text of its own once it was rewritten; files may have any number of lines
/// and blocks, so that every game that can be saved can be opened again.
class SourceText {
public:
    /// Splits the bytes of a file at CR LF and LF, and expands the tabs. Throws KelError when there is no
    /// line and for files of 4 GB and more.
    explicit SourceText(std::string bytes);

    std::size_t LineCount() const { return lines_.size(); }

    /// The line's text; good until that line is trimmed or appended to.
    std::string_view Line(std::size_t index) const {
        const LineRef line = lines_[index - 1];
        return line.size == Rewritten ? std::string_view(texts_[line.start])
                                      : std::string_view(bytes_).substr(line.start, line.size);
    }

    /// Replaces a line by a new text.
    void SetLine(std::size_t index, std::string text);
    void ClearLine(std::size_t index) { lines_[index - 1] = {}; }

    /// Adds text at the end of a line.
    void AppendToLine(std::size_t index, std::string_view text);

    /// Adds a line at the end, which came from line `origin` of the file.
    void AppendSourceLine(std::string text, std::size_t origin);

    /// The number in the file of the line that this line came from.
    std::size_t LineInFile(std::size_t index) const;

    /// Removes the leading and trailing blanks of every line.
    void TrimLines();

    /// Finds the top-level blocks, nested ones belonging to the block around them. Throws KelError for a
    /// block that has no "end define".
    void IndexBlocks();

    std::vector<BlockSpan>& Blocks() { return blocks_; }
    const std::vector<BlockSpan>& Blocks() const { return blocks_; }

    /// Gives the line to `use`, and ties a KelError that comes out of it to the line.
    template <class Use>
    void UseLine(std::size_t index, Use use) const {
        try {
            use(Line(index));
        } catch (const KelError& error) {
            if (error.Line() != 0)
                throw;
            throw KelError(error.Problem(), LineInFile(index), Line(index));
        }
    }

    /// UseLine for each line of the block between its first and its last.
    template <class Use>
    void UseInnerLines(const BlockSpan& block, Use use) const {
        for (std::size_t index = block.FirstLine + 1; index < block.LastLine; ++index)
            UseLine(index, use);
    }

private:
    /// Half the size of a view: a file has many lines, and they are in memory together with the whole game.
    struct LineRef {
        std::uint32_t start = 0; // in the bytes of the file, or the index of a text of its own
        std::uint32_t size = 0;  // or Rewritten
    };
    static constexpr std::uint32_t Rewritten = 0xFFFFFFFF;

    LineRef AddText(std::string text);

    std::string bytes_;
    std::vector<LineRef> lines_;
    std::deque<std::string> texts_;    // of the lines that were rewritten or appended
    std::vector<std::size_t> origins_; // of the lines that were appended
    std::vector<BlockSpan> blocks_;
};

/// The last top-level block whose type word equals the argument, capitals included; 0 and 0 when there is
/// none.
BlockSpan FindBlock(const SourceText& source, std::string_view word);

} // namespace zem
