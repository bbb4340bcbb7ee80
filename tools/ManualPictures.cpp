// Takes the pictures of the manual: ManualPictures FOLDER
#include "support/EveryWindow.h"
#include "support/RunningProgram.h"

#include <QApplication>
#include <QDir>
#include <QFile>

#include <cstdio>

namespace zem::test {
namespace {

struct Picture {
    const char* name;
    const char* game; // A sample, without ".kel".
    const char* steps;
    QSize size;
};

const Picture Pictures[] = {
    {"frmMain", "gatehouse", "lstRooms=Gatehouse", {821, 330}},
    {"frmRoomProperties-Details", "gatehouse", "lstRooms=Gatehouse, butEditRoom >", {640, 600}},
    {"frmRoomProperties-Exits", "gatehouse", "lstRooms=Gatehouse, butEditRoom > butExits", {640, 600}},
    {"frmGameProperties-GameInformation", "gatehouse", "mnuViewGameProperties >", {640, 600}},
    {"frmConditional",
     "gatehouse",
     "lstRooms=Gatehouse, butEditRoom > butExits, butRoomAction_1 > lstFriendlyLines=If, butEdit >",
     {700, 500}},
    {"frmScriptEditor",
     "gatehouse",
     "lstRooms=Gatehouse, butEditRoom > butExits, butRoomAction_1 > lstFriendlyLines=If, butEdit > butThen >",
     {620, 300}},
    {"frmScriptLines",
     "gatehouse",
     "lstRooms=Road, lstObjects=, butEditObj_1 > butActions, butSpeakAction > lstFriendlyLines=",
     {600, 250}},
    {"frmSelectionWindow", "gatehouse", "mnuViewMenus > lstMenus=, butEdit >", {560, 320}},
    {"frmThingProperties-Actions",
     "gatehouse",
     "lstRooms=Gatehouse, lstCharacters=, butEditObj_0 > butActions",
     {600, 360}},
    {"frmTextSectionEdit", "gatehouse", "mnuViewTextSectionEditor > cmbTextSections=win", {600, 260}},
    {"PlayPanel", "gatehouse", "lstRooms=Gatehouse, mnuToolsPlay", {1000, 560}},
    {"frmEditItems", "gatehouse", "mnuViewItems > lstItems=", {420, 220}},
    {"frmEditCollectableSettings",
     "lighthouse",
     "mnuViewCollectables > optExtended, lstCollectables=matches, butEdit >",
     {520, 310}},
};

bool Take(const Picture& picture, const QDir& folder) {
    RunningProgram program;
    program.store.setValue("Editor/Colours", "Light");
    program.StartWith(ReadBytes(std::string(ZEM_SAMPLES "/") + picture.game + ".kel"));
    bool isSaved = false;
    FollowSteps(*program.Main(), QLatin1String(picture.steps), [&](QWidget& window) {
        window.resize(picture.size);
        window.activateWindow();
        isSaved = QTest::qWaitForWindowActive(&window) &&
                  window.grab().save(folder.filePath(QLatin1String(picture.name) + QLatin1String(".png")));
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
