#pragma once

#include "forms/EditorContext.h"
#include "forms/MessageBar.h"
#include "forms/NameListModel.h"
#include "game/Find.h"
#include "game/GoneNames.h"
#include "model/NameKind.h"
#include "painting/RoomRemark.h"
#include "play/JudgeRuns.h"
#include "play/RecordedRuns.h"
#include "qt/LatestWork.h"
#include "session/GameDocument.h"
#include "session/GameSession.h"
#include "session/SaveCheck.h"
#include "session/Settings.h"
#include "session/Versions.h"

#include <QMainWindow>
#include <QPointer>

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class QAbstractButton;
class QAction;
class QDialog;
class QDockWidget;
class QKeySequence;
class QLabel;
class QListView;
class QPushButton;
class QToolButton;

namespace Ui {
class frmMain;
}

namespace zem {

struct AnyCommand;
class FindPanel;
class GameMerge;
class CompiledGame;
class PlayPanel;
class ProblemWatch;
struct EditorChecks;
class MapPanel;
class ProblemsPanel;
class RenameTrail;
class RunWatch;
class RunsPanel;
class SearchIndex;
class WhereUsedPanel;

/// The main window: the rooms of the game, the characters and objects of the selected room, and the commands.
/// Throughout, index 0 of a pair of controls stands for characters and index 1 for objects.
class frmMain : public QMainWindow, private Questions {
    Q_OBJECT

public:
    /// All arguments outlive the window.
    /// @param programFolder  where the reference documents are
    frmMain(GameSession& session, Settings& settings, const EditorContext& context, SaveCheck& saveCheck,
            const Versions& versions, const QString& programFolder);
    ~frmMain() override;

    /// Opens a game that was named from outside, after asking about unsaved changes.
    void OpenFile(const QString& path);

    /// Opens the editor of a place and goes to its control: the page is shown, the text, the row or the line
    /// of the script selected. Returns when the editor is closed; says so in the status bar when the place is
    /// gone.
    void OpenEditor(const Place& place);

    /// What was renamed since the game was saved.
    RenameTrail& Renames() { return *renames_; }

signals:
    /// The author has closed the window, and it stays closed.
    void Unloaded();

    /// Another room, character or object is selected, or none.
    void SelectionChanged();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// A thing in the lists: several rooms may share the selected name, and the lists show the things of all.
    struct ThingPlace {
        int room;  // Counts from 1.
        int thing; // Counts from 1 in the room's characters or objects.
    };

    /// The rows to select once the lists are filled anew, from 0; -1 for none.
    struct Selection {
        int room = -1;
        std::array<int, 2> things = {-1, -1};
    };

    void ConnectMenus();
    void ConnectLists();
    void ConnectTools();
    void AddPanels();
    void AddPlaying();
    void AddRuns();
    void ShowRuns();
    void KeepRun();
    void ShowReached();
    std::vector<RoomRemark> WithRoomsNeverEntered(std::vector<RoomRemark> remarks) const;
    void PlayWhatEntersRoom();
    void PlayWhatReaches(const std::shared_ptr<const play::JudgedRuns>& judged, const play::Hit& part);
    void PlayRunTo(const play::RecordedRun& run, std::size_t steps);
    PlayPanel& Player();
    void ShowPanel(QDockWidget& panel, Qt::DockWidgetArea area = Qt::RightDockWidgetArea);
    void OpenFromPanel(const Place& place);
    Place SelectedPlace() const;

