#include "windows/frmProgress.h"

#include "forms/Icons.h"
#include "ui_frmProgress.h"

#include <QCoreApplication>

namespace zem {

frmProgress::frmProgress(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmProgress>()) {
    ui_->setupUi(this);
    setAttribute(Qt::WA_QuitOnClose, false);
    setWindowFlag(Qt::WindowCloseButtonHint, false);
    setModal(true);
    ui_->Picture1->setPixmap(ThemedIcon(QStringLiteral("zem")).pixmap(32));
}

frmProgress::~frmProgress() = default;

void frmProgress::ShowStage(const QString& text) {
    ui_->lblStatus->setText(text);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void frmProgress::ShowProgress(int percent) {
    ui_->ProgressBar1->setValue(percent);
}

} // namespace zem
