// Problems, finding, "where used" and renaming, in the real main window on a real file.
#include "editors/frmEditItems.h"
#include "editors/frmRoomProperties.h"
#include "editors/frmTextSectionEdit.h"
#include "editors/frmThingProperties.h"
#include "game/Notes.h"
#include "panels/ChangeList.h"
#include "panels/FindPanel.h"
#include "panels/ProblemsPanel.h"
#include "panels/ResultList.h"
#include "panels/WhereUsedPanel.h"
#include "panels/frmRename.h"
#include "session/ProblemWatch.h"
#include "session/RenameTrail.h"
#include "support/Panels.h"
#include "support/RunningProgram.h"
#include "support/ZemCall.h"
#include "windows/frmRecovery.h"

#include <QDir>
#include <QLabel>
#include <QToolButton>
#include <QTreeWidget>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

constexpr std::string_view Faulty =
    "define game <Test>\r\nstart <Hall>\r\nend define\r\n"
    "define room <Hall>\r\nlook <A long hall with a lamp.>\r\nnorth <Atic>\r\neast <Attic>\r\n"
    "define object <chest>\r\nlook msg <It is shut.>\r\ntake give <kee>\r\nend define\r\nend define\r\n"
    "define room <Attic>\r\nlook <Dust, and a Lamp.>\r\nsouth <Hall>\r\nscript if in <Hall> then win\r\nend "
    "define\r\n"
    "define text <win>\r\nDone.\r\nend define\r\n";

struct Problems : RunningProgram {
    explicit Problems(std::string_view bytes = Faulty) : RunningProgram(bytes) {
        Trigger("mnuToolsProblems");
        Wait();
    }
    void Wait() const {
        auto* watch = Main()->findChild<ProblemWatch*>();
        WaitFor([&] { return watch->IsChecking() || Find<ProblemsPanel>("dckProblems")->IsBusy(); });
    }
    QStringList Rows() const { return TextsOf(*Main(), "lstProblems"); }

    /// Selects the first row that holds the text.
    void SelectRow(const char* text) const {
        for (int row = 0; row < Rows().size(); ++row)
            if (Rows()[row].contains(QLatin1String(text))) {
                Find<ResultList>("lstProblems")->Select(row);
                return;
            }
        ADD_FAILURE() << "no problem " << text;
    }
    QString InStatusBar() const { return Find<QToolButton>("butProblems")->text(); }
};

TEST(ProblemsPanel, IsAStateThatFollowsTheGame) {
    const Problems p;
    ASSERT_EQ(p.Rows().size(), 2) << p.Rows().join(u'\n').toStdString();
    EXPECT_TRUE(p.Rows()[0].startsWith("Hall|room Hall, exit north|error|")) << p.Rows()[0].toStdString();
    EXPECT_TRUE(p.Rows()[1].startsWith("Hall|object chest in Hall, take|error|"))
        << p.Rows()[1].toStdString();
    EXPECT_EQ(p.InStatusBar(), "2 errors, 0 warnings");
    const auto isMarked = [&](int room) {
        const QModelIndex index = p.Find<QAbstractItemView>("lstRooms")->model()->index(room, 0);
        const QImage icon = index.data(Qt::DecorationRole).value<QIcon>().pixmap(32, 32).toImage();
        return icon.width() == 32 && icon.pixelColor(16, 24).alpha() != 0;
    };
    EXPECT_TRUE(isMarked(0));
    EXPECT_FALSE(isMarked(1)) << "the attic has none";

    p.Trigger("mnuToolsNextProblem");
    p.Trigger("mnuToolsNextProblem");
    EXPECT_EQ(p.Find<ResultList>("lstProblems")->Selected(), 1);
    p.Trigger("mnuToolsNextProblem");
    EXPECT_EQ(p.Find<ResultList>("lstProblems")->Selected(), 0) << "after the last the first";
    p.Wait();
    EXPECT_EQ(p.Find<QPushButton>("butFix_0")->text(), "Change to Attic");
    p.Trigger("mnuToolsFixProblem");
    EXPECT_EQ(p.game.Rooms[1].North->Key, "Attic");
    p.Wait();
    ASSERT_EQ(p.Rows().size(), 1);
    EXPECT_EQ(p.Find<ResultList>("lstProblems")->Selected(), 0) << "the next one, so that the key goes on";
    p.Trigger("mnuToolsUndo");
    EXPECT_EQ(p.game.Rooms[1].North->Key, "Atic");
    p.Wait();
    EXPECT_EQ(p.Rows().size(), 2);
}

