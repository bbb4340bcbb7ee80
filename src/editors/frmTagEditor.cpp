#include "editors/frmTagEditor.h"

#include "forms/CommandError.h"
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

frmTagEditor::frmTagEditor(EditorShell& shell, Dialogs& dialogs, const std::string& tags,
                           std::function<void(const std::string&)> store, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmTagEditor>()),
      shell_(shell),
      store_(std::move(store)) {
    ui_->setupUi(this);
    ui_->txtTags->SetText(tags);
    ui_->txtTags->RefuseUnstorableText(dialogs);
    setMinimumSize(ToPixels(LeastTwips));
    resize(ToPixels(shell.TagEditorSize()).boundedTo(screen()->availableSize()));
    OnClick(ui_->butOK, this, dialogs, [this] { butOK_Click(); });
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ui_->txtTags->setFocus();
}

frmTagEditor::~frmTagEditor() = default;

void frmTagEditor::butOK_Click() {
    store_(ui_->txtTags->Text());
    shell_.StoreTagEditorSize(size() * TwipsToPixel);
    accept();
}

void EditTags(EditorShell& shell, Dialogs& dialogs, std::string& tags, QWidget* parent) {
    frmTagEditor(
        shell, dialogs, tags, [&](const std::string& text) { tags = text; }, parent)
        .exec();
}

} // namespace zem
