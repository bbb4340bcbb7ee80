#include "session/GameSession.h"

#include "forms/RunCommand.h"
#include "qt/QtText.h"
#include "support/Games.h"

#include <QSettings>

#include <gtest/gtest.h>
#include <new>

namespace zem::test {
namespace {

class HostWithLittleMemory : public RecordingHost {
public:
    bool isFull = false;
    void ShowStage(const std::string& text) override {
        RecordingHost::ShowStage(text);
        if (isFull && text == "Initializing room data...")
            throw std::bad_alloc();
    }
};

class GameSessionTest : public testing::Test {
protected:
    TempFolder folder;
    HostWithLittleMemory host;
    QSettings store{PathToQt(folder.Path("settings.ini")), QSettings::IniFormat};
    Settings settings{store, {}};
    GameModel game;
    GameSession session{game, host, settings};
    QString path = PathToQt(folder.Write("game.kel", "define game <x>\nstart <Hall>\nend define\n"));
};

TEST_F(GameSessionTest, LeavesTheGameAsItWasWhenACommandFailsHalfWay) {
    session.Change([](GameModel& model) { model.Rooms.Append().Name = "Hall"; });
    EXPECT_THROW(session.Change([](GameModel& model) {
        model.Rooms.Remove(1);
        model.Rooms.Remove(1);
    }),
                 KelError);
    EXPECT_EQ(game.Rooms.Count(), 1);
}

// As when the memory does not suffice: nothing of the game that was open must be left in the session.
TEST_F(GameSessionTest, HoldsNoGameAfterALoadThatEndedInWhateverError) {
    session.LoadGame(path);
    session.Change([](GameModel& model) { model.Rooms.Append(); });
    int shownRooms = session.Game().Rooms.Count();
    QObject::connect(&session, &GameSession::Replaced, [&] { shownRooms = session.Game().Rooms.Count(); });
    host.isFull = true;
    EXPECT_THROW(session.LoadGame(path), CommandError);
    EXPECT_EQ(shownRooms, 0);
    EXPECT_EQ(session.Steps().Count(), 0u);
    EXPECT_FALSE(session.Stamp().Exists());
}

// The list of recent files may be set to hold nothing; the game is loaded and saved all the same.
TEST_F(GameSessionTest, SaysOnceThatThereIsNoRoomForRecentFiles) {
    store.setValue("Editor/MaxRecent", 0);
    settings.LoadSettings();
    EXPECT_TRUE(session.LoadGame(path));
    session.MarkModified();
    session.SaveGame(path);
    EXPECT_FALSE(game.Modified);
    EXPECT_EQ(host.notices.size(), 1u);
    EXPECT_EQ(host.stages.back(), "closed");
}

} // namespace
} // namespace zem::test
