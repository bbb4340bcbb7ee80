#pragma once

#include <QString>
#include <QTreeWidget>

#include <vector>

namespace zem {

/// One change that is about to be made.
struct ChangeRow {
    QString where;
    QString what; // "reference", "mention"
    QString before;
    QString after;
    bool isTicked = true;
};

/// What a rename or a replace would change: each place with its line before and after, and a tick. Space
/// ticks; what is not ticked stays as it is.
class ChangeList : public QTreeWidget {
    Q_OBJECT

public:
    explicit ChangeList(QWidget* parent = nullptr);

    /// Shows other changes; all ticks are theirs.
    void SetChanges(const std::vector<ChangeRow>& changes);

    bool IsTicked(std::size_t row) const;
    int TickedCount() const;

signals:
    void TicksChanged();
};

} // namespace zem
