#include "app/Recovery.h"

#include "app/Application.h"
#include "app/frmReadBack.h"
#include "app/frmRecovery.h"
#include "support/SmallGame.h"
#include "support/WhenOpen.h"

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

TEST(RecoveryCopies, ExistWhileThereAreUnsavedChanges) {
    RunningProgram p;
    p.StartWith(Small);
    EXPECT_TRUE(Copies(p).isEmpty());
    const auto deleteRoom = [&p] {
        DeleteRoom(p, 0);
        EXPECT_TRUE(QTest::qWaitFor([&] { return Copies(p).size() == 1; }, 1000)) << "within a second";
    };
    deleteRoom();
    p.Trigger("mnuToolsUndo");
    EXPECT_TRUE(QTest::qWaitFor([&] { return Copies(p).isEmpty(); }, 3000)) << "nothing is unsaved any more";
    deleteRoom();
    p.Trigger("mnuFileSave");
    EXPECT_TRUE(QTest::qWaitFor([&] { return Copies(p).isEmpty(); }, 3000));
    deleteRoom();
    p.program.reset(); // the author has said that nothing is to be saved
    EXPECT_TRUE(Copies(p).isEmpty());
}

TEST(RecoveryCopies, OutliveASaveThatLosesSomething) {
    RunningProgram p;
    p.StartWith(Small);
    const auto saveNamed = [&](const char* name) {
        p.game.GameName = name;
        p.Trigger("mnuFileSave");
    };
    WhenOpenLater<frmReadBack>([](frmReadBack& form) { Click(form, "butCancel"); });
    saveNamed("a > b");
    EXPECT_TRUE(QTest::qWaitFor([&] { return Copies(p).size() == 1; }, 1000));
    saveNamed("a to b");
    EXPECT_TRUE(QTest::qWaitFor([&] { return Copies(p).isEmpty(); }, 3000));
}

/// The copy that a program leaves when it is killed with this game unsaved.
void LeaveCopy(RunningProgram& p, const std::string& bytes, const char* game) {
    RunningProgram killed;
    killed.StartWith(bytes);
    killed.game.GameName = game;
    killed.game.FileName = p.folder.Write("game.kel", bytes);
    DeleteRoom(killed, 0);
    killed.program->Rescue();
    QDir().mkpath(p.Path("state/recovery"));
    for (const QString& name : Copies(killed)) // without the lock of a program that runs
        QFile::copy(killed.Path("state/recovery/") + name, p.Path("state/recovery/") + name);
}

TEST(RecoveryCopies, AreOfferedAtTheNextStart) {
    RunningProgram p;
    LeaveCopy(p, Small, "First");
    LeaveCopy(p, Small, "Second");
    const auto offered = [](const frmRecovery& form) {
        QStringList rows = Rows(form, "lstCopies");
        rows.sort();
        return rows.join(u',').toStdString();
    };
    WhenOpen<frmRecovery>([&](frmRecovery& form) {
        EXPECT_EQ(offered(form), "First,Second");
        Click(form, "butKeep");
    });
    p.Start();
    EXPECT_FALSE(p.program->MainWindow());
    p.program.reset();

    WhenOpen<frmRecovery>([&](frmRecovery& form) {
        EXPECT_EQ(offered(form), "First,Second");
        auto& list = Find<QTreeWidget>(form, "lstCopies");
        for (int row = 0; row < 2; ++row)
            EXPECT_EQ(list.topLevelItem(row)->text(3), "Is without these changes");
        list.setCurrentItem(list.findItems("Second", Qt::MatchExactly, 0).constFirst());
        for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
            p.dialogs.Message("Unsaved changes found: Discard these unsaved changes for good?", answer);
            Click(form, "butDiscard");
        }
        EXPECT_EQ(offered(form), "First");
        Click(form, "butRestore");
    });
    p.Start(p.Path("game.kel")); // which is not opened over it
    ASSERT_NE(p.program->MainWindow(), nullptr);
    EXPECT_EQ(p.Rows("lstRooms"), QStringList{"Attic"});
    EXPECT_TRUE(p.game.Modified);
    EXPECT_EQ(p.game.GameName, "First");
    EXPECT_EQ(p.game.FileName, p.folder.Path("game.kel"));
    EXPECT_EQ(p.Status(), "Current version of game not saved.");
    EXPECT_EQ(Copies(p).size(), 1) << "its own, instead of the one that was offered";
    p.program.reset();
    p.Start(); // asks nothing
    EXPECT_TRUE(Copies(p).isEmpty());
}

