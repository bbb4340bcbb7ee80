#include "panels/WhereUsedPanel.h"

#include "forms/OfferMatches.h"
#include "forms/RunCommand.h"
#include "forms/StorableInput.h"
#include "game/PlaceLine.h"
#include "game/WhereUsed.h"
#include "panels/ResultList.h"
#include "script/ScriptEditing.h"
#include "session/GameSession.h"
#include "session/SearchIndex.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace zem {

const std::vector<NameKind> NamedKinds = {NameKind::Room, NameKind::Object,      NameKind::Character,
                                          NameKind::Item, NameKind::Procedure,   NameKind::TextSection,
                                          NameKind::Menu, NameKind::Collectable, NameKind::Variable,
                                          NameKind::Flag, NameKind::Timer};

namespace {

constexpr int ShownCharacters = 24; // of a name, at least

struct ShownUses {
    std::vector<ResultRow> rows;
    std::vector<Place> places;
    int uses = 0;
};

ShownUses UsesOf(const GameIndex& index, NameKind kind, const std::string& name) {
    ShownUses shown;
    for (const Reference& use : WhereUsed(index, kind, name)) {
        const bool mayMean = use.role == ReferenceRole::MayMean;
        shown.uses += mayMean ? 0 : 1;
        const std::optional<ResolvedPlace> resolved = Resolve(index.Game(), use.place);
        const QString text = resolved && resolved->text != nullptr
                                 ? ToQt(InContext(*resolved->text, use.place.bytes).text)
                                 : QString();
        shown.rows.push_back({ToQt(GroupTitle(index.Game(), GroupOf(index.Owners(), use.place))),
                              mayMean ? QStringLiteral("may mean it") : QStringLiteral("use"),
                              ToQt(index.Owners().Describe(use.place)), text});
        shown.places.push_back(use.place);
    }
    return shown;
}

} // namespace

WhereUsedPanel::WhereUsedPanel(GameSession& session, std::shared_ptr<SearchIndex> index,
                               const ScriptEditing& scripts, Dialogs& dialogs,
                               std::function<void(const Place&)> open, NameCommand rename, QWidget* parent)
    : QDockWidget(QStringLiteral("Where used"), parent),
      session_(session),
      index_(std::move(index)),
      scripts_(scripts),
      dialogs_(dialogs),
      open_(std::move(open)),
      rename_(std::move(rename)),
      cmbKind_(new QComboBox(this)),
      cmbName_(new QComboBox(this)),
      butRename_(new QPushButton(QStringLiteral("Rename..."), this)),
      lblCount_(new QLabel(this)),
      lstUses_(new ResultList(this)) {
    setObjectName(QStringLiteral("dckWhereUsed"));
    setWidget(MakeControls());
    connect(cmbKind_, &QComboBox::currentIndexChanged, this, [this] {
        OfferNames();
        cmbName_->setEditText(QString());
    });
    connect(cmbName_, &QComboBox::editTextChanged, this, &WhereUsedPanel::Find);
    connect(lstUses_, &ResultList::Chosen, this,
            [this](int row) { RunCommand(dialogs_, this, [&] { OpenUse(row); }); });
    OnClick(butRename_, this, dialogs_, [this] { rename_(Kind(), FromQt(cmbName_->currentText())); });
    const auto renew = [this] {
        if (!isVisible())
            return;
        OfferNames();
        Find();
    };
    connect(&session_, &GameSession::Changed, this, renew);
    connect(&session_, &GameSession::Replaced, this, [this, renew] {
        cmbName_->setEditText(QString()); // of the game before
        renew();
    });
    connect(this, &QDockWidget::visibilityChanged, this, renew);
}

