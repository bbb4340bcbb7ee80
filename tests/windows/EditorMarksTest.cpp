// What is wrong with a record stands at its fields while it is edited.
#include "windows/EditorMarks.h"

#include "editors/frmEditItems.h"
#include "editors/frmMenuList.h"
#include "editors/frmRoomProperties.h"
#include "editors/frmSelectionWindow.h"
#include "editors/frmSynonyms.h"
#include "editors/frmTextSectionEdit.h"
#include "editors/frmThingProperties.h"
#include "support/Panels.h"
#include "support/RunningProgram.h"
#include "windows/FieldMark.h"

#include <QLabel>
#include <QMenu>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

constexpr std::string_view Marked =
    "define game <Test>\r\nstart <Hall>\r\nend define\r\n"
    "define room <Hall>\r\nlook <A long hall.>\r\nnorth <Atic>\r\neast <Attic>\r\n"
    "define object <chest>\r\nlook msg <It is |q shut.>\r\ntake give <kee>\r\nend define\r\nend define\r\n"
    "define room <Attic>\r\nlook <Dust.>\r\nsouth <Hall>\r\nscript if in <Hall> then win\r\nend define\r\n"
    "define text <win>\r\nDone.\r\nend define\r\n";

/// An editor with its marks.
struct MarkedForm {
    explicit MarkedForm(QWidget& window) : form(window) { Wait(); }

    void Wait() const {
        // A key in a window has its effect first.
        WaitFor([this] { return form.findChild<EditorMarks*>()->IsBusy(); });
    }
    /// The controls that have a mark, in the order of their names, each with what is told.
    std::string Marks() const {
        QStringList told;
        for (const FieldMark* mark : form.findChildren<FieldMark*>())
            told.append(mark->Control().objectName() + ": " + mark->accessibleName());
        told.sort();
        return told.join(u'\n').toStdString();
    }
    QStringList MenuAt(const char* control) const {
        QStringList entries;
        for (const QAction* entry : MarkAt(control).menu()->actions())
            entries.append(entry->text());
        return entries;
    }
    FieldMark& MarkAt(const char* control) const {
        return Find<FieldMark>(form, (std::string("mark_") + control).c_str());
    }

    QWidget& form;
};

constexpr const char* ExitMark = "cmbRoomNames_1: error: ";

TEST(EditorMarks, StandAtTheFieldsAndAreFixedThere) {
    RunningProgram p(Marked);
    p.Select("lstRooms", 0);
    p.Open<frmRoomProperties>("butEditRoom", [](frmRoomProperties& form) {
        const MarkedForm m(form);
        ASSERT_TRUE(m.Marks().starts_with(ExitMark)) << m.Marks();
        EXPECT_EQ(m.Marks().find('\n'), std::string::npos)
            << "the chest has an editor of its own: " << m.Marks();
        auto& exit = Find<QComboBox>(form, "cmbRoomNames_1");
        EXPECT_TRUE(exit.accessibleDescription().contains("Atic")) << "heard with the field";
        PressKey(form, "txtRoomAlias", Qt::Key_F8);
        EXPECT_EQ(form.focusWidget(), &exit) << "on another page";
        const QStringList menu = m.MenuAt("cmbRoomNames_1");
        EXPECT_EQ(menu.mid(1), (QStringList{"Fix: Change to Attic"}))
            << "and not the room that could be made: that is another record";
        m.MarkAt("cmbRoomNames_1").menu()->actions()[1]->trigger();
        EXPECT_EQ(exit.currentText(), "Attic");
        m.Wait();
        EXPECT_EQ(m.Marks(), "");
        EXPECT_FALSE(exit.accessibleDescription().contains("Atic"));
        Click(form, "butOK");
    });
    EXPECT_EQ(p.game.Rooms[1].North->Key, "Attic");
    p.Trigger("mnuToolsUndo");
    EXPECT_EQ(p.game.Rooms[1].North->Key, "Atic");
}

TEST(EditorMarks, FollowWhatIsTypedBeforeItIsConfirmed) {
    RunningProgram p(Marked);
    p.Select("lstRooms", 1);
    const GameModel before = p.game;
    p.Open<frmRoomProperties>("butEditRoom", [](frmRoomProperties& form) {
        const MarkedForm m(form);
        const std::string first = m.Marks();
        EXPECT_EQ(first.find("txtDescription:"), std::string::npos) << first;
        Find<QWidget>(form, "txtDescription").setFocus();
        TypeText(form, "txtDescription", "Red |q ");
        m.Wait();
        EXPECT_NE(m.Marks().find("txtDescription: warning:"), std::string::npos) << m.Marks();
        for (int key = 0; key < 3; ++key)
            PressKey(form, "txtDescription", Qt::Key_Backspace);
        m.Wait();
        EXPECT_EQ(m.Marks(), first);
        for (int key = 0; key < 4; ++key)
            PressKey(form, "txtDescription", Qt::Key_Backspace);
        Click(form, "butCancel");
    });
    EXPECT_TRUE(SameGame(p.game, before));
}

