#pragma once

#include "forms/ChangeDoor.h"
#include "kel/CommandLookup.h"
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
        std::vector<std::string> changes;

        const GameModel& Game() const override { return game; }
        void Change(const QString& name, const std::function<void(GameModel&)>& change) override {
            change(game);
            changes.push_back(name.toStdString());
            game.Modified = true;
        }
        void MarkModified() override { game.Modified = true; }
    };

    /// Shows a form on a script or a line of one, without waiting for it to be closed.
    template <class Form>
    std::unique_ptr<Form> Open(const std::string& text) {
        auto form = std::make_unique<Form>(scripts, text);
        form->show();
        return form;
    }

    Door door;
    GameModel& game = door.game;
    ScriptedDialogs dialogs;
    CommandLookup commands{ShippedCatalogue()};
    bool friendly = true;
    ScriptEditing scripts{door, dialogs, commands, [this] { return friendly; }};
};

} // namespace zem::test
