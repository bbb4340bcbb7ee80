#include "reader/InspectFile.h"

#include "base/KelError.h"
#include "base/LineText.h"
#include "base/TextFile.h"
#include "model/GameModel.h"
#include "reader/InternalProcedures.h"
#include "reader/SourceText.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace zem {

namespace {

using Remarks = std::vector<LoadRemark>;

void RemarkOnEncoding(TextEncoding encoding, Remarks& remarks) {
    switch (encoding) {
    case TextEncoding::Windows1252:
        return;
    case TextEncoding::Utf8:
        remarks.push_back({0,
                           "the text is UTF-8, but games are Windows-1252: each letter beyond ASCII is read "
                           "as two or three others"});
        return;
    case TextEncoding::Utf8WithMark:
        remarks.push_back({1, "the file begins with a UTF-8 mark, which hides the first line: a block that "
                              "begins there is not read, and a save drops it"});
        return;
    case TextEncoding::Utf16:
        remarks.push_back({0, "the text is UTF-16, but games are Windows-1252: nothing of it can be read"});
        return;
    case TextEncoding::Binary:
        remarks.push_back({0, "this is no text: it may be a program, a picture or a packed file"});
        return;
    }
}

/// Tells of the marks that git leaves where two versions of a file could not be merged.
class ConflictMarks {
public:
    explicit ConflictMarks(Remarks& remarks) : remarks_(remarks) {}

    void Look(std::string_view line, std::size_t number) {
        if (IsMark(line, '<')) {
            isInside_ = true;
            Tell(number, "begins a conflict that git left: the lines of both versions are read one after the "
                         "other");
        } else if (IsMark(line, '>')) {
            isInside_ = false;
            Tell(number, "ends a conflict that git left");
        } else if (isInside_ && (IsMark(line, '=') || IsMark(line, '|'))) {
            Tell(number, "begins the other version in a conflict that git left");
        }
    }

private:
    static bool IsMark(std::string_view line, char c) {
        const std::size_t size = std::min(line.find_first_not_of(c), line.size());
        return size == 7 && (line.size() == size || line[size] == ' ');
    }

    void Tell(std::size_t number, const char* what) {
        remarks_.push_back({number, std::string("this line ") + what, RemarkKind::MergeMark});
    }

    Remarks& remarks_;
    bool isInside_ = false;
};

/// The word after "define", in small letters, whatever stands around it: that of "define  Room<x>" is "room".
std::string TypeOf(std::string_view firstLine) {
    const std::string_view rest = Trim(firstLine.substr(std::string_view("define").size()));
    const auto end =
        std::find_if(rest.begin(), rest.end(), [](char c) { return Lower(c) < 'a' || Lower(c) > 'z'; });
    return Lower(rest.substr(0, static_cast<std::size_t>(end - rest.begin())));
}

/// What is odd about how a block is read that the author certainly meant to be of a kind that is known.
std::optional<LoadRemark> OddnessOf(const BlockSpan& block, std::string_view firstLine,
                                    std::size_t lastGameLine) {
    const std::string type = TypeOf(firstLine);
    if (block.Is(GameKind) && block.Is(KeptKind))
        return LoadRemark{
            0,
            "the game's own block must begin \"define game <\": this one is read and kept as it is "
            "besides, so "
            "a save writes it twice",
            RemarkKind::ReadAndKept};
    if (block.Is(GameKind) && block.FirstLine != lastGameLine)
        return LoadRemark{
            0,
            "of several \"define game\" blocks only the last is read: this one is not, and a save drops "
            "it",
            RemarkKind::SecondGame};
    if (block.Is(RoomKind) && block.Is(KeptKind))
        return LoadRemark{
            0,
            "a room must begin \"define room <\": this one is read without its characters and objects, "
            "and "
            "kept as it is besides, so a save writes it twice",
            RemarkKind::ReadAndKept};
    if (block.Is(SynonymsKind) && block.Is(KeptKind))
        return LoadRemark{
            0,
            "synonyms must begin \"define synonyms\" in small letters: these are read and kept as they "
            "are "
            "besides, so a save writes them twice",
            RemarkKind::ReadAndKept};
    if (block.Kinds == 0)
        return LoadRemark{
            0,
            "the word \"game\" after \"define\" must be in small letters: this block is not read, and a "
            "save drops it",
            RemarkKind::GameNotRead};
    if (block.Kinds != KeptKind)
        return std::nullopt;
    if (type == "character" || type == "object")
        return LoadRemark{0,
                          (type == "object" ? "an " : "a ") + type +
                              " must stand inside a room: this one is kept as it is, but not shown",
                          RemarkKind::ThingOutside};
    for (const char* known : {"game", "room", "text", "procedure", "selection", "synonyms"})
        if (type == known)
            return LoadRemark{0,
                              "a block must begin \"define " + type +
                                  (type == "synonyms" ? "\" and nothing else" : " <\"") +
                                  ": this one is kept as it is, but not read",
                              RemarkKind::OnlyKept};
    return std::nullopt;
}

/// Tells of the blocks that are not read as they look, and counts what is dropped.
class BlockInspector {
public:
    BlockInspector(const SourceText& source, FileInspection& inspection)
        : source_(source),
          inspection_(inspection),
          lastGameLine_(source.GameBlock().FirstLine) {}

