#include "forms/Dialogs.h"

#include "forms/EarlyEnd.h"
#include "qt/QtText.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QMimeDatabase>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QStandardPaths>
#include <QTreeView>
#include <QUrl>

namespace zem {

namespace {

constexpr int InputBoxWidth = 380; // Device-independent pixels, for a name of some words.
constexpr int LongestWait = 2000;  // Milliseconds.

/// The program that an entry of the desktop starts; empty when there is no such entry.
QString ProgramOfEntry(const QString& entry) {
    const QString path = QStandardPaths::locate(QStandardPaths::ApplicationsLocation, entry);
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(QLatin1String("Exec=")))
            return QProcess::splitCommand(line.mid(5)).value(0);
    }
    return {};
}

/// Whether the desktop has a program for the game that is there and is not this editor. Opening the file
/// would not tell: what starts programs for the desktop says that all is well, and gives up afterwards.
bool CanDesktopRun(const QString& path) {
    QProcess query;
    query.start(QStringLiteral("xdg-mime"), {QStringLiteral("query"), QStringLiteral("default"),
                                             QMimeDatabase().mimeTypeForFile(path).name()});
    if (!query.waitForFinished(LongestWait))
        return true; // No answer: opening the file will tell
    const QString entry = QString::fromUtf8(query.readAllStandardOutput()).trimmed();
    const QString program = QStandardPaths::findExecutable(ProgramOfEntry(entry));
    return !program.isEmpty() && entry != QLatin1String("zem.desktop") && !IsThisProgram(program);
}

/// A window without a title would get the name of the program's file.
QString TitleFor(const QString& title) {
    return title.isEmpty() ? QString(QLatin1String(DefaultTitle)) : title;
}

QString RunFileDialog(QFileDialog& dialog, const Dialogs::FileQuestion& question) {
    if (!question.title.isEmpty())
        dialog.setWindowTitle(question.title);
    dialog.setDefaultSuffix(question.defaultSuffix);
    dialog.setNameFilters(NameFilters(question.filter));
    dialog.resize(QSize(820, 520).boundedTo(dialog.screen()->availableSize()));
    if (auto* files = dialog.findChild<QTreeView*>()) { // A desktop's own dialog has none.
        files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    }
    const QFileInfo current(question.currentFile);
    if (!question.currentFile.isEmpty())
        dialog.setDirectory(current.absolutePath());
    if (!question.currentFile.isEmpty() && dialog.acceptMode() == QFileDialog::AcceptSave)
        dialog.selectFile(current.fileName());
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return dialog.selectedFiles().constFirst();
}

} // namespace

QMessageBox::StandardButton QtDialogs::ShowMessageBox(QWidget* parent, const QString& text,
                                                      const QString& title,
                                                      QMessageBox::StandardButtons buttons,
                                                      QMessageBox::Icon icon) {
    QMessageBox box(icon, TitleFor(title), QString(text).replace(QLatin1String("\r\n"), QLatin1String("\n")),
                    buttons, parent);
    box.setTextFormat(Qt::PlainText); // A line of a game may look like markup
    box.exec();
    const QMessageBox::StandardButton pressed = box.standardButton(box.clickedButton());
    if (pressed != QMessageBox::NoButton)
        return pressed;
    return buttons.testFlag(QMessageBox::Cancel) ? QMessageBox::Cancel
           : buttons.testFlag(QMessageBox::No)   ? QMessageBox::No
                                                 : QMessageBox::Ok;
}

std::optional<QString> QtDialogs::AskText(QWidget* parent, const QString& prompt, const QString& title,
                                          const QString& text) {
    QInputDialog box(parent);
    box.setWindowTitle(TitleFor(title));
    box.setLabelText(prompt);
    for (auto* label : box.findChildren<QLabel*>())
        label->setTextFormat(Qt::PlainText);
    box.setTextValue(text);
    box.resize(InputBoxWidth, box.sizeHint().height());
    return box.exec() == QDialog::Accepted ? std::optional(box.textValue()) : std::nullopt;
}

