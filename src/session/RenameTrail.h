#pragma once

#include "game/Rename.h"
#include "kel/CommandLookup.h"
#include "model/GameModel.h"

#include <QObject>
#include <QThreadPool>

#include <cstddef>
#include <map>
#include <vector>

namespace zem {

class GameSession;

/// The names that changed since the game was saved last. What lies beside the game, its notes and its
/// recorded runs, calls things by the names of the saved game; it follows when the game is saved, and never
/// where the author throws the changes away. Undo and redo go the trail back and forth.
class RenameTrail : public QObject {
    Q_OBJECT

public:
    /// @param session   outlives this object
    /// @param commands  outlives this object
    RenameTrail(GameSession& session, const CommandLookup& commands, QObject* parent = nullptr);

    /// The step that was recorded last gave something other names.
    void Add(const std::vector<NameChange>& names);

    /// The game that was just opened comes from a copy of unsaved changes, which has these names.
    void Restore(const std::vector<NameChange>& names) { names_ = names; }

    /// From the names of the saved game to those of the open one, in order.
    const std::vector<NameChange>& Names() const { return names_; }

    /// Whether the recorded runs are still to follow.
    bool IsBusy() const { return following_ > 0; }

signals:
    /// What could not follow, in plain words.
    void CouldNotFollow(const QString& text);

    /// The recorded runs have the new names, as far as they could follow.
    void Followed();

private:
    struct Step {
        GameModel game; // after it
        std::vector<NameChange> names;
    };

    void GoAlong();
    void Push(const NameChange& name);
    void Follow();
    void FollowInRuns(std::vector<NameChange> names);
    void Forget();

    GameSession& session_;
    const CommandLookup& commands_;
    std::map<std::size_t, Step> steps_; // by their number in the history
    std::size_t done_ = 0;              // of the history, when it was looked at last
    std::vector<NameChange> names_;
    int following_ = 0; // saves whose names the recorded runs have not got yet
    QThreadPool runs_;  // last: it ends its work, which no other takes the place of
};

} // namespace zem
