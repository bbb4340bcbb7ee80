#include "forms/ScriptPairList.h"

#include "forms/ListRows.h"
#include "forms/ToolTip.h"
#include "qt/QtText.h"

#include <utility>

namespace zem {

int ScriptPairList::SelectedRow() const {
    return zem::SelectedRow(list_);
}

void ScriptPairList::Show(int row) {
    const ScriptPair& pair = pairs_[static_cast<std::size_t>(row)];
    list_.item(row)->setText(ToQt(pair.Key));
    list_.item(row)->setToolTip(ToolTipOf(ToQt(pair.Script)));
}

void ScriptPairList::Append(const ScriptPair& pair) {
    pairs_.push_back(pair);
    list_.addItem(QString());
    Show(Count() - 1);
    list_.setCurrentRow(Count() - 1);
}

void ScriptPairList::RemoveSelected() {
    EraseRows(pairs_, RemoveSelectedRows(list_));
}

void ScriptPairList::MoveSelected(int by) {
    const int row = SelectedRow();
    const int target = row + by;
    if (row < 0 || target < 0 || target >= Count())
        return;
    std::swap(Edit(row), Edit(target));
    Show(row);
    Show(target);
    SelectRows(list_, {target}); // and no others, although Ctrl is down
}

} // namespace zem
