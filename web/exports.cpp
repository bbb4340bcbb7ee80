// What the page calls of the player. Every call takes and gives UTF-8 in memory that Space() made; the answer
// stands at Result(), Length() bytes long, as JSON.
#include "base/TextEncoding.h"
#include "base/TextFile.h"
#include "play/Libraries.h"
#include "play/NameSearch.h"
#include "play/Session.h"
#include "play/Transcript.h"
#include "reader/LoadGame.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace zem;
using namespace zem::play;

std::string space;
std::string result;
std::shared_ptr<const World> world;
std::unique_ptr<Session> session;

/// JSON in the making: names and values one behind the other.
class Json {
public:
    void Text(std::string_view name, std::string_view text) {
        Name(name);
        Quote(ToUtf8(text));
    }
    void Number(std::string_view name, std::int64_t number) {
        Name(name);
        json_ += std::to_string(number);
    }
    void List(std::string_view name, const std::vector<std::string>& texts) {
        Name(name);
        json_ += '[';
        for (const std::string& text : texts) {
            Quote(ToUtf8(text));
            json_ += ',';
        }
        Close(']');
    }
    void Begin(std::string_view name, char bracket) {
        if (!name.empty())
            Name(name);
        json_ += bracket;
    }
    void Close(char bracket) {
        if (json_.ends_with(','))
            json_.pop_back();
        json_ += bracket;
        json_ += ',';
    }
    std::string Take() {
        json_.pop_back();
        return std::move(json_);
    }

private:
    void Name(std::string_view name) {
        if (!json_.empty() && json_.back() != ',' && json_.back() != '{' && json_.back() != '[')
            json_ += ',';
        json_ += '"';
        json_ += name;
        json_ += "\":";
    }
    void Quote(std::string_view text) {
        constexpr char Digits[] = "0123456789abcdef";
        json_ += '"';
        for (const char c : text)
            if (c == '"' || c == '\\')
                (json_ += '\\') += c;
            else if (static_cast<unsigned char>(c) < 0x20)
                ((json_ += "\\u00") += Digits[(c >> 4) & 15]) += Digits[c & 15];
            else
                json_ += c;
        json_ += '"';
    }

    std::string json_;
};

constexpr std::string_view Needs[] = {"line", "text", "yesno", "choice", "key", "nothing"};
constexpr std::string_view Requests[] = {"", "save", "restore", "quit", "", ""};
constexpr std::string_view Kinds[] = {"text", "clear", "pause", "picture", "sound", "music", "silence"};
constexpr std::string_view Alignments[] = {"left", "center", "right"};

void AddPiece(Json& json, const Piece& piece) {
    json.Begin({}, '{');
    json.Text("kind", Kinds[piece.kind]);
    json.Text("text", piece.text);
    if (piece.kind == Piece::Pause)
        json.Number("seconds", piece.seconds);
    const Style& style = piece.style;
    if (style.bold)
        json.Number("bold", 1);
    if (style.italic)
        json.Number("italic", 1);
    if (style.underline)
        json.Number("underline", 1);
    if (style.alignment != Alignment::Left)
        json.Text("align", Alignments[static_cast<int>(style.alignment)]);
    if (style.size != 0)
        json.Number("size", style.size);
    if (!style.colour.empty())
        json.Text("colour", style.colour);
    if (!style.font.empty())
        json.Text("font", style.font);
    if (piece.source.field == ScriptField::Choice && piece.source.line == 0) // not what its script prints
        json.Number("choice", piece.source.index);
    json.Close('}');
}

/// The names of the things that are there and that a room lists.
std::vector<std::string> ThingsHere() {
    std::vector<std::string> names;
    const State& state = session->GetState();
    if (state[PlayerRoom] != 0)
        for (const Number thing : state.ThingsIn(state[PlayerRoom]))
            if (IsThere(*world, state, thing) && !world->FindThing(thing)->record->Invisible)
                names.push_back(world->FindThing(thing)->record->Name);
    return names;
}

/// The names of the places that the player can go to from the room.
std::vector<std::string> OpenPlaces() {
    std::vector<std::string> names;
    const State& state = session->GetState();
    const WorldRoom* room =
        state[PlayerRoom] == 0 ? nullptr : world->FindRoom(static_cast<Number>(state[PlayerRoom] - 1));
    if (room != nullptr)
        for (const WorldPlace& place : room->places)
            if (IsOpenRoom(*world, state, place.room))
                names.emplace_back(world->GetNames().Name(Kind::Room, place.room));
    return names;
}

