// The open game is played beside its lists, and goes on when it is changed.
#include "panels/PlayPanel.h"

#include "editors/frmRoomProperties.h"
#include "panels/PlayFromDialog.h"
#include "panels/TraceView.h"
#include "player/InputLine.h"
#include "player/StoryPane.h"
#include "script/frmScriptLines.h"
#include "support/RunningProgram.h"

#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTextBlock>
#include <QTimer>
#include <QTreeWidget>

namespace zem::test {
namespace {

const std::string Game = CrLf("define game <The Shed>\nstart <Shed>\nitems <lamp; rope>\nstartitems <lamp>\n"
                              "collectables <coins p=5 [!]>\n"
                              "command <tie> do <tie>\ncommand <name> do <name>\nend define\n"
                              "define room <Shed>\nlook <Dust.>\nnorth <Yard>\n"
                              "define object <box>\nlook msg <A box.>\nend define\nend define\n"
                              "define room <Yard>\nlook <Mud.>\nsouth <Shed>\nend define\n"
                              "define room <Loft>\nlook <Hay.>\nend define\n"
                              "define procedure <tie>\n"
                              "if has <rope> then flag on <tied> else msg <You have no rope.>\n"
                              "if flag <tied> then give <nowt>\nend define\n"
                              "define procedure <name>\nask <who; Who?>\nset <mood; merry>\n"
                              "msg <Hello, #who#.>\nend define\n");

/// The editor with its play panel.
struct Playing : RunningProgram {
    explicit Playing(const std::string& game = Game) : RunningProgram(game) {
        Main()->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(Main()));
        Trigger("mnuToolsPlay");
    }

    PlayPanel& Panel() const { return test::Find<PlayPanel>(*Main(), "dckPlay"); }
    StoryPane& Story() const { return test::Find<StoryPane>(Panel(), "story"); }
    std::string Page() const { return Story().toPlainText().toStdString(); }

    void Type(const char* line) const {
        TypeText(Panel(), "input", line);
        PressKey(Panel(), "input", Qt::Key_Return);
    }

    /// What a line adds to the page.
    std::string Told(const char* line) const {
        const std::size_t before = Page().size();
        Type(line);
        return Page().substr(std::min(before, Page().size()));
    }

    void ShowTab(int tab) const { test::Find<QTabWidget>(Panel(), "tabPlay").setCurrentIndex(tab); }

    /// The rows of a list of two columns, "name=value".
    std::string Values(const char* list) const {
        std::string all;
        for (const auto* item :
             test::Find<QTreeWidget>(Panel(), list).findItems("*", Qt::MatchWildcard | Qt::MatchRecursive))
            all += (item->text(0) + u'=' + item->text(1) + QLatin1String("; ")).toStdString();
        return all;
    }

    std::string Status() const { return TextOf(Panel(), "lblPlay"); }

    /// Gives the selected room another text with its editor.
    void ChangeRoom(int row, const char* look) const {
        Select("lstRooms", row);
        Open<frmRoomProperties>("butEditRoom", [look](frmRoomProperties& form) {
            SetText(form, "txtDescription", look);
            test::Click(form, "butOK");
        });
        Main()->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(Main()));
    }
};

/// Does something that opens editors, and closes them once the window of a script is among them.
/// @return  the line that is selected in that window
std::string ScriptLineOpenedBy(const std::function<void()>& act) {
    std::string line;
    bool isOpen = false;
    int looks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        isOpen = window != nullptr;
        if (!isOpen)
            return;
        if (auto* script = qobject_cast<frmScriptLines*>(window))
            line = Rows(*script, "lstFriendlyLines")
                       .value(SelectedRow(*script, "lstFriendlyLines"))
                       .toStdString();
        if (!line.empty() || ++looks > 500)
            window->reject();
    });
    timer.start(5);
    act();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !line.empty() && !isOpen; }));
    return line;
}

