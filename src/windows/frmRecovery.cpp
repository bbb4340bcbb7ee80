#include "windows/frmRecovery.h"

#include "forms/DialogSize.h"
#include "forms/ListRows.h"
#include "forms/RunCommand.h"
#include "ui_frmRecovery.h"

#include <QHeaderView>

namespace zem {

namespace {

constexpr int FileColumn = 1;

QString StateOfFile(const RecoveryCopy& copy) {
    if (copy.game.FileName.empty())
        return QStringLiteral("The game was never saved");
    const QString path = PathToQt(copy.game.FileName);
    if (!FileStamp::Of(path).Exists())
        return QStringLiteral("Is not there any more");
    return copy.stamp.IsOutdated(path) ? QStringLiteral("Has been changed since the copy was begun")
                                       : QStringLiteral("Is without these changes");
}

} // namespace

frmRecovery::frmRecovery(std::vector<RecoveryCopy>& copies, Dialogs& dialogs, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmRecovery>()),
      copies_(copies),
      dialogs_(dialogs) {
    ui_->setupUi(this);
    Fill();
    OnClick(ui_->butDiscard, this, dialogs, [this] { butDiscard_Click(); });
    connect(ui_->butRestore, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->butKeep, &QPushButton::clicked, this, &QDialog::reject);
    connect(ui_->lstCopies, &QTreeWidget::itemDoubleClicked, this, &QDialog::accept);
    ui_->lstCopies->setFocus();
    RememberSize(*this);
}

frmRecovery::~frmRecovery() = default;

void frmRecovery::Fill() {
    ui_->lstCopies->clear();
    for (const RecoveryCopy& copy : copies_)
        new QTreeWidgetItem(
            ui_->lstCopies,
            {copy.game.GameName.empty() ? QStringLiteral("(no name yet)") : ToQt(copy.game.GameName),
             copy.game.FileName.empty() ? QStringLiteral("(none)") : PathToQt(copy.game.FileName),
             copy.time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")), StateOfFile(copy)});
    QHeaderView& columns = *ui_->lstCopies->header();
    columns.setSectionResizeMode(QHeaderView::ResizeToContents);
    columns.setSectionResizeMode(FileColumn, QHeaderView::Stretch); // Paths may be long.
    ui_->lstCopies->setCurrentItem(ui_->lstCopies->topLevelItem(0));
}

int frmRecovery::Selected() const {
    return std::max(ui_->lstCopies->indexOfTopLevelItem(ui_->lstCopies->currentItem()), 0);
}

void frmRecovery::butDiscard_Click() {
    if (dialogs_.ShowMessageBox(this, QStringLiteral("Discard these unsaved changes for good?"),
                                windowTitle(), QMessageBox::Yes | QMessageBox::No,
                                QMessageBox::Question) != QMessageBox::Yes)
        return;
    const int row = Selected();
    Recovery::Discard(copies_[static_cast<std::size_t>(row)]);
    copies_.erase(copies_.begin() + row);
    if (copies_.empty())
        reject();
    else
        Fill();
}

} // namespace zem
