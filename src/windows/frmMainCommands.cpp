// The file, run, options and help commands of the main window.
#include "forms/RunCommand.h"
#include "forms/ToolTip.h"
#include "qt/QtText.h"
#include "ui_frmMain.h"
#include "windows/frmAbout.h"
#include "windows/frmMain.h"
#include "windows/frmOptions.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QMenu>
#include <QStandardPaths>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace zem {

namespace {

constexpr int WidestRecentFile = 600; // Device-independent pixels.

} // namespace

// ---- What the session asks

frmMain::Answer frmMain::Ask(const QString& text, const QString& title, Buttons buttons) {
    const bool canRefuse = buttons == Buttons::YesNoCancel;
    const QMessageBox::StandardButton pressed =
        dialogs_.ShowMessageBox(this, text, title,
                                canRefuse ? QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel
                                          : QMessageBox::Ok | QMessageBox::Cancel);
    if (pressed == QMessageBox::Cancel)
        return Answer::Cancel;
    return pressed == QMessageBox::No ? Answer::No : Answer::Yes;
}

int frmMain::AskChoice(const QString& text, const QString& title, const QStringList& choices) {
    return dialogs_.AskChoice(this, text, title, choices);
}

QString frmMain::AskOpenName(const QString& currentFile) {
    return dialogs_.AskOpenFile(this, OpenGameQuestion(currentFile));
}

QString frmMain::AskSaveName(const QString& currentFile) {
    return dialogs_.AskSaveFile(
        this,
        {QString(), QStringLiteral("kel"),
         QStringLiteral("Veldt KEL file (*.kel)|*.kel|Text file (*.txt)|*.txt|All files|*.*"), currentFile});
}

// ---- The commands

void frmMain::closeEvent(QCloseEvent* event) {
    bool close = false;
    RunCommand(dialogs_, this, [&] { close = document_.MayLeave(); });
    event->setAccepted(close);
    if (!close)
        return;
    settings_.StoreMainWindowGeometry(saveGeometry());
    StorePanels();
    emit Unloaded();
}

void frmMain::mnuFileNew_Click() {
    document_.New();
}

void frmMain::mnuFileOpen_Click() {
    document_.Open();
}

void frmMain::OpenFile(const QString& path) {
    RunCommand(dialogs_, this, [&] { document_.Open(path); });
}

void frmMain::mnuFileSave_Click() {
    document_.Save();
}

void frmMain::mnuFileSaveAs_Click() {
    document_.SaveAs();
}

void frmMain::mnuFileRecent_Click(const QAction& item) {
    document_.Open(item.data().toString());
}

void frmMain::mnuFileRunKELfile_Click() {
    if (!document_.MayRun())
        return;
    const QString program = ProgramForGames();
    if (program.isEmpty() || !QFileInfo::exists(session_.FileName()))
        OpenDocument(session_.FileName()); // This says what is wrong with the file.
    else if (IsThisProgram(program) || !dialogs_.StartProgram(program, {session_.FileName()}))
        throw CommandError(QStringLiteral("The program that runs games, %1, cannot be started. Please name "
                                          "another one in the options (Options in the Edit menu).")
                               .arg(program),
                           QLatin1String(DefaultTitle));
}

/// The one that the author has named, else the one beside this program; empty for the one of the desktop.
QString frmMain::ProgramForGames() const {
    const QString named = settings_.CurrentOptions().RunProgram;
    if (!named.isEmpty())
        return named;
    return QStandardPaths::findExecutable(QStringLiteral("veldt"), {programFolder_});
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

namespace {

/// Shows the whole path of a recent file below its item, if the menu has no room for it. A menu shows tool
/// tips of all its items or of none, and never for the keyboard.
void ShowWholePath(const QMenu& menu, QAction& item) {
    const bool isWhole =
        item.text().replace(QLatin1String("&&"), QLatin1String("&")) == item.data().toString();
    QToolTip::showText(menu.mapToGlobal(menu.actionGeometry(&item).bottomLeft()),
                       isWhole ? QString() : item.toolTip());
}

} // namespace

void frmMain::RefreshRecentMenu() {
    const QStringList& recent = settings_.RecentFiles();
    const auto count = static_cast<std::size_t>(recent.size());
    while (mnuFileRecent.size() < std::max<std::size_t>(count, 1)) {
        auto* item = new QAction(QStringLiteral("(Recent)"), this);
        item->setObjectName(QStringLiteral("mnuFileRecent_%1").arg(mnuFileRecent.size()));
        ui_->mnuFile->insertAction(ui_->mnuFileSep3, item);
        connect(item, &QAction::triggered, this,
                [this, item] { RunCommand(dialogs_, this, [&] { mnuFileRecent_Click(*item); }); });
        connect(item, &QAction::hovered, this, [this, item] { ShowWholePath(*ui_->mnuFile, *item); });
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
