// Opens every editor from the main window, on a game in which everything is filled, and compares the file
// that would be saved before and after.
#include "readback/LooseComparison.h"
#include "support/CaseFile.h"
#include "support/EditorGame.h"
#include "support/Lines.h"
#include "support/RunningProgram.h"
#include "support/WhenOpen.h"
#include "windows/frmReadBack.h"

#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <random>
#include <set>

namespace zem::test {
namespace {

/// Does what the steps say, as edits.cases describes them.
/// @param done  called when all is typed and nothing confirmed, not even in the innermost window
void Do(const QWidget& form, QStringList steps, const std::function<void()>& done) {
    while (!steps.isEmpty()) {
        const QString step = steps.takeFirst();
        const QByteArray control = step.section(" =", 0, 0).remove("...").toLatin1();
        const QString text = step.section(" =", 1).mid(1);
        auto* list = form.findChild<QListWidget*>(control);
        if (step.endsWith("...")) {
            WhenOpen<QDialog>([rest = std::exchange(steps, {}), &done](QDialog& inner) {
                Do(inner, rest, done);
                Click(inner, "butOK");
            });
            Click(form, control);
            return;
        } else if (list != nullptr) {
            list->setCurrentItem(list->findItems(text, Qt::MatchExactly).value(0));
        } else if (step.contains(" =")) {
            SetText(form, control, text.toUtf8());
        } else {
            Click(form, control);
        }
    }
    if (done)
        done();
}

/// Opens the editor, does the steps and closes it with the button. Returns its caption.
std::string Edit(const RunningProgram& p, const std::string& command, const QStringList& steps,
                 const char* button, const std::function<void()>& done = {}) {
    for (const char* list : {"lstRooms", "lstCharacters", "lstObjects"})
        p.Select(list, 0);
    std::string caption;
    WhenOpen<QDialog>([&](const QDialog& form) {
        caption = form.windowTitle().toStdString();
        Do(form, steps, done);
        Click(form, button);
        EXPECT_FALSE(form.isVisible());
    });
    if (command.starts_with("mnu"))
        p.Trigger(command.c_str());
    else
        p.Click(command.c_str());
    return caption;
}

QStringList Steps(const std::string& text) {
    return QString::fromStdString(text).split("; ", Qt::SkipEmptyParts);
}

/// What the saved file shows of the steps.
std::string DifferenceAfter(const std::string& command, const std::string& steps, const char* button) {
    RunningProgram p;
    p.StartWith(EditorGame());
    std::string unconfirmed;
    Edit(p, command, Steps(steps), button, [&] {
        GameModel preview = p.program->Edits().Preview();
        preview.Modified = false;
        unconfirmed = Difference(EditorGame(), SaveToBytes(preview));
    });
    EXPECT_EQ(p.game.Modified, std::string(button) == "butOK");
    p.game.Modified = false;
    std::string confirmed = Difference(EditorGame(), SaveToBytes(p.game));
    if (std::string(button) == "butOK") {
        EXPECT_EQ(unconfirmed, confirmed) << "what a copy of unsaved changes would hold";
    }
    return confirmed;
}

TEST(EveryForm, ChangesOnOkJustWhatWasChangedAndNothingOnCancel) {
    std::set<std::string> commands;
    std::set<std::string> captions;
    for (const auto& [command, steps, difference] : CasesIn<3>("edits")) {
        SCOPED_TRACE(command + ": " + steps);
        EXPECT_EQ(DifferenceAfter(command, steps, "butOK"), difference);
        EXPECT_EQ(DifferenceAfter(command, steps, "butCancel"), "");
        if (commands.insert(command).second) {
            EXPECT_EQ(DifferenceAfter(command, "", "butOK"), "") << "nothing by itself";
            RunningProgram p(EditorGame());
            captions.insert(Edit(p, command, {}, "butCancel"));
            EXPECT_EQ(Difference(EditorGame(), SaveToBytes(p.game)), "");
        }
    }
    EXPECT_EQ(captions,
              (std::set<std::string>{"Character Properties", "Collectables", "Edit Error Messsages",
                                     "Game Properties", "Included Libraries", "Items", "Misc Kel Editor",
                                     "Object Properties", "Room Properties", "Synonyms"}));
}

/// A text of pieces that mean something in a file.
QString TrickyText(std::mt19937& random) {
    static const char* const pieces[] = {"a", "b c", ">",    "<",  ";",      ",",          "=",
                                         "{", "}",   "]",    "__", "'x",     "end define", "define x",
                                         " ", "\n",  "else", "x",  "nodebug"};
    QString text;
    for (auto count = random() % 5; count > 0; --count)
        text += QLatin1String(pieces[random() % std::size(pieces)]);
    return text;
}

/// Saves; whether the author was told that something would not come back.
bool IsToldOnSaving(const RunningProgram& p) {
    bool isTold = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&isTold] {
        if (auto* form = qobject_cast<frmReadBack*>(QApplication::activeModalWidget())) {
            isTold = true;
            form->reject();
        }
    });
    watch.start(1);
    p.Trigger("mnuFileSave");
    return isTold;
}

bool ComesBack(const RunningProgram& p) {
    GameModel back = p.game;
    return ProblemOf([&] { back = LoadBytes(ReadBytes(p.folder.Path("game.kel")), back); }).empty() &&
           IsSameInFile(p.game, back);
}

/// The steps that lead to a box which takes any text, by the command of its editor.
std::map<std::string, std::vector<QStringList>> WaysToBoxes() {
    std::map<std::string, std::vector<QStringList>> ways;
    for (const auto& [command, steps, difference] : CasesIn<3>("edits")) {
        const QString box = Steps(steps).constLast();
        const bool isText = box.startsWith("txt") || box.startsWith("cmbRoomNames_");
        if (isText && !box.startsWith("txtFontSize") && steps.find("...") == std::string::npos)
            ways[command].push_back(Steps(steps));
    }
    ways["mnuViewTextSectionEditor"] = {{"cmbTextSections = intro", "txtText = x"}};
    return ways;
}

// Whatever is typed into a box: the author is told just when the file does not give the game back.
TEST(EveryForm, TellsOnSavingJustWhatIsLostOfWhateverIsTyped) {
    std::mt19937 random(7);
    std::string tested;
    for (const auto& [command, ways] : WaysToBoxes()) {
        std::map<bool, int> saves;
        for (std::size_t save = 0; save < 12; ++save) {
            QStringList steps = ways[save % ways.size()];
            steps.last() = steps.constLast().section(" =", 0, 0) + " = " + TrickyText(random);
            SCOPED_TRACE(command + ": " + steps.last().toStdString());
            RunningProgram p(EditorGame());
            Edit(p, command, steps, command == "mnuViewTextSectionEditor" ? "butClose" : "butOK");
            const bool isTold = IsToldOnSaving(p);
            EXPECT_EQ(isTold, !ComesBack(p));
            ++saves[isTold];
        }
        EXPECT_TRUE(saves[true] > 0 && saves[false] > 0) << command;
        tested += command + ' ';
    }
    EXPECT_EQ(tested, "butEditObj_0 butEditObj_1 butEditRoom mnuEditErrorMessages mnuViewGameProperties "
                      "mnuViewMiscKEL mnuViewTextSectionEditor ");
}

} // namespace
} // namespace zem::test
