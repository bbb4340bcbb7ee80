#include "reader/LineJoins.h"

#include "base/LineText.h"

#include <string>
#include <string_view>

namespace zem {

void JoinElseLines(SourceText& source, const BlockSpan& block) {
    std::size_t ifLine = 0;
    std::string joint; // a copy, because appending makes a text
    for (std::size_t index = block.FirstLine; index <= block.LastLine; ++index) {
        const std::string_view line = source.Line(index);
        if (BeginsWith(line, "if")) {
            ifLine = index;
        } else if (ifLine != 0 && BeginsWith(line, "else")) {
            source.AppendToLine(ifLine, joint.assign(" ").append(Trim(line)));
            source.ClearLine(index);
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
        std::string joined;
        std::size_t last = first;
        for (; continues(last); ++last) {
            std::string_view part = source.Line(last);
            part.remove_suffix(2);
            joined.append(last == first ? part : TrimLeft(part));
        }
        joined.append(TrimLeft(source.Line(last)));
        source.SetLine(first, source.MakeText(joined));
        for (std::size_t index = first + 1; index <= last; ++index)
            source.ClearLine(index);
        first = last;
    }
}

} // namespace zem
