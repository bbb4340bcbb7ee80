#include "panels/ProblemsPanel.h"

#include "forms/ColourRoles.h"
#include "forms/RunCommand.h"
#include "game/PlaceLine.h"
#include "panels/ResultList.h"
#include "problems/Checks.h"
#include "problems/FindProblems.h"
#include "session/GameSession.h"
#include "session/ProblemWatch.h"

#include <QCheckBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace zem {

namespace {

constexpr int IconSize = 32; // pixels; shown smaller

QString Plural(int count, const char* word) {
    return QStringLiteral("%1 %2%3").arg(count).arg(QLatin1String(word),
                                                    count == 1 ? QString() : QStringLiteral("s"));
}

/// Errors and warnings stand where they are, hints under what they are, because there may be many of a kind.
ResultRow RowOf(const problems::CheckedGame& game, const problems::Problem& problem,
                const QPalette& palette) {
    ResultRow row;
    if (problem.level == problems::Level::Hint) {
        const problems::Check* check = problems::FindCheck(problem.id);
        row.group = QStringLiteral("Hints: ") + QLatin1String(check == nullptr ? problem.id : check->title);
    } else {
        row.group = ToQt(GroupTitle(game.Game(), GroupOf(game.Owners(), problem.place)));
    }
    row.what = QLatin1String(problems::WordFor(problem.level));
    row.where = problem.fileLine != 0 ? QStringLiteral("line %1 of the file").arg(problem.fileLine)
                                      : ToQt(game.Describe(problem.place));
    row.text = ToQt(problem.text);
    row.icon = IconOf(problem.level, palette);
    return row;
}

bool IsSameKind(const problems::Problem& a, const problems::Problem& b) {
    return std::string_view(a.id) == b.id;
}

} // namespace

QIcon IconOf(problems::Level level, const QPalette& palette) {
    QPixmap picture(IconSize, IconSize);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor colour = ColourOf(level == problems::Level::Error     ? ColourRole::Error
                                   : level == problems::Level::Warning ? ColourRole::Warning
                                                                       : ColourRole::SecondaryText,
                                   palette);
    const QColor ground = ColourOf(ColourRole::Pane, palette);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    QPen line(ground, 3.5, Qt::SolidLine, Qt::RoundCap);
    switch (level) {
    case problems::Level::Error:
        painter.drawEllipse(2, 2, 28, 28);
        painter.setPen(line);
        painter.drawLine(11, 11, 21, 21);
        painter.drawLine(21, 11, 11, 21);
        break;
    case problems::Level::Warning:
        painter.drawPolygon(QPolygon({{16, 2}, {31, 29}, {1, 29}}));
        painter.setPen(line);
        painter.drawLine(16, 12, 16, 19);
        painter.drawPoint(16, 25);
        break;
    case problems::Level::Hint:
        painter.setBrush(Qt::NoBrush);
        line.setColor(colour);
        painter.setPen(line);
        painter.drawEllipse(3, 3, 26, 26);
        painter.drawPoint(16, 10);
        painter.drawLine(16, 16, 16, 23);
        break;
    }
    return QIcon(picture);
}

ProblemsPanel::ProblemsPanel(GameSession& session, ProblemWatch& watch, Dialogs& dialogs,
                             std::function<void(const Place&)> open, QWidget* parent)
    : QDockWidget(QStringLiteral("Problems"), parent),
      session_(session),
      watch_(watch),
      dialogs_(dialogs),
      open_(std::move(open)),
      lblCounts_(new QLabel(this)),
      chkHints_(new QCheckBox(QStringLiteral("Show hints"), this)),
      txtFilter_(new QLineEdit(this)),
      butFixAll_(new QPushButton(QStringLiteral("Fix all of this kind..."), this)),
      lstProblems_(new ResultList(this)),
      lblProblem_(new QLabel(this)),
      offers_(new QWidget(this)),
      offersLayout_(new QHBoxLayout(offers_)),
      butSilence_(new QPushButton(QStringLiteral("Silence..."), this)) {
    setObjectName(QStringLiteral("dckProblems"));
    setWidget(MakeControls());
    lstProblems_->installEventFilter(this);
    connect(&watch_, &ProblemWatch::Checked, this, &ProblemsPanel::ShowFound);
    connect(chkHints_, &QCheckBox::toggled, this, &ProblemsPanel::ShowFound);
    connect(txtFilter_, &QLineEdit::textChanged, lstProblems_, &ResultList::SetFilter);
    connect(lstProblems_, &ResultList::SelectedChanged, this, &ProblemsPanel::ShowSelected);
    connect(lstProblems_, &ResultList::Chosen, this,
            [this] { RunCommand(dialogs_, this, [this] { OpenSelected(); }); });
    OnClick(butFixAll_, this, dialogs_, [this] { FixAll(); });
    OnClick(butSilence_, this, dialogs_, [this] { Silence(); });
    ShowFound();
}