int QtDialogs::AskChoice(QWidget* parent, const QString& text, const QString& title,
                         const QStringList& choices) {
    QMessageBox box(QMessageBox::Question, TitleFor(title), text, QMessageBox::NoButton, parent);
    box.setTextFormat(Qt::PlainText);
    QList<QAbstractButton*> buttons;
    for (const QString& choice : choices)
        buttons.append(box.addButton(choice, QMessageBox::ActionRole));
    QPushButton* cancel = box.addButton(QMessageBox::Cancel);
    cancel->setIcon(QIcon()); // The other buttons have none in any style.
    box.setEscapeButton(cancel);
    box.exec();
    return static_cast<int>(buttons.indexOf(box.clickedButton()));
}

QString QtDialogs::AskOpenFile(QWidget* parent, const FileQuestion& question) {
    QFileDialog dialog(parent);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    return RunFileDialog(dialog, question);
}

QString QtDialogs::AskSaveFile(QWidget* parent, const FileQuestion& question) {
    QFileDialog dialog(parent);
    dialog.setAcceptMode(QFileDialog::AcceptSave); // This mode asks before a file is replaced.
    dialog.setFileMode(QFileDialog::AnyFile);
    return RunFileDialog(dialog, question);
}

int QtDialogs::OpenDocument(const QString& path) {
    const QFileInfo file(path);
    if (path.isEmpty() || !file.exists())
        return path.isEmpty() || file.dir().exists() ? FileNotFound : PathNotFound;
    const QString fullPath = file.absoluteFilePath();
    if (file.suffix().toLower() == QLatin1String("kel") && !CanDesktopRun(fullPath))
        return NoAssociation;
    return QDesktopServices::openUrl(QUrl::fromLocalFile(fullPath)) ? Opened : NoAssociation;
}

bool QtDialogs::StartProgram(const QString& program, const QStringList& arguments) {
    return QProcess::startDetached(program, arguments);
}

bool IsThisProgram(const QString& program) {
    return QFileInfo(program).canonicalFilePath() ==
           QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath();
}

Dialogs::FileQuestion OpenGameQuestion(const QString& currentFile) {
    return {QString(), QStringLiteral("kel"),
            QStringLiteral("Veldt script files (*.kel)|*.kel|Text files (*.txt)|*.txt|All files (*.*)|*.*"),
            currentFile};
}

QStringList NameFilters(const QString& filter) {
    QStringList filters;
    const QStringList parts = filter.split(u'|');
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString& name = parts[i];
        // Qt takes the patterns from the brackets in the name.
        filters.append(name.contains(u'(') ? name : name + QLatin1String(" (") + parts[i + 1] + u')');
    }
    return filters;
}

std::optional<QString> AskStorableText(Dialogs& dialogs, QWidget* parent, const QString& prompt,
                                       const QString& title, const QString& text) {
    std::optional<QString> answer = dialogs.AskText(parent, prompt, title, text);
    while (answer) {
        const std::optional<QString> problem = UnstorableCharacter(*answer);
        if (!problem)
            break;
        dialogs.ShowMessageBox(parent, *problem, title, QMessageBox::Ok, QMessageBox::Warning);
        answer = dialogs.AskText(parent, prompt, title, *answer);
    }
    return answer ? std::optional(OnOneLine(*answer)) : answer;
}

std::optional<QString> AskName(Dialogs& dialogs, QWidget* parent, const QString& prompt, const QString& title,
                               const QString& text) {
    std::optional<QString> name = AskStorableText(dialogs, parent, prompt, title, text);
    QString told; // Of a name that would end early the author is told once, and then it is taken as it is.
    while (name && EndsEarly(*name) && *name != told) {
        told = *name;
        dialogs.ShowMessageBox(parent,
                               QStringLiteral("A name ends at its first \">\" in a game file: what stands "
                                              "from there on would be lost. You can change it now."),
                               title, QMessageBox::Ok, QMessageBox::Warning);
        name = AskStorableText(dialogs, parent, prompt, title, told);
    }
    return name && name->isEmpty() ? std::nullopt : name;
}

} // namespace zem
