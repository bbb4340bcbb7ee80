#include "panels/ChangeList.h"

#include "forms/ToolTip.h"

#include <QAbstractTableModel>
#include <QHeaderView>
#include <QKeyEvent>

#include <algorithm>
#include <utility>

namespace zem {

namespace {

enum ChangeColumn { ChangeWhere, ChangeWhat, ChangeBefore, ChangeAfter, ChangeColumnCount };
constexpr int Widths[] = {220, 90, 280}; // pixels at 100 per cent; the last one takes the rest
constexpr qsizetype ShownBefore = 16;    // characters before those that change, at most

/// A line without its beginning, where that would push the words out of sight.
QString FromNear(const QString& line, qsizetype words) {
    if (words <= ShownBefore)
        return line;
    const qsizetype blank = line.indexOf(u' ', words - ShownBefore);
    const qsizetype begin = blank >= 0 && blank < words ? blank + 1 : words - ShownBefore;
    return QStringLiteral("...") + line.mid(begin);
}

} // namespace

/// The rows as they are, so that showing thousands of them takes no time.
class ChangeList::Model : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;

    void Fill(std::vector<ChangeRow> changes, bool done) {
        beginResetModel();
        rows = std::move(changes);
        isDone = done;
        endResetModel();
    }

    bool HasBox(int row) const { return !isDone && rows[static_cast<std::size_t>(row)].canBeMade; }

    void Tick(int row, bool isTicked) {
        if (!HasBox(row))
            return;
        rows[static_cast<std::size_t>(row)].isTicked = isTicked;
        const QModelIndex box = index(row, ChangeWhere);
        emit dataChanged(box, box, {Qt::CheckStateRole});
    }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(rows.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : ChangeColumnCount;
    }

    Qt::ItemFlags flags(const QModelIndex& index) const override {
        const Qt::ItemFlags flags = QAbstractTableModel::flags(index) | Qt::ItemNeverHasChildren;
        const bool hasBox = index.isValid() && index.column() == ChangeWhere && HasBox(index.row());
        return hasBox ? flags | Qt::ItemIsUserCheckable : flags;
    }

    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid())
            return {};
        const ChangeRow& row = rows[static_cast<std::size_t>(index.row())];
        switch (role) {
        case Qt::DisplayRole:
            return index.column() == ChangeBefore || (index.column() == ChangeAfter && row.canBeMade)
                       ? FromNear(TextOf(row, index.column()), row.changed)
                       : TextOf(row, index.column());
        case Qt::ToolTipRole: // nothing is cut without it
            return ToolTipOf(TextOf(row, index.column()));
        case Qt::CheckStateRole:
            if (index.column() != ChangeWhere || !HasBox(index.row()))
                return {};
            return QVariant(row.isTicked ? Qt::Checked : Qt::Unchecked);
        case Qt::AccessibleTextRole: // the whole row is read at once
            return index.column() == ChangeWhere
                       ? QStringLiteral("%1, %2: %3; %4").arg(row.where, row.what, row.before, row.after)
                       : TextOf(row, index.column());
        default:
            return {};
        }
    }

    bool setData(const QModelIndex& index, const QVariant& value, int role) override {
        if (role != Qt::CheckStateRole || !index.isValid() || !HasBox(index.row()))
            return false;
        Tick(index.row(), value.toInt() == Qt::Checked);
        return true;
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
            return {};
        switch (section) {
        case ChangeWhere:
            return QStringLiteral("Where");
        case ChangeWhat:
            return QStringLiteral("What");
        case ChangeBefore:
            return isDone ? QStringLiteral("Before") : QStringLiteral("Now");
        default:
            return isDone ? QStringLiteral("Now") : QStringLiteral("Then");
        }
    }

    std::vector<ChangeRow> rows;
    bool isDone = false;

private:
    static const QString& TextOf(const ChangeRow& row, int column) {
        return column == ChangeWhere    ? row.where
               : column == ChangeWhat   ? row.what
               : column == ChangeBefore ? row.before
                                        : row.after;
    }
};

ChangeList::ChangeList(QWidget* parent) : QTreeView(parent), model_(std::make_unique<Model>()) {
    setModel(model_.get());
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    for (int column = 0; column < ChangeAfter; ++column)
        header()->resizeSection(column, Widths[column]);
    connect(model_.get(), &QAbstractItemModel::dataChanged, this, &ChangeList::TicksChanged);
}

ChangeList::~ChangeList() = default;

void ChangeList::SetChanges(std::vector<ChangeRow> changes) {
    Show(std::move(changes), false);
}

void ChangeList::SetChanged(std::vector<ChangeRow> changes) {
    Show(std::move(changes), true);
}

void ChangeList::Show(std::vector<ChangeRow> changes, bool isDone) {
    model_->Fill(std::move(changes), isDone);
    if (RowCount() > 0)
        setCurrentIndex(model_->index(0, 0));
    emit TicksChanged();
    emit SelectedChanged();
}

int ChangeList::RowCount() const {
    return model_->rowCount();
}

bool ChangeList::IsTicked(std::size_t row) const {
    return row < model_->rows.size() && model_->HasBox(static_cast<int>(row)) && model_->rows[row].isTicked;
}

int ChangeList::TickedCount() const {
    return model_->isDone ? 0
                          : static_cast<int>(std::count_if(
                                model_->rows.begin(), model_->rows.end(),
                                [](const ChangeRow& row) { return row.canBeMade && row.isTicked; }));
}

int ChangeList::TickableCount() const {
    return model_->isDone
               ? 0
               : static_cast<int>(std::count_if(model_->rows.begin(), model_->rows.end(),
                                                [](const ChangeRow& row) { return row.canBeMade; }));
}

void ChangeList::TickAll(bool isTicked) {
    for (ChangeRow& row : model_->rows)
        row.isTicked = isTicked;
    viewport()->update();
    emit TicksChanged();
}

int ChangeList::Selected() const {
    return currentIndex().isValid() ? currentIndex().row() : -1;
}

void ChangeList::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Space || event->modifiers() != Qt::NoModifier || Selected() < 0) {
        QTreeView::keyPressEvent(event);
        return;
    }
    const QModelIndexList selected = selectionModel()->selectedRows();
    const bool areAllTicked = std::all_of(selected.begin(), selected.end(), [this](const QModelIndex& row) {
        return !model_->HasBox(row.row()) || IsTicked(static_cast<std::size_t>(row.row()));
    });
    for (const QModelIndex& row : selected)
        model_->Tick(row.row(), !areAllTicked);
}

void ChangeList::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeView::currentChanged(current, previous);
    emit SelectedChanged();
}

} // namespace zem
