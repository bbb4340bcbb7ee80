#include "script/ScriptEditing.h"

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
      names_(commands) {}

std::string ScriptEditing::EditScript(QWidget* parent, const std::string& script) {
    frmScriptLines form(context_, script, parent);
    return form.exec() == QDialog::Accepted ? form.Value() : script;
}

std::string ScriptEditing::EditScriptLine(QWidget* parent, const std::string& line) {
    frmScriptEditor form(context_, line, parent);
    return form.exec() == QDialog::Accepted ? form.Line() : line;
}

std::string ScriptEditing::EditConditional(QWidget* parent, const std::string& line) {
    frmConditional form(context_, line, parent);
    return form.exec() == QDialog::Accepted ? form.Line() : line;
}

std::string ScriptEditing::Render(const std::string& script, ScriptForm form,
                                  InternalProcedures internal) const {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const auto end = qScopeGuard(QApplication::restoreOverrideCursor);
    return RenderForReading(script, form, internal, context_.door.Game().Procedures, commands_,
                            isFriendly_());
}

void ScriptEditing::Show(const std::string& script, QTextEdit& box) const {
    ShowFormattedText(Render(script, ScriptForm::Rich, InternalProcedures::Expand), box);
}

} // namespace zem
