// What is selected in the lists stands beside them as a player reads it.
#include "panels/PreviewPanel.h"

#include "editors/frmRoomProperties.h"
#include "support/RunningProgram.h"

#include <QLabel>
#include <QTextBrowser>

namespace zem::test {
namespace {

const std::string PreviewedGame = CrLf(
    "define game <G>\nstart <Quay>\nend define\n"
    "define room <Quay>\nprefix <the>\nlook <Nets & ropes.>\nindescription  <You are on>\nnorth <Mole>\n"
    "east <Moon>\nsouth if flag <open> then goto <Mole>\nplace <the; Mole>\n"
    "define character <Yann>\nlook msg <He mends a net.>\nend define\n"
    "define object <net>\nend define\ndefine object <hook>\nhidden\nlook msg <Sharp.>\nend define\n"
    "end define\ndefine room <Mole>\nlook <Stones.>\nscript if first visit then msg <A gull!>\nend define\n");

struct Previewing : RunningProgram {
    Previewing() : RunningProgram(PreviewedGame) {
        Trigger("mnuToolsPreview");
        Select("lstRooms", 0);
    }

    PreviewPanel& Panel() const { return test::Find<PreviewPanel>(*Main(), "dckPreview"); }
    std::string Page() const {
        QCoreApplication::processEvents();
        return test::Find<QTextBrowser>(Panel(), "txtPreview").toPlainText().toStdString();
    }

    QLabel& Links() const { return test::Find<QLabel>(Panel(), "lblPreviewLinks"); }

    /// The links as they read.
    std::string LinksText() const {
        QCoreApplication::processEvents();
        QTextDocument text;
        text.setHtml(Links().text());
        return text.toPlainText().toStdString();
    }
};

TEST(PreviewPanel, ShowsWhatIsSelectedAndFollowsEveryChange) {
    Previewing p;
    EXPECT_EQ(p.Page(),
              "\nYou are on the Quay.\nNets & ropes.\nYou can see net.\nAlso here: Yann.\nYou can go "
              "north, south and to the Mole.\n");
    EXPECT_EQ(p.LinksText(),
              "Room: Quay\n"
              "Ways out: north to Mole, east to Moon, which does not exist, south by a script, "
              "place to Mole\n"
              "Here: Yann, net, hook (hidden)");
    p.Select("lstCharacters", 0);
    EXPECT_EQ(p.Page(), "He mends a net.\n");
    EXPECT_EQ(p.LinksText(), "The look of Yann");
    p.Select("lstRooms", 1);
    EXPECT_EQ(p.Page(), "\nMole\nStones.\nA gull!\n");
    p.Open<frmRoomProperties>("butEditRoom", [](frmRoomProperties& form) {
        SetText(form, "txtDescription", "Wet stones.");
        test::Click(form, "butOK");
    });
    EXPECT_EQ(p.Page(), "\nMole\nWet stones.\nA gull!\n");
    p.Click("butDeleteRoom");
    EXPECT_EQ(p.Page().substr(0, 22), "\nYou are on the Quay.\n");
    p.game.Modified = false;
    p.Trigger("mnuFileNew");
    EXPECT_EQ(p.Page(), "Select a room, a character or an object to see what a player reads.\n");
}

TEST(PreviewPanel, ItsLinksOpenTheEditors) {
    Previewing p;
    p.LinksText();
    std::string opened;
    WhenOpenLater<frmRoomProperties>([&](frmRoomProperties& form) { opened = TextOf(form, "txtRoomName"); });
    emit p.Links().linkActivated("2"); // the room in the north; the link before it is the exit
    EXPECT_TRUE(QTest::qWaitFor([&] { return !opened.empty(); }));
    EXPECT_EQ(opened, "Mole");
}

} // namespace
} // namespace zem::test
