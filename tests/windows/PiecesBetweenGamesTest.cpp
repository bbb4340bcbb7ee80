// Whole games carried from one to another by the clipboard, texts that are none, and drags let go anywhere.
#include "forms/ListRows.h"
#include "panels/MapPanel.h"
#include "support/Cases.h"
#include "support/UndoLaw.h"

#include <QClipboard>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QMimeData>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

constexpr Qt::KeyboardModifiers CtrlShift = Qt::ControlModifier | Qt::ShiftModifier;

QString ClipText() {
    return QGuiApplication::clipboard()->text();
}

/// Presses a key with all rows of the list selected.
void PressOnAll(const RunningProgram& p, const char* list, Qt::Key key, Qt::KeyboardModifiers keys) {
    p.Find<QAbstractItemView>(list)->selectAll();
    PressKey(*p.Main(), list, key, keys);
}

TEST(PiecesBetweenGames, AWholeGameIsCopiedIntoAnotherOneAndCopiedAgain) {
    for (const char* sample : {"gatehouse", "cottage"}) {
        SCOPED_TRACE(sample);
        RunningProgram p(ReadBytes(std::string(ZEM_SAMPLES "/") + sample + ".kel"));
        const std::string before = GameFile(p.game);
        PressOnAll(p, "lstRooms", Qt::Key_C, CtrlShift);
        EXPECT_EQ(LineChanges(before, GameFile(p.game)), "") << "copying changes nothing";
        EXPECT_FALSE(p.game.Modified);
        const QString copied = ClipText();
        const QStringList rooms = p.Rows("lstRooms");

        PressOnAll(p, "lstRooms", Qt::Key_X, Qt::ControlModifier);
        EXPECT_EQ(ClipText(), copied) << "cut is a copy";
        EXPECT_TRUE(p.Rows("lstRooms").isEmpty());
        ExpectOneStep(p, before);
        PressKey(*p.Main(), "lstRooms", Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(p.Rows("lstRooms"), rooms);
        p.Trigger("mnuToolsUndo");
        p.Trigger("mnuToolsUndo");
        EXPECT_EQ(LineChanges(before, GameFile(p.game)), "");
        PressOnAll(p, "lstRooms", Qt::Key_D, Qt::ControlModifier);
        EXPECT_EQ(p.Rows("lstRooms").size(), 2 * rooms.size());
        ExpectOneStep(p, before);

        const RunningProgram other(CrLf("define game <Other>\nend define\n"));
        const std::string empty = GameFile(other.game);
        PressKey(*other.Main(), "lstRooms", Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(other.Rows("lstRooms"), rooms);
        PressOnAll(other, "lstRooms", Qt::Key_C, CtrlShift);
        EXPECT_EQ(LineChanges(copied.toStdString(), ClipText().toStdString()), "");
        ExpectOneStep(other, empty);
    }
}

TEST(PiecesBetweenGames, WhateverIsPastedIsOneStepOrToldAndLeftOut) {
    const std::string long1 = "define room <" + std::string(100000, 'x') + ">\nend define";
    int pasted = 0;
    const std::vector<std::string> texts{
        " ",
        "\n\n",
        "end define",
        "define",
        "define room",
        "define room <>\nend define",
        "define room <A\nend define",
        "define room <A>\ndefine room <B>\nend define\nend define",
        "define room <A>\nend define\nend define",
        "define room <A>\nlook <Half",
        "define room <a>b>\nend define",
        "define object <key>\nend define",
        "define room <A>\nscript {\nmsg <x>\nend define",
        "define room <A>\nscript do <~Internal Procedure 7>\nend define",
        "define game <Second>\nstart <Nowhere>\nend define",
        "define game <a>\nend define\ndefine game <b>\nend define",
        "define nonsense <x>\nfree\nend define",
        "items <a; b",
        "items <;;;>",
        "command <x>",
        "}",
        "{",
        "if has <x> then",
        "<<<<<<< ours\ndefine room <A>\n=======\n>>>>>>> theirs\nend define",
        std::string("a\0b", 3),
        "define room <\xF0\x9F\x90\xB1>\nend define",
        "define synonyms\nx = y\nend define",
        "define text <intro>\nHello.\nend define",
        "define procedure <~Internal Procedure 0>\nwin\nend define",
        long1,
        std::string(200000, '{'),
    };
    for (const char* list : {"lstRooms", "lstCharacters", "lstObjects"}) {
        RunningProgram p(
            CrLf("define game <Test>\nstart <Hall>\nend define\ndefine room <Hall>\nend define\n"));
        p.dialogs.CancelTheRest();
        const std::string before = GameFile(p.game);
        for (const std::string& text : texts) {
            SCOPED_TRACE(text.substr(0, 60) + " into " + list);
            if (std::string(list) == "lstObjects") // once with no room for them
                p.Find<QAbstractItemView>("lstRooms")->selectionModel()->clear();
            else
                p.Select("lstRooms", 0);
            p.dialogs.cancelled.clear();
            QGuiApplication::clipboard()->setText(
                QString::fromUtf8(text.data(), static_cast<int>(text.size())));
            PressKey(*p.Main(), list, Qt::Key_V, Qt::ControlModifier);
            EXPECT_LE(p.dialogs.cancelled.size(), 1);
            if (GameFile(p.game) == before) {
                EXPECT_FALSE(p.game.Modified);
                EXPECT_TRUE(text == " " || text == "\n\n" || p.dialogs.cancelled.size() == 1)
                    << "nothing is told";
                continue;
            }
            ++pasted;
            EXPECT_EQ(p.dialogs.cancelled.size(), 0) << p.dialogs.cancelled.join(u' ').toStdString();
            ExpectOneStep(p, before);
            const GameModel again = LoadBytes(GameFile(p.game), p.game); // It can be saved and read.
            EXPECT_EQ(again.Rooms.Count(), p.game.Rooms.Count());
            p.Trigger("mnuToolsUndo");
        }
    }
    EXPECT_GT(pasted, 10);
}

TEST(PiecesBetweenGames, DragsThatAreLetGoAnywhereChangeNothing) {
    RunningProgram p(CrLf("define game <Test>\nstart <Hall>\nend define\ndefine room <Hall>\n"
                          "define character <Tom>\nend define\ndefine object <key>\nend define\nend define\n"
                          "define room <Attic>\nend define\n"));
    p.Main()->resize(1400, 900);
    p.Main()->show();
    for (const char* panel : {"mnuToolsMap", "mnuToolsProblems", "mnuToolsFind"})
        p.Trigger(panel);
    const auto& map = *p.Find<MapPanel>("dckMap");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !map.IsBusy(); }));
    p.Select("lstRooms", 0);
    const std::string before = GameFile(p.game);
    for (const char* list : {"lstRooms", "lstCharacters", "lstObjects"}) {
        auto& from = *p.Find<QAbstractItemView>(list);
        ASSERT_GT(from.model()->rowCount(), 0) << list;
        for (QWidget* over : p.Main()->findChildren<QWidget*>())
            for (const QPoint at :
                 {QPoint(2, 2), over->rect().center(), over->rect().bottomRight() - QPoint(2, 2)}) {
                if (!over->isVisible() || over->window() != p.Main())
                    continue;
                SCOPED_TRACE(std::string(list) + " over " + over->objectName().toStdString() + " of " +
                             (over->parent() == nullptr ? "" : over->parent()->objectName().toStdString()));
                const std::unique_ptr<QMimeData> data(from.model()->mimeData({from.model()->index(0, 0)}));
                QDragEnterEvent enter(at, Qt::CopyAction, data.get(), Qt::LeftButton, {});
                QCoreApplication::sendEvent(over, &enter);
                QDropEvent drop(at, Qt::CopyAction, data.get(), Qt::LeftButton, {});
                QCoreApplication::sendEvent(over, &drop);
                QTest::qWait(0);
                if (GameFile(p.game) == before)
                    continue;
                EXPECT_STRNE(list, "lstRooms") << "a room goes into no room";
                const auto& rooms = *p.Find<QAbstractItemView>("lstRooms");
                EXPECT_TRUE(over != rooms.viewport() || rooms.indexAt(at).isValid()) << "beside the rooms";
                EXPECT_TRUE(over == p.Find<QAbstractItemView>("lstRooms")->viewport() ||
                            over->objectName() == QLatin1String("mapCanvas"));
                ExpectOneStep(p, before);
                p.Trigger("mnuToolsUndo");
                p.Select("lstRooms", 0);
            }
    }
    EXPECT_FALSE(p.game.Modified);
}

} // namespace
} // namespace zem::test
