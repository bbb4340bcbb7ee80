#pragma once

#include "app/AppEditorShell.h"
#include "app/AppHost.h"
#include "forms/Dialogs.h"
#include "help/HelpKey.h"
#include "kel/CommandLookup.h"
#include "script/ScriptEditing.h"
#include "session/GameSession.h"
#include "session/GameSpelling.h"
#include "session/Recovery.h"
#include "session/SaveCheck.h"
#include "session/Settings.h"
#include "session/Versions.h"

#include <QObject>
#include <QSettings>

#include <memory>

namespace zem {

class frmMain;
class frmStart;

/// The running editor: the start-up, and the windows that live as long as the program.
class Program : public QObject {
    Q_OBJECT

public:
    /// Game, store and dialogs outlive the program.
    /// @param programFolder  where the data files are, without a trailing separator
    /// @param stateFolder  for recovery copies and earlier versions
    Program(GameModel& game, QSettings& store, Dialogs& dialogs, const QString& programFolder,
            const QString& stateFolder);
    ~Program() override;

    /// The start-up procedure: reads settings and catalogues, shows the start window, and opens the file if
    /// one is given. The program lives on as long as one of its windows is open.
    void Main(const QString& file = {});

    /// After a fault of the program itself: makes sure of the unsaved changes.
    void Rescue() { recovery_.WriteNow(); }

    const CommandCatalogue& Commands() const { return commands_; }
    frmStart* StartWindow() const { return start_.get(); }
    frmMain* MainWindow() const { return main_.get(); }

    GameSession& Session() { return session_; }

    GameSpelling& Spelling() { return spelling_; }

    /// What is typed into open editors.
    const OpenEdits& Edits() const { return edits_; }
    frmManual* ManualWindow() const { return helpKey_.Manual(); }

private:
    void LoadSettings();
    void ShowProblem(const QString& text);
    void LoadCatalogues();
    void ConnectSafetyNets();
    bool OfferRecovery();
    void CreateNewGame();
    void OpenGame(const QString& path);
    void OpenCopy(const QString& path);
    frmMain& LoadMainWindow();
    void UnloadAllForms();

    Settings settings_;
    Dialogs& dialogs_;
    QString programFolder_;
    AppHost host_;
    GameModel& game_;
    GameSession session_;
    OpenEdits edits_;
    Recovery recovery_;
    Versions versions_;
    SaveCheck saveCheck_;
    CommandCatalogue commands_;
    std::unique_ptr<CommandLookup> lookup_;
    GameSpelling spelling_;
    AppEditorShell editorShell_;
    std::unique_ptr<ScriptEditing> scripts_;
    std::unique_ptr<frmStart> start_;
    std::unique_ptr<frmMain> main_;
    HelpKey helpKey_;
};

} // namespace zem
