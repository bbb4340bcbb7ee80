#include "panels/frmReplace.h"

#include "base/KelError.h"
#include "forms/DialogSize.h"
#include "forms/RunCommand.h"
#include "forms/StorableInput.h"
#include "panels/FindOptions.h"
#include "session/GameSession.h"
#include "session/SearchIndex.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace zem {

namespace {

constexpr std::size_t MostReplacements = 1000; // are shown and made at once; all are counted
constexpr int LongestInStepName = 30;          // characters of the words

QString PlacesAre(std::size_t count, const char* one, const char* many) {
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : many));
}

QString InStepName(const QString& words) {
    return words.size() <= LongestInStepName ? words : words.left(LongestInStepName) + QStringLiteral("...");
}

} // namespace

frmReplace::frmReplace(GameSession& session, std::shared_ptr<SearchIndex> index, Dialogs& dialogs,
                       const FindQuery& query, RenameCommand rename, QWidget* parent)
    : QDialog(parent),
      session_(session),
      index_(std::move(index)),
      dialogs_(dialogs),
      rename_(std::move(rename)),
      txtFind_(new QLineEdit(this)),
      txtReplace_(new QLineEdit(this)),
      options_(new FindOptions(true, this)),
      lblAnswer_(new QLabel(this)),
      lstChanges_(new ChangeList(this)),
      chkAll_(new QCheckBox(QStringLiteral("Tick &all"), this)),
      butRename_(new QPushButton(QStringLiteral("Re&name..."), this)),
      butUndo_(new QPushButton(QStringLiteral("&Undo"), this)),
      butOK_(new QPushButton(QStringLiteral("&Replace ticked"), this)),
      butCancel_(new QPushButton(QStringLiteral("Close"), this)) {
    MakeControls();
    LayOutControls();
    txtFind_->setText(ToQt(query.words));
    txtFind_->selectAll();
    options_->Show(query);
    connect(txtFind_, &QLineEdit::textChanged, this, &frmReplace::MakePlan);
    connect(txtReplace_, &QLineEdit::textChanged, this, &frmReplace::MakePlan);
    connect(options_, &FindOptions::Changed, this, &frmReplace::MakePlan);
    connect(lstChanges_, &ChangeList::TicksChanged, this, &frmReplace::EnableButtons);
    connect(lstChanges_, &ChangeList::SelectedChanged, this, &frmReplace::EnableButtons);
    connect(chkAll_, &QCheckBox::clicked, this, [this] {
        chkAll_->setTristate(false);
        lstChanges_->TickAll(chkAll_->isChecked());
    });
    OnClick(butRename_, this, dialogs_, [this] { Rename(); });
    OnClick(butUndo_, this, dialogs_, [this] { TakeBack(); });
    OnClick(butOK_, this, dialogs_, [this] { Replace(); });
    connect(butCancel_, &QPushButton::clicked, this, &QDialog::reject);
    connect(&session_, &GameSession::Changed, this, [this] {
        if (!isChanging_)
            MakePlan();
    });
    MakePlan();
    RememberSize(*this);
}

void frmReplace::MakeControls() {
    setObjectName(QStringLiteral("frmReplace"));
    setWindowTitle(QStringLiteral("Replace"));
    txtFind_->setObjectName(QStringLiteral("txtReplaced"));
    RefuseUnstorableText(*txtFind_, dialogs_);
    txtReplace_->setObjectName(QStringLiteral("txtReplacement"));
    RefuseUnstorableText(*txtReplace_, dialogs_);
    txtFind_->installEventFilter(this);
    lblAnswer_->setObjectName(QStringLiteral("lblAnswer"));
    lblAnswer_->setWordWrap(true);
    lblAnswer_->setTextFormat(Qt::PlainText);
    lstChanges_->setObjectName(QStringLiteral("lstChanges"));
    lstChanges_->setAccessibleName(QStringLiteral("What changes"));
    chkAll_->setObjectName(QStringLiteral("chkAll"));
    butRename_->setObjectName(QStringLiteral("butRename"));
    butRename_->setToolTip(
        QStringLiteral("Gives the name in the selected row another one wherever it stands"));
    butUndo_->setObjectName(QStringLiteral("butUndo"));
    butUndo_->setToolTip(QStringLiteral("Takes back what was replaced"));
    butOK_->setObjectName(QStringLiteral("butOK"));
    butOK_->setDefault(true);
    butCancel_->setObjectName(QStringLiteral("butCancel"));
}

