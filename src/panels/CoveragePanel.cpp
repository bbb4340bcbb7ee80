#include "panels/CoveragePanel.h"

#include "forms/RunCommand.h"
#include "panels/ResultList.h"
#include "qt/QtText.h"
#include "session/RunWatch.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <array>
#include <utility>

namespace zem {

using play::CoveragePart;
using play::ReachedPart;

/// The parts with the game that they are of, which keeps their hits good.
struct CoveragePanel::Listed {
    std::shared_ptr<const play::JudgedRuns> judged;
    std::vector<ReachedPart> parts;
};

namespace {

struct PartWords {
    const char* group;
    const char* never;
    const char* times;
};

/// In the order of CoveragePart::Kind.
constexpr std::array<PartWords, CoveragePart::KindCount> WordsOfParts = {
    {{"Commands", "never run", "run"},
     {"Conditions", "never", ""},
     {"Rooms", "never entered", "entered"},
     {"Things", "never met", "met"},
     {"Texts", "never printed", "printed"},
     {"Endings", "never reached", "reached"}}};

QString Times(std::uint64_t count) {
    return count == 1 ? QStringLiteral("once") : QStringLiteral("%1 times").arg(count);
}

/// "run 3 times", "never true", "only by the walker".
QString HowOften(const ReachedPart& part) {
    const PartWords& words = WordsOfParts[part.part.kind];
    const bool isAnswer = part.part.kind == CoveragePart::Branch;
    const char* answer = part.part.answer ? "true" : "false";
    if (!part.IsReached())
        return QLatin1String(words.never) + (isAnswer ? u' ' + QLatin1String(answer) : QString());
    const QString what = QLatin1String(isAnswer ? answer : words.times);
    return part.part.hits > 0 ? QStringLiteral("%1 %2").arg(what, Times(part.part.hits))
                              : QStringLiteral("%1 by the walker only").arg(what);
}

ResultRow RowOfPart(const ReachedPart& part) {
    return {QLatin1String(WordsOfParts[part.part.kind].group), HowOften(part), ToQt(part.where),
            ToQt(part.text)};
}

} // namespace

CoveragePanel::CoveragePanel(RunWatch& watch, Dialogs& dialogs, std::function<void(const Place&)> open,
                             PlayWhatReaches play, QWidget* parent)
    : QDockWidget(tr("Coverage"), parent),
      watch_(watch),
      dialogs_(dialogs),
      open_(std::move(open)),
      play_(std::move(play)),
      lblCoverage_(new QLabel(this)),
      chkReached_(new QCheckBox(tr("Sho&w what was reached, too"), this)),
      txtFilter_(new QLineEdit(this)),
      lstCoverage_(new ResultList(this)),
      butWhichRun_(new QPushButton(tr("Which run get&s here?"), this)) {
    setObjectName(QStringLiteral("dckCoverage"));
    setWidget(MakeControls());
    watch_.WantCoverage();
    connect(&watch_, &RunWatch::JudgedAll, this, &CoveragePanel::List);
    connect(this, &QDockWidget::visibilityChanged, this, &CoveragePanel::List);
    connect(chkReached_, &QCheckBox::toggled, this, &CoveragePanel::ShowRows);
    connect(txtFilter_, &QLineEdit::textChanged, lstCoverage_, &ResultList::SetFilter);
    connect(lstCoverage_, &ResultList::SelectedChanged, this, &CoveragePanel::EnableButtons);
    connect(lstCoverage_, &ResultList::Chosen, this, [this](int row) {
        const ReachedPart& part = listed_->parts[shown_[static_cast<std::size_t>(row)]];
        if (part.place)
            RunCommand(dialogs_, this, [this, place = *part.place] { open_(place); });
    });
    OnClick(butWhichRun_, this, dialogs_, [this] {
        if (const ReachedPart* part = Selected())
            play_(listed_->judged, part->part.hit);
    });
    lblCoverage_->setText(tr("Playing the recorded runs..."));
    EnableButtons();
    List();
}

QWidget* CoveragePanel::MakeControls() {
    lblCoverage_->setObjectName(QStringLiteral("lblCoverage"));
    lblCoverage_->setTextFormat(Qt::PlainText);
    lblCoverage_->setWordWrap(true);
    chkReached_->setObjectName(QStringLiteral("chkReached"));
    txtFilter_->setObjectName(QStringLiteral("txtCoverageFilter"));
    txtFilter_->setPlaceholderText(tr("Filter"));
    txtFilter_->setAccessibleName(tr("Filter"));
    txtFilter_->setClearButtonEnabled(true);
    lstCoverage_->setObjectName(QStringLiteral("lstCoverage"));
    lstCoverage_->setAccessibleName(tr("What was reached and what was not"));
    butWhichRun_->setObjectName(QStringLiteral("butWhichRun"));
    butWhichRun_->setToolTip(tr("Plays the run that gets there with the fewest lines, up to there"));
    auto* content = new QWidget(this);
    auto* column = new QVBoxLayout(content);
    auto* top = new QHBoxLayout;
    top->addWidget(txtFilter_, 1);
    top->addWidget(chkReached_);
    top->addWidget(butWhichRun_);
    column->addWidget(lblCoverage_);
    column->addLayout(top);
    column->addWidget(lstCoverage_, 1);
    setTabOrder(txtFilter_, chkReached_);
    setTabOrder(chkReached_, butWhichRun_);
    setTabOrder(butWhichRun_, lstCoverage_);
    return content;
}

bool CoveragePanel::IsBusy() const {
    return watch_.IsJudging() || work_.IsRunning();
}

void CoveragePanel::List() {
    if (!isVisible() || watch_.Judged() == nullptr)
        return;
    work_.Run(
        *this,
        [judged = watch_.Judged(), walked = watch_.Walked()](const IsOutdated&) {
            auto listed = std::make_shared<Listed>();
            listed->judged = judged;
            listed->parts = play::PartsWithPlaces(*judged->coverage, walked.get());
            return std::shared_ptr<const Listed>(std::move(listed));
        },
        [this](std::shared_ptr<const Listed> listed) {
            listed_ = std::move(listed);
            ShowListed();
        });
}

void CoveragePanel::ShowListed() {
    std::array<std::pair<int, int>, CoveragePart::KindCount> counts{}; // reached, all
    for (const ReachedPart& part : listed_->parts) {
        auto& [reached, all] = counts[part.part.kind];
        reached += part.IsReached() ? 1 : 0;
        ++all;
    }
    QStringList words;
    for (std::size_t kind = 0; kind < counts.size(); ++kind)
        if (counts[kind].second > 0)
            words.append(QStringLiteral("%1 %2 of %3")
                             .arg(QLatin1String(WordsOfParts[kind].group))
                             .arg(counts[kind].first)
                             .arg(counts[kind].second));
    const std::size_t runs = listed_->judged->runs.size();
    const QString by = runs == 1 ? tr("1 run") : tr("%1 runs").arg(runs);
    lblCoverage_->setText(tr("Reached by %1%2: %3")
                              .arg(by, watch_.Walked() == nullptr ? QString() : tr(" and the walker"),
                                   words.join(QStringLiteral(", "))));
    ShowRows();
}

void CoveragePanel::ShowRows() {
    shown_.clear();
    std::vector<ResultRow> rows;
    if (listed_ != nullptr)
        for (std::size_t kind = 0; kind < CoveragePart::KindCount; ++kind) // a group has its rows together
            for (std::size_t k = 0; k < listed_->parts.size(); ++k) {
                const ReachedPart& part = listed_->parts[k];
                if (part.part.kind != kind || (part.IsReached() && !chkReached_->isChecked()))
                    continue;
                rows.push_back(RowOfPart(part));
                shown_.push_back(k);
            }
    lstCoverage_->SetRows(std::move(rows));
    EnableButtons();
}

const ReachedPart* CoveragePanel::Selected() const {
    const int row = lstCoverage_->Selected();
    return row < 0 || static_cast<std::size_t>(row) >= shown_.size()
               ? nullptr
               : &listed_->parts[shown_[static_cast<std::size_t>(row)]];
}

void CoveragePanel::EnableButtons() {
    const ReachedPart* part = Selected();
    butWhichRun_->setEnabled(part != nullptr && part->part.hits > 0);
}

} // namespace zem
