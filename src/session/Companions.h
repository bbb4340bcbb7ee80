#pragma once

#include <QString>

namespace zem {

/// What lies beside a game, its recorded runs and its notes, goes along when the game gets another file. What
/// lies there already is kept as it is under its name and a "~".
/// @return  what could not be taken along, in plain words; empty for nothing
QString TakeAlong(const QString& from, const QString& to);

} // namespace zem
