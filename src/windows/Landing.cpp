#include "windows/Landing.h"

#include "base/LineText.h"
#include "forms/PageButtons.h"
#include "qt/QtText.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTimer>

#include <algorithm>
#include <optional>
#include <string_view>

namespace zem {

namespace {

/// The control of a field, and the button that opens what the field only sums up.
struct FieldControl {
    FieldId field;
    const char* control;
    const char* opener = ""; // of the script, or of the tags
};

constexpr FieldControl FieldControls[] = {
    {FieldId::GameName, "txtGameName"},
    {FieldId::GameAuthor, "txtGameAuthor"},
    {FieldId::GameVersion, "txtGameVersion"},
    {FieldId::GameCopyright, "txtGameCopyright"},
    {FieldId::GameInfo, "txtGameInfo"},
    {FieldId::GameStartRoom, "cmbRoomNames"},
    {FieldId::GameDefaultFontName, "txtFontName"},
    {FieldId::GameDefaultFontSize, "txtFontSize"},
    {FieldId::GameStartScript, "txtStartScript", "butEditStartScript"},
    {FieldId::GameDescription, "txtDescriptionScript", "butEditDescriptionScript"},
    {FieldId::GameBeforeTurnScript, "txtBeforeTurnScript", "Command1"},
    {FieldId::GameAfterTurnScript, "txtAfterTurnScript", "Command2"},
    {FieldId::GameNoDebug, "chkNoDebug"},
    {FieldId::GameMiscTags, "butMiscTags", "butMiscTags"},
    {FieldId::GameUnknownBlocks, "txtTags"},
    {FieldId::RoomName, "txtRoomName"},
    {FieldId::RoomAlias, "txtRoomAlias"},
    {FieldId::RoomPrefix, "txtPrefix"},
    {FieldId::RoomLook, "txtDescription"},
    {FieldId::RoomInDescription, "txtInDescription"},
    {FieldId::RoomScript, "txtScript", "butEditScript"},
    {FieldId::RoomDescription, "txtDescriptionScript", "butEditDescriptionScript"},
    {FieldId::RoomMiscTags, "butMoreTags", "butMoreTags"},
    {FieldId::ThingName, "txtThingName"},
    {FieldId::ThingPrefix, "txtPrefix"},
    {FieldId::ThingSuffix, "txtSuffix"},
    {FieldId::ThingGender, "txtGender"},
    {FieldId::ThingHidden, "chkHidden"},
    {FieldId::ThingInvisible, "chkInvisible"},
    {FieldId::ThingLook, "txtDescription", "butLookAction"},
    {FieldId::ThingSpeak, "txtInteract", "butSpeakAction"},
    {FieldId::ThingTake, "txtInteract", "butSpeakAction"},
    {FieldId::ThingMiscTags, "butMoreTags", "butMoreTags"},
    {FieldId::TextText, "txtText"},
    {FieldId::MenuInfo, "txtInfo"},
    {FieldId::SynonymWords, "lstWords"},
    {FieldId::SynonymConvertTo, "txtConvertTo"},
    {FieldId::CommandPattern, "txtCommand"},
    {FieldId::CommandScript, "txtAction", "butEdit"},
    {FieldId::ErrorGameText, "txtError"},
};

/// The list of entries, or the box of an exit.
struct ListControl {
    FieldId list;
    const char* opener; // in the window before; empty where the list stands in it
    const char* control;
    const char* edit = ""; // opens the entry's own window, or its script
};

constexpr ListControl ListControls[] = {
    {FieldId::GameIncludes, "", "lstLibs"},
    {FieldId::GameTextSections, "", "cmbTextSections"},
    {FieldId::GameItems, "", "lstItems"},
    {FieldId::GameCollectables, "", "lstNames"},
    {FieldId::GameProcedures, "", "cmbProcedures", "butEdit"},
    {FieldId::GameSelectionMenus, "", "lstMenus", "butEdit"},
    {FieldId::GameSynonyms, "", "lstSynonyms", "butEdit"},
    {FieldId::GameErrorMessages, "", "lstErrors"},
    {FieldId::GamePlayerCommands, "butCommands", "lstCommands", "butEdit"},
    {FieldId::GameUses, "butUseableObjects", "lstItems", "butEdit"},
    {FieldId::MenuChoices, "", "lstMenu", "butEdit"},
    {FieldId::RoomOut, "", "cmbRoomNames_0", "butRoomAction_0"},
    {FieldId::RoomNorth, "", "cmbRoomNames_1", "butRoomAction_1"},
    {FieldId::RoomSouth, "", "cmbRoomNames_2", "butRoomAction_2"},
    {FieldId::RoomEast, "", "cmbRoomNames_3", "butRoomAction_3"},
    {FieldId::RoomWest, "", "cmbRoomNames_4", "butRoomAction_4"},
    {FieldId::RoomNorthWest, "", "cmbRoomNames_5", "butRoomAction_5"},
    {FieldId::RoomNorthEast, "", "cmbRoomNames_6", "butRoomAction_6"},
    {FieldId::RoomSouthWest, "", "cmbRoomNames_7", "butRoomAction_7"},
    {FieldId::RoomSouthEast, "", "cmbRoomNames_8", "butRoomAction_8"},
    {FieldId::RoomPlaces, "", "lstPlaces", "butScript"},
    {FieldId::RoomCommands, "butCommands", "lstCommands", "butEdit"},
    {FieldId::RoomUses, "butEditUse", "lstItems", "butEdit"},
    {FieldId::ThingUses, "butEditUse", "lstItems", "butEdit"},
    {FieldId::ThingGives, "butEditGive", "lstItems", "butEdit"},
};

const FieldControl* ControlOf(FieldId field) {
    const auto* found = std::find_if(std::begin(FieldControls), std::end(FieldControls),
                                     [&](const FieldControl& control) { return control.field == field; });
    return found == std::end(FieldControls) ? nullptr : found;
}

const ListControl* ControlOfList(FieldId list) {
    const auto* found = std::find_if(std::begin(ListControls), std::end(ListControls),
                                     [&](const ListControl& control) { return control.list == list; });
    return found == std::end(ListControls) ? nullptr : found;
}

/// Fields that stand in the window which the button beside the list opens.
bool StandsInOwnWindow(FieldId field) {
    return field == FieldId::MenuInfo || field == FieldId::SynonymWords ||
           field == FieldId::SynonymConvertTo || field == FieldId::CommandPattern ||
           field == FieldId::CommandScript;
}

/// The characters that the box shows for so many bytes of the text: a line end is one.
int Characters(FieldId field, std::string_view bytes) {
    const std::string shown = field == FieldId::GameInfo ? BarToCrLf(bytes) : std::string(bytes);
    return static_cast<int>(shown.size() -
                            static_cast<std::size_t>(std::count(shown.begin(), shown.end(), '\r')));
}

class WayTo {
public:
    WayTo(const GameModel& game, const std::vector<Place>& path)
        : game_(game),
          path_(path),
          place_(path.front()),
          resolved_(Resolve(game, place_)) {}

