#include "forms/RowDrag.h"

#include "forms/ListRows.h"
#include "forms/NameListModel.h"

#include <QCoreApplication>
#include <QDropEvent>
#include <QListWidget>
#include <QMimeData>
#include <QTimer>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace zem {

namespace {

constexpr const char* RowsFormat = "application/x-zem-rows";

/// Names the list among all of this and other programs.
QByteArray IdOf(const NameListModel& list) {
    return QByteArray::number(QCoreApplication::applicationPid()) + ':' +
           QByteArray::number(static_cast<qulonglong>(reinterpret_cast<std::uintptr_t>(&list)));
}

class RowDrop : public QObject {
public:
    RowDrop(QListWidget& list, std::function<void(const std::vector<int>&, int)> move)
        : QObject(&list),
          list_(list),
          move_(std::move(move)) {}

    /// The view would put the rows there by itself, and the lines that they show would stay.
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::Drop)
            return false;
        auto& drop = static_cast<QDropEvent&>(*event);
        drop.setDropAction(Qt::CopyAction); // after a move the view would take its rows away
        drop.accept();
        // When the drag is over: it still holds the view.
        QTimer::singleShot(
            0, &list_,
            [this, rows = SelectedRows(list_), to = RowAt(drop.position().toPoint())] { move_(rows, to); });
        return true;
    }

private:
    int RowAt(QPoint at) const {
        const QModelIndex index = list_.indexAt(at);
        if (!index.isValid())
            return list_.count();
        return index.row() + (at.y() > list_.visualRect(index).center().y() ? 1 : 0);
    }

    QListWidget& list_;
    std::function<void(const std::vector<int>&, int)> move_;
};

} // namespace

Qt::ItemFlags NameListModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QAbstractListModel::flags(index);
    return isDragged_ && index.isValid() ? flags | Qt::ItemIsDragEnabled : flags;
}

QStringList NameListModel::mimeTypes() const {
    return {QLatin1String(RowsFormat)};
}

QMimeData* NameListModel::mimeData(const QModelIndexList& indexes) const {
    QByteArray bytes = IdOf(*this);
    for (const QModelIndex& index : indexes)
        bytes += ' ' + QByteArray::number(index.row());
    auto* data = new QMimeData;
    data->setData(QLatin1String(RowsFormat), bytes);
    return data;
}

std::vector<int> RowsDraggedFrom(const NameListModel& list, const QMimeData& data) {
    const QList<QByteArray> parts = data.data(QLatin1String(RowsFormat)).split(' ');
    std::vector<int> rows;
    if (parts.constFirst() != IdOf(list))
        return rows;
    for (qsizetype k = 1; k < parts.size(); ++k)
        if (const int row = parts[k].toInt(); row >= 0 && row < list.rowCount())
            rows.push_back(row);
    std::sort(rows.begin(), rows.end());
    return rows;
}

void MoveRowsByDrag(QListWidget& list, std::function<void(const std::vector<int>& rows, int to)> move) {
    list.setDragDropMode(QAbstractItemView::InternalMove);                   // takes no rows but its own
    list.viewport()->installEventFilter(new RowDrop(list, std::move(move))); // the list owns it
}

} // namespace zem
