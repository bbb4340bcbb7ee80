#pragma once

#include "forms/EditorContext.h"
#include "model/GameModel.h"
#include "script/ScriptDraft.h"

#include <QDialog>

#include <memory>
#include <string>
#include <vector>

namespace Ui {
class frmThingProperties;
}

namespace zem {

class ScriptField;

/// Whether a thing is one of the characters or one of the objects of its room.
enum class ThingKind { Character, Object };

/// Edits a character or an object.
class frmThingProperties : public QDialog {
    Q_OBJECT

public:
    /// @param room  from 1, in the table of rooms
    /// @param thing  from 1, in the room's characters or objects
    frmThingProperties(const EditorContext& context, ThingKind kind, int room, int thing,
                       QWidget* parent = nullptr);
    ~frmThingProperties() override;

private:
    bool IsCharacter() const { return kind_ == ThingKind::Character; }
    const Thing& Record() const;
    void AdaptToKind();
    void Fill();
    void ConnectMisc();
    void butOK_Click();
    void Write(GameModel& game) const;
    void WriteThing(Thing& thing) const;

    std::unique_ptr<Ui::frmThingProperties> ui_;
    EditorContext context_;
    ScriptDraft draft_;
    ThingKind kind_;
    int room_;
    int thing_;
    ScriptField* look_ = nullptr;
    ScriptField* interact_ = nullptr; // what a character does when spoken to, an object when taken
    std::vector<ScriptPair> gives_;
    std::vector<ScriptPair> uses_;
    std::string miscTags_;
    std::unique_ptr<GameEdit> edit_;
};

} // namespace zem
