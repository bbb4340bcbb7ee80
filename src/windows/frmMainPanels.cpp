// The panels beside the lists of the main window.
#include "forms/RunCommand.h"
#include "panels/HistoryPanel.h"
#include "panels/MapPanel.h"
#include "panels/PlayPanel.h"
#include "ui_frmMain.h"
#include "windows/frmMain.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QPointer>
#include <QResizeEvent>
#include <QScreen>
#include <QTimer>

namespace zem {

namespace {

// The part of the window that a panel takes when it is first shown.
constexpr double Share = 0.6;

} // namespace

void frmMain::ShowPanel(QDockWidget& panel, Qt::DockWidgetArea area) {
    for (const auto& [name, what] : {std::pair("qt_dockwidget_closebutton", "Close %1"),
                                     std::pair("qt_dockwidget_floatbutton", "Float %1")})
        if (auto* button = panel.findChild<QAbstractButton*>(QLatin1String(name)))
            button->setAccessibleName(QString::fromLatin1(what).arg(panel.windowTitle()));
    if (panel.parentWidget() != this || dockWidgetArea(&panel) == Qt::NoDockWidgetArea) {
        if (!restoreDockWidget(&panel)) // where it stood when the window was closed last
            addDockWidget(area, &panel);
        // Panels that want all the room they can get lie on one another, and those that are read one at a
        // time.
        for (QDockWidget* other : findChildren<QDockWidget*>())
            if (other != &panel && other->property("isLarge").toBool() &&
                panel.property("isLarge").toBool() && dockWidgetArea(other) == Qt::RightDockWidgetArea &&
                !other->isFloating())
                tabifyDockWidget(other, &panel);
            else if (other != &panel && panel.property("isTabbed").toBool() && other->isVisible() &&
                     dockWidgetArea(other) == area && !other->isFloating())
                tabifyDockWidget(other, &panel);
    }
    const bool isFirst = !panel.property("isSized").toBool();
    panel.show();
    panel.raise();
    const int before = panel.property("widthBefore").toInt();
    if (panel.property("isLarge").toBool() && isFirst)
        resizeDocks({&panel}, {static_cast<int>(width() * Share)}, Qt::Horizontal);
    else if (panel.property("isLarge").toBool() && before > 0)
        QTimer::singleShot(0, &panel, [this, &panel, before] {
            // The lists that had its room know only then that they can be narrow again.
            QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
            resizeDocks({&panel}, {before}, Qt::Horizontal);
        });
    panel.setProperty("isSized", true);
}

/// A larger window gives its room to the panel beside the lists, which have enough.
void frmMain::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    const int more = event->size().width() - event->oldSize().width();
    for (QDockWidget* panel : findChildren<QDockWidget*>())
        if (event->oldSize().isValid() && panel->isVisible() && !panel->isFloating() &&
            panel->property("isLarge").toBool() && dockWidgetArea(panel) == Qt::RightDockWidgetArea) {
            resizeDocks({panel}, {panel->width() + more}, Qt::Horizontal);
            return;
        }
}

/// Whether the panel is one of several on one another, and another one is seen.
bool frmMain::IsBehindAnother(QDockWidget& panel) const {
    return isVisible() && !panel.isHidden() && !tabifiedDockWidgets(&panel).isEmpty() &&
           panel.visibleRegion().isEmpty();
}

