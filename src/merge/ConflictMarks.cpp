#include "merge/ConflictMarks.h"

#include <algorithm>

namespace zem::merge {

namespace {

/// Which of the versions the lines belong to.
enum class MarkedPart { All, Ours, Base, Theirs };

/// The character of which a line is a mark; 0 for other lines.
char MarkOf(std::string_view line) {
    constexpr std::size_t Length = 7;
    if (line.size() < Length || std::string_view("<|=>").find(line[0]) == std::string_view::npos)
        return 0;
    const std::size_t same = std::min(line.find_first_not_of(line[0]), line.size());
    const bool ends = line.size() == same || line[same] == ' ' || line[same] == '\r' || line[same] == '\n';
    return same == Length && ends ? line[0] : '\0';
}

/// The part that begins with a mark; nothing where none can stand.
std::optional<MarkedPart> PartAfter(char mark, MarkedPart part) {
    switch (mark) {
    case '<':
        return part == MarkedPart::All ? std::optional(MarkedPart::Ours) : std::nullopt;
    case '|':
        return part == MarkedPart::Ours ? std::optional(MarkedPart::Base) : std::nullopt;
    case '=':
        return part == MarkedPart::Ours || part == MarkedPart::Base ? std::optional(MarkedPart::Theirs)
                                                                    : std::nullopt;
    default:
        return part == MarkedPart::Theirs ? std::optional(MarkedPart::All) : std::nullopt;
    }
}

} // namespace

std::optional<MarkedVersions> TakeMarksApart(std::string_view text) {
    MarkedVersions versions;
    MarkedPart part = MarkedPart::All;
    std::size_t conflicts = 0;
    std::size_t bases = 0;
    while (!text.empty()) {
        const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
        const std::string_view line = text.substr(0, size);
        text.remove_prefix(size);
        const char mark = MarkOf(line);
        if (mark != 0 && (mark != '=' || part != MarkedPart::All)) { // a line of "=" alone is a text
            const auto next = PartAfter(mark, part);
            if (!next)
                return std::nullopt;
            part = *next;
            conflicts += part == MarkedPart::Ours ? 1 : 0;
            bases += part == MarkedPart::Base ? 1 : 0;
            continue;
        }
        if (part == MarkedPart::All || part == MarkedPart::Ours)
            versions.ours += line;
        if (part == MarkedPart::All || part == MarkedPart::Theirs)
            versions.theirs += line;
        if (part == MarkedPart::All || part == MarkedPart::Base)
            versions.base += line;
    }
    if (conflicts == 0 || part != MarkedPart::All)
        return std::nullopt;
    if (bases != conflicts)
        versions.base.clear();
    return versions;
}

} // namespace zem::merge
