#pragma once

#include <QColor>
#include <QPalette>
#include <QString>

#include <string>

namespace zem {

/// The tone that a colour has on the pages of a palette, readable on them: at least 4.5 to 1. Nothing for
/// black, for white and for names that are no colour: the page's own colour of text is meant.
/// @param name  as a game has it, in any capitals
QColor ToneOf(const std::string& name, const QPalette& palette);

/// A font of this system by its name, whatever its capitals; empty when there is none.
QString FontFamily(const std::string& name);

} // namespace zem
