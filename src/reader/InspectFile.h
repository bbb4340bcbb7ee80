#pragma once

#include "base/TextEncoding.h"
#include "reader/LostText.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// What an author should know about a file besides the game that LoadGame makes of it. Loading itself is not
/// changed by any of it.
namespace zem {

enum class RemarkKind {
    Encoding,
    NoGame,
    MergeMark,
    GameNotRead,  // "define Game"
    SecondGame,   // Of several game blocks only the last is read.
    ReadAndKept,  // A block that every save writes twice.
    OnlyKept,     // A block of a known kind that is not read.
    ThingOutside, // A character or an object outside of rooms.
    BlockInRoom,
    BlockInThing // A line of a character or object that every save makes a block of.
};

/// Something that the author may not expect, with what follows from it, in plain words without a final stop.
struct LoadRemark {
    std::size_t line = 0; // Counted from 1; 0 for the file as a whole.
    std::string text;
    RemarkKind kind = RemarkKind::Encoding;
};

/// What a load followed by a save drops without a trace, because no part of the game takes it up. Empty lines
/// do not count, nor do the two comments at the head of each file that a save writes anew.
struct DroppedLines {
    std::size_t comments = 0; // Outside of blocks, and inside of blocks where they are not kept.
    std::size_t others = 0;   // Outside of blocks, in blocks that are not read, unknown lines of menus.

    bool operator==(const DroppedLines&) const = default;
};

struct FileInspection {
    TextEncoding encoding = TextEncoding::Windows1252;
    /// Whether a line begins a "define" block. A file without one opens as an empty game, and a save would
    /// put that in its place.
    bool isGame = false;
    /// In the order of lines, those about the whole file first. They tell of the encoding and of a file that
    /// is no game, too, so that showing them all says everything.
    std::vector<LoadRemark> remarks;
    DroppedLines dropped;
    /// Text that is read by nothing, although the lines around it are. It is not among the remarks: there may
    /// be much of it in an older game, which opens as it always did.
    std::vector<LostText> lost;
};

/// Looks at the bytes of a game file, in about the time of a load. Never throws for what the bytes are: of a
/// file that LoadGame refuses, it tells what it can.
FileInspection InspectFile(std::string bytes);

} // namespace zem
