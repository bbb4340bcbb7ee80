#pragma once

#include "forms/EditorContext.h"
#include "forms/NameListModel.h"
#include "model/GameModel.h"
#include "script/ScriptDraft.h"

#include <QDialog>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Ui {
class frmGameProperties;
}

namespace zem {

class PageButtons;
class ScriptField;

/// Edits what concerns the whole game.
class frmGameProperties : public QDialog {
    Q_OBJECT

public:
    explicit frmGameProperties(const EditorContext& context, QWidget* parent = nullptr);
    ~frmGameProperties() override;

private:
    void FillInformation(const GameModel& game);
    void FillScripts(const GameModel& game);
    void FillSettings(const GameModel& game);
    void butOK_Click();

    std::optional<std::int16_t> FontSize() const;
    void Write(GameModel& game) const;

    std::unique_ptr<Ui::frmGameProperties> ui_;
    EditorContext context_;
    ScriptDraft draft_;
    PageButtons* pages_;
    NameListModel roomNames_;
    ScriptField* startScript_ = nullptr;
    ScriptField* description_ = nullptr;
    ScriptField* beforeTurn_ = nullptr;
    ScriptField* afterTurn_ = nullptr;
    std::vector<ScriptPair> commands_;
    std::vector<ScriptPair> uses_;
    std::string miscTags_;
    std::unique_ptr<GameEdit> edit_;
};

} // namespace zem
