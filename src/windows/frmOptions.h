#pragma once

#include "forms/Dialogs.h"
#include "session/Settings.h"

#include <QDialog>

#include <memory>
#include <optional>

class QLineEdit;

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
    void butRunnerBrowse_Click();
    void ShowLetterSizes(int stored);
    void StepMax(int by);

    /// Tells why a box cannot be stored, and leads the author back to it.
    void Refuse(QLineEdit& box, const QString& message);

    /// The program named in the box; nothing when there is none of that name, which was told then.
    std::optional<QString> RunProgram();

    std::unique_ptr<Ui::frmOptions> ui_;
    Settings& settings_;
    Dialogs& dialogs_;
};

} // namespace zem
