#include "support/EveryWindow.h"

#include "app/AppEditorShell.h"
#include "app/ErrorCatalogue.h"
#include "app/GameSession.h"
#include "app/Recovery.h"
#include "app/SaveCheck.h"
#include "app/frmAbout.h"
#include "app/frmEditErrors.h"
#include "app/frmHelp.h"
#include "app/frmMain.h"
#include "app/frmManual.h"
#include "app/frmMenuList.h"
#include "app/frmOptions.h"
#include "app/frmOrbMsgBox.h"
#include "app/frmPlayerCommandEditor.h"
#include "app/frmProgress.h"
#include "app/frmReadBack.h"
#include "app/frmRecovery.h"
#include "app/frmSelectionWindow.h"
#include "app/frmStart.h"
#include "app/frmVersions.h"
#include "editors/frmAddNewPlace.h"
#include "editors/frmEditCollectableSettings.h"
#include "editors/frmEditCollectables.h"
#include "editors/frmEditItems.h"
#include "editors/frmGameProperties.h"
#include "editors/frmIncludedLibraries.h"
#include "editors/frmObjectInteract.h"
#include "editors/frmProcedureEditor.h"
#include "editors/frmRoomProperties.h"
#include "editors/frmSynonymEditor.h"
#include "editors/frmSynonyms.h"
#include "editors/frmTagEditor.h"
#include "editors/frmTextSectionEdit.h"
#include "editors/frmThingProperties.h"
#include "forms/NameListModel.h"
#include "forms/PageButtons.h"
#include "forms/QtText.h"
#include "script/ScriptEditing.h"
#include "script/frmConditional.h"
#include "script/frmEditCommand.h"
#include "script/frmScriptEditor.h"
#include "script/frmScriptLines.h"

#include <QAbstractItemView>
#include <QAction>
#include <QFileInfo>
#include <QLineEdit>
#include <QRadioButton>
#include <QSettings>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QtTest/QTest>

#include <stdexcept>
#include <utility>

namespace zem::test {

namespace {

template <class Table>
int Named(const Table& table, std::string_view name) {
    for (int k = 1; k <= table.Count(); ++k)
        if (table[k].Name == name)
            return k;
    throw std::runtime_error("the game has no " + std::string(name));
}

template <class Control>
Control& In(const QWidget& window, const char* name) {
    auto* control = window.findChild<Control*>(QLatin1String(name));
    if (control == nullptr)
        throw std::runtime_error(std::string("no control ") + name);
    return *control;
}

void SelectRow(const QWidget& window, const char* list, int row) {
    auto& view = In<QAbstractItemView>(window, list);
    view.setCurrentIndex(view.model()->index(row, 0));
}

CommandCatalogue ShippedCatalogue() {
    CommandCatalogue catalogue;
    LoadCommandCatalogue(catalogue, ZEM_PROGRAM_FOLDER "/zem.dat");
    return catalogue;
}

/// What the windows work with, as the program has it.
class Tour {
public:
    Tour(const QString& path, std::function<void(const QString&, QWidget&)> visit)
        : visit_(std::move(visit)) {
        settings_.LoadSettings();
        LoadErrorCatalogue(game_.ErrorMessages, ZEM_PROGRAM_FOLDER "/zemerr.dat", host_);
        for (const char* other : {"/cottage.kel", "/archipelago.kel"})
            settings_.AddToRecentFiles(QFileInfo(path).absolutePath() + QLatin1String(other));
        if (!session_.LoadGame(path))
            throw std::runtime_error("cannot load the game");
    }

    void VisitAll() {
        VisitOutside();
        VisitMain();
        VisitRoomAndThings();
        VisitGame();
        VisitLists();
        VisitScripts();
        VisitSafetyNets();
        VisitHistory();
    }

private:
    void Visit(QWidget& window, const char* what = nullptr) {
        Show(window);
        const auto* pages = window.findChild<QStackedWidget*>(QStringLiteral("pages"));
        auto* chooser = pages == nullptr ? nullptr : pages->findChild<PageButtons*>();
        if (chooser == nullptr) {
            visit_(window.objectName() + (what == nullptr ? QString() : u'-' + QLatin1String(what)), window);
            return;
        }
        for (int page = 0; page < pages->count(); ++page) {
            chooser->Show(page);
            QCoreApplication::processEvents();
            const QString kind = what == nullptr ? QString() : u'-' + QLatin1String(what);
            visit_(window.objectName() + kind + u'-' + pages->currentWidget()->objectName().mid(3), window);
        }
    }
    void Visit(QWidget&& window, const char* what = nullptr) { Visit(window, what); }

