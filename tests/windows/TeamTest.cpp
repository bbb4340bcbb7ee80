// What several authors of one game need: what has changed, merging, figures, exports.
#include "commands/ConflictFile.h"
#include "forms/MessageBar.h"
#include "panels/ChangesPanel.h"
#include "panels/DifferenceView.h"
#include "panels/FiguresPanel.h"
#include "panels/MergePanel.h"
#include "panels/frmDifferences.h"
#include "panels/frmMerge.h"
#include "reader/LoadGame.h"
#include "support/Cases.h"
#include "support/Panels.h"
#include "support/SmallGame.h"
#include "windows/frmVersions.h"

#include <QComboBox>
#include <QDockWidget>
#include <QLabel>
#include <QSpinBox>
#include <QTextBrowser>
#include <QTreeWidget>

#include <fstream>
#include <gtest/gtest.h>

namespace zem::test {
namespace {

/// A game of a hall and an attic.
std::string TowerWith(const char* hall, const char* attic) {
    return CrLf(std::string("define game <Tower>\nstart <Hall>\nend define\ndefine room <Hall>\nlook <") +
                hall + ">\nend define\ndefine room <Attic>\nlook <" + attic + ">\nend define\n");
}

struct Team : RunningProgram {
    using RunningProgram::RunningProgram;