QWidget* WhereUsedPanel::MakeControls() {
    cmbKind_->setObjectName(QStringLiteral("cmbUsedKind"));
    cmbKind_->setAccessibleName(QStringLiteral("Kind of name"));
    cmbKind_->setAccessibleDescription(cmbKind_->accessibleName()); // a box is read out as what it shows
    for (const NameKind kind : NamedKinds)
        cmbKind_->addItem(QLatin1String(Describe(kind)));
    cmbName_->setObjectName(QStringLiteral("cmbUsedName"));
    cmbName_->setAccessibleName(QStringLiteral("Name"));
    cmbName_->setAccessibleDescription(cmbName_->accessibleName());
    cmbName_->setEditable(true);
    cmbName_->setInsertPolicy(QComboBox::NoInsert);
    cmbName_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon); // there may be 32,767
    cmbName_->setMinimumContentsLength(ShownCharacters);
    cmbName_->setModel(&names_);
    static_cast<QListView*>(cmbName_->view())->setUniformItemSizes(true);
    OfferMatches(*cmbName_);
    RefuseUnstorableText(*cmbName_->lineEdit(), dialogs_);
    butRename_->setObjectName(QStringLiteral("butUsedRename"));
    lblCount_->setObjectName(QStringLiteral("lblUsedCount"));
    lblCount_->setTextFormat(Qt::PlainText);
    lstUses_->setObjectName(QStringLiteral("lstUses"));
    lstUses_->setAccessibleName(QStringLiteral("Places that use it"));

    auto* controls = new QWidget(this);
    auto* column = new QVBoxLayout(controls);
    auto* row = new QHBoxLayout;
    row->addWidget(cmbKind_);
    row->addWidget(cmbName_, 1);
    row->addWidget(butRename_);
    column->addLayout(row);
    column->addWidget(lblCount_);
    column->addWidget(lstUses_, 1);
    return controls;
}

NameKind WhereUsedPanel::Kind() const {
    return NamedKinds[static_cast<std::size_t>(std::max(cmbKind_->currentIndex(), 0))];
}

void WhereUsedPanel::OfferNames() {
    const QSignalBlocker quiet(cmbName_);
    const QString name = cmbName_->currentText();
    const auto names = scripts_.Names(Kind());
    names_.Reset(static_cast<int>(names->size()),
                 [names](int row) { return ToQt((*names)[static_cast<std::size_t>(row)]); });
    cmbName_->setEditText(name);
}

void WhereUsedPanel::Show(NameKind kind, const std::string& name) {
    const auto at = std::find(NamedKinds.begin(), NamedKinds.end(), kind);
    {
        const QSignalBlocker quiet(cmbKind_);
        cmbKind_->setCurrentIndex(static_cast<int>(at - NamedKinds.begin()));
    }
    OfferNames();
    cmbName_->setEditText(ToQt(name));
    Find();
    lstUses_->setFocus();
}

std::optional<NamedThing> WhereUsedPanel::Named() const {
    const QString name = cmbName_->currentText();
    return name.isEmpty() || UnstorableCharacter(name) ? std::nullopt
                                                       : std::optional(NamedThing{Kind(), FromQt(name)});
}

void WhereUsedPanel::Find() {
    const QString name = cmbName_->currentText();
    butRename_->setEnabled(!name.isEmpty());
    if (name.isEmpty() || UnstorableCharacter(name)) {
        work_.Cancel();
        places_.clear();
        lstUses_->SetRows({});
        lblCount_->clear();
        return;
    }
    work_.Run(
        *this,
        [index = index_, game = session_.Game(), kind = Kind(), text = FromQt(name)](const IsOutdated&) {
            return index->Ask(game, [&](const GameIndex& asked) { return UsesOf(asked, kind, text); });
        },
        [this](ShownUses shown) {
            places_ = std::move(shown.places);
            lblCount_->setText(shown.uses == 0   ? QStringLiteral("Nothing uses it")
                               : shown.uses == 1 ? QStringLiteral("1 place uses it")
                                                 : QStringLiteral("%1 places use it").arg(shown.uses));
            lstUses_->SetRows(std::move(shown.rows));
        });
}

void WhereUsedPanel::OpenUse(int row) {
    if (static_cast<std::size_t>(row) < places_.size())
        open_(Place(places_[static_cast<std::size_t>(row)]));
}

} // namespace zem
