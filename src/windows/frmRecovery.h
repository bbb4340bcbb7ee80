#pragma once

#include "session/Recovery.h"

#include <QDialog>

#include <memory>
#include <vector>

namespace Ui {
class frmRecovery;
}

namespace zem {

class Dialogs;

/// Offers the unsaved changes that programs have left behind.
class frmRecovery : public QDialog {
    Q_OBJECT

public:
    /// @param copies  at least one; outlive the form. Those that the author discards are taken out
    frmRecovery(std::vector<RecoveryCopy>& copies, Dialogs& dialogs, QWidget* parent = nullptr);
    ~frmRecovery() override;

    /// The index of the copy to restore, from 0, when the window was closed with that button.
    int Selected() const;

private:
    void Fill();
    void butDiscard_Click();

    std::unique_ptr<Ui::frmRecovery> ui_;
    std::vector<RecoveryCopy>& copies_;
    Dialogs& dialogs_;
};

} // namespace zem
