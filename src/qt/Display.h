#pragma once

namespace zem {

/// Whether there is something to open windows on. Without, Qt would end the program with words that help
/// nobody.
bool HasDisplay();

} // namespace zem
