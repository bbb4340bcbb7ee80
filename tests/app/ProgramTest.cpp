#include "kel/ErrorCatalogue.h"
#include "support/Cases.h"
#include "support/SmallGame.h"
#include "windows/frmOptions.h"

#include <QToolTip>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

TEST(Program, StartsWithoutVeldtAndItsDataFilesAndWithBadSettings) {
    RunningProgram p;
    p.store.remove("Init/InstalledVer");
    p.programFolder = p.Path("empty");
    p.store.setValue("Editor/NumberRecent", "99999");
    p.dialogs.Message(
        "ZEM: Veldt not installed!\r\n\r\nZem is a product for the 'Veldt' game creation system. It "
        "must be installed in order for you to be able to use Zem. See the readme file for more "
        "information");
    p.dialogs.Message(
        "ZEM: The command was not carried out: the setting NumberRecent cannot be used: the number does not "
        "lie between -32,768 and 32,767.");
    p.dialogs.Message("File Error: The list of script commands, zem.dat in the folder of ZEM, cannot "
                      "be used: the file cannot be read: its folder or the file itself is not there.");
    p.dialogs.Message("File Error: An error occurred when loading ZEMERR.DAT. Please check that the "
                      "file exists in the same directory as ZEM.");
    p.Start();
    EXPECT_TRUE(p.program->StartWindow()->isVisible());
    p.dialogs.Message(QString("ZEM: The manual cannot be shown: there is no file %1/ZEM.HTM, or it cannot be "
                              "read.")
                          .arg(p.programFolder));
    QTest::keyClick(p.program->StartWindow(), Qt::Key_F1);
    EXPECT_EQ(p.program->ManualWindow(), nullptr);
}

TEST(Program, OpensGamesFromTheStartWindow) {
    RunningProgram p;
    const QString path = PathToQt(p.folder.Write("tower.kel", Small));
    p.store.setValue("Editor/NumberRecent", "4"); // of which the second is empty, and not listed
    p.store.setValue("Editor/Recent1", "/gone/gone.kel");
    p.store.setValue("Editor/Recent3", path);
    p.store.setValue("Editor/Recent4", "/more.kel");
    p.dialogs.Message("Failed to load game: game.kel: the file is empty.");
    p.StartWith("");
    EXPECT_FALSE(p.Main()->isVisible());
    frmStart* start = p.program->StartWindow();
    EXPECT_EQ(start->windowTitle(), "ZEM 1.0");
    WhenOpen<frmOptions>([](frmOptions& form) {
        for (int k = 0; k < 6; ++k)
            Click(form, "butMaxDown");
        EXPECT_EQ(TextOf(form, "txtMax"), "2");
        Click(form, "butOK");
    });
    Click(*start, "butOptions");
    EXPECT_EQ(Rows(*start, "lstRecent"), (QStringList{"/gone/gone.kel", path}));

    Click(*start, "butOpenRecent"); // nothing selected, nothing happens
    auto* list = &Find<QListWidget>(*start, "lstRecent");
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

TEST(Program, KnowsTheFullPathOfTheFileOnItsCommandLine) {
    RunningProgram p;
    p.folder.Write("game.kel", Small);
    p.Start(QDir().relativeFilePath(p.Path("game.kel")));
    EXPECT_EQ(p.game.GameName, "Tower");
    EXPECT_TRUE(QDir::isAbsolutePath(PathToQt(p.game.FileName)));
}

TEST(RecentFiles, ShowALongPathWholeBelowItsItem) {
    RunningProgram p;
    const std::string name(200, 'x');
    p.Start(PathToQt(p.folder.Write(name + ".kel", Small)));
    auto* item = p.Find<QAction>("mnuFileRecent_0");
    EXPECT_FALSE(item->text().contains(QString::fromStdString(name)));
    emit item->hovered();
    EXPECT_TRUE(QToolTip::text().contains(QString::fromStdString(name)));
}

TEST(Options, AreStoredOnOkAndTrimTheRecentFilesAtOnce) {
    RunningProgram p;
    p.store.setValue("Editor/NumberRecent", 5);
    p.StartWith(Small);
    EXPECT_TRUE(p.Find<QAction>("mnuFileRecent_5")->isVisible());
    const auto stored = [&p](const char* key) { return p.store.value(QString("Editor/") + key).toString(); };
    p.Open<frmOptions>("mnuViewOptions", [&](frmOptions& form) {
        EXPECT_FALSE(IsEnabled(form, "txtVCOMPILElocation"));
        EXPECT_EQ(TextOf(form, "txtMax"), "8");
        for (const auto& [text, message] : Cases<const char*, const char*>{
                 {"eight", " must be a number."},
                 {"inf", " must be a number."},
                 {"nan", " must be a number."},
                 {"", " must be a number."},
                 {"40000", ": the number does not lie between -32,768 and 32,767."}}) {
            SetText(form, "txtMax", text);
            p.dialogs.Message(QString("ZEM: Maximum number of files") + message);
            Click(form, "butOK");
            EXPECT_TRUE(form.isVisible());
        }
        EXPECT_EQ(stored("MaxRecent"), "") << "nothing is stored before it is right";
        SetText(form, "txtMax", "2");
        PressKey(form, "txtMax", Qt::Key_Up);
        EXPECT_EQ(TextOf(form, "txtMax"), "3");
        PressKey(form, "chkFriendlyScript", Qt::Key_Space);
        Click(form, "butOK");
    });
    EXPECT_EQ(stored("FriendlyScript"), "No");
    EXPECT_EQ(stored("VCOMPILElocation"), QDir::toNativeSeparators(p.programFolder + "/VCOMPILE.EXE"));
    EXPECT_EQ(p.Main()->findChild<QAction*>("mnuFileRecent_3"), nullptr);
    EXPECT_TRUE(p.Find<QAction>("mnuFileRecent_2")->isVisible());
    p.Open<frmOptions>("mnuViewOptions", [](frmOptions& form) {
        SetText(form, "txtMax", "7");
        Click(form, "butCancel");
    });
    EXPECT_EQ(stored("MaxRecent"), "3");
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