enum Tab { Watch, Trace, Turns };

TEST(PlayPanel, PlaysTheGameAsItIsAndGoesOnInTheChangedOne) {
    Playing p;
    EXPECT_NE(p.Page().find("Dust."), std::string::npos) << p.Page();
    EXPECT_EQ(QApplication::focusWidget(), &test::Find<QWidget>(p.Panel(), "input"));
    EXPECT_NE(p.Told("north").find("Mud."), std::string::npos);
    p.ChangeRoom(1, "Flowers.");
    EXPECT_TRUE(p.game.Modified);
    const std::string before = p.Page();
    EXPECT_EQ(before.find("Flowers."), std::string::npos);
    QTest::keyClick(&test::Find<QWidget>(p.Panel(), "input"), Qt::Key_F9);
    EXPECT_NE(p.Page().substr(before.size()).find("Flowers."), std::string::npos) << p.Page();
    EXPECT_NE(p.Told("undo").size(), 0U);
    EXPECT_NE(p.Told("undo").size(), 0U);
    EXPECT_EQ(p.Status(), "Shed, 0 turns") << "taking back goes over the change";
    EXPECT_NE(p.Told("north").find("Flowers."), std::string::npos);

    p.Trigger("mnuToolsUndo"); // of the editor
    QCoreApplication::processEvents();
    EXPECT_NE(p.Told("look").find("Mud."), std::string::npos);
    p.Select("lstRooms", 1);
    p.Click("butDeleteRoom");
    QCoreApplication::processEvents();
    EXPECT_NE(p.Page().find("the room \"Yard\" is gone, and what happened to it with it"), std::string::npos);
    EXPECT_NE(p.Told("look").find("Dust."), std::string::npos);
}

TEST(PlayPanel, FollowsARenameAndAnotherGameEndsPlay) {
    Playing p;
    p.Type("north");
    p.game.Rooms.Edit(2).Name = "Garden";
    p.ChangeRoom(0, "Straw."); // Any command tells that the game has changed.
    EXPECT_EQ(p.Status().substr(0, 6), "Garden");
    EXPECT_EQ(p.Page().find("gone"), std::string::npos) << p.Page();
    p.game.Modified = false;
    p.Trigger("mnuFileNew");
    QCoreApplication::processEvents();
    EXPECT_FALSE(test::IsEnabled(p.Panel(), "input"));
    p.Trigger("mnuToolsPlay");
    EXPECT_NE(p.Page().find("it has no start room."), std::string::npos) << p.Page();
}

TEST(PlayPanel, PlaysFromARoomWithWhatIsChosen) {
    Playing p;
    p.Select("lstRooms", 2);
    p.Trigger("mnuToolsPlayRoom");
    EXPECT_NE(p.Page().find("Hay."), std::string::npos);
    EXPECT_EQ(p.Page().find("Dust."), std::string::npos);
    p.Trigger("mnuToolsPlay");
    EXPECT_EQ(p.Status(), "Loft, 0 turns") << "a game that runs goes on";

    WhenOpen<PlayFromDialog>([](PlayFromDialog& form) {
        EXPECT_EQ(TextOf(form, "cmbPlayRoom"), "Loft");
        SetText(form, "cmbPlayRoom", "Moon");
        EXPECT_FALSE(test::IsEnabled(form, "butOK"));
        SetText(form, "cmbPlayRoom", "Yard");
        auto& values = test::Find<QTreeWidget>(form, "lstPlayValues");
        const auto find = [&](const char* name) {
            return values.findItems(name, Qt::MatchExactly | Qt::MatchRecursive).value(0);
        };
        EXPECT_EQ(find("lamp")->checkState(0), Qt::Checked);
        find("lamp")->setCheckState(0, Qt::Unchecked);
        find("rope")->setCheckState(0, Qt::Checked);
        find("tied")->setCheckState(0, Qt::Checked);
        find("mood")->setText(1, "grim");
        test::Click(form, "butOK");
    });
    p.Trigger("actPlayFrom");
    EXPECT_NE(p.Page().find("Mud."), std::string::npos);
    EXPECT_EQ(p.Told("i"), "> i\nYou are carrying rope.\n5\n");
    EXPECT_EQ(p.Values("lstWatch"), "item lamp=not had; item rope=had; flag tied=on; variable mood=grim; ");
}

