// Undo, recovery, earlier versions, what a save would not give back, and files changed behind the editor.
#include "app/Application.h"
#include "app/Recovery.h"
#include "app/frmReadBack.h"
#include "app/frmRecovery.h"
#include "app/frmVersions.h"
#include "check/LooseComparison.h"
#include "editors/frmEditCollectables.h"
#include "editors/frmEditItems.h"
#include "editors/frmGameProperties.h"
#include "editors/frmRoomProperties.h"
#include "editors/frmTextSectionEdit.h"
#include "editors/frmThingProperties.h"
#include "forms/PlainTextBox.h"
#include "model/Snapshot.h"
#include "support/EditorGame.h"
#include "support/RunningProgram.h"
#include "support/WhenOpen.h"

#include <QDir>
#include <QDockWidget>
#include <QLineEdit>
#include <QListWidget>
#include <QTreeWidget>

#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <random>

namespace zem {
namespace {

using test::Click;
using test::CrLf;
using test::Find;
using test::ReadBytes;
using test::RunningProgram;
using test::WhenOpen;
using test::WhenOpenLater;

const std::string Small =
    CrLf("define game <Tower>\nstart <Hall>\nend define\ndefine room <Hall>\nend define\n"
         "define room <Attic>\nend define\n");

void DeleteRoom(RunningProgram& p, int row) {
    p.Select("lstRooms", row);
    p.Click("butDeleteRoom");
}

std::string UndoText(const RunningProgram& p) {
    const auto text = [&p](const char* action) {
        const auto* item = p.Find<QAction>(action);
        return item->isEnabled() ? item->text().toStdString() : std::string("-");
    };
    return text("mnuToolsUndo") + ", " + text("mnuToolsRedo");
}

// ---- Undo

TEST(Undo, TakesBackEveryCommandAndKnowsTheSavedState) {
    RunningProgram p;
    p.StartWith(Small);
    const GameModel opened = p.game;
    EXPECT_EQ(UndoText(p), "-, -");
    DeleteRoom(p, 0);
    p.Select("lstRooms", 0);
    WhenOpen<frmRoomProperties>([](frmRoomProperties& form) {
        Find<QLineEdit>(form, "txtAlias").setText(QStringLiteral("loft"));
        Click(form, "butOK");
    });
    p.Click("butEditRoom");
    WhenOpen<frmTextSectionEdit>([](frmTextSectionEdit& form) { // several changes, one step
        QTest::keyClicks(&Find<PlainTextBox>(form, "txtText"), QStringLiteral("abc"));
    });
    p.Trigger("mnuViewTextSectionEditor");
    EXPECT_EQ(UndoText(p), "&Undo edit text blocks, -");
    p.Trigger("mnuToolsUndo");
    EXPECT_EQ(p.game.TextSections[1].Text, "");
    EXPECT_EQ(UndoText(p), "&Undo edit room, &Redo edit text blocks");
    p.Trigger("mnuFileSave");
    EXPECT_FALSE(p.game.Modified);
    p.Trigger("mnuToolsUndo");
    p.Trigger("mnuToolsUndo");
    EXPECT_TRUE(SameGame(p.game, opened));
    EXPECT_EQ(p.Rows("lstRooms"), (QStringList{"Hall", "Attic"}));
    EXPECT_TRUE(p.game.Modified) << "the file holds a later state";
    EXPECT_EQ(UndoText(p), "-, &Redo delete room");
    p.Trigger("mnuToolsRedo");
    p.Trigger("mnuToolsRedo");
    EXPECT_FALSE(p.game.Modified) << "back at what was saved";
    EXPECT_EQ(p.Status(), "");
    EXPECT_EQ(p.game.FileName, p.folder.Path("game.kel"));
    p.Trigger("mnuToolsUndo");
    DeleteRoom(p, 0); // another way: what was undone is gone, and so is the saved state
    EXPECT_EQ(UndoText(p), "&Undo delete room, -");
    p.Trigger("mnuToolsUndo");
    EXPECT_TRUE(p.game.Modified);
}

TEST(Undo, MakesNoStepOfACommandThatChangedNothing) {
    RunningProgram p;
    p.StartWith(Small);
    WhenOpen<frmEditItems>([](frmEditItems& form) { Click(form, "butOK"); });
    p.Trigger("mnuViewItems");
    EXPECT_TRUE(p.game.Modified);
    WhenOpen<frmTextSectionEdit>([](frmTextSectionEdit&) {});
    p.Trigger("mnuViewTextSectionEditor");
    EXPECT_EQ(UndoText(p), "-, -");
}

TEST(Undo, JumpsToAnyStepFromThePanel) {
    RunningProgram p;
    p.StartWith(Small);
    p.Trigger("mnuToolsHistory");
    EXPECT_TRUE(p.Find<QDockWidget>("dckHistory")->isVisible());
    EXPECT_EQ(p.Rows("lstSteps"), QStringList{"(as opened)"});
    DeleteRoom(p, 0);
    DeleteRoom(p, 0);
    EXPECT_EQ(p.Rows("lstSteps"), (QStringList{"(as opened)", "delete room", "delete room"}));
    p.Select("lstSteps", 0);
    EXPECT_EQ(p.game.Rooms.Count(), 2);
    EXPECT_EQ(p.Rows("lstSteps"),
              (QStringList{"(as opened)", "delete room (undone)", "delete room (undone)"}));
    p.Select("lstSteps", 1);
    EXPECT_EQ(p.Rows("lstRooms"), QStringList{"Attic"});
    EXPECT_EQ(p.SelectedRow("lstSteps"), 1);
    p.game.Modified = false;
    p.Trigger("mnuFileNew");
    EXPECT_EQ(p.Rows("lstSteps"), QStringList{"(as opened)"});
}

// ---- Recovery

QStringList Copies(const RunningProgram& p) {
    return QDir(p.Path("state/recovery")).entryList({QStringLiteral("*.recovery")}, QDir::Files);
}

TEST(RecoveryCopies, ExistWhileThereAreUnsavedChanges) {
    RunningProgram p;
    p.StartWith(Small);
    EXPECT_TRUE(Copies(p).isEmpty());
    DeleteRoom(p, 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Copies(p).size() == 1; }, 1000)) << "within a second";
    p.Trigger("mnuToolsUndo");
    EXPECT_TRUE(QTest::qWaitFor([&] { return Copies(p).isEmpty(); }, 3000)) << "nothing is unsaved any more";
    DeleteRoom(p, 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Copies(p).size() == 1; }, 1000));
    p.Trigger("mnuFileSave");
    EXPECT_TRUE(QTest::qWaitFor([&] { return Copies(p).isEmpty(); }, 3000));
    DeleteRoom(p, 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Copies(p).size() == 1; }, 1000));
    p.program.reset(); // the author has said that nothing is to be saved
    EXPECT_TRUE(Copies(p).isEmpty());
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
    const auto offered = [](frmRecovery& form) {
        QStringList rows;
        auto& list = Find<QTreeWidget>(form, "lstCopies");
        for (int row = 0; row < list.topLevelItemCount(); ++row)
            rows.append(list.topLevelItem(row)->text(0));
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
        for (int row = 0; row < 2; ++row)
            EXPECT_EQ(Find<QTreeWidget>(form, "lstCopies").topLevelItem(row)->text(3),
                      QStringLiteral("Is without these changes"));
        auto& list = Find<QTreeWidget>(form, "lstCopies");
        const QString discarded = QStringLiteral("Second");
        list.setCurrentItem(list.findItems(discarded, Qt::MatchExactly, 0).constFirst());
        p.dialogs.Message(QStringLiteral("Unsaved changes found: Discard these unsaved changes for good?"),
                          QMessageBox::No);
        Click(form, "butDiscard");
        p.dialogs.Message(QStringLiteral("Unsaved changes found: Discard these unsaved changes for good?"),
                          QMessageBox::Yes);
        Click(form, "butDiscard");
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
    p.dialogs.Message(QStringLiteral(
        "ZEM: No recovery copy of the unsaved changes can be kept: Not a directory. Please save often."));
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

// ---- Earlier versions

TEST(EarlierVersions, OpenAsUnsavedGames) {
    RunningProgram p;
    p.StartWith(Small);
    p.Trigger("mnuFileSave");
    DeleteRoom(p, 0);
    p.Trigger("mnuFileSave");
    WhenOpen<frmVersions>([](frmVersions& form) {
        auto& list = Find<QTreeWidget>(form, "lstVersions");
        ASSERT_EQ(list.topLevelItemCount(), 2);
        list.setCurrentItem(list.topLevelItem(1)); // the older one
        Click(form, "butOpen");
    });
    p.Trigger("mnuToolsVersions");
    EXPECT_EQ(p.Rows("lstRooms"), (QStringList{"Hall", "Attic"}));
    EXPECT_TRUE(p.game.FileName.empty());
    EXPECT_TRUE(p.game.Modified);
    EXPECT_EQ(UndoText(p), "-, -");
    EXPECT_EQ(ReadBytes(p.folder.Path("game.kel")).find("define room <Hall>"), std::string::npos);
}

TEST(EarlierVersions, ThatAreDamagedAreToldOnceAndKeptAside) {
    RunningProgram p;
    p.StartWith(Small);
    p.Trigger("mnuFileSave");
    const Versions versions(p.Path("state/versions"));
    const QString path = versions.List(p.Path("game.kel")).at(0).path;
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("define game <x>\r\n");
    file.close();
    WhenOpen<frmVersions>([&](frmVersions& form) {
        p.dialogs.Message(
            QStringLiteral("Failed to load game: %1, line 1: this block has no \"end define\": define "
                           "game <x>. It is kept aside as %2.damaged.")
                .arg(QFileInfo(path).fileName(), path));
        Click(form, "butOpen");
    });
    p.Trigger("mnuToolsVersions");
    EXPECT_EQ(p.Rows("lstRooms").size(), 2) << "the game that was open";
    EXPECT_TRUE(versions.List(p.Path("game.kel")).empty());
    EXPECT_TRUE(QFile::exists(path + QStringLiteral(".damaged")));
}

TEST(EarlierVersions, AreBoundedInNumberButForThosePinned) {
    const test::TempFolder folder;
    const Versions versions(PathToQt(folder.Path("versions")));
    const QString game = PathToQt(folder.Write("game.kel", "0"));
    const QString other = PathToQt(folder.Write("other.kel", "other"));
    EXPECT_TRUE(versions.Keep(game, game, true));
    for (int k = 1; k <= Versions::MostVersions + 3; ++k) {
        folder.Write("game.kel", std::to_string(k));
        QTest::qWait(2); // their names are times
        EXPECT_TRUE(versions.Keep(game, game));
    }
    EXPECT_TRUE(versions.Keep(other, other));
    const std::vector<FileVersion> kept = versions.List(game);
    ASSERT_EQ(kept.size(), Versions::MostVersions + 1U);
    EXPECT_EQ(ReadBytes(PathFromQt(kept.front().path)), "53");
    EXPECT_EQ(ReadBytes(PathFromQt(kept[kept.size() - 2].path)), "4");
    EXPECT_TRUE(kept.back().isPinned);
    EXPECT_EQ(versions.List(other).size(), 1U);
    EXPECT_FALSE(versions.Keep(game, PathToQt(folder.Path("missing.kel"))));
}

// ---- Saves that do not come back

TEST(SavedMeansReadable, NamesThePlacesAndOpensTheirEditors) {
    struct Case {
        std::function<void(GameModel&)> change;
        const char* text;
        const char* editor;
    };
    const Case cases[] = {
        {[](GameModel& game) {
             game.Collectables.Append({"gold p=0 [!,-]", "gold"});
         },
         "Collectable gold: the comma in its display text ends it early.", "frmEditCollectables"},
        {[](GameModel& game) { game.Rooms.Edit(2).Look = "x > y"; },
         "Room Attic, description: the \">\" in it ends it early.", "frmRoomProperties"},
        {[](GameModel& game) { game.Rooms.Edit(1).Objects.Append().Name = "a>b"; },
         "Room Hall, object a>b, name: the \">\" in it ends it early.", "frmThingProperties"},
        {[](GameModel& game) { game.GameAuthor = "<x>y"; },
         "Game properties, game author: the \">\" in it ends it early.", "frmGameProperties"},
        {[](GameModel& game) { game.UnknownBlocks = std::string("define x\r\n"); }, nullptr, "frmTagEditor"},
    };
    for (const Case& c : cases) {
        RunningProgram p;
        p.StartWith(Small);
        c.change(p.game);
        p.game.Modified = true;
        std::string opened;
        WhenOpenLater<frmReadBack>([&](frmReadBack& form) {
            const auto& list = Find<QListWidget>(form, "lstPlaces");
            EXPECT_EQ(list.count(), 1);
            if (c.text != nullptr) {
                EXPECT_EQ(list.item(0)->text().toStdString(), c.text);
            }
            WhenOpen<QDialog>([&](QDialog& editor) { opened = editor.objectName().toStdString(); });
            Click(form, "butEdit");
        });
        p.Trigger("mnuFileSave");
        EXPECT_EQ(opened, c.editor);
        EXPECT_EQ(p.Status(), "Game saved.");
        WhenOpen<frmVersions>([](frmVersions& form) {
            const auto& list = Find<QTreeWidget>(form, "lstVersions");
            ASSERT_EQ(list.topLevelItemCount(), 2) << "what was saved, and what it has replaced";
            EXPECT_NE(list.topLevelItem(0)->text(2) + list.topLevelItem(1)->text(2), QString());
        });
        p.Trigger("mnuToolsVersions");
    }
}

TEST(SavedMeansReadable, ReadsLargeGamesBackInTheBackground) {
    RunningProgram p;
    std::string bytes = Small;
    for (int k = 0; k < 20000; ++k)
        bytes += "define room <" + std::to_string(k) + ">\r\nend define\r\n";
    p.StartWith(bytes);
    p.game.Rooms.Edit(15000).Alias = "a>b";
    p.Trigger("mnuFileSave");
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "the author can go on";
    std::string place;
    WhenOpenLater<frmReadBack>([&](frmReadBack& form) {
        place = Find<QListWidget>(form, "lstPlaces").item(0)->text().toStdString();
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return !place.empty(); }, 60000));
    EXPECT_EQ(place, "Room 14997, alias: the \">\" in it ends it early.");
}

