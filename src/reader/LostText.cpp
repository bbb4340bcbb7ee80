#include "reader/LostText.h"

#include "base/LineText.h"
#include "model/GameModel.h"

#include <cstdint>
#include <span>

namespace zem {

namespace {

/// How a line goes on behind its keyword.
enum class Form {
    Brackets,       // "<text>" and nothing else
    BracketsScript, // "<name> script"
    TextOrScript,   // "<text>" and nothing else, or a script
    RoomOrScript,   // the same with a room
    Script,
    StartItems
};

struct Row {
    std::string_view word;
    Form form;
    bool isOnce; // the last of several lines counts
};

constexpr Row GameRows[] = {
    {"start ", Form::Brackets, true},
    {"game author ", Form::Brackets, true},
    {"game version ", Form::Brackets, true},
    {"game copyright ", Form::Brackets, true},
    {"game info ", Form::Brackets, true},
    {"startscript ", Form::Script, true},
    {"beforeturn ", Form::Script, true},
    {"afterturn ", Form::Script, true},
    {"description ", Form::Script, true},
    {"default fontname ", Form::Brackets, true},
    {"default fontsize ", Form::Brackets, true},
    {"command ", Form::BracketsScript, false},
    {"use ", Form::BracketsScript, false},
    {"items ", Form::Brackets, false},
    {"possitems ", Form::Brackets, false},
    {"startitems ", Form::StartItems, false},
    {"collectables ", Form::Brackets, false},
    {"error ", Form::Brackets, false},
};

constexpr Row RoomRows[] = {
    {"alias ", Form::Brackets, true},          {"look ", Form::Brackets, true},
    {"out ", Form::BracketsScript, true},      {"north ", Form::RoomOrScript, true},
    {"south ", Form::RoomOrScript, true},      {"east ", Form::RoomOrScript, true},
    {"west ", Form::RoomOrScript, true},       {"northeast ", Form::RoomOrScript, true},
    {"northwest ", Form::RoomOrScript, true},  {"southeast ", Form::RoomOrScript, true},
    {"southwest ", Form::RoomOrScript, true},  {"place ", Form::BracketsScript, false},
    {"prefix ", Form::Brackets, true},         {"script ", Form::Script, true},
    {"indescription ", Form::Brackets, true},  {"description ", Form::Script, true},
    {"command ", Form::BracketsScript, false}, {"use ", Form::BracketsScript, false},
};

constexpr Row CharacterRows[] = {
    {"look ", Form::TextOrScript, true},   {"speak ", Form::TextOrScript, true},
    {"gender ", Form::Brackets, true},     {"prefix ", Form::Brackets, true},
    {"suffix ", Form::Brackets, true},     {"give ", Form::BracketsScript, false},
    {"use ", Form::BracketsScript, false},
};

constexpr Row ObjectRows[] = {
    {"look ", Form::TextOrScript, true},   {"take ", Form::Script, true},
    {"prefix ", Form::Brackets, true},     {"suffix ", Form::Brackets, true},
    {"use ", Form::BracketsScript, false},
};

constexpr Row MenuRows[] = {
    {"info ", Form::Brackets, true},
    {"choice ", Form::BracketsScript, false},
};

class LostTextSearch {
public:
    explicit LostTextSearch(const SourceText& source) : source_(source) {}

    std::vector<LostText> Run() {
        const BlockSpan game = source_.GameBlock();
        std::size_t next = 1;
        for (const BlockSpan& block : source_.Blocks()) {
            LookOutside(next, block.FirstLine);
            next = block.LastLine + 1;
            if (block.Kinds != KeptKind)
                LookAtFirstLine(block.FirstLine);
            if (block.FirstLine == game.FirstLine)
                LookAtLines(block, GameRows);
            else if (block.Is(RoomWithThingsKind))
                LookAtLines(block, RoomRows);
            else if (block.Is(MenuKind))
                LookAtLines(block, MenuRows);
        }
        LookOutside(next, source_.LineCount() + 1);
        return std::move(found_);
    }

private:
    using Rows = std::span<const Row>;

    /// The lines at which each keyword of a record stood last; 0 for none.
    using Seen = std::vector<std::size_t>;

    static bool IsComment(std::string_view line) { return line.starts_with('\''); }

