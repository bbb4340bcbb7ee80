#include "windows/frmQuickFind.h"

#include "forms/ColourRoles.h"
#include "forms/DialogSize.h"
#include "forms/ToolTip.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace zem {

namespace {

constexpr std::size_t MostRows = 100; // beyond that more words are sooner typed than rows read
constexpr int NumberRole = Qt::UserRole;
constexpr int WhyNotRole = Qt::UserRole + 1;
constexpr QSize StartSize(640, 420);

} // namespace

frmQuickFind::frmQuickFind(const QString& caption, const QString& prompt,
                           std::function<std::vector<int>(const QString&)> fitting,
                           std::function<Row(int)> row, QWidget* parent)
    : QDialog(parent),
      fitting_(std::move(fitting)),
      row_(std::move(row)),
      txtWords_(new QLineEdit(this)),
      lstFound_(new QTreeWidget(this)),
      lblFound_(new QLabel(this)) {
    setObjectName(QStringLiteral("frmQuickFind"));
    setWindowTitle(caption);
    txtWords_->setObjectName(QStringLiteral("txtWords"));
    txtWords_->setPlaceholderText(prompt);
    txtWords_->setAccessibleName(prompt);
    txtWords_->setClearButtonEnabled(true);
    txtWords_->installEventFilter(this);
    lstFound_->setObjectName(QStringLiteral("lstFound"));
    lstFound_->setAccessibleName(caption);
    lstFound_->setColumnCount(3);
    lstFound_->setHeaderHidden(true);
    lstFound_->setRootIsDecorated(false);
    lstFound_->setUniformRowHeights(true);
    lstFound_->setFocusPolicy(Qt::NoFocus); // The keys of the line lead through it.
    lstFound_->header()->setStretchLastSection(false);
    lstFound_->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    lstFound_->header()->setSectionResizeMode(1, QHeaderView::Stretch);
    lstFound_->header()->setSectionResizeMode(2, QHeaderView::ResizeToContents);
    lblFound_->setObjectName(QStringLiteral("lblFound"));
    lblFound_->setWordWrap(true);
    auto* column = new QVBoxLayout(this);
    column->addWidget(txtWords_);
    column->addWidget(lstFound_);
    column->addWidget(lblFound_);
    connect(txtWords_, &QLineEdit::textChanged, this, &frmQuickFind::ShowFitting);
    connect(lstFound_, &QTreeWidget::itemClicked, this, &frmQuickFind::Choose);
    resize(StartSize);
    RememberSize(*this);
    ShowFitting();
    txtWords_->setFocus();
}

/// The line keeps the focus; up and down lead through the list below it, Return chooses.
bool frmQuickFind::eventFilter(QObject* watched, QEvent* event) {
    if (watched != txtWords_ || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const int page =
        std::max(1, lstFound_->viewport()->height() / std::max(1, lstFound_->sizeHintForRow(0)) - 1);
    const std::pair<int, int> ways[] = {
        {Qt::Key_Down, 1}, {Qt::Key_Up, -1}, {Qt::Key_PageDown, page}, {Qt::Key_PageUp, -page}};
    for (const auto& [pressed, by] : ways)
        if (key.key() == pressed && lstFound_->topLevelItemCount() > 0) {
            const int now = lstFound_->indexOfTopLevelItem(lstFound_->currentItem());
            const int then = std::clamp(now + by, 0, lstFound_->topLevelItemCount() - 1);
            lstFound_->setCurrentItem(lstFound_->topLevelItem(then));
            return true;
        }
    if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
        Choose();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void frmQuickFind::ShowFitting() {
    const std::vector<int> found = fitting_(txtWords_->text());
    const QColor dim = ColourOf(ColourRole::SecondaryText, palette());
    QList<QTreeWidgetItem*> items;
    for (std::size_t k = 0; k < std::min(found.size(), MostRows); ++k) {
        const Row row = row_(found[k]);
        const QString where =
            row.whyNot.isEmpty() ? row.where : QStringLiteral("%1 – not now: %2").arg(row.where, row.whyNot);
        auto* item = new QTreeWidgetItem({row.title, where, row.keys});
        item->setData(0, NumberRole, found[k]);
        item->setData(0, WhyNotRole, row.whyNot);
        item->setToolTip(0, ToolTipOf(row.title));
        item->setToolTip(1, ToolTipOf(where));
        item->setForeground(1, dim);
        item->setForeground(2, dim);
        if (!row.whyNot.isEmpty())
            item->setForeground(0, dim);
        items.append(item);
    }
    lstFound_->clear();
    lstFound_->addTopLevelItems(items);
    if (!items.isEmpty())
        lstFound_->setCurrentItem(items.first());
    if (found.empty())
        lblFound_->setText(QStringLiteral("Nothing fits these words. Try others, or fewer of them."));
    else if (found.size() > MostRows)
        lblFound_->setText(QStringLiteral("The first %1 of %2").arg(MostRows).arg(found.size()));
    else
        lblFound_->setText(found.size() == 1 ? QStringLiteral("1 found")
                                             : QStringLiteral("%1 found").arg(found.size()));
}

void frmQuickFind::Choose() {
    const QTreeWidgetItem* item = lstFound_->currentItem();
    if (item == nullptr)
        return;
    const QString whyNot = item->data(0, WhyNotRole).toString();
    if (!whyNot.isEmpty()) {
        lblFound_->setText(QStringLiteral("%1 cannot be used now: %2.").arg(item->text(0), whyNot));
        return;
    }
    chosen_ = item->data(0, NumberRole).toInt();
    accept();
}

} // namespace zem
