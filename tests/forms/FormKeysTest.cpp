// The keys that do the same in every form.
#include "editors/frmMenuList.h"
#include "editors/frmRoomProperties.h"
#include "editors/frmTagEditor.h"
#include "editors/frmTextSectionEdit.h"
#include "support/Cases.h"
#include "support/EditorGame.h"
#include "support/RunningProgram.h"

#include <QPlainTextEdit>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

TEST(FormKeys, ReturnPressesTheFocusedButtonAndCtrlReturnOk) {
    RunningProgram p(EditorGame());
    p.dialogs.Text("Add menu: Please enter a name for this menu []", {});
    p.Open<frmMenuList>("mnuViewMenus", [](frmMenuList& form) {
        Find<QWidget>(form, "butAdd").setFocus();
        PressKey(form, "butAdd", Qt::Key_Return);
        EXPECT_TRUE(form.isVisible());
        PressKey(form, "lstMenus", Qt::Key_Return, Qt::ControlModifier);
        EXPECT_FALSE(form.isVisible());
    });
    p.Open<frmTagEditor>("mnuViewMiscKEL", [](frmTagEditor& form) {
        auto& text = Find<QPlainTextEdit>(form, "txtTags");
        text.setFocus();
        text.setPlainText("define x");
        PressKey(form, "txtTags", Qt::Key_Enter, Qt::ControlModifier | Qt::KeypadModifier);
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(*p.game.UnknownBlocks, "define x");
}

TEST(FormKeys, AltAndALetterGoesToAControlOrDoesNothing) {
    RunningProgram p(EditorGame());
    p.Open<frmRoomProperties>("butEditRoom", [](frmRoomProperties& form) {
        form.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
        for (const auto& [box, before] :
             Cases<const char*, const char*>{{"txtPrefix", "the"}, {"txtDescription", "Dust."}}) {
            SetText(form, box, before);
            Find<QWidget>(form, box).setFocus();
            QTest::keyClick(&Find<QWidget>(form, box), 'q', Qt::AltModifier);
            EXPECT_EQ(TextOf(form, box), before);
        }
        Click(form, "butExits");
        auto& north = Find<QComboBox>(form, "cmbRoomNames_1");
        north.setFocus();
        north.lineEdit()->selectAll();
        QTest::keyClicks(north.lineEdit(), "a");
        QWidget* matches = QApplication::activePopupWidget();
        ASSERT_NE(matches, nullptr) << "the names with an a are offered";
        QTest::keyClick(matches, 's', Qt::AltModifier);
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
        EXPECT_EQ(north.currentText(), "a");
        EXPECT_TRUE(Find<QComboBox>(form, "cmbRoomNames_2").hasFocus()) << "South";
    });
}

} // namespace
} // namespace zem::test