/// A text of pieces that mean something in a file.
QString TrickyText(std::mt19937& random) {
    static const char* const pieces[] = {"a", "b c", ">",    "<",  ";",      ",",          "=",
                                         "{", "}",   "]",    "__", "'x",     "end define", "define x",
                                         " ", "\n",  "else", "x",  "nodebug"};
    QString text;
    for (auto count = random() % 4; count > 0; --count)
        text += QLatin1String(pieces[random() % std::size(pieces)]);
    return text;
}

// Whatever is typed into the forms: the author is told just when the file does not give the game back.
TEST(SavedMeansReadable, TellsJustWhatIsLostOfWhateverIsTyped) {
    int told = 0;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        RunningProgram p;
        p.StartWith(Small);
        WhenOpen<frmGameProperties>([&](frmGameProperties& form) {
            Find<QLineEdit>(form, "txtGameCopyright").setText(TrickyText(random).remove(u'\n'));
            Click(form, "butOK");
        });
        p.Trigger("mnuViewGameProperties");
        WhenOpen<frmTextSectionEdit>([&](frmTextSectionEdit& form) {
            Find<PlainTextBox>(form, "txtText").setPlainText(TrickyText(random));
        });
        p.Trigger("mnuViewTextSectionEditor");
        const QString item = u'i' + TrickyText(random).remove(u'\n');
        WhenOpen<frmEditItems>([&](frmEditItems& form) {
            p.dialogs.Text(QStringLiteral("New item: Please enter a name for this item: []"), item);
            Click(form, "butAdd");
            Click(form, "butOK");
        });
        p.Trigger("mnuViewItems");
        p.Select("lstRooms", 0);
        WhenOpen<frmRoomProperties>([&](frmRoomProperties& form) {
            Find<PlainTextBox>(form, "txtDescription").setPlainText(TrickyText(random).remove(u'\n'));
            Click(form, "butOK");
        });
        p.Click("butEditRoom");

        bool isTold = false;
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, [&isTold] {
            if (auto* form = qobject_cast<frmReadBack*>(QApplication::activeModalWidget())) {
                isTold = true;
                form->reject();
            }
        });
        watch.start(1);
        p.Trigger("mnuFileSave");
        bool comesBack = false;
        try {
            comesBack = IsSameInFile(p.game, test::LoadBytes(ReadBytes(p.folder.Path("game.kel")), p.game));
        } catch (const KelError&) {
            comesBack = false; // the file cannot be read
        }
        EXPECT_EQ(isTold, !comesBack);
        told += isTold ? 1 : 0;
    }
    EXPECT_GT(told, 5);
    EXPECT_LT(told, 40);
}

