#include "player/PlayerWindow.h"

#include "base/KelError.h"
#include "forms/Dialogs.h"
#include "forms/Icons.h"
#include "forms/Palettes.h"
#include "model/GameModel.h"
#include "player/InputLine.h"
#include "player/PlayControl.h"
#include "player/StoryPane.h"
#include "qt/QtText.h"

#include <QActionGroup>
#include <QCloseEvent>
#include <QDateTime>
#include <QDockWidget>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QSaveFile>
#include <QSettings>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace zem {

namespace {

constexpr int UsualTextSize = 12;        // points
constexpr int SidePaneWidth = 170;       // device-independent pixels
constexpr qint64 LargestSave = 16 << 20; // bytes; no saved game comes near

// The settings stand in the store of the editor, in a group of their own.
const QString TextSizeKey = QStringLiteral("Player/TextSize");
const QString ColoursKey = QStringLiteral("Player/Colours");
const QString GeometryKey = QStringLiteral("Player/Geometry");
const QString StateKey = QStringLiteral("Player/State");

const QString Title = QStringLiteral("Veldt");

} // namespace

PlayerWindow::PlayerWindow(QSettings& store, Dialogs& dialogs, Reader read)
    : store_(store),
      dialogs_(dialogs),
      read_(std::move(read)),
      story_(new StoryPane(this)),
      input_(new InputLine(this)),
      control_(new PlayControl(*story_, *input_, this)) {
    setObjectName(QStringLiteral("PlayerWindow"));
    setWindowTitle(Title);
    story_->setObjectName(QStringLiteral("story"));
    input_->setObjectName(QStringLiteral("input"));
    auto* centre = new QWidget(this);
    auto* layout = new QVBoxLayout(centre);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addWidget(story_, 1);
    auto* line = new QHBoxLayout;
    auto* prompt = new QLabel(QStringLiteral(">"), centre);
    prompt->setBuddy(input_);
    line->addWidget(prompt);
    line->addWidget(input_, 1);
    layout->addLayout(line);
    setCentralWidget(centre);
    carried_ = MakeSidePane(QStringLiteral("carried"), tr("You carry"));
    exits_ = MakeSidePane(QStringLiteral("exits"), tr("Ways out"));
    connect(carried_, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) {
        control_->Type(QStringLiteral("look at ") + item->text());
        input_->setFocus();
    });
    connect(exits_, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) {
        control_->Type(item->text());
        input_->setFocus();
    });
    MakeMenus();
    connect(control_, &PlayControl::Changed, this, &PlayerWindow::Refresh);
    connect(control_, &PlayControl::Requested, this, &PlayerWindow::Handle);
    SetTextSize(store_.value(TextSizeKey, UsualTextSize).toInt());
    resize(900, 700);
    resizeDocks({findChild<QDockWidget*>(QStringLiteral("exitsDock"))}, {SidePaneWidth}, Qt::Horizontal);
    restoreGeometry(store_.value(GeometryKey).toByteArray());
    restoreState(store_.value(StateKey).toByteArray());
    input_->setFocus();
}

PlayerWindow::~PlayerWindow() = default;

QListWidget* PlayerWindow::MakeSidePane(const QString& name, const QString& title) {
    auto* dock = new QDockWidget(title, this);
    dock->setObjectName(name + QStringLiteral("Dock"));
    auto* list = new QListWidget(dock);
    list->setObjectName(name);
    list->setAccessibleName(title);
    dock->setWidget(list);
    addDockWidget(Qt::RightDockWidgetArea, dock);
    return list;
}

void PlayerWindow::MakeMenus() {
    MakeGameMenu();
    MakeViewMenu();
    MakeHelpMenu();
}

