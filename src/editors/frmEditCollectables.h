#pragma once

#include "forms/EditorContext.h"

#include <QDialog>

#include <memory>
#include <string>
#include <vector>

namespace Ui {
class frmEditCollectables;
}

namespace zem {

/// The list of the game's collectables, by name or with their whole definitions.
class frmEditCollectables : public QDialog {
    Q_OBJECT

public:
    explicit frmEditCollectables(const EditorContext& context, QWidget* parent = nullptr);
    ~frmEditCollectables() override;

private:
    void ConnectLists();
    void Append(const std::string& name, const std::string& definition);
    void butAdd_Click();
    void butEdit_Click();
    void butRemove_Click();
    void butOK_Click();
    void Write(GameModel& game) const;
    void ShowList(bool extended);

    std::unique_ptr<Ui::frmEditCollectables> ui_;
    EditorContext context_;
    std::vector<Collectable> collectables_; // by row
    std::unique_ptr<GameEdit> edit_;
};

} // namespace zem
