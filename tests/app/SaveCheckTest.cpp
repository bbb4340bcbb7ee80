#include "app/Versions.h"
#include "app/frmReadBack.h"
#include "app/frmVersions.h"
#include "check/LooseComparison.h"
#include "editors/frmRoomProperties.h"
#include "support/Cases.h"
#include "support/EditorGame.h"
#include "support/SmallGame.h"
#include "support/WhenOpen.h"

#include <QTimer>
#include <QTreeWidget>

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>

namespace zem::test {
namespace {

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
    std::ofstream(PathFromQt(path)) << "define game <x>\r\n";
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
    EXPECT_TRUE(QFile::exists(path + ".damaged"));
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
    using Make = void (*)(GameModel&);
    for (const auto& [change, text, editorName] : Cases<Make, const char*, const char*>{
             {[](GameModel& game) {
                  game.Collectables.Append() = {"gold p=0 [!,-]", "gold"};
              },
              "Collectable gold: the comma in its display text ends it early.", "frmEditCollectables"},
             {[](GameModel& game) { game.Rooms.Edit(2).Look = "x > y"; },
              "Room Attic, description: the \">\" in it ends it early.", "frmRoomProperties"},
             {[](GameModel& game) { game.Rooms.Edit(1).Objects.Append().Name = "a>b"; },
              "Room Hall, object a>b, name: the \">\" in it ends it early.", "frmThingProperties"},
             {[](GameModel& game) { game.GameAuthor = "<x>y"; },
              "Game properties, game author: the \">\" in it ends it early.", "frmGameProperties"},
             {[](GameModel& game) { game.UnknownBlocks = std::string("define x\r\n"); },
              "Game properties, blocks of other kinds: the block \"define x\" has no \"end define\".",
              "frmTagEditor"}}) {
        RunningProgram p;
        p.StartWith(Small);
        change(p.game);
        p.game.Modified = true;
        std::string opened;
        QStringList places;
        WhenOpenLater<frmReadBack>([&](frmReadBack& form) {
            places = Rows(form, "lstPlaces");
            WhenOpen<QDialog>([&](QDialog& editor) { opened = editor.objectName().toStdString(); });
            Click(form, "butEdit");
        });
        p.Trigger("mnuFileSave");
        EXPECT_EQ(opened, editorName);
        EXPECT_EQ(places, QStringList{text});
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
    struct Case {
        const char* command;
        const char* question;
    };
    for (const Case& c :
         {Case{"mnuFileNew", "Do you want to save the changes you made to this game?"},
          {"mnuFileRunKELfile",
           "The current game has changed since it was last saved - if not saved now, the last saved version "
           "will be executed instead. Save the current version now?"}}) {
        RunningProgram p;
        p.StartWith(Small);
        p.game.Rooms.Edit(2).Alias = "a>b";
        p.game.Modified = true;
        const QString question = QStringLiteral("Game not saved: ") + QLatin1String(c.question);
        p.dialogs.Message(question, QMessageBox::Yes);
        p.dialogs.Message(question, QMessageBox::Yes);
        WhenOpenLater<frmReadBack>([](frmReadBack& form) {
            WhenOpen<frmRoomProperties>([](frmRoomProperties& room) {
                SetText(room, "txtAlias", "a to b");
                Click(room, "butOK");
            });
            Click(form, "butEdit");
        });
        if (std::string(c.command) == "mnuFileRunKELfile")
            p.dialogs.Document(p.Path("game.kel"), 33);
        p.Trigger(c.command);
        EXPECT_FALSE(p.game.Modified);
        EXPECT_NE(ReadBytes(p.folder.Path("game.kel")).find("alias <a to b>"), std::string::npos);
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
    WhenOpenLater<frmReadBack>(
        [&](frmReadBack& form) { place = Rows(form, "lstPlaces").join(u'|').toStdString(); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return !place.empty(); }, 60000));
    EXPECT_EQ(place, "Room 14997, alias: the \">\" in it ends it early.");
}

/// A text of pieces that mean something in a file.
std::string TrickyText(std::mt19937& random) {
    static const char* const pieces[] = {"a", "b c", ">",    "<",  ";",      ",",          "=",
                                         "{", "}",   "]",    "__", "'x",     "end define", "define x",
                                         " ", "\n",  "else", "x",  "nodebug"};
    std::string text;
    for (auto count = random() % 5; count > 0; --count)
        text += pieces[random() % std::size(pieces)];
    return text;
}

struct FormCase {
    const char* name;
    std::function<void(const RunningProgram&)> open;
    std::vector<const char*> boxes;
    const char* close = "butOK";
};

std::function<void(const RunningProgram&)> Menu(const char* action) {
    return [action](const RunningProgram& p) { p.Trigger(action); };
}

std::function<void(const RunningProgram&)> Entry(const char* list, const char* button) {
    return [=](const RunningProgram& p) {
        p.Select("lstRooms", 0);
        p.Select(list, 0);
        p.Click(button);
    };
}

const FormCase Forms[] = {
    {"game",
     Menu("mnuViewGameProperties"),
     {"txtGameName", "txtGameAuthor", "txtGameVersion", "txtGameCopyright", "txtGameInfo", "txtFontName"}},
    {"room",
     Entry("lstRooms", "butEditRoom"),
     {"txtAlias", "txtPrefix", "txtInDescription", "txtDescription", "cmbRoomNames_0", "cmbRoomNames_1"}},
    {"character",
     Entry("lstCharacters", "butEditObj_0"),
     {"txtThingName", "txtPrefix", "txtSuffix", "txtGender"}},
    {"object", Entry("lstObjects", "butEditObj_1"), {"txtThingName", "txtPrefix"}},
    {"text", Menu("mnuViewTextSectionEditor"), {"txtText"}, "butClose"},
    {"error message", Menu("mnuEditErrorMessages"), {"txtError"}},
    {"other blocks", Menu("mnuViewMiscKEL"), {"txtTags"}},
};

/// Saves; whether the author was told that something would not come back.
bool IsToldOnSaving(const RunningProgram& p) {
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
    return isTold;
}

bool ComesBack(const RunningProgram& p) {
    try {
        return IsSameInFile(p.game, LoadBytes(ReadBytes(p.folder.Path("game.kel")), p.game));
    } catch (const KelError&) {
        return false; // the file cannot be read
    }
}

// Whatever is typed into the forms: the author is told just when the file does not give the game back.
TEST(SavedMeansReadable, TellsJustWhatIsLostOfWhateverIsTyped) {
    constexpr int Saves = 10;
    std::mt19937 random(7);
    std::string bytes = EditorGame();
    bytes.erase(bytes.find("suffix <of brass>\r\n"), 19); // which no save writes
    for (const FormCase& form : Forms) {
        int told = 0;
        for (std::size_t save = 0; save < Saves; ++save) {
            const char* box = form.boxes[save % form.boxes.size()];
            const std::string text = TrickyText(random);
            SCOPED_TRACE(std::string(form.name) + ", " + box + ": " + text);
            RunningProgram p;
            p.StartWith(bytes);
            WhenOpen<QDialog>([&](QDialog& window) {
                if (auto* list = window.findChild<QListWidget*>())
                    list->setCurrentRow(0); // whose text the box holds
                SetText(window, box, text.c_str());
                Click(window, form.close);
            });
            form.open(p);
            const bool isTold = IsToldOnSaving(p);
            EXPECT_EQ(isTold, !ComesBack(p));
            told += isTold ? 1 : 0;
        }
        EXPECT_GT(told, 0) << form.name;
        EXPECT_LT(told, Saves) << form.name;
    }
}

} // namespace
} // namespace zem::test
