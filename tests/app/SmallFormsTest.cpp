#include "app/AppHost.h"
#include "app/frmEditErrors.h"
#include "app/frmHelp.h"
#include "app/frmOrbMsgBox.h"
#include "editors/frmRoomProperties.h"
#include "forms/QtText.h"
#include "support/EditorGame.h"
#include "support/RunningProgram.h"
#include "support/WhenOpen.h"

#include <QApplication>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>

#include <gtest/gtest.h>

namespace zem {
namespace {

TEST(OrbMsgBox, AnswersByButtonKeyAndCloseBox) {
    enum class By { OkButton, CancelButton, KeyY, KeyN, Escape, CloseBox };
    struct Case {
        MessageButtons buttons;
        By by;
        std::optional<MessageResult> result; // nothing when the window stays open
    };
    for (const Case& c : {
             Case{MessageButtons::Ok, By::OkButton, MessageResult::Ok},
             {MessageButtons::Ok, By::KeyY, MessageResult::Ok},
             {MessageButtons::Ok, By::KeyN, {}},
             {MessageButtons::Ok, By::CloseBox, MessageResult::Ok},
             {MessageButtons::OkCancel, By::CancelButton, MessageResult::Cancel},
             {MessageButtons::OkCancel, By::CloseBox, MessageResult::Cancel},
             {MessageButtons::OkCancel, By::Escape, {}},
             {MessageButtons::YesNo, By::OkButton, MessageResult::Yes},
             {MessageButtons::YesNo, By::KeyY, MessageResult::Yes},
             {MessageButtons::YesNo, By::KeyN, MessageResult::No},
             {MessageButtons::YesNo, By::CloseBox, MessageResult::No},
         }) {
        frmOrbMsgBox box(QStringLiteral("one\r\ntwo"), c.buttons);
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Title"));
        EXPECT_EQ(box.findChild<QLabel*>(QStringLiteral("lblMsg"))->text(), QStringLiteral("one\ntwo"));
        box.show();
        auto* ok = box.findChild<QPushButton*>(QStringLiteral("butOK"));
        auto* cancel = box.findChild<QPushButton*>(QStringLiteral("butCancel"));
        EXPECT_EQ(cancel->isVisible(), c.buttons != MessageButtons::Ok);
        EXPECT_EQ(ok->text(),
                  c.buttons == MessageButtons::YesNo ? QStringLiteral("&Yes") : QStringLiteral("OK"));
        switch (c.by) {
        case By::OkButton:
            QTest::mouseClick(ok, Qt::LeftButton);
            break;
        case By::CancelButton:
            QTest::mouseClick(cancel, Qt::LeftButton);
            break;
        case By::KeyY:
            QTest::keyClick(ok, Qt::Key_Y);
            break;
        case By::KeyN:
            QTest::keyClick(ok, Qt::Key_N);
            break;
        case By::Escape:
            QTest::keyClick(ok, Qt::Key_Escape);
            break;
        case By::CloseBox:
            box.close();
            break;
        }
        EXPECT_EQ(box.isVisible(), !c.result.has_value());
        EXPECT_EQ(box.Result(), c.result.value_or(box.Result()));
    }
}

TEST(AppHost, UsesTheMessageWindowThatTheSettingsName) {
    test::RunningProgram p;
    Settings settings(p.store, {});
    AppHost host(settings, p.dialogs);
    settings.LoadSettings(); // which say "No"
    p.dialogs.Message(QStringLiteral("Title: Really?"), QMessageBox::No);
    EXPECT_EQ(host.ShowMessage("Really?", "Title", MessageButtons::YesNo), MessageResult::No);

    p.store.setValue(QStringLiteral("Options/SpecialMsgBox"), QStringLiteral("yes"));
    settings.LoadSettings();
    QTimer::singleShot(0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_N); });
    EXPECT_EQ(host.ShowMessage("Really?", "ignored", MessageButtons::YesNo), MessageResult::No);
}

TEST(QtDialogs, AskThePlatform) {
    QtDialogs dialogs;
    QTimer::singleShot(0, [] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->text(), QStringLiteral("<b>\nline"));
        EXPECT_EQ(box->textFormat(), Qt::PlainText);
        QTest::mouseClick(box->button(QMessageBox::No), Qt::LeftButton);
    });
    EXPECT_EQ(dialogs.ShowMessageBox(nullptr, QStringLiteral("<b>\r\nline"), QStringLiteral("Title"),
                                     QMessageBox::Yes | QMessageBox::No, QMessageBox::NoIcon),
              QMessageBox::No);
    for (const bool accept : {true, false}) {
        QTimer::singleShot(0, [accept] {
            auto* box = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->labelText(), QStringLiteral("Prompt:"));
            QTest::keyClicks(box->findChild<QLineEdit*>(),
                             QStringLiteral("Hall")); // replaces the text offered
            QTest::keyClick(box, accept ? Qt::Key_Return : Qt::Key_Escape);
        });
        const std::optional<QString> answer =
            dialogs.AskText(nullptr, QStringLiteral("Prompt:"), {}, QStringLiteral("Enter a name here..."));
        EXPECT_EQ(answer, accept ? std::optional(QStringLiteral("Hall")) : std::nullopt);
    }
    const test::TempFolder folder;
    EXPECT_EQ(dialogs.OpenDocument({}), 2);
    EXPECT_EQ(dialogs.OpenDocument(PathToQt(folder.Path("missing.kel"))), 2);
    EXPECT_EQ(dialogs.OpenDocument(PathToQt(folder.Path("no folder/game.kel"))), 3);
}

