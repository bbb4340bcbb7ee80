// Any bytes as a saved game, their end made to fit: refused whole, or what is saved again can be opened.
#include "play/Libraries.h"
#include "play/Session.h"
#include "reader/LoadGame.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

std::shared_ptr<const zem::play::World> SmallWorld() {
    zem::GameModel game;
    zem::ReadGame(game,
                  "define game <G>\nstart <A>\nitems <key>\ncollectables <gold p=3 [!]>\n"
                  "startscript set <name; Ann>\nend define\n"
                  "define room <A>\nnorth <B>\ndefine object <key>\nend define\nend define\n"
                  "define room <B>\nscript flag on <seen>\ndefine character <Tom>\nend define\nend define\n"
                  "define procedure <p>\nafter <5; p>\ntimer on <t>\nend define\n");
    zem::play::GameFiles files;
    files.game = std::move(game);
    return zem::play::World::Compile(std::move(files));
}

/// The last line of a saved game, which tells of damage.
std::string WithEnd(std::string bytes) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char c : bytes)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
    return bytes + "end\t" + std::to_string(hash) + "\n";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::shared_ptr<const zem::play::World> world = SmallWorld();
    zem::play::Session session(world, 1);
    session.Begin();
    const std::uint64_t before = session.Fingerprint();
    session.Restore(WithEnd(std::string(reinterpret_cast<const char*>(data), size)));
    if (session.StepCount() == 0) {
        if (session.Fingerprint() != before)
            std::abort();
        return 0;
    }
    zem::play::Session other(world, 1);
    other.Begin();
    other.Restore(session.Save());
    if (!session.RoomName().empty() && other.Fingerprint() != session.Fingerprint())
        std::abort();
    for (const char* line : {"look", "north", "i", "undo", "x it"})
        if (session.Needs() == zem::play::Need::Line)
            session.Type(line);
    session.Pass(100);
    return 0;
}