// ---- Files changed behind the editor

const char* const Choices = "&Keep mine|Save mine under &another name...";

QString ChangedQuestion(const RunningProgram& p, const char* what, const char* more = "|&Reload") {
    return QStringLiteral("File changed: The file %1 %2 since it was opened or saved here. [%3%4]")
        .arg(p.Path("game.kel"), QLatin1String(what), QLatin1String(Choices), QLatin1String(more));
}

TEST(ChangedOnDisk, IsToldBeforeASaveOverwritesIt) {
    const std::string theirs = CrLf("define game <Theirs>\nstart <Hall>\nend define\n");
    enum Choice { Cancel = -1, KeepMine, AnotherName, Reload };
    for (const Choice choice : {Cancel, KeepMine, AnotherName, Reload}) {
        RunningProgram p;
        p.StartWith(Small);
        DeleteRoom(p, 0);
        p.folder.Write("game.kel", theirs);
        p.dialogs.Choice(ChangedQuestion(p, "has been changed by another program"), choice);
        if (choice == AnotherName)
            p.dialogs.SaveFile(p.Path("mine.kel"));
        p.Trigger("mnuFileSave");
        EXPECT_EQ(ReadBytes(p.folder.Path("game.kel")) == theirs, choice != KeepMine);
        EXPECT_EQ(std::filesystem::exists(p.folder.Path("mine.kel")), choice == AnotherName);
        EXPECT_EQ(p.game.GameName, choice == Reload ? "Theirs" : "Tower");
        EXPECT_EQ(p.game.Modified, choice == Cancel);
    }
}

