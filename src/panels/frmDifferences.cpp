#include "panels/frmDifferences.h"

#include "forms/DialogSize.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace zem {

namespace {

constexpr QSize SizeOfDifferences(920, 520);

} // namespace

frmDifferences::frmDifferences(const QString& what, std::function<ComparedGames()> read, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frmDifferences"));
    setWindowTitle(QStringLiteral("Differences"));
    auto* column = new QVBoxLayout(this);
    auto* label = new QLabel(what, this);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    column->addWidget(label);
    auto* view = new DifferenceView(this);
    column->addWidget(view, 1);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->button(QDialogButtonBox::Close)->setObjectName(QStringLiteral("butClose"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    column->addWidget(buttons);
    resize(SizeOfDifferences);
    view->Compare(std::move(read));
    RememberSize(*this);
}

} // namespace zem
