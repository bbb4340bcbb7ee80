#include "windows/frmMain.h"

#include "forms/FileDrop.h"
#include "forms/Icons.h"
#include "forms/MenuKeys.h"
#include "forms/RunCommand.h"
#include "forms/ToolTip.h"
#include "session/GameMerge.h"
#include "ui_frmMain.h"

#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QTimer>

namespace zem {

namespace {

// Device-independent pixels that a window manager needs around the window, with some to spare.
constexpr QSize Frame(12, 40);

// The smallest screen on which the lists, their buttons and a panel stand side by side.
constexpr QSize RoomForAll(1024, 700);

bool FitsOnScreen(const QWidget& window) {
    const QSize screen = window.screen()->availableSize();
    return screen.boundedTo(RoomForAll) == RoomForAll;
}

} // namespace

frmMain::frmMain(GameSession& session, Settings& settings, const EditorContext& context, SaveCheck& saveCheck,
                 const Versions& versions, const QString& programFolder)
    : ui_(std::make_unique<Ui::frmMain>()),
      session_(session),
      settings_(settings),
      context_(context),
      dialogs_(context.dialogs),
      merge_(new GameMerge(session, this)),
      document_(session, saveCheck, *merge_, *this),
      versions_(versions),
      programFolder_(programFolder),
      status_(new QLabel(this)),
      saved_(new QLabel(this)) {
    ui_->setupUi(this);
    setWindowIcon(ThemedIcon(QStringLiteral("zem")));
    status_->setObjectName(QStringLiteral("lblStatus"));
    status_->setTextFormat(Qt::PlainText);
    // A long name must not widen the window.
    status_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    ui_->StatusBar1->addWidget(status_, 1);
    saved_->setObjectName(QStringLiteral("lblSaved"));
    ui_->StatusBar1->addPermanentWidget(saved_);
    ui_->verticalLayout->setStretchFactor(ui_->splitter, 1); // what is above it takes no more than it needs
    ui_->splitter->setStretchFactor(0, 1);
    ui_->splitter->setStretchFactor(1, 2);
    if (!FitsOnScreen(*this))
        ScrollContents();
    ShowIcons();
    PutMenusFirst(*this);
    ConnectMenus();
    ConnectLists();
    ConnectTools();
    connect(&saveCheck, &SaveCheck::PlacesLost, this, &frmMain::ShowLostPlaces);
    connect(&saveCheck, &SaveCheck::LinesDropped, this, &frmMain::ShowDroppedLines);
    connect(&session, &GameSession::Inspected, this, &frmMain::ShowInspection);
    connect(&session, &GameSession::GameLost, this, &frmMain::ShowLostGame);
    connect(&session, &GameSession::Changed, this, &frmMain::GameChanged);
    connect(&session, &GameSession::Replaced, this, &frmMain::GameReplaced);
    connect(&session, &GameSession::Saved, this, &frmMain::UpdateTitle);
    connect(&session, &GameSession::RecentFilesChanged, this, &frmMain::RefreshRecentMenu);
    connect(&session, &GameSession::StatusChanged, this, &frmMain::ShowStatus);
    AcceptFileDrops(*this, [this](const QString& path) { OpenFile(path); });
    RefreshRecentMenu();
    GameReplaced();
    // This refuses what comes from a screen of another size, and moves what lies outside of all screens.
    const bool isFirst = !restoreGeometry(settings.MainWindowGeometry());
    if (isFirst)
        StandInTheMiddle();
    if (isFirst && settings.MainWindowState().isEmpty())
        ArrangePanels();
    else
        RestorePanels();
}

frmMain::~frmMain() = default;

/// Lets everything be reached although the lists and their buttons have no room side by side.
void frmMain::ScrollContents() {
    auto* area = new QScrollArea(this);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    area->setWidget(takeCentralWidget());
    setCentralWidget(area);
}

/// Where the window manager would put the window, half of it may be out of sight.
void frmMain::StandInTheMiddle() {
    const QRect room = screen()->availableGeometry();
    const QSize framed = (size() + Frame).boundedTo(room.size());
    resize(framed - Frame);
    move(QStyle::alignedRect(layoutDirection(), Qt::AlignCenter, framed, room).topLeft());
}

void frmMain::Connect(QAction* action, void (frmMain::*handler)()) {
    connect(action, &QAction::triggered, this,
            [this, handler] { RunCommand(dialogs_, this, [&] { (this->*handler)(); }); });
}

void frmMain::ConnectEditor(QAction* action, const char* name, void (frmMain::*handler)()) {
    connect(action, &QAction::triggered, this, [this, name, handler] {
        RunCommand(dialogs_, this, [&] { EditAsOneStep(QLatin1String(name), [&] { (this->*handler)(); }); });
    });
}

void frmMain::ConnectMenus() {
    Connect(ui_->mnuFileNew, &frmMain::mnuFileNew_Click);
    Connect(ui_->mnuFileOpen, &frmMain::mnuFileOpen_Click);
    Connect(ui_->mnuFileSave, &frmMain::mnuFileSave_Click);
    Connect(ui_->mnuFileSaveAs, &frmMain::mnuFileSaveAs_Click);
    Connect(ui_->mnuFileRunKELfile, &frmMain::mnuFileRunKELfile_Click);
    ConnectEditor(ui_->mnuViewGameProperties, "edit game properties", &frmMain::mnuViewGameProperties_Click);
    ConnectEditor(ui_->mnuViewItems, "edit items", &frmMain::mnuViewItems_Click);
    ConnectEditor(ui_->mnuViewCollectables, "edit collectables", &frmMain::mnuViewCollectables_Click);
    ConnectEditor(ui_->mnuViewMenus, "edit menus", &frmMain::mnuViewMenus_Click);
    ConnectEditor(ui_->mnuViewProcedures, "edit procedures", &frmMain::mnuViewProcedures_Click);
    ConnectEditor(ui_->mnuViewMiscKEL, "edit misc KEL", &frmMain::mnuViewMiscKEL_Click);
    ConnectEditor(ui_->mnuViewLibraries, "edit libraries", &frmMain::mnuViewLibraries_Click);
    ConnectEditor(ui_->mnuViewSynonyms, "edit synonyms", &frmMain::mnuViewSynonyms_Click);
    ConnectEditor(ui_->mnuEditErrorMessages, "edit error messages", &frmMain::mnuEditErrorMessages_Click);
    ConnectEditor(ui_->mnuViewTextSectionEditor, "edit text blocks",
                  &frmMain::mnuViewTextSectionEditor_Click);
    ConnectEditor(ui_->mnuToolsTimers, "edit timers", &frmMain::mnuToolsTimers_Click);
    Connect(ui_->mnuViewOptions, &frmMain::mnuViewOptions_Click);
    Connect(ui_->mnuZEMRef, &frmMain::mnuZEMRef_Click);
    Connect(ui_->mnuKELRef, &frmMain::mnuKELRef_Click);
    Connect(ui_->mnuHelpAbout, &frmMain::mnuHelpAbout_Click);
    connect(ui_->mnuFileExit, &QAction::triggered, this, &QWidget::close);
    connect(ui_->Toolbar1, &QToolBar::actionTriggered, this, &frmMain::Toolbar1_ButtonClick);
    for (const auto& [button, command] : ToolbarCommands()) {
        const auto follow = [button = button, command = command] {
            button->setEnabled(command->isEnabled());
        };
        connect(command, &QAction::changed, button, follow);
        follow();
    }
}

void frmMain::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        QTimer::singleShot(0, this, &frmMain::CheckFile); // Asks once the activation is over.
    QMainWindow::changeEvent(event);
}

void frmMain::ShowIcons() {
    for (QAction* button : ui_->Toolbar1->actions())
        if (!button->isSeparator())
            button->setIcon(ThemedIcon(button->objectName()));
}

void frmMain::ShowStatus(const QString& text) {
    status_->setText(text);
    status_->setToolTip(ToolTipOf(text)); // A narrow window cuts the end off.
    ShowWhetherSaved();                   // StatusChanged comes with each change of it.
}

void frmMain::ShowWhetherSaved() {
    const GameModel& game = session_.Game();
    saved_->setText(game.Modified           ? QStringLiteral("Not saved")
                    : game.FileName.empty() ? QStringLiteral("New game")
                                            : QStringLiteral("Saved"));
}

void frmMain::UpdateTitle() {
    // The title bar takes "[*]" for a place of its own unless it stands twice.
    setWindowTitle(session_.Title().replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
}

} // namespace zem
