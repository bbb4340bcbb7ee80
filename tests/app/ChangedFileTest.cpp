#include "support/SmallGame.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string_view>

namespace zem::test {
namespace {

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

TEST(ChangedOnDisk, StopsWhatThreatensTheGameUntilTheAuthorHasDecided) {
    const QString unsaved =
        QStringLiteral("Game not saved: Do you want to save the changes you made to this game?");
    const QString unsavedRun =
        QStringLiteral("Game not saved: The current game has changed since it was last saved - if not saved "
                       "now, the last saved version will be executed instead. Save the current version now?");
    for (const char* command : {"mnuFileNew", "mnuFileOpen", "mnuFileExit", "mnuFileRunKELfile"}) {
        SCOPED_TRACE(command);
        RunningProgram p;
        p.StartWith(Small);
        DeleteRoom(p, 0);
        p.folder.Write("game.kel", Small + "'x\r\n");
        const bool isRun = std::string_view(command) == "mnuFileRunKELfile";
        p.dialogs.Message(isRun ? unsavedRun : unsaved, QMessageBox::Yes);
        p.dialogs.Choice(ChangedQuestion(p, "has been changed by another program"), -1);
        p.Trigger(command);
        EXPECT_TRUE(p.Main()->isVisible());
        EXPECT_TRUE(p.game.Modified);
        EXPECT_EQ(p.Rows("lstRooms"), QStringList{"Attic"});
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
} // namespace zem::test
