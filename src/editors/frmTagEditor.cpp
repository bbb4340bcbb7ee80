#include "editors/frmTagEditor.h"

#include "forms/AskBeforeDiscard.h"
#include "forms/EditorHead.h"
#include "forms/RunCommand.h"
#include "ui_frmTagEditor.h"

#include <QScreen>

#include <utility>

namespace zem {

namespace {

constexpr int TwipsToPixel = 15;
constexpr QSize LeastTwips(2500, 1500);

QSize ToPixels(const QSize& twips) {
    const auto up = [](int length) { return (length + TwipsToPixel - 1) / TwipsToPixel; };
    return {up(twips.width()), up(twips.height())};
}

} // namespace

frmTagEditor::frmTagEditor(const EditorContext& context, const std::string& tags,
                           std::function<void(const std::string&)> store, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmTagEditor>()),
      context_(context),
      store_(std::move(store)) {
    ui_->setupUi(this);
    ui_->txtTags->SetText(tags);
    ui_->txtTags->RefuseUnstorableText(context.dialogs);
    setMinimumSize(ToPixels(LeastTwips));
    resize(ToPixels(context.shell.TagEditorSize()).boundedTo(screen()->availableSize()));
    OnClick(ui_->butOK, this, context.dialogs, [this] { butOK_Click(); });
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ui_->txtTags->setFocus();
}

frmTagEditor::~frmTagEditor() = default;

std::string frmTagEditor::Tags() const {
    return ui_->txtTags->Text();
}

void frmTagEditor::butOK_Click() {
    store_(Tags());
    context_.shell.StoreTagEditorSize(size() * TwipsToPixel);
    accept();
}

void EditTags(const EditorContext& context, std::string& tags, QWidget* parent) {
    frmTagEditor form(
        context, tags, [&](const std::string& text) { tags = text; }, parent);
    ShowWhere(form, {});
    const ValueEdit<std::string> edit(context.edits, tags, [&form](GameModel&) { return form.Tags(); });
    AskBeforeDiscard(form, context.dialogs, edit);
    form.exec();
}

} // namespace zem
