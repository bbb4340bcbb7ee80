#include "panels/TraceView.h"

#include "forms/ColourRoles.h"
#include "forms/ToolTip.h"
#include "qt/QtText.h"

#include <QEvent>
#include <QHeaderView>

namespace zem {

namespace {

enum TraceColumn { Line, Outcome };

/// Says in words what the colours and the line through a text say.
QString OutcomeOf(const play::TraceRow& row) {
    switch (row.what) {
    case play::TraceRow::True:
        return TraceView::tr("true");
    case play::TraceRow::False:
        return TraceView::tr("false");
    case play::TraceRow::NotRun:
        return TraceView::tr("not run");
    case play::TraceRow::Faulty:
        return ToQt(row.note);
    default:
        return {};
    }
}

} // namespace

TraceView::TraceView(QWidget* parent) : QTreeWidget(parent) {
    setObjectName(QStringLiteral("trcTurn"));
    setAccessibleName(tr("What ran in this turn"));
    setColumnCount(2);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setRootIsDecorated(true);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(Line, QHeaderView::Stretch);
    header()->setSectionResizeMode(Outcome, QHeaderView::ResizeToContents);
    connect(this, &QTreeWidget::itemActivated, this, [this](const QTreeWidgetItem* item) {
        const auto row = static_cast<std::size_t>(item->data(Line, Qt::UserRole).toInt());
        if (row < rows_.size() && rows_[row].source.book != nullptr)
            emit SourceChosen(rows_[row].source);
    });
}

void TraceView::Show(const std::vector<play::TraceRow>& rows) {
    rows_ = rows;
    Fill();
}

void TraceView::Fill() {
    clear();
    std::vector<QTreeWidgetItem*> path; // the last row of each level
    QList<QTreeWidgetItem*> roots;
    for (std::size_t k = 0; k < rows_.size(); ++k) {
        const auto level = std::min(static_cast<std::size_t>(std::max(rows_[k].level, 0)), path.size());
        auto* item = new QTreeWidgetItem;
        item->setData(Line, Qt::UserRole, static_cast<int>(k));
        Paint(*item, rows_[k]);
        path.resize(level);
        if (path.empty())
            roots.append(item);
        else
            path.back()->addChild(item);
        path.push_back(item);
    }
    addTopLevelItems(roots);
    expandAll();
    if (!roots.isEmpty())
        setCurrentItem(roots.first());
}

void TraceView::Paint(QTreeWidgetItem& item, const play::TraceRow& row) const {
    using play::TraceRow;
    item.setText(Line, ToQt(row.text));
    item.setText(Outcome, OutcomeOf(row));
    item.setToolTip(Line, ToolTipOf(item.text(Line)));
    item.setToolTip(Outcome, ToolTipOf(item.text(Outcome)));
    item.setTextAlignment(Outcome, Qt::AlignRight | Qt::AlignVCenter);
    QFont font = this->font();
    if (row.what == TraceRow::Script || row.what == TraceRow::NotRun)
        item.setForeground(Line, ColourOf(ColourRole::SecondaryText, palette()));
    if (row.what == TraceRow::NotRun) {
        font.setStrikeOut(true);
        item.setFont(Line, font);
        item.setForeground(Outcome, ColourOf(ColourRole::SecondaryText, palette()));
        return;
    }
    font.setBold(true);
    item.setFont(Outcome, font);
    if (row.what == TraceRow::Faulty) {
        item.setForeground(Line, ColourOf(ColourRole::Warning, palette()));
        item.setForeground(Outcome, ColourOf(ColourRole::Warning, palette()));
    } else if (row.what == TraceRow::True)
        item.setForeground(Outcome, ColourOf(ColourRole::True, palette()));
    else if (row.what == TraceRow::False)
        item.setForeground(Outcome, ColourOf(ColourRole::Error, palette()));
}

void TraceView::changeEvent(QEvent* event) {
    QTreeWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        Fill();
}

} // namespace zem
