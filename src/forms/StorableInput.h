#pragma once

#include "forms/Dialogs.h"

#include <QLineEdit>

#include <string>

namespace zem {

/// From now on refuses, with a message, what is typed or pasted into the box and cannot be kept in a game
/// file; pasted line ends become blanks.
/// @param dialogs  outlives the box
void RefuseUnstorableText(QLineEdit& box, Dialogs& dialogs);

/// Shows a text of the game, of any length, to be edited, and refuses what cannot be kept in a game file.
/// What the author does not touch of it stays as it is.
/// @param dialogs  outlives the box
void EditStorableText(QLineEdit& box, const std::string& text, Dialogs& dialogs);

} // namespace zem