    std::vector<LandingStep> Steps() {
        if (!resolved_)
            return {};
        for (std::size_t depth = 0; depth < place_.Depth(); ++depth)
            AddList(depth);
        if (const ListControl* exit = ControlOfList(place_.field); exit != nullptr)
            steps_.push_back({.control = QLatin1String(exit->control)}); // an exit as a whole
        AddField(FieldInEditor());
        return std::move(steps_);
    }

private:
    /// Whether a line of the script is meant, so that its window opens.
    bool EndsInScript() const {
        return resolved_->use.kind == FieldKind::Script && (path_.size() > 1 || !place_.bytes.IsEmpty());
    }

    /// Commands of a room are pairs, but have an editor of their own as those of the game do.
    FieldId FieldInEditor() const {
        const std::size_t depth = place_.Depth();
        const bool isCommand = depth > 0 && place_.steps[depth - 1].list == FieldId::RoomCommands;
        if (isCommand && place_.field == FieldId::PairKey)
            return FieldId::CommandPattern;
        return isCommand && place_.field == FieldId::PairScript ? FieldId::CommandScript : place_.field;
    }

    void AddList(std::size_t depth) {
        const PlaceStep step = place_.steps[depth];
        const ListControl* list = ControlOfList(step.list);
        if (list == nullptr)
            return; // rooms and things, whose editor is the first window
        if (*list->opener != '\0')
            steps_.push_back({.control = QLatin1String(list->opener), .press = QLatin1String(list->opener)});
        LandingStep landing{.control = QLatin1String(list->control), .row = step.entry - 1};
        if (step.list == FieldId::GameProcedures)
            landing.rowText = ToQt(*resolved_->steps[depth].key);
        const bool isLast = depth + 1 == place_.Depth();
        if (!isLast || StandsInOwnWindow(FieldInEditor()))
            landing.press = QLatin1String(list->edit);
        steps_.push_back(landing);
    }

    void AddField(FieldId field) {
        const FieldControl* control = ControlOf(field);
        if (control != nullptr) {
            LandingStep landing{.control = QLatin1String(control->control)};
            Select(field, landing);
            steps_.push_back(landing);
        }
        if (EndsInScript() && !steps_.empty()) {
            steps_.back().press = ScriptOpener(control);
            AddScriptLine();
        } else if (control != nullptr && *control->opener != '\0' &&
                   resolved_->use.kind == FieldKind::RawLines) {
            LandingStep tags{.control = QStringLiteral("txtTags")};
            Select(field, tags);
            steps_.back().press = QLatin1String(control->opener);
            steps_.push_back(tags);
        }
    }

