#include "panels/ResultList.h"

#include "forms/ToolTip.h"

#include <QAbstractItemModel>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <map>
#include <set>
#include <tuple>
#include <utility>

namespace zem {

namespace {

enum ResultColumn { Where, What, Text, ColumnCount };
constexpr int WidthOfText = 320; // pixels at 100 per cent, until the author chooses

} // namespace

/// Two levels: groups, and the rows in them. The internal id of a row is the number of its group + 1.
class ResultList::Model : public QAbstractItemModel {
public:
    using QAbstractItemModel::QAbstractItemModel;

    struct Group {
        QString name;
        std::vector<int> rows;
    };

    void Fill(const QString& filter) {
        beginResetModel();
        groups.clear();
        std::map<QString, std::size_t> numbers; // of the groups
        for (int number = 0; number < static_cast<int>(rows.size()); ++number) {
            const ResultRow& row = rows[static_cast<std::size_t>(number)];
            const auto holds = [&filter](const QString& text) {
                return text.contains(filter, Qt::CaseInsensitive);
            };
            if (!filter.isEmpty() && !holds(row.group) && !holds(row.what) && !holds(row.where) &&
                !holds(row.text))
                continue;
            const auto [group, isNew] = numbers.try_emplace(row.group, groups.size());
            if (isNew)
                groups.push_back({row.group, {}});
            groups[group->second].rows.push_back(number);
        }
        endResetModel();
    }

    /// The number of a row; -1 for a group.
    int NumberOf(const QModelIndex& index) const {
        if (!index.isValid() || index.internalId() == 0)
            return -1;
        return groups[index.internalId() - 1].rows[static_cast<std::size_t>(index.row())];
    }

    QModelIndex IndexOf(int number) const {
        for (std::size_t group = 0; group < groups.size(); ++group) {
            const auto& inGroup = groups[group].rows;
            const auto found = std::lower_bound(inGroup.begin(), inGroup.end(), number);
            if (found != inGroup.end() && *found == number)
                return createIndex(static_cast<int>(found - inGroup.begin()), 0, quintptr{group + 1});
        }
        return {};
    }

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override {
        if (!hasIndex(row, column, parent))
            return {};
        return createIndex(row, column, parent.isValid() ? quintptr(parent.row()) + 1 : quintptr{0});
    }
    QModelIndex parent(const QModelIndex& child) const override {
        if (!child.isValid() || child.internalId() == 0)
            return {};
        return createIndex(static_cast<int>(child.internalId()) - 1, 0, quintptr{0});
    }
    int rowCount(const QModelIndex& parent = {}) const override {
        if (!parent.isValid())
            return static_cast<int>(groups.size());
        if (parent.internalId() != 0 || parent.column() != 0)
            return 0;
        return static_cast<int>(groups[static_cast<std::size_t>(parent.row())].rows.size());
    }
    int columnCount(const QModelIndex& /*parent*/ = {}) const override { return ColumnCount; }

    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid())
            return {};
        const int number = NumberOf(index);
        if (number < 0)
            return DataOfGroup(groups[static_cast<std::size_t>(index.row())], index.column(), role);
        const ResultRow& row = rows[static_cast<std::size_t>(number)];
        const QString& text = index.column() == Where  ? row.where
                              : index.column() == What ? row.what
                                                       : row.text;
        switch (role) {
        case Qt::DisplayRole:
            return text;
        case Qt::ToolTipRole: // nothing is cut without it
            return ToolTipOf(text);
        case Qt::DecorationRole:
            return index.column() == Where && !row.icon.isNull() ? QVariant(row.icon) : QVariant();
        case Qt::AccessibleTextRole: // the whole row is read at once
            return index.column() == Where
                       ? row.what + QStringLiteral(", ") + row.where + QStringLiteral(": ") + row.text
                       : text;
        default:
            return {};
        }
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
            return {};
        return section == Where  ? QStringLiteral("Where")
               : section == What ? QStringLiteral("What")
                                 : QStringLiteral("Text");
    }

    std::vector<ResultRow> rows;
    std::vector<Group> groups;
    QString filter;

private:
    static QVariant DataOfGroup(const Group& group, int column, int role) {
        if (column != 0)
            return {};
        if (role == Qt::DisplayRole)
            return QStringLiteral("%1 (%2)").arg(group.name).arg(group.rows.size());
        if (role != Qt::FontRole)
            return {};
        QFont font;
        font.setBold(true);
        return font;
    }
};

ResultList::ResultList(QWidget* parent) : QTreeView(parent), model_(std::make_unique<Model>()) {
    setModel(model_.get());
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setEditTriggers(NoEditTriggers);
    setExpandsOnDoubleClick(false);
    header()->setStretchLastSection(true);
    header()->resizeSection(Where, WidthOfText);
    connect(this, &QTreeView::doubleClicked, this, [this](const QModelIndex& index) {
        if (model_->NumberOf(index) >= 0)
            emit Chosen(model_->NumberOf(index));
    });
}

