// The editor with a pair of hands: it opens a game, restores what an earlier run has left behind if that
// holds more, and edits and saves through the windows until it is killed. It reports on standard output.
//
//   KillVictim FILE STATE-FOLDER SEED
#include "app/Program.h"
#include "app/Recovery.h"
#include "app/frmMain.h"
#include "forms/Dialogs.h"
#include "forms/QtText.h"
#include "model/Host.h"
#include "reader/LoadGame.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace zem {
namespace {

/// The number of the last edit that the game holds; each is the alias of a room.
int LastEdit(const GameModel& game) {
    int last = 0;
    for (const Room& room : game.Rooms)
        last = std::max(last, std::atoi(room.Alias.c_str()));
    return last;
}

/// Milliseconds on the clock that all programs of the machine share.
long long Now() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

void Say(const char* what, int number) {
    std::printf("%s %d %lld\n", what, number, Now());
    std::fflush(stdout);
}

class Hands : public QObject {
public:
    Hands(frmMain& main, const GameModel& game, unsigned seed)
        : main_(main),
          game_(game),
          edit_(LastEdit(game)),
          random_(seed) {
        Next();
    }

private:
    template <class Control>
    Control& Find(const QWidget& form, const char* name) {
        return *form.findChild<Control*>(QLatin1String(name));
    }

    void Next() {
        QTimer::singleShot(static_cast<int>(random_() % 60), this, [this] {
            if (random_() % 12 == 0) {
                Find<QAction>(main_, "mnuFileSave").trigger();
                Say("saved", edit_);
            } else {
                EditRoom();
            }
            Next();
        });
    }

    void EditRoom() {
        auto& rooms = Find<QListView>(main_, "lstRooms");
        rooms.setCurrentIndex(rooms.model()->index(static_cast<int>(random_() % 50), 0));
        QTimer::singleShot(0, this, [this] {
            QWidget* form = QApplication::activeModalWidget();
            Find<QLineEdit>(*form, "txtAlias").setText(QString::number(edit_ + 1));
            Find<QPushButton>(*form, "butOK").click();
        });
        Find<QPushButton>(main_, "butEditRoom").click();
        Say("edit", ++edit_);
    }

    frmMain& main_;
    const GameModel& game_;
    int edit_;
    std::mt19937 random_;
};

/// What the copies hold that earlier runs have left behind, in the order in which they are offered.
std::vector<int> LastEditsInCopies(QSettings& store, const QString& stateFolder) {
    GameModel game;
    SilentHost host;
    Settings settings(store, {});
    GameSession session(game, host, settings);
    QStringList damaged;
    std::vector<int> edits;
    for (const RecoveryCopy& copy :
         Recovery(session, stateFolder + QLatin1String("/recovery")).Abandoned(damaged))
        edits.push_back(LastEdit(copy.game));
    if (!damaged.isEmpty())
        throw std::runtime_error("a recovery copy is damaged");
    return edits;
}

/// Answers the offer at the start: takes the copy that holds the most, if that is more than the file holds.
void AnswerOffer(const std::vector<int>& inCopies, int inFile) {
    if (inCopies.empty())
        return;
    QTimer::singleShot(0, [inCopies, inFile] {
        const auto most = std::max_element(inCopies.begin(), inCopies.end());
        QWidget* form = QApplication::activeModalWidget();
        auto* list = form->findChild<QTreeWidget*>(QStringLiteral("lstCopies"));
        list->setCurrentItem(list->topLevelItem(static_cast<int>(most - inCopies.begin())));
        const char* button = *most > inFile ? "butRestore" : "butKeep";
        form->findChild<QPushButton*>(QLatin1String(button))->click();
    });
}

int Run(int argc, char** argv) {
    QApplication application(argc, argv);
    const std::string file = argv[1];
    GameModel onDisk;
    SilentHost host;
    if (!LoadGame(onDisk, file, host))
        return 1;
    Say("file", LastEdit(onDisk));
    const QTemporaryDir folder;
    QSettings store(folder.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat);
    store.setValue(QStringLiteral("Init/InstalledVer"), QStringLiteral("yes"));
    QtDialogs dialogs;
    GameModel game;
    Program program(game, store, dialogs, QStringLiteral(ZEM_PROGRAM_FOLDER), PathToQt(argv[2]));
    AnswerOffer(LastEditsInCopies(store, PathToQt(argv[2])), LastEdit(onDisk));
    program.Main(PathToQt(file));
    Say("open", LastEdit(game));
    const Hands hands(*program.MainWindow(), game, static_cast<unsigned>(std::atoi(argv[3])));
    return QApplication::exec();
}

} // namespace
} // namespace zem

int main(int argc, char** argv) {
    if (argc != 4)
        return 2;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    try {
        return zem::Run(argc, argv);
    } catch (const std::exception& error) {
        std::printf("fault: %s\n", error.what());
        return 1;
    }
}