TEST(PlayPanel, PlaysFromTheLastVisitOfARoom) {
    Playing p;
    for (const char* line : {"north", "name", "Ann", "south", "name", "Bob"})
        p.Type(line);
    WhenOpen<PlayFromDialog>([](PlayFromDialog& form) {
        SetText(form, "cmbPlayRoom", "Loft");
        EXPECT_FALSE(test::IsEnabled(form, "optLastVisit")) << "he was never there";
        SetText(form, "cmbPlayRoom", "Yard");
        test::Click(form, "optLastVisit");
        test::Click(form, "butOK");
    });
    p.Trigger("actPlayFrom");
    EXPECT_EQ(p.Status(), "Yard, 2 turns");
    EXPECT_NE(p.Values("lstWatch").find("variable who=Bob → Ann;"), std::string::npos)
        << p.Values("lstWatch");
}

TEST(PlayPanel, WatchMarksWhatTheTurnChangedAndSetsValuesByHand) {
    Playing p;
    p.Type("name");
    p.Type("Ann");
    EXPECT_EQ(p.Values("lstWatch"), "variable mood=now merry; variable who=now Ann; ");
    p.Type("name");
    p.Type("Bob");
    EXPECT_EQ(p.Values("lstWatch"), "variable mood=merry; variable who=Ann → Bob; ");
    TypeText(p.Panel(), "txtWatch", "o");
    EXPECT_EQ(p.Values("lstWatch"), "item rope=not had; object box=Shed; variable mood=merry; "
                                    "variable who=Ann → Bob; collectable coins=5; ");
    auto& list = test::Find<QTreeWidget>(p.Panel(), "lstWatch");
    const auto activate = [&](int row) {
        list.setFocus();
        list.setCurrentItem(list.topLevelItem(row));
        QTest::keyClick(&list, Qt::Key_Return);
    };
    activate(0); // What has two values becomes the other.
    EXPECT_NE(p.Told("i").find("lamp and rope."), std::string::npos);
    activate(1);
    auto* box = qobject_cast<QLineEdit*>(p.Main()->focusWidget());
    ASSERT_NE(box, nullptr);
    box->setText("Yard, hidden");
    QTest::keyClick(box, Qt::Key_Return);
    QTest::qWait(50); // The box closes first, and then the value is set.
    EXPECT_NE(p.Values("lstWatch").find("Yard, hidden"), std::string::npos) << p.Values("lstWatch");
    activate(1);
    box = qobject_cast<QLineEdit*>(p.Main()->focusWidget());
    ASSERT_NE(box, nullptr);
    box->setText("Moon");
    QTest::keyClick(box, Qt::Key_Return);
    QTest::qWait(50); // The box closes first, and then the value is set.
    EXPECT_NE(p.Page().find("\"Moon\" is no value that this can have."), std::string::npos);
    p.Type("undo");
    EXPECT_NE(p.Values("lstWatch").find("object box=Shed"), std::string::npos) << p.Values("lstWatch");
}

