#include "editors/frmTextSectionEdit.h"

#include "forms/DialogSize.h"
#include "forms/ListClipboard.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "forms/RunCommand.h"
#include "pieces/PastePiece.h"
#include "prose/HelpWriting.h"
#include "prose/ProseRow.h"
#include "script/ScriptEditing.h"
#include "ui_frmTextSectionEdit.h"

#include <QEvent>
#include <QSignalBlocker>

#include <algorithm>
#include <iterator>

namespace zem {

namespace {

bool IsFixedName(const std::string& name) {
    return std::find(std::begin(StandardTexts), std::end(StandardTexts), name) != std::end(StandardTexts);
}

} // namespace

frmTextSectionEdit::frmTextSectionEdit(const EditorContext& context, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmTextSectionEdit>()),
      context_(context) {
    ui_->setupUi(this);
    for (const TextSection& section : context.door.Game().TextSections)
        ui_->cmbTextSections->addItem(ToQt(section.Name));
    ui_->txtText->RefuseUnstorableText(context.dialogs);
    HelpWriting(*ui_->txtText, *ui_->rowText, context);
    ui_->txtText->installEventFilter(this);
    connect(ui_->cmbTextSections, &QListWidget::itemSelectionChanged, this,
            &frmTextSectionEdit::cmbTextSections_Click);
    connect(ui_->txtText, &QPlainTextEdit::textChanged, this,
            [this] { RunCommand(context_.dialogs, this, [this] { txtText_Change(); }); });
    OnClick(ui_->butAdd, this, context.dialogs, [this] { butAdd_Click(); });
    OnClick(ui_->butRename, this, context.dialogs, [this] { butRename_Click(); });
    connect(ui_->butClose, &QPushButton::clicked, this, &QDialog::accept);
    ConnectListKeys(*ui_->cmbTextSections, {ui_->butAdd, nullptr, ui_->butRename});
    ConnectClipboard(*ui_->cmbTextSections, context.dialogs,
                     {[this] { return CopyPiece(context_.door.Game(), SelectedPlaces()); },
                      [this](std::string_view text, const QString&) { Paste(text); },
                      {}}); // texts cannot be taken away here
    cmbTextSections_Click();
    ui_->cmbTextSections->setCurrentRow(ui_->cmbTextSections->count() > 0 ? 0 : -1);
    ui_->cmbTextSections->setFocus();
    RememberSize(*this);
}

frmTextSectionEdit::~frmTextSectionEdit() = default;

int frmTextSectionEdit::SelectedSection() const {
    return SelectedRow(*ui_->cmbTextSections) + 1;
}

void frmTextSectionEdit::cmbTextSections_Click() {
    const int k = SelectedSection();
    const TextSection section = k == 0 ? TextSection() : context_.door.Game().TextSections[k];
    {
        const QSignalBlocker showing(ui_->txtText); // Showing a text is no change.
        ui_->txtText->SetText(section.Text);
    }
    ui_->txtText->setEnabled(k != 0);
    ui_->butRename->setEnabled(k != 0 && !IsFixedName(section.Name));
}

void frmTextSectionEdit::txtText_Change() {
    const int k = SelectedSection();
    if (k == 0)
        return;
    const std::string text = ui_->txtText->Text();
    if (text != context_.door.Game().TextSections[k].Text)
        context_.door.Change([&](GameModel& game) { game.TextSections.Edit(k).Text = text; });
}

bool frmTextSectionEdit::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress)
        context_.door.MarkModified(); // whatever the key does
    return QDialog::eventFilter(watched, event);
}

void frmTextSectionEdit::butAdd_Click() {
    const std::optional<QString> name =
        AskName(context_.dialogs, this, QStringLiteral("Enter a name for this text section:"),
                QStringLiteral("New text section"));
    if (!name)
        return;
    context_.door.Change([&](GameModel& game) {
        game.TextSections.Append({FromQt(*name), "Enter text here..."});
    });
    AppendRow(*ui_->cmbTextSections, FromQt(*name));
}

void frmTextSectionEdit::butRename_Click() {
    const int k = SelectedSection();
    if (k == 0)
        return;
    const std::optional<QString> name =
        AskName(context_.dialogs, this, QStringLiteral("Please enter a new name for this text section:"),
                QStringLiteral("Rename text section"), ToQt(context_.door.Game().TextSections[k].Name));
    if (!name)
        return;
    context_.door.Change([&](GameModel& game) { game.TextSections.Edit(k).Name = FromQt(*name); });
    ui_->cmbTextSections->item(k - 1)->setText(*name);
    cmbTextSections_Click(); // A text with a fixed name cannot be renamed again.
}

std::vector<Place> frmTextSectionEdit::SelectedPlaces() const {
    std::vector<Place> places;
    for (const int row : SelectedRows(*ui_->cmbTextSections))
        places.push_back(Place::Of({{FieldId::GameTextSections, row + 1}}));
    return places;
}

void frmTextSectionEdit::Paste(std::string_view text) {
    const Pasted pasted = PastePiece(context_.door.Game(), text, {.only = {FieldId::GameTextSections}},
                                     context_.scripts.Commands());
    context_.door.Change([&](GameModel& game) { game = pasted.game; });
    std::vector<int> rows;
    for (const Place& place : pasted.added) {
        rows.push_back(place.steps.front().entry - 1);
        if (rows.back() == ui_->cmbTextSections->count()) // not a standard text, which stood there empty
            ui_->cmbTextSections->addItem(ToQt(pasted.game.TextSections[rows.back() + 1].Name));
    }
    SelectRows(*ui_->cmbTextSections, rows);
    cmbTextSections_Click();
}

/// However the window is closed, the game counts as changed.
void frmTextSectionEdit::done(int result) {
    context_.door.MarkModified();
    QDialog::done(result);
}

} // namespace zem
