#pragma once

#include <QString>

namespace zem {

/// What is wrong with a room, as the map and the list of rooms show it.
struct RoomRemark {
    enum class Sign { None, Warning, Error };

    Sign sign = Sign::None;
    bool isUnreachable = false;  // its box is hatched
    bool isNeverEntered = false; // by a recorded run or a walk; dashes stand at its side
    QString words;               // for tool tips and screen readers
};

} // namespace zem
