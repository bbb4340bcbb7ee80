#include "app/ErrorCatalogue.h"
#include "app/frmOptions.h"
#include "support/RunningProgram.h"
#include "support/WhenOpen.h"

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QTimer>

#include <filesystem>
#include <gtest/gtest.h>

namespace zem {
namespace {

using test::RecordingHost;
using test::RunningProgram;
using test::WhenOpen;

TEST(Program, WarnsAboutAMissingVeldtAndGoesOn) {
    RunningProgram p;
    p.store.remove(QStringLiteral("Init/InstalledVer"));
    p.dialogs.Message(QStringLiteral(
        "ZEM: Veldt not installed!\r\n\r\nZem is a product for the 'Veldt' game creation system. It "
        "must be installed in order for you to be able to use Zem. See the readme file for more "
        "information"));
    p.Start();
    EXPECT_TRUE(p.program->StartWindow()->isVisible());
    EXPECT_GT(p.program->Commands().Count(), 0);
    EXPECT_GE(p.game.ErrorMessages.Count(), 30);
}

TEST(Program, StartsWithoutItsDataFilesAndWithBadSettings) {
    RunningProgram p;
    p.programFolder = p.Path("empty");
    p.store.setValue(QStringLiteral("Editor/NumberRecent"), QStringLiteral("99999"));
    p.dialogs.Message(QStringLiteral(
        "ZEM: The command was not carried out: the setting NumberRecent cannot be used: the number does not "
        "lie between -32,768 and 32,767."));
    p.dialogs.Message(
        QStringLiteral("File Error: The list of script commands, zem.dat in the folder of ZEM, cannot "
                       "be used: the file cannot be read: its folder or the file itself is not there."));
    p.dialogs.Message(
        QStringLiteral("File Error: An error occurred when loading ZEMERR.DAT. Please check that the "
                       "file exists in the same directory as ZEM."));
    p.Start();
    EXPECT_TRUE(p.program->StartWindow()->isVisible());
}

TEST(Program, StartsWithTheCommandsBeforeABadLine) {
    RunningProgram p;
    p.programFolder = PathToQt(p.folder.Folder().string());
    p.folder.Write("zem.dat", "msg%a%b%c%d\r\nbroken\r\n");
    p.folder.Write("zemerr.dat", "badgo; No way\r\n");
    p.dialogs.Message(
        QStringLiteral("File Error: The list of script commands, zem.dat in the folder of ZEM, cannot be "
                       "used: line 2: a command needs five fields with \"%\" between them: broken."));
    p.Start();
    EXPECT_EQ(p.program->Commands().Count(), 1);
    EXPECT_TRUE(p.program->StartWindow()->isVisible());
}

TEST(Program, KeepsTheStartWindowWhenTheGameOfTheCommandLineCannotBeOpened) {
    RunningProgram p;
    p.dialogs.Message(QStringLiteral("Failed to load game: game.kel: the file is empty."));
    p.StartWith("");
    EXPECT_TRUE(p.program->StartWindow()->isVisible());
    EXPECT_FALSE(p.Main()->isVisible());
}

TEST(Program, OpensGamesFromTheStartWindow) {
    RunningProgram p;
    const QString path = PathToQt(p.folder.Write("tower.kel", "define game <Tower>\nend define\n"));
    p.store.setValue(QStringLiteral("Editor/NumberRecent"), QStringLiteral("3"));
    p.store.setValue(QStringLiteral("Editor/Recent1"), QStringLiteral("/gone/gone.kel"));
    p.store.setValue(QStringLiteral("Editor/Recent3"), path);
    p.Start();
    frmStart* start = p.program->StartWindow();
    EXPECT_EQ(start->windowTitle(), QStringLiteral("ZEM 1.0"));
    auto* list = start->findChild<QListWidget*>(QStringLiteral("lstRecent"));
    ASSERT_EQ(list->count(), 2) << "empty entries are not listed";

    auto* open = start->findChild<QPushButton*>(QStringLiteral("butOpenRecent"));
    QTest::mouseClick(open, Qt::LeftButton); // nothing selected, nothing happens
    list->setCurrentRow(0);
    p.dialogs.Message(QStringLiteral("Error: Error - path not found"));
    start->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(start));
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_TRUE(start->isVisible());

    p.dialogs.OpenFile({});
    QTest::mouseClick(start->findChild<QPushButton*>(QStringLiteral("butOpen")), Qt::LeftButton);
    EXPECT_EQ(NameFilters(p.dialogs.lastFileQuestion.filter),
              (QStringList{"Veldt script files (*.kel)", "Text files (*.txt)", "All files (*.*)"}));

    const QPoint second = list->visualItemRect(list->item(1)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, second);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, second);
    EXPECT_FALSE(start->isVisible());
    EXPECT_EQ(p.Title(), "\"Tower\" [" + path.toStdString() + "] - ZEM 1.0");
    EXPECT_EQ(p.store.value(QStringLiteral("Editor/Recent1")).toString(), path);
}

TEST(Options, TrimTheListOfTheStartWindow) {
    RunningProgram p;
    p.store.setValue(QStringLiteral("Editor/NumberRecent"), QStringLiteral("3"));
    for (int k = 1; k <= 3; ++k)
        p.store.setValue(QStringLiteral("Editor/Recent%1").arg(k), QStringLiteral("/%1.kel").arg(k));
    p.Start();
    WhenOpen<frmOptions>([](frmOptions& form) {
        auto* down = form.findChild<QAbstractButton*>(QStringLiteral("butMaxDown"));
        for (int k = 0; k < 6; ++k)
            QTest::mouseClick(down, Qt::LeftButton);
        EXPECT_EQ(form.findChild<QLineEdit*>(QStringLiteral("txtMax"))->text(), QStringLiteral("2"));
        QTest::mouseClick(form.findChild<QPushButton*>(QStringLiteral("butOK")), Qt::LeftButton);
    });
    frmStart* start = p.program->StartWindow();
    QTest::mouseClick(start->findChild<QPushButton*>(QStringLiteral("butOptions")), Qt::LeftButton);
    EXPECT_EQ(start->findChild<QListWidget*>(QStringLiteral("lstRecent"))->count(), 2);
}

