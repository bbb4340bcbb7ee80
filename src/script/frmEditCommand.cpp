#include "script/frmEditCommand.h"

#include "forms/DialogSize.h"
#include "forms/EarlyEnd.h"
#include "forms/EditorHead.h"
#include "forms/RunCommand.h"
#include "qt/QtText.h"
#include "script/ScriptEditing.h"
#include "script/ScriptField.h"
#include "ui_frmEditCommand.h"

namespace zem {

frmEditCommand::frmEditCommand(const EditorContext& context, const std::string& pattern,
                               const std::string& action, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmEditCommand>()),
      context_(context) {
    ui_->setupUi(this);
    ShowWhere(*this, pattern.empty() ? tr("New command") : tr("Command %1").arg(ToQt(pattern)));
    EditParameter(*ui_->txtCommand, pattern, context.dialogs);
    action_ = new ScriptField(context, *this, *ui_->txtAction, *ui_->butEdit, action, tr("action"));
    OnClick(ui_->butInsertVariable, this, context_.dialogs, [this] { butInsertVariable_Click(); });
    connect(ui_->butOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ui_->txtCommand->setFocus();
    RememberSize(*this);
}

frmEditCommand::~frmEditCommand() = default;

std::string frmEditCommand::Pattern() const {
    return FromQt(ui_->txtCommand->text());
}

const std::string& frmEditCommand::Action() const {
    return action_->Script();
}

/// Puts a variable in the place of the selected text, or at the caret.
void frmEditCommand::butInsertVariable_Click() {
    // The selection is lost from sight while the input box is open.
    QLineEdit& box = *ui_->txtCommand;
    const int start = box.hasSelectedText() ? box.selectionStart() : box.cursorPosition();
    const auto length = static_cast<int>(box.selectedText().size());
    const std::optional<QString> name = AskName(
        context_.dialogs, this, QStringLiteral("Enter a name for the string variable to place text in:"),
        QStringLiteral("Insert string variable"));
    if (!name)
        return;
    box.setText(box.text().replace(start, length, u'#' + *name + u'#'));
    box.setFocus();
    box.setCursorPosition(start + static_cast<int>(name->size()) + 2);
}

} // namespace zem
