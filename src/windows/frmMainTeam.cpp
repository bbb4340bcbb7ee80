// What several authors of one game need in the main window: what has changed, and merging.
#include "base/TextFile.h"
#include "commands/ConflictFile.h"
#include "forms/RunCommand.h"
#include "merge/ConflictMarks.h"
#include "panels/ChangesPanel.h"
#include "panels/FiguresPanel.h"
#include "panels/MergePanel.h"
#include "panels/frmDifferences.h"
#include "panels/frmMerge.h"
#include "reader/ReadVersion.h"
#include "script/ScriptEditing.h"
#include "session/GameMerge.h"
#include "session/ReadVersionFile.h"
#include "windows/frmMain.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>
#include <vector>

namespace zem {

void frmMain::AddTeam() {
    const auto open = [this](const Place& place) { OpenEditor(place); };
    AddPanel(
        QStringLiteral("mnuToolsChanges"), QStringLiteral("&Changes"), {},
        [this, open] { return new ChangesPanel(session_, versions_, open, this); }, Qt::BottomDockWidgetArea);
    AddPanel(
        QStringLiteral("mnuToolsFigures"), QStringLiteral("Fi&gures"), {},
        [this, open] { return new FiguresPanel(session_, context_.scripts.Commands(), open, this); },
        Qt::RightDockWidgetArea);
    mergeCommand_ = AddPanel(
        QStringLiteral("mnuToolsMergePanel"), QStringLiteral("Merge Panel"), {},
        [this, open] { return new MergePanel(*merge_, dialogs_, open, this); }, Qt::BottomDockWidgetArea);
    AddCommand("mnuToolsMerge", "Merge wi&th Another Version...", "", [this] { Merge(); });
    connect(merge_, &GameMerge::Merged, this, &frmMain::ShowMerge);
    connect(merge_, &GameMerge::CouldNotRemove, this, [this](const QString& file) {
        ShowBar(
            QStringLiteral("All conflicts are settled, but their list cannot be removed: %1. Please do that "
                           "yourself.")
                .arg(file),
            {});
    });
    connect(&session_, &GameSession::Inspected, this, &frmMain::ShowLeftConflicts);
}

void frmMain::Merge() {
    const QString game = session_.FileName();
    frmMerge form(game, game.isEmpty() ? std::vector<FileVersion>() : versions_.List(game), dialogs_, this);
    if (form.exec() != QDialog::Accepted)
        return;
    merge::MergeVersions versions;
    versions.ours = session_.Game();
    versions.theirs = ReadVersionFile(form.Theirs(), session_.Game());
    if (form.Base().isEmpty())
        ReadVersion(versions.base, {});
    else
        versions.base = ReadVersionFile(form.Base(), session_.Game());
    merge_->Begin(std::move(versions));
}

void frmMain::ShowMerge() {
    const std::size_t count = merge_->Conflicts().size();
    if (count == 0) {
        ShowBar(
            QStringLiteral("Both versions are merged without a conflict. The problem list tells what does "
                           "not fit together."),
            {});
        merge_->Finish();
    } else if (!mergeCommand_->isChecked()) {
        mergeCommand_->trigger();
    }
    ShowProblems();
}

void frmMain::ShowDifferences(const QString& file) {
    const auto read = [file, mine = session_.Game()] {
        return ComparedGames{ReadVersionFile(file, mine), mine};
    };
    frmDifferences(QStringLiteral("What the open game has that %1 has not.").arg(QFileInfo(file).fileName()),
                   read, this)
        .exec();
}

/// Offers to settle what a merge outside of the editor has left.
void frmMain::ShowLeftConflicts(const FileInspection& found) {
    const bool hasMarks =
        std::any_of(found.remarks.begin(), found.remarks.end(),
                    [](const LoadRemark& remark) { return remark.kind == RemarkKind::MergeMark; });
    const QString file = session_.FileName();
    if (hasMarks) {
        ShowBar(QStringLiteral("Git left both versions of what two authors changed in this file. They can be "
                               "merged by room and field."),
                {{QStringLiteral("Mer&ge both versions"),
                  [this, file] { RunCommand(dialogs_, this, [&] { MergeMarked(file); }); }, true}});
        return;
    }
    const QString list = file + QLatin1String(".conflicts");
    if (!QFileInfo::exists(list))
        return;
    ShowBar(QStringLiteral("A merge of this game left conflicts; it holds your version there. The other one "
                           "stands in %1.")
                .arg(QFileInfo(list).fileName()),
            {{QStringLiteral("Sett&le the conflicts"),
              [this, list] { RunCommand(dialogs_, this, [&] { SettleConflicts(list); }); }, true}});
}

void frmMain::MergeMarked(const QString& file) {
    const auto parts = merge::TakeMarksApart(ReadFile(PathFromQt(file)));
    if (!parts)
        throw CommandError(QStringLiteral("The marks in %1 are not whole: a line \"<<<<<<<\", \"=======\" or "
                                          "\">>>>>>>\" is missing. Nothing is changed.")
                               .arg(QFileInfo(file).fileName()),
                           QStringLiteral("Merge"));
    merge::MergeVersions versions;
    const std::pair<GameModel*, const std::string*> all[] = {
        {&versions.base, &parts->base}, {&versions.ours, &parts->ours}, {&versions.theirs, &parts->theirs}};
    for (const auto& [game, bytes] : all) {
        game->ErrorMessages = session_.Game().ErrorMessages;
        ReadVersion(*game, *bytes);
    }
    merge_->Begin(std::move(versions));
}

void frmMain::SettleConflicts(const QString& list) {
    merge::MergeVersions versions;
    try {
        versions = ReadConflictFile(ReadFile(PathFromQt(list)), session_.Game().ErrorMessages);
    } catch (const KelError& error) {
        throw CommandError(QStringLiteral("%1. The file is left as it is.").arg(DescribeError(list, error)),
                           QStringLiteral("Merge"));
    }
    merge_->GoOn(std::move(versions), list);
}

} // namespace zem
