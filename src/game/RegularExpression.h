#pragma once

#include "base/TextRange.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace zem {

/// A regular expression for texts in Windows-1252. What it costs to match is limited, so that no expression
/// hangs the program.
class RegularExpression {
public:
    enum Option { AnyCapitals, ExactCapitals };

    /// An expression that cannot be understood matches nothing and has a Problem.
    /// @param expression  in Windows-1252; "^" and "$" are the ends of a line
    RegularExpression(std::string_view expression, Option capitals);
    ~RegularExpression();
    RegularExpression(const RegularExpression&) = delete;
    RegularExpression& operator=(const RegularExpression&) = delete;

    /// What is wrong with the expression, or with what matching has come to; empty when all is well. One
    /// sentence.
    const std::string& Problem() const { return problem_; }

    /// Goes on to another text.
    void SetText(std::string_view text);

    /// The next match in the text that is not empty. Nothing behind the last one, and after a problem.
    std::optional<TextRange> Next();

    /// The words with what the groups of the last match hold: "$1" to "$9" for a group, "$0" for all of it,
    /// "$$" for one "$". A group that took no part is empty.
    std::string Expand(std::string_view words) const;

private:
    struct Compiled;

    void TellProblem(int code, std::size_t at, std::string_view utf8Expression);
    std::size_t ToByte(std::size_t utf8Byte);

    std::unique_ptr<Compiled> compiled_;
    std::string problem_;
    std::string converted_; // the text in UTF-8, where it differs
    std::string_view utf8_; // the text in UTF-8
    std::size_t next_ = 0;  // of the UTF-8: where the search goes on
    // The last place that was counted up to: bytes of the UTF-8, and of the text.
    std::size_t counted_ = 0;
    std::size_t countedBytes_ = 0;
};

} // namespace zem
