#include "prose/frmLargeText.h"

#include "forms/AskBeforeDiscard.h"
#include "forms/DialogSize.h"
#include "prose/HelpWriting.h"
#include "prose/ProseRow.h"
#include "qt/OpenEdits.h"
#include "ui_frmLargeText.h"

#include <QTimer>

#include <utility>

namespace zem {

namespace {

constexpr int WaitForWriter = 1000; // milliseconds without a key

/// What is typed into the large window. The small box has it soon, and whoever asks for what is not confirmed
/// yet asks the editor around that.
class LargeTextEdit : public OpenEdit {
public:
    LargeTextEdit(OpenEdits& edits, const frmLargeText& form)
        : OpenEdit(edits),
          form_(form),
          before_(form.Text()) {}

    bool HasChanges() const override { return form_.Text() != before_; }

private:
    void Confirm(GameModel&) override {}

    const frmLargeText& form_;
    std::string before_;
};

} // namespace

frmLargeText::frmLargeText(const EditorContext& context, const std::string& text, bool hasSeveralLines,
                           QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmLargeText>()) {
    ui_->setupUi(this);
    if (!hasSeveralLines)
        ui_->txtLargeText->HoldOneLine();
    ui_->txtLargeText->SetText(text);
    ui_->txtLargeText->RefuseUnstorableText(context.dialogs);
    HelpWriting(*ui_->txtLargeText, context);
    ui_->rowText->Use(ProseBox(*ui_->txtLargeText), context, false);
    connect(ui_->butOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ui_->txtLargeText->setFocus();
    RememberSize(*this);
}

frmLargeText::~frmLargeText() = default;

std::string frmLargeText::Text() const {
    return ui_->txtLargeText->Text();
}

void frmLargeText::OnChange(const std::function<void()>& changed) {
    connect(ui_->txtLargeText, &QPlainTextEdit::textChanged, this, changed);
}

void EditInLargeWindow(const ProseBox& box, const EditorContext& context) {
    if (!box.CanBeChanged())
        return;
    const std::string before = box.Bytes();
    frmLargeText form(context, before, !box.HoldsOneLine(), box.Widget().window());
    const LargeTextEdit edit(context.edits, form);
    AskBeforeDiscard(form, context.dialogs, edit);
    bool isChanged = false;
    const auto put = [&](const std::string& text) {
        if (text != box.Bytes())
            box.SetBytes(text, std::exchange(isChanged, true));
    };
    QTimer wait;
    wait.setSingleShot(true);
    wait.setInterval(WaitForWriter);
    QObject::connect(&wait, &QTimer::timeout, &form, [&] { put(form.Text()); });
    form.OnChange([&] { wait.start(); });
    put(form.exec() == QDialog::Accepted ? form.Text() : before);
}

} // namespace zem
