#include "panels/frmNamesOfGame.h"

#include "forms/DialogSize.h"
#include "qt/QtText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace zem {

frmNamesOfGame::frmNamesOfGame(const std::vector<std::pair<std::string, std::size_t>>& names, QWidget* parent)
    : QDialog(parent),
      lstNames_(new QListWidget(this)) {
    setObjectName(QStringLiteral("frmNamesOfGame"));
    setWindowTitle(QStringLiteral("Names of this game"));
    auto* about = new QLabel(
        QStringLiteral(
            "These words have a capital in the middle of sentences and occur three times or more. The "
            "ticked ones are right from now on, in this game."),
        this);
    about->setWordWrap(true);
    auto* label = new QLabel(QStringLiteral("&Names:"), this);
    label->setBuddy(lstNames_);
    lstNames_->setObjectName(QStringLiteral("lstNamesOfGame"));
    lstNames_->setAccessibleName(QStringLiteral("Names"));
    for (const auto& [name, count] : names) {
        names_.push_back(name);
        auto* item = new QListWidgetItem(QStringLiteral("%1  (%L2)").arg(ToQt(name)).arg(count), lstNames_);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Checked);
    }
    lstNames_->setCurrentRow(0);
    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("butOK"));
    ok->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("Cancel"), this);
    cancel->setObjectName(QStringLiteral("butCancel"));
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* column = new QVBoxLayout(this);
    column->addWidget(about);
    column->addWidget(label);
    column->addWidget(lstNames_, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    column->addLayout(buttons);
    resize(420, 420);
    RememberSize(*this);
}

std::vector<std::string> frmNamesOfGame::Ticked() const {
    std::vector<std::string> ticked;
    for (int row = 0; row < lstNames_->count(); ++row)
        if (lstNames_->item(row)->checkState() == Qt::Checked)
            ticked.push_back(names_[static_cast<std::size_t>(row)]);
    return ticked;
}

} // namespace zem
