// Editors of records whose texts are far longer than anybody expects, or hold what no file can.
#include "qt/QtText.h"
#include "support/Cases.h"
#include "support/EditorGame.h"
#include "support/RunningProgram.h"

#include <QClipboard>
#include <QGuiApplication>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

/// Opens the editor of the first room, character or object, or of the game.
template <class Use>
void InEditor(const RunningProgram& p, const char* command, Use use) {
    for (const char* list : {"lstRooms", "lstCharacters", "lstObjects"})
        p.Select(list, 0);
    p.Open<QDialog>(command, use);
}

constexpr const char* Editors[] = {"butEditRoom",           "butEditObj_0",         "butEditObj_1",
                                   "mnuViewGameProperties", "mnuEditErrorMessages", "mnuViewItems",
                                   "mnuViewLibraries",      "mnuViewSynonyms",      "mnuViewMiscKEL"};

TEST(LongTexts, AreKeptByOkOfEveryEditor) {
    // Every text that no other text refers to, and a script, is longer than a box of one line takes by
    // itself.
    GameModel game = LoadBytes(EditorGame());
    const std::string tail(40000, 'x');
    for (int k = 1; k <= game.Rooms.Count(); ++k) {
        Room& room = game.Rooms.Edit(k);
        room.Alias += tail;
        room.Prefix += tail;
        room.InDescription += tail;
        room.Look += tail;
        room.Script = "msg <" + tail + ">";
    }
    Room& room = game.Rooms.Edit(1);
    for (List<Thing>* things : {&room.Characters, &room.Objects})
        for (int k = 1; k <= things->Count(); ++k) {
            things->Edit(k).Prefix += tail;
            things->Edit(k).Look = "msg <" + tail + ">";
        }
    game.GameName += tail;
    game.GameAuthor += tail;
    game.GameInfo += tail;
    game.GameCopyright += tail;
    game.FileName.clear();
    const std::string bytes = SaveToBytes(game);
    for (const char* editor : Editors) {
        SCOPED_TRACE(editor);
        RunningProgram p(bytes);
        const std::string before = SaveToBytes(p.game);
        ASSERT_NE(before.find(tail), std::string::npos);
        InEditor(p, editor, [](QDialog& form) { Click(form, "butOK"); });
        EXPECT_TRUE(SaveToBytes(p.game) == before);
    }
}

TEST(LongTexts, AMillionLettersAreTakenAndWhatNoFileHoldsIsNot) {
    const QString million(1000000, u'm');
    for (const char* editor : {"butEditRoom", "butEditObj_0"}) {
        RunningProgram p(EditorGame());
        p.dialogs.CancelTheRest();
        InEditor(p, editor, [&](QDialog& form) {
            for (auto* box : form.findChildren<QLineEdit*>()) {
                if (box->objectName().isEmpty() || box->isReadOnly() ||
                    !box->objectName().startsWith("txt") || box->objectName().endsWith("_Find") ||
                    !box->isEnabled())
                    continue;
                SCOPED_TRACE(std::string(editor) + ' ' + box->objectName().toStdString());
                box->setText(QStringLiteral("old"));
                for (const QString& bad : {QStringLiteral("\u0394"), QStringLiteral("\U0001F431")}) {
                    box->selectAll();
                    QGuiApplication::clipboard()->setText(bad);
                    box->paste();
                    EXPECT_EQ(box->text(), QStringLiteral("old")) << "is left as it was";
                }
                box->selectAll();
                QGuiApplication::clipboard()->setText(million);
                box->paste();
                EXPECT_TRUE(box->text() == million) << box->text().size();
                box->undo();
                EXPECT_EQ(box->text(), QStringLiteral("old"));
            }
            form.reject();
        });
    }
}

} // namespace
} // namespace zem::test
