#include "session/Recovery.h"

#include "app/Application.h"
#include "support/SmallGame.h"
#include "windows/frmReadBack.h"
#include "windows/frmRecovery.h"

#include <QDir>
#include <QTreeWidget>

#include <filesystem>
#include <gtest/gtest.h>

namespace zem::test {
namespace {

// ---- Recovery

QStringList Copies(const RunningProgram& p) {
    return QDir(p.Path("state/recovery")).entryList({"*.recovery"}, QDir::Files);
}

/// Waits for them; one is promised within a second of the change.
void ExpectCopies(const RunningProgram& p, int count) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return Copies(p).size() == count; }, count == 0 ? 3000 : 1000));
}

TEST(RecoveryCopies, ExistWhileTheFileLacksSomethingAndBelongToTheirProgram) {
    RunningProgram p(Small);
    ExpectCopies(p, 0);
    DeleteRoom(p, 0);
    ExpectCopies(p, 1);
    p.Trigger("mnuToolsUndo");
    ExpectCopies(p, 0);
    DeleteRoom(p, 0);
    ExpectCopies(p, 1);
    p.Trigger("mnuFileSave");
    ExpectCopies(p, 0);
    p.game.GameName = "a > b"; // A save loses the part after the bracket.
    WhenOpenLater<frmReadBack>([](frmReadBack& form) { Click(form, "butCancel"); });
    p.Trigger("mnuFileSave");
    ExpectCopies(p, 1);
    p.game.GameName = "a to b";
    p.Trigger("mnuFileSave");
    ExpectCopies(p, 0);
    DeleteRoom(p, 0);
    ExpectCopies(p, 1);
    GameModel game;
    Program(game, p.store, p.dialogs, p.programFolder, p.Path("state")).Main(); // Asks nothing.
    EXPECT_EQ(Copies(p).size(), 1) << "it belongs to a program that runs";
    p.program.reset(); // The author chose not to save.
    EXPECT_TRUE(Copies(p).isEmpty());
}

/// The copy that a program leaves when it is killed with this game unsaved.
void LeaveCopy(RunningProgram& p, const char* game) {
    RunningProgram killed(Small);
    killed.game.GameName = game;
    killed.game.FileName = p.folder.Write("game.kel", Small);
    DeleteRoom(killed, 0);
    killed.program->Rescue();
    QDir().mkpath(p.Path("state/recovery"));
    for (const QString& name : Copies(killed)) // A killed program holds no lock.
        QFile::copy(killed.Path("state/recovery/") + name, p.Path("state/recovery/") + name);
}

TEST(RecoveryCopies, AreOfferedAtTheNextStart) {
    RunningProgram p;
    LeaveCopy(p, "First");
    LeaveCopy(p, "Second");
    WhenOpen<frmRecovery>([](frmRecovery& form) { Click(form, "butKeep"); });
    p.Start();
    EXPECT_FALSE(p.program->MainWindow());
    p.program.reset();

    QString kept;
    WhenOpen<frmRecovery>([&](frmRecovery& form) {
        auto& list = Find<QTreeWidget>(form, "lstCopies");
        ASSERT_EQ(list.topLevelItemCount(), 2);
        kept = list.topLevelItem(0)->text(0);
        list.setCurrentItem(list.topLevelItem(1));
        EXPECT_EQ(list.currentItem()->text(3), "Is without these changes");
        for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
            p.dialogs.Message("Unsaved changes found: Discard these unsaved changes for good?", answer);
            Click(form, "butDiscard");
        }
        EXPECT_EQ(Rows(form, "lstCopies"), QStringList{kept});
        Click(form, "butRestore");
    });
    p.Start(p.Path("game.kel")); // The restored game stays open.
    ASSERT_NE(p.program->MainWindow(), nullptr);
    EXPECT_EQ(p.Rows("lstRooms"), QStringList{"Attic"});
    EXPECT_TRUE(p.game.Modified);
    EXPECT_EQ(p.game.GameName, kept.toStdString());
    EXPECT_EQ(p.game.FileName, p.folder.Path("game.kel"));
    EXPECT_EQ(p.Status(), "Current version of game not saved.");
    EXPECT_EQ(Copies(p).size(), 1) << "its own, instead of the one that was offered";
    p.program.reset();
    p.Start(); // Asks nothing.
    EXPECT_TRUE(Copies(p).isEmpty());
}

TEST(RecoveryCopies, ThatAreDamagedAreToldOnceAndKeptAside) {
    RunningProgram p;
    std::filesystem::create_directories(p.folder.Path("state/recovery"));
    const std::string aside = p.folder.Path("state/recovery/x.recovery.damaged");
    for (const std::string bytes : {"", "99999999999\nx", "5\nabcd", "0\nno game"}) {
        p.folder.Write("state/recovery/x.recovery", bytes);
        p.dialogs.Message(
            QStringLiteral("ZEM: A copy of unsaved changes is damaged and cannot be restored. It is "
                           "kept as\r\n%1")
                .arg(PathToQt(aside)));
        for (int start = 0; start < 2; ++start) {
            p.Start();
            p.dialogs.ExpectAllAsked();
            p.program.reset();
            EXPECT_EQ(ReadBytes(aside), bytes);
        }
        std::filesystem::remove(aside);
    }
}

TEST(RecoveryCopies, AreMissedWithOneMessageWhereTheyCannotBeWritten) {
    RunningProgram p;
    p.folder.Write("state", "a file where the folder should be");
    p.StartWith(Small);
    p.dialogs.Message(
        QStringLiteral("ZEM: No recovery copy of the unsaved changes can be kept: the folder %1 cannot "
                       "be made. Please save often.")
            .arg(p.Path("state/recovery")));
    for (int k = 0; k < 2; ++k) {
        DeleteRoom(p, 0);
        p.program->Rescue();
        QCoreApplication::processEvents();
    }
    p.Trigger("mnuFileSave"); // Works all the same.
    EXPECT_EQ(p.Status(), "The game is saved, but no version of it could be kept for Earlier versions.");
    EXPECT_TRUE(p.Rows("lstRooms").isEmpty());
}

// ---- Faults of the program itself

TEST(Faults, InAnEventAreToldAndTheUnsavedChangesAreKept) {
    RunningProgram p(Small);
    DeleteRoom(p, 0);
    auto& application = *static_cast<Application*>(QCoreApplication::instance());
    application.SetNet(p.dialogs, [&p] { p.program->Rescue(); });
    p.dialogs.Message("ZEM: Something went wrong, and the command was given up: a fault");
    QMetaObject::invokeMethod(
        &application, [] { throw std::runtime_error("a fault"); }, Qt::QueuedConnection);
    QCoreApplication::processEvents();
    p.dialogs.ExpectAllAsked();
    EXPECT_EQ(Copies(p).size(), 1) << "at once";
    application.ClearNet();
    DeleteRoom(p, 0); // The program goes on.
    EXPECT_TRUE(p.Rows("lstRooms").isEmpty());
}

} // namespace
} // namespace zem::test
