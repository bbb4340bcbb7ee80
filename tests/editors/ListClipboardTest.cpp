// Copying, pasting and dragging in the lists of the editors.
#include "editors/frmEditItems.h"
#include "editors/frmMenuList.h"
#include "editors/frmPlayerCommandEditor.h"
#include "editors/frmProcedureEditor.h"
#include "editors/frmTextSectionEdit.h"
#include "forms/ListRows.h"
#include "forms/RowDrag.h"
#include "kel/ScriptTree.h"
#include "qt/QtText.h"
#include "script/ScriptDraft.h"
#include "script/frmConditional.h"
#include "script/frmScriptLines.h"
#include "support/Cases.h"
#include "support/Controls.h"
#include "support/Games.h"
#include "support/ScriptFixture.h"

#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QMimeData>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

class ListClipboards : public ScriptFixture {
protected:
    ListClipboards() {
        game =
            LoadBytes(CrLf("define game <x>\nitems <key; lamp>\nstartitems <lamp>\nend define\n"
                           "define procedure <Open>\nif has <key> then {\nmsg <Open.>\nwin\n}\nend define\n"
                           "define procedure <Shut>\ndo <Shut>\nend define\n"
                           "define text <Echo>\nEcho.\nend define\n"
                           "define selection <Wares>\ninfo <?>\nchoice <Key> give <key>\nend define\n"));
    }

    static void Press(QWidget& form, const char* list, Qt::Key key, Qt::KeyboardModifiers more = {}) {
        PressKey(form, list, key, Qt::ControlModifier | more);
    }
    static void Copy(QWidget& form, const char* list) { Press(form, list, Qt::Key_C, Qt::ShiftModifier); }
    static std::string Clip() { return QGuiApplication::clipboard()->text().toStdString(); }
    static void SetClip(const char* text) { QGuiApplication::clipboard()->setText(QLatin1String(text)); }
    static std::string Shown(const QWidget& form, const char* list) {
        return test::Rows(form, list).join(u',').toStdString();
    }
};

TEST_F(ListClipboards, EveryListPastesWhatItCopiesUnderAFreeName) {
    const auto check = [&](QWidget& form, const char* list, const char* before, const char* copied,
                           const char* after) {
        form.show();
        EXPECT_EQ(Shown(form, list), before);
        SelectRow(form, list, static_cast<int>(test::Rows(form, list).indexOf(QLatin1String(copied))));
        Copy(form, list);
        Press(form, list, Qt::Key_V);
        EXPECT_EQ(Shown(form, list), after);
        Press(form, list, Qt::Key_X);
        Press(form, list, Qt::Key_D); // with nothing selected, or the row that came there
    };
    frmEditItems items(context);
    check(items, "lstItems", "key,lamp", "lamp", "key,lamp,lamp 2");
    EXPECT_EQ(Clip(), "items <lamp 2>\nstartitems <lamp 2>\n") << "what was cut last";
    Click(items, "butOK");
    EXPECT_EQ(ItemsToText(game), "key; lamp; lamp 2");

    frmProcedureEditor procedures(context);
    check(procedures, "cmbProcedures", "Open,Shut", "Shut", "Open,Shut,Shut 2");
    frmMenuList menus(context);
    check(menus, "lstMenus", "Wares", "Wares", "Wares,Wares 2");
    EXPECT_EQ(game.SelectionMenus[1].Choices[1].Script, "give <key>");
    frmTextSectionEdit texts(context);
    check(texts, "cmbTextSections", "Echo,intro,win,lose", "Echo", "Echo,intro,win,lose,Echo 2");
}

