#pragma once

#include "forms/EditorContext.h"
#include "model/Place.h"

#include <QDialog>

#include <memory>
#include <string_view>
#include <vector>

namespace Ui {
class frmMenuList;
}

namespace zem {

/// The list of the game's menus. What is added or removed here changes the game at once.
class frmMenuList : public QDialog {
    Q_OBJECT

public:
    explicit frmMenuList(const EditorContext& context, QWidget* parent = nullptr);
    ~frmMenuList() override;

private:
    void Refresh();
    int SelectedMenu() const; // from 1; 0 for none
    void butAdd_Click();
    void butEdit_Click();
    void butRemove_Click();
    std::vector<Place> SelectedPlaces() const;
    void Paste(std::string_view text);
    void butOK_Click();

    std::unique_ptr<Ui::frmMenuList> ui_;
    EditorContext context_;
};

} // namespace zem
