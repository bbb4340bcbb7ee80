#pragma once

#include "base/KelError.h"

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>

namespace zem {

/// Closes a file that nobody has closed before.
struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

/// The bytes of a file. Throws KelError when it is no regular file, is too large or cannot be read.
std::string ReadFile(const std::string& path);

/// Takes the first line, which ends at CR LF or LF, off the front of the bytes.
inline std::string_view TakeLine(std::string_view& bytes) {
    // Most files have many short lines, for which the call of a search takes longer than a look at each byte.
    constexpr std::size_t Short = 8;
    std::size_t end = 0;
    while (end < Short && end < bytes.size() && bytes[end] != '\n')
        ++end;
    if (end == Short)
        end = bytes.find('\n', end);
    else if (end == bytes.size())
        end = std::string_view::npos;
    std::string_view line = bytes.substr(0, end);
    if (end != std::string_view::npos && line.ends_with('\r'))
        line.remove_suffix(1);
    bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
    return line;
}

/// Gives the line to `use`, and ties a KelError that comes out of it to the line.
/// @param number  1-based number of the line in its file
template <class Use>
void UseLineOfFile(std::string_view line, std::size_t number, Use use) {
    try {
        use(line);
    } catch (const KelError& error) {
        if (error.Line() != 0)
            throw;
        throw KelError(error.Problem(), number, line);
    }
}

} // namespace zem
