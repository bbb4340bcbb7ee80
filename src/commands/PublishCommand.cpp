// The command that makes a game into a web page.
#include "base/TextEncoding.h"
#include "base/TextFile.h"
#include "commands/Command.h"
#include "commands/GameFolder.h"
#include "commands/WebPage.h"
#include "play/FileNames.h"
#include "play/Session.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <memory>
#include <ostream>
#include <utility>

namespace zem {

namespace {

using play::Op;

constexpr std::size_t MostMedia = 32 * 1024 * 1024; // bytes of all pictures and sounds

class Publisher {
public:
    Publisher(CommandContext& context, std::string file)
        : context_(context),
          file_(std::move(file)),
          folder_(std::filesystem::path(file_).parent_path().string()) {}

    int Publish(const std::string& target) {
        try {
            return ReadPage() && ReadTheGame() && AddMedia() ? context_.Write(MakeWebPage(parts_), target)
                                                             : FileProblem;
        } catch (const KelError& error) {
            return context_.Report(file_, error);
        }
    }

private:
    /// The page and the player, which are built with the program.
    bool ReadPage() {
        const std::string folder = context_.ProgramFolder() + "/web/";
        if (std::error_code error; !std::filesystem::exists(folder + "player.wasm.gz", error)) {
            context_.Err()
                << "zem: the player for web pages is not there: it is built after the program, in some "
                   "minutes, or by \"cmake --build --preset release --target web_player\"\n";
            return false;
        }
        parts_.player = ReadFile(folder + "player.wasm.gz");
        parts_.frame = ReadFile(folder + "page.html");
        parts_.style = ReadFile(folder + "page.css");
        parts_.script = ReadFile(folder + "page.js");
        return true;
    }

    bool ReadTheGame() {
        std::optional<play::GameFiles> files = play::LoadGameFiles(file_, context_.Err());
        if (!files)
            return false;
        parts_.game = ReadFile(file_);
        for (const std::string& name : files->libraryNames)
            if (std::optional<std::string> bytes = play::ReadBesideGame(folder_, name))
                parts_.libraries.emplace_back(name, *std::move(bytes));
        world_ = play::World::Compile(*std::move(files));
        const std::string why = play::Session(world_, 1).WhyItCannotBegin();
        if (!why.empty())
            context_.Err() << file_ << ": " << ToUtf8(why) << '\n';
        const GameModel& game = world_->Game();
        parts_.title =
            ToUtf8(game.GameName.empty() ? std::filesystem::path(file_).stem().string() : game.GameName);
        parts_.author = ToUtf8(game.GameAuthor);
        return why.empty();
    }

    /// The pictures and sounds that scripts name. Those that are missing are told, and the page does without.
    bool AddMedia() {
        std::vector<std::string> names;
        for (const play::Book* book : world_->OwnBooks())
            for (const play::Node& node : book->nodes)
                if (node.op == Op::Picture || node.op == Op::Sound || node.op == Op::Music)
                    names.push_back(node.arguments.text);
        std::sort(names.begin(), names.end());
        names.erase(std::unique(names.begin(), names.end()), names.end());
        std::size_t size = 0;
        for (const std::string& name : names) {
            std::optional<std::string> bytes = play::ReadBesideGame(folder_, name);
            if (!bytes || MediaType(name).empty()) {
                context_.Err() << file_ << ": warning: " << ToUtf8(name) << ' '
                               << (bytes ? "is of a kind that browsers do not show"
                                         : "is not beside the game")
                               << ", and the page does without it\n";
                continue;
            }
            size += bytes->size();
            if (size > MostMedia) {
                context_.Err() << file_
                               << ": the pictures and sounds of the game take more than 32 MB, which is "
                                  "too much for a page\n";
                return false;
            }
            parts_.media.emplace_back(ToUtf8(name), *std::move(bytes));
        }
        return true;
    }

    CommandContext& context_;
    std::string file_;
    std::string folder_;
    WebPageParts parts_;
    std::shared_ptr<const play::World> world_;
};

} // namespace

void AddPublishCommand(CLI::App& app, CommandContext& context, int& status) {
    CLI::App* publish = app.add_subcommand(
        "publish", "make a game into one web page that plays it in any browser, without a network");
    auto files = std::make_shared<std::pair<std::string, std::string>>();
    publish->add_option("FILE", files->first, "the game")->required();
    publish->add_option("OUT", files->second, "the page to write, - for standard output")->required();
    publish->final_callback(
        [&context, &status, files] { status = Publisher(context, files->first).Publish(files->second); });
}

} // namespace zem
