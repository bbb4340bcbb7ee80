#pragma once

#include "app/Program.h"
#include "app/frmMain.h"
#include "app/frmStart.h"
#include "forms/QtText.h"
#include "support/Controls.h"
#include "support/Games.h"
#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"

#include <QAction>
#include <QSettings>

#include <memory>

namespace zem::test {

/// The whole editor on a throw-away folder and store, its questions answered from a script.
class RunningProgram {
public:
    RunningProgram()
        : store(PathToQt(folder.Path("settings.ini")), QSettings::IniFormat),
          programFolder(QStringLiteral(ZEM_PROGRAM_FOLDER)) {
        store.setValue("Init/InstalledVer", "2.0");
        store.setValue("Options/SpecialMsgBox", "No");
    }

    /// Starts the program; `file` as on the command line.
    void Start(const QString& file = {}) {
        program = std::make_unique<Program>(game, store, dialogs, programFolder, Path("state"));
        program->Main(file);
    }

    /// Starts the program and opens a game file of these bytes, "game.kel" in the folder.
    void StartWith(std::string_view bytes) { Start(PathToQt(folder.Write("game.kel", bytes))); }

    QString Path(const char* name) const { return PathToQt(folder.Path(name)); }

    frmMain* Main() const { return program->MainWindow(); }

    /// An action of the main window, or a control.
    template <class Control>
    Control* Find(const char* name) const {
        return &test::Find<Control>(*Main(), name);
    }

    void Trigger(const char* action) const { Find<QAction>(action)->trigger(); }
    void Click(const char* button) const { test::Click(*Main(), button); }
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
