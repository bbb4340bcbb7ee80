#include "windows/frmVersions.h"

#include "forms/DialogSize.h"
#include "ui_frmVersions.h"

#include <QLocale>

namespace zem {

namespace {

/// In the order of VersionKind.
constexpr const char* Notes[] = {"", "before a save that does not come back whole", "before Zem changed it"};

} // namespace

frmVersions::frmVersions(const std::vector<FileVersion>& versions, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmVersions>()),
      versions_(versions) {
    ui_->setupUi(this);
    for (const FileVersion& version : versions_)
        new QTreeWidgetItem(ui_->lstVersions, {version.time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")),
                                               QLocale().formattedDataSize(version.size),
                                               QLatin1String(Notes[static_cast<int>(version.kind)])});
    for (int column = 0; column < ui_->lstVersions->columnCount(); ++column)
        ui_->lstVersions->resizeColumnToContents(column);
    ui_->lstVersions->setCurrentItem(ui_->lstVersions->topLevelItem(0));
    ui_->butOpen->setEnabled(!versions_.empty());
    connect(ui_->butOpen, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(ui_->lstVersions, &QTreeWidget::itemDoubleClicked, this, &QDialog::accept);
    ui_->lstVersions->setFocus();
    RememberSize(*this);
}

frmVersions::~frmVersions() = default;

QString frmVersions::Selected() const {
    const int row = ui_->lstVersions->indexOfTopLevelItem(ui_->lstVersions->currentItem());
    return row < 0 ? QString() : versions_[static_cast<std::size_t>(row)].path;
}

} // namespace zem
