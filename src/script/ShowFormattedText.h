#pragma once

#include <string_view>

class QTextEdit;

namespace zem {

/// Fills the control with the text, its format codes turned into bold, italic, underlined and coloured
/// stretches that can be read on the control's background.
void ShowFormattedText(std::string_view text, QTextEdit& control);

} // namespace zem