    QString ScriptOpener(const FieldControl* control) const {
        if (control != nullptr)
            return QLatin1String(control->opener);
        return QLatin1String(ControlOfList(place_.steps[place_.Depth() - 1].list)->edit);
    }

    /// Which lines the script window shows depends on the script: those of the procedure that it calls, if
    /// that is all it does.
    void AddScriptLine() {
        const bool isCall = path_.size() > 1 && BeginsWith(*resolved_->text, "do <~");
        const Place& shown = path_[isCall ? 1 : 0];
        const auto lines = Resolve(game_, shown);
        const int row = lines && lines->text != nullptr && !shown.bytes.IsEmpty()
                            ? LineOfByte(*lines->text, shown.bytes.begin) - 1
                            : 0;
        for (const char* list : {"lstScriptLines", "lstFriendlyLines"}) // one of them is shown
            steps_.push_back({.control = QLatin1String(list), .row = row});
    }

    void Select(FieldId field, LandingStep& landing) const {
        if (resolved_->text == nullptr || place_.bytes.IsEmpty())
            return;
        const std::string_view text = *resolved_->text;
        const std::string_view before = text.substr(0, place_.bytes.begin);
        landing.selectionBegin = Characters(field, before);
        landing.selectionSize = Characters(field, place_.bytes.Of(text));
        if (field == FieldId::SynonymWords) // a list with a row for each word
            landing.row = static_cast<int>(std::count(before.begin(), before.end(), ';'));
    }

    const GameModel& game_;
    const std::vector<Place>& path_;
    const Place& place_;
    const std::optional<ResolvedPlace> resolved_;
    std::vector<LandingStep> steps_;
};

/// Shows the page of a form on which the control stands.
void ShowPageOf(QWidget& control) {
    for (QWidget* page = &control; page->parentWidget() != nullptr; page = page->parentWidget())
        if (auto* pages = qobject_cast<QStackedWidget*>(page->parentWidget()))
            if (auto* buttons = pages->findChild<PageButtons*>(QString(), Qt::FindDirectChildrenOnly))
                buttons->Show(pages->indexOf(page));
}

void SelectText(QWidget& control, const LandingStep& step) {
    auto* combo = qobject_cast<QComboBox*>(&control);
    QLineEdit* line = combo != nullptr ? combo->lineEdit() : qobject_cast<QLineEdit*>(&control);
    if (line != nullptr)
        line->setSelection(step.selectionBegin, step.selectionSize);
    if (auto* box = qobject_cast<QPlainTextEdit*>(&control)) {
        QTextCursor cursor = box->textCursor();
        cursor.setPosition(step.selectionBegin);
        cursor.setPosition(step.selectionBegin + step.selectionSize, QTextCursor::KeepAnchor);
        box->setTextCursor(cursor);
    }
}

void SelectRow(QListWidget& list, const LandingStep& step) {
    int row = step.row;
    if (!step.rowText.isEmpty()) {
        const QList<QListWidgetItem*> items =
            list.findItems(step.rowText, Qt::MatchExactly | Qt::MatchCaseSensitive);
        row = items.isEmpty() ? -1 : list.row(items.front());
    }
    list.setCurrentRow(row);
}

} // namespace

std::vector<LandingStep> StepsTo(const GameModel& game, const std::vector<Place>& path) {
    return WayTo(game, path).Steps();
}

bool LandOn(QWidget& window, const LandingStep& step) {
    auto* control = window.findChild<QWidget*>(step.control);
    if (control == nullptr)
        return false;
    ShowPageOf(*control);
    if (!control->isHidden())
        control->setFocus(Qt::OtherFocusReason);
    if (auto* list = qobject_cast<QListWidget*>(control))
        SelectRow(*list, step);
    else if (step.selectionSize > 0)
        SelectText(*control, step);
    return true;
}

void LandInNextWindow(const std::vector<LandingStep>& steps) {
    // A modal window runs an event loop of its own, in which this comes first.
    QTimer::singleShot(0, qApp, [steps] {
        QWidget* window = QApplication::activeModalWidget();
        for (std::size_t k = 0; window != nullptr && k < steps.size(); ++k) {
            if (!LandOn(*window, steps[k]))
                return;
            if (steps[k].press.isEmpty())
                continue;
            LandInNextWindow({steps.begin() + static_cast<std::ptrdiff_t>(k) + 1, steps.end()});
            if (auto* button = window->findChild<QPushButton*>(steps[k].press))
                button->click(); // returns when the window that it opens is closed
            return;
        }
    });
}

} // namespace zem
