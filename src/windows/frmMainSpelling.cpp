// The words of the game that nobody knows, in the main window.
#include "panels/SpellingPanel.h"
#include "script/ScriptEditing.h"
#include "session/GameSpelling.h"
#include "windows/frmMain.h"

namespace zem {

void frmMain::AddSpelling() {
    GameSpelling* spelling = context_.shell.Spelling();
    if (spelling == nullptr)
        return;
    AddPanel(
        QStringLiteral("mnuToolsSpelling"), QStringLiteral("Spelling"), QKeySequence(Qt::Key_F7),
        [this, spelling] {
            return new SpellingPanel(
                session_, *spelling, context_.scripts.Commands(), dialogs_,
                [this](const Place& place) { OpenEditor(place); }, this);
        },
        Qt::BottomDockWidgetArea);
    connect(spelling, &GameSpelling::CouldNotKeep, this, [this](const QString& text) { ShowBar(text, {}); });
}

} // namespace zem
