#include "forms/PlainTextBox.h"

#include "qt/QtText.h"
#include "support/Cases.h"
#include "support/ScriptedDialogs.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QtTest/QTest>

#include <ctime>
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
    const QString problem = QStringLiteral("ZEM: ") + *UnstorableCharacter(delta);
    for (int time = 0; time < 3; ++time)
        dialogs.Message(problem);
    box.SetText("x");
    QTest::sendKeyEvent(QTest::Click, &box, Qt::Key_unknown, delta, Qt::NoModifier);
    Paste(delta);
    compose(delta);
    EXPECT_EQ(box.Text(), "x");
    compose(QStringLiteral(u"\u00E9"));
    EXPECT_EQ(box.Text(), "\xE9x");
    for (const auto& [answer, text] : {std::pair(-1, "\xE9x"),
                                       {0, "\xE9"
                                           "a\r\nbx"}}) {
        dialogs.Choice(problem + QStringLiteral(" [Paste the rest]"), answer);
        Paste(QStringLiteral("a") + delta + QStringLiteral("\nb"));
        EXPECT_EQ(box.Text(), text);
    }
}

TEST_F(PlainTextBoxTest, ListsWhatAPasteLeavesOut) {
    for (const auto& [text, named] : Cases<QString, QString>{
             {QStringLiteral(u"a\U0001F600\u03B1\U0001F600"),
              QStringLiteral(u"\"\U0001F600\" (U+1F600), \"\u03B1\" (U+03B1)")},
             {QStringLiteral(u"a\u03B1\u03B2\u03B3\u03B4\u03B5\u03B6\u03B7"),
              QStringLiteral(u"\"\u03B1\" (U+03B1), \"\u03B2\" (U+03B2), \"\u03B3\" (U+03B3), \"\u03B4\" "
                             u"(U+03B4), \"\u03B5\" (U+03B5), others")}}) {
        dialogs.Choice(
            QStringLiteral("ZEM: The characters %1 cannot be kept in a game file, which holds only "
                           "Western European letters and signs. [Paste the rest]")
                .arg(named),
            0);
        box.SetText("");
        Paste(text);
        EXPECT_EQ(box.Text(), "a");
    }
}

// Eight times the letters may cost eight times the work and a bit more, but not sixty-four times.
TEST_F(PlainTextBoxTest, OpensAnEndlessWordInLinearTime) {
    const auto work = [](int letters) {
        PlainTextBox opened;
        opened.resize(600, 300);
        const std::clock_t start = std::clock();
        opened.SetText(std::string(static_cast<std::size_t>(letters), 'x'));
        opened.show();
        QCoreApplication::processEvents();
        return std::clock() - start;
    };
    work(1000); // The fonts are loaded by then.
    EXPECT_LT(work(320000), 24 * work(40000));
    box.SetText("a few words");
    EXPECT_NE(box.wordWrapMode(), QTextOption::WrapAnywhere);
}

} // namespace
} // namespace zem::test
