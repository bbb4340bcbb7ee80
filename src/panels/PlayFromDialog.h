#pragma once

#include "play/Session.h"

#include <QDialog>

#include <optional>

class QComboBox;
class QPushButton;
class QRadioButton;
class QTreeWidget;

namespace zem {

/// Asks in which room play is to begin, and with what: items, flags and variables.
class PlayFromDialog : public QDialog {
    Q_OBJECT

public:
    /// Finds the last turn after which the player was in a room; nothing when there was none.
    using LastVisit = std::function<bool(const std::string& room)>;

    /// @param running  the game that is being played, whose state is offered; null for none
    /// @param room     what is offered first
    PlayFromDialog(const play::World& world, const play::Session* running, const QString& room,
                   LastVisit lastVisit, QWidget* parent = nullptr);

    /// What was chosen.
    play::StartingPoint Point() const;

    /// Whether play is to be as it was when the player was in the room for the last time.
    bool IsLastVisit() const;

private:
    QTreeWidget* MakeValues();
    void AddGroup(const QString& caption, play::Kind kind);
    void FillValues(bool isNow);
    void Check();

    const play::World& world_;
    const play::Session* running_;
    LastVisit lastVisit_;
    QComboBox* room_;
    QRadioButton* fromStart_;
    QRadioButton* asNow_;
    QRadioButton* asLastVisit_;
    QTreeWidget* values_;
    QPushButton* ok_;
};

} // namespace zem
