#include "script/ScriptEditing.h"

#include "forms/AskBeforeDiscard.h"
#include "script/ScriptDraft.h"
#include "script/ShowFormattedText.h"
#include "script/frmConditional.h"
#include "script/frmScriptEditor.h"
#include "script/frmScriptLines.h"

#include <QApplication>
#include <QScopeGuard>

#include <utility>

namespace zem {

ScriptEditing::ScriptEditing(ChangeDoor& door, OpenEdits& edits, Dialogs& dialogs, EditorShell& shell,
                             const CommandLookup& commands, std::function<bool()> isFriendly)
    : context_{door, edits, dialogs, shell, *this},
      commands_(commands),
      isFriendly_(std::move(isFriendly)),
      names_(commands) {
    edits.BeginWith([this] { return Game(); });
}

bool ScriptEditing::EditScript(QWidget* parent, std::string& script) {
    frmScriptLines form(context_, script, parent);
    const ValueEdit<std::string> edit(context_.edits, script,
                                      [&form](GameModel& game) { return form.FoldLines(game); });
    AskBeforeDiscard(form, context_.dialogs, edit);
    if (form.exec() != QDialog::Accepted)
        return false;
    script = form.Value();
    return true;
}

bool ScriptEditing::EditScriptLine(QWidget* parent, std::string& line) {
    frmScriptEditor form(context_, line, parent);
    const ValueEdit<std::string> edit(context_.edits, line, [&form](GameModel&) { return form.TypedLine(); });
    AskBeforeDiscard(form, context_.dialogs, edit);
    if (form.exec() != QDialog::Accepted)
        return false;
    line = form.Line();
    return true;
}

bool ScriptEditing::EditConditional(QWidget* parent, std::string& line) {
    frmConditional form(context_, line, parent);
    const ValueEdit<std::string> edit(context_.edits, line, [&form](GameModel&) { return form.TypedLine(); });
    AskBeforeDiscard(form, context_.dialogs, edit);
    if (form.exec() != QDialog::Accepted)
        return false;
    line = form.Line();
    return true;
}

GameModel ScriptEditing::Game() const {
    GameModel game = context_.door.Game();
    if (!drafts_.empty())
        drafts_.back()->Keep(game);
    return game;
}

void ScriptEditing::ChangeProcedures(const std::function<void(GameModel&)>& change) {
    if (drafts_.empty()) {
        context_.door.Change(change);
        return;
    }
    GameModel changed = Game();
    change(changed);
    drafts_.back()->game_ = std::move(changed);
}

std::string ScriptEditing::Render(const std::string& script, ScriptForm form,
                                  InternalProcedures internal) const {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const auto end = qScopeGuard(QApplication::restoreOverrideCursor);
    return RenderForReading(script, form, internal, Game().Procedures, commands_, isFriendly_());
}

void ScriptEditing::Show(const std::string& script, QTextEdit& box) const {
    ShowFormattedText(Render(script, ScriptForm::Rich, InternalProcedures::Expand), box);
}

} // namespace zem
