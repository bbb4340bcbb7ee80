#pragma once

#include "forms/EditorContext.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmEditItems;
}

namespace zem {

/// The items that the game knows, ticked where the player holds them when play begins.
class frmEditItems : public QDialog {
    Q_OBJECT

public:
    explicit frmEditItems(const EditorContext& context, QWidget* parent = nullptr);
    ~frmEditItems() override;

private:
    void Append(const std::string& name, bool isStartItem);
    void butAdd_Click();
    void butOK_Click();
    void Write(GameModel& game) const;

    std::unique_ptr<Ui::frmEditItems> ui_;
    EditorContext context_;
    std::unique_ptr<GameEdit> edit_;
};

} // namespace zem
