#include "session/GameMerge.h"

#include "qt/QtText.h"
#include "session/GameSession.h"

#include <QFile>

#include <utility>

namespace zem {

using merge::Conflict;
using merge::ConflictKind;
using merge::Take;

namespace {

const char* NameOf(Take take) {
    return take == Take::Ours ? "mine" : take == Take::Theirs ? "theirs" : "both";
}

/// Puts the fields of a merged game into the open one, which keeps its file.
void Adopt(GameModel& game, GameModel merged) {
    merged.FileName = game.FileName;
    merged.Modified = game.Modified;
    merged.ErrorMessages = merged.ErrorMessages.Count() == 0 ? game.ErrorMessages : merged.ErrorMessages;
    game = std::move(merged);
}

} // namespace

GameMerge::GameMerge(GameSession& session, QObject* parent) : QObject(parent), session_(session) {
    connect(&session_, &GameSession::Replaced, this, [this] {
        settled_.clear();
        Forget();
    });
    connect(&session_, &GameSession::Saved, this, &GameMerge::RemoveSettled);
    connect(&session_, &GameSession::StepsChanged, this, [this] {
        if (IsOpen())
            emit Changed(); // undo takes decisions back
    });
}

void GameMerge::Begin(merge::MergeVersions versions) {
    merge::MergeResult result = merge::MergeGames(versions);
    session_.AsOneStep(QStringLiteral("merge"), [&] {
        session_.Change([&](GameModel& game) { Adopt(game, std::move(result.game)); });
    });
    GoOn(std::move(versions), {});
}

void GameMerge::GoOn(merge::MergeVersions versions, const QString& file) {
    conflicts_ = merge::MergeGames(versions).conflicts;
    versions_ = std::move(versions);
    steps_.clear();
    file_ = file;
    emit Changed();
    emit Merged();
}

/// A step that was undone and then replaced by another one has lost what was decided in it.
const merge::Choices& GameMerge::ChoicesNow() const {
    static const merge::Choices none;
    const History& history = session_.Steps();
    for (auto step = steps_.rbegin(); step != steps_.rend(); ++step)
        if (step->first <= history.Done() && history.Name(step->first) == step->second.name)
            return step->second.choices;
    return none;
}

std::optional<Take> GameMerge::Decision(std::size_t conflict) const {
    const merge::Choices& choices = ChoicesNow();
    const auto found = choices.find(conflicts_[conflict].id);
    return found == choices.end() ? std::nullopt : std::optional(found->second);
}

std::size_t GameMerge::CountUndecided() const {
    std::size_t count = 0;
    for (std::size_t k = 0; k < conflicts_.size(); ++k)
        count += Decision(k) ? 0U : 1U;
    return count;
}

/// What the decision changes in the merged game is merged into the open one, so that edits in other places
/// stay.
bool GameMerge::Decide(std::size_t conflict, Take take) {
    const Conflict& decided = conflicts_[conflict];
    merge::Choices choices = ChoicesNow();
    const GameModel before = merge::MergeGames(*versions_, choices).game;
    choices[decided.id] = take;
    const GameModel after = merge::MergeGames(*versions_, choices).game;
    merge::MergeResult merged = merge::MergeGames(before, session_.Game(), after);

    const QString name = QStringLiteral("take %1: %2").arg(QLatin1String(NameOf(take)), ToQt(decided.where));
    const bool isAllTaken = merged.conflicts.empty();
    steps_.erase(steps_.upper_bound(session_.Steps().Done()), steps_.end());
    session_.AsOneStep(
        name, [&] { session_.Change([&](GameModel& game) { Adopt(game, std::move(merged.game)); }); });
    // To take what the game holds already is a decision, too, though no step.
    const std::size_t done = session_.Steps().Done();
    steps_[done] = {session_.Steps().Name(done), std::move(choices)};
    emit Changed();
    return isAllTaken;
}

void GameMerge::Finish() {
    settled_ = file_;
    Forget();
}

/// A game that was saved under another name leaves the first one with its conflicts.
void GameMerge::RemoveSettled() {
    if (settled_.isEmpty() || settled_ != session_.FileName() + QLatin1String(".conflicts"))
        return;
    const QString file = std::exchange(settled_, QString());
    if (QFile::exists(file) && !QFile::remove(file))
        emit CouldNotRemove(file);
}

void GameMerge::Forget() {
    versions_.reset();
    conflicts_.clear();
    steps_.clear();
    file_.clear();
    emit Changed();
}

QString GameMerge::Describe(ConflictKind kind) {
    switch (kind) {
    case ConflictKind::Field:
        return QStringLiteral("both changed it");
    case ConflictKind::DeletedByOurs:
        return QStringLiteral("mine deleted it, theirs changed it");
    case ConflictKind::DeletedByTheirs:
        return QStringLiteral("theirs deleted it, mine changed it");
    case ConflictKind::Moved:
        return QStringLiteral("both moved it");
    case ConflictKind::Order:
        return QStringLiteral("both changed the order");
    }
    return {};
}

} // namespace zem
