#pragma once

namespace zem {

/// Which colours the windows have.
enum class Look { Desktop, Light, Dark };

/// Gives all windows, also those that are open, the style and colours of the look. Desktop is what the
/// program started with, and follows the desktop.
void ApplyLook(Look look);

} // namespace zem
