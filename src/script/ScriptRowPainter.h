#pragma once

#include "kel/ScriptRows.h"

#include <QAbstractListModel>
#include <QStyledItemDelegate>

#include <functional>

namespace zem {

/// The rows of a script as a list. A screen reader reads each with its depth.
class ScriptRowModel : public QAbstractListModel {
    Q_OBJECT

public:
    /// @param tip  gives the tool tip of a row
    ScriptRowModel(const std::vector<ScriptRow>& rows, std::function<QString(const ScriptRow&)> tip,
                   QObject* parent);

    /// The rows were changed by `change`.
    void Reset(const std::function<void()>& change);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    const std::vector<ScriptRow>& rows_;
    std::function<QString(const ScriptRow&)> tip_;
};

/// Paints the rows with their colours, broken between words where they are longer than the list is wide.
class ScriptRowPainter : public QStyledItemDelegate {
    Q_OBJECT

public:
    /// @param rows  those of the model; outlive this object
    ScriptRowPainter(const std::vector<ScriptRow>& rows, QObject* parent);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    const std::vector<ScriptRow>& rows_;
};

} // namespace zem
