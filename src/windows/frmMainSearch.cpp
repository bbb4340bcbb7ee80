// Finding, "where used" and renaming in the main window, and what is offered when a name has gone.
#include "forms/RunCommand.h"
#include "game/WhereUsed.h"
#include "panels/FindPanel.h"
#include "panels/PlayPanel.h"
#include "panels/ProblemsPanel.h"
#include "panels/ResultList.h"
#include "panels/WatchView.h"
#include "panels/WhereUsedPanel.h"
#include "panels/frmRename.h"
#include "panels/frmReplace.h"
#include "script/ScriptEditing.h"
#include "session/RenameTrail.h"
#include "session/SearchIndex.h"
#include "ui_frmMain.h"
#include "windows/frmMain.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace zem {

namespace {

constexpr std::size_t MostGoneNames = 3; // are told after one edit

QString Places(int count) {
    return count == 1 ? QStringLiteral("1 place") : QStringLiteral("%1 places").arg(count);
}

QString TellGoneName(const GoneName& gone) {
    const QString name = QLatin1String(Describe(gone.kind)) + u' ' + ToQt(gone.name);
    if (gone.newName.empty())
        return QStringLiteral("%1 used the %2.").arg(Places(gone.uses), name);
    return gone.uses == 1 ? QStringLiteral("1 place still says %1.").arg(name)
                          : QStringLiteral("%1 still say %2.").arg(Places(gone.uses), name);
}

} // namespace

void frmMain::AddSearch() {
    index_ = std::make_shared<SearchIndex>(context_.scripts.Commands());
    const auto open = [this](const Place& place) { OpenEditor(place); };
    findCommand_ = AddPanel(
        QStringLiteral("mnuToolsFindPanel"), QStringLiteral("Find Panel"), {},
        [this, open] {
            findPanel_ = new FindPanel(
                session_, index_, dialogs_, open, [this] { Replace(); }, this);
            AddNameCommands(*findPanel_->findChild<ResultList*>());
            return findPanel_.data();
        },
        Qt::BottomDockWidgetArea);
    usedCommand_ = AddPanel(
        QStringLiteral("mnuToolsWhereUsedPanel"), QStringLiteral("Where Used Panel"), {},
        [this, open] {
            usedPanel_ = new WhereUsedPanel(
                session_, index_, context_.scripts, dialogs_, open,
                [this](NameKind kind, const std::string& name) {
                    Rename({kind, name});
                },
                this);
            AddNameCommands(*usedPanel_->findChild<ResultList*>());
            return usedPanel_.data();
        },
        Qt::BottomDockWidgetArea);
    AddCommand("mnuToolsFind", "&Find...", "Ctrl+F", [this] {
        if (!findCommand_->isChecked())
            findCommand_->trigger();
        findPanel_->raise();
        findPanel_->Begin();
    });
    AddCommand("mnuToolsReplace", "Repl&ace...", "Ctrl+H", [this] { Replace(); });
    const auto goOn = [this](bool backwards) {
        if (findPanel_ != nullptr && findPanel_->isVisible())
            findPanel_->GoToNext(backwards);
    };
    AddCommand("mnuToolsFindNext", "Find Next", "F3", [goOn] { goOn(false); });
    AddCommand("mnuToolsFindPrevious", "Find Previous", "Shift+F3", [goOn] { goOn(true); });
    showUses_ = AddCommand("mnuToolsWhereUsed", "Where Use&d", "Shift+F12", [this] {
        if (const auto selected = SelectedName())
            ShowWhereUsed(selected->named);
    });
    renameName_ = AddCommand("mnuToolsRename", "Re&name...", "F2", [this] {
        if (const auto selected = SelectedName())
            Rename(selected->named, selected->own);
    });
    for (QWidget* list : {static_cast<QWidget*>(ui_->lstRooms), static_cast<QWidget*>(ui_->lstCharacters),
                          static_cast<QWidget*>(ui_->lstObjects)})
        AddNameCommands(*list);
    connect(ui_->txtRoomFilter, &QLineEdit::textChanged, this, &frmMain::FilterRooms);
}

void frmMain::AddNameCommands(QWidget& list) {
    list.setContextMenuPolicy(Qt::ActionsContextMenu);
    list.addAction(renameName_);
    list.addAction(showUses_);
}

std::optional<frmMain::Selected> frmMain::SelectedName() const {
    const QWidget* focus = focusWidget();
    const auto isIn = [focus](const QWidget* panel) {
        return panel != nullptr && focus != nullptr && panel->isVisible() && panel->isAncestorOf(focus);
    };
    std::optional<NamedThing> named;
    if (isIn(findPanel_))
        named = NamedAtPlace(findPanel_->SelectedPlace());
    else if (isIn(problemsPanel_))
        named = NamedAtPlace(problemsPanel_->SelectedPlace());
    else if (isIn(usedPanel_))
        named = usedPanel_->Named();
    else if (const auto* watch = player_ == nullptr ? nullptr : player_->findChild<WatchView*>(); isIn(watch))
        named = watch->Selected();
    else
        return SelectedInLists();
    if (!named)
        throw CommandError(QStringLiteral("There is no name in the selected row."), QStringLiteral("Names"));
    return Selected{*named};
}

std::optional<NamedThing> frmMain::NamedAtPlace(const std::optional<Place>& place) const {
    if (!place)
        return std::nullopt;
    return index_->Ask(session_.Game(), [&](const GameIndex& asked) { return NamedAt(asked, *place); });
}

