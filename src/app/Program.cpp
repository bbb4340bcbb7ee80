#include "app/Program.h"

#include "forms/Palettes.h"
#include "forms/RunCommand.h"
#include "kel/ErrorCatalogue.h"
#include "qt/QtText.h"
#include "session/RenameTrail.h"
#include "windows/frmMain.h"
#include "windows/frmRecovery.h"
#include "windows/frmStart.h"

#include <QFileInfo>

namespace zem {

Program::Program(GameModel& game, QSettings& store, Dialogs& dialogs, const QString& programFolder,
                 const QString& stateFolder)
    : settings_(store, programFolder),
      dialogs_(dialogs),
      programFolder_(programFolder),
      host_(settings_, dialogs),
      game_(game),
      session_(game, host_, settings_),
      edits_(session_),
      recovery_(session_, edits_, stateFolder + QLatin1String("/recovery")),
      versions_(stateFolder + QLatin1String("/versions")),
      saveCheck_(session_, versions_),
      spelling_(session_, spelling::DictionaryFolders()),
      editorShell_(settings_, host_, spelling_,
                   [this](const QString& place, QWidget& beside) { helpKey_.ShowPlace(place, beside); }),
      helpKey_(programFolder, dialogs) {
    ConnectSafetyNets();
}

Program::~Program() = default;

void Program::Main(const QString& file) {
    ApplyLook(settings_.StoredLook()); // before the first message
    ApplyLetterSize(settings_.StoredLetterSize());
    LoadSettings();
    LoadCatalogues();
    start_ = std::make_unique<frmStart>(settings_, dialogs_, programFolder_);
    connect(start_.get(), &frmStart::NewGameChosen, this, &Program::CreateNewGame);
    connect(start_.get(), &frmStart::GameChosen, this, &Program::OpenGame);
    connect(start_.get(), &frmStart::CopyChosen, this, &Program::OpenCopy);
    connect(start_.get(), &frmStart::ManualWanted, this,
            [this](const QString& place) { helpKey_.ShowPlace(place, *start_); });
    start_->show();
    const bool isRestored = OfferRecovery();
    const QString path = QFileInfo(file).absoluteFilePath(); // its name must be good from any folder
    if (file.isEmpty() || (isRestored && path == session_.FileName()))
        return;
    if (isRestored)
        main_->OpenFile(path); // which asks about what was restored
    else
        OpenGame(path);
}

void Program::ShowProblem(const QString& text) {
    dialogs_.ShowMessageBox(main_.get(), text, QLatin1String(DefaultTitle), QMessageBox::Ok,
                            QMessageBox::Warning);
}

void Program::LoadSettings() {
    const QString problem = settings_.NewProblem();
    if (!problem.isEmpty())
        ShowProblem(problem);
    if (!settings_.IsVeldtInstalled()) {
        dialogs_.ShowMessageBox(
            nullptr,
            QStringLiteral(
                "Veldt not installed!\r\n\r\nZem is a product for the 'Veldt' game creation system. It "
                "must be installed in order for you to be able to use Zem. See the readme file for "
                "more information"),
            QLatin1String(DefaultTitle), QMessageBox::Ok, QMessageBox::Information);
        UnloadAllForms(); // but start-up goes on
    }
    RunCommand(dialogs_, nullptr, [&] { settings_.LoadSettings(); });
}

void Program::LoadCatalogues() {
    RunCommand(dialogs_, nullptr, [&] {
        try {
            LoadCommandCatalogue(commands_, PathFromQt(programFolder_ + QLatin1String("/zem.dat")));
        } catch (const KelError& error) {
            throw CommandError(
                QStringLiteral("The list of script commands, zem.dat in the folder of ZEM, cannot "
                               "be used: %1.")
                    .arg(ToQt(error.what())),
                QStringLiteral("File Error"));
        }
    });
    lookup_ = std::make_unique<CommandLookup>(commands_);
    scripts_ = std::make_unique<ScriptEditing>(session_, edits_, dialogs_, editorShell_, *lookup_,
                                               [this] { return settings_.CurrentOptions().FriendlyScript; });
    LoadErrorCatalogue(game_.ErrorMessages, PathFromQt(programFolder_ + QLatin1String("/zemerr.dat")), host_);
}

frmMain& Program::LoadMainWindow() {
    if (!main_) {
        const EditorContext context{session_, edits_, dialogs_, editorShell_, *scripts_};
        main_ =
            std::make_unique<frmMain>(session_, settings_, context, saveCheck_, versions_, programFolder_);
        recovery_.TakeNamesFrom(
            [this] { return main_ ? main_->Renames().Names() : std::vector<NameChange>(); });
        connect(main_.get(), &frmMain::Unloaded, this, [this] { start_.reset(); });
    }
    return *main_;
}

void Program::ConnectSafetyNets() {
    connect(&recovery_, &Recovery::Failed, this, [this](const QString& problem) {
        ShowProblem(
            QStringLiteral("No recovery copy of the unsaved changes can be kept: %1. Please save often.")
                .arg(problem));
    });
    connect(&session_, &GameSession::ProblemFound, this, &Program::ShowProblem);
    connect(&saveCheck_, &SaveCheck::PlacesLost, &recovery_, &Recovery::KeepDespiteSave);
    connect(&saveCheck_, &SaveCheck::Failed, &session_, &GameSession::StatusChanged);
}

/// Offers what programs that no longer run have left behind; whether one of it was restored.
bool Program::OfferRecovery() {
    QStringList damaged;
    std::vector<RecoveryCopy> copies = recovery_.Abandoned(damaged);
    if (!damaged.isEmpty())
        dialogs_.ShowMessageBox(
            start_.get(),
            QStringLiteral("A copy of unsaved changes is damaged and cannot be restored. It is "
                           "kept as\r\n%1")
                .arg(damaged.join(QLatin1String("\r\n"))),
            QLatin1String(DefaultTitle), QMessageBox::Ok, QMessageBox::Warning);
    if (copies.empty())
        return false;
    frmRecovery form(copies, dialogs_, start_.get());
    if (form.exec() != QDialog::Accepted)
        return false;
    RecoveryCopy& copy = copies[static_cast<std::size_t>(form.Selected())];
    LoadMainWindow();
    session_.Restore(copy.game, copy.stamp);
    main_->Renames().Restore(copy.names);
    recovery_.WriteNow(); // before the old copy goes
    Recovery::Discard(copy);
    main_->show();
    start_->hide();
    return true;
}

void Program::CreateNewGame() {
    if (!start_)
        return; // a second click that was already on its way
    session_.NewGame();
    LoadMainWindow().show();
    start_->hide();
    start_.release()->deleteLater(); // it is the sender
}

void Program::OpenGame(const QString& path) {
    if (!start_)
        return;
    RunCommand(dialogs_, start_.get(), [&] {
        LoadMainWindow();
        if (!session_.LoadGame(path))
            return;
        main_->show();
        start_->hide();
    });
}

/// A game that others made to begin with: what is changed in it is never written over it.
void Program::OpenCopy(const QString& path) {
    if (!start_)
        return;
    RunCommand(dialogs_, start_.get(), [&] {
        LoadMainWindow();
        session_.OpenVersion(path);
        main_->show();
        start_->hide();
    });
}

void Program::UnloadAllForms() {
    main_.reset();
    start_.reset();
}

} // namespace zem
