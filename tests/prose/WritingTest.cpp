// Help with writing, in real boxes of the real program, with a dictionary of a few words.
#include "editors/frmEditErrors.h"
#include "editors/frmTextSectionEdit.h"
#include "forms/PlainTextBox.h"
#include "game/Notes.h"
#include "panels/ResultList.h"
#include "panels/SpellingPanel.h"
#include "panels/frmNamesOfGame.h"
#include "prose/FindBar.h"
#include "prose/FormatMenu.h"
#include "prose/LineMarks.h"
#include "prose/TextPreview.h"
#include "prose/frmLargeText.h"
#include "session/GameSpelling.h"
#include "support/Cases.h"
#include "support/EveryWindow.h"
#include "support/Panels.h"
#include "support/RunningProgram.h"
#include "support/WritingProgram.h"

#include <QContextMenuEvent>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QToolButton>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

constexpr std::string_view Misspelled =
    "define game <Old>\r\nstart <Hall>\r\nerror <badgo; The olld door.>\r\nend define\r\n"
    "define room <Hall>\r\nlook <The olld |bhouse|xb. The Kerl is olld, Kerl is cold, old Kerl.>\r\n"
    "script msg <An olld door was opend.>\r\nend define\r\n"
    "define procedure <tell>\r\nmsg <The olld #it# door>\r\nask <whoo; Whoo is it>\r\ngoto <Hall>\r\nend "
    "define\r\n"
    "define text <intro>\r\nThe olld |bdoor|xb is #colour# here.\r\nend define\r\n"
    "define text <win>\r\nIt is.\r\nend define\r\ndefine text <lose>\r\nIt is.\r\nend define\r\n";

/// Opens the context menu at a word and chooses from it.
void ChooseAtWord(PlainTextBox& box, const char* word, const char* action) {
    box.setTextCursor(box.document()->find(QLatin1String(word)));
    const QPoint middle = box.rect().center();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, middle, box.mapToGlobal(middle));
    QCoreApplication::sendEvent(&box, &event);
    auto* menu = box.findChild<QMenu*>(QStringLiteral("mnuProse"));
    ASSERT_NE(menu, nullptr);
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return menu->findChild<QAction*>(QLatin1String(action)) != nullptr; }, 10000))
        << action;
    menu->findChild<QAction*>(QLatin1String(action))->trigger();
    menu->close();
}

TEST(Writing, MarksUnknownWordsAsOneTypesAndPutsThemRight) {
    Writing p;
    p.StartWith(Misspelled);
    p.InTexts([&](frmTextSectionEdit& form, PlainTextBox& box) {
        WaitForMarks(box, {"olld"});
        EXPECT_EQ(Marked(box, false), QStringList({"|b", "|xb", "#colour#"}));
        box.moveCursor(QTextCursor::End);
        QTest::keyClicks(&box, " xyz");
        QTest::qWait(200);
        EXPECT_EQ(Marked(box), QStringList({"olld"})) << "the word is not finished";
        QTest::keyClicks(&box, " ");
        WaitForMarks(box, {"olld", "xyz"});
        QTest::keyClicks(&box, "lanturn.");
        WaitForMarks(box, {"olld", "xyz", "lanturn"});
        ChooseAtWord(box, "lanturn", "actSuggestion_0");
        WaitForMarks(box, {"olld", "xyz"});
        ChooseAtWord(box, "xyz", "actIgnoreWord");
        WaitForMarks(box, {"olld"});
        EXPECT_TRUE(p.Words().empty());
        ChooseAtWord(box, "olld", "actAddWord");
        WaitForMarks(box, {});
        EXPECT_EQ(p.Words(), std::set<std::string>({"olld"}));
        EXPECT_EQ(box.Text(), "The olld |bdoor|xb is #colour# here. xyz lantern.");
        EXPECT_TRUE(QTest::qWaitFor([&] { return TextOf(form, "txtText_Words") == "7 words"; }));
        box.undo(); // the correction is a step of the box
        EXPECT_TRUE(box.Text().ends_with(" lanturn.")) << box.Text();
    });
    EXPECT_EQ(p.game.TextSections[1].Text, "The olld |bdoor|xb is #colour# here. xyz lanturn.");
}

TEST(Writing, GoesFromUnknownWordToUnknownWordByKey) {
    Writing p;
    p.StartWith(Misspelled);
    p.InTexts([&](frmTextSectionEdit&, PlainTextBox& box) {
        box.SetText("olld door\r\nxyz door olld");
        WaitForMarks(box, {"olld", "xyz", "olld"});
        for (const int at : {0, 10, 19, 0}) {
            QTest::keyClick(&box, Qt::Key_F7);
            EXPECT_EQ(box.textCursor().selectionStart(), at);
        }
    });
}

