// Kills the running editor at random moments, again and again, and starts it anew on what is left:
//
//   KillTest [KILLS [SEED]]
//
// The file on disk must load every time, and what the editor has open after the restart, from the file or
// from the recovery copy, must lack no edit that was older than a second when the editor was killed.
#include "support/TempFolder.h"

#include <QCoreApplication>
#include <QProcess>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Edit {
    int number;
    long long time; ///< Milliseconds, like all times here.
};

/// What an editor has reported from its start until it was killed.
struct Life {
    int inFile = -1; ///< The number of the last edit in the file.
    int open = -1;   ///< The number of the last edit in the game that was open at last.
    std::vector<Edit> edits;
    bool isUnderstood = true; ///< Every line of the report was one that a healthy victim writes.
    bool wasAlive = false;    ///< It had not ended by itself before it was killed.
    long long end = 0;
    std::string report;
};

long long Now() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

void WriteGame(const zem::test::TempFolder& folder) {
    std::string bytes = "define game <Kill test>\r\nstart <Room 1>\r\nend define\r\n";
    for (int room = 1; room <= 50; ++room)
        bytes += "define room <Room " + std::to_string(room) + ">\r\nend define\r\n";
    folder.Write("game.kel", bytes);
}

/// Notes what a line of a report says; false when it is none of a victim that is well.
bool Note(const std::string& line, Life& life) {
    std::istringstream words(line);
    std::string what;
    Edit edit{};
    if (!(words >> what >> edit.number >> edit.time))
        return false;
    if (what == "edit")
        life.edits.push_back(edit);
    else if (what == "file")
        life.inFile = edit.number;
    else if (what == "open")
        life.open = edit.number;
    else
        return false;
    return true;
}

Life Live(const zem::test::TempFolder& folder, std::mt19937& random) {
    QProcess editor;
    auto environment = QProcessEnvironment::systemEnvironment();
    // Temporary files of a killed editor are deleted with the folder.
    environment.insert(QStringLiteral("TMPDIR"), QString::fromStdString(folder.Path("")));
    editor.setProcessEnvironment(environment);
    editor.start(QStringLiteral(ZEM_KILL_VICTIM),
                 {QString::fromStdString(folder.Path("game.kel")),
                  QString::fromStdString(folder.Path("state")), QString::number(random() % 1000000)});
    QByteArray report;
    while (!report.contains("open") && editor.waitForReadyRead(30000))
        report += editor.readAllStandardOutput();
    editor.waitForFinished(static_cast<int>(random() % 2500));
    Life life;
    life.wasAlive = editor.state() == QProcess::Running;
    life.end = Now();
    editor.kill();
    editor.waitForFinished();
    life.report = (report + editor.readAllStandardOutput()).toStdString();
    std::istringstream lines(life.report);
    std::string line;
    while (std::getline(lines, line))
        life.isUnderstood = Note(line, life) && life.isUnderstood;
    return life;
}

/// The milliseconds of edits at the end of a life that are not in the game that was open in the next.
long long Lost(const Life& life, int open) {
    const auto lost = std::find_if(life.edits.begin(), life.edits.end(),
                                   [open](const Edit& edit) { return edit.number > open; });
    return lost == life.edits.end() ? 0 : life.end - lost->time;
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const int kills = argc > 1 ? std::atoi(argv[1]) : 200;
    std::mt19937 random(argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 1U);
    const zem::test::TempFolder folder;
    WriteGame(folder);
    std::size_t edits = 0;
    int restored = 0;
    long long mostLost = 0;
    Life before;
    for (int kill = 1; kill <= kills; ++kill) {
        Life life = Live(folder, random);
        const bool hasOpened = life.wasAlive && life.isUnderstood && life.inFile >= 0 && life.open >= 0;
        if (hasOpened)
            mostLost = std::max(mostLost, Lost(before, life.open));
        if (!hasOpened || mostLost > 1000) {
            std::printf("failed at kill %d: %lld ms of edits are lost; the editor said\n%s", kill, mostLost,
                        life.report.c_str());
            return 1;
        }
        edits += life.edits.size();
        restored += life.open > life.inFile ? 1 : 0;
        before = std::move(life);
    }
    std::printf("%d kills, %zu edits, %d restarts from a recovery copy; at most %lld ms of edits were lost\n",
                kills, edits, restored, mostLost);
    return restored > 0 ? 0 : 1; // Without a restored copy the test has shown nothing.
}
