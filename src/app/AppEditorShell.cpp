#include "app/AppEditorShell.h"

#include "editors/frmPlayerCommandEditor.h"
#include "forms/QtText.h"
#include "help/frmHelp.h"

namespace zem {

void AppEditorShell::ShowMessage(const QString& text, const QString& title) {
    host_.ShowMessage(FromQt(text), FromQt(title), MessageButtons::Ok);
}

void AppEditorShell::ShowHelp(const QString& section, QWidget* parent) {
    zem::ShowHelp(section, parent);
}

void AppEditorShell::EditPlayerCommands(QWidget* parent, std::vector<ScriptPair>& commands) {
    frmPlayerCommandEditor form(scripts_, commands, parent);
    if (form.exec() == QDialog::Accepted)
        commands = form.Commands();
}

} // namespace zem