TEST(Writing, MarksInBoxesOfOneLineWhatPlayersRead) {
    Writing p;
    p.StartWith(Misspelled);
    const auto marked = [](const QWidget& form, const char* name) {
        const auto& box = Find<QLineEdit>(form, name);
        QStringList words;
        for (const ProseMark& mark : Find<LineMarks>(box, "").Shown())
            words.append(box.text().mid(mark.begin, mark.end - mark.begin));
        return words;
    };
    p.Open<frmEditErrors>("mnuEditErrorMessages", [&](frmEditErrors& form) {
        for (int row = 0;
             row < Find<QListWidget>(form, "lstErrors").count() && TextOf(form, "txtError").empty(); ++row)
            SelectRow(form, "lstErrors", row);
        ASSERT_EQ(TextOf(form, "txtError"), "The olld door.");
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return marked(form, "txtError") == QStringList({"olld"}); }, 10000));
        auto& box = Find<QLineEdit>(form, "txtError");
        box.setFocus();
        box.setSelection(4, 4);
        QTest::keyClick(&box, Qt::Key_B, Qt::ControlModifier);
        EXPECT_EQ(TextOf(form, "txtError"), "The |bolld|xb door.");
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                return marked(form, "txtError") == QStringList({"|b", "|xb", "olld"});
            },
            10000));
        EXPECT_EQ(TextOf(form, "txtError"), "The |bolld|xb door.") << "marks write nothing";
        QTest::keyClicks(&box, "new");
        EXPECT_EQ(TextOf(form, "txtError"), "The |bnew|xb door.");
    });
    for (const auto& [line, expected] :
         Cases<const char*, QStringList>{{"Print", {"#it#", "olld"}}, {"Ask", {"Whoo"}}, {"Move", {}}})
        FollowSteps(
            *p.Main(),
            QStringLiteral("mnuViewProcedures > cmbProcedures=tell, butEdit > lstFriendlyLines=%1, butEdit >")
                .arg(QLatin1String(line)),
            [&, what = line, wanted = expected](QWidget& form) {
                EXPECT_TRUE(QTest::qWaitFor([&] { return marked(form, "txtParameter") == wanted; }, 10000))
                    << what << ": " << marked(form, "txtParameter").join(u' ').toStdString();
                EXPECT_EQ(Find<QWidget>(form, "txtParameter_Tools").isVisible(), !wanted.isEmpty()) << what;
            });
}

TEST(Writing, GivesWordsALookByCodes) {
    Writing p;
    p.StartWith(Misspelled);
    p.InTexts([&](frmTextSectionEdit& form, PlainTextBox& box) {
        for (const auto& [text, begin, end, key, result, selected] :
             Cases<std::string, int, int, Qt::Key, std::string, std::string>{
                 {"an old door", 3, 6, Qt::Key_B, "an |bold|xb door", "old"},
                 {"an |bold|xb door", 5, 8, Qt::Key_B, "an old door", "old"},
                 {"an |bold|xb door", 3, 11, Qt::Key_B, "an old door", "old"},
                 {"an old door", 3, 6, Qt::Key_I, "an |iold|xi door", "old"},
                 {"an |iold|xi door", 5, 8, Qt::Key_U, "an |i|uold|xu|xi door", "old"},
                 {"door", 4, 4, Qt::Key_U, "door|u|xu", ""},
                 {"a\r\nb", 0, 3, Qt::Key_B, "|ba\r\nb|xb",
                  "a\xE2\x80\xA9"
                  "b"}}) {
            box.SetText(text);
            ProseBox(box).Select(begin, end);
            QTest::keyClick(&box, key, Qt::ControlModifier);
            EXPECT_EQ(box.Text(), result);
            EXPECT_EQ(box.textCursor().selectedText().toStdString(), selected) << text;
            box.undo();
            EXPECT_EQ(box.Text(), text) << "one step";
        }
        box.SetText("an old door");
        ProseBox(box).Select(3, 6);
        ApplyLook(ProseBox(box), ColourLooks().front());
        ProseBox(box).Select(box.document()->characterCount() - 5, box.document()->characterCount() - 1);
        ApplyLook(ProseBox(box), SizeLooks()[1]);
        EXPECT_EQ(box.Text(), "an |crold|cb |s16door|s00");
        Click(form, "txtText_Preview");
        const auto& preview = Find<TextPreview>(form, "txtText_TextPreview");
        EXPECT_EQ(preview.toPlainText().trimmed().toStdString(), "an old door");
        QTest::keyClicks(&box, "x");
        EXPECT_TRUE(QTest::qWaitFor([&] { return preview.toPlainText().contains(u'x'); }));
    });
}

