#pragma once

#include "forms/Dialogs.h"
#include "session/Settings.h"

#include <QWidget>

#include <memory>

namespace Ui {
class frmStart;
}

namespace zem {

/// The start window: new game, open, recent files.
class frmStart : public QWidget {
    Q_OBJECT

public:
    /// Settings and dialogs outlive the window.
    frmStart(Settings& settings, Dialogs& dialogs);
    ~frmStart() override;

signals:
    void NewGameChosen();
    void GameChosen(const QString& path);

private:
    void butOpen_Click();
    void butOpenRecent_Click();
    void butOptions_Click();
    void butAbout_Click();

    std::unique_ptr<Ui::frmStart> ui_;
    Settings& settings_;
    Dialogs& dialogs_;
};

} // namespace zem