TEST(EditorMarks, AreThoseOfTheThingInItsEditor) {
    RunningProgram p(Marked);
    p.Select("lstRooms", 0);
    p.Select("lstObjects", 0);
    p.Open<frmThingProperties>("butEditObj_1", [](frmThingProperties& form) {
        const MarkedForm m(form);
        EXPECT_TRUE(m.Marks().starts_with("txtDescription: warning: ")) << m.Marks();
        EXPECT_NE(m.Marks().find("\ntxtInteract: error: "), std::string::npos) << m.Marks();
        EXPECT_NE(m.Marks().find("kee"), std::string::npos) << m.Marks();
        Click(form, "butCancel");
    });
}

constexpr std::string_view MarkedLists =
    "define game <Test>\r\nstart <Hall>\r\nitems <key; oar>\r\nstartitems <key>\r\n"
    "startscript choose <where>\r\nafterturn if has <key> and has <oar> then text <letter>\r\nend define\r\n"
    "define synonyms\r\nget = take\r\ntake = take\r\nend define\r\n"
    "define room <Hall>\r\nlook <A long hall.>\r\nend define\r\n"
    "define text <letter>\r\nDear |q.\r\nend define\r\n"
    "define selection <other>\r\ninfo <What?>\r\nchoice <nothing> win\r\nend define\r\n"
    "define selection <where>\r\ninfo <Where |q?>\r\nchoice <up> goto <Atic>\r\nend define\r\n"
    "define text <win>\r\nDone.\r\nend define\r\n";

TEST(EditorMarks, StandInListEditorsAndInTheWindowsThatTheyOpen) {
    RunningProgram p(MarkedLists);
    p.Open<frmEditItems>("mnuViewItems", [](frmEditItems& form) {
        const MarkedForm m(form);
        EXPECT_TRUE(m.Marks().starts_with("lstItems: warning: item oar: ")) << m.Marks();
        Click(form, "butCancel");
    });
    p.Open<frmSynonyms>("mnuViewSynonyms", [](frmSynonyms& form) {
        const MarkedForm m(form);
        EXPECT_TRUE(m.Marks().starts_with("lstSynonyms: warning: synonym take, words: ")) << m.Marks();
    });
    p.Open<frmTextSectionEdit>("mnuViewTextSectionEditor", [](frmTextSectionEdit& form) {
        const MarkedForm m(form);
        SelectRow(form, "cmbTextSections", static_cast<int>(Rows(form, "cmbTextSections").indexOf("win")));
        PressKey(form, "cmbTextSections", Qt::Key_Shift);
        m.Wait();
        EXPECT_TRUE(m.Marks().starts_with("cmbTextSections: warning: ")) << m.Marks();
        SelectRow(form, "cmbTextSections", static_cast<int>(Rows(form, "cmbTextSections").indexOf("letter")));
        PressKey(form, "cmbTextSections", Qt::Key_Shift);
        m.Wait();
        EXPECT_TRUE(m.Marks().starts_with("txtText: warning: ")) << "beside its text: " << m.Marks();
        Click(form, "butClose");
    });
    p.Open<frmMenuList>("mnuViewMenus", [](frmMenuList& form) {
        const MarkedForm m(form);
        EXPECT_TRUE(m.Marks().starts_with("lstMenus: warning: menu where, prompt: ")) << m.Marks();
        EXPECT_NE(m.Marks().find("error: menu where, choice up, "), std::string::npos) << m.Marks();
        for (const int row : {0, 1}) {
            SelectRow(form, "lstMenus", row);
            WhenOpen<frmSelectionWindow>([&](frmSelectionWindow& menu) {
                PressKey(menu, "txtInfo", Qt::Key_Shift);
                m.Wait();
                const bool isMarked = menu.findChild<FieldMark*>("mark_txtInfo") != nullptr;
                EXPECT_EQ(isMarked, row == 1) << "the other menu has no mistake";
                Click(menu, "butCancel");
            });
            Click(form, "butEdit");
            m.Wait();
        }
        EXPECT_EQ(m.Marks().find("txtInfo"), std::string::npos) << "the window is closed: " << m.Marks();
    });
}

} // namespace
} // namespace zem::test
