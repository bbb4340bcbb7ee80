#include "windows/frmVersions.h"

#include "forms/DialogSize.h"
#include "panels/DifferenceView.h"
#include "session/ReadVersionFile.h"
#include "ui_frmVersions.h"

#include <QLocale>

namespace zem {

frmVersions::frmVersions(const std::vector<FileVersion>& versions, const GameModel& game, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmVersions>()),
      versions_(versions),
      game_(game),
      view_(new DifferenceView(this)) {
    ui_->setupUi(this);
    ui_->parts->addWidget(view_);
    ui_->parts->setStretchFactor(1, 1);
    view_->SetTabOrder(ui_->lstVersions, ui_->butOpen);
    for (const FileVersion& version : versions_)
        new QTreeWidgetItem(ui_->lstVersions,
                            {version.time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")),
                             QLocale().formattedDataSize(version.size), NoteOf(version.kind)});
    for (int column = 0; column < ui_->lstVersions->columnCount(); ++column)
        ui_->lstVersions->resizeColumnToContents(column);
    ui_->lstVersions->setCurrentItem(ui_->lstVersions->topLevelItem(0));
    ui_->butOpen->setEnabled(!versions_.empty());
    connect(ui_->butOpen, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(ui_->lstVersions, &QTreeWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(ui_->lstVersions, &QTreeWidget::currentItemChanged, this, &frmVersions::CompareSelected);
    CompareSelected();
    ui_->lstVersions->setFocus();
    RememberSize(*this);
}

frmVersions::~frmVersions() = default;

void frmVersions::CompareSelected() {
    if (const QString path = Selected(); !path.isEmpty())
        view_->Compare([path, after = game_] { return ComparedGames{ReadVersionFile(path, after), after}; });
}

QString frmVersions::Selected() const {
    const int row = ui_->lstVersions->indexOfTopLevelItem(ui_->lstVersions->currentItem());
    return row < 0 ? QString() : versions_[static_cast<std::size_t>(row)].path;
}

} // namespace zem
