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
};

ShownPlan PlanOf(const GameIndex& index, const RenameRequest& request) {
    ShownPlan shown;
    shown.plan = PlanRename(index, request);
    for (const RenameChange& change : shown.plan.changes)
        shown.rows.push_back({ToQt(index.Owners().Describe(change.change.place.WholeField())),
                              QLatin1String(Describe(change.reason)), ToQt(change.before.text),
                              ToQt(change.after.text), change.isTicked});
    return shown;
}

} // namespace

frmRename::frmRename(const GameModel& game, std::shared_ptr<SearchIndex> index, NameKind kind,
                     std::string name, Dialogs& dialogs, QWidget* parent)
    : QDialog(parent),
      game_(game),
      index_(std::move(index)),
      kind_(kind),
      name_(std::move(name)),
      dialogs_(dialogs),
      txtNew_(new QLineEdit(this)),
      lblAnswer_(new QLabel(this)),
      chkTwin_(new QCheckBox(this)),
      chkMerge_(new QCheckBox(QStringLiteral("&Make them one"), this)),
      lstChanges_(new ChangeList(this)),
      lblCount_(new QLabel(this)),
      butOK_(new QPushButton(QStringLiteral("&Rename ticked"), this)),
      butCancel_(new QPushButton(QStringLiteral("Cancel"), this)) {
    MakeControls();
    connect(txtNew_, &QLineEdit::textChanged, this, &frmRename::MakePlan);
    connect(chkTwin_, &QCheckBox::toggled, this, &frmRename::MakePlan);
    connect(chkMerge_, &QCheckBox::toggled, this, &frmRename::MakePlan);
    connect(lstChanges_, &ChangeList::TicksChanged, this, &frmRename::EnableRename);
    connect(butOK_, &QPushButton::clicked, this, &QDialog::accept);
    connect(butCancel_, &QPushButton::clicked, this, &QDialog::reject);
    txtNew_->setText(ToQt(name_));
    txtNew_->selectAll();
    MakePlan();
    RememberSize(*this);
}

void frmRename::MakeControls() {
    setObjectName(QStringLiteral("frmRename"));
    setWindowTitle(QStringLiteral("Rename %1 %2").arg(QLatin1String(Describe(kind_)), ToQt(name_)));
    txtNew_->setObjectName(QStringLiteral("txtNewName"));
    RefuseUnstorableText(*txtNew_, dialogs_);
    lblAnswer_->setObjectName(QStringLiteral("lblAnswer"));
    lblAnswer_->setWordWrap(true);
    lblAnswer_->setTextFormat(Qt::PlainText);
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
    request.kind = kind_;
    request.oldName = name_;
    if (UnstorableCharacter(txtNew_->text()))
        return;
    request.newName = FromQt(txtNew_->text());
    request.withTwin = chkTwin_->isChecked();
    request.merge = chkMerge_->isChecked();
    work_.Run(
        *this,
        [index = index_, game = game_, request](const IsOutdated&) {
            return index->Ask(game, [&](const GameIndex& asked) { return PlanOf(asked, request); });
        },
        [this](ShownPlan shown) {
            ShowPlan(std::move(shown.plan));
            lstChanges_->SetChanges(std::move(shown.rows));
        });
}

void frmRename::ShowPlan(RenamePlan plan) {
    plan_ = std::move(plan);
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

RenamePlan frmRename::Plan() const {
    RenamePlan plan = plan_;
    for (std::size_t row = 0; row < plan.changes.size(); ++row)
        plan.changes[row].isTicked = lstChanges_->IsTicked(row);
    return plan;
}

} // namespace zem
