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

using namespace std::chrono;

long long Now() {
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

struct Line {
    std::string what;
    int number = 0;
    long long time = 0; // milliseconds
};

std::vector<Line> ReadReport(QProcess& editor) {
    std::vector<Line> lines;
    std::istringstream report(editor.readAllStandardOutput().toStdString());
    for (std::string text; std::getline(report, text);) {
        std::istringstream fields(text);
        Line line;
        if (fields >> line.what >> line.number >> line.time)
            lines.push_back(line);
    }
    return lines;
}

std::string NewGame() {
    std::string bytes = "define game <Kill test>\r\nstart <Room 1>\r\nend define\r\n";
    for (int room = 1; room <= 50; ++room)
        bytes += "define room <Room " + std::to_string(room) + ">\r\nend define\r\n";
    return bytes;
}

class KillTest {
public:
    explicit KillTest(unsigned seed) : random_(seed), file_(folder_.Write("game.kel", NewGame())) {}

    /// One life of the editor. False when something was lost.
    bool Live() {
        QProcess editor;
        editor.start(QStringLiteral(ZEM_KILL_VICTIM),
                     {QString::fromStdString(file_), QString::fromStdString(folder_.Path("state")),
                      QString::number(random_() % 1000000)});
        while (!report_.contains("open") && editor.waitForReadyRead(30000))
            report_ += editor.peek(100000);
        editor.waitForFinished(static_cast<int>(random_() % 2500));
        const bool alive = editor.state() == QProcess::Running;
        const long long killed = Now();
        editor.kill();
        editor.waitForFinished();
        report_.clear();
        return alive && Check(ReadReport(editor), killed);
    }

    int Edits() const { return edits_; }
    long long MostLost() const { return mostLost_; }
    int Restored() const { return restored_; }

private:
    bool Check(const std::vector<Line>& lines, long long killed) {
        int inFile = -1;
        int open = -1;
        for (const Line& line : lines) {
            if (line.what == "file")
                inFile = line.number;
            else if (line.what == "open")
                open = line.number;
        }
        if (inFile < 0 || open < 0) {
            std::printf("the editor has not opened the game\n");
            return false;
        }
        restored_ += open > inFile ? 1 : 0;
        for (const Line& edit : before_)
            if (edit.what == "edit" && edit.number > open)
                mostLost_ = std::max(mostLost_, killedBefore_ - edit.time);
        for (const Line& edit : before_)
            if (edit.what == "edit" && edit.number > open && killedBefore_ - edit.time > 1000) {
                std::printf("edit %d, %lld ms before the end, is lost: only %d came back\n", edit.number,
                            killedBefore_ - edit.time, open);
                return false;
            }
        edits_ += static_cast<int>(
            std::count_if(lines.begin(), lines.end(), [](const Line& line) { return line.what == "edit"; }));
        before_ = lines;
        killedBefore_ = killed;
        return true;
    }

    zem::test::TempFolder folder_;
    std::mt19937 random_;
    std::string file_;
    QByteArray report_;
    std::vector<Line> before_; // of the life before
    long long killedBefore_ = 0;
    int edits_ = 0;
    int restored_ = 0;
    long long mostLost_ = 0; // milliseconds of edits
};

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const int kills = argc > 1 ? std::atoi(argv[1]) : 200;
    KillTest test(argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 1U);
    for (int kill = 1; kill <= kills; ++kill)
        if (!test.Live()) {
            std::printf("failed at kill %d\n", kill);
            return 1;
        }
    std::printf("%d kills, %d edits, %d restarts from a recovery copy; at most %lld ms of edits were lost\n",
                kills, test.Edits(), test.Restored(), test.MostLost());
    return 0;
}
