// What Cancel of an editor leaves behind: nothing, also of what the script windows inside it have stored.
#include "script/frmScriptEditor.h"
#include "script/frmScriptLines.h"
#include "support/EditorGame.h"
#include "support/RunningProgram.h"
#include "support/WhenOpen.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

/// Adds a line to the script. With two it needs an internal procedure.
void AddLine(const QWidget& script) {
    WhenOpen<frmScriptEditor>([](frmScriptEditor& line) {
        TypeText(line, "cmbFriendly", "Clear the screen");
        Click(line, "butOK");
    });
    Click(script, "butAdd");
}

/// Takes the steps in the form. "LIST=ROW" selects, "button" clicks, "button>" opens a window in which the
/// steps after it are taken, the last of them a script window. All windows are closed with OK but the one at
/// the depth, which is cancelled; 0 is the form.
void Walk(const QWidget& form, QStringList steps, int cancelled) {
    while (!steps.isEmpty()) {
        const QString step = steps.takeFirst();
        const std::string control = step.section('=', 0, 0).remove('>').toStdString();
        if (step.contains('=')) {
            SelectRow(form, control.c_str(), step.section('=', 1).toInt());
            continue;
        }
        if (step.endsWith('>'))
            WhenOpen<QDialog>([rest = std::exchange(steps, {}), cancelled](QDialog& inner) {
                Walk(inner, rest, cancelled - 1);
            });
        Click(form, control.c_str());
    }
    if (qobject_cast<const frmScriptLines*>(&form) != nullptr)
        do
            AddLine(form);
        while (Rows(form, "lstScriptLines").size() < 2);
    Click(form, cancelled == 0 ? "butCancel" : "butOK");
}

struct Way {
    const char* command;
    const char* steps;
    int depth; // of the script window
};

constexpr Way Ways[] = {
    {"butEditRoom", "butEditScript>", 1},
    {"butEditRoom", "butEditDescriptionScript>", 1},
    {"butEditRoom", "lstPlaces=0 butScript>", 1},
    {"butEditRoom", "butEditUse> lstItems=0 butEdit>", 2},
    {"butEditRoom", "butCommands> lstCommands=0 butEdit> butEdit>", 3},
    {"butEditRoom", "butCommands> butAdd> butEdit>", 3},
    {"butEditObj_0", "butLookAction>", 1},
    {"butEditObj_0", "butEditGive> lstItems=0 butEdit>", 2},
    {"butEditObj_1", "butSpeakAction>", 1},
    {"mnuViewGameProperties", "butEditStartScript>", 1},
    {"mnuViewGameProperties", "butCommands> lstCommands=0 butEdit> butEdit>", 3},
    {"mnuViewGameProperties", "butUseableObjects> lstItems=0 butEdit>", 2},
    {"mnuViewMenus", "lstMenus=0 butEdit> lstMenu=0 butEdit>", 2},
};

class Cancel : public testing::Test {
protected:
    Cancel() {
        p.StartWith(EditorGame());
        SelectionMenu& menu = p.game.SelectionMenus.Append();
        menu.Choices.Append({"yes", "msg <a>"});
        for (const char* list : {"lstRooms", "lstCharacters", "lstObjects"})
            p.Select(list, 0);
    }

    void Open(const std::string& command, const std::function<void(QDialog&)>& use) const {
        p.Open<QDialog>(command.c_str(), use);
    }

    RunningProgram p;
};

