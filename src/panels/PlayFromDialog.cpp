#include "panels/PlayFromDialog.h"

#include "forms/DialogSize.h"
#include "forms/OfferMatches.h"
#include "player/StoryFiles.h"
#include "qt/QtText.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <utility>

namespace zem {

namespace {

enum BeginningColumn { BeginningName, BeginningValue };

/// What a value is when the game begins; items that are had at the start need not be told.
bool IsChosen(const QTreeWidgetItem& item) {
    return item.checkState(BeginningName) == Qt::Checked;
}

} // namespace

PlayFromDialog::PlayFromDialog(const play::World& world, const play::Session* running, const QString& room,
                               LastVisit lastVisit, QWidget* parent)
    : QDialog(parent),
      world_(world),
      running_(running),
      lastVisit_(std::move(lastVisit)),
      room_(new QComboBox(this)),
      fromStart_(new QRadioButton(tr("With what the game &begins with"), this)),
      asNow_(new QRadioButton(tr("With what the running game has &now"), this)),
      asLastVisit_(new QRadioButton(tr("As it was when the player was &last in this room"), this)),
      values_(MakeValues()) {
    setObjectName(QStringLiteral("PlayFromDialog"));
    setWindowTitle(tr("Play from a room"));
    auto* layout = new QVBoxLayout(this);
    auto* label = new QLabel(tr("&Room:"), this);
    label->setBuddy(room_);
    room_->setObjectName(QStringLiteral("cmbPlayRoom"));
    room_->setEditable(true);
    room_->setInsertPolicy(QComboBox::NoInsert);
    room_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    for (const Room& record : world.Game().Rooms)
        room_->addItem(ToQt(record.Name));
    room_->setCurrentIndex(room_->findText(room, Qt::MatchExactly | Qt::MatchCaseSensitive));
    OfferMatches(*room_);
    auto* valuesLabel = new QLabel(tr("&With:"), this);
    valuesLabel->setBuddy(values_);
    fromStart_->setObjectName(QStringLiteral("optFromStart"));
    asNow_->setObjectName(QStringLiteral("optAsNow"));
    asLastVisit_->setObjectName(QStringLiteral("optLastVisit"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    ok_ = buttons->button(QDialogButtonBox::Ok);
    ok_->setObjectName(QStringLiteral("butOK"));
    ok_->setText(tr("&Play"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("butCancel"));
    for (QWidget* control : std::initializer_list<QWidget*>{label, room_, fromStart_, asNow_, asLastVisit_,
                                                            valuesLabel, values_, buttons})
        layout->addWidget(control);
    asNow_->setEnabled(running != nullptr);
    fromStart_->setChecked(true);
    connect(room_, &QComboBox::editTextChanged, this, &PlayFromDialog::Check);
    connect(fromStart_, &QRadioButton::toggled, this, [this](bool isOn) {
        if (isOn)
            FillValues(false);
    });
    connect(asNow_, &QRadioButton::toggled, this, [this](bool isOn) {
        if (isOn)
            FillValues(true);
    });
    connect(asLastVisit_, &QRadioButton::toggled, values_, &QWidget::setDisabled);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    FillValues(false);
    Check();
    RememberSize(*this);
}

QTreeWidget* PlayFromDialog::MakeValues() {
    auto* values = new QTreeWidget(this);
    values->setObjectName(QStringLiteral("lstPlayValues"));
    values->setAccessibleName(tr("Items, flags and variables"));
    values->setHeaderHidden(true);
    values->setColumnCount(2);
    values->setUniformRowHeights(true);
    values->header()->setSectionResizeMode(BeginningName, QHeaderView::Stretch);
    // Return on a variable types its value; on anything else it is the button's.
    values->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    connect(values, &QTreeWidget::itemDoubleClicked, this, [values](QTreeWidgetItem* item) {
        if ((item->flags() & Qt::ItemIsEditable) != 0)
            values->editItem(item, BeginningValue);
    });
    return values;
}

void PlayFromDialog::AddGroup(const QString& caption, play::Kind kind) {
    auto* group = new QTreeWidgetItem(values_, {caption});
    group->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    group->setData(BeginningName, Qt::UserRole, static_cast<int>(kind));
}

/// Lists all names, with the state of the running game or of the beginning.
void PlayFromDialog::FillValues(bool isNow) {
    values_->clear();
    AddGroup(tr("Items"), play::Kind::Item);
    AddGroup(tr("Flags"), play::Kind::Flag);
    AddGroup(tr("Variables"), play::Kind::Variable);
    // The session is gone before the world is.
    const std::shared_ptr<const play::World> unowned(std::shared_ptr<const play::World>(), &world_);
    const play::Session beginning(unowned, 1);
    const play::Session& state = isNow && running_ != nullptr ? *running_ : beginning;
    for (const play::WatchedValue& value : state.Watch(true))
        for (int k = 0; k < values_->topLevelItemCount(); ++k) {
            QTreeWidgetItem* group = values_->topLevelItem(k);
            if (group->data(BeginningName, Qt::UserRole).toInt() != static_cast<int>(value.kind))
                continue;
            auto* item = new QTreeWidgetItem(group, {ToQt(value.name)});
            item->setData(BeginningName, Qt::UserRole, QByteArray::fromStdString(value.name));
            if (value.kind == play::Kind::Variable) {
                item->setText(BeginningValue, ToQt(value.value));
                item->setFlags(item->flags() | Qt::ItemIsEditable);
            } else
                item->setCheckState(
                    BeginningName, value.value == "had" || value.value == "on" ? Qt::Checked : Qt::Unchecked);
        }
    values_->expandAll();
}

void PlayFromDialog::Check() {
    const std::string room = FromQtForPlayer(room_->currentText());
    const play::Number number = world_.GetNames().Find(play::Kind::Room, room);
    ok_->setEnabled(number != play::None && world_.FindRoom(number) != nullptr);
    asLastVisit_->setEnabled(running_ != nullptr && lastVisit_(room));
    if (!asLastVisit_->isEnabled() && asLastVisit_->isChecked())
        fromStart_->setChecked(true);
}

bool PlayFromDialog::IsLastVisit() const {
    return asLastVisit_->isChecked();
}

play::StartingPoint PlayFromDialog::Point() const {
    play::StartingPoint point;
    point.room = FromQtForPlayer(room_->currentText());
    for (int k = 0; k < values_->topLevelItemCount(); ++k) {
        const QTreeWidgetItem* group = values_->topLevelItem(k);
        const auto kind = static_cast<play::Kind>(group->data(BeginningName, Qt::UserRole).toInt());
        for (int row = 0; row < group->childCount(); ++row) {
            const QTreeWidgetItem& item = *group->child(row);
            const std::string name = item.data(BeginningName, Qt::UserRole).toByteArray().toStdString();
            if (kind == play::Kind::Variable)
                point.variables.emplace_back(name, FromQtForPlayer(item.text(BeginningValue)));
            else if (kind == play::Kind::Item)
                (IsChosen(item) ? point.items : point.itemsNotHad).push_back(name);
            else if (IsChosen(item))
                point.flags.push_back(name);
        }
    }
    return point;
}

} // namespace zem
