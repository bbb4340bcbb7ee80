// Every command and button of the main window with all its panels, in games of all kinds: none fails, and
// none changes the game but those that say so, by a step that can be taken back.
#include "support/Cases.h"
#include "support/RunningProgram.h"
#include "support/UndoLaw.h"

#include <QClipboard>
#include <QDialog>
#include <QGuiApplication>
#include <QMenu>
#include <QTimer>
#include <QWhatsThis>

#include <gtest/gtest.h>
#include <set>

namespace zem::test {
namespace {

/// Closes every window and menu that comes up, as an author who has changed his mind.
class ChangesHisMind {
public:
    ChangesHisMind() {
        QObject::connect(&timer_, &QTimer::timeout, [] {
            if (QWidget* popup = QApplication::activePopupWidget())
                popup->close();
            if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                dialog->reject();
        });
        timer_.start(0);
    }

private:
    QTimer timer_;
};

/// What these do is their name; they would only end the test.
const std::set<std::string> Enders = {"mnuFileExit", "mnuFileNew", "butNew", "Toolbar1.New game"};

/// These count the game as changed even where the author cancels, as ever.
const std::set<std::string> Markers = {
    "mnuViewTextSectionEditor", "butEditText", "Toolbar1.Text Sections",      "butAddNewRoom",
    "lstRooms.Add room",        "butAddObj_0", "lstCharacters.Add character", "butAddObj_1",
    "lstObjects.Add object"};

std::string NameOfCommand(const QObject& command, const QString& text) {
    const std::string list = command.parent() == nullptr ? "" : command.parent()->objectName().toStdString();
    const std::string name = command.objectName().toStdString();
    if (name.starts_with("act") && list.starts_with("lst"))
        return list + '.' + name;
    return name.empty() ? list + '.' + text.section(u'\t', 0, 0).toStdString() : name;
}

class EveryCommand {
public:
    /// @param selects  whether a row is selected in each list
    EveryCommand(std::string_view bytes, bool selects) : selects_(selects) {
        p_.dialogs.CancelTheRest();
        p_.folder.Write("game.kel.tests", "run once seed 1\n\n> look\n");
        if (bytes.empty()) {
            p_.Start();
            p_.Main()->show();
        } else {
            p_.StartWith(bytes);
        }
        for (QAction* action : p_.Main()->findChildren<QAction*>())
            if (action->isCheckable() && action->objectName().startsWith("mnuTools") && !action->isChecked())
                action->trigger();
        Settle();
    }

    /// The names of all that has changed the game.
    std::set<std::string> Run() {
        const ChangesHisMind author;
        std::vector<std::pair<std::string, QPointer<QObject>>> commands;
        for (QAction* action : p_.Main()->findChildren<QAction*>())
            if (!action->isSeparator() && action->menu() == nullptr &&
                !action->objectName().startsWith("_q_") &&
                qobject_cast<QAbstractButton*>(action->parent()) == nullptr)
                commands.emplace_back(NameOfCommand(*action, action->text()), action);
        for (auto* button : p_.Main()->findChildren<QAbstractButton*>())
            if (!button->objectName().startsWith("qt_"))
                commands.emplace_back(NameOfCommand(*button, button->text()), button);
        std::set<std::string> changing;
        for (const auto& [name, command] : commands)
            if (command != nullptr && !Enders.contains(name) && Changes(name, *command))
                changing.insert(name);
        count_ = commands.size();
        return changing;
    }

    std::size_t Count() const { return count_; }

private:
    bool Changes(const std::string& name, QObject& command) {
        SCOPED_TRACE(name);
        Select();
        Settle();
        const std::string before = GameFile(p_.game);
        if (auto* action = qobject_cast<QAction*>(&command)) {
            const bool isPanel = action->isCheckable() && action->isChecked();
            action->trigger();
            if (isPanel)
                action->trigger(); // Shows it again.
        } else if (auto* button = qobject_cast<QAbstractButton*>(&command); button->isVisible()) {
            button->click();
        }
        QWhatsThis::leaveWhatsThisMode();
        Settle();
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
        if (GameFile(p_.game) == before) {
            EXPECT_TRUE(!p_.game.Modified || Markers.contains(name));
            p_.game.Modified = false; // for the next one
            return false;
        }
        ExpectOneStep(p_, before);
        p_.Trigger("mnuToolsUndo");
        EXPECT_FALSE(p_.game.Modified);
        Settle();
        return true;
    }

    void Select() const {
        for (const char* list : {"lstRooms", "lstCharacters", "lstObjects"}) {
            auto* view = p_.Find<QAbstractItemView>(list);
            view->selectionModel()->clear();
            if (selects_)
                view->setCurrentIndex(view->model()->index(0, 0));
        }
        QGuiApplication::clipboard()->setText(QStringLiteral("define room <Pasted>\nend define\n"));
    }

    static void Settle() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    RunningProgram p_;
    bool selects_;
    std::size_t count_ = 0;
};

TEST(EveryCommand, ChangesNothingUnlessItSaysSoAndCanBeTakenBack) {
    const std::string sample = CrLf("define game <Small>\nstart <Hall>\nend define\n"
                                    "define room <Hall>\nlook <x>\nnorth <Attic>\n"
                                    "define character <Bob>\nend define\ndefine object <lamp>\nend define\n"
                                    "end define\ndefine room <Attic>\nsouth <Hall>\nend define\n");
    // The commands of the clipboard without a list before them are the map's, which has rooms of its own
    // selected.
    const std::set<std::string> changing = {"actCut",
                                            "actDuplicate",
                                            "actPaste",
                                            "butDeleteObj_0",
                                            "butDeleteObj_1",
                                            "butDeleteRoom",
                                            "lstCharacters.Delete character",
                                            "lstCharacters.actCut",
                                            "lstCharacters.actDuplicate",
                                            "lstCharacters.actPaste",
                                            "lstObjects.Delete object",
                                            "lstObjects.actCut",
                                            "lstObjects.actDuplicate",
                                            "lstObjects.actPaste",
                                            "lstRooms.Delete room",
                                            "lstRooms.actCut",
                                            "lstRooms.actDuplicate",
                                            "lstRooms.actPaste",
                                            "mnuToolsRedo"};
    for (const auto& [what, bytes, selects] :
         Cases<const char*, std::string, bool>{{"an empty game", CrLf("define game <>\nend define\n"), false},
                                               {"a game with nothing selected", sample, false},
                                               {"a game", sample, true}}) {
        SCOPED_TRACE(what);
        EveryCommand all(bytes, selects);
        const std::set<std::string> changed = all.Run();
        for (const std::string& name : changed)
            EXPECT_TRUE(changing.contains(name)) << name;
        for (const std::string& name : changing)
            EXPECT_TRUE(!selects || changed.contains(name)) << name;
        EXPECT_GT(all.Count(), 100U) << "it was looked at everything";
    }
}

} // namespace
} // namespace zem::test
