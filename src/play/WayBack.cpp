#include "play/InputLog.h"
#include "play/SaveFile.h"
#include "play/Session.h"
#include "play/Texts.h"

#include <utility>

/// The way back to earlier turns: over what they wrote into the state, or, in a game that has changed since,
/// by playing the log of input again.
namespace zem::play {

void Session::AddStep(const State::Mark& before) {
    undone_.clear();
    secondsAt_ = 0;
    steps_.push_back(
        {static_cast<std::uint32_t>(before.writes), before.texts, static_cast<std::uint32_t>(log_.Size())});
}

bool Session::Undo() {
    choices_.clear();
    if (pending_) {
        if (log_.IsEmpty())
            return false;
        pending_.reset();
        need_ = Need::Line;
        return true;
    }
    if (log_.Size() <= startLog_)
        return false;
    const bool isFirst = steps_.empty(); // only time has passed since the beginning
    if (!isFirst)
        KeepUndone(steps_.back().log);
    secondsAt_ = 0;
    if (steps_.size() <= replayed_ && (!isFirst || isStartReplayed_))
        Replay(isFirst ? startLog_ : steps_.back().log);
    else if (isFirst) {
        state_.GoBackTo(startMark_);
        log_.Truncate(startLog_);
    } else {
        const Step step = steps_.back();
        steps_.pop_back();
        state_.GoBackTo({step.writes, step.texts});
        log_.Truncate(step.log);
    }
    isUnsaved_ = true;
    need_ = state_[Ending] == Playing ? Need::Line : Need::Nothing;
    return true;
}

std::string Session::PackReference(const Reference& reference) const {
    const Names& names = world_->GetNames();
    switch (reference.kind) {
    case Reference::Thing:
        return "t" + names.Name(Kind::Thing, reference.number);
    case Reference::Item:
        return "i" + names.Name(Kind::Item, reference.number);
    case Reference::Room:
        return "r" + names.Name(Kind::Room, reference.number);
    default:
        return "-";
    }
}

Reference Session::UnpackReference(const std::string& packed) const {
    const std::string_view name = std::string_view(packed).substr(1);
    const char letter = packed.front();
    const Kind kind = letter == 't' ? Kind::Thing : letter == 'i' ? Kind::Item : Kind::Room;
    const Number number = world_->GetNames().Find(kind, name);
    if (letter == '-' || number == None)
        return {};
    return {letter == 't' ? Reference::Thing : letter == 'i' ? Reference::Item : Reference::Room, number};
}

std::string Session::Pack(const Input& input, bool beginsAgain) const {
    std::vector<std::string> fields;
    switch (input.kind) {
    case Input::Begin:
    case Input::BeginAt:
        fields = {std::string(1, BeginEntry)};
        break;
    case Input::Line:
        fields = {(input.choice ? ChoiceEntry : beginsAgain ? RestartLineEntry : LineEntry) + input.line};
        if (input.choice) {
            fields.push_back(input.choice->phrase);
            fields.push_back(PackReference(input.choice->meant));
        }
        break;
    case Input::Seconds:
        fields = {SecondsEntry + std::to_string(input.seconds)};
        break;
    case Input::Restart:
        fields = {std::string(1, RestartEntry)};
        break;
    case Input::LookAt: // no turn
        break;
    }
    fields.insert(fields.end(), input.answers.begin(), input.answers.end());
    return PackEntry(fields);
}

Input Session::Unpack(const std::vector<std::string>& fields) const {
    Input input;
    std::size_t answers = 1;
    switch (fields[0].front()) {
    case BeginEntry:
        input.kind = point_.room.empty() ? Input::Begin : Input::BeginAt;
        input.room = world_->GetNames().Find(Kind::Room, point_.room);
        break;
    case SecondsEntry:
        input.kind = Input::Seconds;
        input.seconds = LeadingInteger(fields[0].substr(1));
        break;
    case RestartEntry:
        input.kind = Input::Restart;
        break;
    case ChoiceEntry:
        input.choice = {fields[1], UnpackReference(fields[2])};
        answers = 3;
        [[fallthrough]];
    default:
        input.kind = Input::Line;
        input.line = fields[0].substr(1);
    }
    input.answers.assign(fields.begin() + static_cast<std::ptrdiff_t>(answers), fields.end());
    return input;
}

void Session::Replay(std::size_t end) {
    const std::string old = std::exchange(log_, {}).From(0);
    const std::deque<Step> oldSteps = std::exchange(steps_, {});
    NewState();
    std::string_view rest = std::string_view(old).substr(0, end);
    while (!rest.empty()) {
        const bool isStep =
            steps_.size() < oldSteps.size() && oldSteps[steps_.size()].log == end - rest.size();
        const State::Mark before = state_.Here();
        const auto at = static_cast<std::uint32_t>(log_.Size());
        const std::string_view entry = rest;
        ReplayEntry(TakeEntry(rest));
        log_.Add(entry.substr(0, entry.size() - rest.size()));
        state_.Tidy(before);
        if (isStep)
            steps_.push_back({static_cast<std::uint32_t>(before.writes), before.texts, at});
        if (at == 0)
            NoteStart();
    }
    replayed_ = 0;
}

void Session::ReplayEntry(const std::vector<std::string>& fields) {
    const char kind = fields[0].front();
    if (kind == RestoreEntry) {
        std::vector<std::string> lost;
        ReadSave(fields[1], *world_, state_, lost);
        return;
    }
    if (kind == HandEntry) {
        PutValue(static_cast<Kind>(fields[0][1]), fields[1], fields[2]);
        return;
    }
    const Input input = Unpack(fields);
    const State::Mark before = state_.Here();
    if (input.kind == Input::BeginAt)
        ApplyPoint(point_);
    const TurnResult result = Interpreter(*world_, state_, input, {}).Run();
    if (!result.isDone) // the changed game asks something that was not asked then
        state_.GoBackTo(before);
}

std::size_t Session::BytesForUndo() const {
    const std::size_t bytes =
        state_.Here().writes * State::BytesPerWrite + steps_.size() * sizeof(Step) + log_.Size();
    return steps_.empty() ? 0 : bytes / steps_.size();
}

} // namespace zem::play
