#pragma once

#include "editors/EditorShell.h"
#include "forms/ChangeDoor.h"
#include "forms/Dialogs.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmEditCollectables;
}

namespace zem {

/// The list of the game's collectables, by name or with their whole definitions.
class frmEditCollectables : public QDialog {
    Q_OBJECT

public:
    frmEditCollectables(ChangeDoor& door, EditorShell& shell, Dialogs& dialogs, QWidget* parent = nullptr);
    ~frmEditCollectables() override;

private:
    void ConnectLists();
    void Append(const std::string& name, const std::string& definition);
    void butAdd_Click();
    void butEdit_Click();
    void butRemove_Click();
    void butOK_Click();
    void ShowList(bool extended);

    std::unique_ptr<Ui::frmEditCollectables> ui_;
    ChangeDoor& door_;
    EditorShell& shell_;
    Dialogs& dialogs_;
};

} // namespace zem
