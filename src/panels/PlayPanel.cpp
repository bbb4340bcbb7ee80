#include "panels/PlayPanel.h"

#include "forms/ColourRoles.h"
#include "forms/RunCommand.h"
#include "panels/CompiledGame.h"
#include "panels/PlayFromDialog.h"
#include "panels/TraceView.h"
#include "panels/TurnsView.h"
#include "panels/WatchView.h"
#include "play/JudgeRuns.h"
#include "play/Renames.h"
#include "player/InputLine.h"
#include "player/PlayControl.h"
#include "player/StoryPane.h"
#include "qt/QtText.h"
#include "script/ScriptEditing.h"

#include <QAction>
#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QResizeEvent>
#include <QShortcut>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace zem {

namespace {

constexpr int Gap = 8; // device-independent pixels

constexpr std::uint64_t SeedCount = 1'000'000; // short enough to be read in a file of runs

std::uint64_t NewSeed() {
    return static_cast<std::uint64_t>(QDateTime::currentMSecsSinceEpoch()) % SeedCount + 1;
}

/// The shape from which on the story and what is beside it stand side by side.
bool IsWide(const QSize& size) {
    return size.width() > size.height() && size.width() > 700;
}

} // namespace

PlayPanel::PlayPanel(CompiledGame& game, const EditorContext& context, QWidget* parent)
    : QDockWidget(tr("Play"), parent),
      game_(game),
      context_(context),
      story_(new StoryPane(this)),
      input_(new InputLine(this)),
      control_(new PlayControl(*story_, *input_, this)),
      splitter_(new QSplitter(Qt::Vertical, this)),
      tabs_(new QTabWidget(this)),
      watch_(new WatchView(this)),
      trace_(new TraceView(this)),
      turns_(new TurnsView(this)),
      status_(new QLabel(this)) {
    setObjectName(QStringLiteral("dckPlay"));
    auto* body = new QWidget(this);
    auto* layout = new QVBoxLayout(body);
    layout->setContentsMargins(Gap, Gap, Gap, Gap);
    layout->setSpacing(Gap);
    layout->addWidget(MakeButtons());
    status_->setObjectName(QStringLiteral("lblPlay"));
    status_->setTextFormat(Qt::PlainText);
    status_->setWordWrap(true);
    layout->addWidget(status_);
    splitter_->setChildrenCollapsible(false);
    MakeStory();
    tabs_->setObjectName(QStringLiteral("tabPlay"));
    tabs_->addTab(watch_, tr("&Watch"));
    tabs_->addTab(trace_, tr("Trace"));
    tabs_->addTab(turns_, tr("T&urns"));
    tabs_->setDocumentMode(true);
    tabs_->setFocusPolicy(Qt::NoFocus); // the bar with the tabs has the focus, and a name for each
    tabs_->tabBar()->setFocusPolicy(Qt::TabFocus);
    splitter_->addWidget(tabs_);
    splitter_->setStretchFactor(0, 3);
    splitter_->setStretchFactor(1, 2);
    layout->addWidget(splitter_, 1);
    setWidget(body);
    auto* toTrace = new QShortcut(QKeySequence(tr("Ctrl+Shift+T")), this);
    connect(toTrace, &QShortcut::activated, this, [this] {
        tabs_->setCurrentWidget(trace_);
        trace_->setFocus();
    });

    control_->SetShowsWarnings(true);
    connect(control_, &PlayControl::Played, this, &PlayPanel::NotePlayed);
    connect(control_, &PlayControl::Changed, this, &PlayPanel::Refresh);
    connect(control_, &PlayControl::Warned, this, &PlayPanel::ShowWarning);
    connect(control_, &PlayControl::Requested, this, &PlayPanel::Refuse);
    connect(story_, &StoryPane::SourceChosen, this, &PlayPanel::ShowSource);
    connect(trace_, &TraceView::SourceChosen, this, &PlayPanel::OpenSource);
    connect(turns_, &TurnsView::TurnChosen, this, &PlayPanel::GoToTurn);
    connect(turns_, &TurnsView::PlayAgainChosen, this, &PlayPanel::PlayAgain);
    connect(watch_, &WatchView::ValueSet, this, &PlayPanel::SetByHand);
    connect(tabs_, &QTabWidget::currentChanged, this, &PlayPanel::RefreshTab);
    connect(&game_, &CompiledGame::Changed, this, &PlayPanel::TakeOverChange);
    connect(&game_, &CompiledGame::Replaced, this, &PlayPanel::Stop);
    connect(this, &QDockWidget::visibilityChanged, this, &PlayPanel::TakeOverChange);
    Stop();
}

