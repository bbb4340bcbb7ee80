// The panels beside the lists of the main window.
#include "forms/RunCommand.h"
#include "panels/HistoryPanel.h"
#include "ui_frmMain.h"
#include "windows/frmMain.h"

#include <QPointer>

namespace zem {

QAction* frmMain::AddPanel(const QString& command, const QString& caption, const QKeySequence& key,
                           const std::function<QDockWidget*()>& make, Qt::DockWidgetArea area) {
    auto* action = new QAction(caption, this);
    action->setObjectName(command);
    action->setShortcut(key);
    action->setCheckable(true);
    ui_->mnuTools->insertAction(ui_->mnuToolsSep1, action);
    connect(action, &QAction::triggered, this,
            [this, action, make, area, panel = QPointer<QDockWidget>()](bool isShown) mutable {
                RunCommand(dialogs_, this, [&] {
                    if (panel == nullptr && isShown) {
                        panel = make();
                        addDockWidget(area, panel);
                        // Closing the panel by its own button unticks the command.
                        connect(panel->toggleViewAction(), &QAction::toggled, action, &QAction::setChecked);
                    }
                    if (panel != nullptr)
                        panel->setVisible(isShown);
                    if (isShown)
                        panel->raise();
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
    AddProblems();
    AddMap();
    AddSearch();
}

} // namespace zem
