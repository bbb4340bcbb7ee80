// What was played is kept as a run, and every change of the game is judged by its runs.
#include "panels/RunsPanel.h"

#include "editors/frmRoomProperties.h"
#include "panels/CoveragePanel.h"
#include "panels/MapPanel.h"
#include "panels/PlayPanel.h"
#include "panels/RunTreeView.h"
#include "panels/frmRename.h"
#include "player/InputLine.h"
#include "player/StoryPane.h"
#include "reader/LoadGame.h"
#include "support/EveryWindow.h"
#include "support/Panels.h"
#include "support/RunningProgram.h"

#include <QContextMenuEvent>
#include <QDialog>
#include <QLabel>
#include <QMenu>
#include <QSpinBox>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTimer>
#include <QToolButton>

#include <fstream>

namespace zem::test {
namespace {

const std::string ShedOfRuns =
    CrLf("define game <The Shed>\nstart <Shed>\ncommand <name> do <name>\nend define\n"
         "define room <Shed>\nlook <Dust and rust.>\nnorth <Yard>\n"
         "define object <box>\nlook msg <A box.>\nend define\nend define\n"
         "define room <Yard>\nlook <Mud.>\nsouth <Shed>\nend define\n"
         "define room <Loft>\nlook <Hay.>\nend define\n"
         "define procedure <name>\nask <who; Who?>\nmsg <Hello, #who#.>\nend define\n");

/// The editor with its panel of runs, on a game that has a file of runs, perhaps.
struct Runs : RunningProgram {
    /// @param file  empty for a game without one
    explicit Runs(const std::string& runs = {}, const std::string& file = "game.kel") {
        if (!runs.empty())
            folder.Write("game.kel.tests", runs);
        StartWith(ShedOfRuns);
        if (file.empty()) {
            Trigger("mnuFileNew");
            ReadGame(game, ShedOfRuns);
            game.Modified = true;
        }
        Main()->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(Main()));
        Trigger("mnuToolsRuns");
        Wait();
    }

    RunsPanel& Panel() const { return test::Find<RunsPanel>(*Main(), "dckRuns"); }
    void Wait() const {
        WaitFor([this] { return Panel().IsBusy(); });
    }
    std::string File() const { return ReadBytes(folder.Path("game.kel.tests")); }
    std::string Summary() const { return TextOf(Panel(), "lblRuns"); }
    std::string Story() const { return TextOf(Panel(), "txtRunStory"); }
    std::string Button() const { return Find<QToolButton>("butRuns")->text().toStdString(); }
    void Act(const char* action) const { test::Find<QAction>(Panel(), action).trigger(); }

    /// The runs with their depth, lines and state: "together, up to > n|1|; .win|2|as approved; ".
    std::string Tree() const {
        std::string rows;
        for (QTreeWidgetItemIterator item(&test::Find<QTreeWidget>(Panel(), "lstRuns")); *item != nullptr;
             ++item) {
            for (const QTreeWidgetItem* above = (*item)->parent(); above != nullptr; above = above->parent())
                rows += ".";
            for (int column = 0; column < 3; ++column)
                rows += (*item)->text(column).toStdString() + (column < 2 ? "|" : "; ");
        }
        return rows;
    }

    std::string Lines() const { return Rows("lstRunLines").join(u'|').toStdString(); }

    // The panel that plays.
    PlayPanel& Player() const { return test::Find<PlayPanel>(*Main(), "dckPlay"); }
    std::string Page() const { return test::Find<StoryPane>(Player(), "story").toPlainText().toStdString(); }
    void Play(const std::vector<const char*>& lines) const {
        Trigger("mnuToolsPlay");
        test::Find<QAction>(Player(), "actPlayRestart").trigger();
        Type(lines);
    }
    void Type(const std::vector<const char*>& lines) const {
        for (const char* line : lines) {
            TypeText(Player(), "input", line);
            PressKey(Player(), "input", Qt::Key_Return);
        }
    }
    void KeepAs(const char* name, const char* suggested) {
        dialogs.Text(QStringLiteral("Keep as a run: Name of the run: [%1]").arg(QLatin1String(suggested)),
                     QLatin1String(name));
        test::Find<QAction>(Player(), "actPlayKeep").trigger();
        dialogs.ExpectAllAsked();
        Wait();
    }