    bool IsBehindAnother(QDockWidget& panel) const;
    /// Adds a panel, and the command of the Tools menu that shows and hides it. The panel is made when it is
    /// first shown, so that the window opens no later for it.
    /// @param command  the object name of the command
    QAction* AddPanel(const QString& command, const QString& caption, const QKeySequence& key,
                      const std::function<QDockWidget*()>& make,
                      Qt::DockWidgetArea area = Qt::RightDockWidgetArea);
    QAction* AddCommand(const char* name, const char* caption, const char* key, std::function<void()> run);
    void AddProblems();
    void AddMap();
    std::vector<Place> PlacesOnMap() const;
    void AddRoomCommands();
    void AddSearch();
    void AddSpelling();
    void AddExport();
    void AddQuickFind();
    std::vector<AnyCommand> AllCommands();
    void AskForCommand();
    void AskForName();
    void InsertReadyMade(const QString& title = {});
    void Export(const QString& out);
    void AddPublishing();
    void Publish(const QString& out);
    bool MayPublish(const QStringList& errors, int count);
    void WritePage(const QString& out, const std::string& html, const QStringList& remarks);
    std::optional<play::RecordedRun> AskRun();
    void AddTeam();
    void Merge();
    void ShowMerge();
    void ShowLeftConflicts(const FileInspection& found);
    void MergeMarked(const QString& file);
    void SettleConflicts(const QString& list);
    void FilterRooms();
    /// What has a name and is selected where the author is, with its own place if that is known.
    struct Selected {
        NamedThing named;
        std::optional<Place> own = {};
    };
    std::optional<Selected> SelectedName() const;
    std::optional<Selected> SelectedInLists() const;
    std::optional<NamedThing> NamedAtPlace(const std::optional<Place>& place) const;
    void ShowWhereUsed(const NamedThing& named);
    void Rename(const NamedThing& named, const std::optional<Place>& own = {}, QWidget* parent = nullptr);
    void AddNameCommands(QWidget& list);
    void Replace();
    void EditAsOneStep(const QString& name, const std::function<void()>& command);
    void TellStepOfPanel();
    void TellGoneNames(const GameModel& before);
    void ShowGoneNames(const std::vector<GoneName>& gone, std::size_t step);
    void CloseGoneNames();
    void ArrangePanels();
    void RestorePanels();
    void StorePanels();
    void ShowProblems();
    void ShowProblemsOnMap();
    void ShowPlayerOnMap();
    void Connect(QAction* action, void (frmMain::*handler)());

    /// The same for a command that edits the game: what it changes is one step, of this name.
    void ConnectEditor(QAction* action, const char* name, void (frmMain::*handler)());
    void OnEditClick(QAbstractButton* button, const char* name, const std::function<void()>& handler);

    void mnuFileNew_Click();
    void mnuFileOpen_Click();
    void mnuFileSave_Click();
    void mnuFileSaveAs_Click();
    void mnuFileRunKELfile_Click();
    void mnuFileRecent_Click(const QAction& item);
    void mnuViewGameProperties_Click();
    void mnuViewItems_Click();
    void mnuViewCollectables_Click();
    void mnuViewMenus_Click();
    void mnuViewProcedures_Click();
    void mnuViewMiscKEL_Click();
    void mnuViewLibraries_Click();
    void mnuViewSynonyms_Click();
    void mnuEditErrorMessages_Click();
    void mnuViewTextSectionEditor_Click();
    void mnuViewOptions_Click();
    void mnuToolsUndo_Click();
    void mnuToolsRedo_Click();
    void mnuToolsVersions_Click();
    void mnuToolsTimers_Click();
    void mnuZEMRef_Click();
    void mnuKELRef_Click();
    void mnuHelpAbout_Click();
    void Toolbar1_ButtonClick(const QAction* button);

    /// The buttons of the toolbar, each with the menu command that it runs.
    std::vector<std::pair<QAction*, QAction*>> ToolbarCommands() const;

    void ConnectClipboard();
    std::vector<Place> SelectedRooms() const;
    std::vector<Place> SelectedPlaces(const QListView& list) const;
    void PasteText(std::string_view text, const QString& verb);
    void RemovePlaces(const QString& verb, const std::vector<Place>& places);
    void MoveToRoom(const std::vector<Place>& things, int room);
    void AcceptThings(QWidget& target, const std::function<int(QPoint)>& roomAt);
    void SelectPlaces(const std::vector<Place>& places);

    void lstRooms_Click();
    void lstThings_Click();
    void butAddNewRoom_Click();
    void butEditRoom_Click();
    void butDeleteRoom_Click();
    void butAddObj_Click(std::size_t index);
    void butEditObj_Click(std::size_t index);
    void butDeleteObj_Click(std::size_t index);

    void ScrollContents();
    void StandInTheMiddle();

