// Any command and any name by a few typed words, ready-made pieces, and games to begin with.
#include "editors/frmRoomProperties.h"
#include "help/frmManual.h"
#include "support/Cases.h"
#include "support/SmallGame.h"
#include "support/WhenOpen.h"
#include "windows/CommandWords.h"
#include "windows/frmOptions.h"
#include "windows/frmQuickFind.h"
#include "windows/frmReadyMade.h"
#include "windows/frmStart.h"

#include <QComboBox>
#include <QMenu>
#include <QTreeWidget>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

constexpr const char* TwoRooms = "define game <Two>\r\nstart <Hall>\r\nend define\r\n"
                                 "define room <Hall>\r\nlook <A hall.>\r\nnorth <Pantry>\r\nend define\r\n"
                                 "define room <Pantry>\r\nlook <A pantry.>\r\nsouth <Hall>\r\n"
                                 "define object <jar>\r\nlook <A jar.>\r\nend define\r\nend define\r\n"
                                 "define procedure <open the jar>\r\nflag on <jar is open>\r\nend define\r\n";

QStringList FirstRows(const frmQuickFind& form, int most) {
    const auto& list = Find<QTreeWidget>(form, "lstFound");
    QStringList rows;
    for (int row = 0; row < std::min(most, list.topLevelItemCount()); ++row)
        rows.append(list.topLevelItem(row)->text(0));
    return rows;
}

TEST(AnyCommand, IsFoundByEverydayWords) {
    RunningProgram p(TwoRooms);
    int missed = 0;
    std::string told;
    p.Open<frmQuickFind>("mnuToolsAnyCommand", [&](frmQuickFind& form) {
        for (const auto& [typed, title] : Cases<const char*, const char*>{
                 {"put back", "Undo"},
                 {"take back my last change", "Undo"},
                 {"oops", "Undo"},
                 {"I deleted a room by mistake", "Undo"},
                 {"do it again", "Redo"},
                 {"letters too small", "Size of letters"},
                 {"bigger font", "Size of letters"},
                 {"cannot read the text", "Size of letters"},
                 {"dark mode", "Colours"},
                 {"night", "Colours"},
                 {"too bright", "Colours"},
                 {"make a door", "Insert ready-made: Locked door"},
                 {"locked door", "Insert ready-made: Locked door"},
                 {"add a shop", "Insert ready-made: Shop"},
                 {"somebody sells things", "Insert ready-made: Shop"},
                 {"dark cave with lamp", "Insert ready-made: Lamp and darkness"},
                 {"secret door", "Insert ready-made: Secret passage"},
                 {"riddle", "Insert ready-made: Riddle"},
                 {"points for the player", "Collectables"},
                 {"how do I make a score", "Insert ready-made: Score"},
                 {"money", "Collectables"},
                 {"new room", "Add room"},
                 {"make a new place", "Add room"},
                 {"remove room", "Delete room"},
                 {"describe a room", "Edit room"},
                 {"connect two rooms", "Map"},
                 {"picture of all rooms", "Map"},
                 {"person", "Add character"},
                 {"new thing", "Add object"},
                 {"what is wrong with my game", "Problems"},
                 {"find mistakes", "Problems"},
                 {"check the game", "Problems"},
                 {"spell checker", "Spelling"},
                 {"typos", "Spelling"},
                 {"put it on the web", "Publish as web page"},
                 {"send my game to a friend", "Publish as web page"},
                 {"can it still be won", "Runs"},
                 {"search for a word", "Find"},
                 {"change a word everywhere", "Replace"},
                 {"serach", "Find"},
                 {"where is this used", "Where Used"},
                 {"who uses this item", "Where Used"},
                 {"change the name of a room", "Rename"},
                 {"play", "Play"},
                 {"try the game", "Play"},
                 {"start from this room", "Play from the selected room"},
                 {"what the player sees", "Preview"},
                 {"how many words", "Figures"},
                 {"word count", "Figures"},
                 {"what did I change", "Changes"},
                 {"make a pdf", "Export"},
                 {"print my game", "Export"},
                 {"old version", "Earlier versions"},
                 {"yesterday's game", "Earlier versions"},
                 {"title of the game", "Properties"},
                 {"who is the author", "Properties"},
                 {"where the game begins", "Properties"},
                 {"intro text", "Text Blocks"},
                 {"game over text", "Text Blocks"},
                 {"conversation", "Menus"},
                 {"inventory", "Items"},
                 {"other words for a command", "Synonyms"},
                 {"you cannot go that way", "Error Messages"},
                 {"shortcuts", "The keyboard"},
                 {"tutorial", "Your first game in ten minutes"},
                 {"my windows are a mess", "Standard layout"},
                 {"two authors", "Two authors"},
                 {"countdown", "Timers"},
                 {"save under another name", "Save As"},
                 {"quit", "Exit"},
             }) {
            SetText(form, "txtWords", typed);
            const QStringList first = FirstRows(form, 3);
            if (!first.contains(QLatin1String(title))) {
                ++missed;
                told += std::string(typed) + ": " + first.join(", ").toStdString() + "\n";
            }
        }
    });
    EXPECT_LE(missed, 3) << "of 70 phrasings\n" << told; // 95 of 100
}

