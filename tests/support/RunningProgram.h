#pragma once

#include "app/Program.h"
#include "qt/QtText.h"
#include "support/Controls.h"
#include "support/Games.h"
#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"
#include "support/WhenOpen.h"
#include "windows/frmMain.h"
#include "windows/frmStart.h"

#include <QAction>
#include <QSettings>

#include <memory>

namespace zem::test {

/// What the program asks before unsaved changes are lost, and before a game is run without them.
inline const QString UnsavedQuestion =
    QStringLiteral("Game not saved: Do you want to save the changes you made to this game?");
inline const QString UnsavedRunQuestion =
    QStringLiteral("Game not saved: The current game has changed since it was last saved - if not saved now, "
                   "the last saved version will be executed instead. Save the current version now?");

/// The whole editor on a throw-away folder and store, its questions answered from a script.
class RunningProgram {
public:
    RunningProgram()
        : store(PathToQt(folder.Path("settings.ini")), QSettings::IniFormat),
          programFolder(PathToQt(folder.Path("program"))) {
        // The data files and nothing else that may stand beside the program.
        std::filesystem::create_directory(folder.Path("program"));
        for (const char* data :
             {"zem.dat", "zemerr.dat", "KEL.HTM", "ZEM.HTM", "manual", "pieces", "templates", "samples"})
            std::filesystem::create_symlink(std::string(ZEM_PROGRAM_FOLDER "/") + data,
                                            folder.Path(std::string("program/") + data));
        store.setValue("Init/InstalledVer", "2.0");
        store.setValue("Options/SpecialMsgBox", "No");
    }
    /// Has the game file of these bytes open.
    explicit RunningProgram(std::string_view bytes) : RunningProgram() { StartWith(bytes); }

    /// Starts the program; `file` as on the command line.
    void Start(const QString& file = {}) {
        program = std::make_unique<Program>(game, store, dialogs, programFolder, Path("state"));
        program->Main(file);
    }

    /// Starts the program and opens a game file of these bytes, "game.kel" in the folder.
    void StartWith(std::string_view bytes) { Start(PathToQt(folder.Write("game.kel", bytes))); }

    /// The bytes of "game.kel" as they are now.
    std::string Saved() const { return ReadBytes(folder.Path("game.kel")); }

    QString Path(const char* name) const { return PathToQt(folder.Path(name)); }

    frmMain* Main() const { return program->MainWindow(); }

    /// An action of the main window, or a control.
    template <class Control>
    Control* Find(const char* name) const {
        return &test::Find<Control>(*Main(), name);
    }

    void Trigger(const char* action) const { Find<QAction>(action)->trigger(); }
    void Click(const char* button) const { test::Click(*Main(), button); }
    /// Triggers an action or clicks a button, and uses the modal window that opens.
    template <class Form>
    void Open(const char* command, const std::function<void(Form&)>& use) const {
        WhenOpen<Form>(use);
        if (Main()->findChild<QAction*>(QLatin1String(command)) != nullptr)
            Trigger(command);
        else
            Click(command);
    }

    bool IsEnabled(const char* button) const { return test::IsEnabled(*Main(), button); }

    QStringList Rows(const char* list) const { return test::Rows(*Main(), list); }
    int SelectedRow(const char* list) const { return test::SelectedRow(*Main(), list); }

    /// Clicks a row with the mouse.
    void Select(const char* list, int row) const {
        auto* view = Find<QAbstractItemView>(list);
        const QModelIndex index = view->model()->index(row, 0);
        view->scrollTo(index);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(index).center());
    }

    std::string Status() const { return TextOf(*Main(), "lblStatus"); }
    std::string Title() const { return Main()->windowTitle().toStdString(); }

    TempFolder folder;
    QSettings store;
    QString programFolder;
    ScriptedDialogs dialogs;
    GameModel game;
    std::unique_ptr<Program> program;
};

} // namespace zem::test
