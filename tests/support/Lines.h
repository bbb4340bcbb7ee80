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

/// The lines that went with "-" and those that came with "+" before them, joined with "|", wherever they
/// stand. For texts of a few hundred lines.
inline std::string LineChanges(std::string_view before, std::string_view after) {
    const std::vector<std::string> old = SplitLines(before);
    const std::vector<std::string> now = SplitLines(after);
    // How many lines both have in common from a pair of lines on.
    std::vector<std::vector<int>> common(old.size() + 1, std::vector<int>(now.size() + 1));
    for (std::size_t i = old.size(); i-- > 0;)
        for (std::size_t k = now.size(); k-- > 0;)
            common[i][k] =
                old[i] == now[k] ? common[i + 1][k + 1] + 1 : std::max(common[i + 1][k], common[i][k + 1]);
    std::string changes;
    const auto add = [&changes](char sign, const std::string& line) {
        changes += (changes.empty() ? "" : "|") + std::string(1, sign) + line;
    };
    for (std::size_t i = 0, k = 0; i < old.size() || k < now.size();) {
        if (i < old.size() && k < now.size() && old[i] == now[k]) {
            ++i;
            ++k;
        } else if (k == now.size() || (i < old.size() && common[i + 1][k] >= common[i][k + 1])) {
            add('-', old[i++]);
        } else {
            add('+', now[k++]);
        }
    }
    return changes;
}

} // namespace zem::test
