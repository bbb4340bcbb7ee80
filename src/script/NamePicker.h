#pragma once

#include "forms/NameListModel.h"
#include "kel/ParameterSyntax.h"

#include <QObject>
#include <QString>

#include <string>

class QComboBox;
class QLabel;
class QLineEdit;

namespace zem {

class ScriptEditing;

/// Offers the game's own names for the part of a parameter in which the caret stands; anything may be typed
/// all the same.
class NamePicker : public QObject {
    Q_OBJECT

public:
    /// The controls belong to one form; it owns this object.
    /// @param scripts  outlives the form
    NamePicker(QLineEdit& parameter, QLabel& label, QComboBox& names, const ScriptEditing& scripts);

    /// The syntax of the command that is chosen now; "!" or empty for one without names.
    void SetSyntax(const std::string& syntax);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Refresh();
    void Insert(const QString& name);

    QLineEdit& parameter_;
    QLabel& label_;
    QComboBox& names_;
    const ScriptEditing& scripts_;
    NameListModel list_; // what the box shows
    ParameterSyntax syntax_;
    NameKind shown_ = NameKind::None;
    bool isFromList_ = false; // what is chosen now was clicked in the open list
};

} // namespace zem