TEST(Program, KnowsTheFullPathOfTheFileOnItsCommandLine) {
    RunningProgram p;
    p.folder.Write("game.kel", "define game <x>\nend define\n");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(p.folder.Folder());
    p.Start(QStringLiteral("game.kel"));
    std::filesystem::current_path(before);
    EXPECT_EQ(std::filesystem::canonical(p.game.FileName),
              std::filesystem::canonical(p.folder.Path("game.kel")));
}

TEST(Options, AreStoredOnOkAndTrimTheListsAtOnce) {
    RunningProgram p;
    p.store.setValue(QStringLiteral("Editor/NumberRecent"), QStringLiteral("5"));
    for (int k = 1; k <= 5; ++k)
        p.store.setValue(QStringLiteral("Editor/Recent%1").arg(k), QStringLiteral("/%1.kel").arg(k));
    p.StartWith("define game <x>\nend define\n");
    ASSERT_EQ(p.store.value(QStringLiteral("Editor/NumberRecent")).toInt(), 6);

    WhenOpen<frmOptions>([&](frmOptions& form) {
        EXPECT_FALSE(form.findChild<QLineEdit*>(QStringLiteral("txtVCOMPILElocation"))->isEnabled());
        auto* max = form.findChild<QLineEdit*>(QStringLiteral("txtMax"));
        EXPECT_EQ(max->text(), QStringLiteral("8"));
        auto* ok = form.findChild<QPushButton*>(QStringLiteral("butOK"));
        max->setText(QStringLiteral("eight"));
        p.dialogs.Message(QStringLiteral("ZEM: Maximum number of files must be a number."));
        QTest::mouseClick(ok, Qt::LeftButton);
        EXPECT_TRUE(form.isVisible());
        for (const char* odd : {"inf", "nan", ""}) {
            max->setText(QLatin1String(odd));
            p.dialogs.Message(QStringLiteral("ZEM: Maximum number of files must be a number."));
            QTest::mouseClick(ok, Qt::LeftButton);
        }
        max->setText(QStringLiteral("40000"));
        p.dialogs.Message(
            QStringLiteral("ZEM: Maximum number of files: the number does not lie between -32,768 and "
                           "32,767."));
        QTest::mouseClick(ok, Qt::LeftButton);
        EXPECT_FALSE(p.store.contains(QStringLiteral("Editor/MaxRecent")))
            << "nothing is stored before it is right";
        max->setText(QStringLiteral("2"));
        QTest::keyClick(max, Qt::Key_Up);
        EXPECT_EQ(max->text(), QStringLiteral("3"));
        QTest::keyClick(form.findChild<QWidget*>(QStringLiteral("chkFriendlyScript")), Qt::Key_Space);
        QTest::mouseClick(ok, Qt::LeftButton);
    });
    p.Trigger("mnuViewOptions");
    EXPECT_EQ(p.store.value(QStringLiteral("Editor/MaxRecent")).toString(), QStringLiteral("3"));
    EXPECT_EQ(p.store.value(QStringLiteral("Editor/FriendlyScript")).toString(), QStringLiteral("No"));
    EXPECT_EQ(p.store.value(QStringLiteral("Editor/VCOMPILElocation")).toString(),
              QDir::toNativeSeparators(p.programFolder + QStringLiteral("/VCOMPILE.EXE")));
    EXPECT_EQ(p.Main()->findChild<QAction*>(QStringLiteral("mnuFileRecent_3")), nullptr);
    EXPECT_TRUE(p.Find<QAction>("mnuFileRecent_2")->isVisible());

    WhenOpen<frmOptions>([](frmOptions& form) {
        form.findChild<QLineEdit*>(QStringLiteral("txtMax"))->setText(QStringLiteral("7"));
        QTest::mouseClick(form.findChild<QPushButton*>(QStringLiteral("butCancel")), Qt::LeftButton);
    });
    p.Trigger("mnuViewOptions");
    EXPECT_EQ(p.store.value(QStringLiteral("Editor/MaxRecent")).toString(), QStringLiteral("3"));
}

TEST(ErrorCatalogue, KeepsTheEntriesBeforeABadLine) {
    struct Case {
        const char* bytes;
        std::vector<std::string> entries; // "name=description"
        std::vector<std::string> notices;
    };
    for (const Case& c : {
             Case{"# comment\r\n  badcommand ;  Not understood  \r\na;b;c",
                  {"badcommand=Not understood", "a=b;c"},
                  {}},
             {"a;b\n\nc;d\n", {"a=b"}, {": Bad ZEMERR.DAT file"}},
             {" # no comment\n", {}, {": Bad ZEMERR.DAT file"}},
             {"", {}, {}},
         }) {
        const test::TempFolder folder;
        RecordingHost host;
        Table<ErrorMessage> errors;
        LoadErrorCatalogue(errors, folder.Write("zemerr.dat", c.bytes), host);
        std::vector<std::string> entries;
        for (const ErrorMessage& error : errors)
            entries.push_back(error.Name + "=" + error.Description);
        EXPECT_EQ(entries, c.entries) << c.bytes;
        EXPECT_EQ(host.notices, c.notices) << c.bytes;
    }
}

} // namespace
} // namespace zem
