#pragma once

#include "play/Session.h"

#include <QWidget>

#include <vector>

class QListWidget;
class QPushButton;

namespace zem {

/// The turns of the game that is being played: any of them can be gone back to, and played again.
class TurnsView : public QWidget {
    Q_OBJECT

public:
    explicit TurnsView(QWidget* parent = nullptr);

    /// @param played  the beginning first
    /// @param undone  those that were taken back, the next one first
    void Show(const std::vector<play::PlayedTurn>& played, const std::vector<play::PlayedTurn>& undone);

signals:
    /// Play is to be as it was after a turn; 0 for the beginning.
    void TurnChosen(std::size_t turn);

    /// A turn is to be played again, from 1.
    void PlayAgainChosen(std::size_t turn);

private:
    QListWidget* list_;
    QPushButton* goTo_;
    QPushButton* again_;
};

} // namespace zem
