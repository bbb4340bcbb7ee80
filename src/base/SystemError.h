#pragma once

#include <string>
#include <system_error>

namespace zem {

/// The error of the system call that has just failed.
std::error_code LastSystemError();

/// Why the system refused a file, in plain words: "the disk is full". `error` is a value of errno.
std::string DescribeSystemError(int error);

} // namespace zem
