#include "support/SmallGame.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace zem::test {
namespace {

enum Choice { Cancel = -1, KeepMine, AnotherName, Reload };

void ExpectQuestion(RunningProgram& p, Choice answer,
                    const char* what = "has been changed by another program", const char* more = "|&Reload") {
    p.dialogs.Choice(QString("File changed: The file %1 %2 since it was opened or saved here. "
                             "[&Keep mine|Save mine under &another name...%3]")
                         .arg(p.Path("game.kel"), what, more),
                     answer);
}

TEST(ChangedOnDisk, IsToldBeforeASaveOverwritesIt) {
    const std::string theirs = CrLf("define game <Theirs>\nstart <Hall>\nend define\n");
    for (const Choice choice : {Cancel, KeepMine, AnotherName, Reload}) {
        RunningProgram p(Small);
        DeleteRoom(p, 0);
        p.folder.Write("game.kel", theirs);
        ExpectQuestion(p, choice);
        if (choice == AnotherName)
            p.dialogs.SaveFile(p.Path("mine.kel"));
        p.Trigger("mnuFileSave");
        EXPECT_EQ(p.Saved() == theirs, choice != KeepMine);
        EXPECT_EQ(std::filesystem::exists(p.folder.Path("mine.kel")), choice == AnotherName);
        EXPECT_EQ(p.game.GameName, choice == Reload ? "Theirs" : "Tower");
        EXPECT_EQ(p.game.Modified, choice == Cancel);
    }
}

TEST(ChangedOnDisk, StopsWhatThreatensTheGameUntilTheAuthorHasDecided) {
    for (const auto& [command, question] : {std::pair("mnuFileNew", UnsavedQuestion),
                                            {"mnuFileExit", UnsavedQuestion},
                                            {"mnuFileRunKELfile", UnsavedRunQuestion}}) {
        SCOPED_TRACE(command);
        RunningProgram p(Small);
        DeleteRoom(p, 0);
        p.folder.Write("game.kel", Small + "'x\r\n");
        p.dialogs.Message(question, QMessageBox::Yes);
        ExpectQuestion(p, Cancel);
        p.Trigger(command);
        EXPECT_TRUE(p.Main()->isVisible());
        EXPECT_TRUE(p.game.Modified);
        EXPECT_EQ(p.Rows("lstRooms"), QStringList{"Attic"});
    }
}

TEST(ChangedOnDisk, IsToldOnceOnReturnToTheWindow) {
    RunningProgram p(Small);
    const auto comeBack = [&p] {
        QEvent event(QEvent::ActivationChange);
        p.Main()->activateWindow();
        QApplication::setActiveWindow(p.Main());
        QApplication::sendEvent(p.Main(), &event);
        QCoreApplication::processEvents();
        p.dialogs.ExpectAllAsked();
    };
    comeBack(); // nothing has changed
    p.folder.Write("game.kel", Small);
    comeBack(); // the same content
    p.folder.Write("game.kel", Small + "'x\r\n");
    ExpectQuestion(p, Cancel);
    comeBack();
    comeBack();
    EXPECT_FALSE(p.game.Modified);
    p.folder.Write("game.kel", Small + "'xyz\r\n");
    ExpectQuestion(p, KeepMine);
    comeBack();
    EXPECT_TRUE(p.game.Modified) << "the file holds something else";
    p.Trigger("mnuFileSave"); // asks nothing more
    std::filesystem::remove(p.folder.Path("game.kel"));
    ExpectQuestion(p, KeepMine, "is not there any more", "");
    comeBack();
    EXPECT_TRUE(p.game.Modified);
}

} // namespace
} // namespace zem::test
