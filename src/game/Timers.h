#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The timers of a game: blocks that its format does not know and keeps as they are. "define timer <tide>",
/// its "interval <120>" in seconds, and its "action" with a script.
namespace zem {

struct GameTimer {
    std::string name;
    std::string seconds; // as it is written; Veldt wants a whole number, at least 1
    std::string action;  // a script of one line
    bool isKnown = true; // whether its block has nothing else; otherwise it is not to be changed here
    int block = -1;      // its number among the timers of the text it was read from; -1 for a new one

    bool operator==(const GameTimer&) const = default;
};

/// The timers in blocks of unknown kinds, in their order.
std::vector<GameTimer> ReadTimers(std::string_view blocks);

/// The blocks with these timers in the place of those that they have. Whatever a timer does not say
/// differently stays byte for byte; one that is missing goes with its block, new ones go to the end.
std::string WriteTimers(std::string_view blocks, const std::vector<GameTimer>& timers);

/// Whether the text is a number of seconds that a timer can have: whole, from 1 to 32767.
bool IsTimerInterval(std::string_view seconds);

} // namespace zem