PlayPanel::~PlayPanel() = default;

void PlayPanel::AddButton(QToolBar& buttons, const char* name, const QString& caption,
                          const QKeySequence& key, void (PlayPanel::*handler)()) {
    auto* action = new QAction(caption, this);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(key);
    action->setIconText(caption);
    action->setToolTip(QStringLiteral("%1 (%2)").arg(caption, key.toString(QKeySequence::NativeText)));
    connect(action, &QAction::triggered, this,
            [this, handler] { RunCommand(context_.dialogs, this, [&] { (this->*handler)(); }); });
    addAction(action);
    buttons.addAction(action);
}

/// Those for which a narrow panel has no room are in a menu at their end.
QWidget* PlayPanel::MakeButtons() {
    auto* buttons = new QToolBar(this);
    buttons->setToolButtonStyle(Qt::ToolButtonTextOnly);
    AddButton(*buttons, "actPlayRestart", tr("Restart"), QKeySequence(tr("Ctrl+Shift+R")),
              &PlayPanel::Restart);
    AddButton(*buttons, "actPlayUndo", tr("Undo a turn"), QKeySequence(tr("Ctrl+Shift+U")), &PlayPanel::Undo);
    AddButton(*buttons, "actPlayLook", tr("Look again"), QKeySequence(Qt::Key_F9), &PlayPanel::LookAgain);
    AddButton(*buttons, "actPlayFrom", tr("Play from..."), QKeySequence(tr("Ctrl+Shift+G")),
              &PlayPanel::AskForRoom);
    AddButton(*buttons, "actPlayKeep", tr("Keep as a run..."), QKeySequence(tr("Ctrl+Shift+K")),
              &PlayPanel::Keep);
    return buttons;
}

void PlayPanel::MakeStory() {
    auto* page = new QWidget(this);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Gap);
    story_->setObjectName(QStringLiteral("story"));
    input_->setObjectName(QStringLiteral("input"));
    layout->addWidget(story_, 1);
    where_ = new QWidget(page);
    auto* whereLayout = new QHBoxLayout(where_);
    whereLayout->setContentsMargins(0, 0, 0, 0);
    whereText_ = new QLabel(where_);
    whereText_->setObjectName(QStringLiteral("lblPrinted"));
    whereText_->setTextFormat(Qt::PlainText);
    whereText_->setWordWrap(true);
    auto* open = new QPushButton(tr("O&pen it"), where_);
    open->setObjectName(QStringLiteral("butOpenPrinted"));
    connect(open, &QPushButton::clicked, this, [this] { OpenSource(shownSource_); });
    whereLayout->addWidget(whereText_, 1);
    whereLayout->addWidget(open);
    where_->hide();
    layout->addWidget(where_);
    auto* line = new QHBoxLayout;
    auto* prompt = new QLabel(QStringLiteral(">"), page);
    prompt->setBuddy(input_);
    line->addWidget(prompt);
    line->addWidget(input_, 1);
    layout->addLayout(line);
    splitter_->addWidget(page);
}

// ---- Beginning and ending

void PlayPanel::Play() {
    if (control_->Session() == nullptr)
        Begin(std::nullopt, NewSeed());
    input_->setFocus();
}

void PlayPanel::PlayFrom(const play::StartingPoint& point) {
    Begin(point, NewSeed());
    input_->setFocus();
}

void PlayPanel::Begin(const std::optional<play::StartingPoint>& point, std::uint64_t seed) {
    game_.ForgetLibraries();
    world_ = game_.Get();
    places_ = nullptr;
    traced_.clear();
    rooms_.clear();
    where_->hide();
    watch_->Show(nullptr);
    seed_ = seed;
    isFromBeginning_ = !point.has_value();
    auto session = std::make_unique<play::Session>(world_, seed);
    const QString reason = ToQt(session->WhyItCannotBegin());
    if (!point && !reason.isEmpty()) {
        Stop();
        story_->ShowNote(reason + QStringLiteral("\n") +
                         tr("To play from any room, select it and press Shift+F5."));
        return;
    }
    session->SetTrace(true);
    control_->Start(std::move(session), game_.Folder(),
                    [&point](play::Session& begun) { return point ? begun.BeginAt(*point) : begun.Begin(); });
    for (const std::string& problem : world_->Files().problems)
        story_->ShowWarning(ToQt(problem), {});
}

