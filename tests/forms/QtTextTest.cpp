#include "forms/QtText.h"

#include "forms/StorableInput.h"
#include "model/KelError.h"
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
    for (const auto& [text, named] : Cases<QString, const char*>{
             {QStringLiteral(u"caf\u00E9 \u20AC"), ""},
             {QStringLiteral(u"a\u03B1b"), "\"\u03B1\" (U+03B1)"},
             {QStringLiteral(u"\U0001F600"), "\"\U0001F600\" (U+1F600)"},
             {QString(QChar(0xD83D)), "(U+D83D)"},
         }) {
        const std::optional<QString> problem = UnstorableCharacter(text);
        if (*named == '\0') {
            EXPECT_FALSE(problem);
            continue;
        }
        ASSERT_TRUE(problem);
        EXPECT_TRUE(problem->contains(QString::fromUtf8(named))) << problem->toStdString();
        EXPECT_THROW(FromQt(text), KelError);
    }
}

TEST(StorableInput, TurnsPastedLineEndsIntoBlanks) {
    ScriptedDialogs dialogs;
    QLineEdit box;
    RefuseUnstorableText(box, dialogs);
    QGuiApplication::clipboard()->setText("one\r\nend define\n\ttwo");
    box.paste();
    EXPECT_EQ(box.text(), "one  end define  two");
    dialogs.Text("Title: Prompt []", "Hall\nend define");
    EXPECT_EQ(AskStorableText(dialogs, nullptr, "Prompt", "Title", {}), "Hall end define");
}

TEST(StorableInput, RefusesACharacterWhereItIsTypedOrPasted) {
    ScriptedDialogs dialogs;
    QLineEdit box;
    RefuseUnstorableText(box, dialogs);
    const QString refusal = QStringLiteral("ZEM: ") + *UnstorableCharacter(QStringLiteral(u"\u03B1"));
    QTest::keyClicks(&box, "ab");
    box.setCursorPosition(1);
    dialogs.Message(refusal);
    QGuiApplication::clipboard()->setText(QStringLiteral(u"x\u03B1y"));
    box.paste();
    EXPECT_EQ(box.text(), "ab");
    EXPECT_EQ(box.cursorPosition(), 1);
    QTest::keyClicks(&box, "c");
    EXPECT_EQ(box.text(), "acb");
}

} // namespace
} // namespace zem::test
