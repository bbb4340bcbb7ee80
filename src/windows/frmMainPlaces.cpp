// From a place in the game to its control in an editor.
#include "editors/frmRoomProperties.h"
#include "editors/frmThingProperties.h"
#include "game/ScriptOwners.h"
#include "ui_frmMain.h"
#include "windows/Landing.h"
#include "windows/frmMain.h"

namespace zem {

namespace {

/// The command of the menu that opens the editor of a list or of a field of the game.
QAction* EditorOf(const Ui::frmMain& ui, FieldId field) {
    switch (field) {
    case FieldId::GameIncludes:
        return ui.mnuViewLibraries;
    case FieldId::GameTextSections:
        return ui.mnuViewTextSectionEditor;
    case FieldId::GameItems:
        return ui.mnuViewItems;
    case FieldId::GameCollectables:
        return ui.mnuViewCollectables;
    case FieldId::GameProcedures:
        return ui.mnuViewProcedures;
    case FieldId::GameSelectionMenus:
        return ui.mnuViewMenus;
    case FieldId::GameSynonyms:
        return ui.mnuViewSynonyms;
    case FieldId::GameErrorMessages:
        return ui.mnuEditErrorMessages;
    case FieldId::GameUnknownBlocks:
        return ui.mnuViewMiscKEL;
    default:
        return ui.mnuViewGameProperties;
    }
}

} // namespace

void frmMain::OpenEditor(const Place& place) {
    const GameModel& game = session_.Game();
    if (!Exists(game, place.WholeField())) { // the game may have changed since the place was found
        ShowStatus(QStringLiteral("That is not there any more."));
        return;
    }
    const std::vector<Place> path = ScriptOwners(game).Path(place);
    const Place& first = path.front();
    LandInNextWindow(StepsTo(game, path));
    if (first.steps[0].list == FieldId::GameRooms)
        OpenRoomOrThing(first);
    else
        EditorOf(*ui_, first.Depth() > 0 ? first.steps[0].list : first.field)->trigger();
}

void frmMain::OpenRoomOrThing(const Place& place) {
    const int room = place.steps[0].entry;
    const PlaceStep thing = place.steps[1];
    const bool isCharacter = thing.list == FieldId::RoomCharacters;
    const bool isThing = isCharacter || thing.list == FieldId::RoomObjects;
    const ThingKind kind = isCharacter ? ThingKind::Character : ThingKind::Object;
    const char* what = !isThing ? "room" : isCharacter ? "character" : "object";
    EditAsOneStep(QStringLiteral("edit %1").arg(QLatin1String(what)), [&] {
        if (isThing) {
            frmThingProperties form(context_, kind, room, thing.entry, this);
            RunEditor(form, Place::Of({place.steps[0], thing}));
        } else {
            frmRoomProperties form(context_, room, this);
            RunEditor(form, Place::Of({place.steps[0]}));
        }
    });
}

} // namespace zem
