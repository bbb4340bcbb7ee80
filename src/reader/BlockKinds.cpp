#include "reader/BlockKinds.h"

#include "base/LineText.h"

namespace zem {

namespace {

/// The blocks are told apart by one letter before their whole keyword is compared: there may be many.
std::uint8_t KindsOfReadBlock(std::string_view line) {
    constexpr std::string_view Define = "define ";
    switch (line.size() > Define.size() ? Lower(line[Define.size()]) : '\0') {
    case 'r':
        // A "roommate" is read as a room, without what stands in it, and kept as it is besides.
        if (BeginsWith(line, "define room "))
            return RoomKind | RoomWithThingsKind;
        return BeginsWith(line, "define room") ? RoomKind | KeptKind : KeptKind;
    case 't':
        return BeginsWith(line, "define text ") ? TextKind : KeptKind;
    case 'p':
        return BeginsWith(line, "define procedure ") ? ProcedureKind : KeptKind;
    case 's':
        if (BeginsWith(line, "define selection "))
            return MenuKind;
        // Read in any capitals, but only in small letters left out of the blocks that are kept.
        if (EqualIgnoringCase(line, "define synonyms"))
            return line == "define synonyms" ? SynonymsKind : SynonymsKind | KeptKind;
        return KeptKind;
    default:
        return BeginsWith(line, "define game ") ? 0 : KeptKind;
    }
}

/// The word "game" counts in small letters only, whatever stands before it.
bool IsGame(std::string_view line) {
    const std::string_view afterDefine = TextAfter(line, "define ");
    return afterDefine.starts_with("game") && (afterDefine.size() == 4 || afterDefine[4] == ' ');
}

} // namespace

std::uint8_t KindsOf(std::string_view firstLine) {
    return static_cast<std::uint8_t>(KindsOfReadBlock(firstLine) | (IsGame(firstLine) ? GameKind : 0));
}

} // namespace zem