TEST(ProblemsPanel, ReturnOpensTheEditorAtThePlace) {
    const Problems p;
    p.SelectRow("exit north");
    WhenOpen<frmRoomProperties>([](frmRoomProperties& form) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return form.focusWidget()->objectName() == "cmbRoomNames_1"; }));
        Click(form, "butCancel");
    });
    PressKey(*p.Main(), "lstProblems", Qt::Key_Return);
}

TEST(ProblemsPanel, SilencesWithAReasonBesideTheGame) {
    Problems p;
    p.SelectRow("exit north");
    p.dialogs.Text("Silence: Why is this no problem? The reason is kept beside the game. []", "part two");
    PressKey(*p.Main(), "lstProblems", Qt::Key_Delete);
    p.Wait();
    EXPECT_EQ(p.Rows().size(), 1);
    EXPECT_EQ(p.Find<QLabel>("lblProblemCounts")->text().section(u',', -1), " 1 silenced");
    EXPECT_EQ(LoadNotes(p.folder.Path("game.kel")).silences.begin()->reason, "part two");
    EXPECT_FALSE(p.game.Modified);
}

TEST(ProblemsPanel, FixesAllOfAKindAsOneStep) {
    Problems p("define game <T>\r\nstart <Hall>\r\nend define\r\ndefine room <Hall>\r\nlook <x>\r\n"
               "north <hall>\r\neast <hall>\r\nend define\r\n");
    const auto wrong = p.Rows().filter("exit").filter("error").size();
    ASSERT_EQ(wrong, 2) << p.Rows().join(u'\n').toStdString();
    p.SelectRow("exit north");
    p.dialogs.Message(
        "Fix all of this kind: This will be done, as one step, wherever it makes no new error:\n\n"
        "room Hall, exit north: Change to Hall\nroom Hall, exit east: Change to Hall");
    p.Click("butFixAll");
    p.Wait();
    EXPECT_EQ(p.game.Rooms[1].East->Key + p.game.Rooms[1].North->Key, "HallHall");
    p.Trigger("mnuToolsUndo");
    EXPECT_EQ(p.game.Rooms[1].East->Key + p.game.Rooms[1].North->Key, "hallhall");
}

TEST(FindPanel, FindsWhileOneTypesAndGoesOnWhileTheGameChanges) {
    RunningProgram p(Faulty);
    p.Trigger("mnuToolsFind");
    auto* panel = p.Find<FindPanel>("dckFind");
    const auto find = [&](const QString& text) {
        p.Find<QLineEdit>("txtFind")->clear();
        TypeText(*p.Main(), "txtFind", text);
        WaitFor([&] { return panel->IsBusy(); });
        return TextsOf(*p.Main(), "lstHits");
    };
    EXPECT_EQ(find("lamp"), (QStringList{"Hall|room Hall, description|printed text|A long hall with a lamp.",
                                         "Attic|room Attic, description|printed text|Dust, and a Lamp."}))
        << find("lamp").join(u'\n').toStdString();
    EXPECT_EQ(p.Find<QLabel>("lblFindCount")->text(), "2 places");
    p.Find<QCheckBox>("chkFindCapitals")->click();
    EXPECT_EQ(find("Lamp").size(), 1);
    p.Find<QCheckBox>("chkFindExpression")->click();
    EXPECT_EQ(find("[Ll]amp").size(), 2);
    EXPECT_EQ(find("[").size(), 0);
    EXPECT_GT(p.Find<QLabel>("lblFindCount")->text().size(), 10) << "says what is wrong with the expression";
    EXPECT_EQ(find("Hall").size(), 4) << "the start, the name, an exit and a script";

    p.Find<ResultList>("lstHits")->Select(0);
    p.Find<QAbstractItemView>("lstRooms")
        ->setCurrentIndex(p.Find<QAbstractItemView>("lstRooms")->model()->index(1, 0));
    p.Click("butDeleteRoom");
    WaitFor([&] { return panel->IsBusy(); });
    EXPECT_EQ(TextsOf(*p.Main(), "lstHits").size(), 2);
}