QWidget* ProblemsPanel::MakeControls() {
    lblCounts_->setObjectName(QStringLiteral("lblProblemCounts"));
    chkHints_->setObjectName(QStringLiteral("chkProblemHints"));
    txtFilter_->setObjectName(QStringLiteral("txtProblemFilter"));
    txtFilter_->setPlaceholderText(QStringLiteral("Filter"));
    txtFilter_->setAccessibleName(QStringLiteral("Filter of the problems"));
    txtFilter_->setClearButtonEnabled(true);
    butFixAll_->setObjectName(QStringLiteral("butFixAll"));
    butSilence_->setObjectName(QStringLiteral("butSilence"));
    butSilence_->setToolTip(QStringLiteral("Leave this problem out from now on, with your reason (Delete)"));
    lstProblems_->setObjectName(QStringLiteral("lstProblems"));
    lstProblems_->setAccessibleName(QStringLiteral("Problems"));
    lblProblem_->setObjectName(QStringLiteral("lblProblem"));
    lblProblem_->setWordWrap(true);
    lblProblem_->setTextFormat(Qt::PlainText); // quotes what authors wrote
    lblProblem_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QSizePolicy stays = lblProblem_->sizePolicy();
    stays.setRetainSizeWhenHidden(true); // the buttons keep their places
    lblProblem_->setSizePolicy(stays);
    offersLayout_->setContentsMargins({});

    auto* controls = new QWidget(this);
    auto* column = new QVBoxLayout(controls);
    auto* top = new QHBoxLayout;
    top->addWidget(lblCounts_);
    top->addWidget(chkHints_);
    top->addStretch();
    top->addWidget(txtFilter_);
    top->addWidget(butFixAll_);
    column->addLayout(top);
    column->addWidget(lstProblems_, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(lblProblem_, 1);
    bottom->addWidget(offers_);
    bottom->addWidget(butSilence_);
    column->addLayout(bottom);
    return controls;
}

void ProblemsPanel::ShowFound() {
    const FoundProblems& found = watch_.Found();
    QString counts = Plural(found.CountOf(problems::Level::Error), "error") + QLatin1String(", ") +
                     Plural(found.CountOf(problems::Level::Warning), "warning") + QLatin1String(", ") +
                     Plural(found.CountOf(problems::Level::Hint), "hint");
    if (found.silenced > 0)
        counts += QStringLiteral(", %1 silenced").arg(found.silenced);
    lblCounts_->setText(found.game ? counts : QStringLiteral("Not checked yet"));

    shown_.clear();
    for (std::size_t number = 0; number < found.problems.size(); ++number)
        if (found.problems[number].level != problems::Level::Hint || chkHints_->isChecked())
            shown_.push_back(number);
    std::stable_partition(shown_.begin(), shown_.end(), [&](std::size_t number) {
        return found.problems[number].level != problems::Level::Hint;
    });
    std::vector<ResultRow> rows;
    for (const std::size_t number : shown_)
        rows.push_back(RowOf(*found.game, found.problems[number], palette()));
    lstProblems_->SetRows(std::move(rows));
}

const problems::Problem* ProblemsPanel::Selected() const {
    const int row = lstProblems_->Selected();
    if (row < 0 || static_cast<std::size_t>(row) >= shown_.size())
        return nullptr;
    return &watch_.Found().problems[shown_[static_cast<std::size_t>(row)]];
}

std::optional<Place> ProblemsPanel::SelectedPlace() const {
    const problems::Problem* problem = Selected();
    return problem == nullptr ? std::nullopt : std::optional(problem->place);
}

void ProblemsPanel::ShowSelected() {
    const problems::Problem* problem = Selected();
    ShowOffers({});
    butSilence_->setEnabled(problem != nullptr);
    butFixAll_->setEnabled(problem != nullptr && !problem->fixes.empty());
    lblProblem_->setVisible(problem != nullptr);
    lblProblem_->setText(problem == nullptr ? QString() : ToQt(problem->text));
    offering_.Cancel();
    if (problem == nullptr || problem->fixes.empty())
        return;
    offering_.Run(
        *this,
        [found = watch_.Shared(), problem](const IsOutdated&) { return OffersOf(*found->game, *problem); },
        [this](std::vector<problems::Fix> offers) { ShowOffers(std::move(offers)); });
}

void ProblemsPanel::ShowOffers(std::vector<problems::Fix> offers) {
    for (QPushButton* button : buttons_)
        button->deleteLater();
    buttons_.clear();
    fixes_ = std::move(offers);
    for (std::size_t number = 0; number < fixes_.size(); ++number) {
        auto* button =
            new QPushButton(ToQt(fixes_[number].button).replace(u'&', QLatin1String("&&")), offers_);
        button->setObjectName(QStringLiteral("butFix_%1").arg(number));
        if (number == 0)
            button->setToolTip(QStringLiteral("Ctrl+."));
        OnClick(button, this, dialogs_, [this, number] { Fix(fixes_[number]); });
        offersLayout_->addWidget(button);
        buttons_.push_back(button);
    }
}

void ProblemsPanel::Fix(const problems::Fix& fix) {
    const problems::Fix now = fix; // the list of fixes changes with the game
    session_.AsOneStep(QStringLiteral("fix: ") + ToQt(now.button),
                       [&] { session_.Change([&](GameModel& game) { game = now.apply(game); }); });
}

void ProblemsPanel::FixSelected() {
    if (!fixes_.empty())
        Fix(fixes_.front());
}

void ProblemsPanel::FixAll() {
    const problems::Problem* selected = Selected();
    if (selected == nullptr)
        return;
    const std::shared_ptr<const FoundProblems> found = watch_.Shared();
    std::vector<problems::Problem> alike;
    std::copy_if(found->problems.begin(), found->problems.end(), std::back_inserter(alike),
                 [&](const problems::Problem& problem) {
                     return IsSameKind(problem, *selected) && !problem.fixes.empty();
                 });
    QStringList lines;
    for (const problems::Problem& problem : alike)
        lines.append(ToQt(found->game->Describe(problem.place)) + QLatin1String(": ") +
                     ToQt(problem.fixes.front().button));
    constexpr qsizetype MostLines = 15;
    const qsizetype more = lines.size() - MostLines;
    if (more > 0)
        lines = lines.mid(0, MostLines) << QStringLiteral("and %1 more").arg(more);
    const QString question =
        QStringLiteral("This will be done, as one step, wherever it makes no new error:\n\n") +
        lines.join(u'\n');
    if (dialogs_.ShowMessageBox(this, question, QStringLiteral("Fix all of this kind"),
                                QMessageBox::Ok | QMessageBox::Cancel) != QMessageBox::Ok)
        return;
    const QString step = QStringLiteral("fix %1").arg(Plural(static_cast<int>(alike.size()), "problem"));
    fixingAll_.Run(
        *this, [found, alike](const IsOutdated&) { return problems::FixAll(*found->game, alike); },
        [this, found, step](GameModel fixed) {
            if (!SameGame(session_.Game(), found->game->Game()))
                return; // the author was faster; the list is renewed and can be asked again
            RunCommand(dialogs_, this, [&] {
                session_.AsOneStep(step, [&] { session_.Change([&](GameModel& game) { game = fixed; }); });
            });
        });
}

void ProblemsPanel::Silence() {
    const problems::Problem* problem = Selected();
    if (problem == nullptr)
        return;
    const problems::Problem silenced = *problem;
    const std::optional<QString> reason =
        dialogs_.AskText(this, QStringLiteral("Why is this no problem? The reason is kept beside the game."),
                         QStringLiteral("Silence"), QString());
    if (reason)
        watch_.Silence(silenced, *reason);
}

void ProblemsPanel::OpenSelected() {
    const problems::Problem* problem = Selected();
    if (problem != nullptr && problem->fileLine == 0)
        open_(Place(problem->place));
}

void ProblemsPanel::GoToNext(bool backwards) {
    lstProblems_->SelectNext(backwards);
    lstProblems_->setFocus();
}

bool ProblemsPanel::IsBusy() const {
    return watch_.IsChecking() || offering_.IsRunning() || fixingAll_.IsRunning();
}

bool ProblemsPanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched == lstProblems_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
        butSilence_->click();
        return true;
    }
    return QDockWidget::eventFilter(watched, event);
}

void ProblemsPanel::changeEvent(QEvent* event) {
    QDockWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && widget() != nullptr)
        ShowFound(); // the icons are drawn in its colours
}

} // namespace zem