TEST_F(Cancel, TakesBackWhatTheScriptWindowsOfAnEditorHaveStored) {
    for (const auto& [command, steps, depth] : Ways) {
        const QStringList way = QString(steps).split(' ');
        for (int cancelled = depth; cancelled >= 0; --cancelled) {
            SCOPED_TRACE(std::string(command) + ' ' + steps + ", cancelled " + std::to_string(cancelled));
            const GameModel before = p.game;
            // The list of menus has no Cancel; what it stores at once is the menu whose editor had its OK.
            const bool isList = std::string(command) == "mnuViewMenus";
            if (isList && cancelled == 0)
                continue;
            Open(command, [&, cancelled = cancelled](QDialog& form) { Walk(form, way, cancelled); });
            EXPECT_EQ(p.game.Procedures, before.Procedures);
            EXPECT_EQ(p.game.NextInternalProcedure, before.NextInternalProcedure);
            if (cancelled == 0) {
                EXPECT_EQ(p.game.Modified, before.Modified);
                EXPECT_TRUE(SameGame(p.game, before));
            }
        }
        const int procedures = p.game.Procedures.Count();
        Open(command, [&, depth = depth](QDialog& form) { Walk(form, way, depth + 1); });
        EXPECT_EQ(p.game.Procedures.Count(), procedures + 1) << command << ' ' << steps;
    }
}

// A script that was given an internal procedure is drawn and opened as such before OK has stored it.
TEST_F(Cancel, LeavesAnInternalProcedureAsItWasBefore) {
    p.game.Procedures.Append({"~Internal Procedure 1", "msg <a>\r\nmsg <b>"});
    p.game.NextInternalProcedure = 2;
    const int internal = p.game.Procedures.Count();
    p.game.Rooms.Edit(1).Script = "do <~Internal Procedure 1>";
    const GameModel before = p.game;
    for (const char* close : {"butCancel", "butOK"}) {
        Open("butEditRoom", [close](QDialog& form) {
            for (int lines = 3; lines < 5; ++lines) {
                WhenOpen<frmScriptLines>([](frmScriptLines& script) {
                    AddLine(script);
                    Click(script, "butOK");
                });
                Click(form, "butEditScript");
                EXPECT_EQ(QString::fromStdString(TextOf(form, "txtScript")).split('\n').size(), lines);
            }
            Click(form, close);
        });
        EXPECT_EQ(SameGame(p.game, before), std::string(close) == "butCancel");
    }
    EXPECT_EQ(p.game.Procedures[internal].Script, "msg <a>\r\nmsg <b>\r\nclear <>\r\nclear <>");
    EXPECT_EQ(p.game.Procedures.Count(), internal);
}

// The action of an exit is stored at once, and with it its procedure, but not those of other scripts.
TEST_F(Cancel, KeepsTheActionOfAnExitAlone) {
    p.game.NextInternalProcedure = 5;
    const int procedures = p.game.Procedures.Count();
    Open("butEditRoom", [](QDialog& form) {
        for (const char* button : {"butEditScript", "butRoomAction_0", "butRoomAction_0"}) {
            WhenOpen<frmScriptLines>([](frmScriptLines& script) {
                AddLine(script);
                Click(script, "butOK");
            });
            Click(form, button);
        }
        WhenOpen<frmScriptLines>([](frmScriptLines& script) { Click(script, "butCancel"); });
        Click(form, "butRoomAction_0");
        Click(form, "butCancel");
    });
    ASSERT_EQ(p.game.Procedures.Count(), procedures + 1);
    EXPECT_EQ(p.game.Procedures[procedures + 1],
              (Procedure{"~Internal Procedure 6", "msg <bye>\r\nclear <>\r\nclear <>"}));
    EXPECT_EQ(p.game.Rooms[1].Out->Script, "do <~Internal Procedure 6>");
    EXPECT_EQ(p.game.Rooms[1].Script, "msg <enter>");
    EXPECT_EQ(p.game.NextInternalProcedure, 7);
}

/// What is changed in a window, and how to get there from the form.
struct Change {
    const char* command;
    const char* steps;   // as in Walk, to the window
    const char* control; // a box to fill, a button to click or a row to tick
};

