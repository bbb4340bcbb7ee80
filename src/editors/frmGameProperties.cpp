#include "editors/frmGameProperties.h"

#include "base/LineText.h"
#include "editors/frmObjectInteract.h"
#include "editors/frmPlayerCommandEditor.h"
#include "editors/frmTagEditor.h"
#include "forms/AskBeforeDiscard.h"
#include "forms/DialogSize.h"
#include "forms/EarlyEnd.h"
#include "forms/EditorHead.h"
#include "forms/PageButtons.h"
#include "forms/RunCommand.h"
#include "prose/HelpWriting.h"
#include "prose/ProseRow.h"
#include "script/ScriptEditing.h"
#include "script/ScriptField.h"
#include "ui_frmGameProperties.h"

namespace zem {

namespace {

enum Page { InformationPage, ActionsPage, FontsPage, SettingsPage };

} // namespace

frmGameProperties::frmGameProperties(const EditorContext& context, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmGameProperties>()),
      context_(context),
      draft_(context.scripts) {
    ui_->setupUi(this);
    pages_ = new PageButtons(
        *ui_->pages, {ui_->butGameInformation, ui_->butActions, ui_->butFonts, ui_->butGlobalSettings});
    const GameModel& game = context.door.Game();
    ShowWhere(*this, tr("Game %1").arg(ToQt(game.GameName)));
    FillInformation(game);
    FillScripts(game);
    FillSettings(game);
    OnClick(ui_->butOK, this, context_.dialogs, [this] { butOK_Click(); });
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ui_->txtGameName->setFocus();
    edit_ = std::make_unique<GameEdit>(context_.edits, [this](GameModel& game) { Write(game); });
    AskBeforeDiscard(*this, context_.dialogs, *edit_);
    RememberSize(*this);
}

frmGameProperties::~frmGameProperties() = default;

void frmGameProperties::FillInformation(const GameModel& game) {
    Dialogs& dialogs = context_.dialogs;
    EditParameter(*ui_->txtGameName, game.GameName, dialogs);
    EditParameter(*ui_->txtGameAuthor, game.GameAuthor, dialogs);
    EditParameter(*ui_->txtGameVersion, game.GameVersion, dialogs);
    EditParameter(*ui_->txtGameCopyright, game.GameCopyright, dialogs);
    EditParameter(*ui_->txtFontName, game.DefaultFontName, dialogs);
    ui_->txtGameInfo->SetText(BarToCrLf(game.GameInfo));
    ui_->txtGameInfo->RefuseUnstorableText(dialogs);
    RemarkEarlyEnd(*ui_->txtGameInfo);
    HelpWriting(*ui_->txtGameInfo, *ui_->rowGameInfo, context_);
    roomNames_.ShowNames(game.Rooms);
    ui_->cmbRoomNames->Offer(roomNames_);
    ui_->cmbRoomNames->SetText(game.StartRoom);
    ui_->cmbRoomNames->RefuseUnstorableText(dialogs);
    RemarkEarlyEnd(*ui_->cmbRoomNames);
}

void frmGameProperties::FillScripts(const GameModel& game) {
    const auto field = [this](QTextEdit* box, QPushButton* button, const std::string& script,
                              const QString& what) {
        return new ScriptField(context_, *this, *box, *button, script, what);
    };
    startScript_ = field(ui_->txtStartScript, ui_->butEditStartScript, game.StartScript, tr("start action"));
    description_ = field(ui_->txtDescriptionScript, ui_->butEditDescriptionScript, game.GameDescription,
                         tr("print description action"));
    beforeTurn_ =
        field(ui_->txtBeforeTurnScript, ui_->Command1, game.BeforeTurnScript, tr("before turn action"));
    afterTurn_ = field(ui_->txtAfterTurnScript, ui_->Command2, game.AfterTurnScript, tr("after turn action"));
}

void frmGameProperties::FillSettings(const GameModel& game) {
    ui_->txtFontSize->setText(QString::number(game.DefaultFontSize));
    ui_->chkNoDebug->setChecked(game.NoDebug);
    for (const PlayerCommand& command : game.PlayerCommands)
        commands_.push_back({command.Pattern, command.Script});
    uses_.assign(game.GameUses.begin(), game.GameUses.end());
    miscTags_ = *game.GameMiscTags;
    Dialogs& dialogs = context_.dialogs;
    OnClick(ui_->butMiscTags, this, dialogs, [this] { EditTags(context_, miscTags_, this); });
    OnClick(ui_->butCommands, this, dialogs, [this] { EditPlayerCommands(context_, commands_, this); });
    OnClick(ui_->butUseableObjects, this, dialogs, [this] {
        EditUses(context_, QStringLiteral("Objects that can be USEd throughout the game:"), uses_, this);
    });
}

std::optional<std::int16_t> frmGameProperties::FontSize() const {
    bool isNumber = false;
    const short size = ui_->txtFontSize->text().trimmed().toShort(&isNumber);
    return isNumber ? std::optional<std::int16_t>(size) : std::nullopt;
}

/// A font size that is none is left as it was: OK refuses it, and a recovery copy holds all the rest.
void frmGameProperties::Write(GameModel& game) const {
    game.GameName = FromQt(ui_->txtGameName->text());
    game.GameAuthor = FromQt(ui_->txtGameAuthor->text());
    game.GameCopyright = FromQt(ui_->txtGameCopyright->text());
    game.GameInfo = CrLfToBar(ui_->txtGameInfo->Text());
    game.GameVersion = FromQt(ui_->txtGameVersion->text());
    game.StartRoom = ui_->cmbRoomNames->Text();
    game.GameDescription = description_->Script();
    game.StartScript = startScript_->Script();
    game.DefaultFontName = FromQt(ui_->txtFontName->text());
    game.DefaultFontSize = FontSize().value_or(game.DefaultFontSize);
    if (*game.GameMiscTags != miscTags_)
        game.GameMiscTags = miscTags_;
    game.NoDebug = ui_->chkNoDebug->checkState() == Qt::Checked;
    game.BeforeTurnScript = beforeTurn_->Script();
    game.AfterTurnScript = afterTurn_->Script();
    game.PlayerCommands.Clear();
    for (const ScriptPair& command : commands_)
        game.PlayerCommands.Append({command.Key, command.Script});
    game.GameUses.Assign(uses_);
}

void frmGameProperties::butOK_Click() {
    if (!FontSize()) {
        pages_->Show(FontsPage);
        ui_->txtFontSize->setFocus();
        ui_->txtFontSize->selectAll();
        context_.dialogs.ShowMessageBox(
            this, QStringLiteral("The default font size must be a whole number from -32768 to 32767."),
            windowTitle(), QMessageBox::Ok, QMessageBox::Warning);
        return;
    }
    context_.door.Change([this](GameModel& game) {
        draft_.Keep(game);
        Write(game);
    });
    accept();
}

} // namespace zem
