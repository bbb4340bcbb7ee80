// The problems of the game in the main window: how many there are, which rooms have some, and their panel.
#include "forms/RunCommand.h"
#include "panels/MapPanel.h"
#include "panels/ProblemsPanel.h"
#include "panels/ResultList.h"
#include "script/ScriptEditing.h"
#include "session/ProblemWatch.h"
#include "session/RenameTrail.h"
#include "session/RunWatch.h"
#include "ui_frmMain.h"
#include "windows/EditorMarks.h"
#include "windows/frmMain.h"

#include <QToolButton>

#include <algorithm>

namespace zem {

namespace {

QString Plural(int count, const char* word) {
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(word)) +
           (count == 1 ? QString() : QStringLiteral("s"));
}

/// What is wrong in each room: its errors and warnings, and whether it can be reached.
std::vector<RoomRemark> RemarksOfRooms(const FoundProblems& found) {
    constexpr qsizetype MostWords = 400;
    std::vector<RoomRemark> remarks;
    if (!found.game)
        return remarks;
    remarks.resize(static_cast<std::size_t>(found.game->Game().Rooms.Count()));
    for (const problems::Problem& problem : found.problems) {
        const Place owner = found.game->Owners().Path(problem.place).front();
        const PlaceStep& step = owner.steps.front();
        if (step.list != FieldId::GameRooms || step.entry < 1)
            continue;
        RoomRemark& remark = remarks[static_cast<std::size_t>(step.entry) - 1];
        remark.isUnreachable = remark.isUnreachable || std::string_view(problem.id) == "M01";
        if (problem.level == problems::Level::Hint)
            continue;
        const auto sign =
            problem.level == problems::Level::Error ? RoomRemark::Sign::Error : RoomRemark::Sign::Warning;
        remark.sign = std::max(remark.sign, sign);
        if (remark.words.size() < MostWords)
            remark.words += (remark.words.isEmpty() ? QString() : QStringLiteral("\n")) + ToQt(problem.text);
    }
    return remarks;
}

/// The icon of a room without problems; an empty one so that all names stand in one line where others have
/// some.
QIcon IconOfNothing(bool isBesideOthers) {
    if (!isBesideOthers)
        return {};
    QPixmap nothing(1, 1);
    nothing.fill(Qt::transparent);
    return QIcon(nothing);
}

} // namespace

void frmMain::AddProblems() {
    runs_ = new RunWatch(session_, this); // its runs are in their file before their names follow
    renames_ = new RenameTrail(session_, context_.scripts.Commands(), this);
    connect(renames_, &RenameTrail::CouldNotFollow, this, [this](const QString& text) { ShowBar(text, {}); });
    problems_ = new ProblemWatch(session_, context_.scripts.Commands(), *renames_, this);
    editorChecks_ = new EditorChecks(this);
    butProblems_ = new QToolButton(this);
    butProblems_->setObjectName(QStringLiteral("butProblems"));
    butProblems_->setAutoRaise(true);
    butProblems_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    butProblems_->setFocusPolicy(Qt::NoFocus); // the command has a key
    ui_->StatusBar1->addPermanentWidget(butProblems_);
    const int height = fontMetrics().ascent();
    ui_->lstRooms->setIconSize(QSize(height, height));

    QAction* panel = AddPanel(
        QStringLiteral("mnuToolsProblems"), QStringLiteral("&Problems"), {},
        [this] {
            problemsPanel_ = new ProblemsPanel(
                session_, *problems_, dialogs_, [this](const Place& place) { OpenEditor(place); }, this);
            AddNameCommands(*problemsPanel_->findChild<ResultList*>());
            return problemsPanel_.data();
        },
        Qt::BottomDockWidgetArea);
    const auto goOn = [this, panel](bool backwards) {
        if (!panel->isChecked())
            panel->trigger();
        problemsPanel_->GoToNext(backwards);
    };
    AddCommand("mnuToolsNextProblem", "Next Problem", "F8", [goOn] { goOn(false); });
    AddCommand("mnuToolsPreviousProblem", "Previous Problem", "Shift+F8", [goOn] { goOn(true); });
    AddCommand("mnuToolsFixProblem", "Fix Problem", "Ctrl+.", [this] {
        if (problemsPanel_ != nullptr && problemsPanel_->isVisible())
            problemsPanel_->FixSelected();
    });
    connect(butProblems_, &QToolButton::clicked, panel, &QAction::trigger);
    connect(problems_, &ProblemWatch::Checked, this, &frmMain::ShowProblems);
    connect(problems_, &ProblemWatch::NotesDamaged, this, [this](const QString& text) { ShowBar(text, {}); });
    ShowProblems();
}

void frmMain::ShowProblems() {
    const FoundProblems& found = problems_->Found();
    const int errors = found.CountOf(problems::Level::Error);
    const int warnings = found.CountOf(problems::Level::Warning);
    butProblems_->setVisible(found.game != nullptr);
    butProblems_->setText(errors + warnings == 0
                              ? QStringLiteral("No problems")
                              : Plural(errors, "error") + QStringLiteral(", ") + Plural(warnings, "warning"));
    butProblems_->setAccessibleName(butProblems_->text());
    butProblems_->setIcon(errors > 0     ? IconOf(problems::Level::Error, palette())
                          : warnings > 0 ? IconOf(problems::Level::Warning, palette())
                                         : QIcon());
    const std::array<QIcon, 3> icons = {IconOfNothing(errors + warnings > 0),
                                        IconOf(problems::Level::Warning, palette()),
                                        IconOf(problems::Level::Error, palette())};
    remarks_ = RemarksOfRooms(found);
    rooms_.ShowIcons([remarks = remarks_, icons](int row) {
        const auto room = static_cast<std::size_t>(row);
        return icons[room < remarks.size() ? static_cast<std::size_t>(remarks[room].sign) : 0];
    });
    ShowProblemsOnMap();
}

void frmMain::ShowProblemsOnMap() {
    if (mapPanel_ != nullptr)
        mapPanel_->Canvas().ShowRemarks(WithRoomsNeverEntered(remarks_));
}

} // namespace zem
