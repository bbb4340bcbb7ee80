// The game as a book, a table, data or a walkthrough, for people without the editor.
#include "base/TextFile.h"
#include "export/Export.h"
#include "export/ExportForms.h"
#include "files/ReplaceFile.h"
#include "forms/RunCommand.h"
#include "map/Layout.h"
#include "painting/BookPages.h"
#include "routing/Router.h"
#include "script/ScriptEditing.h"
#include "windows/frmMain.h"
#include "writer/OutputFile.h"

#include <QFileInfo>

#include <algorithm>
#include <optional>
#include <string_view>

namespace zem {

namespace {

constexpr const char* PagesEnding = ".pdf";
constexpr const char* WalkthroughEnding = ".txt";
constexpr std::size_t MostRunsAsked = 8; // that can be told apart in a box with a button for each

struct ExportOutcome {
    QString problem; // in plain words; empty when the file is written
};

QString ExportFilter() {
    QString filter;
    const auto add = [&filter](const char* name, const char* ending) {
        filter += QStringLiteral("%1 (*%2)|*%2|").arg(QLatin1String(name), QLatin1String(ending));
    };
    for (const exports::ExportForm& form : exports::ExportForms())
        if (std::string_view(form.ending) != ".htm")
            add(form.name, form.ending);
    add("Document of pages, with the map", PagesEnding);
    add("Walkthrough of a recorded run", WalkthroughEnding);
    filter.chop(1);
    return filter;
}

std::string ExportedBytes(const GameModel& game, const CommandLookup& commands, const std::string& out,
                          const std::optional<play::RecordedRun>& run) {
    if (run)
        return exports::AsWalkthrough(game, *run);
    if (const exports::ExportForm* form = exports::FormOf(out))
        return form->write(game, commands);
    const map::MapGraph graph = map::ReadMapGraph(game);
    return BookPages(exports::AsHtml(game, commands), routing::RouteMap(graph, map::LayOut(graph)));
}

ExportOutcome WriteExport(const GameModel& game, const CommandLookup& commands, const std::string& out,
                          const std::optional<play::RecordedRun>& run) {
    try {
        const std::string bytes = ExportedBytes(game, commands, out, run);
        ReplaceFile(out, [&](const std::string& target) {
            OutputFile file(target);
            file.Write(bytes);
            file.Close();
        });
    } catch (const std::exception& error) {
        return {ToQt(error.what())};
    }
    return {};
}

} // namespace

void frmMain::AddExport() {
    AddCommand("mnuToolsExport", "E&xport...", "Ctrl+E", [this] {
        const QString out = dialogs_.AskSaveFile(
            this, {QStringLiteral("Export"), QStringLiteral("html"), ExportFilter(), session_.FileName()});
        if (!out.isEmpty())
            Export(out);
    });
    AddCommand("mnuToolsExportAgain", "Export Again", "Ctrl+Shift+E", [this] {
        const QString out = settings_.LastExport(session_.FileName());
        if (out.isEmpty())
            throw CommandError(QStringLiteral("This game was not exported yet."), QStringLiteral("Export"));
        Export(out);
    });
    AddPublishing();
}

void frmMain::Export(const QString& out) {
    const std::string file = PathFromQt(out);
    const QString ending = u'.' + QFileInfo(out).suffix().toLower();
    std::optional<play::RecordedRun> run;
    if (ending == QLatin1String(WalkthroughEnding)) {
        run = AskRun();
        if (!run)
            return;
    } else if (exports::FormOf(file) == nullptr && ending != QLatin1String(PagesEnding)) {
        throw CommandError(
            QStringLiteral("The ending of %1 does not tell what to write. A book ends in .html, "
                           ".md or .pdf, the table of the rooms in .csv, all data in .json, the "
                           "map in .dot, a walkthrough in .txt.")
                .arg(QFileInfo(out).fileName()),
            QStringLiteral("Export"));
    }
    ShowStatus(QStringLiteral("Exporting..."));
    exporting_.Run(
        *this,
        [game = session_.Game(), &commands = context_.scripts.Commands(), file, run](const IsOutdated&) {
            return WriteExport(game, commands, file, run);
        },
        [this, out, game = session_.FileName()](const ExportOutcome& outcome) {
            RunCommand(dialogs_, this, [&] {
                ShowStatus(QString());
                if (!outcome.problem.isEmpty())
                    throw CommandError(QStringLiteral("%1 is not written: %2.").arg(out, outcome.problem),
                                       QStringLiteral("Export"));
                settings_.StoreLastExport(game, out);
                ShowStatus(QStringLiteral("Exported to %1.").arg(out));
            });
        });
}

/// The run that becomes a walkthrough; nothing when the author cancelled.
std::optional<play::RecordedRun> frmMain::AskRun() {
    const QString file = session_.FileName() + QLatin1String(".tests");
    if (session_.FileName().isEmpty() || !QFileInfo::exists(file))
        throw CommandError(
            QStringLiteral("There is no recorded run beside this game to make a walkthrough of."),
            QStringLiteral("Export"));
    const std::string bytes = ReadFile(PathFromQt(file));
    const play::RecordedRuns recorded = play::ReadRuns(bytes);
    std::size_t chosen = 0;
    if (recorded.runs.size() > 1 && recorded.problem.empty()) {
        QStringList names;
        for (std::size_t k = 0; k < std::min(recorded.runs.size(), MostRunsAsked); ++k)
            names.append(QString::fromStdString(recorded.runs[k].name).replace(u'&', QLatin1String("&&")));
        const int answer = dialogs_.AskChoice(this, QStringLiteral("Which run is the walkthrough to follow?"),
                                              QStringLiteral("Export"), names);
        if (answer < 0)
            return std::nullopt;
        chosen = static_cast<std::size_t>(answer);
    }
    try {
        return exports::RunCalled(bytes, recorded.runs.empty() ? "" : recorded.runs[chosen].name);
    } catch (const KelError& error) {
        throw CommandError(DescribeError(file, error) + u'.', QStringLiteral("Export"));
    }
}

} // namespace zem
