#include "commands/Publish.h"

#include "base/KelError.h"
#include "base/LineText.h"
#include "base/TextEncoding.h"
#include "base/TextFile.h"
#include "commands/GameFolder.h"
#include "commands/WebPage.h"
#include "play/FileNames.h"
#include "play/Libraries.h"
#include "play/Session.h"
#include "reader/LoadGame.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

namespace zem {

namespace {

constexpr std::size_t MegaByte = 1024 * 1024;
constexpr std::size_t MostFiles = 32 * MegaByte; // of pictures, sounds and libraries in all
constexpr std::string_view CoverEndings[] = {".png", ".jpg", ".jpeg", ".webp", ".gif", ".svg"};

std::string ReadPart(const std::string& folder, const char* name) {
    if (std::error_code error; !std::filesystem::exists(folder + name, error))
        throw KelError(
            "the player for web pages is not there yet. ./run.sh builds it after the editor has opened, "
            "which takes some minutes and needs clang with its libraries for wasm32; "
            "build/release/web_player.log tells more");
    return ReadFile(folder + name);
}

class Publisher {
public:
    explicit Publisher(const PublishSource& source) : source_(source) {}

    PublishedPage Publish(const std::string& programFolder) {
        const std::string folder = programFolder + "/web/";
        parts_.player = ReadPart(folder, "player.wasm.gz");
        parts_.frame = ReadPart(folder, "page.html");
        parts_.style = ReadPart(folder, "page.css");
        parts_.script = ReadPart(folder, "page.js");
        ReadTheGame();
        AddMedia();
        AddCover();
        return {MakeWebPage(parts_), std::move(remarks_)};
    }

private:
    std::optional<std::string> ReadBeside(const std::string& name) const {
        return source_.hasFolder ? play::ReadBesideGame(source_.folder, name) : std::nullopt;
    }

    /// The page reads without looking for faults, so nothing may go into it that was not read here.
    void ReadTheGame() {
        GameModel game;
        play::NameMessages(game);
        ReadGame(game, source_.bytes);
        play::GameFiles files = play::WithLibraries(
            std::move(game), [this](const std::string& name) { return ReadBeside(name); });
        for (const std::string& problem : files.problems)
            remarks_.push_back(ToUtf8(problem));
        for (const std::string& name : files.libraryNames)
            if (std::optional<std::string> bytes = ReadBeside(name))
                Add(parts_.libraries, name, *std::move(bytes));
        world_ = play::World::Compile(std::move(files));
        if (const std::string why = play::Session(world_, 1).WhyItCannotBegin(); !why.empty())
            throw KelError(why.substr(0, why.size() - 1)); // without the full stop
        parts_.game = source_.bytes;
        parts_.title = ToUtf8(Trim(world_->Game().GameName));
        if (parts_.title.empty())
            parts_.title = source_.name;
        parts_.author = ToUtf8(Trim(world_->Game().GameAuthor));
    }

    void Add(std::vector<PageFile>& files, const std::string& name, std::string bytes) {
        size_ += bytes.size();
        if (size_ > MostFiles)
            throw KelError("the pictures, sounds and libraries of the game take more than " +
                           std::to_string(MostFiles / MegaByte) + " MB, which is too much for a page; " +
                           name + " is one too many");
        files.push_back({name, std::move(bytes)});
    }

    void AddMedia() {
        std::set<std::string> names;
        NoteMedia(world_->TimerBook(), names);
        for (const auto& block : world_->GameBlocks())
            NoteMedia(block->book, names);
        for (const auto& room : world_->AllRooms()) {
            NoteMedia(room->book, names);
            for (const play::WorldThing& thing : room->things)
                NoteMedia(thing.book, names);
        }
        const auto noteAll = [&](const auto& records) {
            for (const auto& record : records)
                NoteMedia(record->book, names);
        };
        noteAll(world_->AllProcedures());
        noteAll(world_->AllMenus());
        noteAll(world_->AllTexts());
        for (const std::string& name : names) {
            std::optional<std::string> bytes = ReadBeside(name);
            if (!bytes || MediaType(name).empty())
                remarks_.push_back("the page does without " + ToUtf8(name) + ", which is " +
                                   (bytes ? "of a kind that browsers do not show" : "not beside the game"));
            else
                Add(parts_.media, name, *std::move(bytes));
        }
    }

    static void NoteMedia(const play::Book& book, std::set<std::string>& names) {
        for (const play::Node& node : book.nodes)
            if (node.op == play::Op::Picture || node.op == play::Op::Sound || node.op == play::Op::Music)
                names.insert(std::string(Trim(node.arguments.text)));
    }

    void AddCover() {
        if (!source_.cover.empty()) {
            if (MediaType(source_.cover).substr(0, 6) != "image/")
                throw KelError(FromUtf8(source_.cover) + " is no picture that browsers show");
            SetCover(source_.cover, ReadFile(source_.cover));
            return;
        }
        for (const std::string_view ending : CoverEndings)
            for (const std::string& name : {source_.name, std::string("cover")})
                if (std::optional<std::string> bytes = ReadBeside(FromUtf8(name + std::string(ending)));
                    bytes && parts_.cover.name.empty())
                    SetCover(name + std::string(ending), *std::move(bytes));
    }

    void SetCover(std::string name, std::string bytes) {
        std::vector<PageFile> cover;
        Add(cover, name, std::move(bytes));
        parts_.cover = std::move(cover.front());
    }

    const PublishSource& source_;
    WebPageParts parts_;
    std::shared_ptr<const play::World> world_;
    std::vector<std::string> remarks_;
    std::size_t size_ = 0;
};

} // namespace

PublishedPage PublishGame(const PublishSource& source, const std::string& programFolder) {
    return Publisher(source).Publish(programFolder);
}

} // namespace zem