void PlayerWindow::MakeGameMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&Game"));
    const auto add = [&](const QString& name, const QString& text, const QKeySequence& key, auto handler) {
        QAction* action = menu->addAction(text, this, handler);
        action->setObjectName(name);
        action->setShortcut(key);
    };
    add(QStringLiteral("open"), tr("&Open..."), QKeySequence(tr("Ctrl+O")), [this] { AskForGame(); });
    menu->addSeparator();
    add(QStringLiteral("save"), tr("&Save..."), QKeySequence(tr("Ctrl+S")), [this] { Save(); });
    add(QStringLiteral("restore"), tr("&Restore..."), QKeySequence(tr("Ctrl+R")), [this] { Restore(); });
    add(QStringLiteral("undo"), tr("&Undo a turn"), QKeySequence(tr("Ctrl+Z")), [this] { control_->Undo(); });
    add(QStringLiteral("restart"), tr("R&estart"), QKeySequence(), [this] { Restart(); });
    menu->addSeparator();
    add(QStringLiteral("transcript"), tr("Save the &transcript..."), QKeySequence(),
        [this] { SaveTranscript(); });
    menu->addSeparator();
    add(QStringLiteral("quit"), tr("&Quit"), QKeySequence(tr("Ctrl+Q")), [this] { close(); });
}

void PlayerWindow::MakeViewMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&View"));
    menu->addAction(tr("&Larger letters"), QKeySequence::ZoomIn, this,
                    [this] { SetTextSize(story_->TextSize() + 1); });
    menu->addAction(tr("&Smaller letters"), QKeySequence::ZoomOut, this,
                    [this] { SetTextSize(story_->TextSize() - 1); });
    menu->addAction(tr("&Usual size of letters"), QKeySequence(tr("Ctrl+0")), this,
                    [this] { SetTextSize(UsualTextSize); });
    menu->addSeparator();
    auto* group = new QActionGroup(this);
    const QString captions[] = {tr("Colours of the &desktop"), tr("L&ight colours"), tr("D&ark colours")};
    const int chosen = store_.value(ColoursKey, 0).toInt();
    for (int look = 0; look < 3; ++look) {
        QAction* action = menu->addAction(captions[look], this, [this, look] { SetColours(look); });
        action->setCheckable(true);
        action->setChecked(look == chosen);
        group->addAction(action);
    }
    ApplyLook(static_cast<Look>(std::clamp(chosen, 0, 2)));
    menu->addSeparator();
    for (QDockWidget* dock : findChildren<QDockWidget*>())
        menu->addAction(dock->toggleViewAction());
}

void PlayerWindow::MakeHelpMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&Help"));
    menu->addAction(tr("&What can I type?"), QKeySequence::HelpContents, this,
                    [this] { control_->Type(QStringLiteral("help")); });
    menu->addAction(tr("About this &game"), this, [this] { control_->Type(QStringLiteral("about")); });
    menu->addAction(tr("&About Veldt"), this, [this] { ShowAbout(); });
}

bool PlayerWindow::Open(const QString& path) {
    std::shared_ptr<const play::World> world;
    try {
        world = read_(path);
    } catch (const std::exception& error) {
        dialogs_.ShowMessageBox(this,
                                QStringLiteral("%1: %2").arg(QFileInfo(path).fileName(), ToQt(error.what())),
                                Title, QMessageBox::Ok, QMessageBox::Warning);
        return false;
    }
    path_ = path;
    const QString name = ToQt(world->Game().GameName);
    setWindowTitle(name.isEmpty() ? Title : name + QStringLiteral(" - ") + Title);
    const auto seed = static_cast<std::uint64_t>(QDateTime::currentMSecsSinceEpoch());
    control_->Start(std::make_unique<play::Session>(std::move(world), seed), QFileInfo(path).absolutePath());
    input_->setFocus();
    return true;
}

void PlayerWindow::Refresh() {
    const play::Session* session = control_->Session();
    const auto fill = [](QListWidget& list, const std::vector<std::string>& names) {
        list.clear();
        for (const std::string& name : names)
            list.addItem(ToQt(name));
    };
    fill(*carried_, session->ItemsHad());
    fill(*exits_, session->OpenDirections());
}

