#include "app/AppEditorShell.h"

#include "help/frmHelp.h"
#include "qt/QtText.h"

namespace zem {

void AppEditorShell::ShowMessage(const QString& text, const QString& title) {
    host_.ShowMessage(FromQt(text), FromQt(title), MessageButtons::Ok);
}

void AppEditorShell::ShowHelp(const QString& section, QWidget* parent) {
    zem::ShowHelp(section, parent);
}

} // namespace zem
