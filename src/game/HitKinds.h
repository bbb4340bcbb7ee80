#pragma once

#include "game/Find.h"

#include <optional>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace zem {

/// Tells what stands at some bytes of a text. Asked for many places in a row, it takes each line of a script
/// apart once.
class HitJudge {
public:
    explicit HitJudge(const GameIndex& index) : index_(index) {}

    HitKind KindOf(const RecordText& text, TextRange bytes);

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
    const char* lineBegin_ = nullptr;  // of the line that was read last
    std::vector<Part> parts_;          // its
    const char* textBegin_ = nullptr;  // of the text that was searched for variables last
    std::vector<TextRange> variables_; // its
};

} // namespace zem
