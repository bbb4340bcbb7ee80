#pragma once

#include "forms/ChangeDoor.h"
#include "forms/Dialogs.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmIncludedLibraries;
}

namespace zem {

/// The files that the game includes. They are not looked for.
class frmIncludedLibraries : public QDialog {
    Q_OBJECT

public:
    frmIncludedLibraries(ChangeDoor& door, Dialogs& dialogs, QWidget* parent = nullptr);
    ~frmIncludedLibraries() override;

private:
    void butAdd_Click();
    void butOK_Click();

    std::unique_ptr<Ui::frmIncludedLibraries> ui_;
    ChangeDoor& door_;
    Dialogs& dialogs_;
};

} // namespace zem