TEST_F(ListClipboards, ProceduresBringTheirInternalOnesAndMeanThemselves) {
    frmProcedureEditor form(context);
    form.show();
    auto& list = Find<QListWidget>(form, "cmbProcedures");
    SelectRows(list, {0, 1});
    Press(form, "cmbProcedures", Qt::Key_D);
    ASSERT_EQ(Shown(form, "cmbProcedures"), "Open,Shut,Open 2,Shut 2");
    EXPECT_EQ(SelectedRows(list), (std::vector<int>{2, 3}));
    ASSERT_EQ(game.Procedures.Count(), 6) << "two of them internal";
    EXPECT_EQ(game.Procedures[5].Script, "do <Shut 2>\r\n");
    Press(form, "cmbProcedures", Qt::Key_X);
    EXPECT_EQ(Shown(form, "cmbProcedures"), "Open,Shut");
    SelectRow(form, "cmbProcedures", 1);
    Press(form, "cmbProcedures", Qt::Key_D);
    EXPECT_EQ(Shown(form, "cmbProcedures"), "Open,Shut,Shut 2") << "the rows still mean their procedures";
}

TEST_F(ListClipboards, OtherKindsAreToldAndStayOut) {
    frmEditItems form(context);
    form.show();
    SetClip("define room <Hall>\nend define\n");
    dialogs.Message("Paste: Nothing was pasted. The text holds room Hall, which cannot be pasted here.");
    Press(form, "lstItems", Qt::Key_V);
    const QString greek = QString::fromUtf8("items <\u0394>");
    QGuiApplication::clipboard()->setText(greek);
    dialogs.Message("Paste: Nothing was pasted. " + UnstorableCharacter(greek).value());
    Press(form, "lstItems", Qt::Key_V);
    EXPECT_EQ(Shown(form, "lstItems"), "key,lamp");
}

TEST_F(ListClipboards, PlayerCommandsStayInTheirWindowUntilItIsConfirmed) {
    std::vector<ScriptPair> edited = {{"wait", "msg <Later.>"}};
    SetClip("command <sing> {\nmsg <La.>\nmsg <La la.>\n}\n");
    const ScriptDraft draft(scripts);
    frmPlayerCommandEditor form(context, edited);
    form.show();
    Press(form, "lstCommands", Qt::Key_V);
    ASSERT_EQ(Shown(form, "lstCommands"), "wait,sing");
    EXPECT_EQ(UnfoldScript(scripts.Game(), form.Commands()[1].Script),
              (std::vector<std::string>{"msg <La.>", "msg <La la.>"}));
    EXPECT_EQ(door.changes, 0);
    SelectRow(form, "lstCommands", 0);
    Copy(form, "lstCommands");
    EXPECT_EQ(Clip(), "command <wait> msg <Later.>\n");
}

TEST_F(ListClipboards, LinesAreCopiedPastedAndDragged) {
    for (const char* list : {"lstScriptLines", "lstFriendlyLines"}) {
        friendly = list == std::string("lstFriendlyLines");
        const auto form =
            Open<frmScriptLines>("msg <1>\r\nif has <key> then do <~Internal Procedure 0>\r\nmsg <3>");
        auto& lines = Find<QListWidget>(*form, list);
        const auto raw = [&] { return Shown(*form, "lstScriptLines"); };
        const auto click = [&](int row, Qt::KeyboardModifiers modifiers) {
            const QPoint at = lines.visualItemRect(lines.item(row)).center();
            QTest::mouseClick(lines.viewport(), Qt::LeftButton, modifiers, at);
            QTest::qWait(0);
        };
        click(1, {});
        click(2, Qt::ShiftModifier);
        EXPECT_EQ(SelectedRows(lines), (std::vector<int>{1, 2}));
        click(2, {});
        EXPECT_EQ(SelectedRows(lines), (std::vector<int>{2})) << "the others are let go of";
        click(0, Qt::ControlModifier);
        EXPECT_EQ(SelectedRows(lines), (std::vector<int>{0, 2}));
        Copy(*form, list);
        EXPECT_EQ(Clip(), "msg <1>\nmsg <3>\n");
        SelectRows(lines, {1});
        Copy(*form, list);
        SelectRows(lines, {0});
        Press(*form, list, Qt::Key_V);
        EXPECT_EQ(raw(), "msg <1>,if has <key> then do <~Internal Procedure " +
                             std::string(friendly ? "2" : "1") +
                             ">,if has <key> then do <~Internal Procedure 0>,msg <3>");
        EXPECT_EQ(SelectedRows(lines), (std::vector<int>{1}));
        Press(*form, list, Qt::Key_X);
        SetClip("msg <a>\nmsg <b>");
        SelectRows(lines, {1});
        Press(*form, list, Qt::Key_V);
        EXPECT_EQ(raw(), "msg <1>,if has <key> then do <~Internal Procedure 0>,msg <a>,msg <b>,msg <3>");
        EXPECT_EQ(SelectedRows(lines), (std::vector<int>{2, 3}));

        // Lets the two go above the first line.
        QMimeData data;
        const QPoint top = lines.visualItemRect(lines.item(0)).topLeft() + QPoint(3, 1);
        QDropEvent drop(top, Qt::MoveAction, &data, Qt::LeftButton, {});
        // Only in a drag of its own Qt hands a drop on, so it goes to those who would get it first.
        for (QObject* filter : lines.children())
            if (filter->eventFilter(lines.viewport(), &drop))
                break;
        QTest::qWait(0);
        EXPECT_EQ(raw(), "msg <a>,msg <b>,msg <1>,if has <key> then do <~Internal Procedure 0>,msg <3>");
        EXPECT_EQ(SelectedRows(lines), (std::vector<int>{0, 1}));
        PressKey(*form, list, Qt::Key_Delete);
        EXPECT_EQ(raw(), "msg <1>,if has <key> then do <~Internal Procedure 0>,msg <3>");
    }
    EXPECT_EQ(door.changes, 2) << "the procedure that was pasted, each time";
}