TEST(WhereUsed, TellsEveryUseAndWhatALostNameLeavesBehind) {
    RunningProgram p(Faulty);
    p.Select("lstRooms", 0);
    p.Trigger("mnuToolsWhereUsed");
    auto* panel = p.Find<WhereUsedPanel>("dckWhereUsed");
    WaitFor([&] { return panel->IsBusy(); });
    EXPECT_EQ(p.Find<QLabel>("lblUsedCount")->text(), "3 places use it") << "start, exit, script";
    p.Click("butDeleteRoom");
    const auto bar = [&] {
        const auto bars = p.Main()->findChildren<MessageBar*>();
        return bars.isEmpty() ? QString() : bars.front()->Text();
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return !bar().isEmpty(); }, 10000));
    EXPECT_EQ(bar(), "3 places used the room Hall.");
    QPushButton* undo = nullptr;
    for (QPushButton* button : p.Main()->findChildren<MessageBar*>().front()->findChildren<QPushButton*>())
        if (button->text() == "U&ndo")
            undo = button;
    ASSERT_NE(undo, nullptr);
    undo->click();
    EXPECT_EQ(p.game.Rooms.Count(), 2);
}

TEST(Rename, ShowsWhatChangesAndIsOneStep) {
    RunningProgram p(Faulty);
    p.Select("lstRooms", 0);
    const GameModel before = p.game;
    p.Open<frmRename>("mnuToolsRename", [](frmRename& form) {
        EXPECT_EQ(form.windowTitle(), "Rename room Hall");
        const auto type = [&](const QString& name) {
            Find<QLineEdit>(form, "txtNewName").clear();
            TypeText(form, "txtNewName", name);
            WaitFor([&] { return form.IsBusy(); });
        };
        type("Attic");
        EXPECT_FALSE(IsEnabled(form, "butOK")) << "there is one already";
        EXPECT_FALSE(Find<QLabel>(form, "lblAnswer").text().isEmpty());
        type("a<b");
        EXPECT_FALSE(IsEnabled(form, "butOK"));
        type("Parlour");
        EXPECT_TRUE(IsEnabled(form, "butOK"));
        auto& changes = Find<ChangeList>(form, "lstChanges");
        EXPECT_EQ(changes.TickedCount(), 4) << "its name, the start, an exit, a script";
        EXPECT_EQ(changes.RowCount(), 5) << "and the word in a description, not ticked";
        Click(form, "butOK");
    });
    EXPECT_EQ(p.game.Rooms[1].Name + p.game.StartRoom + p.game.Rooms[2].South->Key, "ParlourParlourParlour");
    EXPECT_EQ(p.game.Rooms[2].Script, "if in <Parlour> then win");
    EXPECT_EQ(p.game.Rooms[1].Look, "A long hall with a lamp.");
    EXPECT_EQ(p.Find<QAction>("mnuToolsUndo")->text(), "&Undo rename Hall to Parlour");
    p.Trigger("mnuToolsUndo");
    EXPECT_TRUE(SameGame(p.game, before));
}

