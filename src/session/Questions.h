#pragma once

#include <QString>
#include <QStringList>

namespace zem {

/// What the session asks the author. The main window asks with boxes; tests answer.
class Questions {
public:
    enum class Buttons { OkCancel, YesNoCancel };
    enum class Answer { Yes, No, Cancel }; // Yes stands for OK, too

    virtual ~Questions() = default;

    virtual Answer Ask(const QString& text, const QString& title, Buttons buttons) = 0;

    /// Asks which of several things to do, each named on a button; -1 when the author chose none.
    virtual int AskChoice(const QString& text, const QString& title, const QStringList& choices) = 0;

    /// Tells what needs no answer, where it stays to be read.
    virtual void Tell(const QString& text) = 0;

    /// Asks for the file to open, and for the name to save under; empty when the author cancelled.
    virtual QString AskOpenName(const QString& currentFile) = 0;
    virtual QString AskSaveName(const QString& currentFile) = 0;

    /// Shows what the open game has that a file has not, before the author decides between them.
    virtual void ShowDifferences(const QString& file) = 0;
};

} // namespace zem