    void Run() {
        std::size_t next = 1;
        for (const BlockSpan& block : source_.Blocks()) {
            CountOutside(next, block.FirstLine);
            InspectBlock(block);
            next = block.LastLine + 1;
        }
        CountOutside(next, source_.LineCount() + 1);
    }

private:
    static bool IsComment(std::string_view line) { return line.starts_with('\''); }

    void Remark(std::size_t index, std::string text, RemarkKind kind) {
        inspection_.remarks.push_back({source_.LineInFile(index), std::move(text), kind});
    }

    void CountLine(std::string_view line) {
        if (IsComment(line))
            ++inspection_.dropped.comments;
        else if (!line.empty())
            ++inspection_.dropped.others;
    }

    void CountOutside(std::size_t first, std::size_t past) {
        const std::string nameAndVersion = std::string(" created by ") + NameAndVersion;
        for (std::size_t index = first; index < past; ++index) {
            const std::string_view line = source_.Line(index);
            const bool isOfSave = BeginsWith(line, "!include ") || BeginsWith(line, "'ZEM-NIP ") ||
                                  BeginsWith(line, "'*** The following line is required by ZEM") ||
                                  (index == 1 && IsComment(line) && line.ends_with(nameAndVersion));
            if (!isOfSave)
                CountLine(line);
        }
    }

    void CountInside(const BlockSpan& block, bool commentsAlone) {
        for (std::size_t index = block.FirstLine + 1; index < block.LastLine; ++index)
            if (!commentsAlone || IsComment(source_.Line(index)))
                CountLine(source_.Line(index));
    }

    void InspectBlock(const BlockSpan& block) {
        if (const auto oddness = OddnessOf(block, source_.Line(block.FirstLine), lastGameLine_))
            Remark(block.FirstLine, oddness->text, oddness->kind);
        const bool isUnread =
            block.Kinds == 0 || (block.Kinds == GameKind && block.FirstLine != lastGameLine_);
        if (isUnread) {
            inspection_.dropped.others += 2; // Its first line and its last.
            CountInside(block, false);
        } else if (block.Kinds == GameKind) {
            CountInside(block, true);
        } else if (block.Is(RoomWithThingsKind)) {
            InspectRoom(block);
        } else if (block.Is(MenuKind)) {
            for (std::size_t index = block.FirstLine + 1; index < block.LastLine; ++index)
                if (!BeginsWith(source_.Line(index), "choice ") && !BeginsWith(source_.Line(index), "info "))
                    CountLine(source_.Line(index));
        }
    }

    void InspectRoom(const BlockSpan& block) {
        bool inUnknown = false;
        bool inThing = false;
        for (std::size_t index = block.FirstLine + 1; index < block.LastLine; ++index) {
            const std::string_view line = source_.Line(index);
            if (!inThing && !inUnknown && BeginsWith(line, "define ")) {
                inThing = BeginsWith(line, "define character") || BeginsWith(line, "define object");
                inUnknown = !inThing;
                if (inUnknown)
                    Remark(index,
                           "inside a room only characters and objects are read: this block is not, and "
                           "a save drops it",
                           RemarkKind::BlockInRoom);
            } else if (inThing && BeginsWith(line, "define"))
                Remark(
                    index,
                    "inside a character or object no block is read: this line is kept as one of its lines, "
                    "and a game that is saved with it cannot be opened again",
                    RemarkKind::BlockInThing);
            if (inUnknown || IsComment(line))
                CountLine(line);
            if (BeginsWith(line, "end define"))
                inThing = inUnknown = false;
        }
    }

    const SourceText& source_;
    FileInspection& inspection_;
    std::size_t lastGameLine_;
};

void InspectLines(const SourceText& source, FileInspection& inspection) {
    ConflictMarks marks(inspection.remarks);
    for (std::size_t index = 1; index <= source.LineCount(); ++index) {
        inspection.isGame = inspection.isGame || BeginsWith(source.Line(index), "define");
        marks.Look(source.Line(index), index);
    }
    if (!inspection.isGame)
        inspection.remarks.push_back(
            {0, "no line begins a \"define\" block, so this is no Kel game: it opens as an empty one",
             RemarkKind::NoGame});
}

} // namespace

FileInspection InspectFile(std::string bytes) {
    FileInspection inspection;
    inspection.encoding = DetectEncoding(bytes);
    RemarkOnEncoding(inspection.encoding, inspection.remarks);
    try {
        SourceText source(std::move(bytes));
        InspectLines(source, inspection);
        source.IndexBlocks();
        GameModel scratch; // Its counter numbers the procedures that nobody will see.
        MakeInternalProcedures(scratch, source);
        source.TrimLines();
        source.NoteKinds();
        BlockInspector(source, inspection).Run();
        inspection.lost = FindLostText(source);
    } catch (const KelError&) {
        // LoadGame says why such a file cannot be read.
    }
    std::stable_sort(inspection.remarks.begin(), inspection.remarks.end(),
                     [](const LoadRemark& a, const LoadRemark& b) { return a.line < b.line; });
    return inspection;
}

} // namespace zem