    // What the session asks.
    Answer Ask(const QString& text, const QString& title, Buttons buttons) override;
    int AskChoice(const QString& text, const QString& title, const QStringList& choices) override;
    void Tell(const QString& text) override { ShowBar(text, {}); }
    QString AskOpenName(const QString& currentFile) override;
    QString AskSaveName(const QString& currentFile) override;
    void ShowDifferences(const QString& file) override;

    void CheckFile();

    /// Shows a message above the lists until the author closes it or another game is opened.
    MessageBar* ShowBar(const QString& text, const std::vector<MessageBar::Button>& buttons);
    void CloseBars();
    void ShowLostGame();
    void ShowInspection(const FileInspection& found);
    void ShowDroppedLines(const DroppedLines& lines);
    void ShowSteps();
    void ShowLostPlaces(const std::vector<LostPlace>& places);
    void OpenRoomOrThing(const Place& place);
    void RunEditor(QDialog& form, const Place& record);
    void RunListEditor(QDialog& form, FieldId list);
    QString ProgramForGames() const;
    void OpenDocument(const QString& path);

    /// Runs an editing command; afterwards the lists are filled anew with these rows selected.
    void ChangeGame(const Selection& selection, const std::function<void(GameModel&)>& change);
    void GameChanged(const ChangedFields& changed);
    void GameReplaced();
    void UpdateTitle();
    void ShowStatus(const QString& text);
    void ShowWhetherSaved();
    void RefreshRecentMenu();
    void RefreshLists(const Selection& wanted);
    void FillThings();
    void EnableButtons();
    void ShowSelectedRoom();
    void ShowIcons();

    Selection CurrentSelection() const;
    QListView* ThingList(std::size_t index) const;

    std::unique_ptr<Ui::frmMain> ui_;
    GameSession& session_;
    Settings& settings_;
    EditorContext context_;
    Dialogs& dialogs_;
    GameMerge* merge_;
    QAction* mergeCommand_ = nullptr; // of its panel
    GameDocument document_;
    const Versions& versions_;
    QString programFolder_;
    QLabel* status_;
    QLabel* saved_;
    RunWatch* runs_;
    QToolButton* butRuns_ = nullptr; // tells how they are told now
    QAction* runsCommand_ = nullptr; // of their panel
    QPointer<RunsPanel> runsPanel_;
    QAction* whichRun_ = nullptr; // gets to the selected room
    QAction* startHere_ = nullptr;
    QAction* insertReadyMade_ = nullptr;
    QStringList toldRuns_; // those that were told to be changed
    RenameTrail* renames_;
    ProblemWatch* problems_;
    EditorChecks* editorChecks_;
    QToolButton* butProblems_; // tells how many there are
    QPointer<MapPanel> mapPanel_;
    std::vector<RoomRemark> remarks_; // by room
    std::vector<QAction*> panelCommands_;
    QPointer<ProblemsPanel> problemsPanel_;
    std::shared_ptr<SearchIndex> index_;
    QAction* findCommand_ = nullptr; // of the panel
    QPointer<FindPanel> findPanel_;
    QAction* usedCommand_ = nullptr;
    QAction* renameName_ = nullptr; // the commands for what has a name
    QAction* showUses_ = nullptr;
    QPointer<WhereUsedPanel> usedPanel_;
    QPointer<MessageBar> goneNames_;        // tells the names that went last
    bool isEditing_ = false;                // a command of this window makes a step
    std::size_t seenSteps_ = 0;             // of the history
    std::size_t goneStep_ = 0;              // of the history, with which they went
    std::optional<GameModel> beforeLookup_; // the game before edits whose gone names are not told yet
    LatestWork lookup_;                     // for what uses names that have gone
    LatestWork exporting_;
    LatestWork findingRun_; // that gets to something
    LatestWork publishing_;
    NameListModel rooms_;
    std::array<NameListModel, 2> things_;
    std::array<std::vector<ThingPlace>, 2> thingPlaces_;
    std::vector<QAction*> mnuFileRecent; // Element 0 always exists and may be hidden.
    std::optional<Selection> wanted_;    // Set while a command runs.
    CompiledGame* compiled_ = nullptr;   // Made with the panels.
    PlayPanel* player_ = nullptr;        // Made when it is first shown.
    bool refreshing_ = false;            // True while the lists are filled anew.
};

} // namespace zem
