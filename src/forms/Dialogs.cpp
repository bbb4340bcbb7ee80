#include "forms/Dialogs.h"

#include "forms/QtText.h"

#include <QAbstractButton>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QMimeDatabase>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QTreeView>
#include <QUrl>

namespace zem {

namespace {

constexpr int InputBoxWidth = 380; // Device-independent pixels, for a name of some words.
constexpr int LongestWait = 2000;  // Milliseconds.

/// Whether the desktop would open the game with this editor again, and not with a program that runs it.
bool IsOpenedByThisEditor(const QString& path) {
    QProcess query;
    query.start(QStringLiteral("xdg-mime"), {QStringLiteral("query"), QStringLiteral("default"),
                                             QMimeDatabase().mimeTypeForFile(path).name()});
    query.waitForFinished(LongestWait); // No answer in time counts as another program.
    return query.readAllStandardOutput().trimmed() == "zem.desktop";
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
    QMessageBox box(icon, title, QString(text).replace(QLatin1String("\r\n"), QLatin1String("\n")), buttons,
                    parent);
    box.setTextFormat(Qt::PlainText); // A line of a game may look like markup.
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
    box.setWindowTitle(title);
    box.setLabelText(prompt);
    for (auto* label : box.findChildren<QLabel*>())
        label->setTextFormat(Qt::PlainText);
    box.setTextValue(text);
    box.resize(InputBoxWidth, box.sizeHint().height());
    return box.exec() == QDialog::Accepted ? std::optional(box.textValue()) : std::nullopt;
}

int QtDialogs::AskChoice(QWidget* parent, const QString& text, const QString& title,
                         const QStringList& choices) {
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::NoButton, parent);
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
    if (file.suffix().toLower() == QLatin1String("kel") && IsOpenedByThisEditor(fullPath))
        return NoAssociation;
    return QDesktopServices::openUrl(QUrl::fromLocalFile(fullPath)) ? Opened : NoAssociation;
}

bool QtDialogs::StartProgram(const QString& program, const QStringList& arguments) {
    return QProcess::startDetached(program, arguments);
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
    const std::optional<QString> name = AskStorableText(dialogs, parent, prompt, title, text);
    return name && name->isEmpty() ? std::nullopt : name;
}

} // namespace zem
