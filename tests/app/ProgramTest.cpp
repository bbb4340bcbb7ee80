#include "app/ErrorCatalogue.h"
#include "app/frmOptions.h"
#include "support/Cases.h"
#include "support/RunningProgram.h"
#include "support/WhenOpen.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace zem::test {
namespace {

TEST(Program, WarnsAboutAMissingVeldtAndGoesOn) {
    RunningProgram p;
    p.store.remove("Init/InstalledVer");
    p.dialogs.Message(
        "ZEM: Veldt not installed!\r\n\r\nZem is a product for the 'Veldt' game creation system. It "
        "must be installed in order for you to be able to use Zem. See the readme file for more "
        "information");
    p.Start();
    EXPECT_TRUE(p.program->StartWindow()->isVisible());
    EXPECT_GT(p.program->Commands().Count(), 0);
    EXPECT_GE(p.game.ErrorMessages.Count(), 30);
}

TEST(Program, StartsWithoutItsDataFilesAndWithBadSettings) {
    RunningProgram p;
    p.programFolder = p.Path("empty");
    p.store.setValue("Editor/NumberRecent", "99999");
    p.dialogs.Message(
        "ZEM: The command was not carried out: the setting NumberRecent cannot be used: the number does not "
        "lie between -32,768 and 32,767.");
    p.dialogs.Message("File Error: The list of script commands, zem.dat in the folder of ZEM, cannot "
                      "be used: the file cannot be read: its folder or the file itself is not there.");
    p.dialogs.Message("File Error: An error occurred when loading ZEMERR.DAT. Please check that the "
                      "file exists in the same directory as ZEM.");
    p.Start();
    EXPECT_TRUE(p.program->StartWindow()->isVisible());
}

TEST(Program, KeepsTheStartWindowWhenTheGameOfTheCommandLineCannotBeOpened) {
    RunningProgram p;
    p.dialogs.Message("Failed to load game: game.kel: the file is empty.");
    p.StartWith("");
    EXPECT_TRUE(p.program->StartWindow()->isVisible());
    EXPECT_FALSE(p.Main()->isVisible());
}

TEST(Program, OpensGamesFromTheStartWindow) {
    RunningProgram p;
    const QString path = PathToQt(p.folder.Write("tower.kel", "define game <Tower>\nend define\n"));
    p.store.setValue("Editor/NumberRecent", "3");
    p.store.setValue("Editor/Recent1", "/gone/gone.kel");
    p.store.setValue("Editor/Recent3", path);
    p.Start();
    frmStart* start = p.program->StartWindow();
    EXPECT_EQ(start->windowTitle(), "ZEM 1.0");
    auto* list = &Find<QListWidget>(*start, "lstRecent");
    ASSERT_EQ(list->count(), 2) << "empty entries are not listed";

    Click(*start, "butOpenRecent"); // nothing selected, nothing happens
    list->setCurrentRow(0);
    p.dialogs.Message("Error: Error - path not found");
    start->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(start));
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_TRUE(start->isVisible());

    p.dialogs.OpenFile({});
    Click(*start, "butOpen");
    EXPECT_EQ(NameFilters(p.dialogs.lastFileQuestion.filter),
              (QStringList{"Veldt script files (*.kel)", "Text files (*.txt)", "All files (*.*)"}));

    const QPoint second = list->visualItemRect(list->item(1)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, second);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, second);
    EXPECT_FALSE(start->isVisible());
    EXPECT_EQ(p.Title(), "\"Tower\" [" + path.toStdString() + "] - ZEM 1.0");
    EXPECT_EQ(p.store.value("Editor/Recent1").toString(), path);
}

/// Stores as many recent files.
void StoreRecent(RunningProgram& p, int count) {
    p.store.setValue("Editor/NumberRecent", count);
    for (int k = 1; k <= count; ++k)
        p.store.setValue(QString("Editor/Recent%1").arg(k), QString("/%1.kel").arg(k));
}

