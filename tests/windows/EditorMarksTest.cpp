// What is wrong with a record stands at its fields while it is edited.
#include "windows/EditorMarks.h"

#include "editors/frmRoomProperties.h"
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

} // namespace
} // namespace zem::test
