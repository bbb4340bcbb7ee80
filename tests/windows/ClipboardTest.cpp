// Copying, pasting, duplicating and dragging in the lists of the main window.
#include "forms/ListRows.h"
#include "panels/MapPanel.h"
#include "support/Cases.h"
#include "support/RunningProgram.h"

#include <QClipboard>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QMimeData>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

const std::string Manor = CrLf("define game <Manor>\nstart <Hall>\nend define\n"
                               "define room <Hall>\nnorth <Attic>\n"
                               "define character <Bob>\nspeak msg <Hi.>\nend define\n"
                               "define object <lamp>\ntake {\ngive <lamp>\nhide <lamp>\n}\nend define\n"
                               "define object <rope>\nend define\nend define\n"
                               "define room <Attic>\nsouth <Hall>\nend define\n"
                               "define room <Cellar>\nend define\n");

QString Clip() {
    return QGuiApplication::clipboard()->text();
}

void SetClip(const std::string& text) {
    QGuiApplication::clipboard()->setText(ToQt(text));
}

class Clipboard : public testing::Test {
protected:
    Clipboard() : p(Manor) { QGuiApplication::clipboard()->clear(); }

    void Press(const char* list, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) const {
        QTest::keyClick(p.Find<QWidget>(list), key, modifiers);
    }

    void SelectAll(const char* list, const std::vector<int>& rows) const {
        SelectRows(*p.Find<QAbstractItemView>(list), rows);
    }

    std::string Rooms() const { return p.Rows("lstRooms").join(u' ').toStdString(); }
    std::string Objects() const { return p.Rows("lstObjects").join(u' ').toStdString(); }

    /// The name of the step that Undo would take back.
    std::string LastStep() const {
        const QString text = p.Find<QAction>("mnuToolsUndo")->text();
        return text.toStdString();
    }

    const QAction& Command(const char* list, const char* name) const {
        return test::Find<QAction>(*p.Find<QWidget>(list), name);
    }

    RunningProgram p;
};

TEST_F(Clipboard, ARoomIsCopiedAsKelAndPastedUnderAFreeName) {
    p.Select("lstRooms", 1);
    Press("lstRooms", Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Clip().toStdString(), "define room <Attic>\nsouth <Hall>\n\nend define\n");
    Press("lstRooms", Qt::Key_V);
    EXPECT_EQ(Rooms(), "Hall Attic Cellar Attic 2");
    EXPECT_EQ(p.SelectedRow("lstRooms"), 3);
    EXPECT_EQ(p.Status(), "Paste room Attic 2");
    EXPECT_NE(LastStep().find("paste room Attic 2"), std::string::npos) << LastStep();
    p.Trigger("mnuToolsUndo");
    EXPECT_EQ(Rooms(), "Hall Attic Cellar") << "one step";
}

TEST_F(Clipboard, SeveralRowsAreCutAndPastedInOneStepEach) {
    const GameModel before = p.game;
    SelectAll("lstRooms", {0, 2});
    Press("lstRooms", Qt::Key_X);
    EXPECT_EQ(Rooms(), "Attic");
    EXPECT_NE(LastStep().find("cut 2 rooms"), std::string::npos) << LastStep();
    Press("lstRooms", Qt::Key_V);
    EXPECT_EQ(Rooms(), "Attic Hall Cellar");
    EXPECT_EQ(SelectedRows(*p.Find<QAbstractItemView>("lstRooms")), (std::vector<int>{1, 2}));
    EXPECT_EQ(p.game.Rooms[2].Characters, before.Rooms[1].Characters);
    p.Trigger("mnuToolsUndo");
    p.Trigger("mnuToolsUndo");
    EXPECT_EQ(p.game.Rooms, before.Rooms);
    EXPECT_EQ(p.game.Procedures, before.Procedures);
}

TEST_F(Clipboard, DuplicateBringsTheWholeScriptAndLeavesTheClipboardAlone) {
    SetClip("mine");
    p.Select("lstRooms", 0);
    p.Select("lstObjects", 0);
    Press("lstObjects", Qt::Key_D);
    EXPECT_EQ(Objects(), "lamp rope lamp 2");
    EXPECT_EQ(p.SelectedRow("lstObjects"), 2);
    EXPECT_EQ(Clip(), "mine");
    ASSERT_EQ(p.game.Procedures.Count(), 2);
    EXPECT_EQ(p.game.Procedures[1].Script, "give <lamp>\r\nhide <lamp>\r\n");
    EXPECT_EQ(p.game.Procedures[2].Script, "give <lamp>\r\nhide <lamp 2>\r\n");
    EXPECT_EQ(p.game.Rooms[1].Objects[3].Take, " do <" + p.game.Procedures[2].Name + ">");
    p.Trigger("mnuToolsUndo");
    EXPECT_EQ(p.game.Procedures.Count(), 1) << "with the procedure that it brought";
}

TEST_F(Clipboard, EachRecordGoesWhereItsKindBelongs) {
    p.Select("lstRooms", 2);
    SetClip("define room <Crypt>\nend define\nitems <urn>\ndefine object <urn>\nend define\n"
            "define procedure <Answer>\nwin\nend define\n");
    Press("lstObjects", Qt::Key_V);
    EXPECT_EQ(Rooms(), "Hall Attic Cellar Crypt");
    EXPECT_EQ(p.game.Rooms[3].Objects[1].Name, "urn") << "the room that was selected";
    EXPECT_EQ(p.game.Items[1].Name, "urn");
    EXPECT_EQ(p.game.Procedures.Count(), 2);
}

