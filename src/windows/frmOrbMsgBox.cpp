#include "windows/frmOrbMsgBox.h"

#include "ui_frmOrbMsgBox.h"

#include <QKeyEvent>
#include <QScreen>

namespace zem {

frmOrbMsgBox::frmOrbMsgBox(const QString& text, MessageButtons buttons, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmOrbMsgBox>()),
      buttons_(buttons) {
    ui_->setupUi(this);
    setAttribute(Qt::WA_QuitOnClose, false);
    ui_->lblMsg->setText(QString(text).replace(QLatin1String("\r\n"), QLatin1String("\n")));
    switch (buttons) {
    case MessageButtons::Ok:
        ui_->butCancel->hide();
        ui_->butOK->setText(tr("OK"));
        break;
    case MessageButtons::OkCancel:
        ui_->butOK->setText(tr("OK"));
        ui_->butCancel->setText(tr("Cancel"));
        break;
    case MessageButtons::YesNo:
        ui_->butOK->setText(tr("&Yes"));
        ui_->butCancel->setText(tr("&No"));
        break;
    }
    connect(ui_->butOK, &QPushButton::clicked, this, &frmOrbMsgBox::butOK_Click);
    connect(ui_->butCancel, &QPushButton::clicked, this, &frmOrbMsgBox::butCancel_Click);
    adjustSize();
}

frmOrbMsgBox::~frmOrbMsgBox() = default;

MessageResult frmOrbMsgBox::Result() const {
    if (buttons_ == MessageButtons::YesNo)
        return MsgBoxResult == 1 ? MessageResult::Yes : MessageResult::No;
    return MsgBoxResult == 1 ? MessageResult::Ok : MessageResult::Cancel;
}

void frmOrbMsgBox::showEvent(QShowEvent* event) {
    const QRect area = screen()->availableGeometry();
    move(area.center() - QPoint(frameGeometry().width() / 2, frameGeometry().height() / 2));
    QDialog::showEvent(event);
}

void frmOrbMsgBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Y)
        butOK_Click();
    else if (event->key() == Qt::Key_N && ui_->butCancel->isVisible())
        butCancel_Click();
    else if (event->key() != Qt::Key_Escape) // Escape is no answer here.
        QDialog::keyPressEvent(event);
}

void frmOrbMsgBox::butOK_Click() {
    MsgBoxResult = 1;
    accept();
}

void frmOrbMsgBox::butCancel_Click() {
    MsgBoxResult = 2;
    accept();
}

/// The close box.
void frmOrbMsgBox::reject() {
    MsgBoxResult = ui_->butCancel->isVisible() ? 2 : 1;
    QDialog::reject();
}

} // namespace zem