QAction* frmMain::AddPanel(const QString& command, const QString& caption, const QKeySequence& key,
                           const std::function<QDockWidget*()>& make, Qt::DockWidgetArea area) {
    auto* action = new QAction(caption, this);
    action->setObjectName(command);
    action->setShortcut(key);
    action->setCheckable(true);
    ui_->mnuTools->insertAction(ui_->mnuToolsSep1, action);
    panelCommands_.push_back(action);
    connect(action, &QAction::triggered, this,
            [this, action, make, area, panel = QPointer<QDockWidget>()](bool isShown) mutable {
                RunCommand(dialogs_, this, [&] {
                    if (!isShown && panel != nullptr && IsBehindAnother(*panel)) {
                        action->setChecked(true); // Nobody wants to put away what cannot be seen.
                        isShown = true;
                    }
                    if (panel == nullptr && isShown) {
                        panel = make();
                        // Closing the panel by its own button unticks the command.
                        connect(panel->toggleViewAction(), &QAction::toggled, action, &QAction::setChecked);
                    }
                    if (isShown)
                        ShowPanel(*panel, area);
                    else if (panel != nullptr) {
                        panel->setProperty("widthBefore", panel->width()); // The lists take it meanwhile.
                        panel->hide();
                    }
                });
            });
    return action;
}

QAction* frmMain::AddCommand(const char* name, const char* caption, const char* key,
                             std::function<void()> run) {
    auto* action = new QAction(QLatin1String(caption), this);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(QKeySequence(QLatin1String(key)));
    ui_->mnuTools->insertAction(ui_->mnuToolsSep1, action);
    connect(action, &QAction::triggered, this,
            [this, run = std::move(run)] { RunCommand(dialogs_, this, run); });
    return action;
}

void frmMain::AddPanels() {
    AddPanel(QStringLiteral("mnuToolsHistory"), QStringLiteral("&History"), {},
             [this] { return new HistoryPanel(session_, this); });
    for (void (frmMain::*addGroup)() : {&frmMain::AddProblems, &frmMain::AddMap, &frmMain::AddSearch,
                                        &frmMain::AddSpelling, &frmMain::AddPlaying, &frmMain::AddRuns,
                                        &frmMain::AddTeam, &frmMain::AddExport, &frmMain::AddQuickFind}) {
        (this->*addGroup)();
        ui_->mnuTools->insertSeparator(ui_->mnuToolsSep1);
    }
    AddCommand("mnuToolsArrange", "Standard &layout", "", [this] { ArrangePanels(); });
}

/// The layout of the first start: on a screen that has room for it the lists take the left third and the map
/// the rest, other panels are folded away.
void frmMain::ArrangePanels() {
    constexpr QSize RoomForMap(1280, 800);
    constexpr QSize Largest(1600, 1000); // of the window itself; on a larger screen the author widens it
    const QSize available = screen()->availableSize();
    const QSize screenSize = screen()->size();
    if (screenSize.boundedTo(RoomForMap) != RoomForMap)
        return;
    for (QAction* command : panelCommands_)
        if (command->isChecked() != (command->objectName() == QLatin1String("mnuToolsMap")))
            command->trigger();
    if (mapPanel_ == nullptr)
        return;
    if (player_ != nullptr)
        player_->hide();
    mapPanel_->setFloating(false);
    addDockWidget(Qt::RightDockWidgetArea, mapPanel_);
    for (QDockWidget* other : findChildren<QDockWidget*>()) // They lie behind the map when they are shown.
        if (other != mapPanel_ && other->property("isLarge").toBool() && !other->isFloating())
            tabifyDockWidget(mapPanel_, other);
    mapPanel_->raise();
    if (!isMaximized() && !isFullScreen()) {
        resize((available * 0.94).boundedTo(Largest).expandedTo(size().boundedTo(available)));
        StandInTheMiddle();
    }
    resizeDocks({mapPanel_}, {width() * 2 / 3}, Qt::Horizontal);
    ui_->lstRooms->setFocus();
}

void frmMain::RestorePanels() {
    restoreState(settings_.MainWindowState());
    const QStringList shown = settings_.ShownPanels();
    for (QAction* command : panelCommands_)
        if (shown.contains(command->objectName()))
            command->trigger();
    ui_->lstRooms->setFocus();
}

void frmMain::StorePanels() {
    QStringList shown;
    for (const QAction* command : panelCommands_)
        if (command->isChecked())
            shown.append(command->objectName());
    settings_.StorePanels(saveState(), shown);
}

} // namespace zem
