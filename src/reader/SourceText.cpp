#include "reader/SourceText.h"

#include "model/LineText.h"

#include <algorithm>
#include <utility>

namespace zem {

SourceText::SourceText(std::string bytes) : bytes_(std::move(bytes)) {
    if (bytes_.empty())
        throw KelError("the file is empty");
    if (bytes_.size() >= Rewritten)
        throw KelError("the file is too large: 4 GB and more cannot be read");
    lines_.reserve(static_cast<std::size_t>(std::count(bytes_.begin(), bytes_.end(), '\n')) + 1);
    for (std::size_t start = 0; start < bytes_.size();) {
        const std::size_t newline = bytes_.find('\n', start);
        const bool isLast = newline == std::string::npos;
        std::size_t end = isLast ? bytes_.size() : newline;
        if (!isLast && end > start && bytes_[end - 1] == '\r')
            --end;
        const std::string_view line = std::string_view(bytes_).substr(start, end - start);
        if (line.find('\t') == std::string_view::npos) {
            lines_.push_back({static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(line.size())});
        } else {
            std::string expanded(line);
            ExpandTabs(expanded);
            lines_.push_back(AddText(std::move(expanded)));
        }
        start = isLast ? bytes_.size() : newline + 1;
    }
}

SourceText::LineRef SourceText::AddText(std::string text) {
    texts_.push_back(std::move(text));
    return {static_cast<std::uint32_t>(texts_.size() - 1), Rewritten};
}

void SourceText::SetLine(std::size_t index, std::string text) {
    LineRef& line = lines_[index - 1];
    if (line.size == Rewritten)
        texts_[line.start] = std::move(text);
    else
        line = AddText(std::move(text));
}

void SourceText::AppendToLine(std::size_t index, std::string_view text) {
    if (lines_[index - 1].size != Rewritten)
        SetLine(index, std::string(Line(index)));
    texts_[lines_[index - 1].start].append(text);
}

void SourceText::AppendSourceLine(std::string text, std::size_t origin) {
    lines_.push_back(AddText(std::move(text)));
    origins_.push_back(origin);
}

std::size_t SourceText::LineInFile(std::size_t index) const {
    const std::size_t inFile = lines_.size() - origins_.size();
    return index <= inFile ? index : origins_[index - inFile - 1];
}

void SourceText::TrimLines() {
    for (LineRef& line : lines_) {
        if (line.size == Rewritten) {
            std::string& text = texts_[line.start];
            text = std::string(Trim(text));
        } else {
            const std::string_view text = std::string_view(bytes_).substr(line.start, line.size);
            const std::string_view trimmed = Trim(text);
            line = {static_cast<std::uint32_t>(trimmed.empty() ? 0 : trimmed.data() - bytes_.data()),
                    static_cast<std::uint32_t>(trimmed.size())};
        }
    }
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
