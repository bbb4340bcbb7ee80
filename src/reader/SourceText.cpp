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
        const std::string_view line = TakeLine(rest);
        if (line.find('\t') == std::string_view::npos) {
            lines_.push_back({static_cast<std::uint32_t>(line.data() - bytes_.data()),
                              static_cast<std::uint32_t>(line.size())});
        } else {
            std::string expanded(line);
            ExpandTabs(expanded);
            lines_.push_back(AddText(std::move(expanded)));
        }
    }
}

SourceText::LineRef SourceText::AddText(std::string text) {
    texts_.push_back(std::move(text));
    return {static_cast<std::uint32_t>(texts_.size() - 1), Rewritten};
}

void SourceText::SetLine(std::size_t index, std::string text) {
    lines_[index - 1] = AddText(std::move(text)); // the old text stays: others may hold views of it
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
            text.resize(text.find_last_not_of(' ') + 1);
            text.erase(0, std::min(text.find_first_not_of(' '), text.size()));
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
