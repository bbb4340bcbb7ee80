#include "player/PlayerWindow.h"

#include "play/Libraries.h"
#include "player/InputLine.h"
#include "player/PlayControl.h"
#include "player/StoryColours.h"
#include "player/StoryPane.h"
#include "qt/QtText.h"
#include "reader/LoadGame.h"
#include "support/Contrast.h"
#include "support/Controls.h"
#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"

#include <QAction>
#include <QListWidget>
#include <QSettings>
#include <QtTest>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

constexpr const char* Shed = R"(define game <The Shed>
start <Shed>
items <lamp>
startitems <lamp>
command <shop> choose <shop>
command <nap> do <nap>
command <name> do <name>
command <paint> msg <|crred|cb and |bbold|xb>
command <end> win
end define
define room <Shed>
prefix <the>
look <Dust.>
indescription <You are in>
north <Yard>
end define
define room <Yard>
prefix <the>
look <Mud.>
indescription <You are in>
south <Shed>
end define
define procedure <nap>
msg <You lie down.>
pause <60>
msg <You get up.>
end define
define procedure <name>
ask <who; Your name?>
msg <Hello, #who#.>
end define
define text <intro>
Long ago.
end define
define selection <shop>
info <Buy?>
choice <rope> msg <Rope it is.>
choice <nails> msg <Nails it is.>
end define
)";

/// The window with a game in a folder of its own.
struct OpenPlayer {
    TempFolder folder;
    QSettings store{PathToQt(folder.Path("settings.ini")), QSettings::IniFormat};
    ScriptedDialogs dialogs;
    PlayerWindow window{store, dialogs, [](const QString& path) {
                            GameModel game;
                            play::NameMessages(game);
                            ReadGame(game, ReadBytes(PathFromQt(path)));
                            return play::World::Compile({std::move(game), {}, {}, {}});
                        }};

    OpenPlayer() {
        window.show();
        EXPECT_TRUE(window.Open(PathToQt(folder.Write("shed.kel", Shed))));
    }

    StoryPane& Story() { return Find<StoryPane>(window, "story"); }
    InputLine& Input() { return Find<InputLine>(window, "input"); }
    std::string Page() { return Story().toPlainText().toStdString(); }

    /// What a line adds to the page.
    std::string Type(const char* line) {
        const std::string before = Page();
        QTest::keyClicks(&Input(), QLatin1String(line));
        QTest::keyClick(&Input(), Qt::Key_Return);
        const std::string page = Page();
        return page.starts_with(before) ? page.substr(before.size()) : page;
    }

    QStringList Rows(const char* list) { return test::Rows(window, list); }
};

TEST(PlayerWindow, PlaysWhatIsTypedAndClicked) {
    OpenPlayer p;
    EXPECT_EQ(p.window.windowTitle(), QStringLiteral("The Shed - Veldt"));
    EXPECT_NE(p.Page().find("Long ago."), std::string::npos);
    EXPECT_EQ(p.Rows("carried"), QStringList{"lamp"});
    EXPECT_EQ(p.Rows("exits"), QStringList{"north"});

    auto& exits = Find<QListWidget>(p.window, "exits");
    emit exits.itemActivated(exits.item(0));
    EXPECT_NE(p.Page().find("> north\n\nYou are in the Yard.\nMud."), std::string::npos) << p.Page();
    EXPECT_EQ(p.Rows("exits"), QStringList{"south"});

    EXPECT_NE(p.Type("shop").find("Buy?"), std::string::npos);
    emit p.Story().ChoiceChosen(2);
    EXPECT_NE(p.Page().find("Nails it is."), std::string::npos);
    EXPECT_NE(p.Type("name").find("Your name?"), std::string::npos);
    EXPECT_NE(p.Type("Ann").find("Hello, Ann."), std::string::npos);
}

TEST(PlayerWindow, PausesUntilAKeyIsPressed) {
    OpenPlayer p;
    const std::string begun = p.Type("nap");
    EXPECT_NE(begun.find("You lie down."), std::string::npos);
    EXPECT_EQ(begun.find("You get up."), std::string::npos);
    QTest::keyClick(&p.Input(), Qt::Key_Space);
    EXPECT_NE(p.Page().find("You get up."), std::string::npos);
    EXPECT_EQ(p.Input().text(), QString()) << "the key was no letter of a line";
}

