#include "qt/QtText.h"

#include "base/KelError.h"
#include "forms/StorableInput.h"
#include "support/Cases.h"
#include "support/ScriptedDialogs.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSet>
#include <QtTest/QTest>

#include <gtest/gtest.h>
#include <numeric>

namespace zem::test {
namespace {

TEST(QtText, KeepsEveryByteBothWays) {
    std::string bytes(256, '\0');
    std::iota(bytes.begin(), bytes.end(), '\0');
    const QString text = ToQt(bytes);
    EXPECT_EQ(FromQt(text), bytes);
    EXPECT_EQ(QSet<QChar>(text.begin(), text.end()).size(), 256) << "no two bytes may look the same";
    EXPECT_EQ(ToQt("caf\xE9 \x80 \x93\x94"), QStringLiteral(u"caf\u00E9 \u20AC \u201C\u201D"));
}

TEST(QtText, NamesTheCharacterThatCannotBeKept) {
    EXPECT_FALSE(UnstorableCharacter(QStringLiteral(u"caf\u00E9 \u20AC")));
    for (const auto& [text, named] :
         Cases<QString, QString>{{QStringLiteral(u"a\u03B1b"), QStringLiteral(u"\"\u03B1\" (U+03B1)")},
                                 {QStringLiteral(u"\U0001F600"), QStringLiteral(u"\"\U0001F600\" (U+1F600)")},
                                 {QString(QChar(0xD83D)), "(U+D83D)"}}) {
        EXPECT_TRUE(UnstorableCharacter(text).value_or("").contains(named)) << named.toStdString();
        EXPECT_THROW(FromQt(text), KelError);
    }
}

TEST(StorableInput, TakesOneLineAndRefusesWhatAFileCannotHold) {
    ScriptedDialogs dialogs;
    QLineEdit box(QStringLiteral("\x01"));
    RefuseUnstorableText(box, dialogs);
    const auto paste = [&box](const QString& text) {
        QGuiApplication::clipboard()->setText(text);
        box.paste();
    };
    QTest::keyClick(&box, Qt::Key_End);
    paste("one\r\nend define\n\ttwo");
    EXPECT_EQ(box.text(), "\x01one  end define  two") << "what was there stays as it is";
    box.setCursorPosition(1);
    const QString question =
        QStringLiteral("ZEM: ") + *UnstorableCharacter(QStringLiteral(u"\u03B1")) + " [Paste the rest]";
    dialogs.Choice(question, -1);
    paste(QStringLiteral(u"x\u03B1y"));
    QTest::keyClicks(&box, "z");
    EXPECT_EQ(box.text(), "\x01zone  end define  two");
    dialogs.Choice(question, 0);
    paste(QStringLiteral(u"x\u03B1y"));
    QTest::keyClicks(&box, "!");
    EXPECT_EQ(box.text(), "\x01zxy!one  end define  two") << "the caret stands behind it";
    dialogs.Text("Title: Prompt []", "Hall\nend define");
    EXPECT_EQ(AskStorableText(dialogs, nullptr, "Prompt", "Title", {}), "Hall end define");
}

} // namespace
} // namespace zem::test