void PlayerWindow::Handle(play::Request request) {
    switch (request) {
    case play::Request::Save:
        Save();
        break;
    case play::Request::Restore:
        Restore();
        break;
    case play::Request::Quit:
        close();
        break;
    case play::Request::TranscriptOn:
        SaveTranscript();
        break;
    default:
        break;
    }
}

void PlayerWindow::AskForGame() {
    if (!MayLoseGame())
        return;
    const QString path = dialogs_.AskOpenFile(this, OpenGameQuestion(path_));
    if (!path.isEmpty())
        Open(path);
}

QString PlayerWindow::SaveFilter() const {
    return tr("Saved games (*.kelsave)|*.kelsave|All files (*)|*");
}

void PlayerWindow::Save() {
    play::Session* session = control_->Session();
    if (session == nullptr || session->Needs() != play::Need::Line)
        return;
    const QString path = dialogs_.AskSaveFile(
        this, {tr("Save the game as"), QStringLiteral("kelsave"), SaveFilter(), path_.chopped(4)});
    if (path.isEmpty())
        return;
    const std::string bytes = session->Save();
    QSaveFile file(path);
    const auto size = static_cast<qint64>(bytes.size());
    const bool isSaved =
        file.open(QIODevice::WriteOnly) && file.write(bytes.data(), size) == size && file.commit();
    control_->Show(session->Saved(isSaved));
}

void PlayerWindow::Restore() {
    play::Session* session = control_->Session();
    if (session == nullptr)
        return;
    const QString path =
        dialogs_.AskOpenFile(this, {tr("Open a saved game"), QStringLiteral("kelsave"), SaveFilter(), path_});
    if (path.isEmpty())
        return;
    QFile file(path);
    if (file.size() > LargestSave || !file.open(QIODevice::ReadOnly)) {
        control_->Show(session->NotRestored());
        return;
    }
    control_->Show(session->Restore(file.readAll().toStdString()));
}

void PlayerWindow::Restart() {
    const bool isSure =
        dialogs_.ShowMessageBox(this, tr("Begin this game again?"), Title, QMessageBox::Yes | QMessageBox::No,
                                QMessageBox::Question) == QMessageBox::Yes;
    if (isSure)
        control_->Restart();
}

void PlayerWindow::SaveTranscript() {
    const QString path = dialogs_.AskSaveFile(
        this,
        {tr("Save the transcript as"), QStringLiteral("txt"), tr("Texts (*.txt)|*.txt|All files (*)|*"), {}});
    if (path.isEmpty())
        return;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(control_->Transcript().toUtf8()) < 0 || !file.commit())
        dialogs_.ShowMessageBox(this, tr("The transcript could not be saved: %1.").arg(file.errorString()),
                                Title, QMessageBox::Ok, QMessageBox::Warning);
}

void PlayerWindow::SetTextSize(int points) {
    story_->SetTextSize(points);
    store_.setValue(TextSizeKey, story_->TextSize());
}

void PlayerWindow::SetColours(int look) {
    store_.setValue(ColoursKey, look);
    ApplyLook(static_cast<Look>(look));
}

void PlayerWindow::ShowAbout() {
    dialogs_.ShowMessageBox(this,
                            tr("Veldt plays games written in the Kel script language. It is a part of %1.")
                                .arg(QLatin1String(NameAndVersion)),
                            Title);
}

bool PlayerWindow::MayLoseGame() {
    const play::Session* session = control_->Session();
    if (session == nullptr || !session->IsUnsaved() || session->Needs() == play::Need::Nothing)
        return true;
    return dialogs_.ShowMessageBox(this, ToQt(session->GetWorld().TextOf(play::Message::AskSave)), Title,
                                   QMessageBox::Yes | QMessageBox::No,
                                   QMessageBox::Question) == QMessageBox::Yes;
}

void PlayerWindow::closeEvent(QCloseEvent* event) {
    if (!MayLoseGame()) {
        event->ignore();
        return;
    }
    store_.setValue(GeometryKey, saveGeometry());
    store_.setValue(StateKey, saveState());
    event->accept();
}

} // namespace zem
