#include "windows/frmStart.h"

#include "forms/FileDrop.h"
#include "forms/Icons.h"
#include "forms/ListKeys.h"
#include "forms/ToolTip.h"
#include "ui_frmStart.h"
#include "windows/BeginWith.h"
#include "windows/frmAbout.h"
#include "windows/frmOptions.h"

#include <QScreen>

#include <algorithm>

namespace zem {

namespace {

constexpr int PathRole = Qt::UserRole;
constexpr int AboutRole = Qt::UserRole + 1;

} // namespace

frmStart::frmStart(Settings& settings, Dialogs& dialogs, const QString& programFolder)
    : ui_(std::make_unique<Ui::frmStart>()),
      settings_(settings),
      dialogs_(dialogs) {
    ui_->setupUi(this);
    setWindowIcon(ThemedIcon(QStringLiteral("zem")));
    for (const QString& path : settings.RecentFiles()) {
        if (path.isEmpty())
            continue;
        auto* item = new QListWidgetItem(path, ui_->lstRecent); // The list owns it.
        item->setToolTip(ToolTipOf(path));
    }
    connect(ui_->butNewGame, &QPushButton::clicked, this, &frmStart::NewGameChosen);
    connect(ui_->butOpen, &QPushButton::clicked, this, &frmStart::butOpen_Click);
    connect(ui_->butOpenRecent, &QPushButton::clicked, this, &frmStart::butOpenRecent_Click);
    connect(ui_->butOptions, &QPushButton::clicked, this, &frmStart::butOptions_Click);
    connect(ui_->butAbout, &QPushButton::clicked, this, &frmStart::butAbout_Click);
    AcceptFileDrops(*this, [this](const QString& path) { emit GameChosen(path); });
    ConnectListKeys(*ui_->lstRecent, {.edit = ui_->butOpenRecent});
    connect(ui_->butFirstGame, &QPushButton::clicked, this,
            [this] { emit ManualWanted(QStringLiteral("first-game")); });
    FillGamesToBegin(programFolder);
}

frmStart::~frmStart() = default;

void frmStart::butOpen_Click() {
    const QString path = dialogs_.AskOpenFile(this, OpenGameQuestion());
    if (!path.isEmpty())
        emit GameChosen(path);
}

void frmStart::butOpenRecent_Click() {
    const QList<QListWidgetItem*> selected = ui_->lstRecent->selectedItems();
    if (!selected.isEmpty())
        emit GameChosen(selected.constFirst()->text());
}

void frmStart::FillGamesToBegin(const QString& programFolder) {
    for (const GameToBegin& game : GamesToBegin(programFolder)) {
        auto* item = new QListWidgetItem(
            game.isTemplate ? game.title : QStringLiteral("%1 (a finished game)").arg(game.title),
            ui_->lstBegin);
        item->setToolTip(ToolTipOf(game.about));
        item->setData(PathRole, game.path);
        item->setData(AboutRole, game.about);
    }
    connect(ui_->lstBegin, &QListWidget::currentItemChanged, this, [this](const QListWidgetItem* item) {
        ui_->lblAbout->setText(item == nullptr ? QString() : item->data(AboutRole).toString());
    });
    connect(ui_->butBegin, &QPushButton::clicked, this, &frmStart::butBegin_Click);
    ConnectListKeys(*ui_->lstBegin, {.edit = ui_->butBegin});
    constexpr QSize WithRoomForBothLists(660, 520);
    resize(size().expandedTo(WithRoomForBothLists.boundedTo(screen()->availableSize() * 3 / 4)));
}

void frmStart::butBegin_Click() {
    if (const QListWidgetItem* item = ui_->lstBegin->currentItem())
        emit CopyChosen(item->data(PathRole).toString());
}

void frmStart::butOptions_Click() {
    frmOptions(settings_, dialogs_, this).exec();
    const int most = std::max<int>(settings_.CurrentOptions().MaxRecent, 0);
    while (ui_->lstRecent->count() > most)
        delete ui_->lstRecent->takeItem(ui_->lstRecent->count() - 1);
}

void frmStart::butAbout_Click() {
    frmAbout(this).exec();
}

} // namespace zem
