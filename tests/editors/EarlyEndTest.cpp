// Of a text that ends at a ">" in the file the author is told where it is typed, and of no other.
#include "forms/Dialogs.h"
#include "readback/LooseComparison.h"
#include "script/frmConditional.h"
#include "script/frmScriptEditor.h"
#include "script/frmScriptLines.h"
#include "support/Cases.h"
#include "support/EditorGame.h"
#include "support/RunningProgram.h"
#include "support/WhenOpen.h"

#include <QLabel>

#include <gtest/gtest.h>
#include <set>

namespace zem::test {
namespace {

/// Types the text into the box; whether a remark stands beside it then, and only as long as it has the focus.
bool IsTold(QWidget& form, const std::string& box, const QString& text) {
    auto& control = Find<QWidget>(form, box.c_str());
    EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
    control.setFocus();
    EXPECT_TRUE(control.hasFocus()) << box;
    const auto* remark = form.findChild<QLabel*>(QString::fromStdString(box + "_EarlyEnd"));
    EXPECT_TRUE(remark == nullptr || !remark->isVisible()) << box << " of a text that is as it should be";
    PressKey(form, box.c_str(), Qt::Key_End);
    TypeText(form, box.c_str(), text);
    const bool isTold = remark != nullptr && remark->isVisible();
    EXPECT_TRUE(!isTold || form.rect().contains(remark->geometry())) << box;
    control.clearFocus();
    EXPECT_TRUE(remark == nullptr || !remark->isVisible()) << box << " without the focus";
    return isTold;
}

/// Takes the steps as in "button", "LIST=ROW", "button>" for a window in which the rest is done, types into
/// the box at their end and closes all with the last button that they have for that.
bool TypeAtTheEnd(QWidget& form, QStringList steps, const std::string& box) {
    bool isTold = false;
    bool isInner = false;
    while (!steps.isEmpty()) {
        const QString step = steps.takeFirst();
        const std::string control = step.section('=', 0, 0).remove('>').toStdString();
        if (step.contains('=')) {
            SelectRow(form, control.c_str(), step.section('=', 1).toInt());
            continue;
        }
        isInner = step.endsWith('>');
        if (isInner)
            WhenOpen<QDialog>([&isTold, &box, rest = std::exchange(steps, {})](QDialog& inner) {
                isTold = TypeAtTheEnd(inner, rest, box);
            });
        Click(form, control.c_str());
    }
    if (!isInner)
        isTold = IsTold(form, box, "x>y");
    for (const char* close : {"butOK", "butClose", "butAdd"})
        if (form.findChild<QPushButton*>(QLatin1String(close)) != nullptr) {
            Click(form, close);
            break;
        }
    return isTold;
}

TEST(EarlyEnd, IsToldJustWhereTheFileLosesIt) {
    std::set<bool> outcomes;
    for (const auto& [command, steps, boxes] : Cases<const char*, const char*, const char*>{
             {"butEditRoom", "", "txtRoomAlias txtPrefix txtInDescription txtDescription"},
             {"butEditRoom", "butExits", "cmbRoomNames_0 cmbRoomNames_3 cmbRoomNames_8"},
             {"butEditRoom", "butExits butAddPlace>", "txtPrefix cmbPlaceNames"},
             {"butEditRoom", "butMisc butCommands> lstCommands=0 butEdit>", "txtCommand"},
             {"butEditObj_0", "", "txtThingName txtPrefix txtSuffix txtGender"},
             {"butEditObj_1", "", "txtThingName txtPrefix txtSuffix"},
             {"mnuViewGameProperties", "", "txtGameName cmbRoomNames txtGameAuthor txtGameVersion"},
             {"mnuViewGameProperties", "", "txtGameCopyright txtGameInfo"},
             {"mnuViewGameProperties", "butFonts", "txtFontName"},
             {"mnuViewCollectables", "lstNames=0 butEdit>", "txtName txtDisplay"},
             {"mnuEditErrorMessages", "lstErrors=0", "txtError"},
             {"mnuViewMenus", "lstMenus=0 butEdit>", "txtInfo"},
             {"mnuViewSynonyms", "lstSynonyms=0 butEdit>", "txtConvertTo"},
             {"mnuViewTextSectionEditor", "cmbTextSections=0", "txtText"},
             {"mnuViewMiscKEL", "", "txtTags"}})
        for (const QString& box : QString(boxes).split(' ')) {
            SCOPED_TRACE(std::string(command) + ' ' + steps + ' ' + box.toStdString());
            RunningProgram p(EditorGame());
            p.game.SelectionMenus.Append().Name = "menu";
            for (const char* list : {"lstRooms", "lstCharacters", "lstObjects"})
                p.Select(list, 0);
            bool isTold = false;
            p.Open<QDialog>(command, [&, steps = steps](QDialog& form) {
                isTold = TypeAtTheEnd(form, QString(steps).split(' ', Qt::SkipEmptyParts), box.toStdString());
            });
            GameModel back = p.game;
            const bool isReadable = ProblemOf([&] { back = LoadBytes(SaveToBytes(p.game), back); }).empty();
            EXPECT_EQ(isTold, !isReadable || !IsSameInFile(p.game, back));
            outcomes.insert(isTold);
        }
    EXPECT_EQ(outcomes.size(), 2U);
}

TEST(EarlyEnd, IsToldInTheParametersOfScripts) {
    RunningProgram p(EditorGame());
    p.Select("lstRooms", 0);
    p.Open<QDialog>("butEditRoom", [](QDialog& room) {
        WhenOpen<frmScriptLines>([](frmScriptLines& script) {
            WhenOpen<frmScriptEditor>([](frmScriptEditor& line) {
                Find<QComboBox>(line, "cmbFriendly").setCurrentIndex(0);
                EXPECT_TRUE(IsTold(line, "txtParameter", "a > b"));
                Click(line, "butOK");
            });
            Click(script, "butAdd");
            EXPECT_EQ(Rows(script, "lstScriptLines").constLast(), "msg <a > b>") << "nothing typed is lost";
            WhenOpen<frmConditional>([](frmConditional& line) {
                EXPECT_TRUE(IsTold(line, "txtConditionParameter", "a > b"));
                SetText(line, "txtRaw", "");
                EXPECT_FALSE(IsTold(line, "txtRaw", "if has <x> then win"));
            });
            Click(script, "butAddConditional");
        });
        Click(room, "butEditScript");
    });
}

TEST(EarlyEnd, IsToldOfANameWhichIsThenTakenAsItIs) {
    ScriptedDialogs dialogs;
    for (const auto& [second, name] : Cases<std::optional<QString>, std::optional<QString>>{
             {"a>b", "a>b"}, {"ab", "ab"}, {std::nullopt, std::nullopt}, {"", std::nullopt}}) {
        dialogs.Text("Title: Prompt []", "a>b");
        dialogs.Message(
            "Title: A name ends at its first \">\" in a game file: what stands from there on would "
            "be lost. You can change it now.");
        dialogs.Text("Title: Prompt [a>b]", second);
        EXPECT_EQ(AskName(dialogs, nullptr, "Prompt", "Title"), name);
    }
}

} // namespace
} // namespace zem::test