void PlayPanel::PlayRun(const play::RecordedRun& run, std::size_t steps) {
    Begin(std::nullopt, run.seed);
    if (control_->Session() == nullptr)
        return;
    std::size_t played = 0;
    while (played < std::min(steps, run.steps.size()) && control_->Play(run.steps[played].input))
        ++played;
    const QString name = QString::fromStdString(run.name);
    if (played < std::min(steps, run.steps.size()))
        story_->ShowNote(tr("The run \"%1\" goes no further: the game does not ask for \"%2\" here.")
                             .arg(name, QString::fromStdString(run.steps[played].input.written)));
    else if (played < run.steps.size())
        story_->ShowNote(tr("This is after line %1 of the run \"%2\".").arg(played).arg(name));
    else
        story_->ShowNote(tr("This is the end of the run \"%1\".").arg(name));
    Refresh();
    input_->setFocus();
}

play::RunResult PlayPanel::AsRun() {
    const QString title = tr("Keep as a run");
    if (control_->Session() == nullptr)
        throw CommandError(tr("Nothing is being played. F5 plays the game."), title);
    if (!isFromBeginning_)
        throw CommandError(tr("A run begins at the beginning of the game, and this game was begun in another "
                              "place. Restart plays from the beginning."),
                           title);
    const std::optional<std::vector<play::InputLine>> lines = control_->Entered();
    if (!lines)
        throw CommandError(tr("A run is made of what players type, and values were set by hand in this game. "
                              "Take these turns back first."),
                           title);
    return play::MakeRun(game_.Get(), {}, seed_, *lines);
}

void PlayPanel::Stop() {
    control_->Stop();
    world_ = nullptr;
    places_ = nullptr;
    traced_.clear();
    rooms_.clear();
    where_->hide();
    Refresh();
    story_->ShowNote(tr("F5 plays the game as it is now, whether it is saved or not."));
}

void PlayPanel::Restart() {
    Begin(std::nullopt, NewSeed());
    input_->setFocus();
}

void PlayPanel::Undo() {
    control_->Undo();
}

void PlayPanel::LookAgain() {
    control_->Type(QStringLiteral("look"));
}

void PlayPanel::AskForRoom() {
    const play::Session* session = control_->Session();
    AskWhereToPlay(session == nullptr ? QString() : ToQt(session->RoomName()));
}

