#include "play/Interpreter.h"

#include "base/LineText.h"
#include "play/Limits.h"

#include <algorithm>
#include <utility>

namespace zem::play {

Interpreter::Interpreter(const World& world, State& state, const Input& input, const TurnOptions& options)
    : world_(world),
      state_(state),
      input_(input),
      options_(options),
      printer_(world, state) {}

TurnResult Interpreter::Run() {
    printer_.Begin({});
    switch (input_.kind) {
    case Input::Begin:
        BeginGame();
        break;
    case Input::BeginAt:
        Enter(input_.room, Message::BadGo);
        break;
    case Input::Line:
        RunLine();
        break;
    case Input::Seconds:
        PassSeconds(input_.seconds);
        break;
    case Input::LookAt:
        LookAt({Reference::Thing, input_.thing});
        break;
    case Input::Restart:
        result_.isStep = true;
        StopAt(Stop::Restart);
        break;
    }
    SettleEnd();
    result_.isDone = stop_ != Stop::NeedsAnswer;
    result_.outcome.pieces = std::move(printer_.Pieces());
    if (result_.isDone && state_[Ending] != Playing)
        result_.outcome.need = Need::Nothing;
    return std::move(result_);
}

void Interpreter::RunLine() {
    Recogniser recogniser(world_, state_, work_);
    Meaning meaning = recogniser.Recognise(input_.line, input_.choice);
    result_.verb = meaning.verb;
    if (meaning.verb == Verb::NotUnderstood) {
        PrintMessage(meaning.message, meaning.detail);
        result_.notUnderstood = std::move(meaning);
        return;
    }
    if (IsAboutProgram(meaning.verb)) {
        RunProgramVerb(meaning.verb);
        return;
    }
    result_.isStep = true;
    result_.outcome.wasTurn = true;
    const State::Mark before = state_.Here();
    const WorldGame& game = *world_.GameBlocks().front();
    if (!Run({&game.book, game.beforeTurn})) {
        if (stop_ == Stop::Limit)
            state_.Set(Turns, state_[Turns] + 1);
        return;
    }
    if (state_.HasChangedSince(before))
        meaning = recogniser.Recognise(input_.line, input_.choice);
    RunUnderstood(std::move(meaning));
}

void Interpreter::RunUnderstood(Meaning meaning) {
    bool goesOn = true;
    if (meaning.verb == Verb::NotUnderstood) {
        goesOn = PrintMessage(meaning.message, meaning.detail);
        result_.notUnderstood = meaning; // the next line may say which thing was meant
    } else if (!IsAboutProgram(meaning.verb))
        goesOn = CarryOut(meaning);
    const WorldGame& game = *world_.GameBlocks().front();
    if (goesOn || stop_ == Stop::Limit)
        state_.Set(Turns, state_[Turns] + 1);
    if (goesOn && Run({&game.book, game.afterTurn}))
        RunDue();
}

void Interpreter::RunProgramVerb(Verb verb) {
    Outcome& outcome = result_.outcome;
    switch (verb) {
    case Verb::Save:
        outcome.request = Request::Save;
        break;
    case Verb::Restore:
        outcome.request = Request::Restore;
        break;
    case Verb::TranscriptOn:
        outcome.request = Request::TranscriptOn;
        break;
    case Verb::TranscriptOff:
        outcome.request = Request::TranscriptOff;
        break;
    case Verb::About:
        TellAbout();
        break;
    case Verb::Quit:
        if (!options_.askBeforeQuit || AskYesNo(world_.TextOf(Message::AskSave), {}, true).value_or(false)) {
            if (stop_ == Stop::None)
                outcome.request = Request::Quit;
        }
        break;
    case Verb::RestartGame:
        if (AskYesNo(world_.TextOf(Message::PlayAgain), {}, true).value_or(false)) {
            result_.isStep = true;
            StopAt(Stop::Restart);
        }
        break;
    default:
        break; // the session takes turns back
    }
}

void Interpreter::BeginGame() {
    const WorldGame& game = *world_.GameBlocks().front();
    if (!Run({&game.book, game.start}))
        return;
    if (const WorldText* intro = world_.FindTextIgnoringCase("intro"))
        if (!PrintText(*intro))
            return;
    if (state_[PlayerRoom] == 0 && !Enter(world_.StartRoom(), Message::BadGo))
        return;
    RunDue();
}

void Interpreter::BeginAgain() {
    const std::vector<std::int64_t>& start = world_.Start();
    for (std::size_t cell = 0; cell < start.size(); ++cell)
        if (cell != Chance)
            state_.Set(static_cast<Cell>(cell), start[cell]);
    printer_.Begin({});
    printer_.Add(Piece::Clear);
    BeginGame();
}

void Interpreter::SettleEnd() {
    // A start may end the game again, so this goes on until the player is asked or the game goes on.
    while (stop_ != Stop::None && stop_ != Stop::NeedsAnswer) {
        const Stop reason = std::exchange(stop_, Stop::None);
        running_.clear();
        enterDepth_ = 0;
        typeDepth_ = 0;
        if (reason == Stop::Limit) {
            TellLimit();
            return;
        }
        if (reason != Stop::Restart)
            EndGame(reason == Stop::Win);
        else if (++restarts_ > Limits::Restarts)
            StopAt(Stop::Limit);
        else
            BeginAgain();
    }
}

void Interpreter::EndGame(bool isWon) {
    state_.Set(Ending, isWon ? Won : Lost);
    if (!PrintMessage(isWon ? Message::WonGame : Message::LostGame))
        return;
    if (const WorldText* text = world_.FindTextIgnoringCase(isWon ? "win" : "lose"))
        if (!PrintText(*text))
            return;
    if (AskYesNo(world_.TextOf(Message::PlayAgain), {}, true).value_or(false))
        StopAt(Stop::Restart);
}

void Interpreter::TellLimit() {
    result_.metLimit = true;
    printer_.RaiseLimit();
    printer_.Begin({});
    const std::vector<Piece>& pieces = printer_.Pieces();
    if (!pieces.empty() && pieces.back().kind == Piece::Text && !pieces.back().text.ends_with('\n'))
        printer_.NewLine();
    printer_.Raw(RoundInCircles);
    printer_.NewLine();
    Warn({}, "a limit of the turn was met: " + circle_);
}

bool Interpreter::StopAt(Stop reason) {
    if (stop_ != Stop::None)
        return false;
    stop_ = reason;
    if (reason != Stop::Limit)
        return false;
    constexpr std::size_t Told = 8;
    const std::size_t first = running_.size() > Told ? running_.size() - Told : 0;
    circle_ = first > 0 ? "... > " : "";
    for (std::size_t k = first; k < running_.size(); ++k)
        circle_.append(k == first ? "" : " > ").append(NameOfOwner(world_, *running_[k]));
    return false;
}

bool Interpreter::Spend(std::size_t characters) {
    work_ += characters;
    return work_ <= Limits::Work || StopAt(Stop::Limit);
}

bool Interpreter::Warn(const Source& source, std::string text, bool isOnce) {
    constexpr std::size_t Most = 50;
    std::vector<Warning>& warnings = result_.outcome.warnings;
    const bool isKnown = std::any_of(warnings.begin(), warnings.end(), [&](const Warning& other) {
        return other.source == source && other.text == text;
    });
    if (!isKnown && (warnings.size() < Most || source.book == nullptr))
        warnings.push_back({source, std::move(text), isOnce});
    return true;
}

bool Interpreter::WarnLacks(const Source& source, std::string_view what, const std::string& name) {
    const std::string text = "there is no " + std::string(what) + " \"" + name + "\"";
    NoteFault(text);
    return Warn(source, text);
}

/// Marks the line, or the condition, that is being traced.
void Interpreter::NoteFault(const std::string& text) {
    if (!options_.withTrace || result_.outcome.trace.empty())
        return;
    if (isAsking_) {
        fault_ = text;
        return;
    }
    result_.outcome.trace.back().result = TraceEntry::Faulty;
    result_.outcome.trace.back().note = text;
}

void Interpreter::Trace(const Source& source, TraceEntry::Result result, std::int32_t condition,
                        std::string note) {
    if (options_.withTrace)
        result_.outcome.trace.push_back(
            {source, static_cast<std::uint16_t>(running_.size()), result, condition, std::move(note)});
}

std::string Interpreter::PutIn(std::string_view text) {
    std::string result = PutVariablesIn(text, world_, state_);
    Spend(result.size());
    return result;
}

void Interpreter::SetVariable(Number variable, std::string_view text) {
    state_.SetText(CellOf(Kind::Variable, variable), text.substr(0, Limits::TextInVariable));
}

} // namespace zem::play
