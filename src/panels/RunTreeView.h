#pragma once

#include "play/JudgeRuns.h"

#include <QTreeWidget>

#include <optional>

namespace zem {

namespace play {
struct RunBranch;
}
class RunWatch;

/// The recorded runs as a tree of their common beginnings, each with its state. What was selected stays
/// selected when the runs or their states change.
class RunTreeView : public QTreeWidget {
    Q_OBJECT

public:
    explicit RunTreeView(QWidget* parent = nullptr);

    void Show(const RunWatch& watch);

    /// The selected run to its end, or one of those that begin with the selected branch, to the end of that.
    std::optional<play::RunPoint> Selected() const;

    /// Whether a run is selected and no common beginning.
    bool IsRunSelected() const;

    /// Selects the run of this name.
    void Select(const QString& name);

private:
    void AddBranch(const RunWatch& watch, const play::RunBranch& branch, QTreeWidgetItem& parent);
    void AddRun(const RunWatch& watch, std::size_t run, QTreeWidgetItem& parent);
};

} // namespace zem
