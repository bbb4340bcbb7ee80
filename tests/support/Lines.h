#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace zem::test {

inline std::vector<std::string> SplitLines(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t length = text.find("\r\n");
        lines.emplace_back(text.substr(0, length));
        text.remove_prefix(length == std::string_view::npos ? text.size() : length + 2);
    }
    return lines;
}

/// What turns one text into the other: the lines between the first and the last that differ, each with "-"
/// or "+" before it, joined with "|". Empty when both are the same.
inline std::string Difference(std::string_view before, std::string_view after) {
    const std::vector<std::string> old = SplitLines(before);
    const std::vector<std::string> now = SplitLines(after);
    const auto [oldFirst, nowFirst] = std::mismatch(old.begin(), old.end(), now.begin(), now.end());
    const auto [oldLast, nowLast] = std::mismatch(old.rbegin(), std::make_reverse_iterator(oldFirst),
                                                  now.rbegin(), std::make_reverse_iterator(nowFirst));
    std::string difference;
    const auto add = [&](char sign, const std::string& line) {
        difference += (difference.empty() ? "" : "|") + std::string(1, sign) + line;
    };
    for (auto line = oldFirst; line != oldLast.base(); ++line)
        add('-', *line);
    for (auto line = nowFirst; line != nowLast.base(); ++line)
        add('+', *line);
    return difference;
}

} // namespace zem::test