/// A command that nobody has given other words is found by its caption alone.
TEST(AnyCommand, KnowsEveryCommandOfTheMenusAndOtherWordsForIt) {
    RunningProgram p(TwoRooms);
    QStringList titles;
    p.Open<frmQuickFind>("mnuToolsAnyCommand", [&](frmQuickFind& form) {
        for (const QAction* action : p.Main()->findChildren<QAction*>()) {
            bool isInMenu = false;
            for (const QObject* object : action->associatedObjects())
                isInMenu = isInMenu || qobject_cast<const QMenu*>(object) != nullptr;
            if (!isInMenu || action->menu() != nullptr || action->isSeparator() || !action->isVisible() ||
                action->objectName().startsWith("mnuFileRecent"))
                continue;
            EXPECT_FALSE(WordsForCommand(action->objectName()).words.isEmpty())
                << action->objectName().toStdString() << " has no other words";
            QString caption = action->text();
            caption.remove('&').remove("...");
            caption = caption.trimmed();
            SetText(form, "txtWords", caption.toStdString().c_str());
            EXPECT_TRUE(FirstRows(form, 4).contains(caption)) << caption.toStdString();
        }
    });
}

TEST(AnyCommand, RunsWhatIsChosenAndSaysWhyNot) {
    RunningProgram p(TwoRooms);
    p.Open<frmQuickFind>("mnuToolsAnyCommand", [&](frmQuickFind& form) {
        SetText(form, "txtWords", "redo");
        PressKey(form, "txtWords", Qt::Key_Return);
        EXPECT_TRUE(form.isVisible());
        EXPECT_EQ(TextOf(form, "lblFound"), "Redo cannot be used now: nothing has been undone.");
        SetText(form, "txtWords", "xyzzy");
        EXPECT_EQ(TextOf(form, "lblFound"), "Nothing fits these words. Try others, or fewer of them.");
        PressKey(form, "txtWords", Qt::Key_Return);
        EXPECT_TRUE(form.isVisible());
        SetText(form, "txtWords", "letters too small");
        WhenOpenLater<frmOptions>([](frmOptions& options) {
            QTest::qWait(50); // the way to the control is gone once the window is shown
            EXPECT_EQ(options.focusWidget()->objectName(), "cmbLetters");
        });
        PressKey(form, "txtWords", Qt::Key_Return);
    });
    p.Open<frmQuickFind>("mnuToolsAnyCommand", [&](frmQuickFind& form) {
        EXPECT_EQ(FirstRows(form, 1), QStringList{"Size of letters"}) << "what was used last comes first";
        SetText(form, "txtWords", "properties");
        PressKey(form, "txtWords", Qt::Key_Down);
        PressKey(form, "txtWords", Qt::Key_Up);
        EXPECT_EQ(FirstRows(form, 1), QStringList{"Properties"});
    });
    WhenOpen<frmQuickFind>([&](frmQuickFind& form) {
        SetText(form, "txtWords", "first game");
        PressKey(form, "txtWords", Qt::Key_Return);
    });
    p.Trigger("mnuToolsAnyCommand");
    ASSERT_NE(p.program->ManualWindow(), nullptr);
    EXPECT_TRUE(p.program->ManualWindow()->isVisible());
    p.program->ManualWindow()->close();
}

