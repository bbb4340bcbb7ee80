#pragma once

#include "merge/RecordMatching.h"
#include "merge/RecordTree.h"
#include "model/Place.h"

#include <string>
#include <vector>

/// What an author sees changed between two versions of a game.
namespace zem::merge {

enum class DifferenceKind {
    Added,
    Removed,
    Changed,  // a field, the name included
    Moved,    // to another room
    Reordered // behind another entry of its list
};

struct Difference {
    DifferenceKind kind = DifferenceKind::Changed;
    int before = -1; // record of the tree of the first version; -1 for none
    int after = -1;  // of the second
    // Of a change. Either text may be empty. Scripts are shown with their internal procedures.
    TreeField field;
    std::string from;
    std::string to;
};

/// The differences of two versions, room by room in the order of the second one, each field once. Internal
/// procedures that no script calls, and the numbers of the others, are no difference.
class GameDiff {
public:
    GameDiff(const GameModel& before, const GameModel& after);

    const std::vector<Difference>& Differences() const { return differences_; }
    const RecordTree& Before() const { return before_; }
    const RecordTree& After() const { return after_; }

    /// Where the difference is, in words: "object lamp in Hall, look". As the second version has it, or the
    /// first where the record is gone.
    std::string Where(const Difference& difference) const;

    /// The same in few words where the record is told already that stands in a list of the game itself.
    std::string WhereInGroup(const Difference& difference) const;

    /// The record of a list of the game in which the difference is, in words, or "game properties".
    std::string Group(const Difference& difference) const;

    /// Whether a record of the second version that stands in an added one came from elsewhere.
    bool IsMovedIn(int after) const { return matching_.toA[static_cast<std::size_t>(after)] >= 0; }
    bool IsMovedOut(int before) const { return matching_.toB[static_cast<std::size_t>(before)] >= 0; }

    /// What a reordered entry now stands behind: the name of an entry, empty for the first place.
    std::string Behind(const Difference& difference) const;

private:
    void Compare(int before, int after);
    void CompareFields(int before, int after);
    void CompareEntries(int before, int after);
    std::vector<char> KeptInOrder(int before, int after) const;
    const RecordTree& TreeOf(const Difference& difference) const {
        return difference.after >= 0 ? after_ : before_;
    }

    RecordTree before_;
    RecordTree after_;
    Matching matching_;
    std::vector<Difference> differences_;
};

} // namespace zem::merge
