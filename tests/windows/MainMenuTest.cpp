// The menus and the toolbar of the main window, and what they start.
#include "support/Cases.h"
#include "support/SmallGame.h"

#include <QMenu>
#include <QToolBar>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

TEST(MainMenu, RunsTheSavedFile) {
    RunningProgram p(Small);
    const QString path = p.Path("game.kel");
    for (const auto& [result, problem] : Cases<int, const char*>{
             {33, ""},
             {2, ""},
             {3, "file/path not found"},
             {8, "out of memory"},
             {5, ""},
             {31, "file association does not exist or is incomplete"},
         }) {
        p.dialogs.Document(path, result);
        if (*problem != '\0')
            p.dialogs.Message(QString("ZEM: Error loading %1 - %2").arg(path, problem));
        p.Trigger("mnuFileRunKELfile");
    }
    EXPECT_EQ(p.Status(), "Options in the Edit menu can name the program that runs games.");

    DeleteRoom(p, 1);
    for (const auto& [answer, runs, saves] :
         Cases<QMessageBox::StandardButton, bool, bool>{{QMessageBox::Cancel, false, false},
                                                        {QMessageBox::No, true, false},
                                                        {QMessageBox::Yes, true, true}}) {
        p.dialogs.Message(UnsavedRunQuestion, answer);
        if (runs)
            p.dialogs.Document(path, 33);
        p.Trigger("mnuFileRunKELfile");
        EXPECT_EQ(p.Saved() != Small, saves);
        EXPECT_EQ(p.game.Modified, !saves);
    }

    p.Trigger("mnuFileNew");
    const QString notNamed =
        "Game not saved: The current game has not been saved. It needs to be saved as an .KEL file before it "
        "can be executed in Veldt. Save now?";
    p.dialogs.Message(notNamed, QMessageBox::Cancel);
    p.Trigger("mnuFileRunKELfile");
    p.dialogs.Message(notNamed, QMessageBox::Ok);
    p.dialogs.SaveFile({});
    p.dialogs.Document("", 2); // Shows no message.
    p.Trigger("mnuFileRunKELfile");
}

/// A menu or a toolbar as text: its items with their shortcuts in their places, those that are off in
/// brackets, "-" for a separator.
QString Describe(const QWidget& bar) {
    QStringList items;
    for (const QAction* item : bar.actions()) {
        if (!item->isVisible())
            continue;
        QString text = item->isSeparator() ? "-" : item->text();
        if (!item->shortcut().isEmpty())
            text += u' ' + item->shortcut().toString();
        if (item->menu() != nullptr)
            text += u'{' + Describe(*item->menu()) + u'}';
        items.append(item->isEnabled() ? text : u'(' + text + u')');
    }
    return items.join(", ");
}

TEST(MainMenu, HasItsMenusAndToolbarInOrder) {
    RunningProgram p;
    p.Start();
    Click(*p.program->StartWindow(), "butNewGame");
    for (const auto& [bar, items] : Cases<const char*, const char*>{
             {"mnuFile", "&New Ctrl+N, &Open... Ctrl+O, &Save Ctrl+S, Save &As... Ctrl+A, -, "
                         "&Run KEL file Ctrl+R, -, E&xit"},
             {"mnuView", "&Game{&Properties... Ctrl+G, &Items... Ctrl+I, &Collectables... Ctrl+C}, "
                         "&Actions{&Menus..., &Procedures... Ctrl+P}, "
                         "&Advanced{&Misc KEL... Ctrl+M, Included &Libraries... Ctrl+L, "
                         "&Synonyms... Ctrl+Y, &Error Messages...}, &Text Blocks... Ctrl+T, -, &Options..."},
             {"mnuTools",
              "(&Undo  Ctrl+Z), (&Redo  Ctrl+Shift+Z), &History, &Problems, Next Problem F8, Previous "
              "Problem "
              "Shift+F8, Fix Problem Ctrl+., -, &Map F6, -, Find Panel, Where Used Panel, &Find... Ctrl+F, "
              "Repl&ace... Ctrl+H, Find Next F3, Find Previous Shift+F3, Where Use&d Shift+F12, Re&name... "
              "F2, -, "
              "Spelling F7, -, Pr&eview, Pla&y F5, (Play from the selected room Shift+F5), -, Run&s "
              "Ctrl+F5, C&overage "
              "Ctrl+F6, Which Run Gets to the Selected Room? Ctrl+Shift+F5, -, &Changes, Fi&gures, Merge "
              "Panel, "
              "Merge wi&th Another Version..., -, E&xport... Ctrl+E, Export Again Ctrl+Shift+E, Pu&blish as "
              "web page..., "
              "-, "
              "Insert Ready-Made... Ctrl+Shift+I, "
              "Any Command... Ctrl+Shift+P, Any Name... Ctrl+K, -, Standard &layout, -, "
              "T&imers..., Earlier &versions..., -, &What's this?"},
             {"mnuHelp", "&ZEM Reference (ZEM.HTM), &KEL Reference (KEL.HTM), &About ZEM"},
             {"Toolbar1", "New game, Open a game, Save, Run KEL file, -, Items, Collectables, Text Sections, "
                          "Game Properties, Procedures, Misc KEL, -, Options, Libraries, Synonyms, -, Help"},
         })
        EXPECT_EQ(Describe(*p.Find<QWidget>(bar)).toStdString(), items);
    for (const QAction* button : p.Find<QToolBar>("Toolbar1")->actions())
        EXPECT_TRUE(button->isSeparator() || !button->icon().pixmap(24).isNull())
            << button->text().toStdString();
}

TEST(MainMenu, OpensTheWindowOfEachCommand) {
    RunningProgram p(Small);
    for (const auto& [command, window] : Cases<const char*, const char*>{
             {"mnuViewMenus", "frmMenuList"},
             {"mnuViewProcedures", "frmProcedureEditor"},
             {"mnuHelpAbout", "frmAbout"},
             {"butEditItems", "frmEditItems"},
             {"butEditCollectables", "frmEditCollectables"},
             {"butEditText", "frmTextSectionEdit"},
             {"butEditGame", "frmGameProperties"},
             {"butEditProcs", "frmProcedureEditor"},
             {"butEditMiscKEL", "frmTagEditor"},
             {"butOptions", "frmOptions"},
             {"butEditLibs", "frmIncludedLibraries"},
             {"butEditSynonyms", "frmSynonyms"},
         })
        p.Open<QDialog>(command, [name = window](QDialog& form) { EXPECT_EQ(form.objectName(), name); });

    p.dialogs.Document(p.programFolder + "/ZEM.HTM", 2);
    p.Trigger("butHelp");
    p.dialogs.Document(p.programFolder + "/KEL.HTM", 31); // Shows no message even then.
    p.Trigger("mnuKELRef");
    p.Trigger("butSave");
    EXPECT_EQ(p.Status(), "Game saved.");
    p.dialogs.Document(p.Path("game.kel"), 33);
    p.Trigger("butRun");
    p.dialogs.OpenFile({});
    p.Trigger("butOpen");
    p.Trigger("butNew");
    EXPECT_EQ(p.Title(), "ZEM 1.0");
    EXPECT_EQ(p.Status(), "");
}

} // namespace
} // namespace zem::test
