#pragma once

#include "forms/NameListModel.h"
#include "game/Find.h"
#include "model/NameKind.h"
#include "model/Place.h"
#include "qt/LatestWork.h"

#include <QDockWidget>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QComboBox;
class QLabel;
class QPushButton;

namespace zem {

class Dialogs;
class GameSession;
class ResultList;
class ScriptEditing;
class SearchIndex;

/// The kinds of names that can be looked for and renamed, in the order in which they are offered.
extern const std::vector<NameKind> NamedKinds;

/// All places that use a name: of a room, a thing, an item, a procedure and whatever else has one.
class WhereUsedPanel : public QDockWidget {
    Q_OBJECT

public:
    /// What is done with a name.
    using NameCommand = std::function<void(NameKind kind, const std::string& name)>;

    /// All arguments but `index` outlive the panel.
    /// @param open    opens the editor of a place and goes to its control
    /// @param rename  asks for another name
    WhereUsedPanel(GameSession& session, std::shared_ptr<SearchIndex> index, const ScriptEditing& scripts,
                   Dialogs& dialogs, std::function<void(const Place&)> open, NameCommand rename,
                   QWidget* parent = nullptr);

    /// Shows where a name is used.
    void Show(NameKind kind, const std::string& name);

    /// What is looked for now; nothing while no name is chosen.
    std::optional<NamedThing> Named() const;

    /// Whether something is still to be shown.
    bool IsBusy() const { return work_.IsRunning(); }

private:
    QWidget* MakeControls();
    NameKind Kind() const;
    void OfferNames();
    void Find();
    void OpenUse(int row);

    GameSession& session_;
    std::shared_ptr<SearchIndex> index_;
    const ScriptEditing& scripts_;
    Dialogs& dialogs_;
    std::function<void(const Place&)> open_;
    NameCommand rename_;
    QComboBox* cmbKind_;
    QComboBox* cmbName_;
    QPushButton* butRename_;
    QLabel* lblCount_;
    ResultList* lstUses_;
    NameListModel names_;
    std::vector<Place> places_; // of each row
    LatestWork work_;
};

} // namespace zem
