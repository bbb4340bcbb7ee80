#include "pieces/Piece.h"

#include "base/LineText.h"
#include "writer/SaveGame.h"

#include <cstddef>
#include <utility>

namespace zem {

namespace {

class PieceOutput : public Output {
public:
    std::string text;
    void Write(std::string_view bytes) override { text.append(bytes); }
    void Close() override {}
};

/// How many records of one kind there are, and what the first of them is called.
struct Counted {
    const char* one;
    const char* several;
    std::size_t count = 0;
    std::string first; // empty where a name says little
};

template <class Records>
Counted CountNamed(const char* one, const char* several, const Records& records) {
    Counted counted{one, several, 0, {}};
    for (const auto& record : records)
        if (!BeginsWith(record.Name, InternalProcedure) && counted.count++ == 0)
            counted.first = record.Name;
    return counted;
}

Counted CountAll(const char* one, const char* several, std::size_t count) {
    return {one, several, count, {}};
}

} // namespace

std::string WritePiece(const Piece& piece) {
    PieceOutput output;
    for (const std::string& line : piece.lines)
        output.text.append(line).append("\r\n");
    WriteRecords(piece.game, piece.things, output);
    while (output.text.ends_with("\r\n\r\n"))
        output.text.resize(output.text.size() - 2);
    return std::move(output.text);
}

std::string DescribePiece(const Piece& piece) {
    const GameModel& game = piece.game;
    const Counted kinds[] = {
        CountNamed("room", "rooms", game.Rooms),
        CountNamed("character", "characters", piece.things.Characters),
        CountNamed("object", "objects", piece.things.Objects),
        CountNamed("item", "items", game.Items),
        CountNamed("collectable", "collectables", game.Collectables),
        CountNamed("procedure", "procedures", game.Procedures),
        CountNamed("text block", "text blocks", game.TextSections),
        CountNamed("menu", "menus", game.SelectionMenus),
        CountAll("player command", "player commands", static_cast<std::size_t>(game.PlayerCommands.Count())),
        CountAll("use rule", "use rules", static_cast<std::size_t>(game.GameUses.Count())),
        CountAll("synonym", "synonyms", static_cast<std::size_t>(game.Synonyms.Count())),
        CountAll("line", "lines", piece.lines.size()),
        CountAll("block of another kind", "blocks of other kinds", game.UnknownBlocks->empty() ? 0 : 1),
    };
    std::vector<std::string> parts;
    for (const Counted& kind : kinds)
        if (kind.count == 1 && !kind.first.empty())
            parts.push_back(std::string(kind.one) + " " + kind.first);
        else if (kind.count != 0)
            parts.push_back(std::to_string(kind.count) + " " + (kind.count == 1 ? kind.one : kind.several));
    std::string text;
    for (std::size_t k = 0; k < parts.size(); ++k)
        text.append(k == 0 ? "" : k + 1 == parts.size() ? " and " : ", ").append(parts[k]);
    return text;
}

} // namespace zem
