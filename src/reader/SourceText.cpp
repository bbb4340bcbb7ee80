#include "reader/SourceText.h"

#include "model/LineText.h"

#include <algorithm>
#include <utility>

namespace zem {

SourceText::SourceText(std::string bytes) : bytes_(std::move(bytes)) {
    if (bytes_.empty())
        throw KelError("the file is empty");
    lines_.reserve(static_cast<std::size_t>(std::count(bytes_.begin(), bytes_.end(), '\n')) + 1);
    for (std::string_view rest = bytes_; !rest.empty();) {
        const std::size_t end = rest.find('\n');
        std::string_view line = rest.substr(0, end);
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
        if (end != std::string_view::npos && line.ends_with('\r'))
            line.remove_suffix(1);
        if (line.find('\t') != std::string_view::npos) {
            std::string& expanded = Hold(std::string(line));
            ExpandTabs(expanded);
            line = expanded;
        }
        lines_.push_back(line);
    }
}

void SourceText::AppendSourceLine(std::string_view heldText, std::size_t origin) {
    lines_.push_back(heldText);
    origins_.push_back(origin);
}

std::size_t SourceText::LineInFile(std::size_t index) const {
    const std::size_t inFile = lines_.size() - origins_.size();
    return index <= inFile ? index : origins_[index - inFile - 1];
}

void SourceText::TrimLines() {
    for (std::string_view& line : lines_)
        line = Trim(line);
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

BlockSpan FindBlock(const SourceText& source, std::string_view word) {
    BlockSpan found;
    for (const BlockSpan& block : source.Blocks()) {
        const std::string_view afterDefine = TextAfter(source.Line(block.FirstLine), "define ");
        if (afterDefine.substr(0, afterDefine.find(' ')) == word)
            found = block;
    }
    return found;
}

} // namespace zem
