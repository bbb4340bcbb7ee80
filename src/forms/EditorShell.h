#pragma once

#include <QSize>
#include <QString>

class QWidget;

namespace zem {

class GameSpelling;

/// What the editors ask of the program around them.
class EditorShell {
public:
    virtual ~EditorShell() = default;

    /// Shows a message with an OK button, in the editor's own message window if the author has chosen that.
    virtual void ShowMessage(const QString& text, const QString& title) = 0;

    /// Shows a section of the help beside the form.
    virtual void ShowHelp(const QString& section, QWidget* parent) = 0;

    /// Shows a place of the manual, the beginning for an empty name, beside the window.
    virtual void ShowManual(const QString& place, QWidget& beside) = 0;

    /// The size in twips, fifteenths of a device-independent pixel, in which the tag editor opens.
    virtual QSize TagEditorSize() const = 0;
    virtual void StoreTagEditorSize(const QSize& twips) = 0;

    /// The spelling of the game; null where nobody checks it.
    virtual GameSpelling* Spelling() { return nullptr; }
};

} // namespace zem
