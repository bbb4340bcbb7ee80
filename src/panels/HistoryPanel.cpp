#include "panels/HistoryPanel.h"

#include "forms/ListRows.h"
#include "forms/NameListView.h"
#include "qt/QtText.h"

#include <QScopedValueRollback>

namespace zem {

HistoryPanel::HistoryPanel(GameSession& session, QWidget* parent)
    : QDockWidget(QStringLiteral("History"), parent),
      session_(session),
      lstSteps_(new NameListView(this)) {
    setObjectName(QStringLiteral("dckHistory"));
    lstSteps_->setObjectName(QStringLiteral("lstSteps"));
    lstSteps_->setAccessibleName(QStringLiteral("Steps"));
    lstSteps_->setUniformItemSizes(true);
    lstSteps_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstSteps_->setModel(&steps_);
    lstSteps_->setMinimumWidth(
        fontMetrics().horizontalAdvance(QStringLiteral("edit game properties (undone)")));
    setWidget(lstSteps_);
    connect(lstSteps_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &HistoryPanel::GoToSelected);
    connect(&session, &GameSession::StepsChanged, this, &HistoryPanel::Refresh);
    connect(this, &QDockWidget::visibilityChanged, this, &HistoryPanel::Refresh);
    Refresh();
}

void HistoryPanel::Refresh() {
    const History& history = session_.Steps();
    const QScopedValueRollback<bool> refreshing(refreshing_, true);
    steps_.Reset(static_cast<int>(history.Count()) + 1, [&history](int row) {
        const auto step = static_cast<std::size_t>(row);
        if (step == 0)
            return QStringLiteral("(as opened)");
        const QString name = ToQt(history.Name(step));
        return step > history.Done() ? QStringLiteral("%1 (undone)").arg(name) : name;
    });
    lstSteps_->setCurrentIndex(steps_.index(static_cast<int>(history.Done())));
}

void HistoryPanel::GoToSelected() {
    const int row = SelectedRow(*lstSteps_);
    if (!refreshing_ && row >= 0 && static_cast<std::size_t>(row) != session_.Steps().Done())
        session_.GoToStep(static_cast<std::size_t>(row));
}

} // namespace zem