    static void Show(QWidget& window) {
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window))
            throw std::runtime_error("not shown: " + window.objectName().toStdString());
        QCoreApplication::processEvents();
    }

    void VisitOutside() {
        frmStart start(settings_, dialogs_);
        SelectRow(start, "lstRecent", 0);
        Visit(start);
        Visit(frmOptions(settings_, dialogs_));
        Visit(frmAbout());
        Visit(frmManual(QStringLiteral(ZEM_PROGRAM_FOLDER "/ZEM.HTM"), dialogs_));
        frmHelp help;
        help.ShowSection({{QStringLiteral("rooms"), QStringLiteral("A room is a place of the game.")}},
                         QStringLiteral("rooms"));
        Visit(help);
        Visit(
            frmOrbMsgBox(QStringLiteral("You must specify a name for the collectable."), MessageButtons::Ok),
            "OK");
        Visit(frmOrbMsgBox(QStringLiteral("Is the lamp lit?"), MessageButtons::YesNo), "YesNo");
        frmProgress progress;
        progress.ShowStage(QStringLiteral("Reading rooms..."));
        progress.ShowProgress(60);
        Visit(progress);
    }

    void VisitMain() {
        frmMain window(session_, settings_, dialogs_, scripts_, shell_, saveCheck_, versions_,
                       QStringLiteral(ZEM_PROGRAM_FOLDER));
        Visit(window, "Empty");
        SelectRow(window, "lstRooms", Named(game_.Rooms, "Quay") - 1);
        SelectRow(window, "lstCharacters", 0);
        SelectRow(window, "lstObjects", 0);
        Visit(window);
    }

    void VisitRoomAndThings() {
        Visit(frmRoomProperties(scripts_, shell_, Named(game_.Rooms, "Tower Stair")));
        NameListModel rooms;
        rooms.Reset(game_.Rooms.Count(), [this](int row) { return ToQt(game_.Rooms[row + 1].Name); });
        Visit(frmAddNewPlace(rooms, dialogs_));

        const int shop = Named(game_.Rooms, "Chandlery");
        Visit(frmThingProperties(scripts_, shell_, ThingKind::Character, shop, 1), "Character");
        const int loft = Named(game_.Rooms, "Net Loft");
        Visit(frmThingProperties(scripts_, shell_, ThingKind::Object, loft, 1), "Object");
        const Table<ScriptPair> uses = game_.GameUses;
        frmObjectInteract interact(scripts_, QStringLiteral("Use-able objects"),
                                   QStringLiteral("Objects that can be USEd throughout the game:"),
                                   {uses.begin(), uses.end()});
        SelectRow(interact, "lstItems", 0);
        Visit(interact);
        const auto keep = [](const std::string&) {};
        Visit(frmTagEditor(shell_, dialogs_, *game_.GameMiscTags, keep));
    }

    void VisitGame() {
        Visit(frmGameProperties(scripts_, shell_));
        std::vector<ScriptPair> commands;
        for (const PlayerCommand& command : game_.PlayerCommands)
            commands.push_back({command.Pattern, command.Script});
        frmPlayerCommandEditor list(scripts_, commands);
        SelectRow(list, "lstCommands", 0);
        Visit(list);
        Visit(frmEditCommand(scripts_, "shout #words#", "do <shout>"));
        frmEditErrors errors(game_.ErrorMessages, true, dialogs_);
        SelectRow(errors, "lstErrors", 0);
        Visit(errors);
    }