void Tell(const Outcome& outcome) {
    Json json;
    json.Begin({}, '{');
    json.Begin("pieces", '[');
    for (const Piece& piece : outcome.pieces)
        AddPiece(json, piece);
    json.Close(']');
    json.Text("need", Needs[static_cast<int>(session->Needs())]);
    json.Text("request", Requests[static_cast<int>(outcome.request)]);
    json.Number("refused", outcome.isRefused ? 1 : 0);
    json.Number("turn", outcome.wasTurn ? 1 : 0);
    json.Text("room", session->RoomName());
    json.List("choices", outcome.choices);
    json.List("exits", session->OpenDirections());
    json.List("places", OpenPlaces());
    json.List("items", session->ItemsHad());
    json.List("things", ThingsHere());
    json.Number("turns", session->TurnCount());
    json.Number("undo", session->CanUndo() ? 1 : 0);
    json.Close('}');
    result = json.Take();
}

/// Takes the first of the texts that the page has put one behind the other: a length in decimal, a blank, and
/// so many bytes.
std::string TakeCounted(std::string_view& bytes) {
    const std::size_t blank = bytes.find(' ');
    if (blank == std::string_view::npos)
        return {};
    const std::size_t length = std::strtoul(std::string(bytes.substr(0, blank)).c_str(), nullptr, 10);
    std::string text(bytes.substr(blank + 1, length));
    bytes.remove_prefix(std::min(blank + 1 + length, bytes.size()));
    return text;
}

} // namespace

#define ZEM_EXPORT(name) extern "C" __attribute__((export_name(#name)))

ZEM_EXPORT(Space) char* Space(std::size_t length) {
    space.assign(length, '\0');
    return space.data();
}
ZEM_EXPORT(Result) const char* Result() {
    return result.data();
}
ZEM_EXPORT(Length) std::size_t Length() {
    return result.size();
}

/// The game's bytes and, with their names, those of its libraries: all counted.
ZEM_EXPORT(Load) void Load() {
    std::string_view rest = space;
    GameModel game;
    NameMessages(game);
    ReadGame(game, TakeCounted(rest));
    std::map<std::string, std::string> libraries;
    while (!rest.empty()) {
        std::string name = TakeCounted(rest);
        libraries[std::move(name)] = TakeCounted(rest);
    }
    world = World::Compile(
        WithLibraries(std::move(game), [&](const std::string& name) -> std::optional<std::string> {
            const auto found = libraries.find(name);
            return found == libraries.end() ? std::nullopt : std::optional(found->second);
        }));
}

ZEM_EXPORT(Begin) void Begin(std::uint32_t seed) {
    session = std::make_unique<Session>(world, seed);
    Tell(session->Begin());
}
ZEM_EXPORT(Type) void Type() {
    Tell(session->Type(FromUtf8(space)));
}
ZEM_EXPORT(Answer) void Answer() {
    Tell(session->Answer(FromUtf8(space)));
}
ZEM_EXPORT(Pass) void Pass(std::uint32_t seconds) {
    Tell(session->Pass(seconds));
}
ZEM_EXPORT(Undo) void Undo() {
    Outcome outcome;
    outcome.isRefused = !session->Undo();
    Tell(outcome);
}
ZEM_EXPORT(Restart) void Restart() {
    Tell(session->Restart());
}
ZEM_EXPORT(Save) void Save() {
    result = session->Save();
}
ZEM_EXPORT(Saved) void Saved(int isSaved) {
    Tell(session->Saved(isSaved != 0));
}
ZEM_EXPORT(Restore) void Restore() {
    Tell(space.empty() ? session->NotRestored() : session->Restore(space));
}

/// Plays lines of input as "veldt --text FILE --lines" does, and gives the same transcript.
ZEM_EXPORT(PlayLines) void PlayLines(std::uint32_t seed) {
    Session played(world, seed);
    TranscriptPlayer player(played);
    std::string transcript = player.Begin();
    std::string_view lines = space;
    for (std::size_t number = 1; !lines.empty(); ++number) {
        const std::optional<InputLine> input = ReadInputLine(TakeLine(lines), number);
        if (!input)
            continue;
        const std::optional<std::string> story = player.Play(*input);
        if (!story)
            break;
        transcript += *story;
    }
    result = std::move(transcript);
}

// The library has no exceptions here. Whatever is thrown is a fault of the program, because a game is read
// before it is published: the page is told, and stops.
extern "C" {
__attribute__((import_module("page"), import_name("Fault"))) void Fault(const char* text, std::size_t length);
void* __cxa_allocate_exception(std::size_t size) noexcept {
    return std::malloc(size);
}
[[noreturn]] void __cxa_throw(void* /*thrown*/, void* /*type*/, void (*)(void*)) {
    constexpr std::string_view Text = "an exception was thrown";
    Fault(Text.data(), Text.size());
    __builtin_trap();
}
}
