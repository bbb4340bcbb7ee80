#include "app/Versions.h"
#include "app/frmReadBack.h"
#include "app/frmVersions.h"
#include "editors/frmRoomProperties.h"
#include "support/Cases.h"
#include "support/SmallGame.h"

#include <QTreeWidget>

#include <fstream>
#include <gtest/gtest.h>

namespace zem::test {
namespace {

// ---- Earlier versions

TEST(EarlierVersions, OpenAsUnsavedGamesAndAreKeptAsideWhenTheyAreDamaged) {
    RunningProgram p(Small);
    p.Trigger("mnuFileSave");
    for (int k = 0; k < 2; ++k) {
        DeleteRoom(p, 0);
        p.Trigger("mnuFileSave");
    }
    const QString path = Versions(p.Path("state/versions")).List(p.Path("game.kel")).at(0).path;
    std::ofstream(PathFromQt(path)) << "define game <x>\r\n";
    p.dialogs.Message(
        QStringLiteral("Failed to load game: %1, line 1: this block has no \"end define\": define "
                       "game <x>. It is kept aside as %2.damaged.")
            .arg(QFileInfo(path).fileName(), path));
    p.Open<frmVersions>("mnuToolsVersions", [](frmVersions& form) { Click(form, "butOpen"); });
    EXPECT_EQ(p.game.FileName, p.folder.Path("game.kel")) << "the game that was open";
    EXPECT_TRUE(QFile::exists(path + ".damaged"));

    p.Open<frmVersions>("mnuToolsVersions", [](frmVersions& form) {
        auto& list = Find<QTreeWidget>(form, "lstVersions");
        ASSERT_EQ(list.topLevelItemCount(), 2);
        list.setCurrentItem(list.topLevelItem(1)); // the older one
        Click(form, "butOpen");
    });
    EXPECT_EQ(p.Rows("lstRooms"), (QStringList{"Hall", "Attic"}));
    EXPECT_TRUE(p.game.FileName.empty());
    EXPECT_TRUE(p.game.Modified);
    EXPECT_EQ(UndoText(p), "-, -");
    EXPECT_EQ(p.Saved().find("define room"), std::string::npos);
}

TEST(EarlierVersions, AreBoundedInNumberButForThosePinned) {
    const TempFolder folder;
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
    RunningProgram p(Small);
    p.game.Includes.Append("a > b");
    p.game.GameAuthor = "<x>y";
    p.game.Items.Append({"a, b", false});
    p.game.Collectables.Append({"gold p=0 [!,-]", "gold"});
    p.game.ErrorMessages.Edit(1).GameText = "No > way.";
    p.game.Synonyms.Append({"x = y", "z"});
    p.game.Rooms.Edit(2).Look = "x > y";
    p.game.Rooms.Edit(1).Objects.Append().Name = "a>b";
    p.game.Procedures.Append({"p", "{\r\n}\r\n"});
    p.game.SelectionMenus.Append({"a > b", "", {}});
    p.game.TextSections.Append({"poem", "end define\r\n"});
    p.game.UnknownBlocks = std::string("define x\r\n");
    p.game.Modified = true;
    int row = 0;
    for (const auto& [place, editor] : Cases<const char*, const char*>{
             {"Game properties, game author:", "frmGameProperties"},
             {"Game properties, blocks of other kinds:", "frmTagEditor"},
             {"Library a > b:", "frmIncludedLibraries"},
             {"Room Hall, object a>b, name:", "frmThingProperties"},
             {"Room Attic, description:", "frmRoomProperties"},
             {"Text block poem, text:", "frmTextSectionEdit"},
             {"Item a, b, name:", "frmEditItems"},
             {"Collectable gold:", "frmEditCollectables"},
             {"Procedure p, script:", "frmProcedureEditor"},
             {"Menu a > b, name:", "frmMenuList"},
             {"Synonym z, words:", "frmSynonyms"},
             {"Error message badcommand, text:", "frmEditErrors"},
         }) {
        std::string shown;
        std::string opened;
        WhenOpenLater<frmReadBack>([&](frmReadBack& form) {
            shown = Rows(form, "lstPlaces").value(row).toStdString();
            SelectRow(form, "lstPlaces", row++);
            WhenOpen<QDialog>([&](QDialog& window) { opened = window.objectName().toStdString(); });
            Click(form, "butEdit");
        });
        p.Trigger("mnuFileSave");
        EXPECT_TRUE(shown.starts_with(place)) << shown;
        EXPECT_EQ(opened, editor);
    }
    EXPECT_EQ(p.Status(), "Game saved.");
    p.Open<frmVersions>("mnuToolsVersions", [](frmVersions& form) {
        EXPECT_FALSE(Find<QTreeWidget>(form, "lstVersions")
                         .findItems("before a save that does not come back whole", Qt::MatchExactly, 2)
                         .isEmpty());
    });
}

TEST(SavedMeansReadable, AsksAgainAboutWhatIsMendedOnTheWayOut) {
    for (const auto& [command, question] :
         {std::pair("mnuFileNew", UnsavedQuestion), {"mnuFileRunKELfile", UnsavedRunQuestion}}) {
        RunningProgram p(Small);
        p.game.Rooms.Edit(2).Alias = "a>b";
        p.game.Modified = true;
        p.dialogs.Message(question, QMessageBox::Yes);
        p.dialogs.Message(question, QMessageBox::Yes);
        WhenOpenLater<frmReadBack>([](frmReadBack& form) {
            WhenOpen<frmRoomProperties>([](frmRoomProperties& room) {
                SetText(room, "txtAlias", "a to b");
                Click(room, "butOK");
            });
            Click(form, "butEdit");
        });
        if (question == UnsavedRunQuestion)
            p.dialogs.Document(p.Path("game.kel"), 33);
        p.Trigger(command);
        EXPECT_FALSE(p.game.Modified);
        EXPECT_NE(p.Saved().find("alias <a to b>"), std::string::npos);
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
    QStringList places;
    WhenOpenLater<frmReadBack>([&](frmReadBack& form) { places = Rows(form, "lstPlaces"); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return !places.isEmpty(); }, 60000));
    EXPECT_EQ(places, QStringList{"Room 14997, alias: the \">\" in it ends it early."});
}

} // namespace
} // namespace zem::test
