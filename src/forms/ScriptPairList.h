#pragma once

#include "model/GameModel.h"

#include <QListWidget>

#include <vector>

namespace zem {

/// A list of texts with a script behind each, moved and removed together: choices of a menu, player commands,
/// objects that can be used or given.
class ScriptPairList {
public:
    /// No pair is selected.
    /// @param list  shows the keys; outlives this object
    /// @param pairs  a range of them
    template <class Range>
    ScriptPairList(QListWidget& list, const Range& pairs) : list_(list) {
        for (const ScriptPair& pair : pairs)
            Append(pair);
        list.setCurrentRow(-1);
    }

    const std::vector<ScriptPair>& Pairs() const { return pairs_; }
    int Count() const { return static_cast<int>(pairs_.size()); }

    /// Write access to the pairs themselves; what the list shows stays as it is.
    std::vector<ScriptPair>& EditPairs() { return pairs_; }

    /// The selected row, from 0; -1 for none.
    int SelectedRow() const;

    /// Write access; Show must follow when the key is changed.
    ScriptPair& Edit(int row) { return pairs_[static_cast<std::size_t>(row)]; }
    void Show(int row);

    /// Adds a pair at the end and selects it.
    void Append(const ScriptPair& pair);

    /// Removes the selected pairs; the one that takes their place, or the last, is selected.
    void RemoveSelected();

    /// Swaps the selected pair with its neighbour and keeps it selected; nothing at the end of the list.
    void MoveSelected(int by);

private:
    QListWidget& list_;
    std::vector<ScriptPair> pairs_;
};

} // namespace zem
