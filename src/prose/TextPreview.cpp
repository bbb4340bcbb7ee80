#include "prose/TextPreview.h"

#include "base/LineText.h"
#include "play/Printer.h"

#include <algorithm>

namespace zem {

TextPreview::TextPreview(QWidget* parent) : StoryPane(parent) {
    setAccessibleName(QStringLiteral("The text as players see it"));
    setFocusPolicy(Qt::ClickFocus); // Tab goes through what is written
}

void TextPreview::ShowText(std::string_view text) {
    constexpr std::size_t MostShown = 16 * 1024; // bytes; laid out anew after each pause in typing
    std::string lines(text.substr(0, MostShown));
    lines.erase(std::remove(lines.begin(), lines.end(), '\r'), lines.end());
    if (lines == shown_)
        return;
    shown_ = lines;
    static const std::shared_ptr<const play::World> NoGame = play::World::Compile({});
    const play::State state(NoGame->NamesOfGame(), NoGame->Start(), NoGame->ThingOrder());
    play::Printer printer(*NoGame, state);
    printer.Begin({});
    for (std::size_t at = 0; at < lines.size();)
        printer.Print(lines, at);
    ClearPage();
    for (const play::Piece& piece : printer.Pieces())
        if (piece.kind == play::Piece::Text)
            Show(piece);
        else if (piece.kind == play::Piece::Clear)
            ClearPage();
}

} // namespace zem
