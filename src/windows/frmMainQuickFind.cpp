// Any command and any name of the main window, by a few typed words.
#include "forms/RunCommand.h"
#include "game/WhereUsed.h"
#include "qt/QtText.h"
#include "script/ScriptEditing.h"
#include "ui_frmMain.h"
#include "windows/AnyCommand.h"
#include "windows/BeginWith.h"
#include "windows/CommandWords.h"
#include "windows/Landing.h"
#include "windows/NamesOfGame.h"
#include "windows/frmMain.h"
#include "windows/frmOptions.h"
#include "windows/frmQuickFind.h"
#include "windows/frmReadyMade.h"

#include <QSet>

#include <algorithm>
#include <numeric>

namespace zem {

namespace {

const QLatin1String OptionPrefix("option:"); // of the names by which what was chosen is remembered
const QLatin1String PagePrefix("page:");
const QLatin1String PiecePrefix("piece:");
const QLatin1String BeginPrefix("begin:");

/// The latest gets the highest number.
void NoteUse(std::vector<AnyCommand>& commands, const QStringList& recent) {
    for (AnyCommand& command : commands) {
        const qsizetype at = recent.indexOf(command.name);
        command.found.lastUsed = at < 0 ? 0 : static_cast<int>(recent.size() - at);
    }
}

/// Lower is better: the name itself, its beginning, the beginning of a word in it, anywhere in it; -1 where
/// a word is missing.
int RankOfName(const QString& name, const QString& typed, const QStringList& words) {
    for (const QString& word : words)
        if (!name.contains(word))
            return -1;
    if (name == typed)
        return 0;
    if (name.startsWith(typed))
        return 1;
    return name.contains(u' ' + words.value(0)) || name.startsWith(words.value(0)) ? 2 : 3;
}

std::vector<int> FittingNames(const QStringList& names, const QString& typed) {
    const QString lowered = typed.trimmed().toLower();
    const QStringList words = lowered.split(u' ', Qt::SkipEmptyParts);
    std::vector<int> found;
    std::vector<int> ranks(static_cast<std::size_t>(names.size()), 0);
    for (int k = 0; k < names.size(); ++k) {
        const int rank = ranks[static_cast<std::size_t>(k)] = RankOfName(names[k], lowered, words);
        if (rank >= 0)
            found.push_back(k);
    }
    std::stable_sort(found.begin(), found.end(), [&](int a, int b) {
        return ranks[static_cast<std::size_t>(a)] < ranks[static_cast<std::size_t>(b)];
    });
    return found;
}

} // namespace

void frmMain::AddQuickFind() {
    insertReadyMade_ = AddCommand("mnuToolsReadyMade", "Insert Ready-Made...", "Ctrl+Shift+I",
                                  [this] { InsertReadyMade(); });
    AddCommand("mnuToolsAnyCommand", "Any Command...", "Ctrl+Shift+P", [this] { AskForCommand(); });
    AddCommand("mnuToolsAnyName", "Any Name...", "Ctrl+K", [this] { AskForName(); });
    AddRoomCommands();
}

std::vector<AnyCommand> frmMain::AllCommands() {
    std::vector<AnyCommand> commands = CommandsOf(*this);
    for (const OptionField& field : OptionFields()) {
        const auto open = [this, field] {
            LandInNextWindow({{.control = field.control}});
            ui_->mnuViewOptions->trigger();
        };
        commands.push_back({{field.title, QStringLiteral("Options"), {}, WordsForOption(field.control)},
                            OptionPrefix + field.control,
                            open});
    }
    for (const GameToBegin& game : GamesToBegin(programFolder_))
        commands.push_back({{QStringLiteral("Begin with: %1").arg(game.title),
                             QStringLiteral("Examples"),
                             {},
                             QStringLiteral("new game; template; sample; example; ") + game.about},
                            BeginPrefix + game.title,
                            [this, game] { document_.OpenVersion(game.path); }});
    for (const ReadyMade& piece : ReadPieces(programFolder_ + QLatin1String("/pieces")))
        commands.push_back({{QStringLiteral("Insert ready-made: %1").arg(ToQt(piece.title)),
                             QStringLiteral("Tools"),
                             {},
                             ToQt(piece.words) + QLatin1String("; make a ") + ToQt(piece.title) +
                                 QLatin1String("; ") + ToQt(piece.about)},
                            PiecePrefix + ToQt(piece.title),
                            [this, title = ToQt(piece.title)] { InsertReadyMade(title); }});
    for (const ManualPage& page : PagesOfManual(programFolder_ + QLatin1String("/ZEM.HTM")))
        commands.push_back({{page.title, QStringLiteral("Manual"), {}, WordsForPage(page.place)},
                            PagePrefix + page.place,
                            [this, page] { context_.shell.ShowManual(page.place, *this); }});
    return commands;
}

void frmMain::InsertReadyMade(const QString& title) {
    const Place here = SelectedPlace();
    const int room = here.Depth() > 0 ? here.steps[0].entry : 0;
    frmReadyMade form(session_.Game(), context_.scripts.Commands(),
                      ReadPieces(programFolder_ + QLatin1String("/pieces")),
                      room == 0 ? std::string() : session_.Game().Rooms[room].Name, dialogs_, this);
    if (!title.isEmpty())
        form.Choose(title);
    if (form.exec() != QDialog::Accepted)
        return;
    EditAsOneStep(QStringLiteral("insert %1").arg(ToQt(form.Result().what)),
                  [&] { session_.Change([&form](GameModel& game) { game = form.Result().game; }); });
    ShowStatus(QStringLiteral("%1 is in the game; Undo takes it out again.").arg(form.Title()));
}

void frmMain::AskForCommand() {
    std::vector<AnyCommand> commands = AllCommands();
    NoteUse(commands, settings_.RecentCommands());
    std::vector<Findable> all;
    for (const AnyCommand& command : commands)
        all.push_back(command.found);
    const ActionRanking ranking(all);
    frmQuickFind form(
        QStringLiteral("Any command"), QStringLiteral("What would you like to do?"),
        [&ranking](const QString& typed) { return ranking.Fitting(typed); },
        [&all](int row) {
            const Findable& found = all[static_cast<std::size_t>(row)];
            return frmQuickFind::Row{found.title, found.where, found.keys, found.whyNot};
        },
        this);
    if (form.exec() != QDialog::Accepted)
        return;
    const AnyCommand& chosen = commands[static_cast<std::size_t>(form.Chosen())];
    settings_.AddToRecentCommands(chosen.name);
    chosen.run();
}

void frmMain::AskForName() {
    std::vector<NameOfGame> names = NamesOfRecords(session_.Game());
    for (const NameKind kind : {NameKind::Flag, NameKind::Variable, NameKind::Timer})
        for (const std::string& name : *context_.scripts.Names(kind))
            names.push_back({kind, name});
    QStringList lowered;
    lowered.reserve(static_cast<qsizetype>(names.size()));
    for (const NameOfGame& name : names)
        lowered.append(ToQt(name.name).toLower());
    frmQuickFind form(
        QStringLiteral("Any name"), QStringLiteral("Which room, thing, item, procedure, text ...?"),
        [&lowered](const QString& typed) { return FittingNames(lowered, typed); },
        [&names](int row) {
            const NameOfGame& name = names[static_cast<std::size_t>(row)];
            const QString kind = QLatin1String(Describe(name.kind));
            return frmQuickFind::Row{ToQt(name.name),
                                     name.where.empty() ? kind
                                                        : kind + QStringLiteral(" in ") + ToQt(name.where),
                                     {},
                                     {}};
        },
        this);
    if (form.exec() != QDialog::Accepted)
        return;
    const NameOfGame& chosen = names[static_cast<std::size_t>(form.Chosen())];
    if (chosen.place == Place())
        ShowWhereUsed({chosen.kind, chosen.name});
    else
        OpenEditor(chosen.place);
}

} // namespace zem
