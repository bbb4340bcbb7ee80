#include "app/AppEditorShell.h"

#include "app/frmHelp.h"
#include "app/frmPlayerCommandEditor.h"

namespace zem {

void AppEditorShell::ShowHelp(const QString& section, QWidget* parent) {
    zem::ShowHelp(section, parent);
}

void AppEditorShell::EditPlayerCommands(QWidget* parent, std::vector<ScriptPair>& commands) {
    frmPlayerCommandEditor form(scripts_, commands, parent);
    if (form.exec() == QDialog::Accepted)
        commands = form.Commands();
}

} // namespace zem
