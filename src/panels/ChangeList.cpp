#include "panels/ChangeList.h"

#include <QHeaderView>
#include <QSignalBlocker>

namespace zem {

namespace {

enum ChangeColumn { ChangeWhere, ChangeWhat, ChangeBefore, ChangeAfter };
constexpr int Widths[] = {220, 90, 280}; // pixels at 100 per cent; the last one takes the rest

} // namespace

ChangeList::ChangeList(QWidget* parent) : QTreeWidget(parent) {
    setHeaderLabels(
        {QStringLiteral("Where"), QStringLiteral("What"), QStringLiteral("Now"), QStringLiteral("Then")});
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    for (int column = 0; column < ChangeAfter; ++column)
        header()->resizeSection(column, Widths[column]);
    connect(this, &QTreeWidget::itemChanged, this, &ChangeList::TicksChanged);
}

void ChangeList::SetChanges(const std::vector<ChangeRow>& changes) {
    {
        const QSignalBlocker quiet(this);
        clear();
        QList<QTreeWidgetItem*> items;
        for (const ChangeRow& change : changes) {
            auto* item = new QTreeWidgetItem({change.where, change.what, change.before, change.after});
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
            item->setCheckState(ChangeWhere, change.isTicked ? Qt::Checked : Qt::Unchecked);
            for (const int column : {ChangeWhere, ChangeWhat, ChangeBefore, ChangeAfter})
                item->setToolTip(column, item->text(column));
            items.append(item);
        }
        addTopLevelItems(items);
        if (!items.isEmpty())
            setCurrentItem(items.front());
    }
    emit TicksChanged();
}

bool ChangeList::IsTicked(std::size_t row) const {
    const QTreeWidgetItem* item = topLevelItem(static_cast<int>(row));
    return item != nullptr && item->checkState(ChangeWhere) == Qt::Checked;
}

int ChangeList::TickedCount() const {
    int count = 0;
    for (int row = 0; row < topLevelItemCount(); ++row)
        count += IsTicked(static_cast<std::size_t>(row)) ? 1 : 0;
    return count;
}

} // namespace zem
