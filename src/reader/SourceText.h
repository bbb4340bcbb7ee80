#pragma once

#include "model/KelError.h"

#include <cstddef>
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
/// view into the bytes of the file, or into a text of its own once it was rewritten; files may have any
/// number of lines and blocks, so that every game that can be saved can be opened again.
class SourceText {
public:
    /// Splits the bytes of a file at CR LF and LF, and expands the tabs. Throws KelError when there is no
    /// line.
    explicit SourceText(std::string bytes);

    SourceText(const SourceText&) = delete; // the lines are views into this very object
    SourceText& operator=(const SourceText&) = delete;

    std::size_t LineCount() const { return lines_.size(); }
    std::string_view Line(std::size_t index) const { return lines_[index - 1]; }

    /// Replaces a line by a view of text that this object already holds.
    void SetLine(std::size_t index, std::string_view heldText) { lines_[index - 1] = heldText; }

    /// Keeps a new text for as long as this object lives. The text may be appended to.
    std::string& Hold(std::string text) { return held_.emplace_back(std::move(text)); }

    /// Adds a line at the end: a view of held text that came from line `origin` of the file.
    void AppendSourceLine(std::string_view heldText, std::size_t origin);

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
    std::string bytes_;
    std::vector<std::string_view> lines_;
    std::deque<std::string> held_;
    std::vector<std::size_t> origins_; // of the lines that were appended
    std::vector<BlockSpan> blocks_;
};

/// The last top-level block whose type word equals the argument, capitals included; 0 and 0 when there is
/// none.
BlockSpan FindBlock(const SourceText& source, std::string_view word);

} // namespace zem
