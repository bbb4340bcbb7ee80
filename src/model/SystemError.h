#pragma once

#include <string>

namespace zem {

/// Why the system refused a file, in plain words: "the disk is full". `error` is a value of errno.
std::string DescribeSystemError(int error);

} // namespace zem
