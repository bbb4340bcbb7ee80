// Lines typed into the box of a script window: those of all sample games, and nonsense.
#include "model/Texts.h"
#include "qt/QtText.h"
#include "script/LineBox.h"
#include "script/frmScriptLines.h"
#include "support/Cases.h"
#include "support/Controls.h"
#include "support/Games.h"
#include "support/Lines.h"
#include "support/ScriptFixture.h"

#include <gtest/gtest.h>
#include <set>

namespace zem::test {
namespace {

class TypedLines : public ScriptFixture {
protected:
    /// Puts a text into the box and presses Return. The raw line that came of it; "" for none.
    std::string Enter(frmScriptLines& form, const QString& text) {
        const QStringList before = Rows(form, "lstScriptLines");
        auto& box = Find<LineBox>(form, "txtLine");
        box.setText(text);
        QTest::keyClick(&box, Qt::Key_Return);
        const QStringList after = Rows(form, "lstScriptLines");
        EXPECT_TRUE(form.isVisible());
        return after.size() == before.size() + 1 ? FromQt(after[SelectedLine(form)]) : "";
    }

    static int SelectedLine(const frmScriptLines& form) { return SelectedRow(form, "lstScriptLines"); }
};

/// All lines of the scripts of a game that are written well.
std::set<std::string> LinesOf(const GameModel& game) {
    std::set<std::string> lines;
    ForEachText(game, [&](const Place&, FieldUse use, const std::string& text) {
        if (use.kind == FieldKind::Script)
            for (const std::string& line : SplitLines(text))
                if (!line.empty() && line.find("~Internal") == std::string::npos)
                    lines.insert(line.substr(line.find_first_not_of(' ')));
    });
    return lines;
}

TEST_F(TypedLines, AreTheLinesOfTheSamplesWhetherInKelOrInPlainEnglish) {
    const auto form = Open<frmScriptLines>("");
    int lines = 0;
    for (const char* sample : {"gatehouse", "cottage", "lighthouse"})
        for (const std::string& line :
             LinesOf(LoadBytes(ReadBytes(std::string(ZEM_SAMPLES "/") + sample + ".kel")))) {
            if (line[0] == '\'' || ++lines > 200)
                continue;
            SCOPED_TRACE(line);
            EXPECT_EQ(Enter(*form, ToQt(line)), line);
            EXPECT_EQ(TextOf(*form, "lblLineProblem"), "");
            const std::string english =
                Rows(*form, "lstFriendlyLines").value(SelectedLine(*form)).toStdString();
            if (line.starts_with("if ") || line.find('|') != std::string::npos || line.ends_with(" >"))
                continue; // conditions are shown in more words, codes by their names, blanks not at all
            const bool isAlone = line.find('<') == std::string::npos; // An empty parameter is none.
            EXPECT_EQ(Enter(*form, QString::fromStdString(english)), line + (isAlone ? " <>" : ""))
                << english;
        }
    EXPECT_GT(lines, 100);
}

TEST_F(TypedLines, ThatMakeNoSenseStayInTheBoxWithTheReason) {
    const auto form = Open<frmScriptLines>("win\r\ndie");
    for (const QString& text :
         {QStringLiteral("if"), QStringLiteral("if has"), QStringLiteral("if then"),
          QStringLiteral("if has <a> then"), QStringLiteral("else win"), QStringLiteral("give"),
          QStringLiteral("give <"), QStringLiteral("give <a> <b>"), QStringLiteral("give <a>b>"),
          QStringLiteral("}"), QStringLiteral("{"), QStringLiteral("<>"),
          QStringLiteral("if has <a> then win else"), QStringLiteral("if has <a> or then win"),
          QStringLiteral("define room <x>"), QStringLiteral("end define"), QString(50000, u'x'),
          QStringLiteral("if ").repeated(3000)}) {
        SCOPED_TRACE(text.left(40).toStdString());
        SelectRow(*form, "lstFriendlyLines", 0);
        EXPECT_EQ(Enter(*form, text), "");
        EXPECT_EQ(Find<LineBox>(*form, "txtLine").text(), text) << "nothing typed is lost";
        EXPECT_NE(TextOf(*form, "lblLineProblem"), "");
        EXPECT_EQ(Rows(*form, "lstScriptLines"), (QStringList{"win", "die"}));
    }
    EXPECT_EQ(Enter(*form, "back"), "back");
    EXPECT_EQ(TextOf(*form, "lblLineProblem"), "");
    EXPECT_EQ(Rows(*form, "lstScriptLines"), (QStringList{"win", "back", "die"}))
        << "behind the selected line";
}

} // namespace
} // namespace zem::test
