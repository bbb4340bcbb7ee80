#include "model/KelError.h"

#include "model/LineText.h"

#include <utility>

namespace zem {

namespace {

// A message box must stay readable when the offending line has ten million characters.
constexpr std::size_t LongestShownText = 80;

std::string Shorten(std::string_view text) {
    text = Trim(text);
    if (text.size() <= LongestShownText)
        return std::string(text);
    return std::string(text.substr(0, LongestShownText)) + "...";
}

std::string Join(const std::string& problem, const std::string& text) {
    return text.empty() ? problem : problem + ": " + text;
}

} // namespace

KelError::KelError(std::string problem) : std::runtime_error(problem), problem_(std::move(problem)) {}

KelError::KelError(std::string problem, std::size_t line, std::string_view text)
    : std::runtime_error("line " + std::to_string(line) + ": " + Join(problem, Shorten(text))),
      problem_(std::move(problem)),
      line_(line),
      text_(Shorten(text)) {}

std::string KelError::ProblemWithText() const {
    return Join(problem_, text_);
}

} // namespace zem