    void VisitLists() {
        frmEditCollectables collectables(session_, shell_, dialogs_);
        SelectRow(collectables, "lstNames", 0);
        Visit(collectables, "Names");
        In<QRadioButton>(collectables, "optExtended").setFocus(); // as the author would have to, too
        In<QRadioButton>(collectables, "optExtended").setChecked(true);
        Visit(collectables, "Extended");
        Visit(frmEditCollectableSettings(shell_, dialogs_, game_.Collectables[2].Definition));

        VisitList(frmEditItems(session_, dialogs_), "lstItems");
        VisitList(frmIncludedLibraries(session_, dialogs_), "lstLibs");
        VisitList(frmTextSectionEdit(session_, dialogs_), "cmbTextSections");
        VisitList(frmSynonyms(session_, dialogs_), "lstSynonyms");
        VisitList(frmSynonymEditor(dialogs_, game_.Synonyms[1]), "lstWords");
        VisitList(frmProcedureEditor(scripts_), "cmbProcedures");
        VisitList(frmMenuList(scripts_), "lstMenus");
        VisitList(frmSelectionWindow(scripts_, game_.SelectionMenus[1]), "lstMenu");
    }
    void VisitList(QWidget&& window, const char* list) {
        SelectRow(window, list, 0);
        Visit(window);
    }

    void VisitScripts() {
        const std::string& lines = game_.Procedures[Named(game_.Procedures, "look at the lamp")].Script;
        for (const bool friendly : {false, true}) {
            isFriendly_ = friendly;
            frmScriptLines script(scripts_, lines);
            SelectRow(script, friendly ? "lstFriendlyLines" : "lstScriptLines", 0);
            Visit(script, friendly ? "Friendly" : "Raw");
        }
        // A command without a parameter, with a text, with one that names something, and an unknown one.
        static const std::pair<const char*, const char*> commands[] = {{"New", ""},
                                                                       {"None", "clear"},
                                                                       {"Text", "msg <Dust.>"},
                                                                       {"Name", "goto <Quay>"},
                                                                       {"Other", "ring <bell; twice>"}};
        for (const auto& [what, line] : commands) {
            frmScriptEditor editor(scripts_, line);
            In<QLineEdit>(editor, "txtParameter").setCursorPosition(0);
            Visit(editor, what);
        }
        Visit(frmConditional(scripts_, "if flag <keeper found> and not flag <keeper saved> then "
                                       "flag on <bell wanted> else flag off <bell wanted>"));
    }

    void VisitSafetyNets() {
        const QDateTime evening(QDate(2026, 11, 21), QTime(18, 30));
        std::vector<RecoveryCopy> copies(2);
        for (RecoveryCopy& copy : copies) {
            copy.game = game_;
            copy.time = evening;
        }
        copies[1].game.FileName.clear();
        Visit(frmRecovery(copies, dialogs_));
        Visit(frmVersions(
            {{QString(), evening, 71000, false}, {QString(), evening.addSecs(-60), 70000, true}}));
        Visit(frmReadBack({{"room", 1, "", 0, "room \"Quay\": its alias ends at the first \">\""},
                           {"item", 2, "", 0, "item \"silver; watch\": comes back as two items"}}));
    }

    void VisitHistory() {
        frmMain window(session_, settings_, dialogs_, scripts_, shell_, saveCheck_, versions_,
                       QStringLiteral(ZEM_PROGRAM_FOLDER));
        for (const char* step : {"add room", "edit room", "add object"})
            session_.AsOneStep(QLatin1String(step), [this, step] {
                session_.Change(QLatin1String(step),
                                [&](GameModel& game) { game.Rooms.Append().Name = step; });
            });
        session_.GoToStep(2);
        SelectRow(window, "lstRooms", 0);
        In<QAction>(window, "mnuToolsHistory").trigger();
        Visit(window, "History");
    }

    std::function<void(const QString&, QWidget&)> visit_;
    QTemporaryDir folder_;
    QSettings store_{folder_.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat};
    Settings settings_{store_, QStringLiteral(ZEM_PROGRAM_FOLDER)};
    QtDialogs dialogs_;
    SilentHost host_;
    GameModel game_;
    GameSession session_{game_, host_, settings_};
    Versions versions_{folder_.filePath(QStringLiteral("versions"))};
    SaveCheck saveCheck_{session_, versions_};
    CommandLookup lookup_{ShippedCatalogue()};
    bool isFriendly_ = true;
    ScriptEditing scripts_{session_, dialogs_, lookup_, [this] { return isFriendly_; }};
    AppEditorShell shell_{settings_, host_, scripts_};
};

} // namespace

void ForEachWindow(const QString& game,
                   const std::function<void(const QString& name, QWidget& window)>& visit) {
    Tour(game, visit).VisitAll();
}

} // namespace zem::test