TEST(GoneNames, AreToldWhateverEditorTheyWentIn) {
    RunningProgram p("define game <T>\r\nstart <Hall>\r\nitems <key>\r\nend define\r\n"
                     "define room <Hall>\r\nlook <x>\r\nscript if has <key> then text <sign>\r\n"
                     "define object <cup>\r\nlook hide <cup>\r\nend define\r\nend define\r\n"
                     "define text <sign>\r\nWet paint\r\nend define\r\n");
    const auto told = [&] {
        EXPECT_TRUE(QTest::qWaitFor([&] { return p.Main()->findChild<MessageBar*>() != nullptr; }, 10000));
        auto* bar = p.Main()->findChild<MessageBar*>();
        QStringList buttons;
        for (const QPushButton* button : bar->findChildren<QPushButton*>())
            buttons.append(button->text());
        const QString text = bar->Text() + u' ' + buttons.join(u' ');
        bar->Close();
        EXPECT_TRUE(QTest::qWaitFor([&] { return p.Main()->findChild<MessageBar*>() == nullptr; }, 10000));
        return text.toStdString();
    };
    p.Open<frmEditItems>("mnuViewItems", [](frmEditItems& form) {
        SelectRow(form, "lstItems", 0);
        Click(form, "butRemove");
        Click(form, "butOK");
    });
    EXPECT_EQ(told(), "1 place used the item key. Sho&w U&ndo");
    p.dialogs.Text("Rename text section: Please enter a new name for this text section: [sign]", "board");
    p.Open<frmTextSectionEdit>("mnuViewTextSectionEditor", [](frmTextSectionEdit& form) {
        SelectRow(form, "cmbTextSections", static_cast<int>(Rows(form, "cmbTextSections").indexOf("sign")));
        Click(form, "butRename");
        Click(form, "butClose");
    });
    EXPECT_EQ(told(), "1 place still says text sign. Sho&w");
    p.Select("lstRooms", 0);
    p.Select("lstObjects", 0);
    p.Open<frmThingProperties>("butEditObj_1", [](frmThingProperties& form) {
        SetText(form, "txtThingName", "mug");
        Click(form, "butOK");
    });
    EXPECT_EQ(told(), "1 place still says object cup. Sho&w");
    p.Click("butDeleteRoom");
    EXPECT_EQ(told(), "1 place used the room Hall. Sho&w U&ndo") << "and what was in it used itself alone";
    p.Trigger("mnuToolsUndo");
    p.Select("lstRooms", 0);
    p.Click("butDeleteRoom");
    ASSERT_TRUE(QTest::qWaitFor([&] { return p.Main()->findChild<MessageBar*>() != nullptr; }, 10000));
    p.Trigger("mnuToolsUndo");
    EXPECT_TRUE(QTest::qWaitFor([&] { return p.Main()->findChild<MessageBar*>() == nullptr; }, 10000))
        << "the room is there again";
}

/// Gives what is selected another name.
void RenameTo(const RunningProgram& p, const QString& name,
              const std::function<void(frmRename&)>& look = {}) {
    p.Open<frmRename>("mnuToolsRename", [&](frmRename& form) {
        Find<QLineEdit>(form, "txtNewName").clear();
        TypeText(form, "txtNewName", name);
        WaitFor([&] { return form.IsBusy(); });
        if (look)
            look(form);
        Click(form, "butOK");
    });
}

TEST(Rename, AsksWhichOfSeveralOfOneName) {
    RunningProgram p("define game <T>\r\nstart <Hall>\r\nend define\r\n"
                     "define room <Hall>\r\nscript hide <door>\r\ndefine object <door>\r\nend define\r\n"
                     "define object <cup>\r\nend define\r\nend define\r\n"
                     "define room <Attic>\r\ndefine object <door>\r\nend define\r\nend define\r\n");
    const auto names = [&] {
        return p.game.Rooms[1].Objects[1].Name + " " + p.game.Rooms[2].Objects[1].Name + " " +
               p.game.Rooms[1].Script;
    };
    p.Select("lstRooms", 1);
    p.Select("lstObjects", 0);
    RenameTo(p, "gate", [](frmRename& form) {
        EXPECT_TRUE(Find<QCheckBox>(form, "chkOnly").isVisible());
        EXPECT_EQ(Find<ChangeList>(form, "lstChanges").TickedCount(), 1) << "the script may mean the other";
    });
    EXPECT_EQ(names(), "door gate hide <door>");
    p.Trigger("mnuToolsUndo");
    p.Select("lstObjects", 0);
    RenameTo(p, "gate", [](frmRename& form) {
        Find<QCheckBox>(form, "chkOnly").click();
        WaitFor([&] { return form.IsBusy(); });
    });
    EXPECT_EQ(names(), "gate gate hide <gate>");
    p.Select("lstRooms", 0);
    p.Select("lstObjects", 1);
    RenameTo(p, "mug", [](frmRename& form) {
        EXPECT_FALSE(Find<QCheckBox>(form, "chkOnly").isVisible()) << "there is one cup";
    });
    EXPECT_EQ(p.game.Rooms[1].Objects[2].Name, "mug");
}

