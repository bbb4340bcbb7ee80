#pragma once

#include "kel/CommandLookup.h"
#include "qt/ChangeDoor.h"
#include "script/ScriptEditing.h"
#include "support/Catalogue.h"
#include "support/ScriptedDialogs.h"

#include <memory>
#include <string>
#include <vector>

namespace zem::test {

/// A game behind a door that counts, the shipped catalogue, and questions answered from a script.
class ScriptFixture : public testing::Test {
protected:
    class Door : public ChangeDoor {
    public:
        GameModel game;
        int changes = 0;

        const GameModel& Game() const override { return game; }
        void Change(const std::function<void(GameModel&)>& change) override {
            change(game);
            ++changes;
            game.Modified = true;
        }
        void MarkModified() override { game.Modified = true; }
    };

    /// Of a program that is not there.
    class SilentShell : public EditorShell {
    public:
        void ShowMessage(const QString& text, const QString& title) override {
            ADD_FAILURE() << title.toStdString() << ": " << text.toStdString();
        }
        void ShowHelp(const QString& /*section*/, QWidget* /*parent*/) override {}
        void ShowManual(const QString& /*place*/, QWidget& /*beside*/) override {}
        QSize TagEditorSize() const override { return {6000, 6000}; }
        void StoreTagEditorSize(const QSize& /*twips*/) override {}
    };

    /// Shows a form on a script or a line of one, without waiting for it to be closed.
    template <class Form>
    std::unique_ptr<Form> Open(const std::string& text) {
        auto form = std::make_unique<Form>(context, text);
        form->show();
        return form;
    }

    Door door;
    GameModel& game = door.game;
    ScriptedDialogs dialogs;
    CommandLookup commands{ShippedCatalogue()};
    bool friendly = true;
    SilentShell shell;
    OpenEdits edits{door};
    ScriptEditing scripts{door, edits, dialogs, shell, commands, [this] { return friendly; }};
    EditorContext context{door, edits, dialogs, shell, scripts};
};

} // namespace zem::test