TEST(Writing, WritesInALargeWindow) {
    Writing p;
    p.StartWith(Misspelled);
    p.InTexts([&](frmTextSectionEdit&, PlainTextBox& box) {
        const std::string text = "One\rtwo\nthree\r\nfour\xA0 \x81";
        box.SetText(text);
        const auto open = [&](const std::function<void(frmLargeText&)>& use) {
            WhenOpen<frmLargeText>(use);
            QTest::keyClick(&box, Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
        };
        open([&](frmLargeText& form) {
            EXPECT_EQ(form.Text(), text);
            Click(form, "butOK");
        });
        EXPECT_EQ(box.Text(), text);
        open([&](frmLargeText& form) {
            TypeText(form, "txtLargeText", "Zero ");
            EXPECT_TRUE(QTest::qWaitFor([&] { return box.Text().starts_with("Zero"); })) << "safe before OK";
            Click(form, "butCancel");
        });
        EXPECT_EQ(box.Text(), text);
        open([&](frmLargeText& form) {
            TypeText(form, "txtLargeText", "Zero ");
            Click(form, "butOK");
        });
        EXPECT_EQ(box.Text(), "Zero " + text);
        box.undo();
        EXPECT_EQ(box.Text(), text);
    });
}

TEST(Writing, FindsInABox) {
    Writing p;
    p.StartWith(Misspelled);
    p.InTexts([&](frmTextSectionEdit& form, PlainTextBox& box) {
        box.SetText("Old one\r\nold two\r\nthree OLD");
        QTest::keyClick(&box, Qt::Key_F, Qt::ControlModifier);
        auto& find = Find<QLineEdit>(form, "txtText_Find");
        ASSERT_EQ(form.focusWidget(), &find);
        QTest::keyClicks(&find, "old");
        for (const auto& [key, modifier, at] :
             Cases<Qt::Key, Qt::KeyboardModifier, int>{{Qt::Key_Return, Qt::NoModifier, 8},
                                                       {Qt::Key_Return, Qt::NoModifier, 22},
                                                       {Qt::Key_Return, Qt::NoModifier, 0},
                                                       {Qt::Key_Return, Qt::ShiftModifier, 22},
                                                       {Qt::Key_Return, Qt::ShiftModifier, 8}}) {
            QTest::keyClick(&find, key, modifier);
            EXPECT_EQ(box.textCursor().selectionStart(), at);
            EXPECT_EQ(box.textCursor().selectedText().toLower(), "old");
        }
        QTest::keyClick(&find, Qt::Key_Escape);
        EXPECT_TRUE(form.isVisible()) << "Esc closes the bar only";
        EXPECT_EQ(form.focusWidget(), &box);
    });
}

// ---- The whole game

struct SpellingWindow : Writing {
    using Writing::Writing;

    void Begin(std::string_view bytes = Misspelled) {
        StartWith(bytes);
        Trigger("mnuToolsSpelling");
        Wait();
    }
    void Wait() const {
        QTest::qWait(200); // what the session tells comes through the event loop
        WaitFor([&] { return Find<SpellingPanel>("dckSpelling")->IsBusy(); });
    }
    QStringList Words() const { return Rows("lstUnknownWords"); }
    void SelectWord(const QString& word) const {
        auto* list = Find<QListWidget>("lstUnknownWords");
        list->setCurrentItem(list->findItems(word + u' ', Qt::MatchStartsWith).value(0));
    }
    std::string Counts() const { return TextOf(*Main(), "lblSpellingCounts"); }
};

TEST(SpellingPanel, CorrectsAWordWhereverItStandsAsOneStep) {
    SpellingWindow p;
    p.Begin();
    ASSERT_TRUE(p.Words().contains("olld  (6)")) << p.Words().join(u' ').toStdString();
    p.SelectWord("olld");
    EXPECT_EQ(TextsOf(*p.Main(), "lstWordPlaces").size(), 6);
    EXPECT_TRUE(QTest::qWaitFor([&] { return TextOf(*p.Main(), "cmbCorrectWord") == "old"; }, 10000));
    p.Click("butCorrectEverywhere");
    p.Wait();
    EXPECT_FALSE(p.Words().join(u' ').contains("olld"));
    EXPECT_EQ(p.game.Rooms[1].Look, "The old |bhouse|xb. The Kerl is old, Kerl is cold, old Kerl.");
    EXPECT_EQ(p.game.Rooms[1].Script, "msg <An old door was opend.>");
    p.Trigger("mnuToolsUndo");
    p.Wait();
    EXPECT_TRUE(p.Words().contains("olld  (6)"));
    SetText(*p.Main(), "cmbCorrectWord", "o>d");
    p.dialogs.Message(
        "ZEM: The command was not carried out: a word of a text has none of the signs < > | # % ; { } in "
        "it.");
    p.SelectWord("olld");
    SetText(*p.Main(), "cmbCorrectWord", "o>d");
    p.Click("butCorrectEverywhere");
    EXPECT_EQ(p.game.Rooms[1].Script, "msg <An olld door was opend.>");
}

TEST(SpellingPanel, KeepsWordsAndNamesBesideTheGame) {
    SpellingWindow p;
    p.Begin();
    p.SelectWord("olld");
    p.Click("butAddWord");
    p.SelectWord("opend");
    p.Click("butIgnoreWord");
    p.Wait();
    EXPECT_FALSE(p.Words().join(u' ').contains("olld"));
    EXPECT_FALSE(p.Words().join(u' ').contains("opend"));
    p.Open<frmNamesOfGame>("butSpellingNames", [](frmNamesOfGame& form) {
        EXPECT_EQ(Rows(form, "lstNamesOfGame"), QStringList({"Kerl  (3)"}));
        Click(form, "butOK");
    });
    p.Wait();
    EXPECT_FALSE(p.Words().join(u' ').contains("Kerl"));
    EXPECT_EQ(p.Writing::Words(), std::set<std::string>({"Kerl", "olld"}));
    EXPECT_FALSE(p.IsEnabled("butSpellingNames"));
}

TEST(SpellingPanel, OpensThePlaceOfAWord) {
    SpellingWindow p;
    p.Begin();
    p.SelectWord("opend");
    p.SelectWord("olld");
    const QStringList places = TextsOf(*p.Main(), "lstWordPlaces");
    for (int row = 0; row < places.size(); ++row)
        if (places[row].contains("intro")) {
            WhenOpen<frmTextSectionEdit>([](frmTextSectionEdit& form) {
                EXPECT_TRUE(QTest::qWaitFor([&] {
                    return Find<PlainTextBox>(form, "txtText").textCursor().selectedText() == "olld";
                }));
            });
            emit p.Find<ResultList>("lstWordPlaces")->Chosen(row);
        }
}

TEST(SpellingPanel, SaysWhyNothingIsChecked) {
    for (const auto& [language, folder, told] : Cases<const char*, const char*, const char*>{
             {"de_DE.UTF-8", ZEM_TEST_DATA "/spelling", "No dictionary for de_DE is installed"},
             {"ru_RU.UTF-8", ZEM_TEST_DATA "/spelling",
              "Words are not checked: the dictionary ru_RU.aff is in the "
              "encoding KOI8-R"},
             {"cut", ZEM_TEST_DATA "/spelling", "the dictionary cut.dic is damaged"}}) {
        SpellingWindow p(language, folder);
        p.Begin();
        EXPECT_NE(p.Counts().find(told), std::string::npos) << p.Counts();
        EXPECT_TRUE(p.Words().isEmpty());
        auto* languages = p.Find<QComboBox>("cmbSpellingLanguage");
        const int own = languages->findData("en_XX");
        ASSERT_GE(own, 0);
        languages->setCurrentIndex(own);
        emit languages->activated(own);
        p.Wait();
        EXPECT_TRUE(p.Words().contains("olld  (6)")) << p.Counts();
        EXPECT_EQ(LoadNotes(p.folder.Path("game.kel")).language, "en_XX");
    }
}

TEST(GameSpelling, TakesWordsAlongWhenAGameIsSavedForTheFirstTimeOrElsewhere) {
    SpellingWindow p;
    p.Begin();
    p.Spelling().AddWords({"caf\xE9"});
    EXPECT_EQ(p.Writing::Words(), std::set<std::string>({"caf\xC3\xA9"}));
    p.dialogs.SaveFile(p.Path("other.kel"));
    p.Trigger("mnuFileSaveAs");
    EXPECT_EQ(LoadNotes(p.folder.Path("other.kel")).words, std::set<std::string>({"caf\xC3\xA9"}));
    p.Trigger("mnuFileNew");
    p.Wait();
    p.program->Session().Change([](GameModel& game) { game.StartRoom = "Hall"; }); // or it is asked for
    p.Spelling().AddWords({"xyzzy"});
    p.dialogs.SaveFile(p.Path("third.kel"));
    p.Trigger("mnuFileSave");
    EXPECT_EQ(LoadNotes(p.folder.Path("third.kel")).words, std::set<std::string>({"xyzzy"}));
    p.folder.Write("third.kel.notes", "<<<<<<< ours\n");
    EXPECT_THROW(p.Spelling().AddWords({"more"}), CommandError);
    EXPECT_FALSE(p.Spelling().Speller().Knows("more"));
}

} // namespace
} // namespace zem::test
