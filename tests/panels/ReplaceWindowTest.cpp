// Replacing words all over the game, in the real window on a real file.
#include "forms/ToolTip.h"
#include "panels/FindPanel.h"
#include "panels/frmRename.h"
#include "panels/frmReplace.h"
#include "support/Panels.h"
#include "support/RunningProgram.h"

#include <QLabel>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

constexpr std::string_view Lamps =
    "define game <Test>\r\nstart <lamp>\r\nend define\r\n"
    "define room <lamp>\r\nlook <A lamp. A lamp!>\r\nscript msg <The Lamp is lit.>\r\n"
    "command <rub lamp> goto <lamp>\r\nend define\r\n"
    "define room <Attic>\r\nlook <Dust on lampshades.>\r\nend define\r\n";

/// The window with what is typed into it.
struct ReplaceWindow {
    explicit ReplaceWindow(frmReplace& window) : form(window) { Wait(); }

    void Wait() const {
        WaitFor([this] { return form.IsBusy(); });
    }
    void Type(const char* box, const QString& text) const {
        Find<QLineEdit>(form, box).clear();
        TypeText(form, box, text);
        Wait();
    }
    void Replace(const QString& words, const QString& others) const {
        Type("txtReplaced", words);
        Type("txtReplacement", others);
    }
    void Press(const char* button) const {
        Click(form, button);
        Wait();
    }
    /// The rows with what comes in the last column.
    QStringList Rows() const { return ChangesOf(form); }
    std::string Answer() const { return TextOf(form, "lblAnswer"); }

    frmReplace& form;
};

TEST(ReplaceWindow, ShowsBeforeAndAfterAndChangesWhatIsTickedAsOneStep) {
    RunningProgram p(Lamps);
    const GameModel before = p.game;
    p.Open<frmReplace>("mnuToolsReplace", [&](frmReplace& form) {
        const ReplaceWindow w(form);
        EXPECT_FALSE(IsEnabled(form, "butOK"));
        w.Type("txtReplaced", "lamp");
        PressKey(form, "txtReplaced", Qt::Key_Return);
        w.Wait();
        EXPECT_TRUE(SameGame(p.game, before)) << "Return goes on to the other words";
        w.Type("txtReplacement", "oil");
        EXPECT_EQ(w.Rows().join(u'\n').toStdString(),
                  "game properties, start room|reference|lamp|This is a name: rename it instead.\n"
                  "room lamp, name|name|lamp|This is a name: rename it instead.\n"
                  "[x] room lamp, description|printed text|A lamp. A lamp!|A oil. A lamp!\n"
                  "[x] room lamp, description|printed text|A lamp. A lamp!|A lamp. A oil!\n"
                  "[x] room lamp, enter action|printed text|msg <The Lamp is lit.>|msg <The oil is lit.>\n"
                  "[x] room lamp, player command rub lamp, name|pattern|rub lamp|rub oil\n"
                  "room lamp, player command rub lamp, action|reference|goto <lamp>|"
                  "This is a name: rename it instead.\n"
                  "[x] room Attic, description|printed text|Dust on lampshades.|Dust on oilshades.");
        EXPECT_EQ(w.Answer(),
                  "8 places found. 3 are names: Rename changes them with all that refers to them.");
        Find<QCheckBox>(form, "chkFindWords").click();
        w.Wait();
        EXPECT_EQ(w.Rows().size(), 7) << "lampshades is another word";
        auto& list = Find<ChangeList>(form, "lstChanges");
        EXPECT_EQ(list.model()->index(2, 2).data(Qt::ToolTipRole).toString(), ToolTipOf("A lamp. A lamp!"))
            << "what looks like a tag is shown as it is";
        list.setCurrentIndex(list.model()->index(3, 0));
        PressKey(form, "lstChanges", Qt::Key_Space);
        EXPECT_EQ(TextOf(form, "butOK"), "&Replace 3 ticked");
        w.Press("butOK");
        EXPECT_EQ(p.game.Rooms[1].Look, "A oil. A lamp!");
        EXPECT_EQ(p.game.Rooms[1].Script, "msg <The oil is lit.>");
        EXPECT_EQ(p.game.Rooms[1].Commands[1].Key, "rub oil");
        EXPECT_EQ(p.game.Rooms[1].Name + p.game.StartRoom + p.game.Rooms[1].Commands[1].Script,
                  "lamplampgoto <lamp>");
        EXPECT_EQ(p.game.Rooms[2].Look, "Dust on lampshades.");
        EXPECT_EQ(w.Answer(), "3 places were changed, as one step.");
        EXPECT_EQ(w.Rows().size(), 3) << "what was done stays in sight";
        EXPECT_FALSE(IsEnabled(form, "butOK"));
        EXPECT_EQ(p.Find<QAction>("mnuToolsUndo")->text(), "&Undo replace lamp with oil");

        w.Press("butUndo");
        EXPECT_TRUE(SameGame(p.game, before));
        EXPECT_EQ(TextOf(form, "butOK"), "&Replace 4 ticked") << "and it can be done again";
        w.Press("butOK");
        Click(form, "butCancel");
    });
    p.Trigger("mnuToolsUndo");
    EXPECT_TRUE(SameGame(p.game, before));
}

