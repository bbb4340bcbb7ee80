#include "panels/frmRename.h"

#include "forms/DialogSize.h"
#include "forms/StorableInput.h"
#include "game/WhereUsed.h"
#include "panels/ChangeList.h"
#include "qt/QtText.h"
#include "session/SearchIndex.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace zem {

namespace {

/// The plan with what stands in its list, told in words.
struct ShownPlan {
    RenamePlan plan;
    std::vector<ChangeRow> rows;
    int namesakes = 0; // that have the name besides the first
};

int CountNamesakes(const GameIndex& index, const RenameRequest& request) {
    const std::vector<Reference> references = index.References().Of(request.kind, request.oldName);
    const auto count = std::count_if(references.begin(), references.end(), [&](const Reference& reference) {
        return reference.role == ReferenceRole::Definition && reference.name == request.oldName;
    });
    return std::max(static_cast<int>(count) - 1, 0);
}

ShownPlan PlanOf(const GameIndex& index, const RenameRequest& request) {
    ShownPlan shown;
    shown.plan = PlanRename(index, request);
    shown.namesakes = CountNamesakes(index, request);
    for (const RenameChange& change : shown.plan.changes)
        shown.rows.push_back({ToQt(index.Owners().Describe(change.change.place.WholeField())),
                              QLatin1String(Describe(change.reason)), ToQt(change.before.text),
                              ToQt(change.after.text), change.isTicked, true,
                              static_cast<qsizetype>(change.before.marked.begin)});
    return shown;
}

} // namespace

frmRename::frmRename(const GameModel& game, std::shared_ptr<SearchIndex> index, NamedThing named,
                     const std::optional<Place>& own, Dialogs& dialogs, QWidget* parent)
    : QDialog(parent),
      game_(game),
      index_(std::move(index)),
      named_(std::move(named)),
      own_(own),
      dialogs_(dialogs),
      txtNew_(new QLineEdit(this)),
      lblAnswer_(new QLabel(this)),
      chkOnly_(new QCheckBox(this)),
      chkTwin_(new QCheckBox(this)),
      chkMerge_(new QCheckBox(QStringLiteral("&Make them one"), this)),
      lstChanges_(new ChangeList(this)),
      lblCount_(new QLabel(this)),
      butOK_(new QPushButton(QStringLiteral("&Rename ticked"), this)),
      butCancel_(new QPushButton(QStringLiteral("Cancel"), this)) {
    MakeControls();
    connect(txtNew_, &QLineEdit::textChanged, this, &frmRename::MakePlan);
    for (const QCheckBox* choice : {chkOnly_, chkTwin_, chkMerge_})
        connect(choice, &QCheckBox::toggled, this, &frmRename::MakePlan);
    connect(lstChanges_, &ChangeList::TicksChanged, this, &frmRename::EnableRename);
    connect(butOK_, &QPushButton::clicked, this, &QDialog::accept);
    connect(butCancel_, &QPushButton::clicked, this, &QDialog::reject);
    txtNew_->setText(ToQt(named_.name));
    txtNew_->selectAll();
    MakePlan();
    RememberSize(*this);
}

