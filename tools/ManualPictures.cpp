// Takes the pictures of the manual: ManualPictures FOLDER
#include "player/InputLine.h"
#include "support/EveryWindow.h"
#include "support/RunningProgram.h"

#include <QApplication>
#include <QDir>
#include <QDockWidget>
#include <QFile>
#include <QTabWidget>
#include <QTest>

#include <cstdio>

namespace zem::test {
namespace {

struct Picture {
    const char* name;
    const char* game; // A sample, without ".kel".
    const char* steps;
    QSize size;
    const char* typed = ""; // into the running game, between "|"; or else where the focus is
    const char* tab = "";   // of the panel that shows it, as a part of its caption
};

const Picture Pictures[] = {
    {"frmMain", "gatehouse", "lstRooms=Gatehouse", {821, 330}},
    {"frmRoomProperties-Details", "gatehouse", "lstRooms=Gatehouse, butEditRoom >", {640, 600}},
    {"frmRoomProperties-Exits", "gatehouse", "lstRooms=Gatehouse, butEditRoom > butExits", {640, 600}},
    {"frmGameProperties-GameInformation", "gatehouse", "mnuViewGameProperties >", {640, 600}},
    {"frmConditional",
     "gatehouse",
     "lstRooms=Gatehouse, butEditRoom > butExits, butRoomAction_1 > lstFriendlyLines=If, butEdit >",
     {900, 580}},
    {"frmScriptEditor",
     "gatehouse",
     "lstRooms=Gatehouse, butEditRoom > butExits, butRoomAction_1 > lstFriendlyLines=If, butEdit > butThen > "
     "lstFriendlyLines=Move, butEdit >",
     {800, 420}},
    {"frmScriptLines",
     "gatehouse",
     "lstRooms=Road, lstObjects=, butEditObj_1 > butActions, butSpeakAction > lstFriendlyLines=",
     {700, 480}},
    {"frmSelectionWindow", "gatehouse", "mnuViewMenus > lstMenus=, butEdit >", {560, 320}},
    {"frmThingProperties-Actions",
     "gatehouse",
     "lstRooms=Gatehouse, lstCharacters=, butEditObj_0 > butActions",
     {600, 360}},
    {"frmTextSectionEdit", "gatehouse", "mnuViewTextSectionEditor > cmbTextSections=win", {600, 260}},
    {"PlayPanel",
     "gatehouse",
     "lstRooms=Road, mnuToolsPlay",
     {1080, 700},
     "north|north|south|take iron key",
     "atch"},
    {"PlayPanel-Trace",
     "gatehouse",
     "lstRooms=Road, mnuToolsPlay",
     {1080, 700},
     "take iron key|north|north",
     "race"},
    {"RunsPanel", "lighthouse", "lstRooms=Quay, lstObjects=, butDeleteObj_1, mnuToolsRuns", {1100, 760}},
    {"CoveragePanel", "lighthouse", "mnuToolsCoverage", {1100, 760}},
    {"PreviewPanel", "lighthouse", "lstRooms=Quay, mnuToolsPreview", {1000, 520}},
    {"MapPanel", "lighthouse", "lstRooms=Quay, mnuToolsMap", {1100, 620}},
    {"frmRename", "lighthouse", "lstRooms=Quay, mnuToolsRename >", {760, 420}, "Old Quay"},
    {"ProblemsPanel", "lighthouse", "mnuToolsProblems, mnuToolsNextProblem", {1100, 760}},
    {"FindPanel", "lighthouse", "mnuToolsFind", {1100, 760}, "lantern"},
    {"frmReplace", "lighthouse", "mnuToolsReplace >", {820, 560}, "lantern"},
    {"frmQuickFind", "lighthouse", "mnuToolsAnyCommand >", {640, 320}, "make a door"},
    {"frmReadyMade", "lighthouse", "mnuToolsReadyMade > lstPieces=Shop", {760, 420}},
    {"SpellingPanel", "lighthouse", "mnuToolsSpelling", {1100, 760}},
    {"FiguresPanel", "lighthouse", "lstRooms=Quay, mnuToolsFigures", {1100, 640}},
    {"ChangesPanel",
     "lighthouse",
     "mnuToolsChanges, lstRooms=Quay, lstObjects=, butDeleteObj_1, lstRooms=Belfry, butDeleteRoom",
     {1100, 760}},
    {"frmEditItems", "gatehouse", "mnuViewItems > lstItems=", {420, 220}},
    {"frmEditCollectableSettings",
     "lighthouse",
     "mnuViewCollectables > optExtended, lstCollectables=matches, butEdit >",
     {520, 310}},
};

void TypeLines(QWidget& window, const Picture& picture) {
    auto* line = window.findChild<InputLine*>();
    if (line == nullptr && *picture.typed != 0)
        return QTest::keyClicks(window.focusWidget(), QLatin1String(picture.typed));
    for (const QString& words : QString(QLatin1String(picture.typed)).split(u'|', Qt::SkipEmptyParts)) {
        QTest::keyClicks(line, words);
        QTest::keyClick(line, Qt::Key_Return);
    }
    for (auto* tabs : window.findChildren<QTabWidget*>())
        for (int tab = 0; tab < tabs->count(); ++tab)
            if (*picture.tab != 0 && tabs->tabText(tab).contains(QLatin1String(picture.tab)))
                tabs->setCurrentIndex(tab);
}

/// The panel that a picture shows, or the whole window.
QWidget& Shown(QWidget& window, const Picture& picture) {
    const QByteArray panel = "zem::" + QByteArray(picture.name).split('-').first();
    for (auto* dock : window.findChildren<QDockWidget*>())
        if (dock->inherits(panel))
            return *dock;
    return window;
}

bool Take(const Picture& picture, const QDir& folder) {
    RunningProgram program;
    program.store.setValue("Editor/Colours", "Light");
    const std::string game = std::string(ZEM_SAMPLES "/") + picture.game + ".kel";
    program.folder.Write("game.kel.tests", ReadBytes(game + ".tests"));
    program.StartWith(ReadBytes(game));
    bool isSaved = false;
    FollowSteps(*program.Main(), QLatin1String(picture.steps), [&](QWidget& window) {
        window.resize(picture.size);
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window))
            return;
        TypeLines(window, picture);
        QTest::qWait(1500); // panels show what other threads found
        isSaved = Shown(window, picture)
                      .grab()
                      .save(folder.filePath(QLatin1String(picture.name) + QLatin1String(".png")));
    });
    return isSaved;
}

} // namespace
} // namespace zem::test

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("ManualPictures FOLDER\n", stderr);
        return 2;
    }
    const QApplication application(argc, argv);
    int failed = 0;
    for (const auto& picture : zem::test::Pictures)
        if (!zem::test::Take(picture, QDir(QString::fromLocal8Bit(argv[1])))) {
            std::fprintf(stderr, "no picture %s\n", picture.name);
            ++failed;
        }
    return failed == 0 ? 0 : 1;
}