    /// Gives a room another text with its editor.
    void ChangeRoom(int row, const char* look) const {
        Select("lstRooms", row);
        Open<frmRoomProperties>("butEditRoom", [look](frmRoomProperties& form) {
            SetText(form, "txtDescription", look);
            test::Click(form, "butOK");
        });
        Wait();
    }
};

TEST(RunsPanel, WhatWasPlayedIsKeptAndJudgedAfterEachChange) {
    Runs r;
    EXPECT_EQ(r.Summary().substr(0, 27), "There are no recorded runs.");
    EXPECT_FALSE(r.Find<QToolButton>("butRuns")->isVisible());
    r.Play({"n", "s", "x box"});
    r.KeepAs("box", "to Shed");
    r.Play({"n", "s", "frobnicate"});
    r.KeepAs("odd", "to Shed");
    EXPECT_EQ(r.Tree(), "together, up to > s|2|; .box|3|as approved; .odd|3|as approved; ");
    EXPECT_EQ(r.Button(), "2 runs well");
    EXPECT_EQ(r.Lines(), "the beginning|> n|> s|> frobnicate");
    EXPECT_NE(r.File().find("run box seed 1\n"), std::string::npos) << r.File();
    EXPECT_NE(r.File().find("> x box\n  A box.\n"), std::string::npos) << r.File();

    r.ChangeRoom(1, "Deep mud.");
    EXPECT_EQ(r.Tree(), "together, up to > s|2|; .box|3|changed after > n; .odd|3|changed after > n; ");
    EXPECT_EQ(r.Button(), "2 of 2 runs changed");
    EXPECT_EQ(r.Status().substr(0, 26), "Run box: changed after > n");
    EXPECT_EQ(r.Lines(), "the beginning|> n (told differently)|> s|> frobnicate");
    EXPECT_NE(r.Story().find("Approved: Mud."), std::string::npos) << r.Story();
    EXPECT_NE(r.Story().find("Now: Deep mud."), std::string::npos) << r.Story();
    const QString html = test::Find<QTextBrowser>(r.Panel(), "txtRunStory").toHtml();
    EXPECT_NE(html.indexOf("underline"), -1) << "the word that is new is marked";

    r.Act("actRunApprove");
    r.Wait();
    EXPECT_EQ(r.Tree(), "together, up to > s|2|; .box|3|changed after > n; .odd|3|as approved; ")
        << "what is told is no reason to part runs of one seed";
    r.Act("actRunApproveAll");
    r.Wait();
    EXPECT_EQ(r.Button(), "2 runs well");
    EXPECT_EQ(r.File().find("  Mud."), std::string::npos);
    r.Trigger("mnuToolsUndo"); // of the edit
    r.Wait();
    EXPECT_EQ(r.Button(), "2 of 2 runs changed");
}

TEST(RunsPanel, RunsAreCutRenamedDeletedAndAllOfItTakenBack) {
    Runs r;
    r.Play({"n", "s", "x box"});
    r.KeepAs("box", "to Shed");
    const std::string before = r.File();
    SelectRow(r.Panel(), "lstRunLines", 1);
    r.Act("actRunCut");
    r.Wait();
    EXPECT_EQ(r.Tree(), "box|1|as approved; ");
    r.dialogs.Text("Rename run: Name of the run: [box]", "Yard");
    PressKey(r.Panel(), "lstRuns", Qt::Key_F2);
    r.Wait();
    EXPECT_EQ(r.Tree(), "Yard|1|as approved; ");
    r.dialogs.Message("Delete run: Delete the run \"Yard\"?", QMessageBox::No);
    PressKey(r.Panel(), "lstRuns", Qt::Key_Delete);
    EXPECT_EQ(r.Tree(), "Yard|1|as approved; ");
    r.dialogs.Message("Delete run: Delete the run \"Yard\"?", QMessageBox::Yes);
    PressKey(r.Panel(), "lstRuns", Qt::Key_Delete);
    EXPECT_EQ(r.Tree(), "");
    for (int k = 0; k < 3; ++k)
        r.Act("actRunTakeBack");
    r.Wait();
    EXPECT_EQ(r.Tree(), "box|3|as approved; ");
    EXPECT_EQ(r.File(), before);
    r.Act("actRunTakeBack"); // that it was kept
    r.Wait();
    EXPECT_EQ(r.Tree(), "");
    EXPECT_FALSE(test::Find<QAction>(r.Panel(), "actRunTakeBack").isEnabled());
}

TEST(RunsPanel, ANewNameIsNoDifferenceAndTheRunsGetItWithTheSave) {
    Runs r;
    r.Play({"n"});
    r.KeepAs("mine", "to Yard");
    r.Select("lstRooms", 1);
    r.Open<frmRename>("mnuToolsRename", [](frmRename& form) {
        test::Find<QLineEdit>(form, "txtNewName").clear();
        TypeText(form, "txtNewName", "Garden");
        WaitFor([&] { return form.IsBusy(); });
        test::Click(form, "butOK");
    });
    r.Wait();
    EXPECT_EQ(r.Button(), "1 run well") << r.Tree();
    EXPECT_NE(r.File().find("Yard"), std::string::npos) << "the saved game has the old name";
    r.Trigger("mnuFileSave");
    ASSERT_TRUE(QTest::qWaitFor([&] { return r.File().find("Garden") != std::string::npos; })) << r.File();
    EXPECT_EQ(r.File().find("Yard"), std::string::npos);
    r.Wait();
    EXPECT_EQ(r.Button(), "1 run well") << r.Tree();
}

TEST(RunsPanel, ARunGoesOnInThePlayPanel) {
    Runs r;
    r.Play({"name", "Ann", "n"});
    r.KeepAs("Ann", "to Yard");
    EXPECT_NE(r.File().find("> name\n  Who?\n< Ann\n  Hello, Ann.\n"), std::string::npos) << r.File();
    r.Act("actRunContinue");
    EXPECT_NE(r.Page().find("This is the end of the run \"Ann\"."), std::string::npos) << r.Page();
    EXPECT_EQ(TextOf(r.Player(), "lblPlay").substr(0, 4), "Yard");
    r.Type({"s", "undo", "s"}); // what was taken back is no part of it
    r.KeepAs("Ann comes back", "to Shed");
    EXPECT_EQ(r.Tree(), "together, up to > n|3|; .Ann|3|as approved; .Ann comes back|4|as approved; ");
    r.Act("actRunPlay"); // the end of the selected one
    SelectRow(r.Panel(), "lstRunLines", 0);
    r.Act("actRunPlay");
    EXPECT_EQ(TextOf(r.Player(), "lblPlay"), "Shed, 0 turns");
}

TEST(RunsPanel, WhatIsNoRunSaysWhy) {
    Runs r;
    r.Trigger("mnuToolsPlay");
    r.Select("lstRooms", 2);
    r.Trigger("mnuToolsPlayRoom");
    r.dialogs.Message("Keep as a run: A run begins at the beginning of the game, and this game was begun in "
                      "another place. Restart plays from the beginning.");
    test::Find<QAction>(r.Player(), "actPlayKeep").trigger();
    r.dialogs.ExpectAllAsked();
    EXPECT_FALSE(std::filesystem::exists(r.folder.Path("game.kel.tests")));
}

TEST(RunsPanel, ADamagedFileIsToldWithItsLineAndNeverOverwritten) {
    const std::string damaged = "run win seed 1\n  In Shed.\n\nwhat is this\n";
    Runs r(damaged);
    EXPECT_TRUE(r.Summary().starts_with("game.kel.tests, line 4: a line begins with")) << r.Summary();
    r.Play({"n"});
    r.dialogs.Text("Keep as a run: Name of the run: [to Yard]", "x");
    r.dialogs.Message("Recorded runs: game.kel.tests, line 4: a line begins with \">\", \"<\", \"@\" and a "
                      "number, or two blanks. Nothing is written to it until that is put right.");
    test::Find<QAction>(r.Player(), "actPlayKeep").trigger();
    r.dialogs.ExpectAllAsked();
    EXPECT_EQ(r.File(), damaged);
}

TEST(RunsPanel, RunsOfAnotherProgramAreNotOverwritten) {
    Runs r;
    r.Play({"n"});
    r.KeepAs("mine", "to Yard");
    std::ofstream(r.folder.Path("game.kel.tests"), std::ios::app) << "\nrun theirs seed 1\n\n> x box\n";
    r.dialogs.Message("Delete run: Delete the run \"mine\"?", QMessageBox::Yes);
    r.dialogs.Message(
        "Recorded runs: game.kel.tests has been changed by another program since it was read here. "
        "Nothing was written; the runs are read anew now.",
        QMessageBox::Ok);
    r.Act("actRunDelete");
    r.dialogs.ExpectAllAsked();
    r.Wait();
    EXPECT_EQ(r.Tree(), "mine|1|as approved; theirs|1|new; ");
    std::ofstream(r.folder.Path("game.kel.tests"), std::ios::app) << "\nrun third seed 1\n\n> look\n";
    r.Play({"inventory"});
    r.KeepAs("mine", "to Shed"); // one run more takes nothing away
    EXPECT_EQ(r.Tree(), "mine|1|as approved; theirs|1|new; third|1|new; mine 2|1|as approved; ") << r.File();
}

TEST(RunsPanel, RunsOfAGameWithoutAFileWaitForItsFirstSave) {
    Runs r({}, "");
    r.Play({"n"});
    r.KeepAs("mine", "to Yard");
    EXPECT_EQ(r.Tree(), "mine|1|as approved; ");
    EXPECT_NE(r.Summary().find("They are written beside the game when it is saved for the first time."),
              std::string::npos)
        << r.Summary();
    r.folder.Write("new.kel.tests", "run old seed 1\n\n> s\n");
    r.dialogs.SaveFile(r.Path("new.kel"));
    r.Trigger("mnuFileSave");
    r.Wait();
    EXPECT_EQ(r.Tree(), "old|1|new; mine|1|as approved; ") << "those of an older game of that name stay";
    EXPECT_NE(ReadBytes(r.folder.Path("new.kel.tests")).find("run mine"), std::string::npos);
}

TEST(RunsPanel, RunsGoAlongToAnotherFile) {
    Runs r;
    r.folder.Write("game.kel.notes", "zem-notes 1\n");
    r.Play({"n"});
    r.KeepAs("mine", "to Yard");
    r.folder.Write("copy.kel.tests", "run old seed 1\n\n> s\n");
    r.dialogs.SaveFile(r.Path("copy.kel"));
    r.Trigger("mnuFileSaveAs");
    r.Wait();
    EXPECT_EQ(ReadBytes(r.folder.Path("copy.kel.tests")), r.File());
    EXPECT_EQ(ReadBytes(r.folder.Path("copy.kel.tests~")), "run old seed 1\n\n> s\n");
    EXPECT_EQ(ReadBytes(r.folder.Path("copy.kel.notes")), "zem-notes 1\n");
    EXPECT_EQ(r.Tree(), "mine|1|as approved; ");
    r.Play({"x box"});
    r.KeepAs("more", "to Shed");
    EXPECT_NE(ReadBytes(r.folder.Path("copy.kel.tests")).find("run more"), std::string::npos);
    EXPECT_EQ(r.File().find("run more"), std::string::npos) << "they belong to the copy";
}

TEST(RunsPanel, AWalkersFindingsAreKeptAsNewRuns) {
    RunningProgram p(CrLf("define game <W>\nstart <Hall>\ncommand <shine> win\ncommand <slip> die\n"
                          "command <slam> goto <Nowhere>\nend define\n"
                          "define room <Hall>\nlook <Hall.>\nend define\n"
                          "define room <Attic>\nlook <Attic.>\nend define\n"));
    p.Trigger("mnuToolsRuns");
    auto& panel = test::Find<RunsPanel>(*p.Main(), "dckRuns");
    test::Find<QTabWidget>(panel, "tabRuns").setCurrentIndex(1);
    test::Find<QSpinBox>(panel, "spnTurns").setValue(1000);
    test::Click(panel, "butWalk");
    WaitFor([&] { return panel.IsBusy(); });
    const QStringList found = TextsOf(panel, "lstFindings");
    EXPECT_EQ(found.filter("Ways|").filter("|the game can be ").size(), 2) << found.join("\n").toStdString();
    EXPECT_EQ(found.filter("Mistakes|").size(), 1) << found.join("\n").toStdString();
    EXPECT_EQ(found.filter("room Attic").size(), 1) << found.join("\n").toStdString();
    const auto win = found.indexOf(found.filter("the game can be won").value(0));
    test::Find<ResultList>(panel, "lstFindings").Select(static_cast<int>(win));
    p.dialogs.Text("Keep as a run: Name of the run: [win]", "shining");
    test::Click(panel, "butKeepFinding");
    p.dialogs.ExpectAllAsked();
    WaitFor([&] { return panel.IsBusy(); });
    auto& runs = test::Find<QTreeWidget>(panel, "lstRuns");
    ASSERT_EQ(runs.topLevelItemCount(), 1);
    EXPECT_EQ(runs.topLevelItem(0)->text(2), "new");
    test::Find<QAction>(panel, "actRunApprove").trigger();
    WaitFor([&] { return panel.IsBusy(); });
    EXPECT_EQ(runs.topLevelItem(0)->text(2), "as approved");
    EXPECT_NE(ReadBytes(p.folder.Path("game.kel.tests")).find("You have won."), std::string::npos);
}

TEST(RunsPanel, AWalkIsStoppedAndTellsHowFarItCame) {
    RunningProgram p(ReadBytes(ZEM_SAMPLES "/lighthouse.kel"));
    p.Trigger("mnuToolsRuns");
    auto& panel = test::Find<RunsPanel>(*p.Main(), "dckRuns");
    test::Find<QTabWidget>(panel, "tabRuns").setCurrentIndex(1);
    test::Find<QSpinBox>(panel, "spnTurns").setValue(10'000'000);
    test::Click(panel, "butWalk");
    const auto progress = [&] { return TextOf(panel, "lblWalk"); };
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return progress().ends_with(" so far.") && progress() != "0 turns so far."; }, 20000))
        << progress();
    EXPECT_EQ(TextOf(panel, "butWalk"), "&Stop the walker");
    test::Click(panel, "butWalk");
    WaitFor([&] { return panel.IsBusy(); });
    EXPECT_NE(progress().find(" of 32 rooms"), std::string::npos) << progress();
    EXPECT_EQ(TextOf(panel, "butWalk"), "&Let a walker try");
}