TEST(Options, TrimTheListOfTheStartWindow) {
    RunningProgram p;
    StoreRecent(p, 3);
    p.Start();
    WhenOpen<frmOptions>([](frmOptions& form) {
        for (int k = 0; k < 6; ++k)
            Click(form, "butMaxDown");
        EXPECT_EQ(TextOf(form, "txtMax"), "2");
        Click(form, "butOK");
    });
    Click(*p.program->StartWindow(), "butOptions");
    EXPECT_EQ(Rows(*p.program->StartWindow(), "lstRecent").size(), 2);
}

TEST(Program, KnowsTheFullPathOfTheFileOnItsCommandLine) {
    RunningProgram p;
    p.folder.Write("game.kel", "define game <x>\nend define\n");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(p.folder.Folder());
    p.Start("game.kel");
    std::filesystem::current_path(before);
    EXPECT_EQ(std::filesystem::canonical(p.game.FileName),
              std::filesystem::canonical(p.folder.Path("game.kel")));
}

TEST(Options, AreStoredOnOkAndTrimTheListsAtOnce) {
    RunningProgram p;
    StoreRecent(p, 5);
    p.StartWith("define game <x>\nend define\n");
    ASSERT_EQ(p.store.value("Editor/NumberRecent").toInt(), 6);

    WhenOpen<frmOptions>([&](frmOptions& form) {
        EXPECT_FALSE(IsEnabled(form, "txtVCOMPILElocation"));
        EXPECT_EQ(TextOf(form, "txtMax"), "8");
        const char* const noNumber = "ZEM: Maximum number of files must be a number.";
        for (const auto& [text, message] : Cases<const char*, const char*>{
                 {"eight", noNumber},
                 {"inf", noNumber},
                 {"nan", noNumber},
                 {"", noNumber},
                 {"40000",
                  "ZEM: Maximum number of files: the number does not lie between -32,768 and 32,767."}}) {
            SetText(form, "txtMax", text);
            p.dialogs.Message(message);
            Click(form, "butOK");
            EXPECT_TRUE(form.isVisible());
        }
        EXPECT_FALSE(p.store.contains("Editor/MaxRecent")) << "nothing is stored before it is right";
        SetText(form, "txtMax", "2");
        PressKey(form, "txtMax", Qt::Key_Up);
        EXPECT_EQ(TextOf(form, "txtMax"), "3");
        PressKey(form, "chkFriendlyScript", Qt::Key_Space);
        Click(form, "butOK");
    });
    p.Trigger("mnuViewOptions");
    EXPECT_EQ(p.store.value("Editor/MaxRecent").toString(), "3");
    EXPECT_EQ(p.store.value("Editor/FriendlyScript").toString(), "No");
    EXPECT_EQ(p.store.value("Editor/VCOMPILElocation").toString(),
              QDir::toNativeSeparators(p.programFolder + "/VCOMPILE.EXE"));
    EXPECT_EQ(p.Main()->findChild<QAction*>("mnuFileRecent_3"), nullptr);
    EXPECT_TRUE(p.Find<QAction>("mnuFileRecent_2")->isVisible());

    WhenOpen<frmOptions>([](frmOptions& form) {
        SetText(form, "txtMax", "7");
        Click(form, "butCancel");
    });
    p.Trigger("mnuViewOptions");
    EXPECT_EQ(p.store.value("Editor/MaxRecent").toString(), "3");
}

TEST(ErrorCatalogue, KeepsTheEntriesBeforeABadLine) {
    const std::string bad = ": Bad ZEMERR.DAT file";
    for (const auto& [bytes, entries, notice] : Cases<const char*, const char*, std::string>{
             {"# comment\r\n  badcommand ;  Not understood  \r\na;b;c", "badcommand=Not understood|a=b;c|",
              ""},
             {"a;b\n\nc;d\n", "a=b|", bad},
             {" # no comment\n", "", bad},
             {"", "", ""},
         }) {
        const TempFolder folder;
        RecordingHost host;
        Table<ErrorMessage> errors;
        LoadErrorCatalogue(errors, folder.Write("zemerr.dat", bytes), host);
        std::string loaded;
        for (const ErrorMessage& error : errors)
            loaded += error.Name + '=' + error.Description + '|';
        EXPECT_EQ(loaded, entries) << bytes;
        EXPECT_EQ(host.notices.empty() ? "" : host.notices.front(), notice) << bytes;
    }
}

} // namespace
} // namespace zem::test