    void WaitForDifferences(const QWidget& window) const {
        WaitFor([&] { return window.findChild<DifferenceView*>()->IsBusy(); });
    }
    std::string Look(int room) const { return game.Rooms[room].Look; }
    void SetLook(int room, const char* text) const {
        program->Session().Change([&](GameModel& model) { model.Rooms.Edit(room).Look = text; });
    }
    void Overwrite(const char* name, const std::string& bytes) const { folder.Write(name, bytes); }
    void PressInBar(const char* text) const {
        for (auto* button : Main()->findChildren<QPushButton*>())
            if (button->text() == QLatin1String(text) && button->isVisible()) {
                button->click();
                return;
            }
        ADD_FAILURE() << "no button " << text;
    }
    QStringList Conflicts() const { return TextsOf(*Main(), "lstConflicts"); }
};

TEST(ChangesPanel, FollowsTheGameAndComparesWithAnyVersion) {
    const Team p(TowerWith("Dark.", "Dusty."));
    p.Trigger("mnuToolsChanges");
    p.WaitForDifferences(*p.Main());
    EXPECT_EQ(TextOf(*p.Main(), "lblDifferences"), "Nothing differs");
    p.SetLook(2, "Dusty and old.");
    p.WaitForDifferences(*p.Main());
    EXPECT_EQ(TextsOf(*p.Main(), "lstDifferences"), QStringList{"room|description|changed|Dusty and old."});
    EXPECT_NE(p.Find<QTextBrowser>("txtDifference")->toPlainText().indexOf("and old"), -1);

    p.Trigger("mnuFileSave");
    p.WaitForDifferences(*p.Main());
    EXPECT_EQ(TextOf(*p.Main(), "lblDifferences"), "Nothing differs");
    auto* since = p.Find<QComboBox>("cmbSince");
    ASSERT_EQ(since->count(), 3) << "last saved, the save, and what was there before Zem changed it";
    since->setCurrentIndex(2);
    p.WaitForDifferences(*p.Main());
    EXPECT_EQ(TextsOf(*p.Main(), "lstDifferences").size(), 1);
    p.SetLook(1, "Light.");
    p.WaitForDifferences(*p.Main());
    EXPECT_EQ(TextsOf(*p.Main(), "lstDifferences").size(), 2) << "still with that version";
    since->setCurrentIndex(0);
    p.WaitForDifferences(*p.Main());
    EXPECT_EQ(TextsOf(*p.Main(), "lstDifferences").size(), 1);
    p.program->Session().Change([](GameModel& game) {
        game.Rooms.Append().Name = "Loft";
        game.Rooms.Edit(3).Alias = "the loft";
        game.Rooms.Edit(3).Look = "High.";
    });
    p.WaitForDifferences(*p.Main());
    EXPECT_TRUE(
        TextsOf(*p.Main(), "lstDifferences")
            .contains(QStringLiteral("room|room Loft|added|alias: the loft \u00B7 description: High.")))
        << TextsOf(*p.Main(), "lstDifferences").join(u'\n').toStdString();
}

TEST(EarlierVersions, ShowWhatHasChangedSinceBeforeOneIsOpened) {
    const Team p(TowerWith("Dark.", "Dusty."));
    p.Trigger("mnuFileSave");
    p.SetLook(1, "Light.");
    QStringList shown;
    std::string told;
    p.Open<frmVersions>("mnuToolsVersions", [&](frmVersions& form) {
        p.WaitForDifferences(form);
        shown = TextsOf(form, "lstDifferences");
        auto& list = Find<QTreeWidget>(form, "lstVersions");
        std::ofstream(PathFromQt(Versions(p.Path("state/versions")).List(p.Path("game.kel")).at(1).path))
            << "no game";
        list.setCurrentItem(list.topLevelItem(1));
        p.WaitForDifferences(form);
        told = TextOf(form, "lblDifferences");
    });
    EXPECT_EQ(shown, QStringList{"room|description|changed|Light."});
    EXPECT_NE(told.find("no Kel game"), std::string::npos) << told;
}

TEST(MergePanel, SettlesConflictsAsStepsThatCanBeUndone) {
    Team p(TowerWith("Mine.", "Old."));
    const QString theirs = PathToQt(p.folder.Write("theirs.kel", TowerWith("Theirs.", "New.")));
    const QString base = PathToQt(p.folder.Write("base.kel", TowerWith("Dark.", "Old.")));
    p.dialogs.OpenFile(theirs);
    p.dialogs.OpenFile(base);
    p.Open<frmMerge>("mnuToolsMerge", [](frmMerge& form) {
        EXPECT_FALSE(IsEnabled(form, "butMerge"));
        Click(form, "butTheirs");
        Click(form, "butBase");
        Click(form, "butMerge");
    });
    EXPECT_EQ(p.Look(1), "Mine.");
    EXPECT_EQ(p.Look(2), "New.") << "where only they changed something";
    EXPECT_EQ(p.Conflicts(), QStringList{"room|room Hall, description|to decide|both changed it"});
    EXPECT_EQ(p.Find<QTextBrowser>("txtBase")->toPlainText(), "Dark.");
    EXPECT_EQ(p.Find<QTextBrowser>("txtTheirs")->toPlainText(), "Theirs.");
    EXPECT_FALSE(p.IsEnabled("butFinishMerge"));

    p.SetLook(2, "Newer."); // an edit meanwhile stays
    p.Click("butTakeTheirs");
    EXPECT_EQ(p.Look(1), "Theirs.");
    EXPECT_EQ(p.Look(2), "Newer.");
    EXPECT_EQ(UndoText(p), "&Undo take theirs: room Hall, description, -");
    EXPECT_TRUE(p.Conflicts().constFirst().contains("|theirs|"));
    EXPECT_TRUE(p.IsEnabled("butFinishMerge"));
    p.Trigger("mnuToolsUndo");
    EXPECT_EQ(p.Look(1), "Mine.");
    EXPECT_TRUE(p.Conflicts().constFirst().contains("|to decide|"));
    EXPECT_FALSE(p.IsEnabled("butFinishMerge"));
    p.Click("butTakeMine");
    EXPECT_TRUE(p.Conflicts().constFirst().contains("|mine|"));
    EXPECT_EQ(p.Look(1), "Mine.");
    p.Click("butFinishMerge");
    EXPECT_TRUE(p.Conflicts().isEmpty());
}

TEST(MergePanel, GoesOnWithWhatAMergeOutsideHasLeft) {
    const auto versions = [] {
        merge::MergeVersions all;
        ReadGame(all.base, TowerWith("Dark.", "Old."));
        ReadGame(all.ours, TowerWith("Mine.", "Old."));
        ReadGame(all.theirs, TowerWith("Theirs.", "Old."));
        return all;
    }();
    const std::string conflicts = ConflictFile(merge::MergeGames(versions), versions, "game.kel");
    for (const auto& [list, isWhole] :
         Cases<std::string, bool>{{conflicts, true},
                                  {conflicts.substr(0, conflicts.size() / 2), false},
                                  {"{}", false},
                                  {"", false}}) {
        Team p;
        const std::string file = p.folder.Write("game.kel.conflicts", list);
        p.StartWith(TowerWith("Mine.", "Old."));
        if (!isWhole)
            p.dialogs.Message(
                QStringLiteral("Merge: game.kel.conflicts: this is no list of the conflicts of a "
                               "merge. The file is left as it is."));
        p.PressInBar("Sett&le the conflicts");
        EXPECT_EQ(ReadBytes(file), list);
        if (!isWhole)
            continue;
        EXPECT_EQ(p.Conflicts().size(), 1);
        EXPECT_FALSE(p.game.Modified) << "nothing is changed by looking";
        p.Click("butTakeTheirs");
        EXPECT_EQ(p.Look(1), "Theirs.");
        p.Click("butFinishMerge");
        EXPECT_EQ(ReadBytes(file), list) << "nothing else keeps the other version before a save";
        p.dialogs.SaveFile(p.Path("other.kel"));
        p.Trigger("mnuFileSaveAs");
        EXPECT_EQ(ReadBytes(file), list) << "the first game still has its conflicts";
    }
}

TEST(MergePanel, RemovesTheListOfConflictsWithTheSaveThatSettlesThem) {
    merge::MergeVersions versions;
    ReadGame(versions.base, TowerWith("Dark.", "Old."));
    ReadGame(versions.ours, TowerWith("Mine.", "Old."));
    ReadGame(versions.theirs, TowerWith("Theirs.", "Old."));
    for (const bool isFinished : {true, false}) {
        Team p;
        const std::string file = p.folder.Write(
            "game.kel.conflicts", ConflictFile(merge::MergeGames(versions), versions, "game.kel"));
        p.StartWith(TowerWith("Mine.", "Old."));
        p.PressInBar("Sett&le the conflicts");
        p.Click("butTakeTheirs");
        if (isFinished)
            p.Click("butFinishMerge");
        p.Trigger("mnuFileSave");
        EXPECT_NE(p.Saved().find("look <Theirs.>"), std::string::npos);
        EXPECT_EQ(std::filesystem::exists(file), !isFinished);
    }
}

TEST(MergePanel, TakesTheMarksApartThatGitLeft) {
    const std::string hall =
        "define room <Hall>\r\n<<<<<<< HEAD\r\nlook <Mine.>\r\n=======\r\nlook <Theirs.>\r\n"
        ">>>>>>> their branch\r\nend define\r\n";
    const std::string start = "define game <Tower>\r\nstart <Hall>\r\nend define\r\n";
    Team p(start + hall);
    p.PressInBar("Mer&ge both versions");
    EXPECT_EQ(p.Look(1), "Mine.");
    EXPECT_EQ(p.Conflicts(), QStringList{"room|room Hall, description|to decide|both changed it"});
    p.Click("butTakeTheirs");
    EXPECT_EQ(p.Look(1), "Theirs.");
    EXPECT_EQ(p.game.Rooms[1].MiscTags, "") << "no mark is left";
    EXPECT_EQ(p.Saved(), start + hall) << "until the author saves";

    p.game.Modified = false;
    const std::string half = hall.substr(0, hall.find(">>>>>>>")) + "end define\r\n";
    p.Main()->OpenFile(PathToQt(p.folder.Write("half.kel", start + half)));
    p.dialogs.Message(QStringLiteral("Merge: The marks in half.kel are not whole: a line \"<<<<<<<\", "
                                     "\"=======\" or \">>>>>>>\" is missing. Nothing is changed."));
    p.PressInBar("Mer&ge both versions");
}

TEST(ChangedOnDisk, CanBeComparedAndMerged) {
    Team p(TowerWith("Dark.", "Old."));
    p.SetLook(1, "Mine.");
    p.Overwrite("game.kel", TowerWith("Dark.", "Theirs."));
    const QString question =
        QStringLiteral("File changed: The file %1 has been changed by another program since "
                       "it was opened or saved here. [&Keep mine|Save mine under &another "
                       "name...|&Reload|Show &differences...|&Merge both]")
            .arg(p.Path("game.kel"));
    p.dialogs.Choice(question, 3);
    p.dialogs.Choice(question, 4);
    QStringList shown;
    WhenOpen<frmDifferences>([&](frmDifferences& form) {
        p.WaitForDifferences(form);
        shown = TextsOf(form, "lstDifferences");
    });
    p.Trigger("mnuFileSave");
    EXPECT_EQ(shown.size(), 2) << "mine, and theirs";
    EXPECT_EQ(p.Look(1), "Mine.");
    EXPECT_EQ(p.Look(2), "Theirs.");
    EXPECT_TRUE(p.game.Modified) << "what came in is to be looked at before it is saved";
    p.Trigger("mnuFileSave"); // without a question
    EXPECT_NE(p.Saved().find("look <Mine.>"), std::string::npos);
    EXPECT_NE(p.Saved().find("look <Theirs.>"), std::string::npos);
}

TEST(FiguresPanel, CountsAndLeadsToWhatItCounts) {
    const Team p(TowerWith("Three dark words.", ""));
    p.Trigger("mnuToolsFigures");
    auto* panel = p.Find<FiguresPanel>("dckFigures");
    const auto value = [&](const char* figure) {
        WaitFor([&] { return panel->IsBusy(); });
        auto* list = p.Find<QTreeWidget>("lstFigures");
        for (int row = 0; row < list->topLevelItemCount(); ++row)
            if (list->topLevelItem(row)->text(0) == QLatin1String(figure)) {
                list->setCurrentItem(list->topLevelItem(row));
                WaitFor([&] { return panel->IsBusy(); });
                return list->topLevelItem(row)->text(1).toStdString();
            }
        return std::string("none");
    };
    EXPECT_EQ(value("rooms"), "2");
    EXPECT_EQ(TextsOf(*p.Main(), "lstCounted").size(), 2);
    EXPECT_EQ(value("words in descriptions"), "3");
    p.SetLook(2, "One more.");
    EXPECT_EQ(value("words in descriptions"), "5");
    p.Find<QSpinBox>("spnWordsPerMinute")->setValue(50);
    EXPECT_EQ(value("minutes to read it all, about"), "1 (an estimate)");
}

TEST(Export, WritesWhatTheEndingSaysAndAgainAsLastTime) {
    Team p(TowerWith("Dark.", "Old."));
    const auto wait = [&](const char* start) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return p.Status().starts_with(start); }, 20000)) << p.Status();
    };
    for (const auto& [name, begins] : Cases<const char*, const char*>{{"book.html", "<!DOCTYPE html>"},
                                                                      {"data.json", "{"},
                                                                      {"book.pdf", "%PDF"},
                                                                      {"book.MD", "<a id=\"game\">"}}) {
        p.dialogs.SaveFile(p.Path(name));
        p.Trigger("mnuToolsExport");
        wait("Exported to ");
        EXPECT_TRUE(ReadBytes(p.folder.Path(name)).starts_with(begins)) << name;
        std::filesystem::remove(p.folder.Path(name));
        p.Trigger("mnuToolsExportAgain");
        wait("Exported to ");
        EXPECT_TRUE(ReadBytes(p.folder.Path(name)).starts_with(begins)) << name;
    }
    for (const auto& [name, message] : Cases<const char*, const char*>{
             {"book.doc",
              "The ending of book.doc does not tell what to write. A book ends in .html, .md or .pdf, "
              "the table of the rooms in .csv, all data in .json, the map in .dot, a walkthrough in "
              ".txt."},
             {"walk.txt", "There is no recorded run beside this game to make a walkthrough of."}}) {
        p.dialogs.SaveFile(p.Path(name));
        p.dialogs.Message(QStringLiteral("Export: %1").arg(QLatin1String(message)));
        p.Trigger("mnuToolsExport");
        EXPECT_FALSE(std::filesystem::exists(p.folder.Path(name)));
    }
    p.folder.Write("game.kel.tests", "run short seed 1\n\n> look\n\nrun long seed 1\n\n> north\n");
    p.dialogs.SaveFile(p.Path("walk.txt"));
    p.dialogs.Choice("Export: Which run is the walkthrough to follow? [short|long]", 1);
    p.Trigger("mnuToolsExport");
    wait("Exported to ");
    EXPECT_NE(ReadBytes(p.folder.Path("walk.txt")).find("north"), std::string::npos);
    p.dialogs.SaveFile(p.Path("none/book.html"));
    p.dialogs.Message(QStringLiteral("Export: %1 is not written: the file cannot be written: its folder or "
                                     "the file itself is not there.")
                          .arg(p.Path("none/book.html")));
    p.Trigger("mnuToolsExport");
    EXPECT_TRUE(QTest::qWaitFor([&] { return p.Status().empty(); }, 20000));
}