TEST(Rename, IsInReachFromEveryListOfPlaces) {
    RunningProgram p(Faulty);
    const auto title = [&] {
        QString told;
        p.Open<frmRename>("mnuToolsRename", [&](frmRename& form) {
            told = form.windowTitle();
            Click(form, "butCancel");
        });
        return told;
    };
    const auto hasCommands = [&](const char* list) {
        QStringList commands;
        for (const QAction* action : p.Find<QWidget>(list)->actions())
            commands.append(action->objectName());
        return commands.contains("mnuToolsRename") && commands.contains("mnuToolsWhereUsed");
    };
    p.Trigger("mnuToolsFind");
    TypeText(*p.Main(), "txtFind", "kee");
    WaitFor([&] { return p.Find<FindPanel>("dckFind")->IsBusy(); });
    p.Find<ResultList>("lstHits")->Select(0);
    p.Find<ResultList>("lstHits")->setFocus();
    EXPECT_EQ(title(), "Rename item kee");
    p.Trigger("mnuToolsWhereUsed");
    WaitFor([&] { return p.Find<WhereUsedPanel>("dckWhereUsed")->IsBusy(); });
    EXPECT_EQ(p.Find<QLabel>("lblUsedCount")->text(), "1 place uses it");
    EXPECT_EQ(title(), "Rename item kee") << "from the list of its uses";

    const Problems q;
    q.SelectRow("exit north");
    q.Find<ResultList>("lstProblems")->setFocus();
    q.Open<frmRename>("mnuToolsRename", [](frmRename& form) {
        EXPECT_EQ(form.windowTitle(), "Rename room Atic");
        Click(form, "butCancel");
    });
    RunningProgram r("define game <T>\r\nstart <Hall>\r\nstartscript flag on <lit>\r\nend define\r\n"
                     "define room <Hall>\r\nlook <x>\r\nend define\r\n");
    r.Trigger("mnuToolsPlay");
    auto* watch = r.Find<QTreeWidget>("lstWatch");
    ASSERT_TRUE(QTest::qWaitFor([&] { return watch->topLevelItemCount() > 0; }, 10000));
    watch->setFocus();
    watch->setCurrentItem(watch->topLevelItem(0));
    r.Open<frmRename>("mnuToolsRename", [](frmRename& form) {
        EXPECT_EQ(form.windowTitle(), "Rename flag lit");
        Click(form, "butCancel");
    });
    EXPECT_EQ(watch->actions().size(), 2);
    for (const char* list : {"lstRooms", "lstCharacters", "lstObjects", "lstHits", "lstUses"}) {
        EXPECT_TRUE(hasCommands(list)) << list;
        for (const QAction* action : p.Find<QWidget>(list)->actions())
            EXPECT_TRUE(action->isSeparator() || !action->text().isEmpty()) << list;
    }
}

constexpr std::string_view Lit =
    "define game <Test>\r\nstart <Hall>\r\nend define\r\n"
    "define room <Hall>\r\ndefine object <lamp>\r\nlook msg <Bright.>\r\nend define\r\nend define\r\n"
    "define text <win>\r\nDone.\r\nend define\r\n";

