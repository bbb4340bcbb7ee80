// The open game as a web page, for players without the editor.
#include "commands/Publish.h"
#include "files/ReplaceFile.h"
#include "forms/RunCommand.h"
#include "qt/QtText.h"
#include "session/ProblemWatch.h"
#include "windows/frmMain.h"
#include "writer/OutputFile.h"
#include "writer/SaveGame.h"

#include <QFileInfo>

#include <algorithm>
#include <exception>
#include <utility>

namespace zem {

namespace {

constexpr int MostErrorsTold = 5;

const QString PublishTitle = QStringLiteral("Publish as web page");

/// The bytes that a save of the game would write.
class SavedBytes : public Output {
public:
    void Write(std::string_view bytes) override { bytes_ += bytes; }
    void Close() override {}
    std::string Take() { return std::move(bytes_); }

private:
    std::string bytes_;
};

/// A page that is made and not written yet.
struct MadePage {
    std::string html;
    QStringList remarks; // what it does without
    QStringList errors;  // of the game, the first ones
    int errorCount = 0;
    QString problem; // why there is no page; empty when there is one
};

void AddErrors(MadePage& made, const FoundProblems& found) {
    made.errorCount = found.CountOf(problems::Level::Error);
    for (const problems::Problem& problem : found.problems)
        if (problem.level == problems::Level::Error && made.errors.size() < MostErrorsTold)
            made.errors.append(ToQt(found.game->Describe(problem.place) + ": " + problem.text));
}

MadePage MakePage(const GameModel& game, PublishSource source, const std::string& programFolder) {
    MadePage made;
    try {
        SavedBytes saved;
        WriteGame(game, source.name, saved);
        source.bytes = saved.Take();
        PublishedPage page = PublishGame(source, programFolder);
        made.html = std::move(page.html);
        for (const std::string& remark : page.remarks)
            made.remarks.append(QString::fromStdString(remark));
    } catch (const KelError& error) {
        made.problem = ToQt(error.ProblemWithText());
    } catch (const std::exception& error) { // most likely out of memory
        made.problem = QString::fromUtf8(error.what());
    }
    return made;
}

/// The page that is offered: the game's name beside the game.
QString OfferedPage(const QString& game) {
    const QFileInfo file(game);
    return game.isEmpty() ? QStringLiteral("game.html")
                          : file.path() + u'/' + file.completeBaseName() + QLatin1String(".html");
}

} // namespace

void frmMain::AddPublishing() {
    AddCommand("mnuToolsPublish", "Pu&blish as web page...", "", [this] {
        const QString out = dialogs_.AskSaveFile(this, {PublishTitle, QStringLiteral("html"),
                                                        QStringLiteral("Web page (*.html)|*.html"),
                                                        OfferedPage(session_.FileName())});
        if (!out.isEmpty())
            Publish(out);
    });
}

void frmMain::Publish(const QString& out) {
    const QFileInfo file(session_.FileName());
    const bool hasFile = !session_.FileName().isEmpty();
    PublishSource source;
    source.name = hasFile ? file.completeBaseName().toStdString() : "Game";
    source.folder = hasFile ? PathFromQt(file.absolutePath()) : "";
    source.hasFolder = hasFile;
    ShowStatus(QStringLiteral("Making the page..."));
    publishing_.Run(
        *this,
        [game = session_.Game(), check = problems_->CheckOf(session_.Game()), source,
         programs = PathFromQt(programFolder_)](const IsOutdated&) {
            MadePage made = MakePage(game, source, programs);
            AddErrors(made, *check());
            return made;
        },
        [this, out](const MadePage& made) {
            RunCommand(dialogs_, this, [&] {
                ShowStatus(QString());
                if (!made.problem.isEmpty())
                    throw CommandError(QStringLiteral("The game is not published: %1.").arg(made.problem),
                                       PublishTitle);
                if (made.errorCount == 0 || MayPublish(made.errors, made.errorCount))
                    WritePage(out, made.html, made.remarks);
            });
        });
}

/// Asks whether a game with errors is to be published all the same.
bool frmMain::MayPublish(const QStringList& errors, int count) {
    QString text = count == 1 ? QStringLiteral("The game has an error:")
                              : QStringLiteral("The game has %1 errors:").arg(count);
    text += u'\n' + errors.join(u'\n');
    if (count > errors.size())
        text += QStringLiteral("\n... and %1 more").arg(count - errors.size());
    text += QStringLiteral("\n\nPublish it all the same?");
    return dialogs_.ShowMessageBox(this, text, PublishTitle, QMessageBox::Yes | QMessageBox::No,
                                   QMessageBox::Warning) == QMessageBox::Yes;
}

void frmMain::WritePage(const QString& out, const std::string& html, const QStringList& remarks) {
    try {
        ReplaceFile(PathFromQt(out), [&](const std::string& target) {
            OutputFile page(target);
            page.Write(html);
            page.Close();
        });
    } catch (const KelError& error) {
        throw CommandError(QStringLiteral("%1 is not written: %2.").arg(out, ToQt(error.ProblemWithText())),
                           PublishTitle);
    }
    ShowStatus(QStringLiteral("Published as %1.").arg(out));
    if (!remarks.isEmpty())
        dialogs_.ShowMessageBox(this, QStringLiteral("The page is written, but:\n") + remarks.join(u'\n'),
                                PublishTitle);
}

} // namespace zem
