#include "base/KelError.h"

#include "base/LineText.h"

namespace zem {

namespace {

// A message box must stay readable when the offending line has ten million characters.
constexpr std::size_t LongestShownText = 80;
constexpr std::size_t LongestProblem = 300;

std::string Shorten(std::string_view text, std::size_t longest = LongestShownText) {
    text = Trim(text);
    if (text.size() <= longest)
        return std::string(text);
    return std::string(text.substr(0, longest)) + "...";
}

std::string Join(const std::string& problem, const std::string& text) {
    return text.empty() ? problem : problem + ": " + text;
}

} // namespace

KelError::KelError(const std::string& problem)
    : std::runtime_error(Shorten(problem, LongestProblem)),
      problem_(std::runtime_error::what()) {}

KelError::KelError(const std::string& problem, std::size_t line, std::string_view text)
    : std::runtime_error("line " + std::to_string(line) + ": " +
                         Join(Shorten(problem, LongestProblem), Shorten(text))),
      problem_(Shorten(problem, LongestProblem)),
      line_(line),
      text_(Shorten(text)) {}

std::string KelError::ProblemWithText() const {
    return Join(problem_, text_);
}

} // namespace zem
