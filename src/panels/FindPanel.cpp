#include "panels/FindPanel.h"

#include "forms/RunCommand.h"
#include "forms/StorableInput.h"
#include "game/PlaceLine.h"
#include "panels/FindOptions.h"
#include "panels/ResultList.h"
#include "session/GameSession.h"
#include "session/SearchIndex.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include <utility>

namespace zem {

namespace {

constexpr std::size_t MostHits = 1000; // are shown; all are counted

struct ShownHits {
    std::vector<ResultRow> rows;
    std::vector<Place> places;
    std::size_t count = 0;
    QString problem;
};

ShownHits ShowHitsOf(const GameIndex& index, const FindQuery& query) {
    const FindResult found = Find(index, query, MostHits);
    ShownHits shown;
    shown.count = found.count;
    shown.problem = ToQt(found.problem);
    for (const FindHit& hit : found.hits) {
        const std::optional<ResolvedPlace> resolved = Resolve(index.Game(), hit.place);
        if (!resolved)
            continue;
        const LineInContext line =
            resolved->text == nullptr ? LineInContext() : InContext(*resolved->text, hit.place.bytes);
        shown.rows.push_back({ToQt(GroupTitle(index.Game(), GroupOf(index.Owners(), hit.place))),
                              QLatin1String(Describe(hit.kind)), ToQt(index.Owners().Describe(hit.place)),
                              ToQt(line.text)});
        shown.places.push_back(hit.place);
    }
    return shown;
}

} // namespace

FindPanel::FindPanel(GameSession& session, std::shared_ptr<SearchIndex> index, Dialogs& dialogs,
                     std::function<void(const Place&)> open, std::function<void()> replace, QWidget* parent)
    : QDockWidget(QStringLiteral("Find"), parent),
      session_(session),
      index_(std::move(index)),
      dialogs_(dialogs),
      open_(std::move(open)),
      txtFind_(new QLineEdit(this)),
      options_(new FindOptions(false, this)),
      butReplace_(new QPushButton(QStringLiteral("Replace..."), this)),
      lblCount_(new QLabel(this)),
      lstHits_(new ResultList(this)) {
    setObjectName(QStringLiteral("dckFind"));
    setWidget(MakeControls());
    connect(txtFind_, &QLineEdit::textChanged, this, &FindPanel::Find);
    connect(txtFind_, &QLineEdit::returnPressed, this, [this] { GoToNext(false); });
    auto* down = new QShortcut(QKeySequence(Qt::Key_Down), txtFind_, nullptr, nullptr, Qt::WidgetShortcut);
    connect(down, &QShortcut::activated, this, [this] { GoToNext(false); });
    connect(options_, &FindOptions::Changed, this, &FindPanel::Find);
    OnClick(butReplace_, this, dialogs_, std::move(replace));
    connect(lstHits_, &ResultList::Chosen, this,
            [this](int row) { RunCommand(dialogs_, this, [&] { OpenHit(row); }); });
    connect(&session_, &GameSession::Changed, this, &FindPanel::Find);
    connect(&session_, &GameSession::Replaced, this, &FindPanel::Find);
    connect(this, &QDockWidget::visibilityChanged, this, &FindPanel::Find);
}

QWidget* FindPanel::MakeControls() {
    txtFind_->setObjectName(QStringLiteral("txtFind"));
    txtFind_->setAccessibleName(QStringLiteral("Find"));
    txtFind_->setPlaceholderText(QStringLiteral("Words to find"));
    txtFind_->setClearButtonEnabled(true);
    RefuseUnstorableText(*txtFind_, dialogs_);
    butReplace_->setObjectName(QStringLiteral("butFindReplace"));
    lblCount_->setObjectName(QStringLiteral("lblFindCount"));
    lblCount_->setTextFormat(Qt::PlainText);
    lstHits_->setObjectName(QStringLiteral("lstHits"));
    lstHits_->setAccessibleName(QStringLiteral("Places found"));

    auto* controls = new QWidget(this);
    auto* column = new QVBoxLayout(controls);
    auto* row = new QHBoxLayout;
    row->addWidget(txtFind_, 1);
    row->addWidget(options_);
    row->addWidget(butReplace_);
    column->addLayout(row);
    column->addWidget(lblCount_);
    column->addWidget(lstHits_, 1);
    return controls;
}

void FindPanel::Begin() {
    txtFind_->setFocus();
    txtFind_->selectAll();
}

std::optional<Place> FindPanel::SelectedPlace() const {
    const auto row = static_cast<std::size_t>(lstHits_->Selected());
    return row < places_.size() ? std::optional(places_[row]) : std::nullopt;
}

FindQuery FindPanel::Query() const {
    return options_->QueryFor(txtFind_->text());
}

void FindPanel::Find() {
    if (!isVisible())
        return;
    if (txtFind_->text().isEmpty() || UnstorableCharacter(txtFind_->text())) {
        work_.Cancel();
        places_.clear();
        lstHits_->SetRows({});
        lblCount_->clear();
        return;
    }
    work_.Run(
        *this,
        [index = index_, game = session_.Game(), query = Query()](const IsOutdated&) {
            return index->Ask(game, [&](const GameIndex& asked) { return ShowHitsOf(asked, query); });
        },
        [this](ShownHits shown) {
            places_ = std::move(shown.places);
            const auto count = static_cast<qulonglong>(shown.count);
            QString told = count == 0   ? QStringLiteral("Nothing found")
                           : count == 1 ? QStringLiteral("1 place")
                                        : QStringLiteral("%1 places").arg(count);
            if (shown.count > MostHits)
                told += QStringLiteral("; the first %1 are shown").arg(MostHits);
            lblCount_->setText(shown.problem.isEmpty() ? told : shown.problem);
            lstHits_->SetRows(std::move(shown.rows));
        });
}

void FindPanel::GoToNext(bool backwards) {
    if (lstHits_->SelectNext(backwards) >= 0)
        lstHits_->setFocus();
}

void FindPanel::OpenHit(int row) {
    if (static_cast<std::size_t>(row) < places_.size())
        open_(Place(places_[static_cast<std::size_t>(row)]));
}

} // namespace zem
