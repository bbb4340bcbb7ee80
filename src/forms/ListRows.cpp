#include "forms/ListRows.h"

#include "qt/QtText.h"

#include <algorithm>

namespace zem {

int SelectedRow(const QAbstractItemView& list) {
    if (list.selectionModel()->isSelected(list.currentIndex()))
        return list.currentIndex().row();
    const QModelIndexList selected = list.selectionModel()->selectedIndexes();
    return selected.isEmpty() ? -1 : selected.constFirst().row();
}

std::vector<int> SelectedRows(const QAbstractItemView& list) {
    std::vector<int> rows;
    for (const QModelIndex& index : list.selectionModel()->selectedIndexes())
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

void SelectRows(QAbstractItemView& list, const std::vector<int>& rows) {
    if (rows.empty())
        return;
    const QAbstractItemModel& model = *list.model();
    list.setCurrentIndex(model.index(rows.front(), 0));
    QItemSelection selection;
    for (std::size_t k = 0; k < rows.size();) {
        std::size_t last = k; // rows that follow one another are one range
        while (last + 1 < rows.size() && rows[last + 1] == rows[last] + 1)
            ++last;
        selection.append(QItemSelectionRange(model.index(rows[k], 0), model.index(rows[last], 0)));
        k = last + 1;
    }
    list.selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    list.scrollTo(model.index(rows.front(), 0));
}

void AppendRow(QListWidget& list, const std::string& text) {
    list.addItem(ToQt(text));
    list.setCurrentRow(list.count() - 1);
}

int RemoveSelectedRow(QListWidget& list) {
    const int row = SelectedRow(list);
    if (row < 0)
        return row;
    delete list.takeItem(row);
    if (list.count() > 0)
        list.setCurrentRow(std::min(row, list.count() - 1));
    return row;
}

std::vector<int> RemoveSelectedRows(QListWidget& list) {
    std::vector<int> rows = SelectedRows(list);
    for (auto row = rows.rbegin(); row != rows.rend(); ++row)
        delete list.takeItem(*row);
    if (!rows.empty() && list.count() > 0)
        list.setCurrentRow(std::min(rows.front(), list.count() - 1));
    return rows;
}

std::string RowText(const QListWidget& list, int row) {
    return FromQt(list.item(row)->text());
}

} // namespace zem
