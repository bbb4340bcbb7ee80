#pragma once

#include "qt/CommandError.h"

#include <QMessageBox>
#include <QString>
#include <QStringList>

#include <optional>

class QWidget;

namespace zem {

/// What the shell asks of the platform: message boxes, input boxes, file dialogs and opening documents. The
/// program uses QtDialogs; tests answer in its place.
class Dialogs {
public:
    struct FileQuestion {
        QString title;            // Empty for the title of the platform.
        QString defaultSuffix;    // Has no leading point.
        QString filter;           // "name|pattern|name|pattern..."
        QString currentFile = {}; // The dialog begins in its folder; empty for any.
    };

    /// What opening a document may come to, with the codes of the shell.
    enum ShellResult { FileNotFound = 2, PathNotFound = 3, OutOfMemory = 8, NoAssociation = 31, Opened = 33 };

    virtual ~Dialogs() = default;

    /// Shows a message box and returns the button that was pressed; Cancel, No or the only button when it was
    /// closed otherwise.
    virtual QMessageBox::StandardButton ShowMessageBox(QWidget* parent, const QString& text,
                                                       const QString& title = QLatin1String(DefaultTitle),
                                                       QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                                                       QMessageBox::Icon icon = QMessageBox::NoIcon) = 0;

    /// Asks for a line of text; nothing when the author cancelled.
    virtual std::optional<QString> AskText(QWidget* parent, const QString& prompt, const QString& title,
                                           const QString& text) = 0;

    /// Asks which of several things to do, each named on a button; -1 when the author chose none.
    virtual int AskChoice(QWidget* parent, const QString& text, const QString& title,
                          const QStringList& choices) = 0;

    /// Asks for an existing file; empty when the author cancelled.
    virtual QString AskOpenFile(QWidget* parent, const FileQuestion& question) = 0;

    /// Asks for a file to write, and whether it may be replaced; empty when the author cancelled.
    virtual QString AskSaveFile(QWidget* parent, const FileQuestion& question) = 0;

    /// Opens a document with the program that the desktop has for it. Returns a ShellResult, of which
    /// everything above 32 is success; NoAssociation, too, when the only program is this editor.
    virtual int OpenDocument(const QString& path) = 0;

    /// Starts a program that goes on by itself; false when it cannot be started.
    virtual bool StartProgram(const QString& program, const QStringList& arguments) = 0;
};

class QtDialogs : public Dialogs {
public:
    QMessageBox::StandardButton ShowMessageBox(QWidget* parent, const QString& text, const QString& title,
                                               QMessageBox::StandardButtons buttons,
                                               QMessageBox::Icon icon) override;
    std::optional<QString> AskText(QWidget* parent, const QString& prompt, const QString& title,
                                   const QString& text) override;
    int AskChoice(QWidget* parent, const QString& text, const QString& title,
                  const QStringList& choices) override;
    QString AskOpenFile(QWidget* parent, const FileQuestion& question) override;
    QString AskSaveFile(QWidget* parent, const FileQuestion& question) override;
    int OpenDocument(const QString& path) override;
    bool StartProgram(const QString& program, const QStringList& arguments) override;
};

/// Whether a program, named by its path, is this editor itself.
bool IsThisProgram(const QString& program);

/// How a game is asked for wherever one can be opened.
Dialogs::FileQuestion OpenGameQuestion(const QString& currentFile = {});

/// "name|pattern|..." as Qt's list of name filters.
QStringList NameFilters(const QString& filter);

/// Asks for a line of text that a game file can hold: any other is refused with a message and asked for
/// again.
std::optional<QString> AskStorableText(Dialogs& dialogs, QWidget* parent, const QString& prompt,
                                       const QString& title, const QString& text);

/// AskStorableText for a name: nothing, too, when it was left empty.
std::optional<QString> AskName(Dialogs& dialogs, QWidget* parent, const QString& prompt, const QString& title,
                               const QString& text = {});

} // namespace zem