    void Add(LostTextKind kind, std::size_t index, std::string_view text) {
        found_.push_back({kind, source_.LineInFile(index), std::string(text)});
    }

    void LookOutside(std::size_t first, std::size_t past) {
        for (std::size_t index = first; index < past; ++index) {
            const std::string_view line = source_.Line(index);
            if (!line.empty() && !IsComment(line) && !BeginsWith(line, "!include "))
                Add(LostTextKind::OutsideBlocks, index, line);
        }
    }

    /// "define room <Hall>": its name is all that counts behind the kind.
    void LookAtFirstLine(std::size_t index) {
        const std::string_view line = source_.Line(index);
        const std::size_t kind = line.find_first_not_of(' ', std::string_view("define").size());
        const std::size_t end = std::min(line.find_first_of(" <", kind), line.size());
        if (line.find('<') != std::string_view::npos)
            LookAround(index, line.substr(end));
    }

    /// Tells of what stands around the brackets that are all that counts.
    void LookAround(std::size_t index, std::string_view text) {
        LookBefore(index, text);
        const std::string_view behind = TextAfterParameter(text);
        if (!behind.empty())
            Add(LostTextKind::OutsideBrackets, index, behind);
    }

    void LookBefore(std::size_t index, std::string_view text) {
        const std::string_view before = Trim(text.substr(0, text.find('<')));
        if (!before.empty())
            Add(LostTextKind::OutsideBrackets, index, before);
    }

    void LookAtRest(Form form, std::size_t index, std::string_view rest) {
        switch (form) {
        case Form::StartItems:
            for (const std::string_view piece : SplitAt(GetParameter(rest), ","))
                if (!Trim(piece).empty())
                    Add(LostTextKind::StartItem, index, Trim(piece));
            [[fallthrough]];
        case Form::Brackets:
            LookAround(index, rest);
            break;
        case Form::BracketsScript:
            LookBefore(index, rest);
            break;
        case Form::TextOrScript:
            if (rest.starts_with('<'))
                LookAround(index, rest);
            break;
        case Form::RoomOrScript:
            if (rest.starts_with('<') && !TextAfterParameter(rest).empty())
                Add(LostTextKind::BehindExit, index, TextAfterParameter(rest));
            break;
        case Form::Script:
            break;
        }
    }

    /// Looks at a line by the row of its keyword; false when there is none.
    bool LookAtLine(Rows rows, Seen& seen, std::size_t index, std::string_view line) {
        for (std::size_t k = 0; k < rows.size(); ++k) {
            if (!BeginsWith(line, rows[k].word))
                continue;
            if (rows[k].isOnce && seen[k] != 0)
                Add(LostTextKind::SecondLine, seen[k], Trim(rows[k].word));
            seen[k] = index;
            LookAtRest(rows[k].form, index, TextAfter(line, rows[k].word));
            return true;
        }
        return false;
    }

    void LookAtLines(const BlockSpan& block, Rows rows) {
        Seen seen(rows.size(), 0);
        Rows inner; // of the character or object inside a room
        Seen innerSeen;
        bool isInside = false;
        for (std::size_t index = block.FirstLine + 1; index < block.LastLine; ++index) {
            const std::string_view line = source_.Line(index);
            if (line.empty() || IsComment(line))
                continue;
            if (BeginsWith(line, "end define")) {
                isInside = false;
            } else if (!isInside && block.Is(RoomWithThingsKind) && BeginsWith(line, "define ")) {
                isInside = true;
                const bool isCharacter = BeginsWith(line, "define character");
                inner = isCharacter                         ? Rows(CharacterRows)
                        : BeginsWith(line, "define object") ? Rows(ObjectRows)
                                                            : Rows();
                innerSeen.assign(inner.size(), 0);
                if (!inner.empty())
                    LookAtFirstLine(index);
            } else if (isInside) {
                LookAtLine(inner, innerSeen, index, line);
            } else if (!LookAtLine(rows, seen, index, line) && block.Is(MenuKind)) {
                Add(LostTextKind::MenuLine, index, line);
            }
        }
    }

    const SourceText& source_;
    std::vector<LostText> found_;
};

} // namespace

std::vector<LostText> FindLostText(const SourceText& source) {
    return LostTextSearch(source).Run();
}

} // namespace zem
