#pragma once

#include "forms/Dialogs.h"

#include <optional>

namespace zem {

/// What to paste of a text: the text itself when a game file can hold it. Otherwise the characters that it
/// cannot hold are listed, and the author decides whether to paste the rest; nothing when he does not, or
/// when nothing would be left.
std::optional<QString> AskStorablePaste(const QString& text, Dialogs& dialogs, QWidget* parent);

} // namespace zem
