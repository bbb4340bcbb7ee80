#pragma once

#include <string>

namespace zem {

/// The bytes of a file. Throws KelError when it is no regular file or cannot be read.
std::string ReadFile(const std::string& path);

} // namespace zem
