#pragma once

#include "forms/Dialogs.h"
#include "session/Settings.h"

#include <QWidget>

#include <memory>

namespace Ui {
class frmStart;
}

namespace zem {

/// The start window: new game, open, recent files, and games to begin with.
class frmStart : public QWidget {
    Q_OBJECT

public:
    /// Settings and dialogs outlive the window.
    /// @param programFolder  where the templates are
    frmStart(Settings& settings, Dialogs& dialogs, const QString& programFolder);
    ~frmStart() override;

signals:
    void NewGameChosen();
    void GameChosen(const QString& path);
    /// Of a game that is never to be written over.
    void CopyChosen(const QString& path);
    void ManualWanted(const QString& place);

private:
    void butOpen_Click();
    void butOpenRecent_Click();
    void butBegin_Click();
    void FillGamesToBegin(const QString& programFolder);
    void butOptions_Click();
    void butAbout_Click();

    std::unique_ptr<Ui::frmStart> ui_;
    Settings& settings_;
    Dialogs& dialogs_;
};

} // namespace zem