constexpr Change Changes[] = {
    {"butEditRoom", "", "txtRoomAlias"},
    {"butEditRoom", "", "txtDescription"},
    {"butEditRoom", "butAddPlace>", "cmbPlaceNames"},
    {"butEditRoom", "butMoreTags>", "txtTags"},
    {"butEditRoom", "butEditUse> lstItems=0", "butRemove"},
    {"butEditRoom", "butCommands> lstCommands=0", "butRemove"},
    {"butEditRoom", "butCommands> lstCommands=0 butEdit>", "txtCommand"},
    {"butEditRoom", "butCommands> butAdd>", "txtCommand"},
    {"butEditRoom", "butEditScript> lstFriendlyLines=0", "butRemove"},
    {"butEditRoom", "butEditScript> lstFriendlyLines=0 butEdit>", "txtParameter"},
    {"butEditRoom", "butEditScript> butAddConditional>", "txtConditionParameter"},
    {"butEditRoom", "butRoomAction_0> lstFriendlyLines=0 butEdit>", "txtParameter"},
    {"butEditObj_0", "", "txtGender"},
    {"butEditObj_1", "", "chkHidden"},
    {"mnuViewGameProperties", "", "txtGameInfo"},
    {"mnuViewGameProperties", "", "txtGameName"},
    {"mnuViewCollectables", "lstNames=0", "butRemove"},
    {"mnuViewCollectables", "lstNames=0 butEdit>", "txtDisplay"},
    {"mnuEditErrorMessages", "lstErrors=0", "txtError"},
    {"mnuViewMenus", "lstMenus=0 butEdit>", "txtInfo"},
    {"mnuViewProcedures", "cmbProcedures=0 butEdit> lstFriendlyLines=0 butEdit>", "txtParameter"},
    {"mnuViewItems", "lstItems=0", "butRemove"},
    {"mnuViewLibraries", "lstLibs=0", "butRemove"},
    {"mnuViewSynonyms", "lstSynonyms=0", "butRemove"},
    {"mnuViewSynonyms", "lstSynonyms=0 butEdit>", "txtConvertTo"},
    {"mnuViewMiscKEL", "", "txtTags"},
};

/// Goes to the window at the end of the steps and calls `use` there.
void GoTo(QWidget& form, QStringList steps, const std::function<void(QWidget&)>& use) {
    while (!steps.isEmpty()) {
        const QString step = steps.takeFirst();
        const std::string control = step.section('=', 0, 0).remove('>').toStdString();
        if (step.contains('=')) {
            SelectRow(form, control.c_str(), step.section('=', 1).toInt());
            continue;
        }
        if (step.endsWith('>')) {
            WhenOpen<QDialog>([steps, &use](QDialog& inner) { GoTo(inner, steps, use); });
            Click(form, control.c_str());
            return;
        }
        Click(form, control.c_str());
    }
    use(form);
}

TEST_F(Cancel, AsksBeforeEscOrTheCloseButtonDiscardsChangesInAnyWindow) {
    for (const auto& [command, steps, control] : Changes) {
        SCOPED_TRACE(std::string(command) + ' ' + steps + ' ' + control);
        const GameModel before = p.game;
        for (const bool isChanged : {false, true})
            for (const bool byKey : {true, false})
                Open(command, [&, control = control, steps = steps](QDialog& form) {
                    GoTo(form, QString(steps).split(' ', Qt::SkipEmptyParts), [&](QWidget& window) {
                        const auto leave = [&] {
                            if (byKey)
                                QTest::keyClick(&window, Qt::Key_Escape);
                            else
                                window.close();
                            return !window.isVisible();
                        };
                        if (isChanged) {
                            if (QString(control).startsWith("but") || QString(control).startsWith("chk"))
                                Click(window, control);
                            else
                                SetText(window, control, "another");
                            const QString question = window.windowTitle() + ": Discard changes?";
                            p.dialogs.Message(question, QMessageBox::No);
                            EXPECT_FALSE(leave());
                            GameModel typed = p.program->Edits().Preview();
                            EXPECT_FALSE(SameGame(typed, before)) << "the recovery copy holds what is typed";
                            p.dialogs.Message(question, QMessageBox::Yes);
                        }
                        EXPECT_TRUE(leave());
                        p.dialogs.ExpectAllAsked();
                    });
                });
        EXPECT_TRUE(SameGame(p.game, before));
    }
}

} // namespace
} // namespace zem::test