TEST(RecoveryCopies, OfRunningProgramsAreLeftAlone) {
    RunningProgram first;
    first.StartWith(Small);
    DeleteRoom(first, 0);
    first.program->Rescue();
    ASSERT_EQ(Copies(first).size(), 1);
    GameModel game;
    Program second(game, first.store, first.dialogs, first.programFolder, first.Path("state"));
    second.Main(); // asks nothing
    EXPECT_EQ(Copies(first).size(), 1);
}

TEST(RecoveryCopies, ThatAreDamagedAreToldOnceAndKeptAside) {
    RunningProgram p;
    LeaveCopy(p, Small, "First");
    const QString path = p.Path("state/recovery/") + Copies(p).constFirst();
    const std::string whole = ReadBytes(PathFromQt(path));
    QFile::remove(path);
    std::string changed = whole;
    changed[changed.size() - 20] ^= 1;
    for (const std::string& bytes :
         {std::string(), std::string("99999999999\nx"), whole.substr(0, 40), changed}) {
        p.folder.Write("state/recovery/x.recovery", bytes);
        p.dialogs.Message(
            QStringLiteral("ZEM: A copy of unsaved changes is damaged and cannot be restored. It is "
                           "kept as\r\n%1.damaged")
                .arg(p.Path("state/recovery/x.recovery")));
        p.Start();
        p.program.reset();
        EXPECT_EQ(ReadBytes(p.folder.Path("state/recovery/x.recovery.damaged")), bytes);
        p.Start(); // says nothing more
        p.program.reset();
        std::filesystem::remove(p.folder.Path("state/recovery/x.recovery.damaged"));
    }
}

TEST(RecoveryCopies, AreMissedWithOneMessageWhereTheyCannotBeWritten) {
    RunningProgram p;
    p.folder.Write("state", "a file where the folder should be");
    p.StartWith(Small);
    p.dialogs.Message(
        "ZEM: No recovery copy of the unsaved changes can be kept: Not a directory. Please save often.");
    for (int k = 0; k < 2; ++k) {
        DeleteRoom(p, 0);
        p.program->Rescue();
        QCoreApplication::processEvents();
    }
    p.Trigger("mnuFileSave"); // works all the same
    EXPECT_EQ(p.Status(), "The game is saved, but no version of it could be kept for Earlier versions.");
    EXPECT_TRUE(p.Rows("lstRooms").isEmpty());
}

// ---- Faults of the program itself

class Faulty : public QObject {
public:
    explicit Faulty(std::function<void()> fail) : fail_(std::move(fail)) {}
    bool event(QEvent*) override {
        fail_();
        return true;
    }

private:
    std::function<void()> fail_;
};

TEST(Faults, InAnEventAreToldAndTheUnsavedChangesAreKept) {
    RunningProgram p;
    p.StartWith(Small);
    DeleteRoom(p, 0);
    auto& application = *static_cast<Application*>(QCoreApplication::instance());
    application.SetNet(p.dialogs, [&p] { p.program->Rescue(); });
    const std::pair<std::function<void()>, const char*> faults[] = {
        {[] { throw std::runtime_error("a fault"); },
         "ZEM: Something went wrong, and the command was given up: a fault"},
        {[] { throw KelError("a wrong thing"); }, "ZEM: The command was not carried out: a wrong thing."},
    };
    for (const auto& [fail, message] : faults) {
        Faulty faulty(fail);
        p.dialogs.Message(QLatin1String(message));
        QCoreApplication::postEvent(&faulty, new QEvent(QEvent::User));
        QCoreApplication::processEvents();
        p.dialogs.ExpectAllAsked();
    }
    EXPECT_EQ(Copies(p).size(), 1) << "at once";
    application.ClearNet();
    DeleteRoom(p, 0); // the program goes on
    EXPECT_TRUE(p.Rows("lstRooms").isEmpty());
}

} // namespace
} // namespace zem::test
