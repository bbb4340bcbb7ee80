// The bytes of a game, a line with "\n====\n", and lines of input: every turn ends, taking back to the start
// gives the start, and a saved game is the game.
#include "play/Libraries.h"
#include "play/Session.h"
#include "reader/LoadGame.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

void PlayLines(zem::play::Session& session, std::string_view lines) {
    for (int k = 0; k < 40 && !lines.empty(); ++k) {
        const std::string_view line = lines.substr(0, lines.find('\n'));
        lines.remove_prefix(std::min(line.size() + 1, lines.size()));
        if (session.Needs() == zem::play::Need::Line && line.starts_with('@'))
            session.Pass(static_cast<std::int64_t>(line.size()) * 7);
        else if (session.Needs() == zem::play::Need::Line || session.Needs() == zem::play::Need::Nothing)
            session.Type(line);
        else
            session.Answer(line);
    }
}

void Check(bool holds) {
    if (!holds)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::size_t cut = bytes.find("\n====\n");
    zem::GameModel game;
    zem::play::NameMessages(game);
    try {
        zem::ReadGame(game, std::string(bytes.substr(0, cut)));
    } catch (const zem::KelError&) {
        return 0;
    }
    zem::play::GameFiles files;
    files.game = std::move(game);
    const auto world = zem::play::World::Compile(std::move(files));
    zem::play::Session session(world, 1);
    if (!session.WhyItCannotBegin().empty())
        return 0;
    session.Begin();
    for (int k = 0;
         k < 5 && session.Needs() != zem::play::Need::Line && session.Needs() != zem::play::Need::Nothing;
         ++k)
        session.Answer("1");
    if (session.Needs() != zem::play::Need::Line)
        return 0;
    const std::uint64_t first = session.Fingerprint();
    PlayLines(session, cut == std::string_view::npos ? "look\ni\nnorth\n@\n" : bytes.substr(cut + 6));
    if (session.Needs() == zem::play::Need::Line && !session.RoomName().empty()) {
        zem::play::Session other(world, 2);
        other.Begin();
        other.Restore(session.Save());
        Check(other.Fingerprint() == session.Fingerprint());
    }
    while (session.Undo()) {
    }
    Check(session.Fingerprint() == first);
    return 0;
}
