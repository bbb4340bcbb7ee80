#pragma once

#include "app/Program.h"
#include "app/frmMain.h"
#include "app/frmStart.h"
#include "forms/QtText.h"
#include "support/Games.h"
#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"

#include <QAbstractItemView>
#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QtTest/QTest>

#include <memory>

namespace zem::test {

/// The whole editor on a throw-away folder and store, its questions answered from a script.
class RunningProgram {
public:
    RunningProgram()
        : store(PathToQt(folder.Path("settings.ini")), QSettings::IniFormat),
          programFolder(QStringLiteral(ZEM_PROGRAM_FOLDER)) {
        store.setValue(QStringLiteral("Init/InstalledVer"), QStringLiteral("2.0"));
        store.setValue(QStringLiteral("Options/SpecialMsgBox"), QStringLiteral("No"));
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

    /// A control of the main window.
    template <class Control>
    Control* Find(const char* name) const {
        auto* control = Main()->findChild<Control*>(QLatin1String(name));
        if (control == nullptr)
            throw std::runtime_error(std::string("no control ") + name);
        return control;
    }

    void Trigger(const char* action) const { Find<QAction>(action)->trigger(); }
    void Click(const char* button) const { QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton); }
    bool IsEnabled(const char* button) const { return Find<QPushButton>(button)->isEnabled(); }

    QStringList Rows(const char* list) const {
        QStringList rows;
        const QAbstractItemModel* model = Find<QAbstractItemView>(list)->model();
        for (int row = 0; row < model->rowCount(); ++row)
            rows.append(model->index(row, 0).data().toString());
        return rows;
    }

    /// The selected row of a list, or -1.
    int SelectedRow(const char* list) const {
        const QModelIndexList rows = Find<QAbstractItemView>(list)->selectionModel()->selectedIndexes();
        return rows.isEmpty() ? -1 : rows.constFirst().row();
    }

    /// Clicks a row with the mouse.
    void Select(const char* list, int row) const {
        auto* view = Find<QAbstractItemView>(list);
        const QModelIndex index = view->model()->index(row, 0);
        view->scrollTo(index);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(index).center());
    }

    std::string Status() const { return Find<QLabel>("lblStatus")->text().toStdString(); }
    std::string Title() const { return Main()->windowTitle().toStdString(); }

    TempFolder folder;
    QSettings store;
    QString programFolder;
    ScriptedDialogs dialogs;
    GameModel game;
    std::unique_ptr<Program> program;
};

} // namespace zem::test
