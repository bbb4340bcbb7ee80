#pragma once

#include "model/Place.h"
#include "play/Outcome.h"

#include <QDockWidget>

#include <vector>

class QLabel;

namespace zem {

class CompiledGame;
class StoryPane;

/// Shows the selected room, or the look of the selected character or object, as a player reads it on a first
/// visit. Ways out and things are links to their editors.
class PreviewPanel : public QDockWidget {
    Q_OBJECT

public:
    /// @param game  outlives the panel
    explicit PreviewPanel(CompiledGame& game, QWidget* parent = nullptr);

    /// Shows a room, or a character or object in a room; nothing for any other place.
    void Show(const Place& place);

signals:
    /// What is to be edited.
    void PlaceChosen(const Place& place);

private:
    void Refresh();
    void RefreshSoon();
    void ShowPieces(const play::Outcome& outcome);
    void ShowLinks(const Room& room, int number);
    QString ExitsOf(const Room& room, int number);
    QString ThingsOf(const Room& room, int number);
    QString Link(const Place& place, const std::string& text);

    CompiledGame& game_;
    StoryPane* page_;
    QLabel* links_;
    std::vector<Place> targets_; // of the links
    Place place_;
    bool isRefreshing_ = false; // soon
};

} // namespace zem
