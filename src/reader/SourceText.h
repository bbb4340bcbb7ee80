#pragma once

#include "base/TextFile.h"
#include "reader/BlockKinds.h"
#include "reader/SourceLines.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace zem {

/// A top-level "define" block: the 1-based indices of its "define ..." line and its "end define" line.
struct BlockSpan {
    std::size_t FirstLine = 0;
    std::size_t LastLine = 0;
    std::uint8_t Kinds = 0; // BlockKind, once they are noted

    bool Is(BlockKind kind) const { return (Kinds & kind) != 0; }
};

/// The lines of a game file while it is read, 1-based, and the index of its top-level blocks. Files may have
/// any number of lines and blocks, so that every game that can be saved can be opened again.
class SourceText {
public:
    /// Where a text stands, for as long as the source lives. Half the size of a view: a file has many lines,
    /// and they are in memory together with the whole game.
    struct Piece {
        std::uint32_t start = 0; // in the bytes of the file or, from their end on, in the texts made
        std::uint32_t size = 0;
    };

    /// Splits the bytes of a file at CR LF and LF, and expands the tabs. Throws KelError when there is no
    /// line and for files of 4 GB and more.
    explicit SourceText(std::string bytes);

    std::size_t LineCount() const { return lines_.size(); }

    /// The line's text; good until a text is made.
    std::string_view Line(std::size_t index) const { return Text(lines_[index - 1]); }

    /// The text of a piece; good until a text is made.
    std::string_view Text(Piece piece) const {
        return piece.start < bytes_.size()
                   ? std::string_view(bytes_.data() + piece.start, piece.size)
                   : std::string_view(made_.data() + (piece.start - bytes_.size()), piece.size);
    }

    /// The piece without its leading and trailing blanks.
    Piece Trimmed(Piece piece) const;

    /// Makes a text that is in no line yet. It may be a part of one. Throws KelError when all texts together
    /// take 4 GB and more.
    Piece MakeText(std::string_view text);

    Piece LinePiece(std::size_t index) const { return lines_[index - 1]; }
    void SetLine(std::size_t index, Piece text) { lines_[index - 1] = text; }
    void ClearLine(std::size_t index) { lines_[index - 1] = {}; }

    /// Adds text, which must not be a part of the source, at the end of a line; without copying the line
    /// when it is the text that was made last.
    void AppendToLine(std::size_t index, std::string_view text);

    /// Adds a line at the end, which came from line `origin` of the file.
    void AppendSourceLine(Piece text, std::size_t origin);

    /// The number in the file of the line that this line came from.
    std::size_t LineInFile(std::size_t index) const;

    /// Whether the line stands in the file; the others were made of scripts in braces.
    bool IsInFile(std::size_t index) const { return index <= lines_.size() - origins_.size(); }

    /// Tells who asked for it from which lines the game is read.
    void NoteLinesIn(SourceLines* lines) { noted_ = lines; }
    SourceLines* NotedLines() const { return noted_; }

    /// Notes that the place was read from the line, for who asked.
    void Note(const Place& place, std::size_t index) const {
        if (noted_ != nullptr)
            noted_->Note(place, LineInFile(index));
    }

    /// Notes that the last record of a list of the game was read from the line. Where nobody asked, no place
    /// is made: lists may have thousands of entries on a line.
    template <class Records>
    void NoteLastOf(FieldId list, const Records& records, std::size_t index) const {
        if (noted_ != nullptr)
            Note(Place::Of({{list, records.Count()}}), index);
    }

    /// Removes the leading and trailing blanks of every line.
    void TrimLines();

    /// Finds the top-level blocks, nested ones belonging to the block around them. Throws KelError for a
    /// block that has no "end define".
    void IndexBlocks();

    std::vector<BlockSpan>& Blocks() { return blocks_; }
    const std::vector<BlockSpan>& Blocks() const { return blocks_; }

    /// Tells what kinds the blocks are of; after TrimLines.
    void NoteKinds();

    /// Gives each block of the kind to `use`, in order; after NoteKinds.
    template <class Use>
    void UseBlocks(BlockKind kind, Use use) const {
        for (const BlockSpan& block : blocks_)
            if (block.Is(kind))
                use(block);
    }

    /// The last block of the game's own properties; one without lines when there is none.
    BlockSpan GameBlock() const;

    /// True when the character stands anywhere in the file.
    bool Holds(char c) const { return bytes_.find(c) != std::string::npos; }

    /// Gives the line, and its index where that is wanted, to `use`, and ties a KelError that comes out of it
    /// to the line.
    template <class Use>
    void UseLine(std::size_t index, Use use) const {
        // UseLineOfFile would want the number of every line, which costs a quarter of the time of short ones.
        try {
            if constexpr (std::is_invocable_v<Use, std::string_view, std::size_t>)
                use(Line(index), index);
            else
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
    std::string made_; // the texts of lines that were rewritten or appended, one after the other
    std::vector<Piece> lines_;
    std::vector<std::uint32_t> origins_; // of the lines that were appended
    std::vector<BlockSpan> blocks_;
    SourceLines* noted_ = nullptr;
};

} // namespace zem
