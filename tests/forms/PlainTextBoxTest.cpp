#include "forms/PlainTextBox.h"

#include "qt/QtText.h"
#include "support/Cases.h"
#include "support/ScriptedDialogs.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QtTest/QTest>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

class PlainTextBoxTest : public testing::Test {
protected:
    PlainTextBoxTest() { box.RefuseUnstorableText(dialogs); }

    void Paste(const QString& text) {
        QApplication::clipboard()->setText(text);
        box.paste();
    }

    ScriptedDialogs dialogs;
    PlainTextBox box;
};

TEST_F(PlainTextBoxTest, GivesBackWhatItGot) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    for (const std::string& text :
         std::vector<std::string>{"", "a", "a\r\nb", "a\r\n", "\r\n\r\n", "a\rb\nc\xA0 ", all}) {
        box.SetText(text);
        EXPECT_EQ(box.Text(), text);
    }
}

TEST_F(PlainTextBoxTest, JoinsLinesWithCrLfAndAddsNoLineEnd) {
    for (const auto& [text, keys, expected] : Cases<const char*, std::vector<QKeyCombination>, const char*>{
             {"one", {Qt::Key_End, Qt::Key_Return, Qt::Key_X}, "one\r\nx"},
             {"one\r\n", {Qt::Key_X}, "xone\r\n"},
             {"\xA0\x81", {Qt::Key_X}, "x\xA0\x81"},
             {"a\rb\nc\r\nd", {Qt::Key_X}, "xa\rb\nc\r\nd"}, // line ends of other kinds stay
             {"a\r\nb", {Qt::Key_End, Qt::Key_Delete}, "ab"},
             {"a", {Qt::SHIFT | Qt::Key_Return}, "\r\na"}}) {
        box.SetText(text);
        for (const QKeyCombination& key : keys)
            QTest::keyClick(&box, key.key(), key.keyboardModifiers());
        EXPECT_EQ(box.Text(), expected);
    }
}

TEST_F(PlainTextBoxTest, PastesPlainTextOnly) {
    auto* rich = new QMimeData;
    rich->setHtml("<b>bold</b>");
    rich->setText("bold");
    QApplication::clipboard()->setMimeData(rich);
    box.paste();
    EXPECT_EQ(box.Text(), "bold");
    box.SetText("");
    Paste(QStringLiteral(u"a\tb\r\nc\rd\u2028e\u2029f\u000Cg\u00A0"));
    EXPECT_EQ(box.Text(), "a    b\r\nc\r\nd\r\ne\r\nf g\xA0");
    box.HoldOneLine();
    box.SetText("");
    Paste("a\nb");
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(box.Text(), "a b");
}

TEST_F(PlainTextBoxTest, RefusesWhatAFileCannotHold) {
    const QString delta = QStringLiteral(u"\u0394");
    const auto compose = [this](const QString& text) {
        QInputMethodEvent composed;
        composed.setCommitString(text);
        QApplication::sendEvent(&box, &composed);
    };
    for (int time = 0; time < 3; ++time)
        dialogs.Message(QStringLiteral("ZEM: ") + *UnstorableCharacter(delta));
    box.SetText("x");
    QTest::sendKeyEvent(QTest::Click, &box, Qt::Key_unknown, delta, Qt::NoModifier);
    Paste(QStringLiteral("abc") + delta);
    compose(delta);
    EXPECT_EQ(box.Text(), "x");
    compose(QStringLiteral(u"\u00E9"));
    EXPECT_EQ(box.Text(), "\xE9x");
}

} // namespace
} // namespace zem::test