TEST(CoveragePanel, ListsWhatNoRunReachesAndPlaysTheOneThatDoes) {
    Runs r;
    r.Play({"n", "s", "x box"});
    r.KeepAs("box", "to Shed");
    r.Trigger("mnuToolsCoverage");
    auto& panel = test::Find<CoveragePanel>(*r.Main(), "dckCoverage");
    const auto wait = [&] { WaitFor([&] { return panel.IsBusy(); }); };
    wait();
    const QStringList never = TextsOf(panel, "lstCoverage");
    EXPECT_EQ(never.filter("room Loft").join(""), "Rooms|room Loft|never entered|")
        << never.join("\n").toStdString();
    EXPECT_TRUE(never.filter("room Shed").isEmpty()) << never.join("\n").toStdString();
    EXPECT_EQ(TextOf(panel, "lblCoverage"), "Reached by 1 run: Commands 1 of 4, Rooms 2 of 3, Things 1 of 1");
    EXPECT_FALSE(IsEnabled(panel, "butWhichRun"));

    test::Find<QCheckBox>(panel, "chkReached").setChecked(true);
    const QStringList all = TextsOf(panel, "lstCoverage");
    const auto yard = all.indexOf(all.filter("room Yard").value(0));
    ASSERT_GE(yard, 0) << all.join("\n").toStdString();
    test::Find<ResultList>(panel, "lstCoverage").Select(static_cast<int>(yard));
    test::Click(panel, "butWhichRun");
    ASSERT_TRUE(QTest::qWaitFor([&] { return TextOf(r.Player(), "lblPlay") == "Yard, 1 turn"; }));
    EXPECT_EQ(r.Status(), "The run \"box\" gets there with line 1 of 3.");

    WhenOpen<frmRoomProperties>([](frmRoomProperties& form) {
        EXPECT_EQ(TextOf(form, "txtRoomName"), "Yard");
        form.reject();
    });
    PressKey(panel, "lstCoverage", Qt::Key_Return);
    r.ChangeRoom(1, "Deep mud."); // the list follows
    wait();
    EXPECT_EQ(TextsOf(panel, "lstCoverage").filter("room Yard").join(""), "Rooms|room Yard|entered once|");
}