TEST(ChangedOnDisk, IsToldOnceOnReturnToTheWindow) {
    RunningProgram p;
    p.StartWith(Small);
    const auto comeBack = [&p] {
        QEvent event(QEvent::ActivationChange);
        p.Main()->activateWindow();
        QApplication::setActiveWindow(p.Main());
        QApplication::sendEvent(p.Main(), &event);
        QCoreApplication::processEvents();
    };
    comeBack(); // nothing has changed
    p.folder.Write("game.kel", Small);
    comeBack(); // the same content
    p.folder.Write("game.kel", Small + "'x\r\n");
    p.dialogs.Choice(ChangedQuestion(p, "has been changed by another program"), -1);
    comeBack();
    comeBack();
    EXPECT_FALSE(p.game.Modified);
    p.folder.Write("game.kel", Small + "'xyz\r\n");
    p.dialogs.Choice(ChangedQuestion(p, "has been changed by another program"), 0);
    comeBack();
    EXPECT_TRUE(p.game.Modified) << "the file holds something else";
    p.Trigger("mnuFileSave"); // asks nothing more
    std::filesystem::remove(p.folder.Path("game.kel"));
    p.dialogs.Choice(ChangedQuestion(p, "is not there any more", ""), 0);
    comeBack();
    EXPECT_TRUE(p.game.Modified);
}

} // namespace
} // namespace zem
