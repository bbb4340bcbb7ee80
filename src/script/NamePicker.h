#pragma once

#include "game/GameNames.h"
#include "kel/CommandLookup.h"
#include "model/GameModel.h"

#include <QObject>
#include <QString>

class QComboBox;
class QLabel;
class QLineEdit;

namespace zem {

/// Offers the game's own names for the part of a parameter in which the caret stands; anything may be typed
/// all the same.
class NamePicker : public QObject {
    Q_OBJECT

public:
    /// The controls belong to one form; it owns this object. Game and commands outlive it.
    NamePicker(QLineEdit& parameter, QLabel& label, QComboBox& names, const GameModel& game,
               const CommandLookup& commands);

    /// The syntax of the command that is chosen now; "!" or empty for one without names.
    void SetSyntax(const std::string& syntax);

private:
    void Refresh();
    void Insert(const QString& name);

    QLineEdit& parameter_;
    QLabel& label_;
    QComboBox& names_;
    const GameModel& game_;
    const CommandLookup& commands_;
    ParameterSyntax syntax_;
    NameKind shown_ = NameKind::None;
};

} // namespace zem
