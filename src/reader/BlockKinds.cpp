#include "reader/BlockKinds.h"

#include "base/LineText.h"

namespace zem {

namespace {

std::uint8_t KindsOfReadBlock(std::string_view line) {
    if (BeginsWith(line, "define room "))
        return RoomKind | RoomWithThingsKind;
    // A "roommate" is read as a room, without what stands in it, and kept as it is besides.
    if (BeginsWith(line, "define room"))
        return RoomKind | KeptKind;
    if (BeginsWith(line, "define text "))
        return TextKind;
    if (BeginsWith(line, "define procedure "))
        return ProcedureKind;
    if (BeginsWith(line, "define selection "))
        return MenuKind;
    // Read in any capitals, but only in small letters left out of the blocks that are kept.
    if (EqualIgnoringCase(line, "define synonyms"))
        return line == "define synonyms" ? SynonymsKind : SynonymsKind | KeptKind;
    return BeginsWith(line, "define game ") ? 0 : KeptKind;
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
