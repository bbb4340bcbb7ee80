#include "play/Session.h"

#include "base/LineText.h"
#include "play/Coverage.h"
#include "play/InputLog.h"
#include "play/Limits.h"
#include "play/SaveFile.h"

#include <algorithm>
#include <utility>

namespace zem::play {

namespace {

/// A day; longer waits have no player.
constexpr std::int64_t MostSeconds = 86'400;

} // namespace

Session::Session(std::shared_ptr<const World> world, std::uint64_t seed)
    : world_(std::move(world)),
      state_(world_->NamesOfGame(), world_->Start(), world_->ThingOrder()),
      seed_(seed) {
    NewState();
}

void Session::NewState() {
    state_ = State(world_->NamesOfGame(), world_->Start(), world_->ThingOrder());
    state_.Set(Chance, static_cast<std::int64_t>(seed_));
}

std::string Session::WhyItCannotBegin() const {
    if (world_->FindRoom(world_->StartRoom()) != nullptr)
        return {};
    const std::string& name = world_->Game().StartRoom;
    return name.empty() ? "The game cannot begin: it has no start room."
                        : "The game cannot begin: its start room, " + name + ", does not exist.";
}

Outcome Session::Begin() {
    NewState();
    steps_.clear();
    log_ = {};
    undone_.clear();
    secondsAt_ = 0;
    replayed_ = 0;
    pending_.reset();
    choices_.clear();
    lastLine_.clear();
    point_ = {};
    return Play(Input());
}

Outcome Session::BeginAt(const StartingPoint& point) {
    const Number room = world_->GetNames().Find(Kind::Room, point.room);
    if (room == None || world_->FindRoom(room) == nullptr)
        return Refuse();
    Begin();
    NewState();
    pending_.reset();
    log_ = {};
    point_ = point;
    Input input;
    input.kind = Input::BeginAt;
    input.room = room;
    return Play(std::move(input));
}

void Session::ApplyPoint(const StartingPoint& point) {
    for (const std::string& item : point.items)
        PutValue(Kind::Item, item, "had");
    for (const std::string& item : point.itemsNotHad)
        PutValue(Kind::Item, item, "not had");
    for (const std::string& flag : point.flags)
        PutValue(Kind::Flag, flag, "on");
    for (const auto& [name, value] : point.variables)
        PutValue(Kind::Variable, name, value);
}

Outcome Session::Type(std::string_view typed) {
    if (pending_)
        return Refuse();
    const std::string line(typed.substr(0, Limits::Line));
    const std::string folded = Fold(line);
    if (state_[Ending] != Playing || need_ == Need::Nothing) {
        constexpr std::string_view Allowed[] = {"undo", "restore", "load", "restart"};
        if (std::find(std::begin(Allowed), std::end(Allowed), folded) == std::end(Allowed))
            return Refuse();
    }
    if (folded.empty()) {
        Outcome nothing;
        nothing.need = need_;
        return nothing;
    }
    std::string_view rest = folded;
    const std::string_view first = TakeWord(rest);
    if (first == "oops")
        return TypeOops(std::string_view(line).substr(FoldWithPlaces(line).origin[3] + std::size_t{1}));
    if (folded == "again" || folded == "g")
        return TypeAgain();
    lastLine_ = line;
    Input input;
    input.kind = Input::Line;
    input.line = line;
    if (!choices_.empty()) {
        std::size_t work = 0;
        if (const auto meant = Recogniser(*world_, state_, work).AnswerAmong(line, choices_)) {
            input.line = ambiguousLine_;
            input.choice = {ambiguousPhrase_, *meant};
        }
    }
    return Play(std::move(input));
}

Outcome Session::TypeOops(std::string_view words) {
    std::size_t work = 0;
    const Sentence last(lastLine_);
    const std::optional<TextRange> unknown = Recogniser(*world_, state_, work).FirstUnknownWord(last);
    if (!unknown || Fold(words).empty())
        return Say(Message::BadOops);
    std::string line = lastLine_;
    line.replace(unknown->begin, unknown->Size(), Trim(words));
    return Type(line);
}

Outcome Session::TypeAgain() {
    for (auto step = steps_.rbegin(); step != steps_.rend(); ++step) {
        const std::vector<std::string> fields = log_.EntryAt(step->log);
        if (fields[0].front() != LineEntry && fields[0].front() != ChoiceEntry)
            continue;
        Input input = Unpack(fields);
        input.answers.clear();
        return Play(std::move(input));
    }
    return Say(Message::BadCommand);
}

Outcome Session::Answer(std::string_view answer) {
    if (!pending_)
        return Refuse();
    Input input = *std::move(pending_);
    pending_.reset();
    input.answers.emplace_back(answer.substr(0, Limits::Line));
    return Play(std::move(input));
}

Outcome Session::Pass(std::int64_t seconds) {
    Outcome nothing;
    nothing.need = need_;
    if (pending_ || state_[Ending] != Playing || need_ != Need::Line || seconds < 1)
        return nothing;
    Input input;
    input.kind = Input::Seconds;
    input.seconds = std::min(seconds, MostSeconds);
    return Play(std::move(input));
}

Outcome Session::Restart() {
    pending_.reset();
    Input input;
    input.kind = Input::Restart;
    return Play(std::move(input));
}

Outcome Session::Play(Input input) {
    if (input.answers.empty()) {
        shownPieces_ = 0;
        shownLength_ = 0;
        shownWarnings_ = 0;
        countedHits_ = 0;
    }
    const State::Mark before = state_.Here();
    if (input.kind == Input::BeginAt)
        ApplyPoint(point_);
    const TurnOptions options{withTrace_, isUnsaved_, coverage_ != nullptr};
    TurnResult result = Interpreter(*world_, state_, input, options).Run();
    KeepNew(result.outcome);
    CountNew(result.hits);
    need_ = result.outcome.need;
    if (!result.isDone) {
        state_.GoBackTo(before);
        pending_ = std::move(input);
        return std::move(result.outcome);
    }
    state_.Tidy(before);
    if (result.outcome.request == Request::Quit)
        need_ = result.outcome.need = Need::Nothing;
    if (input.kind == Input::Line) {
        NoteLine(input.line, result.notUnderstood);
        if (result.verb == Verb::Undo) {
            Undo();
            result.outcome.need = need_;
            return std::move(result.outcome);
        }
    }
    if (result.isStep) {
        AddStep(before);
        isUnsaved_ = true;
    }
    const bool isStart = log_.IsEmpty();
    if (result.isStep || input.kind == Input::Seconds || isStart)
        AddToLog(input, before, result.isStep && !result.outcome.wasTurn);
    if (isStart)
        NoteStart();
    return std::move(result.outcome);
}

void Session::CountNew(const std::vector<Hit>& hits) {
    if (coverage_ == nullptr || hits.size() < countedHits_)
        return;
    coverage_->Add(std::span(hits).subspan(countedHits_));
    countedHits_ = hits.size();
}

/// Whether nothing has happened but that time went by.
bool Session::HasOnlyWaited(const State::Mark& before) const {
    bool hasOnlyWaited = true;
    state_.ForEachWriteSince(before,
                             [&](Cell cell, std::int64_t) { hasOnlyWaited = hasOnlyWaited && cell == Now; });
    return hasOnlyWaited;
}

/// A clock that ticks while nothing happens must not make the log and the journal grow: such seconds are
/// added to those before them.
void Session::AddToLog(const Input& input, const State::Mark& before, bool beginsAgain) {
    const bool isTime = input.kind == Input::Seconds && input.answers.empty();
    if (!isTime || secondsAt_ == 0 || !HasOnlyWaited(before) || seconds_ + input.seconds > MostSeconds) {
        secondsAt_ = isTime ? log_.Size() : 0;
        seconds_ = input.seconds;
        log_.Add(Pack(input, beginsAgain));
        return;
    }
    seconds_ += input.seconds;
    Input all = input;
    all.seconds = seconds_;
    log_.Truncate(secondsAt_);
    log_.Add(Pack(all, false));
    const bool isTurnKept = steps_.size() > replayed_;
    state_.Tidy(isTurnKept ? State::Mark{steps_.back().writes, steps_.back().texts} : startMark_);
}

void Session::NoteStart() {
    startLog_ = log_.Size();
    startMark_ = state_.Here();
    isStartReplayed_ = false;
}

void Session::NoteLine(const std::string& line, const Meaning& meaning) {
    choices_ = meaning.choices;
    ambiguousPhrase_ = meaning.phrase;
    ambiguousLine_ = line;
}

void Session::KeepNew(Outcome& outcome) {
    std::vector<Piece>& pieces = outcome.pieces;
    const std::size_t count = pieces.size();
    const std::size_t length = pieces.empty() ? 0 : pieces.back().text.size();
    if (shownPieces_ > 0 && shownPieces_ <= count) {
        // The last piece that was shown may have grown since.
        Piece& last = pieces[shownPieces_ - 1];
        const bool hasGrown = last.kind == Piece::Text && last.text.size() > shownLength_;
        if (hasGrown)
            last.text.erase(0, shownLength_);
        pieces.erase(pieces.begin(),
                     pieces.begin() + static_cast<std::ptrdiff_t>(shownPieces_ - (hasGrown ? 1 : 0)));
    }
    shownPieces_ = count;
    shownLength_ = length;
    std::vector<Warning>& warnings = outcome.warnings;
    const std::size_t warned = warnings.size();
    warnings.erase(warnings.begin(),
                   warnings.begin() + static_cast<std::ptrdiff_t>(std::min(shownWarnings_, warned)));
    shownWarnings_ = warned;
    std::erase_if(warnings, [&](const Warning& warning) {
        if (!warning.isOnce)
            return false;
        const bool isKnown = std::find(told_.begin(), told_.end(), warning.source) != told_.end();
        if (!isKnown)
            told_.push_back(warning.source);
        return isKnown;
    });
}

Outcome Session::Say(Message message) {
    Printer printer(*world_, state_);
    printer.Begin({});
    std::size_t at = 0;
    while (printer.Print(world_->TextOf(message), at)) {
    }
    printer.NewLine();
    Outcome outcome;
    outcome.pieces = std::move(printer.Pieces());
    outcome.need = need_;
    return outcome;
}

Outcome Session::Refuse() const {
    Outcome outcome;
    outcome.isRefused = true;
    outcome.need = need_;
    return outcome;
}

std::string Session::Save() const {
    return WriteSave(*world_, state_);
}

Outcome Session::Saved(bool isSaved) {
    isUnsaved_ = isUnsaved_ && !isSaved;
    return Say(isSaved ? Message::Saved : Message::BadSave);
}

bool Session::RestoreState(std::string_view bytes, std::vector<std::string>& lost) {
    const State::Mark before = state_.Here();
    if (!ReadSave(bytes, *world_, state_, lost))
        return false;
    state_.Tidy(before);
    AddStep(before);
    log_.Add(PackEntry({std::string(1, RestoreEntry), std::string(bytes)}));
    return true;
}

Outcome Session::Restore(std::string_view bytes) {
    std::vector<std::string> lost;
    if (!RestoreState(bytes, lost))
        return Say(Message::BadRestore);
    pending_.reset();
    choices_.clear();
    isUnsaved_ = false;
    need_ = state_[Ending] == Playing ? Need::Line : Need::Nothing;
    Outcome outcome = Say(Message::Restored);
    for (const std::string& name : lost)
        outcome.warnings.push_back({{}, "the saved game names the " + name + ", which the game has not"});
    return outcome;
}

Outcome Session::NotRestored() {
    return Say(Message::BadRestore);
}

} // namespace zem::play