TEST_F(ListClipboards, ConditionsArePastedBehindTheSelectedOne) {
    const auto form = Open<frmConditional>("if has <key> and not in <Hall> or flag <lit> then win");
    auto& list = Find<QListWidget>(*form, "lstConditions");
    SelectRows(list, {1, 2});
    Copy(*form, "lstConditions");
    EXPECT_EQ(Clip(), "if not in <Hall> or flag <lit>");
    SelectRows(list, {0});
    Press(*form, "lstConditions", Qt::Key_V);
    EXPECT_EQ(TextOf(*form, "txtRaw"),
              "if has <key> and not in <Hall> or flag <lit> and not in <Hall> or flag <lit> then win");
    Press(*form, "lstConditions", Qt::Key_X);
    EXPECT_EQ(TextOf(*form, "txtRaw"), "if has <key> and not in <Hall> or flag <lit> then win");
    for (const auto& [text, told] : Cases<const char*, const char*>{
             {"msg <Hi>", "This is no condition: \"msg\"."},
             {"if has <key> then win",
              "The line says what is to be done, too; it can be pasted in the window of a script."},
             {"has <a>\nhas <b>",
              "Conditions stand in one line, such as \"if has <key> and not in <Hall>\"."}}) {
        SetClip(text);
        dialogs.Message(QLatin1String("Paste: Nothing was pasted. ") + QLatin1String(told));
        Press(*form, "lstConditions", Qt::Key_V);
        dialogs.ExpectAllAsked();
    }
    SetClip("has <rope>");
    Press(*form, "lstConditions", Qt::Key_V);
    EXPECT_NE(TextOf(*form, "txtRaw").find("has <rope>"), std::string::npos);
}

TEST(MovedRows, KeepTheirOrderWhereverTheyGo) {
    const std::vector<char> items = {'a', 'b', 'c', 'd'};
    const auto moved = [&](const std::vector<int>& rows, int to) {
        const std::vector<char> result = Moved(items, rows, to);
        return std::string(result.begin(), result.end());
    };
    EXPECT_EQ(moved({0}, 2), "bacd");
    EXPECT_EQ(moved({0}, 0), "abcd");
    EXPECT_EQ(moved({0}, 1), "abcd");
    EXPECT_EQ(moved({1, 3}, 0), "bdac");
    EXPECT_EQ(moved({0, 2}, 4), "bdac");
    EXPECT_EQ(moved({0, 2}, 2), "bacd") << "between themselves";
}

} // namespace
} // namespace zem::test