TEST(ReplaceWindow, TicksManyAtOnceAndSaysWhatCannotBe) {
    RunningProgram p(Lamps);
    p.Open<frmReplace>("mnuToolsReplace", [&](frmReplace& form) {
        const ReplaceWindow w(form);
        w.Replace("lamp", "oil");
        const auto ticked = [&] { return Find<ChangeList>(form, "lstChanges").TickedCount(); };
        Find<QCheckBox>(form, "chkAll").click();
        EXPECT_EQ(ticked(), 0);
        EXPECT_FALSE(IsEnabled(form, "butOK"));
        PressKey(form, "lstChanges", Qt::Key_A, Qt::ControlModifier);
        PressKey(form, "lstChanges", Qt::Key_Space);
        EXPECT_EQ(ticked(), 5) << "all but the names";
        PressKey(form, "lstChanges", Qt::Key_Space);
        EXPECT_EQ(ticked(), 0);

        w.Replace("is lit", "is > lit");
        ASSERT_EQ(w.Rows().size(), 1);
        EXPECT_FALSE(w.Rows()[0].startsWith("[")) << w.Rows()[0].toStdString();
        EXPECT_FALSE(IsEnabled(form, "butOK"));

        Find<QCheckBox>(form, "chkFindExpression").click();
        w.Replace("(A|The) (l)amp", "$2ight");
        EXPECT_EQ(w.Rows().value(0),
                  "[x] room lamp, description|printed text|A lamp. A lamp!|light. A lamp!");
        w.Type("txtReplaced", "(");
        EXPECT_TRUE(w.Rows().isEmpty());
        EXPECT_NE(w.Answer(), "Nothing found.");
        EXPECT_FALSE(IsEnabled(form, "butOK"));
        Click(form, "butCancel");
    });
    EXPECT_FALSE(p.game.Modified);
}

TEST(ReplaceWindow, BeginsWithWhatIsBeingFoundAndLeavesNamesToRename) {
    RunningProgram p(Lamps);
    p.Trigger("mnuToolsFind");
    p.Find<QCheckBox>("chkFindWords")->click();
    TypeText(*p.Main(), "txtFind", "lamp");
    p.Open<frmReplace>("butFindReplace", [&](frmReplace& form) {
        const ReplaceWindow w(form);
        EXPECT_EQ(TextOf(form, "txtReplaced"), "lamp");
        EXPECT_EQ(w.Rows().size(), 7) << "whole words, as in the panel";
        auto& list = Find<ChangeList>(form, "lstChanges");
        list.setCurrentIndex(list.model()->index(2, 0));
        EXPECT_FALSE(IsEnabled(form, "butRename")) << "a printed text";
        list.setCurrentIndex(list.model()->index(6, 0));
        WhenOpen<frmRename>([](frmRename& rename) {
            EXPECT_EQ(rename.windowTitle(), "Rename room lamp");
            Find<QLineEdit>(rename, "txtNewName").clear();
            TypeText(rename, "txtNewName", "Cellar");
            WaitFor([&] { return rename.IsBusy(); });
            Click(rename, "butOK");
        });
        w.Press("butRename");
        EXPECT_EQ(p.game.Rooms[1].Name + p.game.StartRoom + p.game.Rooms[1].Commands[1].Script,
                  "CellarCellargoto <Cellar>");
        EXPECT_EQ(w.Rows().size(), 4) << "the list follows: the names are gone from it";
        w.Press("butOK");
        w.Press("butUndo");
        EXPECT_EQ(p.game.Rooms[1].Name + p.game.Rooms[1].Look, "CellarA lamp. A lamp!") << "one step back";
        Click(form, "butCancel");
    });
}

} // namespace
} // namespace zem::test
