// Opens every editor from the main window, on a game in which everything is filled, and compares the file
// that would be saved before and after.
#include "support/CaseFile.h"
#include "support/EditorGame.h"
#include "support/Lines.h"
#include "support/RunningProgram.h"
#include "support/WhenOpen.h"

#include <gtest/gtest.h>
#include <set>

namespace zem::test {
namespace {

/// Does what the steps say, as edits.cases describes them.
void Do(const QWidget& form, QStringList steps) {
    while (!steps.isEmpty()) {
        const QString step = steps.takeFirst();
        const QByteArray control = step.section(" =", 0, 0).remove("...").toLatin1();
        const QString text = step.section(" =", 1).mid(1);
        auto* list = form.findChild<QListWidget*>(control);
        if (step.endsWith("...")) {
            WhenOpen<QDialog>([rest = std::exchange(steps, {})](QDialog& inner) {
                Do(inner, rest);
                Click(inner, "butOK");
            });
            Click(form, control);
        } else if (list != nullptr) {
            list->setCurrentItem(list->findItems(text, Qt::MatchExactly).value(0));
        } else if (step.contains(" =")) {
            SetText(form, control, text.toUtf8());
        } else {
            Click(form, control);
        }
    }
}

/// Opens the editor, does the steps and presses the button; returns what the saved file shows of it.
/// @param captions  gets that of the editor
std::string DifferenceAfter(const std::string& command, const std::string& steps, const char* button,
                            std::set<std::string>& captions) {
    RunningProgram p;
    p.StartWith(EditorGame());
    for (const char* list : {"lstRooms", "lstCharacters", "lstObjects"})
        p.Select(list, 0);
    WhenOpen<QDialog>([&](const QDialog& form) {
        captions.insert(form.windowTitle().toStdString());
        Do(form, QString::fromStdString(steps).split("; ", Qt::SkipEmptyParts));
        Click(form, button);
        EXPECT_FALSE(form.isVisible());
    });
    if (command.starts_with("mnu"))
        p.Trigger(command.c_str());
    else
        p.Click(command.c_str());
    EXPECT_EQ(p.game.Modified, std::string(button) == "butOK");
    p.game.Modified = false;
    return Difference(EditorGame(), SaveToBytes(p.game));
}

TEST(EveryForm, ChangesOnOkJustWhatWasChangedAndNothingOnCancel) {
    std::set<std::string> commands;
    std::set<std::string> captions;
    for (const auto& [command, steps, difference] : CasesIn<3>("edits")) {
        SCOPED_TRACE(command + ": " + steps);
        EXPECT_EQ(DifferenceAfter(command, steps, "butOK", captions), difference);
        EXPECT_EQ(DifferenceAfter(command, steps, "butCancel", captions), "");
        if (commands.insert(command).second) {
            EXPECT_EQ(DifferenceAfter(command, "", "butOK", captions), "") << "nothing by itself";
        }
    }
    EXPECT_EQ(captions,
              (std::set<std::string>{"Character Properties", "Collectables", "Edit Error Messsages",
                                     "Game Properties", "Included Libraries", "Items", "Misc Kel Editor",
                                     "Object Properties", "Room Properties", "Synonyms"}));
}

} // namespace
} // namespace zem::test