/// The room, or the thing in it, if its list has the focus.
std::optional<frmMain::Selected> frmMain::SelectedInLists() const {
    const GameModel& game = session_.Game();
    for (const std::size_t index : {0U, 1U}) {
        const int row = focusWidget() == ThingList(index) ? ThingList(index)->currentIndex().row() : -1;
        if (row < 0 || static_cast<std::size_t>(row) >= thingPlaces_[index].size())
            continue;
        const auto [room, thing] = thingPlaces_[index][static_cast<std::size_t>(row)];
        const bool isCharacter = index == 0;
        const Room& owner = game.Rooms[room];
        return Selected{{isCharacter ? NameKind::Character : NameKind::Object,
                         isCharacter ? owner.Characters[thing].Name : owner.Objects[thing].Name},
                        Place::Of({{FieldId::GameRooms, room},
                                   {isCharacter ? FieldId::RoomCharacters : FieldId::RoomObjects, thing}},
                                  FieldId::ThingName)};
    }
    const int room = ui_->lstRooms->currentIndex().row() + 1;
    if (room < 1)
        return std::nullopt;
    return Selected{{NameKind::Room, game.Rooms[room].Name},
                    Place::Of({{FieldId::GameRooms, room}}, FieldId::RoomName)};
}

void frmMain::ShowWhereUsed(const NamedThing& named) {
    if (!usedCommand_->isChecked())
        usedCommand_->trigger();
    usedPanel_->raise();
    usedPanel_->Show(named.kind, named.name);
}

/// Begins with what is being looked for.
void frmMain::Replace() {
    const bool isFinding = findPanel_ != nullptr && findPanel_->isVisible();
    const auto rename = [this](const NamedThing& named, QWidget* parent) { Rename(named, {}, parent); };
    frmReplace(session_, index_, dialogs_, isFinding ? findPanel_->Query() : FindQuery(), rename, this)
        .exec();
}

void frmMain::Rename(const NamedThing& named, const std::optional<Place>& own, QWidget* parent) {
    if (named.name.empty())
        return;
    frmRename form(session_.Game(), index_, named, own, dialogs_, parent == nullptr ? this : parent);
    if (form.exec() != QDialog::Accepted)
        return;
    const RenamePlan plan = form.Plan();
    session_.AsOneStep(QStringLiteral("rename %1 to %2").arg(ToQt(named.name), ToQt(plan.answer.name)),
                       [&] { session_.Change([&](GameModel& game) { CarryOut(plan, game); }); });
    if (form.RenamesAll())
        renames_->Add(plan.names);
}

/// Runs a command that edits the game. Names that are gone after it and are still used are told, and nothing
/// is asked before: there is Undo.
void frmMain::EditAsOneStep(const QString& name, const std::function<void()>& command) {
    const GameModel before = session_.Game();
    {
        const QScopedValueRollback<bool> isEditing(isEditing_, true);
        session_.AsOneStep(name, command);
    }
    if (!SameGame(before, session_.Game()))
        TellGoneNames(before);
}

/// The same of a step that a panel has made: a room removed on the map.
void frmMain::TellStepOfPanel() {
    const History& history = session_.Steps();
    const std::size_t seen = std::exchange(seenSteps_, history.Done());
    if (!isEditing_ && seen + 1 == history.Done() && history.Done() == history.Count())
        TellGoneNames(history.Game(seen));
}

void frmMain::TellGoneNames(const GameModel& before) {
    if (!beforeLookup_)
        beforeLookup_ = before;
    lookup_.Run(
        *this,
        [index = index_, game = session_.Game(), old = *beforeLookup_](const IsOutdated&) {
            return index->Ask(game, [&](const GameIndex& asked) { return FindGoneNames(old, asked); });
        },
        [this, step = session_.Steps().Done()](const std::vector<GoneName>& gone) {
            beforeLookup_ = std::nullopt;
            if (!gone.empty())
                ShowGoneNames(gone, step);
        });
}

/// @param step  of the history, with which they went
void frmMain::ShowGoneNames(const std::vector<GoneName>& gone, std::size_t step) {
    QStringList told;
    for (std::size_t k = 0; k < std::min(gone.size(), MostGoneNames); ++k)
        told.append(TellGoneName(gone[k]));
    if (gone.size() > MostGoneNames)
        told.append(QStringLiteral("%1 more names are used, too.").arg(gone.size() - MostGoneNames));
    std::vector<MessageBar::Button> buttons = {{QStringLiteral("Sho&w"), [this, first = gone.front()] {
                                                    ShowWhereUsed({first.kind, first.name});
                                                }}};
    const bool isRemoved =
        std::any_of(gone.begin(), gone.end(), [](const GoneName& name) { return name.newName.empty(); });
    if (isRemoved)
        buttons.push_back({QStringLiteral("U&ndo"), [this, step] {
                               if (session_.Steps().Done() == step)
                                   mnuToolsUndo_Click();
                               else
                                   ShowStatus(QStringLiteral("Other steps came after it: undo them first."));
                           }});
    if (goneNames_ != nullptr)
        goneNames_->Close();
    goneNames_ = ShowBar(told.join(u' '), buttons);
    goneStep_ = step;
}

/// When the step is undone the names are there again.
void frmMain::CloseGoneNames() {
    if (goneNames_ != nullptr && session_.Steps().Done() < goneStep_)
        goneNames_->Close();
}

void frmMain::FilterRooms() {
    const QString text = ui_->txtRoomFilter->text();
    for (int row = 0; row < rooms_.rowCount(); ++row) {
        const bool isHidden =
            !text.isEmpty() &&
            !rooms_.data(rooms_.index(row), Qt::DisplayRole).toString().contains(text, Qt::CaseInsensitive);
        if (isHidden != ui_->lstRooms->isRowHidden(row))
            ui_->lstRooms->setRowHidden(row, isHidden);
    }
}

} // namespace zem
