#pragma once

#include "app/Settings.h"
#include "forms/Dialogs.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmOptions;
}

namespace zem {

/// The options window. OK stores the options, Cancel changes nothing.
class frmOptions : public QDialog {
    Q_OBJECT

public:
    /// Settings and dialogs outlive the window.
    frmOptions(Settings& settings, Dialogs& dialogs, QWidget* parent = nullptr);
    ~frmOptions() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void butOK_Click();
    void butVCOMPILEbrowse_Click();
    void StepMax(int by);
    void RefuseMax(const QString& message);

    std::unique_ptr<Ui::frmOptions> ui_;
    Settings& settings_;
    Dialogs& dialogs_;
};

} // namespace zem