void frmRename::MakeControls() {
    setObjectName(QStringLiteral("frmRename"));
    setWindowTitle(
        QStringLiteral("Rename %1 %2").arg(QLatin1String(Describe(named_.kind)), ToQt(named_.name)));
    txtNew_->setObjectName(QStringLiteral("txtNewName"));
    RefuseUnstorableText(*txtNew_, dialogs_);
    lblAnswer_->setObjectName(QStringLiteral("lblAnswer"));
    lblAnswer_->setWordWrap(true);
    lblAnswer_->setTextFormat(Qt::PlainText);
    chkOnly_->setObjectName(QStringLiteral("chkOnly"));
    chkOnly_->setChecked(own_.has_value());
    chkOnly_->hide();
    chkTwin_->setObjectName(QStringLiteral("chkTwin"));
    chkMerge_->setObjectName(QStringLiteral("chkMerge"));
    chkTwin_->hide();
    chkMerge_->hide();
    lstChanges_->setObjectName(QStringLiteral("lstChanges"));
    lstChanges_->setAccessibleName(QStringLiteral("What changes"));
    lblCount_->setObjectName(QStringLiteral("lblChangeCount"));
    butOK_->setObjectName(QStringLiteral("butOK"));
    butOK_->setDefault(true);
    butCancel_->setObjectName(QStringLiteral("butCancel"));

    auto* column = new QVBoxLayout(this);
    auto* row = new QHBoxLayout;
    auto* label = new QLabel(QStringLiteral("&New name:"), this);
    label->setBuddy(txtNew_);
    row->addWidget(label);
    row->addWidget(txtNew_, 1);
    column->addLayout(row);
    column->addWidget(lblAnswer_);
    column->addWidget(chkOnly_);
    column->addWidget(chkTwin_);
    column->addWidget(chkMerge_);
    column->addWidget(lstChanges_, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(lblCount_, 1);
    bottom->addWidget(butOK_);
    bottom->addWidget(butCancel_);
    column->addLayout(bottom);
    resize(820, 480);
}

void frmRename::MakePlan() {
    butOK_->setEnabled(false); // until what is typed is judged
    RenameRequest request;
    request.kind = named_.kind;
    request.oldName = named_.name;
    if (UnstorableCharacter(txtNew_->text()))
        return;
    request.newName = FromQt(txtNew_->text());
    request.withTwin = chkTwin_->isChecked();
    request.merge = chkMerge_->isChecked();
    if (chkOnly_->isChecked())
        request.only = {*own_};
    work_.Run(
        *this,
        [index = index_, game = game_, request](const IsOutdated&) {
            return index->Ask(game, [&](const GameIndex& asked) { return PlanOf(asked, request); });
        },
        [this](ShownPlan shown) {
            ShowPlan(std::move(shown.plan), shown.namesakes);
            lstChanges_->SetChanges(std::move(shown.rows));
        });
}

void frmRename::ShowPlan(RenamePlan plan, int namesakes) {
    plan_ = std::move(plan);
    namesakes_ = namesakes;
    if (own_ && namesakes_ > 0) {
        chkOnly_->setText(QStringLiteral("&Only this one; %1 of the same name and what refers to them stay")
                              .arg(namesakes_ == 1 ? QStringLiteral("another")
                                                   : QStringLiteral("%1 others").arg(namesakes_)));
        chkOnly_->show();
    }
    QStringList answer = {ToQt(plan_.answer.message)};
    for (const std::string& note : plan_.answer.notes)
        answer.append(ToQt(note));
    if (!plan_.mayMean.empty())
        answer.append(
            QStringLiteral("%1 more places are made of variables and may mean it; they stay as they are.")
                .arg(plan_.mayMean.size()));
    if (plan_.hasMoreMentions)
        answer.append(QStringLiteral("There are more places that hold these words than are listed."));
    answer.removeAll(QString());
    lblAnswer_->setText(answer.join(u'\n'));
    lblAnswer_->setVisible(!answer.isEmpty());
    if (plan_.twin) {
        chkTwin_->setText(
            QStringLiteral("Rename the %1 of this name, &too").arg(QLatin1String(Describe(*plan_.twin))));
        chkTwin_->show();
    }
    if (plan_.answer.verdict == NameVerdict::Merges)
        chkMerge_->show();
}

void frmRename::EnableRename() {
    butOK_->setEnabled(plan_.isAllowed && !work_.IsRunning() && lstChanges_->TickedCount() > 0);
    const int count = lstChanges_->TickedCount();
    lblCount_->setText(count == 1 ? QStringLiteral("1 place changes, as one step")
                                  : QStringLiteral("%1 places change, as one step").arg(count));
}

bool frmRename::RenamesAll() const {
    return namesakes_ == 0 || !chkOnly_->isChecked();
}

RenamePlan frmRename::Plan() const {
    RenamePlan plan = plan_;
    for (std::size_t row = 0; row < plan.changes.size(); ++row)
        plan.changes[row].isTicked = lstChanges_->IsTicked(row);
    return plan;
}

} // namespace zem
