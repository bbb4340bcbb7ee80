#pragma once

#include <string_view>

class QColor;
class QPalette;
class QTextEdit;

namespace zem {

/// A colour of the PC text modes, darkened on light and lightened on dark grounds; for numbers without a look
/// of their own that of the text.
QColor ScreenColour(int basicColour, const QPalette& palette);

/// Fills the control with the text, its format codes turned into bold, italic, underlined and coloured
/// stretches that can be read on the control's background.
void ShowFormattedText(std::string_view text, QTextEdit& control);

} // namespace zem