ResultList::~ResultList() = default;

void ResultList::SetRows(std::vector<ResultRow> rows) {
    const std::set<QString> folded = Folded();
    const int before = Selected();
    const int scrolled = verticalScrollBar()->value();
    {
        const QScopedValueRollback<bool> setting(isSetting_, true);
        const int selected = RowInPlaceOf(before, rows, folded);
        model_->rows = std::move(rows);
        Show();
        Fold(folded);
        if (before >= 0)
            setCurrentIndex(model_->IndexOf(selected));
        verticalScrollBar()->setValue(scrolled);
    }
    emit SelectedChanged(Selected());
}

/// Which of the new rows is selected where `before` was: the same, else the next one of those behind it, else
/// the one before, none of them folded away; else the row at its place.
int ResultList::RowInPlaceOf(int before, const std::vector<ResultRow>& rows,
                             const std::set<QString>& folded) const {
    if (before < 0)
        return before;
    const auto key = [](const ResultRow& row) { return std::tie(row.group, row.where, row.what, row.text); };
    std::map<std::tuple<QString, QString, QString, QString>, int> numbers;
    for (int number = static_cast<int>(rows.size()) - 1; number >= 0; --number)
        numbers[key(rows[static_cast<std::size_t>(number)])] = number;
    const int count = RowCount();
    for (int way = 0; way < count; ++way) {
        const int behind = before + way;
        const ResultRow& old =
            model_->rows[static_cast<std::size_t>(behind < count ? behind : count - way - 1)];
        const auto found = numbers.find(key(old));
        if (found != numbers.end() && (way == 0 || !folded.contains(old.group)))
            return found->second;
    }
    return std::min(before, static_cast<int>(rows.size()) - 1);
}

void ResultList::SetFilter(const QString& text) {
    const int before = Selected();
    if (model_->filter.isEmpty())
        foldedWithoutFilter_ = Folded();
    {
        const QScopedValueRollback<bool> setting(isSetting_, true);
        model_->filter = text;
        Show();
        if (text.isEmpty())
            Fold(foldedWithoutFilter_);
        setCurrentIndex(model_->IndexOf(before));
    }
    emit SelectedChanged(Selected());
}

void ResultList::Show() {
    model_->Fill(model_->filter);
    for (int group = 0; group < model_->rowCount(); ++group) {
        setFirstColumnSpanned(group, {}, true);
        expand(model_->index(group, 0));
    }
}

std::set<QString> ResultList::Folded() const {
    std::set<QString> folded;
    for (int group = 0; group < model_->rowCount(); ++group)
        if (!isExpanded(model_->index(group, 0)))
            folded.insert(model_->groups[static_cast<std::size_t>(group)].name);
    return folded;
}

void ResultList::Fold(const std::set<QString>& groups) {
    for (int group = 0; group < model_->rowCount(); ++group)
        if (groups.contains(model_->groups[static_cast<std::size_t>(group)].name))
            collapse(model_->index(group, 0));
}

int ResultList::Selected() const {
    return model_->NumberOf(currentIndex());
}

void ResultList::Select(int row) {
    const QModelIndex index = model_->IndexOf(row);
    expand(index.parent());
    setCurrentIndex(index);
    scrollTo(index);
}

int ResultList::SelectNext(bool backwards) {
    std::vector<int> shown;
    for (const Model::Group& group : model_->groups)
        shown.insert(shown.end(), group.rows.begin(), group.rows.end());
    if (shown.empty())
        return -1;
    const auto at = std::find(shown.begin(), shown.end(), Selected());
    auto next = shown.begin();
    if (at == shown.end())
        next = backwards ? shown.end() - 1 : shown.begin();
    else if (backwards)
        next = at == shown.begin() ? shown.end() - 1 : at - 1;
    else
        next = at + 1 == shown.end() ? shown.begin() : at + 1;
    Select(*next);
    return *next;
}

int ResultList::RowCount() const {
    return static_cast<int>(model_->rows.size());
}

void ResultList::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && event->modifiers().testFlag(Qt::ControlModifier) == false && Selected() >= 0)
        emit Chosen(Selected());
    else
        QTreeView::keyPressEvent(event);
}

/// Up and Down go from row to row; Left goes to the group, which can be folded there.
QModelIndex ResultList::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const QModelIndex next = QTreeView::moveCursor(action, modifiers);
    if ((action != MoveUp && action != MoveDown) || !next.isValid() || next.parent().isValid() ||
        !isExpanded(next))
        return next;
    const QModelIndex beyond = action == MoveUp ? indexAbove(next) : indexBelow(next);
    return beyond.isValid() ? beyond : currentIndex();
}

void ResultList::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeView::currentChanged(current, previous);
    if (!isSetting_)
        emit SelectedChanged(model_->NumberOf(current));
}

} // namespace zem
