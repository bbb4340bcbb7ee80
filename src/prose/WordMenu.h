#pragma once

#include <QString>

#include <functional>
#include <string>

class QMenu;

namespace zem {

class Dialogs;
class GameSpelling;

/// Puts what can be done with an unknown word at the top of a menu: what may have been meant, which is looked
/// for while the menu is open, the word added to those of the game, or ignored.
/// @param spelling  like the dialogs outlives the menu
/// @param replace   puts another word in its place
void AddWordActions(QMenu& menu, GameSpelling& spelling, Dialogs& dialogs, const std::string& word,
                    std::function<void(const QString&)> replace);

} // namespace zem