void PlayPanel::AskWhereToPlay(const QString& room) {
    const std::shared_ptr<const play::World> world = game_.Get();
    PlayFromDialog dialog(
        *world, control_->Session(), room,
        [this](const std::string& name) { return LastTurnIn(name) < rooms_.size(); }, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    if (dialog.IsLastVisit())
        GoToTurn(LastTurnIn(dialog.Point().room));
    else
        PlayFrom(dialog.Point());
}

/// The last turn after which the player was in the room; rooms_.size() when there was none.
std::size_t PlayPanel::LastTurnIn(const std::string& room) const {
    const auto found = std::find(rooms_.rbegin(), rooms_.rend(), room);
    return found == rooms_.rend() ? rooms_.size() : static_cast<std::size_t>(rooms_.rend() - found) - 1;
}

// ---- After each turn

void PlayPanel::NotePlayed(const play::Outcome& outcome) {
    if (!outcome.trace.empty() || outcome.wasTurn)
        traced_ = outcome.trace;
}

std::string PlayPanel::RoomOfPlayer() const {
    const play::Session* session = control_->Session();
    return session == nullptr ? std::string() : session->RoomName();
}

void PlayPanel::Refresh() {
    emit Moved();
    const play::Session* session = control_->Session();
    for (QAction* action : actions())
        if (action->objectName() != QLatin1String("actPlayFrom") &&
            action->objectName() != QLatin1String("actPlayRestart"))
            action->setEnabled(session != nullptr);
    input_->setEnabled(session != nullptr);
    watch_->Show(session);
    if (session == nullptr) {
        status_->clear();
        turns_->Show({}, {});
        trace_->Show({});
        return;
    }
    rooms_.resize(session->StepCount() + 1);
    rooms_.back() = session->RoomName();
    const QString room = ToQt(session->RoomName());
    const auto turns = static_cast<int>(session->TurnCount());
    status_->setText((room.isEmpty() ? tr("In no room") : room) + QStringLiteral(", ") +
                     (turns == 1 ? tr("1 turn") : tr("%1 turns").arg(turns)));
    RefreshTab();
}

void PlayPanel::RefreshTab() {
    const play::Session* session = control_->Session();
    if (session == nullptr)
        return;
    if (tabs_->currentWidget() == turns_)
        turns_->Show(session->Played(), session->Undone());
    if (tabs_->currentWidget() != trace_)
        return;
    if (places_ == nullptr)
        places_ = std::make_shared<play::StoryPlaces>(world_);
    std::vector<play::TraceRow> rows = play::DescribeTrace(traced_, *places_, context_.scripts.Commands());
    if (rows.empty())
        rows.push_back({0, "No script has run.", play::TraceRow::Script, "", {}});
    trace_->Show(rows);
}

void PlayPanel::ShowWarning(const play::Warning& warning) {
    if (places_ == nullptr)
        places_ = std::make_shared<play::StoryPlaces>(world_);
    const QString where = ToQt(places_->Describe(warning.source));
    story_->ShowWarning((where.isEmpty() ? QString() : where + QStringLiteral(": ")) + ToQt(warning.text),
                        warning.source);
}

/// What the program for players does with files has no place here.
void PlayPanel::Refuse(play::Request request) {
    if (request == play::Request::Quit)
        story_->ShowNote(tr("The game was left. UNDO goes on with it."));
    else if (request == play::Request::Save || request == play::Request::Restore)
        story_->ShowNote(tr("Here the list of turns takes the place of saved games: any turn can be gone "
                            "back to."));
    else
        story_->ShowNote(tr("Transcripts are written by the program that plays games, Veldt."));
}

// ---- Changes of the game

/// The running game goes on in the game as it is now.
void PlayPanel::TakeOverChange() {
    play::Session* session = control_->Session();
    if (session == nullptr || !isVisible())
        return;
    const std::shared_ptr<const play::World> before = world_;
    const std::shared_ptr<const play::World> now = game_.Get();
    if (now == before)
        return;
    world_ = now;
    places_ = nullptr;
    const auto moved = [&now](const play::Source& source) { return play::SourceIn(*now, source); };
    story_->MapSources(moved);
    for (play::TraceEntry& entry : traced_)
        entry.source = moved(entry.source);
    std::erase_if(traced_, [](const play::TraceEntry& entry) { return entry.source.book == nullptr; });
    where_->hide();
    control_->Show(session->Reload(now, play::FindRenames(before->Game(), now->Game())));
    status_->setText(tr("%1. The game has changed; F9 looks again.").arg(status_->text()));
}

// ---- Turns

void PlayPanel::GoToTurn(std::size_t turn) {
    play::Session* session = control_->Session();
    if (session == nullptr)
        return;
    control_->CloseQuestion();
    while (session->StepCount() > turn && session->Undo()) {
    }
    while (session->StepCount() < turn && session->Needs() == play::Need::Line && session->CanRedo()) {
        const std::size_t count = session->StepCount();
        control_->Redo();
        if (session->StepCount() <= count)
            break; // the changed game does not understand the line any more
    }
    traced_.clear();
    story_->BeginTurn();
    story_->ShowNote(turn == 0 ? tr("Back at the beginning.") : tr("This is after turn %1.").arg(turn));
    Refresh();
    input_->setFocus();
}

void PlayPanel::PlayAgain(std::size_t turn) {
    play::Session* session = control_->Session();
    if (session == nullptr || turn == 0)
        return;
    GoToTurn(turn - 1);
    if (session->CanRedo())
        control_->Redo();
    Refresh();
}

void PlayPanel::SetByHand(play::Kind kind, const std::string& name, const std::string& value) {
    play::Session* session = control_->Session();
    if (session != nullptr && !session->SetByHand(kind, name, value))
        story_->ShowNote(session->Needs() == play::Need::Line
                             ? tr("\"%1\" is no value that this can have.").arg(ToQt(value))
                             : tr("Answer the question first."));
    Refresh();
}

// ---- Where something was printed

void PlayPanel::ShowSource(const play::Source& source) {
    if (places_ == nullptr)
        places_ = std::make_shared<play::StoryPlaces>(world_);
    const QString where = ToQt(places_->Describe(source));
    shownSource_ = source;
    whereText_->setText(tr("From %1").arg(where));
    where_->findChild<QPushButton*>()->setEnabled(places_->PlaceOf(source).has_value());
    where_->setVisible(!where.isEmpty());
}

void PlayPanel::OpenSource(const play::Source& source) {
    if (places_ == nullptr)
        places_ = std::make_shared<play::StoryPlaces>(world_);
    if (const std::optional<Place> place = places_->PlaceOf(source))
        emit PlaceChosen(*place);
}

// ---- Its shape

void PlayPanel::resizeEvent(QResizeEvent* event) {
    QDockWidget::resizeEvent(event);
    splitter_->setOrientation(IsWide(event->size()) ? Qt::Horizontal : Qt::Vertical);
}

} // namespace zem
