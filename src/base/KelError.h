#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace zem {

/// A run-time error in plain words: what is wrong and, when a file is being read, on which line.
/// It is caught at the command that the author gave; the command ends and the program goes on.
class KelError : public std::runtime_error {
public:
    /// @param problem  what is wrong, without a full stop: "a parameter in angle brackets is missing";
    ///                 long ones are cut
    explicit KelError(const std::string& problem);

    /// @param line  1-based number of the line in the file
    /// @param text  the line as it stands in the file; long lines are cut for display
    KelError(const std::string& problem, std::size_t line, std::string_view text);

    /// The problem alone, without line number and text.
    const std::string& Problem() const { return problem_; }

    /// 1-based line in the file, 0 when the problem belongs to no line.
    std::size_t Line() const { return line_; }

    /// "problem: text of the line", or the problem alone when it belongs to no line.
    std::string ProblemWithText() const;

private:
    std::string problem_;
    std::size_t line_ = 0;
    std::string text_;
};

} // namespace zem
