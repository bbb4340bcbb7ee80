#pragma once

namespace zem {

/// Which colours the windows have. Desktop is what the program started with, and follows the desktop.
enum class Look { Desktop, Light, Dark };

} // namespace zem
