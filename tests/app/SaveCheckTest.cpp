#include "app/Versions.h"
#include "app/frmReadBack.h"
#include "app/frmVersions.h"
#include "check/LooseComparison.h"
#include "editors/frmEditItems.h"
#include "editors/frmGameProperties.h"
#include "editors/frmRoomProperties.h"
#include "editors/frmTextSectionEdit.h"
#include "forms/PlainTextBox.h"
#include "support/SmallGame.h"
#include "support/WhenOpen.h"

#include <QLineEdit>
#include <QListWidget>
#include <QTimer>
#include <QTreeWidget>

#include <gtest/gtest.h>
#include <iterator>
#include <random>

namespace zem {
namespace {

using test::Click;
using test::DeleteRoom;
using test::Find;
using test::ReadBytes;
using test::RunningProgram;
using test::Small;
using test::UndoText;
using test::WhenOpen;
using test::WhenOpenLater;

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

TEST(SavedMeansReadable, AsksAgainAboutWhatIsMendedOnTheWayOut) {
    RunningProgram p;
    p.StartWith(Small);
    p.game.Rooms.Edit(2).Alias = "a>b";
    p.game.Modified = true;
    const QString question =
        QStringLiteral("Game not saved: Do you want to save the changes you made to this game?");
    p.dialogs.Message(question, QMessageBox::Yes);
    p.dialogs.Message(question, QMessageBox::Yes);
    WhenOpenLater<frmReadBack>([](frmReadBack& form) {
        WhenOpen<frmRoomProperties>([](frmRoomProperties& room) {
            Find<QLineEdit>(room, "txtAlias").setText(QStringLiteral("a to b"));
            Click(room, "butOK");
        });
        Click(form, "butEdit");
    });
    p.Trigger("mnuFileNew");
    EXPECT_TRUE(p.Rows("lstRooms").isEmpty());
    EXPECT_NE(ReadBytes(p.folder.Path("game.kel")).find("alias <a to b>"), std::string::npos);
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

} // namespace
} // namespace zem
