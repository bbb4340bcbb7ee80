// Any bytes as a game file: it loads or is refused; what was loaded saves and, if that loads again, saves the
// same.
#include "model/GameModel.h"
#include "model/Host.h"
#include "reader/LoadGame.h"
#include "writer/SaveGame.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>
#include <unistd.h>

namespace {

class SilentHost : public zem::Host {
public:
    zem::MessageResult ShowMessage(const std::string&, const std::string&, zem::MessageButtons) override {
        return zem::MessageResult::Ok;
    }
    void ShowNotice(const std::string&, const std::string&) override {}
    void ShowStage(const std::string&) override {}
    void ShowProgress(int) override {}
    void CloseProgress() override {}
};

class StringOutput : public zem::Output {
public:
    std::string bytes;
    void Write(std::string_view piece) override { bytes.append(piece); }
    void Close() override {}
};

bool Load(zem::GameModel& game, const std::string& bytes) {
    static const std::string path = "/tmp/zem-fuzz-" + std::to_string(getpid()) + ".kel";
    std::ofstream(path, std::ios::binary) << bytes;
    SilentHost host;
    bool loaded = false;
    try {
        loaded = zem::LoadGame(game, path, host);
    } catch (const zem::KelError&) {
        // refused, with a reason
    }
    unlink(path.c_str());
    return loaded;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zem::GameModel game;
    game.ErrorMessages.Append({"description", "badgo", ""});
    if (!Load(game, {reinterpret_cast<const char*>(data), size}))
        return 0;
    StringOutput first;
    StringOutput second;
    zem::WriteGame(game, "game.kel", first);
    zem::WriteGame(game, "game.kel", second);
    if (first.bytes != second.bytes)
        std::abort();
    Load(game, first.bytes); // which may be refused: the format has its traps
    return 0;
}
