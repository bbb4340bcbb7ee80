// The tools of the main window: undo, earlier versions, and what happens to the file behind its back.
#include "forms/CommandError.h"
#include "forms/QtText.h"
#include "ui_frmMain.h"
#include "windows/HistoryPanel.h"
#include "windows/frmMain.h"
#include "windows/frmReadBack.h"
#include "windows/frmVersions.h"

#include <QFileInfo>
#include <QTimer>
#include <QWhatsThis>

namespace zem {

namespace {

constexpr int WaitForEditor = 300; // Milliseconds between two looks whether it is closed.

} // namespace

void frmMain::ConnectTools() {
    Connect(ui_->mnuToolsUndo, &frmMain::mnuToolsUndo_Click);
    Connect(ui_->mnuToolsRedo, &frmMain::mnuToolsRedo_Click);
    Connect(ui_->mnuToolsVersions, &frmMain::mnuToolsVersions_Click);
    // No shortcut: Shift+F1 tells at once about the control with the focus.
    connect(ui_->mnuToolsWhatsThis, &QAction::triggered, this, &QWhatsThis::enterWhatsThisMode);
    auto* history = new HistoryPanel(session_, this);
    addDockWidget(Qt::RightDockWidgetArea, history);
    history->hide();
    history->toggleViewAction()->setText(QStringLiteral("&History"));
    history->toggleViewAction()->setObjectName(QStringLiteral("mnuToolsHistory"));
    ui_->mnuTools->insertAction(ui_->mnuToolsSep1, history->toggleViewAction());
    connect(&session_, &GameSession::StepsChanged, this, &frmMain::ShowSteps);
    connect(&saveCheck_, &SaveCheck::PlacesLost, this, &frmMain::ShowLostPlaces);
    ShowSteps();
}

/// Names the steps that can be undone and redone.
void frmMain::ShowSteps() {
    const History& history = session_.Steps();
    const auto name = [&history](std::size_t step) {
        return ToQt(history.Name(step)).replace(u'&', QLatin1String("&&"));
    };
    const bool canUndo = history.Done() > 0;
    const bool canRedo = history.Done() < history.Count();
    ui_->mnuToolsUndo->setText(QLatin1String("&Undo ") + (canUndo ? name(history.Done()) : QString()));
    ui_->mnuToolsUndo->setEnabled(canUndo);
    ui_->mnuToolsRedo->setText(QLatin1String("&Redo ") + (canRedo ? name(history.Done() + 1) : QString()));
    ui_->mnuToolsRedo->setEnabled(canRedo);
}

void frmMain::mnuToolsUndo_Click() {
    if (session_.Steps().Done() > 0)
        session_.GoToStep(session_.Steps().Done() - 1);
}

void frmMain::mnuToolsRedo_Click() {
    if (session_.Steps().Done() < session_.Steps().Count())
        session_.GoToStep(session_.Steps().Done() + 1);
}

void frmMain::mnuToolsVersions_Click() {
    frmVersions form(session_.FileName().isEmpty() ? std::vector<FileVersion>()
                                                   : versions_.List(session_.FileName()),
                     this);
    if (form.exec() != QDialog::Accepted || !AskToSave())
        return;
    try {
        session_.OpenVersion(form.Selected());
    } catch (const CommandError& error) {
        const QString aside = Versions::SetAside(form.Selected());
        throw CommandError(error.Text() + QStringLiteral(" It is kept aside as %1.").arg(aside),
                           error.Title());
    }
}

// ---- The file on disk

void frmMain::CheckFile() {
    const bool isBusy = !isActiveWindow() || QApplication::activeModalWidget() != nullptr;
    if (isBusy || !session_.IsChangedOnDisk())
        return;
    if (askedAbout_ == FileStamp::Of(session_.FileName()))
        return; // The author was told already.
    RunCommand(dialogs_, this, [this] {
        if (AskAboutChangedFile())
            session_.KeepMine();
    });
}

bool frmMain::AskAboutChangedFile() {
    const QString path = session_.FileName();
    askedAbout_ = FileStamp::Of(path);
    const bool isThere = QFileInfo::exists(path);
    QStringList choices = {QStringLiteral("&Keep mine"), QStringLiteral("Save mine under &another name...")};
    if (isThere)
        choices.append(QStringLiteral("&Reload"));
    const QString what = isThere ? QStringLiteral("has been changed by another program")
                                 : QStringLiteral("is not there any more");
    const int choice = dialogs_.AskChoice(
        this, QStringLiteral("The file %1 %2 since it was opened or saved here.").arg(path, what),
        QStringLiteral("File changed"), choices);
    switch (choice) {
    case 0:
        return true;
    case 1:
        mnuFileSaveAs_Click();
        return false;
    case 2:
        session_.LoadGame(path);
        return false;
    default:
        return false;
    }
}

// ---- What the file would not give back

void frmMain::ShowLostPlaces(const std::vector<LostPlace>& places) {
    if (QApplication::activeModalWidget() !=
        nullptr) { // Two editors of one place would overwrite each other.
        QTimer::singleShot(WaitForEditor, this, [this, places, path = session_.FileName()] {
            if (path == session_.FileName())
                ShowLostPlaces(places);
        });
        return;
    }
    frmReadBack form(places, this);
    if (form.exec() == QDialog::Accepted)
        RunCommand(dialogs_, this, [&] { OpenEditor(form.Selected().place); });
}

} // namespace zem