TEST_F(Clipboard, WhatIsNoKelIsToldAndChangesNothing) {
    p.Select("lstRooms", 0);
    const GameModel before = p.game;
    for (const auto& [text, told] : Cases<const char*, const char*>{
             {"Dear all,", "Paste: Nothing was pasted. This is no line of Kel: \"Dear all,\"."},
             {"define room <Crypt>\nlook <Dark.>\n",
              "Paste: Nothing was pasted. Line 1: half a block: its \"end define\" is missing: define room "
              "<Crypt>."},
             {"msg <Hi>",
              "Paste: Nothing was pasted. The text holds lines of a script; they can be pasted in the "
              "window of a script."}}) {
        SetClip(text);
        p.dialogs.Message(QString::fromUtf8(told));
        Press("lstRooms", Qt::Key_V);
        p.dialogs.ExpectAllAsked();
    }
    EXPECT_EQ(p.game.Rooms, before.Rooms);
    EXPECT_FALSE(p.game.Modified);
}

TEST_F(Clipboard, CommandsThatAreOffSayWhy) {
    p.Select("lstRooms", 0);
    EXPECT_FALSE(Command("lstObjects", "actCopy").isEnabled()) << "nothing is selected";
    EXPECT_EQ(Command("lstObjects", "actCopy").statusTip().toStdString(),
              "Select something in the list first.");
    EXPECT_FALSE(Command("lstRooms", "actPaste").isEnabled());
    EXPECT_EQ(Command("lstRooms", "actPaste").statusTip().toStdString(), "The clipboard holds no text.");
    SetClip("win");
    EXPECT_TRUE(Command("lstRooms", "actPaste").isEnabled());
    p.Select("lstObjects", 0);
    EXPECT_TRUE(Command("lstObjects", "actCut").isEnabled());
    std::string menu;
    for (const QAction* action : p.Find<QWidget>("lstObjects")->actions())
        menu += action->isSeparator() ? "-, "
                                      : action->text().remove(u'&').replace(u'\t', u' ').toStdString() + ", ";
    EXPECT_EQ(menu,
              "Edit object Return, Add object Insert, Delete object Delete, -, Cut, Copy as Kel, Paste, "
              "Duplicate, Rename..., Where Used, ");
}

TEST_F(Clipboard, OneRowOfSeveralStaysSelectedAndDeleteTakesAll) {
    p.Select("lstRooms", 0);
    const auto click = [&](int row, Qt::KeyboardModifiers modifiers) {
        auto* list = p.Find<QAbstractItemView>("lstRooms");
        const QPoint at = list->visualRect(list->model()->index(row, 0)).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, modifiers, at);
        return SelectedRows(*list);
    };
    EXPECT_EQ(click(0, Qt::ControlModifier), (std::vector<int>{0})) << "the only one cannot be let go of";
    EXPECT_EQ(click(2, Qt::ControlModifier), (std::vector<int>{0, 2}));
    EXPECT_EQ(click(0, Qt::ControlModifier), (std::vector<int>{2}));
    EXPECT_EQ(click(1, {}), (std::vector<int>{1}));
    EXPECT_EQ(click(2, Qt::ShiftModifier), (std::vector<int>{1, 2}));
    p.Click("butDeleteRoom");
    EXPECT_EQ(Rooms(), "Hall");
    p.Trigger("mnuToolsUndo");
    EXPECT_EQ(Rooms(), "Hall Attic Cellar");
}

/// Drags the rows of a list over a point of a widget and lets them go there. Whether they were taken.
bool DragRows(QAbstractItemView& from, const std::vector<int>& rows, QWidget& over, QPoint at) {
    QModelIndexList indexes;
    for (const int row : rows)
        indexes.append(from.model()->index(row, 0));
    const std::unique_ptr<QMimeData> data(from.model()->mimeData(indexes));
    QDragEnterEvent enter(at, Qt::CopyAction, data.get(), Qt::LeftButton, {});
    QCoreApplication::sendEvent(&over, &enter);
    QDropEvent drop(at, Qt::CopyAction, data.get(), Qt::LeftButton, {});
    QCoreApplication::sendEvent(&over, &drop);
    QTest::qWait(0);
    return drop.isAccepted();
}

TEST_F(Clipboard, ThingsAreDraggedToAnotherRoom) {
    p.Select("lstRooms", 0);
    auto& rooms = *p.Find<QAbstractItemView>("lstRooms");
    auto& objects = *p.Find<QAbstractItemView>("lstObjects");
    const auto middle = [&](int row) { return rooms.visualRect(rooms.model()->index(row, 0)).center(); };
    const GameModel before = p.game;
    EXPECT_TRUE(DragRows(objects, {0, 1}, *rooms.viewport(), middle(2)));
    EXPECT_EQ(Objects(), "");
    ASSERT_EQ(p.game.Rooms[3].Objects.Count(), 2);
    EXPECT_EQ(p.game.Rooms[3].Objects[1], before.Rooms[1].Objects[1]);
    EXPECT_NE(LastStep().find("move 2 objects to Cellar"), std::string::npos) << LastStep();
    p.Trigger("mnuToolsUndo");
    EXPECT_EQ(p.game.Rooms, before.Rooms);
    const std::string step = LastStep();
    DragRows(objects, {0}, *rooms.viewport(), middle(0));
    EXPECT_FALSE(DragRows(objects, {0}, *rooms.viewport(), QPoint(5, rooms.viewport()->height() - 2)));
    EXPECT_FALSE(DragRows(rooms, {0}, *rooms.viewport(), middle(1))) << "a room does not go into a room";
    EXPECT_EQ(p.game.Rooms, before.Rooms);
    EXPECT_EQ(LastStep(), step);
}

} // namespace
} // namespace zem::test
