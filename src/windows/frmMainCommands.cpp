// The file, run, options and help commands of the main window.
#include "forms/CommandError.h"
#include "forms/QtText.h"
#include "forms/ToolTip.h"
#include "ui_frmMain.h"
#include "windows/frmAbout.h"
#include "windows/frmMain.h"
#include "windows/frmOptions.h"

#include <QCloseEvent>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace zem {

namespace {

constexpr int WidestRecentFile = 600; // Device-independent pixels.

} // namespace

bool frmMain::AskToSave() {
    saveCheck_.Finish(); // Ends the check of the last save while its game is open.
    if (!session_.Game().Modified)
        return true;
    const QMessageBox::StandardButton answer = dialogs_.ShowMessageBox(
        this, QStringLiteral("Do you want to save the changes you made to this game?"),
        QStringLiteral("Game not saved"), QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    if (answer == QMessageBox::Yes)
        return SaveFor([this] { return AskToSave(); });
    return answer != QMessageBox::Cancel;
}

/// Saves before a command that leaves the game or needs its file. A name dialog that was cancelled does not
/// stop the command; a save that failed does, by its exception.
/// @param askAgain  decides where the author has mended what the file would not give back
bool frmMain::SaveFor(const std::function<bool()>& askAgain) {
    const std::size_t step = session_.Steps().Done();
    if (!SaveUnderItsName())
        return false;
    saveCheck_.Finish();
    return session_.Steps().Done() == step || askAgain();
}

void frmMain::closeEvent(QCloseEvent* event) {
    bool close = false;
    RunCommand(dialogs_, this, [&] { close = AskToSave(); });
    event->setAccepted(close);
    if (!close)
        return;
    settings_.StoreMainWindowGeometry(saveGeometry());
    emit Unloaded();
}

void frmMain::mnuFileNew_Click() {
    if (AskToSave())
        session_.NewGame();
}

void frmMain::mnuFileOpen_Click() {
    if (!AskToSave())
        return;
    const QString path = dialogs_.AskOpenFile(this, OpenGameQuestion(session_.FileName()));
    if (!path.isEmpty())
        session_.LoadGame(path);
}

void frmMain::OpenFile(const QString& path) {
    RunCommand(dialogs_, this, [&] {
        if (AskToSave())
            session_.LoadGame(path);
    });
}

void frmMain::mnuFileSave_Click() {
    SaveUnderItsName();
}

/// False when the author did not decide between the game and a file that another program has changed.
bool frmMain::SaveUnderItsName() {
    const QString path = session_.FileName();
    if (path.isEmpty()) {
        mnuFileSaveAs_Click();
        return true;
    }
    if (QFileInfo::exists(path) && session_.IsChangedOnDisk() && !AskAboutChangedFile())
        return !session_.Game().Modified;
    session_.SaveGame(path);
    return true;
}

void frmMain::mnuFileSaveAs_Click() {
    const QString path = dialogs_.AskSaveFile(
        this, {QString(), QStringLiteral("kel"),
               QStringLiteral("Veldt KEL file (*.kel)|*.kel|Text file (*.txt)|*.txt|All files|*.*"),
               session_.FileName()});
    if (!path.isEmpty())
        session_.SaveGame(path);
}

void frmMain::mnuFileRecent_Click(const QAction& item) {
    if (AskToSave())
        session_.LoadGame(item.data().toString());
}

bool frmMain::AskToSaveBeforeRun() {
    if (session_.FileName().isEmpty()) {
        const QMessageBox::StandardButton answer = dialogs_.ShowMessageBox(
            this,
            QStringLiteral(
                "The current game has not been saved. It needs to be saved as an .KEL file before it "
                "can be executed in Veldt. Save now?"),
            QStringLiteral("Game not saved"), QMessageBox::Ok | QMessageBox::Cancel);
        if (answer != QMessageBox::Ok)
            return false;
        mnuFileSave_Click();
    }
    saveCheck_.Finish();
    if (!session_.Game().Modified)
        return true;
    const QMessageBox::StandardButton answer = dialogs_.ShowMessageBox(
        this,
        QStringLiteral(
            "The current game has changed since it was last saved - if not saved now, the last saved "
            "version will be executed instead. Save the current version now?"),
        QStringLiteral("Game not saved"), QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    if (answer == QMessageBox::Yes)
        return SaveFor([this] { return AskToSaveBeforeRun(); });
    return answer != QMessageBox::Cancel;
}

void frmMain::mnuFileRunKELfile_Click() {
    if (!AskToSaveBeforeRun())
        return;
    const QString program = settings_.CurrentOptions().RunProgram;
    if (program.isEmpty() || !QFileInfo::exists(session_.FileName()))
        OpenDocument(session_.FileName()); // This says what is wrong with the file.
    else if (!dialogs_.StartProgram(program, {session_.FileName()}))
        throw CommandError(QStringLiteral("The program that runs games, %1, cannot be started. Please name "
                                          "another one in the options (Options in the Edit menu).")
                               .arg(program),
                           QLatin1String(DefaultTitle));
}

void frmMain::OpenDocument(const QString& path) {
    static const std::pair<int, const char*> problems[] = {
        {Dialogs::PathNotFound, "file/path not found"},
        {Dialogs::OutOfMemory, "out of memory"},
        {Dialogs::NoAssociation, "file association does not exist or is incomplete"},
    };
    const int result = dialogs_.OpenDocument(path);
    for (const auto& [code, problem] : problems)
        if (result == code)
            dialogs_.ShowMessageBox(
                this, QStringLiteral("Error loading %1 - %2").arg(path, QLatin1String(problem)));
    if (result == Dialogs::NoAssociation)
        ShowStatus(QStringLiteral("Options in the Edit menu can name the program that runs games."));
}

void frmMain::RefreshRecentMenu() {
    const QStringList& recent = settings_.RecentFiles();
    const auto count = static_cast<std::size_t>(recent.size());
    while (mnuFileRecent.size() < std::max<std::size_t>(count, 1)) {
        auto* item = new QAction(QStringLiteral("(Recent)"), this);
        item->setObjectName(QStringLiteral("mnuFileRecent_%1").arg(mnuFileRecent.size()));
        ui_->mnuFile->insertAction(ui_->mnuFileSep3, item);
        connect(item, &QAction::triggered, this,
                [this, item] { RunCommand(dialogs_, this, [&] { mnuFileRecent_Click(*item); }); });
        mnuFileRecent.push_back(item);
    }
    ui_->mnuFileSep3->setVisible(count != 0);
    mnuFileRecent.front()->setVisible(count != 0);
    for (std::size_t i = 0; i < count; ++i) {
        const QString& path = recent[static_cast<qsizetype>(i)];
        // The whole path, unless it would make the menu wider than a screen; an "&" in it is no mnemonic.
        QString caption = ui_->mnuFile->fontMetrics().elidedText(path, Qt::ElideMiddle, WidestRecentFile);
        mnuFileRecent[i]->setText(caption.replace(u'&', QLatin1String("&&")));
        mnuFileRecent[i]->setToolTip(ToolTipOf(path));
        mnuFileRecent[i]->setData(path);
    }
}

void frmMain::mnuViewOptions_Click() {
    frmOptions(settings_, dialogs_, this).exec();
    const auto most = static_cast<std::size_t>(std::max<int>(settings_.CurrentOptions().MaxRecent, 0));
    while (mnuFileRecent.size() > std::max<std::size_t>(most, 1)) {
        delete mnuFileRecent.back();
        mnuFileRecent.pop_back();
    }
    if (most == 0)
        mnuFileRecent.front()->setVisible(false);
}

void frmMain::mnuZEMRef_Click() {
    dialogs_.OpenDocument(programFolder_ + QLatin1String("/ZEM.HTM"));
}

void frmMain::mnuKELRef_Click() {
    dialogs_.OpenDocument(programFolder_ + QLatin1String("/KEL.HTM"));
}

void frmMain::mnuHelpAbout_Click() {
    frmAbout(this).exec();
}

std::vector<std::pair<QAction*, QAction*>> frmMain::ToolbarCommands() const {
    return {
        {ui_->butNew, ui_->mnuFileNew},
        {ui_->butOpen, ui_->mnuFileOpen},
        {ui_->butSave, ui_->mnuFileSave},
        {ui_->butRun, ui_->mnuFileRunKELfile},
        {ui_->butEditItems, ui_->mnuViewItems},
        {ui_->butEditCollectables, ui_->mnuViewCollectables},
        {ui_->butEditText, ui_->mnuViewTextSectionEditor},
        {ui_->butEditGame, ui_->mnuViewGameProperties},
        {ui_->butEditProcs, ui_->mnuViewProcedures},
        {ui_->butEditMiscKEL, ui_->mnuViewMiscKEL},
        {ui_->butOptions, ui_->mnuViewOptions},
        {ui_->butEditLibs, ui_->mnuViewLibraries},
        {ui_->butEditSynonyms, ui_->mnuViewSynonyms},
        {ui_->butHelp, ui_->mnuZEMRef},
    };
}

void frmMain::Toolbar1_ButtonClick(const QAction* button) {
    for (const auto& [key, command] : ToolbarCommands())
        if (key == button)
            command->trigger();
}

} // namespace zem
