#pragma once

#include "game/Find.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace zem {

/// Tells what stands at some bytes of a text. Asked for many places in a row, it takes each line of a script
/// apart once.
class HitJudge {
public:
    explicit HitJudge(const GameIndex& index) : index_(index) {}

    HitKind KindOf(const RecordText& text, TextRange bytes);

    /// The line of the text in which the byte stands. A line is searched for once, however many hits it has.
    TextRange LineAt(std::string_view text, std::size_t byte);

private:
    enum class PartKind { Name, Printed, Other };
    struct Part {
        TextRange bytes; // of the text
        PartKind kind;
    };

    HitKind InScript(std::string_view text, TextRange bytes);
    void ReadLine(std::string_view text, TextRange line);
    void ReadParts(std::string_view text, std::size_t begin, const ScriptCall& call);
    bool TouchesVariable(std::string_view text, TextRange bytes);

    const GameIndex& index_;
    const char* lineText_ = nullptr;   // of the text whose line was searched for last
    TextRange line_;                   // its
    const char* readLine_ = nullptr;   // the begin of the line that was taken apart last
    std::vector<Part> parts_;          // its
    const char* textBegin_ = nullptr;  // of the text that was searched for variables last
    std::vector<TextRange> variables_; // its
};

} // namespace zem