void frmReplace::LayOutControls() {
    auto* column = new QVBoxLayout(this);
    const auto addRow = [&](const QString& caption, QLineEdit* box) {
        auto* row = new QHBoxLayout;
        auto* label = new QLabel(caption, this);
        label->setBuddy(box);
        row->addWidget(label);
        row->addWidget(box, 1);
        column->addLayout(row);
        return label;
    };
    QLabel* find = addRow(QStringLiteral("&Find:"), txtFind_);
    QLabel* with = addRow(QStringLiteral("Replace &with:"), txtReplace_);
    find->setMinimumWidth(with->sizeHint().width());
    auto* options = new QHBoxLayout;
    options->addWidget(options_);
    options->addStretch();
    column->addLayout(options);
    column->addWidget(lblAnswer_);
    column->addWidget(lstChanges_, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(chkAll_);
    bottom->addStretch();
    for (QPushButton* button : {butRename_, butUndo_, butOK_, butCancel_})
        bottom->addWidget(button);
    column->addLayout(bottom);
    resize(860, 520);
}

frmReplace::Shown frmReplace::PlanOf(const GameIndex& index, const FindQuery& query,
                                     const std::string& words) {
    Shown shown;
    shown.plan = PlanReplace(index, query, words, MostReplacements);
    for (const Replacement& one : shown.plan.replacements)
        shown.rows.push_back({ToQt(index.Owners().Describe(one.change.place.WholeField())),
                              QLatin1String(Describe(one.kind)), ToQt(one.before.text),
                              ToQt(one.refusal.empty() ? one.after.text : one.refusal), one.isTicked,
                              one.refusal.empty(), static_cast<qsizetype>(one.before.marked.begin)});
    return shown;
}

void frmReplace::MakePlan() {
    doneStep_ = 0;
    plan_ = {};
    rows_.clear();
    game_ = session_.Game();
    const bool isAsked = !txtFind_->text().isEmpty() && !UnstorableCharacter(txtFind_->text()) &&
                         !UnstorableCharacter(txtReplace_->text());
    if (!isAsked) {
        work_.Cancel();
        ShowPlan({});
        lblAnswer_->setText(QStringLiteral("Type what to look for."));
        return;
    }
    work_.Run(
        *this,
        [index = index_, game = game_, query = options_->QueryFor(txtFind_->text()),
         words = FromQt(txtReplace_->text())](const IsOutdated&) {
            return index->Ask(game, [&](const GameIndex& asked) { return PlanOf(asked, query, words); });
        },
        [this](Shown shown) {
            ShowPlan(std::move(shown));
            TellPlan();
        });
    EnableButtons();
}

void frmReplace::ShowPlan(Shown shown) {
    plan_ = std::move(shown.plan);
    rows_ = std::move(shown.rows);
    lstChanges_->SetChanges(rows_);
}

void frmReplace::TellPlan() {
    if (!plan_.problem.empty()) {
        lblAnswer_->setText(ToQt(plan_.problem));
        return;
    }
    QStringList told = {plan_.count == 0 ? QStringLiteral("Nothing found.")
                                         : PlacesAre(plan_.count, "place found.", "places found.")};
    if (plan_.count > plan_.replacements.size())
        told.append(QStringLiteral("The first %1 are shown; the others come when these are replaced.")
                        .arg(plan_.replacements.size()));
    const auto names =
        static_cast<std::size_t>(std::count_if(plan_.replacements.begin(), plan_.replacements.end(),
                                               [](const Replacement& one) { return one.isName; }));
    if (names > 0)
        told.append(PlacesAre(names, "is a name: Rename changes it with all that refers to it.",
                              "are names: Rename changes them with all that refers to them."));
    lblAnswer_->setText(told.join(u' '));
}

void frmReplace::EnableButtons() {
    const bool isReady = !work_.IsRunning();
    const int ticked = lstChanges_->TickedCount();
    butOK_->setEnabled(isReady && ticked > 0);
    butOK_->setText(ticked == 0 ? QStringLiteral("&Replace ticked")
                                : QStringLiteral("&Replace %1 ticked").arg(ticked));
    butUndo_->setEnabled(isReady && doneStep_ != 0);
    const int boxes = lstChanges_->TickableCount();
    chkAll_->setEnabled(boxes > 0);
    chkAll_->setCheckState(ticked == 0       ? Qt::Unchecked
                           : ticked == boxes ? Qt::Checked
                                             : Qt::PartiallyChecked);
    const auto row = static_cast<std::size_t>(lstChanges_->Selected());
    butRename_->setEnabled(isReady && doneStep_ == 0 && row < plan_.replacements.size() &&
                           plan_.replacements[row].isName);
}

QString frmReplace::StepName() const {
    return QStringLiteral("replace %1 with %2")
        .arg(InStepName(txtFind_->text()),
             txtReplace_->text().isEmpty() ? QStringLiteral("nothing") : InStepName(txtReplace_->text()));
}

void frmReplace::Replace() {
    for (std::size_t row = 0; row < plan_.replacements.size(); ++row)
        plan_.replacements[row].isTicked = lstChanges_->IsTicked(row);
    work_.Run(
        *this,
        [index = index_, game = game_, plan = plan_](const IsOutdated&) {
            return index->Ask(game, [&](const GameIndex& asked) {
                Done done;
                done.game = game;
                try {
                    done.outcome = CarryOut(asked, plan, done.game);
                } catch (const KelError& error) {
                    done.problem = ToQt(error.what());
                }
                return done;
            });
        },
        [this](const Done& done) { RunCommand(dialogs_, this, [&] { ShowDone(done); }); });
    EnableButtons();
}

/// Makes the change that was worked out, and shows it instead of the plan.
void frmReplace::ShowDone(const Done& done) {
    if (!done.problem.isEmpty() || !SameGame(session_.Game(), game_)) {
        MakePlan(); // of the game as it is
        throw CommandError(done.problem.isEmpty() ? QStringLiteral("The game has changed in the meantime.")
                                                  : done.problem,
                           QStringLiteral("Replace"));
    }
    const std::vector<Place>& left = done.outcome.left;
    std::vector<ChangeRow> rows;
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        if (!plan_.replacements[row].isTicked)
            continue;
        rows.push_back(rows_[row]);
        if (std::find(left.begin(), left.end(), plan_.replacements[row].change.place) != left.end())
            rows.back().after =
                QStringLiteral("Left as it was: it does not go together with the others there.");
    }
    if (done.outcome.made > 0) {
        const QScopedValueRollback<bool> changing(isChanging_, true);
        session_.AsOneStep(StepName(), [&] { session_.Change([&](GameModel& game) { game = done.game; }); });
        doneStep_ = session_.Steps().Done();
    }
    QString told = PlacesAre(static_cast<std::size_t>(done.outcome.made), "place was changed, as one step.",
                             "places were changed, as one step.");
    if (!left.empty())
        told += u' ' + PlacesAre(left.size(), "could not be.", "could not be.");
    lblAnswer_->setText(told);
    lstChanges_->SetChanged(std::move(rows));
    butUndo_->setFocus();
}

void frmReplace::TakeBack() {
    if (doneStep_ == 0 || session_.Steps().Done() != doneStep_)
        return;
    {
        const QScopedValueRollback<bool> changing(isChanging_, true);
        session_.GoToStep(doneStep_ - 1);
    }
    MakePlan();
    txtReplace_->setFocus();
}

/// Return goes on from the words to look for: it must not replace them before the others are typed.
bool frmReplace::eventFilter(QObject* watched, QEvent* event) {
    if (watched == txtFind_ && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) &&
            !key->modifiers().testFlag(Qt::ControlModifier)) {
            txtReplace_->setFocus();
            txtReplace_->selectAll();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmReplace::Rename() {
    const auto row = static_cast<std::size_t>(lstChanges_->Selected());
    if (row >= plan_.replacements.size())
        return;
    const Place place = plan_.replacements[row].change.place;
    const std::optional<NamedThing> named =
        index_->Ask(game_, [&](const GameIndex& asked) { return NamedAt(asked, place); });
    if (!named)
        throw CommandError(QStringLiteral("This name cannot be changed: nobody gave it."),
                           QStringLiteral("Replace"));
    rename_(*named, this);
}

} // namespace zem