TEST(Rename, TakesNotesAndRecordedRunsAlongWhenTheGameIsSaved) {
    RunningProgram p;
    const std::string notes =
        p.folder.Write("game.kel.notes", "silence E01 at room \"Hall\" because it is dark\n");
    const std::string runs = p.folder.Write("game.kel.tests", "run look seed 1\n\n> look at Lamp\n");
    p.StartWith(Lit);
    const std::string file = p.folder.Path("game.kel");
    ASSERT_EQ(ZemCall({"test", file, "--approve"}).result.exitStatus, 0);
    const std::string approved = ReadBytes(runs);
    ASSERT_NE(approved.find("Hall"), std::string::npos) << "the room is named in the story";
    const auto silenced = [&] {
        auto* watch = p.Main()->findChild<ProblemWatch*>();
        WaitFor([&] { return watch->IsChecking(); });
        return watch->Found().silenced;
    };
    const auto save = [&] {
        p.Trigger("mnuFileSave");
        WaitFor([&] { return p.Main()->findChild<RenameTrail*>()->IsBusy(); });
    };
    ASSERT_EQ(silenced(), 1);
    p.Select("lstRooms", 0);
    RenameTo(p, "Parlour");
    p.Select("lstObjects", 0);
    RenameTo(p, "Torch");
    EXPECT_EQ(silenced(), 1);
    EXPECT_EQ(ReadBytes(runs), approved) << "they fit the file, which has the old names";
    EXPECT_EQ(ReadBytes(notes), "silence E01 at room \"Hall\" because it is dark\n");
    save();
    EXPECT_EQ(ReadBytes(notes), "silence E01 at room \"Parlour\" because it is dark\n");
    EXPECT_NE(ReadBytes(runs).find("> look at Torch\n"), std::string::npos) << ReadBytes(runs);
    EXPECT_EQ(ReadBytes(runs).find("Hall"), std::string::npos) << ReadBytes(runs);
    EXPECT_EQ(ZemCall({"test", file}).result.exitStatus, 0);
    EXPECT_EQ(silenced(), 1);

    p.Trigger("mnuToolsUndo");
    p.Trigger("mnuToolsUndo");
    p.Trigger("mnuToolsRedo");
    p.Trigger("mnuToolsUndo");
    save();
    EXPECT_EQ(ReadBytes(runs).find("Torch"), std::string::npos) << ReadBytes(runs);
    EXPECT_EQ(ReadBytes(notes), "silence E01 at room \"Hall\" because it is dark\n");
    EXPECT_EQ(ZemCall({"test", file}).result.exitStatus, 0);
    EXPECT_EQ(silenced(), 1);
}

TEST(Rename, IsRememberedByTheCopyOfUnsavedChanges) {
    RunningProgram p;
    const std::string notes = p.folder.Write("game.kel.notes", "silence E01 at room \"Hall\"\n");
    p.folder.Write("game.kel", Lit);
    {
        RunningProgram killed;
        killed.Start(p.Path("game.kel"));
        killed.Select("lstRooms", 0);
        RenameTo(killed, "Parlour");
        killed.program->Rescue();
        const QDir copies(killed.Path("state/recovery"));
        QDir().mkpath(p.Path("state/recovery"));
        for (const QString& name : copies.entryList({"*.recovery"}, QDir::Files))
            QFile::copy(copies.filePath(name), p.Path("state/recovery/") + name);
    }
    EXPECT_EQ(ReadBytes(notes), "silence E01 at room \"Hall\"\n") << "the file has the old name";
    WhenOpen<frmRecovery>([](frmRecovery& form) { Click(form, "butRestore"); });
    p.Start();
    ASSERT_NE(p.Main(), nullptr);
    auto* watch = p.Main()->findChild<ProblemWatch*>();
    WaitFor([&] { return watch->IsChecking(); });
    EXPECT_EQ(watch->Found().silenced, 1);
    p.Trigger("mnuFileSave");
    EXPECT_EQ(ReadBytes(notes), "silence E01 at room \"Parlour\"\n");
}

TEST(RoomFilter, HidesTheRoomsThatDoNotMatch) {
    RunningProgram p(Faulty);
    TypeText(*p.Main(), "txtRoomFilter", "att");
    const auto* list = p.Find<QListView>("lstRooms");
    EXPECT_TRUE(list->isRowHidden(0));
    EXPECT_FALSE(list->isRowHidden(1));
    p.Find<QLineEdit>("txtRoomFilter")->clear();
    EXPECT_FALSE(list->isRowHidden(0));
}

} // namespace
} // namespace zem::test
