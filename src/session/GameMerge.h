#pragma once

#include "merge/MergeGames.h"

#include <QObject>
#include <QString>

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace zem {

class GameSession;

/// A merge of which conflicts are left to settle. The open game holds its result; what the author decides,
/// and edits meanwhile, are steps of the history like any others.
class GameMerge : public QObject {
    Q_OBJECT

public:
    /// @param session  outlives this object
    explicit GameMerge(GameSession& session, QObject* parent = nullptr);

    /// Merges, and makes the result the open game as one step. Throws KelError when the merged game has no
    /// room for what both have; the open game stays then.
    void Begin(merge::MergeVersions versions);

    /// Goes on with a merge whose result is the open game.
    /// @param file  in which its conflicts stand, until Finish; empty for none
    void GoOn(merge::MergeVersions versions, const QString& file);

    /// Whether there is one.
    bool IsOpen() const { return versions_.has_value(); }

    const std::vector<merge::Conflict>& Conflicts() const { return conflicts_; }

    /// What the author has decided about a conflict; nothing while the game holds ours by itself.
    std::optional<merge::Take> Decision(std::size_t conflict) const;
    std::size_t CountUndecided() const;

    /// Takes a version of a conflict into the open game, as one step. What the author has edited there
    /// meanwhile stays; false then.
    bool Decide(std::size_t conflict, merge::Take take);

    /// Forgets the merge. Its file of conflicts goes when the game is saved, and not before: until then it is
    /// the only place that keeps the other version.
    void Finish();

    /// What the conflict is, in plain words: "both changed it".
    static QString Describe(merge::ConflictKind kind);

signals:
    void Merged();  // two versions, or a merge goes on
    void Changed(); // the conflicts or what is decided
    void CouldNotRemove(const QString& file);

private:
    /// What was decided when a step was recorded.
    struct Step {
        std::string name;
        merge::Choices choices;
    };

    const merge::Choices& ChoicesNow() const;
    void Forget();
    void RemoveSettled();

    GameSession& session_;
    std::optional<merge::MergeVersions> versions_;
    std::vector<merge::Conflict> conflicts_;
    std::map<std::size_t, Step> steps_; // by their number in the history
    QString file_;
    QString settled_; // a file of conflicts that are all decided; empty for none
};

} // namespace zem
