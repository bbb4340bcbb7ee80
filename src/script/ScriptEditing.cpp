#include "script/ScriptEditing.h"

#include "base/LineText.h"
#include "forms/AskBeforeDiscard.h"
#include "forms/EditorHead.h"
#include "kel/ScriptRows.h"
#include "qt/QtText.h"
#include "script/ScriptDraft.h"
#include "script/ShowFormattedText.h"
#include "script/frmConditional.h"
#include "script/frmScriptEditor.h"
#include "script/frmScriptLines.h"

#include <QApplication>
#include <QScopeGuard>

#include <optional>
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

namespace {

/// Runs a window that edits a value, with the question before it is closed with changes.
/// @param read  what OK gives back; may change the game besides
template <class Form, class Read>
bool RunValueEditor(Form& form, const EditorContext& context, std::string& value, Read read) {
    const ValueEdit<std::string> edit(context.edits, value, read);
    AskBeforeDiscard(form, context.dialogs, edit);
    return form.exec() == QDialog::Accepted;
}

} // namespace

bool ScriptEditing::EditScript(QWidget* parent, std::string& script, const QString& what) {
    ScriptDraft draft(*this);
    frmScriptLines form(context_, script, parent);
    ShowWhere(form, what);
    if (!RunValueEditor(form, context_, script, [&form](GameModel& game) { return form.FoldLines(game); }))
        return false;
    draft.Keep();
    script = form.Value();
    return true;
}

bool ScriptEditing::EditScriptLine(QWidget* parent, std::string& line, const QString& what) {
    frmScriptEditor form(context_, line, parent);
    ShowWhere(form, what);
    if (!RunValueEditor(form, context_, line, [&form](GameModel&) { return form.TypedLine(); }))
        return false;
    line = form.Line();
    return true;
}

bool ScriptEditing::EditConditional(QWidget* parent, std::string& line, const QString& what) {
    ScriptDraft draft(*this);
    frmConditional form(context_, line, parent);
    ShowWhere(form, what);
    if (!RunValueEditor(form, context_, line, [&form](GameModel&) { return form.TypedLine(); }))
        return false;
    draft.Keep();
    line = form.Line();
    return true;
}

bool ScriptEditing::EditPart(QWidget* parent, std::string& script, const ScriptPath& path,
                             const QString& what) {
    std::string line = LineAt(Game(), script, path);
    if (line.empty())
        return false;
    ScriptDraft draft(*this);
    const std::string before = script;
    const auto replace = [&](GameModel& game) { return ReplaceLine(game, before, path, {line}); };
    const ValueEdit<std::string> edit(context_.edits, script, replace);
    const bool isConditional = BeginsWith(line, "if ");
    if (!(isConditional ? EditConditional(parent, line, what) : EditScriptLine(parent, line, what)))
        return false;
    script = ChangeScript(replace);
    draft.Keep();
    return true;
}

bool ScriptEditing::Create(QWidget* parent, NameKind kind, const std::string& name) {
    ScriptDraft draft(*this);
    if (kind == NameKind::Procedure) {
        std::string script;
        if (!EditScript(parent, script, QDialog::tr("Procedure %1").arg(ToQt(name))))
            return false;
        ChangeProcedures([&](GameModel& game) { game.Procedures.Append({name, script}); });
    } else {
        std::optional<QString> text = QString();
        if (kind == NameKind::TextSection)
            text = AskStorableText(context_.dialogs, parent, QDialog::tr("What does the text block say?"),
                                   QDialog::tr("New text block"), {});
        if (!text)
            return false;
        draft.Create(kind, name, FromQt(*text));
    }
    draft.Keep();
    return true;
}

std::string ScriptEditing::ChangeScript(const std::function<std::string(GameModel&)>& change) {
    GameModel game = Game();
    std::string value = change(game);
    if (!SameGame(game, Game()))
        ChangeProcedures([&game](GameModel& changed) {
            changed.Procedures = game.Procedures;
            changed.NextInternalProcedure = game.NextInternalProcedure;
        });
    return value;
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

QString ScriptEditing::WholeText(const std::string& script, std::size_t most) const {
    RowOptions options;
    options.friendly = isFriendly_();
    options.most = most;
    std::string text;
    for (const ScriptRow& row : RowsOfScript(Game(), script, commands_, options))
        text.append(text.empty() ? "" : "\n")
            .append(4 * static_cast<std::size_t>(row.indent), ' ')
            .append(row.Text());
    return ToQt(text);
}

void ScriptEditing::Show(const std::string& script, QTextEdit& box) const {
    ShowFormattedText(Render(script, ScriptForm::Rich, InternalProcedures::Expand), box);
}

} // namespace zem
