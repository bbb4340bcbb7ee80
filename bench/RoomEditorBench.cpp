// Opening the room editor from the main window up to its first painting, and closing it with OK up to the
// refilled room list, in a game of 32,767 rooms as ratios to the same in a game of 100. Both games are open
// at once and measured in turn, offscreen; the exits of the room lead to the last one.
#include "Clock.h"
#include "app/Program.h"
#include "forms/Dialogs.h"
#include "model/GameModel.h"
#include "windows/frmMain.h"

#include <QApplication>
#include <QListView>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>

#include <benchmark/benchmark.h>
#include <fstream>
#include <string>

namespace zem::bench {
namespace {

/// The running editor with a game of so many rooms, the first of them selected.
class OpenGame {
public:
    explicit OpenGame(int rooms)
        : store_(folder_.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat),
          program_(game_, store_, dialogs_, QStringLiteral(ZEM_PROGRAM_FOLDER), folder_.path()) {
        store_.setValue(QStringLiteral("Init/InstalledVer"), QStringLiteral("yes"));
        const QString path = folder_.filePath(QStringLiteral("game.kel"));
        WriteGame(path.toStdString(), rooms);
        program_.Main(path);
        auto* list = program_.MainWindow()->findChild<QListView*>(QStringLiteral("lstRooms"));
        list->setCurrentIndex(list->model()->index(0, 0));
        edit_ = program_.MainWindow()->findChild<QPushButton*>(QStringLiteral("butEditRoom"));
    }

    /// Opens the editor of the room and closes it with OK.
    void EditRoom() {
        const Clock::time_point start = Clock::now();
        Clock::time_point closing;
        QTimer::singleShot(0, [&] {
            QWidget* form = QApplication::activeModalWidget();
            form->repaint();
            open += Seconds(Clock::now() - start);
            closing = Clock::now();
            form->findChild<QPushButton*>(QStringLiteral("butOK"))->click();
        });
        edit_->click();
        QApplication::processEvents();
        close += Seconds(Clock::now() - closing);
        game_.Modified = false;
    }

    // Seconds, summed over all runs.
    double open = 0;
    double close = 0;

private:
    static void WriteGame(const std::string& path, int rooms) {
        std::ofstream file(path, std::ios::binary);
        for (int room = 1; room <= rooms; ++room)
            file << "define room <Room number " << room << ">\r\nnorth <Room number " << rooms
                 << ">\r\nsoutheast <Room number " << rooms << ">\r\nend define\r\n";
    }

    QTemporaryDir folder_;
    QSettings store_;
    QtDialogs dialogs_;
    GameModel game_;
    Program program_;
    QPushButton* edit_ = nullptr;
};

void RoomEditor(benchmark::State& state) {
    OpenGame small(100);
    OpenGame large(MostRecords);
    for (OpenGame* game : {&small, &large}) {
        game->EditRoom(); // Loads fonts and styles, which only the first window pays for.
        game->open = game->close = 0;
    }
    for (auto _ : state) {
        small.EditRoom();
        const double before = large.open + large.close;
        large.EditRoom();
        state.SetIterationTime(large.open + large.close - before);
    }
    const auto runs = static_cast<double>(state.iterations());
    state.counters["small_open_ms"] = small.open * 1000 / runs;
    state.counters["small_ok_ms"] = small.close * 1000 / runs;
    state.counters["ratio_open"] = large.open / small.open;
    state.counters["ratio_ok"] = large.close / small.close;
}

BENCHMARK(RoomEditor)->UseManualTime()->Iterations(50)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace zem::bench

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
