#pragma once

#include "forms/EditorContext.h"
#include "pieces/CopyPiece.h"

#include <QDialog>

#include <memory>
#include <string_view>

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
    GameModel Game() const;
    PieceText Copy() const;
    void Paste(std::string_view text);

    std::unique_ptr<Ui::frmEditItems> ui_;
    EditorContext context_;
    std::unique_ptr<GameEdit> edit_;
};

} // namespace zem
