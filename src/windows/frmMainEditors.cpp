// The commands of the main window's menu that open an editor.
#include "editors/frmEditCollectables.h"
#include "editors/frmEditErrors.h"
#include "editors/frmEditItems.h"
#include "editors/frmGameProperties.h"
#include "editors/frmIncludedLibraries.h"
#include "editors/frmMenuList.h"
#include "editors/frmProcedureEditor.h"
#include "editors/frmSynonyms.h"
#include "editors/frmTagEditor.h"
#include "editors/frmTextSectionEdit.h"
#include "editors/frmTimers.h"
#include "forms/AskBeforeDiscard.h"
#include "windows/EditorMarks.h"
#include "windows/frmMain.h"

namespace zem {

/// Runs the editor of a record with the problems of it at its fields.
void frmMain::RunEditor(QDialog& form, const Place& record) {
    const EditorMarks marks(form, record, context_.edits, *problems_, *editorChecks_);
    form.exec();
}

/// The same of an editor of all records of a list.
void frmMain::RunListEditor(QDialog& form, FieldId list) {
    RunEditor(form, Place::Of({{list, 0}}));
}

void frmMain::mnuViewGameProperties_Click() {
    frmGameProperties form(context_, this);
    RunEditor(form, {});
}

void frmMain::mnuViewItems_Click() {
    frmEditItems form(context_, this);
    RunListEditor(form, FieldId::GameItems);
}

void frmMain::mnuViewCollectables_Click() {
    frmEditCollectables form(context_, this);
    RunListEditor(form, FieldId::GameCollectables);
}

void frmMain::mnuViewMenus_Click() {
    frmMenuList form(context_, this);
    RunListEditor(form, FieldId::GameSelectionMenus);
}

void frmMain::mnuViewProcedures_Click() {
    frmProcedureEditor form(context_, this);
    RunListEditor(form, FieldId::GameProcedures);
}

/// The blocks of a kind that no form knows.
void frmMain::mnuViewMiscKEL_Click() {
    const auto store = [this](const std::string& text) {
        session_.Change([&](GameModel& game) { game.UnknownBlocks = text; });
    };
    frmTagEditor form(context_, *session_.Game().UnknownBlocks, store, this);
    form.setWindowTitle(QStringLiteral("Misc Kel Editor"));
    const GameEdit edit(context_.edits, [&form](GameModel& game) { game.UnknownBlocks = form.Tags(); });
    AskBeforeDiscard(form, dialogs_, edit);
    RunEditor(form, Place::Of({}, FieldId::GameUnknownBlocks));
}

void frmMain::mnuToolsTimers_Click() {
    frmTimers(context_, this).exec();
}

void frmMain::mnuViewLibraries_Click() {
    frmIncludedLibraries form(context_, this);
    RunListEditor(form, FieldId::GameIncludes);
}

void frmMain::mnuViewSynonyms_Click() {
    frmSynonyms form(context_, this);
    RunListEditor(form, FieldId::GameSynonyms);
}

void frmMain::mnuViewTextSectionEditor_Click() {
    frmTextSectionEdit form(context_, this);
    RunListEditor(form, FieldId::GameTextSections);
}

void frmMain::mnuEditErrorMessages_Click() {
    frmEditErrors form(context_, session_.Game().ErrorMessages, settings_.CurrentOptions().FriendlyScript,
                       this);
    const auto write = [&form](GameModel& game) { game.ErrorMessages = form.Errors(); };
    const GameEdit edit(context_.edits, write);
    AskBeforeDiscard(form, dialogs_, edit);
    RunListEditor(form, FieldId::GameErrorMessages);
    if (form.result() == QDialog::Accepted)
        ChangeGame(CurrentSelection(), write);
}

} // namespace zem
