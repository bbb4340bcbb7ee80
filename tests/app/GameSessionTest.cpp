#include "app/GameSession.h"

#include "forms/CommandError.h"
#include "forms/QtText.h"
#include "support/Games.h"

#include <QSettings>

#include <gtest/gtest.h>
#include <new>
#include <vector>

namespace zem::test {
namespace {

class GameSessionTest : public testing::Test {
protected:
    TempFolder folder;
    RecordingHost host;
    QSettings store{PathToQt(folder.Path("settings.ini")), QSettings::IniFormat};
    Settings settings{store, {}};
    GameModel game;
    GameSession session{game, host, settings};
};

TEST_F(GameSessionTest, TellsEachChangeWithTheGameBeforeAndAfter) {
    std::vector<GameChange> changes;
    QObject::connect(&session, &GameSession::Changed,
                     [&](const GameChange& change) { changes.push_back(change); });
    session.Change("add room", [](GameModel& model) { model.Rooms.Append().Name = "Hall"; });
    ASSERT_EQ(changes.size(), 1u);
    EXPECT_EQ(changes[0].name, "add room");
    EXPECT_EQ(changes[0].before.Rooms.Count(), 0);
    EXPECT_EQ(changes[0].after.Rooms[1].Name, "Hall");

    // A command that fails half-way leaves the game as it was.
    EXPECT_THROW(session.Change("fail",
                                [](GameModel& model) {
                                    model.Rooms.Remove(1);
                                    model.Rooms.Remove(1);
                                }),
                 KelError);
    EXPECT_EQ(changes.size(), 1u);
    EXPECT_EQ(game.Rooms.Count(), 1);
}

// As when the memory does not suffice: nothing of the game that was open must be left in the session.
TEST(GameSession, HoldsNoGameAfterALoadThatEndedInWhateverError) {
    class HostWithoutMemory : public SilentHost {
    public:
        bool isFull = false;
        void ShowStage(const std::string& text) override {
            if (isFull && text == "Initializing room data...")
                throw std::bad_alloc();
        }
    };
    const test::TempFolder folder;
    const QString path = PathToQt(folder.Write("game.kel", "define room <Hall>\nend define\n"));
    HostWithoutMemory host;
    QSettings store(PathToQt(folder.Path("settings.ini")), QSettings::IniFormat);
    Settings settings(store, {});
    GameModel game;
    GameSession session(game, host, settings);
    session.LoadGame(path);
    session.Change(QStringLiteral("add room"), [](GameModel& model) { model.Rooms.Append(); });
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
    const QString path = PathToQt(folder.Write("game.kel", "define game <x>\nstart <Hall>\nend define\n"));
    EXPECT_TRUE(session.LoadGame(path));
    session.MarkModified();
    session.SaveGame(path);
    EXPECT_FALSE(game.Modified);
    ASSERT_EQ(host.notices.size(), 1u);
    EXPECT_EQ(host.stages.back(), "closed");
}

} // namespace
} // namespace zem::test
