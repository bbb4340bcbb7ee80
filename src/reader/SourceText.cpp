#include "reader/SourceText.h"

#include "base/LineText.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace zem {

SourceText::SourceText(std::string bytes) : bytes_(std::move(bytes)) {
    if (bytes_.empty())
        throw KelError("the file is empty");
    if (bytes_.size() > std::numeric_limits<std::uint32_t>::max())
        throw KelError("the file is too large: it has 4 GB and more");
    const bool hasTabs = Holds('\t'); // few files have any
    lines_.reserve(static_cast<std::size_t>(std::count(bytes_.begin(), bytes_.end(), '\n')) + 1);
    for (std::string_view rest = bytes_; !rest.empty();) {
        const std::string_view line = TakeLine(rest);
        if (!hasTabs || line.find('\t') == std::string_view::npos) {
            lines_.push_back({static_cast<std::uint32_t>(line.data() - bytes_.data()),
                              static_cast<std::uint32_t>(line.size())});
        } else {
            std::string expanded(line);
            ExpandTabs(expanded);
            lines_.push_back(MakeText(expanded));
        }
    }
}

SourceText::Piece SourceText::Trimmed(Piece piece) const {
    const std::string_view text = Text(piece);
    if (text.empty() || (text.front() != ' ' && text.back() != ' '))
        return piece;
    const std::string_view trimmed = Trim(text);
    const auto cut = trimmed.empty() ? 0 : static_cast<std::uint32_t>(trimmed.data() - text.data());
    return {piece.start + cut, static_cast<std::uint32_t>(trimmed.size())};
}

SourceText::Piece SourceText::MakeText(std::string_view text) {
    const std::size_t start = bytes_.size() + made_.size();
    if (text.size() > std::numeric_limits<std::uint32_t>::max() - start)
        throw KelError("the game is too large: its texts take 4 GB and more");
    made_.append(text);
    return {static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(text.size())};
}

void SourceText::AppendToLine(std::size_t index, std::string_view text) {
    Piece& line = lines_[index - 1];
    if (line.start + std::size_t{line.size} != bytes_.size() + made_.size() || line.start < bytes_.size())
        line = MakeText(Line(index));
    line.size += MakeText(text).size;
}

void SourceText::AppendSourceLine(Piece text, std::size_t origin) {
    lines_.push_back(text);
    origins_.push_back(static_cast<std::uint32_t>(origin));
}

std::size_t SourceText::LineInFile(std::size_t index) const {
    return IsInFile(index) ? index : origins_[index - (lines_.size() - origins_.size()) - 1];
}

void SourceText::TrimLines() {
    for (Piece& line : lines_)
        line = Trimmed(line);
}

void SourceText::IndexBlocks() {
    for (std::size_t first = 1; first <= LineCount(); ++first) {
        // No blank after the word: a line that begins "defined" counts as a block, too.
        if (!BeginsWith(Line(first), "define"))
            continue;
        std::size_t last = first;
        for (int depth = 1; depth > 0;) {
            if (++last > LineCount())
                throw KelError("this block has no \"end define\"", LineInFile(first), Line(first));
            if (BeginsWith(Line(last), "define"))
                ++depth;
            else if (BeginsWith(Line(last), "end define"))
                --depth;
        }
        blocks_.push_back({first, last});
        first = last;
    }
}

void SourceText::NoteKinds() {
    for (BlockSpan& block : blocks_)
        block.Kinds = KindsOf(Line(block.FirstLine));
}

BlockSpan SourceText::GameBlock() const {
    BlockSpan last;
    UseBlocks(GameKind, [&](const BlockSpan& block) { last = block; });
    return last;
}

} // namespace zem
