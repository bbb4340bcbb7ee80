#pragma once

#include "play/Book.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// What a turn gives to whoever shows the game. All text is Windows-1252.
namespace zem::play {

enum class Alignment : std::uint8_t { Left, Centre, Right };

/// How a stretch of text looks.
struct Style {
    bool bold = false;
    bool italic = false;
    bool underline = false;
    Alignment alignment = Alignment::Left;
    int size = 0;       // in points; 0 for the reader's own
    std::string colour; // its name as written; empty for the normal one of the theme
    std::string font;   // its name as written; empty for the reader's own

    bool operator==(const Style&) const = default;
};

/// One thing to show, in order.
struct Piece {
    enum Kind : std::uint8_t {
        Text,    // new lines are "\n"
        Clear,   // the page becomes empty
        Pause,   // wait so many seconds, then go on
        Picture, // the text is the name of a file
        Sound,
        Music, // goes on until Silence
        Silence
    };
    Kind kind = Text;
    std::string text;
    int seconds = 0;
    Style style;
    Source source; // where the text stands in the game; without a book for what the player program says
};

/// What the game waits for.
enum class Need : std::uint8_t {
    Line,   // of the player, at the prompt
    Text,   // an answer to a question, which may be empty
    YesNo,  // the same, but yes or no
    Choice, // of a menu: its number or its words
    Key,    // any key
    Nothing // the game is over; it may be taken back, restored or begun again
};

/// What whoever shows the game is asked to do: the game itself touches no file and no window.
enum class Request : std::uint8_t { None, Save, Restore, Quit, TranscriptOn, TranscriptOff };

/// Something that the author should know. Players are told nothing of it.
struct Warning {
    Source source;
    std::string text;    // in plain words, without a full stop
    bool isOnce = false; // told the first time only; the line is wrong however often it runs
};

/// One line of the trace: what ran, in the order in which it ran.
struct TraceEntry {
    enum Result : std::uint8_t { Ran, True, False, Faulty };
    Source source;
    std::uint16_t depth = 0; // scripts inside one another, from 0
    Result result = Ran;
    std::int32_t condition = -1; // which of the line's conditions, from 0; -1 for the whole line
    std::string note;            // what is wrong with the line or condition, or was chosen; mostly empty
};

/// Something of the game that a turn has reached.
struct Hit {
    static constexpr std::uint32_t Record = 0; // the room was entered, the thing met, the text printed
    /// A command that ran, or an "if" line with its answer.
    static constexpr std::uint32_t OfNode(std::size_t node, bool answer) {
        return static_cast<std::uint32_t>(2 * node + (answer ? 1 : 2));
    }

    const Book* book = nullptr;
    std::uint32_t part = Record;
};

struct Outcome {
    std::vector<Piece> pieces; // only what is new since the outcome before
    Need need = Need::Line;
    std::vector<std::string> choices; // of the menu that waits for an answer
    Request request = Request::None;
    bool wasTurn = false;   // a turn has passed
    bool isRefused = false; // the input was not asked for, and nothing was done with it
    std::vector<Warning> warnings;
    std::vector<TraceEntry> trace; // of the whole turn so far, if it was asked for
};

} // namespace zem::play