const std::string Lift = CrLf("define game <Lift>\nstart <Shaft>\ncommand <lift> do <lift>\nend define\n"
                              "define room <Shaft>\nlook <Dark.>\nnorth <Roof>\nend define\n"
                              "define room <Roof>\nlook <Light.>\nend define\n"
                              "define procedure <lift>\nmsg <Up.>\n"
                              "if flag <up> then msg <Still up.> else flag on <up>\nend define\n");

/// Uses the menu that opens next.
void ChooseInNextMenu(const char* action) {
    QTimer::singleShot(50, qApp, [action] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        menu->setActiveAction(&Find<QAction>(*menu, action));
        QTest::keyClick(menu, Qt::Key_Return);
    });
}

TEST(ReachedLines, EditorsAndTheMapMarkWhatNoRunReachesAndPlayTheRunThatDoes) {
    RunningProgram p;
    p.folder.Write("game.kel.tests", "run once seed 1\n\n> look\n\n> lift\n");
    p.StartWith(Lift);
    p.Main()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(p.Main()));
    auto* runs = p.Find<QToolButton>("butRuns");
    ASSERT_TRUE(QTest::qWaitFor([&] { return runs->text() == "1 run well"; })); // a new run is no change
    const QString steps = "mnuViewProcedures > cmbProcedures=lift, butEdit > lstFriendlyLines=If";
    FollowSteps(*p.Main(), steps, [&](QWidget& script) {
        auto& block = test::Find<QListView>(script, "blkWhole");
        QStringList remarks;
        for (int row = 0; row < block.model()->rowCount(); ++row) {
            const QString text = block.model()->index(row, 0).data(Qt::AccessibleTextRole).toString();
            remarks.append(text.contains(" (never ") ? text.section(" (", -1).chopped(1) : "-");
        }
        EXPECT_EQ(remarks.join("|"), "-|never true|never run|-|-");
        const auto* second = test::Find<QListWidget>(script, "lstFriendlyLines").item(1);
        EXPECT_TRUE(second->data(Qt::AccessibleTextRole).toString().endsWith("(never true)"));
        EXPECT_FALSE(second->icon().isNull());
        block.setCurrentIndex(block.model()->index(0, 0));
        ChooseInNextMenu("actWhichRun");
        const QPoint at = block.visualRect(block.currentIndex()).center();
        QContextMenuEvent ask(QContextMenuEvent::Keyboard, at, block.viewport()->mapToGlobal(at));
        QApplication::sendEvent(block.viewport(), &ask);
        static_cast<QDialog&>(script).reject();
        static_cast<QDialog*>(script.parentWidget())->reject();
    });
    ASSERT_TRUE(QTest::qWaitFor([&] {
        return p.Status() == "The run \"once\" gets there with line 2 of 2.";
    })) << p.Status();

    p.Trigger("mnuToolsMap");
    auto& map = test::Find<MapPanel>(*p.Main(), "dckMap");
    WaitFor([&] { return map.IsBusy(); });
    EXPECT_FALSE(map.Canvas().DescribeRoom(0).contains("No run"));
    EXPECT_TRUE(map.Canvas().DescribeRoom(1).endsWith("\nNo run and no walk has entered this room."));
    p.Select("lstRooms", 0);
    p.Trigger("mnuToolsWhichRun");
    ASSERT_TRUE(QTest::qWaitFor([&] {
        return p.Status() == "The run \"once\" gets there with line 0 of 2.";
    })) << p.Status();
    p.Select("lstRooms", 1);
    p.Trigger("mnuToolsWhichRun");
    ASSERT_TRUE(QTest::qWaitFor([&] { return p.Status() == "No recorded run gets there."; })) << p.Status();
}

} // namespace
} // namespace zem::test
