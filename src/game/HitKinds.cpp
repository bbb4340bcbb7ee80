#include "game/HitKinds.h"

#include "base/LineText.h"

#include <algorithm>

namespace zem {

namespace {

bool Overlap(TextRange a, TextRange b) {
    return a.begin < b.end && b.begin < a.end;
}

bool Contains(TextRange outer, TextRange inner) {
    return outer.begin <= inner.begin && inner.end <= outer.end;
}

/// Whether the catalogue calls the part something that the player reads.
bool IsPrinted(const CommandEntry& command, std::size_t part) {
    const std::vector<std::string_view> words = SplitAt(command.definition->RawSyntax, ";");
    const std::string_view word = Trim(words[std::min(part, words.size() - 1)]);
    return EqualIgnoringCase(word, "message") || EqualIgnoringCase(word, "question");
}

} // namespace

const char* Describe(HitKind kind) {
    switch (kind) {
    case HitKind::Name:
        return "name";
    case HitKind::Reference:
        return "reference";
    case HitKind::PrintedText:
        return "printed text";
    case HitKind::Script:
        return "script";
    case HitKind::Pattern:
        return "pattern";
    case HitKind::RawLine:
        return "raw line";
    case HitKind::Setting:
        return "setting";
    }
    return "";
}

HitKind HitJudge::KindOf(const RecordText& text, TextRange bytes) {
    switch (text.use.kind) {
    case FieldKind::Name:
        return HitKind::Name;
    case FieldKind::Reference:
    case FieldKind::Exit:
        return HitKind::Reference;
    case FieldKind::Target: {
        const std::size_t semicolon = std::min(text.text.find(';'), text.text.size());
        const bool isPrefix = bytes.end <= semicolon && semicolon < text.text.size();
        return isPrefix && !TouchesVariable(text.text, bytes) ? HitKind::PrintedText : HitKind::Reference;
    }
    case FieldKind::Definition:
        if (bytes.begin < text.text.find(' '))
            return HitKind::Name;
        return TouchesVariable(text.text, bytes) ? HitKind::Reference : HitKind::Setting;
    case FieldKind::Script:
        return InScript(text.text, bytes);
    case FieldKind::Text:
        return TouchesVariable(text.text, bytes) ? HitKind::Reference : HitKind::PrintedText;
    case FieldKind::Pattern:
        return TouchesVariable(text.text, bytes) ? HitKind::Reference : HitKind::Pattern;
    case FieldKind::Words:
        return HitKind::Pattern;
    case FieldKind::RawLines:
        return HitKind::RawLine;
    case FieldKind::Value:
    case FieldKind::Number:
    case FieldKind::Mark:
    case FieldKind::Records:
    case FieldKind::OwnersKey:
        break;
    }
    return HitKind::Setting;
}

bool HitJudge::TouchesVariable(std::string_view text, TextRange bytes) {
    if (text.data() != textBegin_) {
        textBegin_ = text.data();
        variables_.clear();
        ForEachVariable(text, [&](TextRange range, char) {
            const bool isVariable = index_.References().IsVariable(range.Of(text));
            if (isVariable)
                variables_.push_back(range);
            return isVariable;
        });
    }
    return std::any_of(variables_.begin(), variables_.end(),
                       [&](TextRange range) { return Overlap(range, bytes); });
}

TextRange HitJudge::LineAt(std::string_view text, std::size_t byte) {
    if (text.data() == lineText_ && line_.begin <= byte && byte <= line_.end)
        return line_;
    const std::size_t before = text.substr(0, byte).rfind('\n');
    lineText_ = text.data();
    line_.begin = before == std::string_view::npos ? 0 : before + 1;
    line_.end = std::min(text.find("\r\n", line_.begin), text.size());
    return line_;
}

HitKind HitJudge::InScript(std::string_view text, TextRange bytes) {
    const TextRange line = LineAt(text, bytes.begin);
    if (text.data() + line.begin != readLine_)
        ReadLine(text, line);
    for (const Part& part : parts_) {
        if (part.kind == PartKind::Name && Overlap(part.bytes, bytes))
            return HitKind::Reference;
        if (part.kind == PartKind::Printed && Contains(part.bytes, bytes))
            return HitKind::PrintedText;
    }
    return HitKind::Script;
}

void HitJudge::ReadLine(std::string_view text, TextRange line) {
    readLine_ = text.data() + line.begin;
    parts_.clear();
    const ScriptLine parsed = TakeApart(line.Of(text), index_.Commands());
    ForEachCall(parsed, [&](const ScriptCall& call) {
        if (call.hasParameter)
            ReadParts(text, line.begin, call);
    });
}

void HitJudge::ReadParts(std::string_view text, std::size_t begin, const ScriptCall& call) {
    const std::size_t at = begin + call.parameter.begin;
    const std::string_view parameter = text.substr(at, call.parameter.Size());
    ForEachVariable(parameter, [&](TextRange range, char) {
        const bool isVariable = index_.References().IsVariable(range.Of(parameter));
        if (isVariable)
            parts_.push_back({{at + range.begin, at + range.end}, PartKind::Name});
        return isVariable;
    });
    if (call.entry == nullptr)
        return;
    std::size_t number = 0;
    ForEachPart(parameter, call.entry->syntax, [&](TextRange range, NameKind kind) {
        const PartKind part = kind != NameKind::None           ? PartKind::Name
                              : IsPrinted(*call.entry, number) ? PartKind::Printed
                                                               : PartKind::Other;
        ++number;
        if (part != PartKind::Other && !range.IsEmpty())
            parts_.push_back({{at + range.begin, at + range.end}, part});
    });
}

} // namespace zem
