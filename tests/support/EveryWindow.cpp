#include "support/EveryWindow.h"

#include "forms/PageButtons.h"
#include "help/frmHelp.h"
#include "help/frmManual.h"
#include "panels/frmDifferences.h"
#include "panels/frmNamesOfGame.h"
#include "support/RunningProgram.h"
#include "support/WhenOpen.h"
#include "windows/frmOrbMsgBox.h"
#include "windows/frmProgress.h"
#include "windows/frmReadBack.h"
#include "windows/frmRecovery.h"
#include "windows/frmVersions.h"

#include <QFileInfo>
#include <QStackedWidget>

#include <stdexcept>
#include <utility>

namespace zem::test {

namespace {

/// A procedure with a line for each look of the script editor, and a condition.
constexpr const char* Lines =
    "define procedure <tour>\r\nclear\r\nmsg <Dust.>\r\ngoto <Quay>\r\nring <bell; twice>\r\n"
    "if flag <keeper found> and not flag <keeper saved> then flag on <bell wanted> else flag off "
    "<bell wanted>\r\nend define\r\n";

/// How to get to a window from the main window.
struct Way {
    const char* steps;     // See FollowSteps.
    const char* what = ""; // Becomes a part of the picture's name.
};

constexpr Way Ways[] = {
    {"", "Opened"},
    {"lstRooms=Quay, lstCharacters=, lstObjects="},
    {"mnuViewOptions >"},
    {"mnuHelpAbout >"},
    {"lstRooms=Tower Stair, butEditRoom >"},
    {"lstRooms=Tower Stair, butEditRoom > butAddPlace >"},
    {"lstRooms=Chandlery, lstCharacters=, butEditObj_0 >", "Character"},
    {"lstRooms=Net Loft, lstObjects=, butEditObj_1 >", "Object"},
    {"mnuViewGameProperties >"},
    {"mnuViewGameProperties > butUseableObjects > lstItems="},
    {"mnuViewGameProperties > butMiscTags >"},
    {"mnuViewGameProperties > butCommands > lstCommands="},
    {"mnuViewGameProperties > butCommands > lstCommands=shout, butEdit >"},
    {"mnuEditErrorMessages > lstErrors="},
    {"mnuViewCollectables > lstNames=", "Names"},
    {"mnuViewCollectables > lstNames=, optExtended", "Extended"},
    {"mnuViewCollectables > optExtended, lstCollectables=matches, butEdit >"},
    {"mnuViewItems > lstItems="},
    {"mnuViewLibraries > lstLibs="},
    {"mnuViewTextSectionEditor > cmbTextSections="},
    {"mnuViewTextSectionEditor > cmbTextSections=, txtText_Large > txtLargeText_Preview"},
    {"mnuViewSynonyms > lstSynonyms="},
    {"mnuViewSynonyms > lstSynonyms=, butEdit > lstWords="},
    {"mnuViewProcedures > cmbProcedures="},
    {"mnuViewMenus > lstMenus="},
    {"mnuToolsTimers > lstTimers="},
    {"mnuViewMenus > lstMenus=, butEdit > lstMenu="},
    {"mnuViewProcedures > cmbProcedures=look at the lamp, butEdit > lstFriendlyLines=", "Friendly"},
    {"mnuViewProcedures > cmbProcedures=tour, butEdit > butAdd >", "New"},
    {"mnuViewProcedures > cmbProcedures=tour, butEdit > lstFriendlyLines=Clear, butEdit >", "None"},
    {"mnuViewProcedures > cmbProcedures=tour, butEdit > lstFriendlyLines=Print, butEdit >", "Text"},
    {"mnuViewProcedures > cmbProcedures=tour, butEdit > lstFriendlyLines=Move, butEdit >", "Name"},
    {"mnuViewProcedures > cmbProcedures=tour, butEdit > lstFriendlyLines=ring, butEdit >", "Other"},
    {"mnuViewProcedures > cmbProcedures=tour, butEdit > lstFriendlyLines=If, butEdit >"},
    {"mnuViewOptions > chkFriendlyScript, butOK"},
    {"mnuViewProcedures > cmbProcedures=look at the lamp, butEdit > lstScriptLines=", "Raw"},
    {"lstRooms=Quay, mnuToolsRename >"},
    {"mnuToolsReplace >"},
    {"mnuToolsAnyCommand >", "Command"},
    {"mnuToolsAnyName >", "Name"},
    {"mnuToolsReadyMade > lstPieces=Locked door"},
    {"mnuToolsProblems, mnuToolsNextProblem", "Problems"},
    {"mnuToolsProblems, mnuToolsFind", "Find"},
    {"mnuToolsFindPanel, lstRooms=Quay, mnuToolsWhereUsed", "WhereUsed"},
    {"mnuToolsWhereUsedPanel, lstRooms=Net Loft, mnuToolsPreview", "Preview"},
    {"mnuToolsPreview, mnuToolsPlay", "Play"},
    {"mnuToolsPlay, actPlayFrom >"},
    {"mnuToolsPlay, mnuToolsRuns", "Runs"},
    {"mnuToolsRuns, mnuToolsCoverage", "Coverage"},
    {"mnuToolsMerge >"},
    {"mnuToolsCoverage, mnuToolsFigures", "Figures"},
    {"mnuToolsFigures, mnuToolsMergePanel", "Merge"},
    {"mnuToolsMergePanel, mnuToolsSpelling", "Spelling"},
    // Last, because it changes the game.
    {"mnuToolsSpelling, lstRooms=Net Loft, lstObjects=, butDeleteObj_1, lstRooms=Mole, butDeleteRoom, "
     "mnuToolsUndo, "
     "mnuToolsHistory",
     "History"},
    {"mnuToolsHistory, mnuToolsChanges", "Changes"},
    {"mnuToolsChanges, lstRooms=Harbour Street, mnuToolsMap", "Map"},
};

void Use(const QWidget& window, const QString& step) {
    const std::string name = step.section(u'=', 0, 0).toStdString();
    if (step.contains(u'=')) {
        auto& list = Find<QAbstractItemView>(window, name.c_str());
        const QAbstractItemModel& rows = *list.model();
        list.setCurrentIndex(
            rows.match(rows.index(0, 0), Qt::DisplayRole, step.section(u'=', 1), 1, Qt::MatchStartsWith)
                .value(0));
    } else if (auto* action = window.findChild<QAction*>(QLatin1String(name.c_str()))) {
        action->trigger();
    } else if (!name.empty()) {
        auto& button = Find<QAbstractButton>(window, name.c_str());
        button.setFocus(); // A click with the mouse would do the same.
        button.click();
    }
}

class Tour {
public:
    explicit Tour(std::function<void(const QString&, QWidget&)> visit) : visit_(std::move(visit)) {}

