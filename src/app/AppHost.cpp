#include "app/AppHost.h"

#include "help/frmManual.h"
#include "qt/QtText.h"
#include "windows/frmOrbMsgBox.h"
#include "windows/frmProgress.h"

#include <QApplication>

namespace zem {

namespace {

QMessageBox::StandardButtons PlatformButtons(MessageButtons buttons) {
    switch (buttons) {
    case MessageButtons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case MessageButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    default:
        return QMessageBox::Ok;
    }
}

MessageResult PlatformResult(QMessageBox::StandardButton button) {
    switch (button) {
    case QMessageBox::Yes:
        return MessageResult::Yes;
    case QMessageBox::No:
        return MessageResult::No;
    case QMessageBox::Cancel:
        return MessageResult::Cancel;
    default:
        return MessageResult::Ok;
    }
}

/// The window that messages belong to: never the manual, which itself belongs to other windows.
QWidget* WindowToAnswer() {
    QWidget* active = QApplication::activeWindow();
    return qobject_cast<frmManual*>(active) == nullptr ? active : QApplication::activeModalWidget();
}

} // namespace

AppHost::AppHost(const Settings& settings, Dialogs& dialogs) : settings_(settings), dialogs_(dialogs) {}

AppHost::~AppHost() = default;

MessageResult AppHost::ShowMessage(const std::string& text, const std::string& title,
                                   MessageButtons buttons) {
    HideProgress();
    QWidget* parent = WindowToAnswer();
    if (!settings_.UseSpecialMsgBox())
        return PlatformResult(
            dialogs_.ShowMessageBox(parent, ToQt(text), ToQt(title), PlatformButtons(buttons)));
    frmOrbMsgBox box(ToQt(text), buttons, parent);
    box.exec();
    return box.Result();
}

/// Until the next stage: a message must not stand before a window that seems to be at work.
void AppHost::HideProgress() {
    if (progress_)
        progress_->hide();
}

void AppHost::ShowNotice(const std::string& text, const std::string& title) {
    HideProgress();
    dialogs_.ShowMessageBox(WindowToAnswer(), ToQt(text),
                            title.empty() ? QLatin1String(DefaultTitle) : ToQt(title));
}

void AppHost::ShowStage(const std::string& text) {
    if (!progress_)
        progress_ = std::make_unique<frmProgress>(WindowToAnswer());
    progress_->show();
    progress_->ShowStage(ToQt(text));
}

void AppHost::ShowProgress(int percent) {
    if (progress_)
        progress_->ShowProgress(percent);
}

void AppHost::CloseProgress() {
    progress_.reset();
}

} // namespace zem
