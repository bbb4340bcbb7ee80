#pragma once

#include "forms/ColourRoles.h"

#include <QIcon>
#include <QString>
#include <QTreeView>

#include <cstddef>
#include <memory>
#include <set>
#include <vector>

namespace zem {

/// One row of a list of places: a problem, a hit, a use.
struct ResultRow {
    QString group; // the room or list under which it stands
    QString what;  // what it is, in a word or two
    QString where; // the place within the group
    QString text;
    QIcon icon = {};
};

/// A list of places of the game, in groups that can be folded, for problems, hits and uses alike. It is a
/// state and no log: when other rows are set, what was selected, folded and scrolled to stays so as far as it
/// is still there. Return and a double-click choose a row.
class ResultList : public QTreeView {
    Q_OBJECT

public:
    explicit ResultList(QWidget* parent = nullptr);
    ~ResultList() override;

    /// Shows other rows, those of one group together, groups in the order of their first rows.
    void SetRows(std::vector<ResultRow> rows);

    /// Hides the rows that hold this text nowhere, in small or capital letters.
    void SetFilter(const QString& text);

    /// The number of the selected row among those that were set, from 0; -1 when none or a group is selected.
    int Selected() const;

    /// Selects a row, which must not be hidden by the filter, and scrolls to it.
    void Select(int row);

    /// Selects the next row, or the one before, as F8 does from anywhere; the first one after the last.
    /// Returns the selected row, -1 when there is none.
    int SelectNext(bool backwards);

    int RowCount() const;

signals:
    void Chosen(int row);
    void SelectedChanged(int row); // -1 for none

protected:
    void keyPressEvent(QKeyEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    class Model;

    void Show();
    std::set<QString> Folded() const;
    void Fold(const std::set<QString>& groups);
    int RowInPlaceOf(int before, const std::vector<ResultRow>& rows, const std::set<QString>& folded) const;

    std::unique_ptr<Model> model_;
    std::set<QString> foldedWithoutFilter_;
    bool isSetting_ = false;
};

} // namespace zem
