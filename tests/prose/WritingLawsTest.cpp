// What must be true of help with writing whatever is written: looks change no letter that players read, and
// each is one step; no mark of spelling touches a code or a variable.
#include "editors/frmEditErrors.h"
#include "kel/FormatCodes.h"
#include "prose/FormatMenu.h"
#include "prose/LineMarks.h"
#include "support/WritingProgram.h"

#include <QRegularExpression>
#include <QTextBlock>

#include <gtest/gtest.h>
#include <random>

namespace zem::test {
namespace {

constexpr std::string_view Plain = "define game <Old>\r\nstart <Hall>\r\nerror <badgo; No.>\r\nend define\r\n"
                                   "define room <Hall>\r\nend define\r\n"
                                   "define text <intro>\r\nThe old door.\r\nend define\r\n";

/// A text of words, codes and variables that stand against one another in every way.
std::string MixedText(std::mt19937& random, bool hasLines) {
    static const char* const pieces[] = {"old ", "door",  "olld", " ",    "|b",  "|xb",  "|i",  "|xi", "|u",
                                         "|xu",  "|crxx", "|cb",  "|s16", "|s0", "#it#", "%n%", "'s",  "-",
                                         "|n",   "5",     "\xE9", ", ",   "|jc", "|jl",  "\r\n"};
    std::string text;
    for (auto count = 1 + random() % 9; count > 0; --count) {
        const std::string piece = pieces[random() % std::size(pieces)];
        text += piece == "\r\n" && !hasLines ? " " : piece == "|s0" ? "|s00" : piece;
    }
    return text;
}

int CountOf(const std::string& text, const std::string& part) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

/// Lets the box take looks at random places, and looks at each.
void TryLooks(const ProseBox& box, std::mt19937& random, const std::function<void()>& undo,
              const std::function<void()>& redo) {
    for (int round = 0; round < 150; ++round) {
        const std::string text = MixedText(random, box.HasSeveralLines());
        box.SetBytes(text);
        const int length = static_cast<int>(box.Text().size());
        int begin = static_cast<int>(random() % static_cast<unsigned>(length + 1));
        int end = static_cast<int>(random() % static_cast<unsigned>(length + 1));
        if (begin > end)
            std::swap(begin, end);
        SCOPED_TRACE(text + " from " + std::to_string(begin) + " to " + std::to_string(end));
        box.Select(begin, end);
        const Qt::Key keys[] = {Qt::Key_B, Qt::Key_I, Qt::Key_U};
        QTest::keyClick(&box.Widget(), keys[random() % 3], Qt::ControlModifier);
        const std::string looking = box.Bytes();
        EXPECT_EQ(FormatCodesToText(looking, false), FormatCodesToText(text, false)) << looking;
        for (const char* variable : {"#it#", "%n%"})
            EXPECT_EQ(CountOf(looking, variable), CountOf(text, variable)) << looking;
        if (looking == text)
            continue;
        undo();
        EXPECT_EQ(box.Bytes(), text) << "Undo, after " << looking;
        redo();
        EXPECT_EQ(box.Bytes(), looking) << "Redo";
    }
}

TEST(WritingLaws, ALookChangesNoLetterAndIsOneStep) {
    Writing p;
    p.StartWith(Plain);
    std::mt19937 random(11);
    p.InTexts([&](frmTextSectionEdit&, PlainTextBox& box) {
        TryLooks(
            ProseBox(box), random, [&] { box.undo(); }, [&] { box.redo(); });
    });
    p.Open<frmEditErrors>("mnuEditErrorMessages", [&](frmEditErrors& form) {
        SelectRow(form, "lstErrors", 0);
        auto& box = Find<QLineEdit>(form, "txtError");
        TryLooks(
            ProseBox(box), random, [&] { box.undo(); }, [&] { box.redo(); });
    });
}

TEST(WritingLaws, ALookThatIsDoneAgainIsTakenAway) {
    Writing p;
    p.StartWith(Plain);
    p.InTexts([&](frmTextSectionEdit&, PlainTextBox& box) {
        const std::string text = "An old door, a |bhouse|xb and\r\n#it#.";
        for (const std::vector<TextLook>& looks : {PlainLooks(), ColourLooks(), SizeLooks()})
            for (const TextLook& look : looks)
                for (const auto& [begin, end] : {std::pair(3, 6), {0, 2}, {3, 11}, {30, 34}}) {
                    SCOPED_TRACE(std::string(look.caption) + " at " + std::to_string(begin));
                    box.SetText(text);
                    ProseBox(box).Select(begin, end);
                    ApplyLook(ProseBox(box), look);
                    EXPECT_NE(box.Text(), text);
                    ApplyLook(ProseBox(box), look);
                    EXPECT_EQ(box.Text(), text);
                    EXPECT_EQ(ProseBox(box).Selected().begin, begin);
                    EXPECT_EQ(ProseBox(box).Selected().end, end);
                }
    });
}

/// The parts of the text that are no words: codes and variables, as a reader of the reference finds them.
std::vector<std::pair<int, int>> CodesOf(const QString& text) {
    static const QRegularExpression code(
        QStringLiteral(R"(\|(?:[nw]|s..|[jx].|c[rblyg]|c|.)|#[^# \n]+#|%[^% \n]+%)"));
    std::vector<std::pair<int, int>> codes;
    for (auto matches = code.globalMatch(text); matches.hasNext();) {
        const auto match = matches.next();
        codes.emplace_back(match.capturedStart(), match.capturedEnd());
    }
    return codes;
}

TEST(WritingLaws, NoMarkOfSpellingTouchesACodeOrAVariable) {
    Writing p;
    p.StartWith(Plain);
    std::mt19937 random(5);
    std::string all;
    for (int round = 0; round < 400; ++round)
        all += MixedText(random, false) + " qqx |bolld|xb olld#olld#|crolld |s16olld|s00 %olld%\r\n";
    p.InTexts([&](frmTextSectionEdit&, PlainTextBox& box) {
        box.resize(box.width(), 4000); // so that much of it is seen
        box.SetText(all);
        ASSERT_TRUE(QTest::qWaitFor([&] { return Marked(box).size() > 20; }, 10000));
        const std::vector<std::pair<int, int>> codes = CodesOf(ProseBox(box).Text());
        int marks = 0;
        for (const QTextEdit::ExtraSelection& mark : box.extraSelections()) {
            if (mark.format.underlineStyle() != QTextCharFormat::WaveUnderline)
                continue;
            ++marks;
            for (const auto& [begin, end] : codes)
                EXPECT_TRUE(mark.cursor.selectionEnd() <= begin || mark.cursor.selectionStart() >= end)
                    << mark.cursor.selectedText().toStdString() << " at " << begin << " in "
                    << mark.cursor.block().text().toStdString();
        }
        EXPECT_GT(marks, 20);
    });
}

} // namespace
} // namespace zem::test
