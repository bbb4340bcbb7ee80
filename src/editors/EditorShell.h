#pragma once

#include "model/GameModel.h"

#include <QSize>
#include <QString>

#include <vector>

class QWidget;

namespace zem {

/// What the property editors ask of the shell around them.
class EditorShell {
public:
    virtual ~EditorShell() = default;

    /// Shows a message with an OK button, in the editor's own message window if the author has chosen that.
    virtual void ShowMessage(const QString& text, const QString& title) = 0;

    /// Shows a section of the help beside the form.
    virtual void ShowHelp(const QString& section, QWidget* parent) = 0;

    /// Edits patterns and actions in a window of its own; they stay as they are when the author cancels.
    virtual void EditPlayerCommands(QWidget* parent, std::vector<ScriptPair>& commands) = 0;

    /// The size in twips, fifteenths of a device-independent pixel, in which the tag editor opens.
    virtual QSize TagEditorSize() const = 0;
    virtual void StoreTagEditorSize(const QSize& twips) = 0;
};

} // namespace zem