TEST(AnyName, OpensWhatIsCalledSo) {
    RunningProgram p(TwoRooms);
    p.Open<frmQuickFind>("mnuToolsAnyName", [&](frmQuickFind& form) {
        for (const auto& [typed, first] : Cases<const char*, const char*>{{"JAR", "jar"},
                                                                          {"jar open", "open the jar"},
                                                                          {"jar is", "jar is open"},
                                                                          {"ntr", "Pantry"}}) {
            SetText(form, "txtWords", typed);
            EXPECT_EQ(FirstRows(form, 1), QStringList{first}) << typed;
        }
        SetText(form, "txtWords", "pan");
        WhenOpenLater<frmRoomProperties>(
            [](frmRoomProperties& room) { EXPECT_EQ(TextOf(room, "txtRoomName"), "Pantry"); });
        PressKey(form, "txtWords", Qt::Key_Return);
    });
}

TEST(InsertReadyMade, AsksChecksAndInsertsAsOneStep) {
    RunningProgram p(TwoRooms);
    const std::string before = GameFile(p.game);
    p.Select("lstRooms", 0);
    p.Open<frmReadyMade>("mnuToolsReadyMade", [&](frmReadyMade& form) {
        SetText(form, "txtPieceFilter", "win");
        EXPECT_EQ(Rows(form, "lstPieces").first(), "Way to win") << "a title goes before a word";
        SetText(form, "txtPieceFilter", "key");
        EXPECT_EQ(Rows(form, "lstPieces").first(), "Code lock");
        Find<QListWidget>(form, "lstPieces").setCurrentRow(1);
        EXPECT_EQ(TextOf(form, "cmbFrom"), "Hall");
        EXPECT_NE(TextOf(form, "cmbWay"), "north") << "which leads to the pantry";
        auto& way = Find<QComboBox>(form, "cmbWay");
        const int there = way.findText("north (to Pantry)");
        ASSERT_GE(there, 0);
        const int free = way.currentIndex();
        way.setCurrentIndex(there);
        EXPECT_EQ(TextOf(form, "cmbTo"), "Pantry") << "where that exit leads";
        SetText(form, "cmbTo", "Cellar");
        EXPECT_FALSE(IsEnabled(form, "butOK")) << "the way to the pantry would be lost";
        way.setCurrentIndex(free);
        EXPECT_TRUE(IsEnabled(form, "butOK"));
        SetText(form, "cmbTo", "");
        EXPECT_FALSE(IsEnabled(form, "butOK"));
        SetText(form, "cmbTo", "Pantry");
        SetText(form, "cmbKey", "iron key");
        EXPECT_TRUE(IsEnabled(form, "butOK"));
        Click(form, "butOK");
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(p.game.Rooms.Count(), 2);
    EXPECT_EQ(p.game.Items.Count(), 1);
    EXPECT_EQ(p.Find<QAction>("mnuToolsUndo")->text(), "&Undo insert locked door");
    p.Trigger("mnuToolsUndo");
    EXPECT_EQ(GameFile(p.game), before);
}

TEST(StartWindow, BeginsWithACopyThatIsNeverWrittenOver) {
    RunningProgram p;
    p.Start();
    frmStart* start = p.program->StartWindow();
    const QStringList games = Rows(*start, "lstBegin");
    ASSERT_GE(games.size(), 9) << games.join(", ").toStdString();
    Click(*start, "butFirstGame");
    ASSERT_NE(p.program->ManualWindow(), nullptr);
    p.program->ManualWindow()->close();
    SelectRow(*start, "lstBegin", static_cast<int>(games.indexOf("A house")));
    EXPECT_NE(TextOf(*start, "lblAbout"), "");
    Click(*start, "butBegin");
    ASSERT_NE(p.Main(), nullptr);
    EXPECT_TRUE(p.Main()->isVisible());
    EXPECT_EQ(p.game.GameName, "The House");
    EXPECT_TRUE(p.game.FileName.empty()) << "a save would overwrite the template";
    p.dialogs.SaveFile({});
    p.Trigger("mnuFileSave");
    EXPECT_TRUE(p.game.FileName.empty());
}

} // namespace
} // namespace zem::test
