// What the main window says without a box.
#include "forms/MessageBar.h"

#include "support/Cases.h"
#include "support/SmallGame.h"
#include "windows/frmVersions.h"

#include <QTreeWidget>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

/// The texts of the bars that are to be seen.
QStringList Bars(const RunningProgram& p) {
    QStringList texts;
    for (const MessageBar* bar : p.Main()->findChildren<MessageBar*>())
        if (bar->isVisible())
            texts.append(bar->Text());
    return texts;
}

TEST(MessageBars, OfferTheGameThatAFailedLoadHasEmptied) {
    RunningProgram p(Small);
    DeleteRoom(p, 0);
    const QString bad = PathToQt(p.folder.Write("bad.kel", "define game <x>\nstart Hall\nend define\n"));
    const QString message = "Failed to load game: bad.kel, line 2: a parameter in angle brackets is missing: "
                            "start Hall.";
    for (const bool isClosed : {true, false}) {
        p.dialogs.Message(UnsavedQuestion, QMessageBox::No);
        p.dialogs.OpenFile(bad);
        p.dialogs.Message(message);
        p.Trigger("mnuFileOpen");
        EXPECT_EQ(Bars(p),
                  QStringList{
                      QStringLiteral("The game that was open before is kept: %1.").arg(p.Path("game.kel"))});
        auto* bar = p.Find<MessageBar>("MessageBar");
        EXPECT_EQ(bar->accessibleName(), bar->Text());
        auto* button = bar->findChild<QPushButton*>();
        if (isClosed) {
            button->setFocus();
            QTest::keyClick(button, Qt::Key_Escape);
            EXPECT_TRUE(Bars(p).isEmpty());
            p.Main()->OpenFile(p.Path("game.kel"));
            DeleteRoom(p, 0);
        } else {
            QTest::mouseClick(button, Qt::LeftButton);
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    EXPECT_TRUE(Bars(p).isEmpty());
    EXPECT_EQ(p.Rows("lstRooms"), QStringList{"Attic"});
    EXPECT_EQ(UndoText(p), "&Undo delete room, -");
    EXPECT_TRUE(p.game.Modified);
}

TEST(MessageBars, CountWhatTheFirstSaveOfAFileLeavesOut) {
    const char* const start = "A file that ZEM saves has no room for ";
    for (const auto& [lines, said] : Cases<const char*, const char*>{
             {"", ""},
             {"' one\n", "1 comment: "},
             {"one\n' two\n\n!include <x>\n' three\nfour\n", "2 comments and 2 lines outside of blocks: "},
             {"one\n", "1 line outside of blocks: "},
         }) {
        RunningProgram p(lines + Small);
        p.Trigger("mnuFileSave");
        ASSERT_EQ(Bars(p).size(), *said == '\0' ? 0 : 1) << lines;
        if (*said == '\0')
            continue;
        EXPECT_TRUE(Bars(p).constFirst().startsWith(QLatin1String(start) + QLatin1String(said)))
            << Bars(p).constFirst().toStdString();
        WhenOpen<frmVersions>([](frmVersions& form) {
            EXPECT_EQ(Find<QTreeWidget>(form, "lstVersions").topLevelItem(1)->text(2),
                      "before Zem changed it");
        });
        QTest::mouseClick(p.Find<MessageBar>("MessageBar")->findChild<QPushButton*>(), Qt::LeftButton);
        QTest::mouseClick(p.Find<QAbstractButton>("butCloseMessage"), Qt::LeftButton);
        EXPECT_TRUE(Bars(p).isEmpty());
    }
}

TEST(StatusBar, AlwaysShowsWhetherTheGameIsSaved) {
    RunningProgram p(Small);
    const auto saved = [&p] { return TextOf(*p.Main(), "lblSaved"); };
    EXPECT_EQ(saved(), "Saved");
    DeleteRoom(p, 0);
    EXPECT_EQ(saved(), "Not saved");
    p.Select("lstRooms", 0);
    EXPECT_EQ(p.Status(), "Selected room 'Attic'");
    EXPECT_EQ(saved(), "Not saved");
    p.Trigger("mnuToolsUndo");
    EXPECT_EQ(saved(), "Saved");
    p.Trigger("mnuToolsRedo");
    p.Trigger("mnuFileSave");
    EXPECT_EQ(saved(), "Saved");
    p.Trigger("mnuFileNew");
    EXPECT_EQ(saved(), "New game");
}

} // namespace
} // namespace zem::test
