#pragma once

#include "model/Table.h"
#include "qt/QtText.h"

#include <QAbstractListModel>
#include <QIcon>

#include <functional>
#include <utility>

namespace zem {

/// A list of names that are made only when they are shown, so that it is instant at any length.
class NameListModel : public QAbstractListModel {
    Q_OBJECT

public:
    using NameAt = std::function<QString(int row)>; // Rows count from 0.

    using QAbstractListModel::QAbstractListModel;

    /// Shows other names.
    void Reset(int count, NameAt nameAt) {
        beginResetModel();
        count_ = count;
        nameAt_ = std::move(nameAt);
        endResetModel();
    }

    /// Marks rows with icons, those that are none with nothing; until the next call.
    void ShowIcons(std::function<QIcon(int row)> iconAt) {
        iconAt_ = std::move(iconAt);
        if (count_ > 0)
            emit dataChanged(index(0), index(count_ - 1), {Qt::DecorationRole});
    }

    /// Shows the names of records as they are now.
    template <class Record>
    void ShowNames(const Table<Record>& records) {
        Reset(records.Count(), [records](int row) { return ToQt(records[row + 1].Name); });
    }

    /// Lets rows be dragged out of the list; RowsDraggedFrom tells where they are let go which they are.
    void AllowDrag() { isDragged_ = true; }
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : count_; }

    QVariant data(const QModelIndex& index, int role) const override {
        if (role == Qt::DecorationRole && index.isValid() && iconAt_) {
            const QIcon icon = iconAt_(index.row());
            return icon.isNull() ? QVariant() : QVariant(icon);
        }
        const bool isText = role == Qt::DisplayRole || role == Qt::EditRole;
        return isText && index.isValid() ? nameAt_(index.row()) : QVariant();
    }

private:
    int count_ = 0;
    NameAt nameAt_;
    std::function<QIcon(int row)> iconAt_;
    bool isDragged_ = false;
};

} // namespace zem