TEST(PlayPanel, TraceSaysWhyAndReturnOpensTheLine) {
    Playing p;
    p.ShowTab(Trace);
    p.Type("tie");
    EXPECT_EQ(p.Values("trcTurn"), "player command tie, action=; Run the procedure \"tie\"=; "
                                   "If the player has \"rope\"=false; then: Set the flag \"tied\"=not run; "
                                   "Print \"You have no rope.\"=; If the flag \"tied\" is set=false; "
                                   "then: Give the player \"nowt\"=not run; ");
    auto& trace = test::Find<QTreeWidget>(p.Panel(), "trcTurn");
    trace.setFocus();
    trace.setCurrentItem(trace.findItems("*rope*", Qt::MatchWildcard | Qt::MatchRecursive).value(0));
    const std::string line = ScriptLineOpenedBy([&] { QTest::keyClick(&trace, Qt::Key_Return); });
    EXPECT_EQ(line.find("If the player has \"rope\""), 0U) << line;

    auto& watch = test::Find<QTreeWidget>(p.Panel(), "lstWatch");
    TypeText(p.Panel(), "txtWatch", "item rope");
    watch.setCurrentItem(watch.topLevelItem(0));
    emit watch.itemActivated(watch.topLevelItem(0), 1);
    p.Type("tie");
    EXPECT_NE(p.Values("trcTurn").find("If the player has \"rope\"=true; Set the flag \"tied\"=; "),
              std::string::npos);
    EXPECT_NE(p.Values("trcTurn").find("Give the player \"nowt\"=there is no item \"nowt\"; "),
              std::string::npos);
    EXPECT_NE(p.Page().find("procedure tie, script, line 2: there is no item \"nowt\""), std::string::npos);
}

TEST(PlayPanel, GoesToAnyTurnAndPlaysOneAgainAfterAnEdit) {
    Playing p;
    p.ShowTab(Turns);
    for (const char* line : {"name", "Ann", "north", "look"})
        p.Type(line);
    const auto turns = [&] { return Rows(p.Panel(), "lstTurns").join(u'|').toStdString(); };
    EXPECT_EQ(turns(), "the beginning|1  name / Ann|2  north|3  look");
    const auto choose = [&](int row, const char* button) {
        SelectRow(p.Panel(), "lstTurns", row);
        test::Click(p.Panel(), button);
    };
    choose(1, "butGoToTurn");
    EXPECT_EQ(turns(), "the beginning|1  name / Ann|2  north (taken back)|3  look (taken back)");
    EXPECT_EQ(p.Status(), "Shed, 1 turn");
    p.ChangeRoom(1, "Flowers.");
    choose(3, "butGoToTurn");
    EXPECT_EQ(p.Status(), "Yard, 3 turns");
    EXPECT_NE(p.Page().find("> north\n\nYard\nFlowers."), std::string::npos) << p.Page();
    p.ChangeRoom(1, "Stones.");
    choose(2, "butPlayAgain");
    EXPECT_EQ(p.Status(), "Yard, 2 turns");
    EXPECT_NE(p.Page().find("> north\n\nYard\nStones."), std::string::npos) << p.Page();
    EXPECT_EQ(turns(), "the beginning|1  name / Ann|2  north|3  look (taken back)");
    p.Type("name"); // A question is open.
    choose(0, "butGoToTurn");
    EXPECT_EQ(p.Status(), "Shed, 0 turns");
}

TEST(PlayPanel, AClickOnAWordTellsWhereItWasPrinted) {
    Playing p;
    p.Type("x box");
    const QTextCursor word = p.Story().document()->find("A box.");
    ASSERT_FALSE(word.isNull());
    const QPoint at = p.Story().cursorRect(word).center() - QPoint(4, 0);
    QTest::mouseClick(p.Story().viewport(), Qt::LeftButton, {}, at);
    EXPECT_EQ(TextOf(p.Panel(), "lblPrinted"), "From object box in Shed, look");
    p.ChangeRoom(0, "Dust and straw."); // What is on the page still leads there.
    QTest::mouseClick(p.Story().viewport(), Qt::LeftButton, {}, at);
    EXPECT_EQ(ScriptLineOpenedBy([&] { test::Click(p.Panel(), "butOpenPrinted"); }), "Print \"A box.\"");
}

} // namespace
} // namespace zem::test
