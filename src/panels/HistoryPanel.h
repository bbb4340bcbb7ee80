#pragma once

#include "forms/NameListModel.h"
#include "session/GameSession.h"

#include <QDockWidget>

namespace zem {

class NameListView;

/// The steps that the author has gone since the game was opened, to jump to any of them.
class HistoryPanel : public QDockWidget {
    Q_OBJECT

public:
    /// @param session  outlives the panel
    explicit HistoryPanel(GameSession& session, QWidget* parent = nullptr);

private:
    void Refresh();
    void GoToSelected();

    GameSession& session_;
    NameListView* lstSteps_;
    NameListModel steps_;
    bool refreshing_ = false;
};

} // namespace zem
