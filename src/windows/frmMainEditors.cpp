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
#include "windows/frmMain.h"

namespace zem {

void frmMain::mnuViewGameProperties_Click() {
    frmGameProperties(scripts_, editorShell_, this).exec();
}

void frmMain::mnuViewItems_Click() {
    frmEditItems(session_, dialogs_, this).exec();
}

void frmMain::mnuViewCollectables_Click() {
    frmEditCollectables(session_, editorShell_, dialogs_, this).exec();
}

void frmMain::mnuViewMenus_Click() {
    frmMenuList(scripts_, this).exec();
}

void frmMain::mnuViewProcedures_Click() {
    frmProcedureEditor(scripts_, this).exec();
}

/// The blocks of a kind that no form knows.
void frmMain::mnuViewMiscKEL_Click() {
    const auto store = [this](const std::string& text) {
        session_.Change(QStringLiteral("edit misc KEL"), [&](GameModel& game) { game.UnknownBlocks = text; });
    };
    frmTagEditor form(editorShell_, dialogs_, *session_.Game().UnknownBlocks, store, this);
    form.setWindowTitle(QStringLiteral("Misc Kel Editor"));
    form.exec();
}

void frmMain::mnuViewLibraries_Click() {
    frmIncludedLibraries(session_, dialogs_, this).exec();
}

void frmMain::mnuViewSynonyms_Click() {
    frmSynonyms(session_, dialogs_, this).exec();
}

void frmMain::mnuViewTextSectionEditor_Click() {
    frmTextSectionEdit(session_, dialogs_, this).exec();
}

void frmMain::mnuEditErrorMessages_Click() {
    frmEditErrors form(session_.Game().ErrorMessages, settings_.CurrentOptions().FriendlyScript, dialogs_,
                       this);
    if (form.exec() == QDialog::Accepted)
        ChangeGame(QStringLiteral("edit error messages"), CurrentSelection(),
                   [&](GameModel& game) { game.ErrorMessages = form.Errors(); });
}

} // namespace zem
