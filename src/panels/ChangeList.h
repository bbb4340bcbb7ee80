#pragma once

#include <QString>
#include <QTreeView>

#include <cstddef>
#include <memory>
#include <vector>

namespace zem {

/// One change that is about to be made, or was.
struct ChangeRow {
    QString where;
    QString what; // "reference", "mention"
    QString before;
    QString after;
    bool isTicked = true;
    bool canBeMade = true; // otherwise it has no box, and `after` says why
    qsizetype changed = 0; // where in both lines the words begin that differ, so that they are in sight
};

/// What a rename or a replace would change: each place with its line before and after, and a tick. Space
/// ticks all selected rows or none of them; what is not ticked stays as it is.
class ChangeList : public QTreeView {
    Q_OBJECT

public:
    explicit ChangeList(QWidget* parent = nullptr);
    ~ChangeList() override;

    /// Shows other changes; all ticks are theirs.
    void SetChanges(std::vector<ChangeRow> changes);

    /// Shows what was changed: there is nothing to tick any more.
    void SetChanged(std::vector<ChangeRow> changes);

    int RowCount() const;
    bool IsTicked(std::size_t row) const;
    int TickedCount() const;

    /// How many rows have a box.
    int TickableCount() const;

    void TickAll(bool isTicked);

    /// The row with the focus, from 0; -1 for none.
    int Selected() const;

signals:
    void TicksChanged();
    void SelectedChanged();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    class Model;

    void Show(std::vector<ChangeRow> changes, bool isDone);

    std::unique_ptr<Model> model_;
};

} // namespace zem