class EditErrorsTest : public testing::Test {
protected:
    EditErrorsTest() {
        errors.Append({"No such command", "badcommand", ""});
        errors.Append({"No such way", "badgo", "Not there."});
    }

    void Open(bool friendly) {
        form = std::make_unique<frmEditErrors>(errors, friendly, dialogs);
        form->show();
        list = form->findChild<QListWidget*>(QStringLiteral("lstErrors"));
        text = form->findChild<QLineEdit*>(QStringLiteral("txtError"));
    }
    void Click(const char* button) {
        QTest::mouseClick(form->findChild<QPushButton*>(QLatin1String(button)), Qt::LeftButton);
    }

    Table<ErrorMessage> errors;
    test::ScriptedDialogs dialogs;
    std::unique_ptr<frmEditErrors> form;
    QListWidget* list = nullptr;
    QLineEdit* text = nullptr;
};

TEST_F(EditErrorsTest, KeepsTheTextsWhileMovingThroughTheList) {
    Open(true);
    EXPECT_EQ(form->windowTitle(), QStringLiteral("Edit Error Messsages"));
    EXPECT_EQ(list->item(0)->text(), QStringLiteral("No such command"));
    EXPECT_FALSE(text->isEnabled());
    list->setCurrentRow(0);
    EXPECT_TRUE(text->isEnabled());
    QTest::keyClicks(text, QStringLiteral("What?"));
    list->setCurrentRow(1);
    EXPECT_EQ(text->text(), QStringLiteral("Not there."));
    text->clear();
    list->setCurrentRow(0);
    EXPECT_EQ(text->text(), QStringLiteral("What?"));
    Click("butOK");
    EXPECT_EQ(form->result(), QDialog::Accepted);
    EXPECT_EQ(form->Errors()[1].GameText, "What?");
    EXPECT_EQ(form->Errors()[2].GameText, "");
    EXPECT_EQ(form->Errors()[2].Name, "badgo");
}

TEST_F(EditErrorsTest, ListsNamesWithoutFriendlyScriptAndTakesOkWithoutASelection) {
    Open(false);
    EXPECT_EQ(list->item(1)->text(), QStringLiteral("badgo"));
    Click("butOK");
    EXPECT_EQ(form->Errors(), errors);
}

TEST_F(EditErrorsTest, MarksTheGameOnOkAndChangesNothingOnCancel) {
    test::RunningProgram p;
    p.StartWith("define game <x>\nerror <badgo; Not there.>\nend define\n");
    const GameModel before = p.game;
    for (const char* button : {"butCancel", "butOK"}) {
        QTimer::singleShot(0, [button] {
            QWidget* open = QApplication::activeModalWidget();
            open->findChild<QListWidget*>(QStringLiteral("lstErrors"))->setCurrentRow(0);
            open->findChild<QLineEdit*>(QStringLiteral("txtError"))->setText(QStringLiteral("What?"));
            QTest::mouseClick(open->findChild<QPushButton*>(QLatin1String(button)), Qt::LeftButton);
        });
        p.Trigger("mnuEditErrorMessages");
        const bool isOk = std::string(button) == "butOK";
        EXPECT_EQ(p.game.Modified, isOk);
        EXPECT_EQ(p.game == before, !isOk);
    }
    EXPECT_EQ(p.game.ErrorMessages[1].GameText, "What?");
    p.dialogs.Message(
        QStringLiteral("Game not saved: Do you want to save the changes you made to this game?"),
        QMessageBox::No);
    p.Main()->close();
}

TEST(Help, FindsASectionByItsExactName) {
    frmHelp help;
    auto* text = help.findChild<QPlainTextEdit*>(QStringLiteral("txtHelp"));
    const std::vector<HelpSection> sections = {{QStringLiteral("a"), QStringLiteral("first")},
                                               {QStringLiteral("a"), QStringLiteral("second")}};
    help.ShowSection(sections, QStringLiteral("a"));
    EXPECT_EQ(text->toPlainText(), QStringLiteral("second"));
    help.ShowSection(sections, QStringLiteral("A"));
    EXPECT_TRUE(text->toPlainText().startsWith(
        QStringLiteral("Could not find help section 'A'\nPlease report this problem to ")));
}

TEST(WhatsThis, TellsAboutTheControlWithTheFocus) {
    test::RunningProgram p;
    p.StartWith(test::EditorGame());
    const auto textShown = [](QWidget& control) {
        control.setFocus();
        QTest::keyClick(&control, Qt::Key_F1, Qt::ShiftModifier);
        QString shown;
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->inherits("QWhatsThat") && window->isVisible()) {
                shown = control.whatsThis(); // what the window paints
                window->close();
            }
        return shown;
    };
    p.Select("lstRooms", 0);
    test::WhenOpen<frmRoomProperties>([&](frmRoomProperties& form) {
        EXPECT_TRUE(textShown(test::Find<QLineEdit>(form, "txtAlias"))
                        .contains(QLatin1String("in place of the name")));
        EXPECT_TRUE(textShown(test::Find<QWidget>(form, "txtDescription")).contains(QLatin1String("|n")));
        EXPECT_EQ(textShown(test::Find<QPushButton>(form, "butDetails")), QString());
    });
    p.Click("butEditRoom");
    EXPECT_TRUE(textShown(*p.Find<QWidget>("lstObjects")).contains(QLatin1String("items")));
}

} // namespace
} // namespace zem
