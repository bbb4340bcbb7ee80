#include "panels/TurnsView.h"

#include "forms/ColourRoles.h"
#include "qt/QtText.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace zem {

TurnsView::TurnsView(QWidget* parent)
    : QWidget(parent),
      list_(new QListWidget(this)),
      goTo_(new QPushButton(tr("&Go there"), this)),
      again_(new QPushButton(tr("Play it agai&n"), this)) {
    list_->setObjectName(QStringLiteral("lstTurns"));
    list_->setAccessibleName(tr("Turns"));
    list_->setUniformItemSizes(true);
    goTo_->setObjectName(QStringLiteral("butGoToTurn"));
    again_->setObjectName(QStringLiteral("butPlayAgain"));
    goTo_->setToolTip(tr("The game as it was after this turn"));
    again_->setToolTip(tr("Takes this turn back and plays it again, in the game as it is now"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(list_);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(goTo_);
    buttons->addWidget(again_);
    buttons->addStretch();
    layout->addLayout(buttons);
    const auto goTo = [this] {
        if (list_->currentRow() >= 0)
            emit TurnChosen(static_cast<std::size_t>(list_->currentRow()));
    };
    connect(list_, &QListWidget::itemActivated, this, goTo);
    connect(goTo_, &QPushButton::clicked, this, goTo);
    connect(again_, &QPushButton::clicked, this, [this] {
        if (list_->currentRow() > 0)
            emit PlayAgainChosen(static_cast<std::size_t>(list_->currentRow()));
    });
    connect(list_, &QListWidget::currentRowChanged, this, [this](int row) {
        goTo_->setEnabled(row >= 0);
        again_->setEnabled(row > 0);
    });
    goTo_->setEnabled(false);
    again_->setEnabled(false);
}

void TurnsView::Show(const std::vector<play::PlayedTurn>& played,
                     const std::vector<play::PlayedTurn>& undone) {
    list_->clear();
    const auto add = [this](const play::PlayedTurn& turn, bool isUndone) {
        QString text = list_->count() == 0
                           ? tr("the beginning")
                           : QStringLiteral("%1  %2").arg(list_->count()).arg(ToQt(turn.line));
        for (const std::string& answer : turn.answers)
            text += QStringLiteral(" / ") + ToQt(answer);
        auto* item = new QListWidgetItem(isUndone ? tr("%1 (taken back)").arg(text) : text, list_);
        if (isUndone)
            item->setForeground(ColourOf(ColourRole::SecondaryText, palette()));
    };
    for (const play::PlayedTurn& turn : played)
        add(turn, false);
    for (const play::PlayedTurn& turn : undone)
        add(turn, true);
    list_->setCurrentRow(static_cast<int>(played.size()) - 1);
}

} // namespace zem
