#pragma once

#include "forms/Dialogs.h"
#include "pieces/CopyPiece.h"

#include <functional>
#include <string_view>

class QAbstractItemView;
class QWidget;

namespace zem {

/// What the rows of a list are as text, and what a list makes of a text. Each throws KelError where it cannot
/// be done; nothing is changed then.
struct ListClipboard {
    std::function<PieceText()> copy; // the selected rows
    // Puts what the text holds into the list, and selects it.
    // What the author does is called so in the history: "paste", "duplicate".
    std::function<void(std::string_view text, const QString& verb)> paste;
    std::function<void()>
        cut; // takes the selected rows away, once they are copied; null where nothing can be
};

/// Gives a list the commands of the clipboard, in its menu and with their keys: Ctrl+X cuts, Ctrl+Shift+C
/// copies, Ctrl+V pastes, Ctrl+D puts a copy beside what is selected and leaves the clipboard alone. Ctrl+C
/// stays with the list, which copies what it shows. Several rows can be selected from now on.
/// @param dialogs  outlives the list
void ConnectClipboard(QAbstractItemView& list, Dialogs& dialogs, ListClipboard clipboard);

/// The same for a widget that shows records without being a list. Its commands are always on: what they are
/// given throws where nothing is selected.
void ConnectClipboard(QWidget& widget, Dialogs& dialogs, ListClipboard clipboard);

/// A text of the clipboard as it stands there and as a game has it.
QString ToClipboard(std::string_view text);

} // namespace zem