    void GoEverywhere(const QString& game, const QString& colours) {
        QFile file(game);
        if (!file.open(QIODevice::Append) || file.write(Lines) < 0)
            throw std::runtime_error("cannot write the game");
        file.close();
        Settings settings(program_.store, program_.programFolder);
        settings.LoadSettings();
        program_.store.setValue("Editor/Colours", colours);
        for (const char* other : {"/cottage.kel", "/archipelago.kel", "/lighthouse.kel"})
            settings.AddToRecentFiles(QFileInfo(game).absolutePath() + QLatin1String(other));
        program_.Start(game);
        VisitOnTheirOwn(settings);
        for (const auto& [steps, what] : Ways)
            FollowSteps(*program_.Main(), QLatin1String(steps),
                        [this, what = QLatin1String(what)](QWidget& window) { Visit(window, what); });
    }

private:
    /// Those that no command opens, or not with something in them.
    void VisitOnTheirOwn(Settings& settings) {
        frmStart start(settings, program_.dialogs, program_.programFolder);
        Use(start, QStringLiteral("lstRecent="));
        Visit(start);
        Visit(frmManual(program_.programFolder + QLatin1String("/ZEM.HTM"), program_.dialogs));
        frmHelp help;
        help.ShowSection({{QStringLiteral("rooms"), QStringLiteral("A room is a place of the game.")}},
                         QStringLiteral("rooms"));
        Visit(help);
        Visit(
            frmOrbMsgBox(QStringLiteral("You must specify a name for the collectable."), MessageButtons::Ok),
            QStringLiteral("OK"));
        Visit(frmOrbMsgBox(QStringLiteral("Is the lamp lit?"), MessageButtons::YesNo),
              QStringLiteral("YesNo"));
        frmProgress progress;
        progress.ShowStage(QStringLiteral("Reading rooms..."));
        progress.ShowProgress(60);
        Visit(progress);

        const QDateTime evening(QDate(2026, 11, 21), QTime(18, 30));
        std::vector<RecoveryCopy> copies(2);
        for (RecoveryCopy& copy : copies) {
            copy.game = program_.game;
            copy.time = evening;
        }
        copies[1].game.FileName.clear();
        Visit(frmRecovery(copies, program_.dialogs));
        Visit(frmVersions({{QString(), evening, 71000, VersionKind::Saved},
                           {QString(), evening.addSecs(-60), 70000, VersionKind::BeforeLoss}},
                          program_.game));
        Visit(frmDifferences(QStringLiteral("What the open game has that lighthouse.kel has not."),
                             [game = program_.game] {
                                 GameModel before = game;
                                 before.Rooms.Edit(1).Look = "Rain.";
                                 return ComparedGames{before, game};
                             }));
        Visit(frmNamesOfGame({{"Kervella", 8}, {"No\xEBlle", 7}}));
        Visit(frmReadBack({LostPlace{{}, "room \"Quay\": its alias ends at the first \">\""},
                           LostPlace{{}, "item \"silver; watch\": comes back as two items"}}));
    }

    void Visit(QWidget&& window, const QString& what = {}) { Visit(window, what); }
    void Visit(QWidget& window, const QString& what = {}) {
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window))
            throw std::runtime_error("not shown: " + window.objectName().toStdString());
        QCoreApplication::processEvents();
        const QString name = window.objectName() + (what.isEmpty() ? QString() : u'-' + what);
        const auto* pages = window.findChild<QStackedWidget*>(QStringLiteral("pages"));
        auto* chooser = pages == nullptr ? nullptr : pages->findChild<PageButtons*>();
        if (chooser == nullptr)
            visit_(name, window);
        for (int page = 0; chooser != nullptr && page < pages->count(); ++page) {
            chooser->Show(page);
            QCoreApplication::processEvents();
            visit_(name + u'-' + pages->currentWidget()->objectName().mid(3), window);
        }
    }

    std::function<void(const QString&, QWidget&)> visit_;
    RunningProgram program_;
};

} // namespace

void FollowSteps(QWidget& window, const QString& steps, const std::function<void(QWidget& window)>& use) {
    const qsizetype end = steps.indexOf(u'>');
    if (end >= 0)
        WhenOpen<QDialog>([=](QDialog& next) { FollowSteps(next, steps.mid(end + 1), use); });
    for (const QString& step : steps.left(end).split(u',', Qt::SkipEmptyParts))
        Use(window, step.trimmed());
    if (end < 0 && window.isVisible())
        use(window);
}

void ForEachWindow(const QString& game,
                   const std::function<void(const QString& name, QWidget& window)>& visit,
                   const QString& colours) {
    Tour(visit).GoEverywhere(game, colours);
}

} // namespace zem::test
