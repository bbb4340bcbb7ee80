#include "player/PlayControl.h"

#include "play/FileNames.h"
#include "player/InputLine.h"
#include "player/StoryFiles.h"
#include "player/StoryPane.h"
#include "player/StorySound.h"
#include "qt/QtText.h"

#include <QEvent>
#include <QKeyEvent>

#include <algorithm>
#include <utility>

namespace zem {

namespace {

constexpr int Second = 1000; // milliseconds

QString PromptFor(play::Need need) {
    switch (need) {
    case play::Need::Line:
        return PlayControl::tr("What do you do?");
    case play::Need::Text:
        return PlayControl::tr("Type an answer");
    case play::Need::YesNo:
        return PlayControl::tr("Yes or no?");
    case play::Need::Choice:
        return PlayControl::tr("Type a number, or click a choice");
    case play::Need::Key:
        return PlayControl::tr("Press any key");
    default:
        return PlayControl::tr("The game has ended: undo, restore or restart it");
    }
}

bool IsQuestion(play::Need need) {
    return need != play::Need::Line && need != play::Need::Nothing;
}

play::Outcome WithoutPauses(play::Outcome outcome) {
    std::erase_if(outcome.pieces, [](const play::Piece& piece) { return piece.kind == play::Piece::Pause; });
    return outcome;
}

} // namespace

PlayControl::PlayControl(StoryPane& story, InputLine& input, QObject* parent)
    : QObject(parent),
      story_(story),
      input_(input),
      sound_(std::make_unique<StorySound>()) {
    pause_.setSingleShot(true);
    clock_.setInterval(Second);
    connect(&pause_, &QTimer::timeout, this, &PlayControl::ShowQueue);
    connect(&clock_, &QTimer::timeout, this, &PlayControl::Tick);
    connect(&input_, &InputLine::Entered, this, &PlayControl::Enter);
    connect(&story_, &StoryPane::ChoiceChosen, this, [this](int number) { Enter(QString::number(number)); });
    input_.installEventFilter(this);
    story_.installEventFilter(this);
}

PlayControl::~PlayControl() = default;

void PlayControl::Start(std::unique_ptr<play::Session> session, const QString& folder,
                        const std::function<play::Outcome(play::Session&)>& begin) {
    session_ = std::move(session);
    folder_ = folder;
    queue_.clear();
    warnings_.clear();
    pause_.stop();
    sound_->Silence();
    story_.ClearPage();
    transcript_.clear();
    input_.ForgetHistory();
    entered_.clear();
    takenBack_.clear();
    saved_.reset();
    Show(begin(*session_));
    clock_.start();
}

void PlayControl::Stop() {
    clock_.stop();
    pause_.stop();
    queue_.clear();
    warnings_.clear();
    sound_->Silence();
    session_ = nullptr;
    story_.ClearPage();
    transcript_.clear();
    input_.ForgetHistory();
    input_.clear();
    input_.setPlaceholderText(QString());
}

void PlayControl::Type(const QString& line) {
    if (session_ && !IsWaiting() && session_->Needs() == play::Need::Line)
        Enter(line);
}

void PlayControl::Undo() {
    if (!session_ || !session_->CanUndo())
        return;
    queue_.clear();
    pause_.stop();
    Enter(QStringLiteral("undo"));
}

void PlayControl::Redo() {
    if (!session_ || !session_->CanRedo())
        return;
    const QString line = ToQt(session_->Undone().front().line);
    story_.EndChoices();
    story_.BeginTurn();
    story_.ShowInput(line);
    transcript_ += QStringLiteral("\n> ") + line + u'\n';
    ForgetTakenBack();
    play::Outcome outcome = session_->Redo();
    for (; !takenBack_.empty() && takenBack_.back().steps <= session_->StepCount(); takenBack_.pop_back())
        entered_.push_back(takenBack_.back());
    Show(WithoutPauses(std::move(outcome)));
}

void PlayControl::CloseQuestion() {
    if (!session_)
        return;
    pause_.stop();
    ShowQueue();
    if (IsQuestion(session_->Needs()))
        session_->Undo();
    story_.EndChoices();
    AskForInput();
}

void PlayControl::Restart() {
    if (!session_)
        return;
    queue_.clear();
    pause_.stop();
    Show(session_->Restart());
}

void PlayControl::Enter(const QString& line) {
    if (!session_ || IsWaiting())
        return;
    story_.EndChoices();
    const play::Need need = session_->Needs();
    story_.BeginTurn();
    if (need != play::Need::Key) {
        story_.ShowInput(line);
        transcript_ += QStringLiteral("\n> ") + line + u'\n';
    }
    play::InputLine entered;
    entered.text = FromQtForPlayer(line);
    entered.kind = IsQuestion(need) ? play::InputLine::Answer : play::InputLine::Typed;
    ForgetTakenBack();
    const std::size_t steps = session_->StepCount();
    play::Outcome outcome = IsQuestion(need) ? session_->Answer(entered.text) : session_->Type(entered.text);
    Note(entered, outcome, steps);
    Show(std::move(outcome));
}

bool PlayControl::Play(const play::InputLine& line) {
    if (!session_)
        return false;
    pause_.stop();
    ShowQueue();
    const play::Need need = session_->Needs();
    const bool isAsked = line.kind == play::InputLine::Answer    ? IsQuestion(need)
                         : line.kind == play::InputLine::Seconds ? need != play::Need::Nothing
                                                                 : !IsQuestion(need);
    if (!isAsked)
        return false;
    story_.EndChoices();
    story_.BeginTurn();
    if (line.kind != play::InputLine::Seconds && need != play::Need::Key) {
        story_.ShowInput(ToQt(line.text));
        transcript_ += QStringLiteral("\n> ") + ToQt(line.text) + u'\n';
    }
    ForgetTakenBack();
    const std::size_t steps = session_->StepCount();
    play::Outcome outcome = line.kind == play::InputLine::Answer    ? session_->Answer(line.text)
                            : line.kind == play::InputLine::Seconds ? session_->Pass(line.seconds)
                                                                    : session_->Type(line.text);
    if (outcome.isRefused)
        return false;
    const play::Request request = std::exchange(outcome.request, play::Request::None);
    Note(line, outcome, steps);
    if (request == play::Request::Save)
        saved_ = session_->Save();
    Show(WithoutPauses(std::move(outcome)));
    if (request == play::Request::Save)
        Show(session_->Saved(true));
    else if (request == play::Request::Restore)
        Show(saved_ ? session_->Restore(*saved_) : session_->NotRestored());
    return true;
}

/// Keeps what was entered, but for what changed nothing of the game.
/// @param stepsBefore  that could be taken back before it
void PlayControl::Note(const play::InputLine& line, const play::Outcome& outcome, std::size_t stepsBefore) {
    const std::size_t steps = session_->StepCount();
    const bool isEmptyLine =
        line.kind == play::InputLine::Typed && line.text.find_first_not_of(' ') == std::string::npos;
    if (steps < stepsBefore) { // UNDO
        ForgetTakenBack();
        return;
    }
    if (outcome.isRefused || isEmptyLine)
        return;
    if (line.kind != play::InputLine::Answer)
        turnBegin_ = entered_.size();
    entered_.push_back({line, steps});
    const bool isOpen = IsQuestion(session_->Needs());
    for (std::size_t k = turnBegin_; k < entered_.size(); ++k)
        entered_[k].steps = isOpen ? steps + 1 : steps;
    if (outcome.request != play::Request::None) // for whoever shows the game; nothing has happened in it
        entered_.resize(std::min(turnBegin_, entered_.size()));
    if (!session_->CanRedo() && !isOpen)
        takenBack_.clear();
}

/// Leaves out what was entered in turns that were taken back meanwhile.
void PlayControl::ForgetTakenBack() {
    const std::size_t steps = session_->StepCount() + (IsQuestion(session_->Needs()) ? 1 : 0);
    for (; !entered_.empty() && entered_.back().steps > steps; entered_.pop_back())
        takenBack_.push_back(entered_.back());
    turnBegin_ = std::min(turnBegin_, entered_.size());
}

std::optional<std::vector<play::InputLine>> PlayControl::Entered() {
    std::vector<play::InputLine> lines;
    if (!session_)
        return lines;
    ForgetTakenBack();
    std::size_t steps = 0;
    for (const EnteredLine& entered : entered_) {
        if (entered.steps > steps + 1)
            return std::nullopt;
        steps = entered.steps;
        const bool goesOn = entered.line.kind == play::InputLine::Seconds && !lines.empty() &&
                            lines.back().kind == play::InputLine::Seconds;
        if (goesOn)
            lines.back().seconds += entered.line.seconds;
        else
            lines.push_back(entered.line);
    }
    const bool isOpen = IsQuestion(session_->Needs());
    if (steps != session_->StepCount() + (isOpen && !lines.empty() ? 1 : 0))
        return std::nullopt;
    return lines;
}

void PlayControl::Show(play::Outcome outcome) {
    emit Played(outcome);
    queue_.insert(queue_.end(), std::make_move_iterator(outcome.pieces.begin()),
                  std::make_move_iterator(outcome.pieces.end()));
    warnings_.insert(warnings_.end(), outcome.warnings.begin(), outcome.warnings.end());
    request_ = outcome.request;
    if (!IsWaiting())
        ShowQueue();
    OfferWords();
    emit Changed();
}

/// Names of things that the player has not met would give them away.
void PlayControl::OfferWords() {
    QStringList words = {QStringLiteral("examine"), QStringLiteral("inventory"),
                         QStringLiteral("restore"), QStringLiteral("restart"),
                         QStringLiteral("speak"),   QStringLiteral("transcript")};
    for (const std::string& item : session_->ItemsHad())
        words.append(ToQt(item));
    for (const std::string& direction : session_->OpenDirections())
        words.append(ToQt(direction));
    input_.SetWords(words);
}

void PlayControl::ShowQueue() {
    while (!queue_.empty()) {
        const play::Piece piece = std::move(queue_.front());
        queue_.pop_front();
        if (piece.kind == play::Piece::Pause) {
            input_.setPlaceholderText(tr("..."));
            pause_.start(piece.seconds * Second);
            return;
        }
        ShowPiece(piece);
    }
    for (const play::Warning& warning : std::exchange(warnings_, {}))
        emit Warned(warning);
    AskForInput();
    if (request_ != play::Request::None)
        emit Requested(std::exchange(request_, play::Request::None));
}

void PlayControl::ShowPiece(const play::Piece& piece) {
    switch (piece.kind) {
    case play::Piece::Text:
        story_.Show(piece);
        transcript_ += ToQt(piece.text);
        break;
    case play::Piece::Clear:
        story_.ClearPage();
        break;
    case play::Piece::Silence:
        sound_->Silence();
        break;
    default:
        ShowFile(piece);
    }
}

/// Pictures and sounds. What cannot be shown is told to the author and not to the player.
void PlayControl::ShowFile(const play::Piece& piece) {
    const QString name = ToQt(piece.text);
    bool isShown = false;
    if (piece.kind == play::Piece::Picture) {
        const QImage picture = ReadStoryPicture(folder_, piece.text);
        isShown = !picture.isNull();
        if (isShown)
            story_.ShowPicture(picture, name);
    } else {
        const QString path = StoryFilePath(folder_, piece.text);
        isShown = !path.isEmpty() && play::IsSoundName(piece.text) &&
                  sound_->Play(path, piece.kind == play::Piece::Music);
    }
    if (isShown || !showsWarnings_)
        return;
    const char* kind = piece.kind == play::Piece::Picture ? "picture"
                       : piece.kind == play::Piece::Music ? "music"
                                                          : "sound";
    story_.ShowWarning(QStringLiteral("[%1: %2]").arg(QLatin1String(kind), name), piece.source);
}

void PlayControl::AskForInput() {
    const play::Need need = session_->Needs();
    input_.setPlaceholderText(PromptFor(need));
    input_.AllowEmpty(need == play::Need::Text);
}

/// Time counts only while the player sits before the prompt.
void PlayControl::Tick() {
    if (!session_ || IsWaiting() || session_->Needs() != play::Need::Line || !story_.isVisible())
        return;
    const std::size_t steps = session_->StepCount();
    play::Outcome outcome = session_->Pass(1);
    play::InputLine second;
    second.kind = play::InputLine::Seconds;
    second.seconds = 1;
    ForgetTakenBack();
    if (!entered_.empty() && entered_.back().line.kind == play::InputLine::Seconds &&
        steps == session_->StepCount() && !IsQuestion(session_->Needs()))
        ++entered_.back().line.seconds; // an evening before the prompt is one line
    else
        Note(second, outcome, steps);
    if (!outcome.pieces.empty() || !outcome.warnings.empty())
        Show(std::move(outcome));
}

/// Any key answers where the game waits for one, and ends a pause.
bool PlayControl::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !session_)
        return QObject::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool isLetterOrReturn = !key->text().isEmpty() &&
                                  !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) &&
                                  key->key() != Qt::Key_Tab && key->key() != Qt::Key_Backtab;
    if (!isLetterOrReturn)
        return QObject::eventFilter(watched, event);
    if (IsWaiting()) {
        pause_.stop();
        ShowQueue();
        return true;
    }
    if (session_->Needs() == play::Need::Key) {
        Enter(QString());
        return true;
    }
    if (watched == &story_ && key->key() != Qt::Key_Space && key->text().at(0).isPrint()) {
        input_.setFocus(); // typing goes on where it belongs
        input_.insert(key->text());
        return true;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace zem
