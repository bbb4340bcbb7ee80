#pragma once

#include "forms/EditorContext.h"
#include "forms/NameListModel.h"
#include "model/GameModel.h"
#include "script/ScriptDraft.h"

#include <QDialog>

#include <array>
#include <cstddef>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

class QPushButton;

namespace Ui {
class frmRoomProperties;
}

namespace zem {

class NameBox;
class ScriptField;
class SelectedScript;

/// Edits a room. Everything is written on OK, except that the action of an exit is written when it is edited.
class frmRoomProperties : public QDialog {
    Q_OBJECT

public:
    /// @param room  from 1, in the table of rooms
    frmRoomProperties(const EditorContext& context, int room, QWidget* parent = nullptr);
    ~frmRoomProperties() override;

private:
    static constexpr std::size_t ExitCount = 1 + std::size(CompassExits); // out first

    void FillDetails(const Room& room);
    void FillExits(const Room& room);
    void FillPlaces(const Room& room);
    void ConnectMisc();

    void ShowExitScript(std::size_t exit, const std::string& script);
    void cmbRoomNames_Change(std::size_t exit);
    void butRoomAction_Click(std::size_t exit);
    void butAddPlace_Click();
    void butRemovePlace_Click();
    void butScript_Click();
    void butOK_Click();

    void Write(GameModel& game) const;
    void WriteDetails(Room& room) const;
    void WriteExits(Room& room) const;
    void WriteLists(Room& room) const;

    std::unique_ptr<Ui::frmRoomProperties> ui_;
    EditorContext context_;
    ScriptDraft draft_;
    int room_;
    std::array<NameBox*, ExitCount> cmbRoomNames_;
    std::array<QPushButton*, ExitCount> butRoomAction_;
    // The names that all exits, all exits of the compass, and all places offer: made once.
    NameListModel outNames_;
    NameListModel compassNames_;
    NameListModel roomNames_;
    SelectedScript* placeScript_ = nullptr; // below the list of places
    ScriptField* enterScript_ = nullptr;
    ScriptField* descriptionScript_ = nullptr;
    std::vector<std::string> placeScripts_; // by position, also of places removed since
    std::string newPlace_;                  // while its window is open
    std::vector<ScriptPair> commands_;
    std::vector<ScriptPair> uses_;
    std::string miscTags_;
    std::unique_ptr<GameEdit> edit_;
};

} // namespace zem
