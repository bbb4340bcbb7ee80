// The tools of the main window: undo, earlier versions, and what happens to the file behind its back.
#include "base/TextFile.h"
#include "forms/RunCommand.h"
#include "qt/QtText.h"
#include "session/RunWatch.h"
#include "ui_frmMain.h"
#include "windows/frmMain.h"
#include "windows/frmReadBack.h"
#include "windows/frmVersions.h"

#include <QFileInfo>
#include <QTimer>
#include <QWhatsThis>

namespace zem {

namespace {

constexpr int WaitForEditor = 300; // Milliseconds between two looks whether it is closed.
constexpr qsizetype MostRemarks = 6;
constexpr qsizetype MostCharacters = 20;

/// Which characters of a UTF-8 file a game cannot hold.
QString DescribeLacking(const QString& path) {
    QStringList characters;
    for (const LackingCharacter& lacking : Utf8ToWindows1252(ReadFile(PathFromQt(path))).lacking)
        characters.append(QString::fromStdString(lacking.utf8));
    if (characters.isEmpty())
        return {};
    const QString more = characters.size() > MostCharacters ? QStringLiteral(" and others") : QString();
    return QStringLiteral("Read as UTF-8, these characters become \"?\", as a game cannot hold them: ") +
           characters.mid(0, MostCharacters).join(u' ') + more + u'.';
}

} // namespace

void frmMain::ConnectTools() {
    Connect(ui_->mnuToolsUndo, &frmMain::mnuToolsUndo_Click);
    Connect(ui_->mnuToolsRedo, &frmMain::mnuToolsRedo_Click);
    Connect(ui_->mnuToolsVersions, &frmMain::mnuToolsVersions_Click);
    // No shortcut: Shift+F1 tells at once about the control with the focus.
    connect(ui_->mnuToolsWhatsThis, &QAction::triggered, this, &QWhatsThis::enterWhatsThisMode);
    AddPanels();
    connect(&session_, &GameSession::StepsChanged, this, &frmMain::ShowSteps);
    ShowSteps();
}

/// Names the steps that can be undone and redone.
void frmMain::ShowSteps() {
    CloseGoneNames();
    TellStepOfPanel();
    const History& history = session_.Steps();
    const auto name = [&history](std::size_t step) {
        return ToQt(history.Name(step)).replace(u'&', QLatin1String("&&"));
    };
    const bool canUndo = history.Done() > 0;
    const bool canRedo = history.Done() < history.Count();
    ui_->mnuToolsUndo->setText(QLatin1String("&Undo ") + (canUndo ? name(history.Done()) : QString()));
    ui_->mnuToolsUndo->setEnabled(canUndo);
    ui_->mnuToolsRedo->setText(QLatin1String("&Redo ") + (canRedo ? name(history.Done() + 1) : QString()));
    ui_->mnuToolsRedo->setEnabled(canRedo);
}

void frmMain::mnuToolsUndo_Click() {
    if (session_.Steps().Done() > 0)
        session_.GoToStep(session_.Steps().Done() - 1);
}

void frmMain::mnuToolsRedo_Click() {
    if (session_.Steps().Done() < session_.Steps().Count())
        session_.GoToStep(session_.Steps().Done() + 1);
}

void frmMain::mnuToolsVersions_Click() {
    frmVersions form(session_.FileName().isEmpty() ? std::vector<FileVersion>()
                                                   : versions_.List(session_.FileName()),
                     session_.Game(), this);
    if (form.exec() != QDialog::Accepted)
        return;
    try {
        document_.OpenVersion(form.Selected());
    } catch (const CommandError& error) {
        const QString aside = Versions::SetAside(form.Selected());
        throw CommandError(error.Text() + QStringLiteral(" It is kept aside as %1.").arg(aside),
                           error.Title());
    }
}

// ---- The file on disk

void frmMain::CheckFile() {
    if (isActiveWindow() && QApplication::activeModalWidget() == nullptr)
        RunCommand(dialogs_, this, [this] {
            runs_->CheckDisk();
            document_.CheckDisk();
        });
}

// ---- Messages in the window

MessageBar* frmMain::ShowBar(const QString& text, const std::vector<MessageBar::Button>& buttons) {
    auto* bar = new MessageBar(text, buttons, this);
    ui_->verticalLayout->insertWidget(0, bar);
    bar->show(); // now: another message may follow at once
    return bar;
}

void frmMain::CloseBars() {
    for (MessageBar* bar : findChildren<MessageBar*>())
        bar->Close();
}

void frmMain::ShowLostGame() {
    const QString path = PathToQt(session_.LostGame()->game.FileName);
    ShowBar(QStringLiteral("The game that was open before is kept: %1.")
                .arg(path.isEmpty() ? QStringLiteral("it has no name yet") : path),
            {{QStringLiteral("&Bring it back"),
              [this] { RunCommand(dialogs_, this, [this] { document_.BringBack(); }); }, false}});
}

void frmMain::ShowInspection(const FileInspection& found) {
    if (found.remarks.empty())
        return;
    QStringList lines;
    for (const auto& [line, text, kind] : found.remarks) {
        if (lines.size() == MostRemarks) {
            lines.append(
                QStringLiteral("There are %1 in all; \"zem print\" lists them.").arg(found.remarks.size()));
            break;
        }
        const QString where = line == 0 ? QString() : QStringLiteral("Line %1: ").arg(line);
        lines.append(where + ToQt(text) + u'.');
    }
    std::vector<MessageBar::Button> buttons;
    if (found.encoding == TextEncoding::Utf8 || found.encoding == TextEncoding::Utf8WithMark) {
        lines.append(DescribeLacking(session_.FileName()));
        buttons.push_back({QStringLiteral("Read it as &UTF-8"),
                           [this] { RunCommand(dialogs_, this, [this] { session_.ReadAsUtf8(); }); }, false});
    }
    lines.removeAll(QString());
    ShowBar(lines.join(u'\n'), buttons);
}

void frmMain::ShowDroppedLines(const DroppedLines& lines) {
    QStringList parts;
    if (lines.comments > 0)
        parts.append(lines.comments == 1 ? QStringLiteral("1 comment")
                                         : QStringLiteral("%1 comments").arg(lines.comments));
    if (lines.others > 0)
        parts.append(lines.others == 1 ? QStringLiteral("1 line outside of blocks")
                                       : QStringLiteral("%1 lines outside of blocks").arg(lines.others));
    ShowBar(QStringLiteral("A file that ZEM saves has no room for %1: they are left out. The file as it was "
                           "before ZEM changed it is kept for good among its earlier versions.")
                .arg(parts.join(QStringLiteral(" and "))),
            {{QStringLiteral("Earlier &versions..."), [this] { ui_->mnuToolsVersions->trigger(); }, false}});
}

// ---- What the file would not give back

void frmMain::ShowLostPlaces(const std::vector<LostPlace>& places) {
    if (QApplication::activeModalWidget() !=
        nullptr) { // Two editors of one place would overwrite each other.
        QTimer::singleShot(WaitForEditor, this, [this, places, path = session_.FileName()] {
            if (path == session_.FileName())
                ShowLostPlaces(places);
        });
        return;
    }
    frmReadBack form(places, this);
    if (form.exec() == QDialog::Accepted)
        RunCommand(dialogs_, this, [&] { OpenEditor(form.Selected().place); });
}

} // namespace zem
