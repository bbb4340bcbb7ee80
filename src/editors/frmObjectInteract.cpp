#include "editors/frmObjectInteract.h"

#include "forms/AskBeforeDiscard.h"
#include "forms/DialogSize.h"
#include "forms/EditorHead.h"
#include "forms/ListKeys.h"
#include "forms/RunCommand.h"
#include "script/BlockBeside.h"
#include "script/ScriptDraft.h"
#include "script/ScriptEditing.h"
#include "ui_frmObjectInteract.h"

namespace zem {

frmObjectInteract::frmObjectInteract(const EditorContext& context, const QString& caption,
                                     const QString& heading, const std::vector<ScriptPair>& objects,
                                     QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmObjectInteract>()),
      context_(context) {
    ui_->setupUi(this);
    setWindowTitle(caption);
    ShowWhere(*this, {});
    ui_->lblTitle->setTextFormat(Qt::PlainText);
    ui_->lblTitle->setText(QString(heading).replace(u'&', QLatin1String("&&"))); // A name may hold "&".
    ui_->lstItems->setAccessibleName(heading);
    objects_ = std::make_unique<ScriptPairList>(*ui_->lstItems, objects);
    new SelectedScript(
        context, *this, *ui_->lstItems,
        {[this](int row) -> const std::string& {
             return objects_->Pairs()[static_cast<std::size_t>(row)].Script;
         },
         [this](int row, const std::string& script) {
             objects_->Edit(row).Script = script;
             objects_->Show(row);
         },
         [this](int row) { return ToQt(objects_->Pairs()[static_cast<std::size_t>(row)].Key); }});
    OnClick(ui_->butAdd, this, context_.dialogs, [this] { butAdd_Click(); });
    OnClick(ui_->butEdit, this, context_.dialogs, [this] { butEdit_Click(); });
    OnClick(ui_->butRemove, this, context_.dialogs, [this] { objects_->RemoveSelected(); });
    connect(ui_->butOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ConnectListKeys(*ui_->lstItems, {ui_->butAdd, ui_->butRemove, ui_->butEdit});
    ui_->lstItems->setFocus();
    RememberSize(*this);
}

frmObjectInteract::~frmObjectInteract() = default;

void frmObjectInteract::butAdd_Click() {
    const std::optional<QString> name =
        AskName(context_.dialogs, this, QStringLiteral("Enter the name of the item to add:"),
                QStringLiteral("New item"));
    if (!name)
        return;
    objects_->Append({FromQt(*name), ""});
    butEdit_Click();
}

void frmObjectInteract::butEdit_Click() {
    const int row = objects_->SelectedRow();
    if (row < 0)
        return;
    ScriptPair& object = objects_->Edit(row);
    context_.scripts.EditScript(this, object.Script, ToQt(object.Key));
    objects_->Show(row);
}

namespace {

void EditObjects(const EditorContext& context, const QString& caption, const QString& heading,
                 std::vector<ScriptPair>& objects, QWidget* parent) {
    ScriptDraft draft(context.scripts);
    frmObjectInteract form(context, caption, heading, objects, parent);
    const ValueEdit<std::vector<ScriptPair>> edit(context.edits, objects,
                                                  [&form](GameModel&) { return form.Objects(); });
    AskBeforeDiscard(form, context.dialogs, edit);
    if (form.exec() != QDialog::Accepted)
        return;
    objects = form.Objects();
    draft.Keep();
}

} // namespace

void EditUses(const EditorContext& context, const QString& heading, std::vector<ScriptPair>& uses,
              QWidget* parent) {
    EditObjects(context, QStringLiteral("Use-able objects"), heading, uses, parent);
}

void EditGives(const EditorContext& context, const QString& heading, std::vector<ScriptPair>& gives,
               QWidget* parent) {
    EditObjects(context, QStringLiteral("Give-able objects"), heading, gives, parent);
}

} // namespace zem
