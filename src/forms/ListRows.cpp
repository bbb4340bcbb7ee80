#include "forms/ListRows.h"

#include "qt/QtText.h"

#include <algorithm>

namespace zem {

int SelectedRow(const QAbstractItemView& list) {
    const QModelIndexList selected = list.selectionModel()->selectedIndexes();
    return selected.isEmpty() ? -1 : selected.constFirst().row();
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

std::string RowText(const QListWidget& list, int row) {
    return FromQt(list.item(row)->text());
}

} // namespace zem