TEST(Publish, WritesAPageAndAsksWhenTheGameHasErrors) {
    Team p(TowerWith("Dark.", "Old."));
    /// Whether a page is written, with what is told on the way.
    const auto publish = [&](const QString& message, QMessageBox::StandardButton answer = QMessageBox::Ok) {
        p.dialogs.SaveFile(p.Path("page.html"));
        if (!message.isEmpty())
            p.dialogs.Message(QStringLiteral("Publish as web page: ") + message, answer);
        p.Trigger("mnuToolsPublish");
        EXPECT_TRUE(QTest::qWaitFor([&] { return p.Status() != "Making the page..."; }, 60000));
        p.dialogs.ExpectAllAsked();
        std::error_code error;
        const bool isWritten = std::filesystem::remove(p.folder.Path("page.html"), error);
        EXPECT_EQ(p.Status().starts_with("Published as "), isWritten) << p.Status();
        return isWritten;
    };
    EXPECT_FALSE(
        publish("The game is not published: the player for web pages is not there yet. ./run.sh builds "
                "it after the editor has opened, which takes some minutes and needs clang with its "
                "libraries for wasm32; build/release/web_player.log tells more."));
    std::filesystem::create_directory(p.folder.Path("program/web"));
    for (const char* part : {"page.html", "page.css", "page.js"})
        std::filesystem::copy_file(ZEM_SOURCES "/../web/" + std::string(part),
                                   p.folder.Path("program/web/") + part);
    p.folder.Write("program/web/player.wasm.gz", "PLAYER");
    p.SetLook(2, "Not saved yet.");
    EXPECT_TRUE(publish(""));
    const auto setStart = [&](const char* script) {
        p.program->Session().Change([&](GameModel& game) { game.StartScript = script; });
    };
    setStart("goto <Loft>");
    for (const auto answer : {QMessageBox::No, QMessageBox::Yes})
        EXPECT_EQ(
            publish("The game has an error:\ngame properties, start action: There is no room \"Loft\", so "
                    "\"goto\" does nothing here.\n\nPublish it all the same?",
                    answer),
            answer == QMessageBox::Yes);
    setStart("picture <tower.png>");
    EXPECT_TRUE(
        publish("The page is written, but:\nthe page does without tower.png, which is not beside the game"));
    p.program->Session().Change([](GameModel& game) { game.StartRoom = "nowhere"; });
    EXPECT_FALSE(publish(
        "The game is not published: The game cannot begin: its start room, nowhere, does not exist."));
}

} // namespace
} // namespace zem::test