TEST(PlayerWindow, TakesTurnsBackAndGoesOnFromASavedGame) {
    OpenPlayer p;
    p.Type("north");
    const QString file = PathToQt(p.folder.Path("a.kelsave"));
    p.dialogs.SaveFile(file);
    Find<QAction>(p.window, "save").trigger();
    p.Type("south");
    EXPECT_EQ(p.Rows("exits"), QStringList{"north"});
    Find<QAction>(p.window, "undo").trigger();
    EXPECT_EQ(p.Rows("exits"), QStringList{"south"});
    Find<QAction>(p.window, "undo").trigger();
    EXPECT_EQ(p.Rows("exits"), QStringList{"north"});
    p.dialogs.OpenFile(file);
    Find<QAction>(p.window, "restore").trigger();
    EXPECT_EQ(p.Rows("exits"), QStringList{"south"});

    p.folder.Write("bad.kelsave", "no saved game");
    p.dialogs.OpenFile(PathToQt(p.folder.Path("bad.kelsave")));
    Find<QAction>(p.window, "restore").trigger();
    EXPECT_NE(p.Page().find("That game could not be opened."), std::string::npos);
    EXPECT_EQ(p.Rows("exits"), QStringList{"south"});

    EXPECT_NE(p.Type("end").find("You have won."), std::string::npos);
}

TEST(PlayerWindow, BringsEarlierLinesBackAndCompletesWordsOnlyWhenAskedTo) {
    OpenPlayer p;
    p.Type("north");
    p.Type("look");
    QTest::keyClick(&p.Input(), Qt::Key_Up);
    QTest::keyClick(&p.Input(), Qt::Key_Up);
    EXPECT_EQ(p.Input().text(), QStringLiteral("north"));
    QTest::keyClick(&p.Input(), Qt::Key_Down);
    EXPECT_EQ(p.Input().text(), QStringLiteral("look"));
    p.Input().clear();

    QTest::keyClicks(&p.Input(), QStringLiteral("la"));
    EXPECT_EQ(p.Input().text(), QStringLiteral("lamp"));
    QTest::keyClick(&p.Input(), Qt::Key_Return);
    EXPECT_NE(p.Page().find("> la\n"), std::string::npos) << "an offer is not typed by itself: " << p.Page();
    QTest::keyClicks(&p.Input(), QStringLiteral("look at la"));
    QTest::keyClick(&p.Input(), Qt::Key_Tab);
    EXPECT_EQ(p.Input().text(), QStringLiteral("look at lamp "));
}

TEST(PlayerWindow, CompletesTheWordsThatTheGameAllowsAtTheMoment) {
    OpenPlayer p;
    QTest::keyClicks(&p.Input(), QStringLiteral("no"));
    EXPECT_EQ(p.Input().text(), QStringLiteral("north"));
    QTest::keyClick(&p.Input(), Qt::Key_Tab);
    QTest::keyClick(&p.Input(), Qt::Key_Return);
    QTest::keyClicks(&p.Input(), QStringLiteral("no"));
    EXPECT_EQ(p.Input().text(), QStringLiteral("no")) << "from the yard no way leads north";
    p.Input().clear();
    QTest::keyClicks(&p.Input(), QStringLiteral("so"));
    EXPECT_EQ(p.Input().text(), QStringLiteral("south"));
}

TEST(PlayerWindow, TellsWhyAGameDoesNotOpenAndKeepsTheOneThatIsPlayed) {
    OpenPlayer p;
    const QString path = PathToQt(p.folder.Write("bad.kel", "define room <X>\r\n"));
    p.dialogs.Message(
        QStringLiteral("Veldt: bad.kel: line 1: this block has no \"end define\": define room <X>"));
    EXPECT_FALSE(p.window.Open(path));
    EXPECT_NE(p.Type("north").find("Mud."), std::string::npos);
}

TEST(StoryColours, CanBeReadOnEveryPage) {
    for (const bool isDark : {false, true}) {
        QPalette palette;
        palette.setColor(QPalette::Base, isDark ? QColor(0x1B, 0x1D, 0x20) : QColor(0xFF, 0xFE, 0xFB));
        for (const char* name : {"Red", "blue", "YELLOW", "green", "grey"}) {
            const QColor tone = ToneOf(name, palette);
            ASSERT_TRUE(tone.isValid()) << name;
            EXPECT_GE(Contrast(tone, palette.color(QPalette::Base)), 4.3) << name; // 4.5 by a finer measure
        }
        for (const char* name : {"black", "white", "no such colour", "", "#ff0000"})
            EXPECT_FALSE(ToneOf(name, palette).isValid()) << name;
    }
}

} // namespace
} // namespace zem::test
