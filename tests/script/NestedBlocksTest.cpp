// Blocks of an "if" in an "if" in an "if": whatever is done at any depth is taken back by Cancel at any
// depth, and what is confirmed changes that line and no other.
#include "kel/ScriptRows.h"
#include "kel/ScriptTree.h"
#include "readback/ReadBack.h"
#include "script/ScriptBlock.h"
#include "script/frmConditional.h"
#include "script/frmScriptLines.h"
#include "support/Cases.h"
#include "support/Games.h"
#include "support/Lines.h"
#include "support/ScriptFixture.h"
#include "support/WhenOpen.h"

#include <functional>
#include <gtest/gtest.h>

namespace zem::test {
namespace {

const std::string Nested = CrLf("define game <x>\nstart <Hall>\nend define\n"
                                "define room <Hall>\nscript {\nmsg <0>\n"
                                "if has <a> then {\nmsg <1>\n"
                                "if has <b> then {\nmsg <2>\n"
                                "if has <c> then {\nmsg <3>\nmsg <4>\n} else {\nmsg <5>\nmsg <6>\n}\n"
                                "msg <7>\n} else msg <8>\nmsg <9>\n} else {\nmsg <10>\nwin\n}\n"
                                "}\nend define\n");

using BlockAct = std::function<void(frmConditional&)>;

class NestedBlocks : public ScriptFixture {
protected:
    NestedBlocks() {
        dialogs.CancelTheRest();
        game = LoadBytes(Nested);
        Edit(
            0, [](frmConditional&) {}, 2); // as the windows leave it
    }

    /// Edits the script of the room: its second line, in the window of conditions, where `act` is done at a
    /// row of the block.
    /// @param cancelled  0 for the window of conditions, 1 for that of the script, 2 for neither
    /// @return  how many rows the block has
    int Edit(int row, const BlockAct& act, int cancelled) {
        int rows = 0;
        std::string script = game.Rooms[1].Script;
        WhenOpen<frmScriptLines>([&](frmScriptLines& lines) {
            SelectRow(lines, "lstFriendlyLines", 1);
            WhenOpen<frmConditional>([&](frmConditional& form) {
                auto& block = Find<ScriptBlock>(form, "blkWhole");
                rows = block.model()->rowCount();
                block.setCurrentIndex(block.model()->index(row, 0));
                act(form);
                Click(form, cancelled == 0 ? "butCancel" : "butOK");
            });
            Click(lines, "butEdit");
            Click(lines, cancelled == 1 ? "butCancel" : "butOK");
        });
        if (scripts.EditScript(nullptr, script))
            door.Change([&](GameModel& changed) { changed.Rooms.Edit(1).Script = script; });
        return rows;
    }

    /// The whole script of the room as it is read, a line each.
    std::string Shown(const GameModel& of) const {
        std::string shown;
        for (const ScriptRow& row : RowsOfScript(of, of.Rooms[1].Script, commands))
            shown += std::string(static_cast<std::size_t>(row.indent), ' ') + row.Text() + "\r\n";
        return shown;
    }
};

void PressInBlock(frmConditional& form, Qt::Key key, Qt::KeyboardModifiers keys = {}) {
    PressKey(form, "blkWhole", key, keys);
}

/// Opens the editor of the selected part, and does there what changes it.
void ChangePart(frmConditional& form) {
    if (Find<ScriptBlock>(form, "blkWhole").currentIndex().data() == QStringLiteral("Otherwise:"))
        return; // of the line that is open already
    WhenOpen<QDialog>([](QDialog& part) {
        if (part.findChild<QWidget*>("txtRaw") != nullptr)
            SetText(part, "txtRaw", "if has <changed> then msg <changed> else die");
        else if (part.findChild<QWidget*>("txtParameter") != nullptr)
            SetText(part, "txtParameter", "changed");
        Click(part, "butOK");
    });
    PressInBlock(form, Qt::Key_Return);
}

TEST_F(NestedBlocks, CancelTakesBackWhateverWasDoneAtAnyDepth) {
    const GameModel before = game;
    const std::string file = GameFile(game);
    const int rows = Edit(
        0, [](frmConditional&) {}, 0);
    ASSERT_EQ(rows, 17);
    for (const auto& [what, act] : Cases<const char*, BlockAct>{
             {"Delete", [](frmConditional& form) { PressInBlock(form, Qt::Key_Delete); }},
             {"up", [](frmConditional& form) { PressInBlock(form, Qt::Key_Up, Qt::ControlModifier); }},
             {"down", [](frmConditional& form) { PressInBlock(form, Qt::Key_Down, Qt::ControlModifier); }},
             {"another part", ChangePart},
             {"all of it",
              [](frmConditional& form) {
                  PressInBlock(form, Qt::Key_Delete);
                  PressInBlock(form, Qt::Key_Down, Qt::ControlModifier);
                  TypeText(form, "txtThenLine", "msg new");
                  PressKey(form, "txtThenLine", Qt::Key_Return);
                  TypeText(form, "txtElseLine", "msg newer");
                  PressKey(form, "txtElseLine", Qt::Key_Return);
              }},
         })
        for (int row = 1; row < rows; ++row)
            for (const int cancelled : {0, 1}) {
                if (cancelled == 0 && row % 2 == 0)
                    continue; // half of them show it as well
                SCOPED_TRACE(std::string(what) + " at row " + std::to_string(row) + ", cancelled at " +
                             std::to_string(cancelled));
                Edit(row, act, cancelled);
                ASSERT_EQ(LineChanges(file, GameFile(game)), "");
                ASSERT_EQ(game.NextInternalProcedure, before.NextInternalProcedure);
                ASSERT_EQ(game.Procedures, before.Procedures);
            }
}

TEST_F(NestedBlocks, WhatIsConfirmedChangesThatLineAndNoOther) {
    const GameModel before = game;
    const std::string shown = Shown(game);
    int changed = 0;
    for (int row = 1; row < 17; ++row)
        for (const bool deletes : {true, false}) {
            SCOPED_TRACE("row " + std::to_string(row) + (deletes ? " deleted" : " moved"));
            game = before;
            Edit(
                row,
                [&](frmConditional& form) {
                    deletes ? PressInBlock(form, Qt::Key_Delete)
                            : PressInBlock(form, Qt::Key_Down, Qt::ControlModifier);
                },
                2);
            const std::string now = Shown(game);
            changed += now == shown ? 0 : 1;
            std::vector<std::string> old = SplitLines(shown);
            std::vector<std::string> kept = SplitLines(now);
            if (!deletes) { // the same lines in another order
                std::sort(old.begin(), old.end());
                std::sort(kept.begin(), kept.end());
                EXPECT_EQ(kept, old);
            } else {
                for (const std::string& line : kept) { // each of those that stay
                    const auto one = std::find(old.begin(), old.end(), line);
                    ASSERT_NE(one, old.end()) << line;
                    old.erase(one);
                }
            }
            EXPECT_EQ(Shown(LoadBytes(GameFile(game))), now) << "after a save";
        }
    EXPECT_GT(changed, 20) << "of 32";
}

} // namespace
} // namespace zem::test
