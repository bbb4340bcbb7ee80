#include "reader/LineJoins.h"

#include "model/LineText.h"

#include <string>

namespace zem {

void JoinElseLines(SourceText& source, const BlockSpan& block) {
    std::size_t ifLine = 0;
    std::string* joined = nullptr; // the text of the "if" line once something was appended to it
    for (std::size_t index = block.FirstLine; index <= block.LastLine; ++index) {
        const std::string_view line = source.Line(index);
        if (BeginsWith(line, "if")) {
            ifLine = index;
            joined = nullptr;
        } else if (ifLine != 0 && BeginsWith(line, "else")) {
            if (joined == nullptr)
                joined = &source.Hold(std::string(source.Line(ifLine)));
            joined->append(" ").append(Trim(line));
            source.SetLine(ifLine, *joined);
            source.SetLine(index, {});
        }
    }
}

void JoinContinuedLines(SourceText& source, const BlockSpan& block) {
    const auto continues = [&](std::size_t index) {
        return index < block.LastLine && source.Line(index).ends_with("__");
    };
    for (std::size_t first = block.FirstLine; first <= block.LastLine; ++first) {
        if (!continues(first))
            continue;
        std::string& joined = source.Hold(std::string());
        std::size_t last = first;
        for (; continues(last); ++last) {
            std::string_view part = source.Line(last);
            part.remove_suffix(2);
            joined.append(last == first ? part : TrimLeft(part));
        }
        joined.append(TrimLeft(source.Line(last)));
        source.SetLine(first, joined);
        for (std::size_t index = first + 1; index <= last; ++index)
            source.SetLine(index, {});
        first = last;
    }
}

} // namespace zem
