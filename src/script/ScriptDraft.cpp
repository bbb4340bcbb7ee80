#include "script/ScriptDraft.h"

#include "kel/InternalCall.h"
#include "kel/ScriptTree.h"
#include "script/ScriptEditing.h"

#include <algorithm>

namespace zem {

ScriptDraft::ScriptDraft(ScriptEditing& scripts) : scripts_(scripts), game_(scripts.Game()) {
    if (!scripts.drafts_.empty())
        created_ = scripts.drafts_.back()->created_;
    scripts.drafts_.push_back(this);
}

ScriptDraft::~ScriptDraft() {
    std::erase(scripts_.drafts_, this);
}

void ScriptDraft::Keep() {
    std::erase(scripts_.drafts_, this);
    if (!scripts_.drafts_.empty())
        scripts_.drafts_.back()->created_ = created_;
    GameModel kept = scripts_.Game();
    Keep(kept);
    if (!SameGame(kept, scripts_.Game()))
        scripts_.ChangeProcedures([this](GameModel& game) { Keep(game); });
}

namespace {

template <class Record>
Record* AddUnlessThere(Table<Record>& records, const std::string& name) {
    for (const Record& record : records)
        if (record.Name == name)
            return nullptr;
    Record& added = records.Append();
    added.Name = name;
    return &added;
}

} // namespace

void ScriptDraft::Keep(GameModel& game) const {
    game.Procedures = game_.Procedures;
    game.NextInternalProcedure = game_.NextInternalProcedure;
    for (const Creation& creation : created_) {
        if (creation.kind == NameKind::Item)
            AddUnlessThere(game.Items, creation.name);
        else if (creation.kind == NameKind::Menu)
            AddUnlessThere(game.SelectionMenus, creation.name);
        else if (creation.kind == NameKind::Room)
            AddUnlessThere(game.Rooms, creation.name);
        else if (TextSection* text = AddUnlessThere(game.TextSections, creation.name))
            text->Text = creation.text;
    }
}

void ScriptDraft::Create(NameKind kind, const std::string& name, const std::string& text) {
    created_.push_back({kind, name, text});
}

void ScriptDraft::KeepCalled(const std::string& script, GameModel& game) const {
    for (const std::string& name : InternalProceduresOf(game_, script)) {
        const std::string call = "do <" + name + ">";
        const int called = CalledInternalProcedure(game_, call);
        const int known = CalledInternalProcedure(game, call);
        if (known == 0) {
            game.Procedures.Append(game_.Procedures[called]);
            game.NextInternalProcedure = std::max(game.NextInternalProcedure, game_.NextInternalProcedure);
        } else if (game.Procedures[known] != game_.Procedures[called]) {
            game.Procedures.Edit(known) = game_.Procedures[called];
        }
    }
}

} // namespace zem
