#include "forms/ScriptPairList.h"

#include "forms/QtText.h"

#include <utility>

namespace zem {

int ScriptPairList::SelectedRow() const {
    const QModelIndexList selected = list_.selectionModel()->selectedIndexes();
    return selected.isEmpty() ? -1 : selected.constFirst().row();
}

void ScriptPairList::Show(int row) {
    const ScriptPair& pair = pairs_[static_cast<std::size_t>(row)];
    list_.item(row)->setText(ToQt(pair.Key));
    list_.item(row)->setToolTip(ToQt(pair.Script).toHtmlEscaped());
}

void ScriptPairList::Append(const ScriptPair& pair) {
    pairs_.push_back(pair);
    list_.addItem(QString());
    Show(Count() - 1);
    list_.setCurrentRow(Count() - 1);
}

void ScriptPairList::RemoveSelected() {
    const int row = SelectedRow();
    if (row < 0)
        return;
    pairs_.erase(pairs_.begin() + row);
    delete list_.takeItem(row);
    if (Count() > 0)
        list_.setCurrentRow(std::min(row, Count() - 1));
}

void ScriptPairList::MoveSelected(int by) {
    const int row = SelectedRow();
    const int target = row + by;
    if (row < 0 || target < 0 || target >= Count())
        return;
    std::swap(Edit(row), Edit(target));
    Show(row);
    Show(target);
    list_.setCurrentRow(target);
}

} // namespace zem
