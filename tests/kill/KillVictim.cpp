// The editor with a pair of hands: it opens a game, restores what an earlier run has left behind if the file
// does not hold that, and edits and saves through the windows until it is killed. It reports on standard
// output.
//
//   KillVictim FILE STATE-FOLDER SEED
#include "editors/frmRoomProperties.h"
#include "support/RunningProgram.h"
#include "support/WhenOpen.h"
#include "windows/frmRecovery.h"

#include <QTreeWidget>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

namespace zem::test {
namespace {

/// The number of the last edit that the game holds; each is the alias of a room.
int LastEdit(const GameModel& game) {
    int last = 0;
    for (const Room& room : game.Rooms)
        last = std::max(last, std::atoi(room.Alias.c_str()));
    return last;
}

/// Reports with the time in milliseconds, by the monotonic clock that KillTest reads, too.
void Say(const char* what, int number) {
    using namespace std::chrono;
    const auto now = duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
    std::printf("%s %d %lld\n", what, number, static_cast<long long>(now));
    std::fflush(stdout);
}

/// Keeps the file when the newest copy is older than it, else restores the copy.
void AnswerOffer() {
    QTimer::singleShot(0, [] {
        const auto* form = qobject_cast<frmRecovery*>(QApplication::activeModalWidget());
        if (form == nullptr)
            return;
        auto& copies = Find<QTreeWidget>(*form, "lstCopies");
        copies.setCurrentItem(copies.topLevelItem(0));
        const bool isInFile = copies.topLevelItem(0)->text(3).startsWith(QLatin1String("Has been changed"));
        Find<QPushButton>(*form, isInFile ? "butKeep" : "butRestore").click();
    });
}

/// Edits a room or saves, and so on for ever.
void GoOn(RunningProgram& p, std::mt19937& random) {
    QTimer::singleShot(static_cast<int>(random() % 60), p.Main(), [&] {
        if (random() % 12 == 0) {
            p.Trigger("mnuFileSave");
        } else {
            const int edit = LastEdit(p.game) + 1;
            auto* rooms = p.Find<QAbstractItemView>("lstRooms");
            rooms->setCurrentIndex(rooms->model()->index(static_cast<int>(random() % 50), 0));
            const int stay = random() % 4 == 0 ? static_cast<int>(random() % 2500) : 0;
            WhenOpen<frmRoomProperties>([edit, stay](frmRoomProperties& form) {
                SetText(form, "txtRoomAlias", std::to_string(edit).c_str());
                Say("edit", edit);
                QTest::qWait(stay); // typed and not confirmed
                Find<QPushButton>(form, "butOK").click();
            });
            p.Find<QPushButton>("butEditRoom")->click();
        }
        GoOn(p, random);
    });
}

int Run(const std::string& file, const char* stateFolder, unsigned seed) {
    Say("file", LastEdit(LoadBytes(ReadBytes(file))));
    RunningProgram p;
    p.program = std::make_unique<Program>(p.game, p.store, p.dialogs, p.programFolder, PathToQt(stateFolder));
    AnswerOffer();
    p.program->Main(PathToQt(file));
    Say("open", LastEdit(p.game));
    std::mt19937 random(seed);
    GoOn(p, random);
    return QApplication::exec();
}

} // namespace
} // namespace zem::test

int main(int argc, char** argv) {
    if (argc != 4)
        return 2;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const QApplication application(argc, argv);
    testing::FLAGS_gtest_break_on_failure = true; // An unexpected message ends the program.
    try {
        return zem::test::Run(argv[1], argv[2], static_cast<unsigned>(std::atoi(argv[3])));
    } catch (const std::exception& error) {
        std::printf("fault: %s\n", error.what());
        return 1;
    }
}
