#include "panels/WatchView.h"

#include "forms/ColourRoles.h"
#include "player/StoryFiles.h"
#include "qt/QtText.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>

namespace zem {

namespace {

enum WatchColumn { Name, Value };
enum Role { KindRole = Qt::UserRole, NameRole, ValueRole };

constexpr int MostRows = 1000; // more is found with the filter

/// The order of the kinds in the list.
int OrderOf(play::Kind kind) {
    constexpr play::Kind Order[] = {play::Kind::Item,     play::Kind::Thing, play::Kind::Flag,
                                    play::Kind::Variable, play::Kind::Timer, play::Kind::Collectable};
    return static_cast<int>(std::find(std::begin(Order), std::end(Order), kind) - std::begin(Order));
}

/// What the author calls it. The key of a thing begins with its kind, and a second one of its name has its
/// number behind the name.
QString Label(const play::WatchedValue& value) {
    switch (value.kind) {
    case play::Kind::Thing: {
        const QString kind = value.name.front() == 'c' ? WatchView::tr("character") : WatchView::tr("object");
        return kind + u' ' + ToQt(value.name.substr(1)).replace(u'\n', QLatin1String(", number "));
    }
    case play::Kind::Item:
        return WatchView::tr("item %1").arg(ToQt(value.name));
    case play::Kind::Flag:
        return WatchView::tr("flag %1").arg(ToQt(value.name));
    case play::Kind::Timer:
        return WatchView::tr("timer %1").arg(ToQt(value.name));
    case play::Kind::Collectable:
        return WatchView::tr("collectable %1").arg(ToQt(value.name));
    default:
        return WatchView::tr("variable %1").arg(ToQt(value.name));
    }
}

/// The other value of what has only two; empty for anything else.
QString Other(const QString& value) {
    const std::pair<const char*, const char*> pairs[] = {{"on", "off"}, {"had", "not had"}};
    for (const auto& [one, other] : pairs) {
        if (value == QLatin1String(one))
            return QLatin1String(other);
        if (value == QLatin1String(other))
            return QLatin1String(one);
    }
    return {};
}

bool HasTwoValues(int kind) {
    const auto one = static_cast<play::Kind>(kind);
    return one == play::Kind::Item || one == play::Kind::Flag || one == play::Kind::Timer;
}

} // namespace

WatchView::WatchView(QWidget* parent)
    : QWidget(parent),
      filter_(new QLineEdit(this)),
      all_(new QCheckBox(tr("Show al&l"), this)),
      values_(new QTreeWidget(this)) {
    filter_->setObjectName(QStringLiteral("txtWatch"));
    filter_->setAccessibleName(tr("Names to watch"));
    filter_->setPlaceholderText(tr("Filter"));
    filter_->setClearButtonEnabled(true);
    all_->setObjectName(QStringLiteral("chkWatchAll"));
    all_->setToolTip(tr("Also what is as it was when the game began"));
    values_->setObjectName(QStringLiteral("lstWatch"));
    values_->setAccessibleName(tr("State of the game"));
    values_->setHeaderHidden(true);
    values_->setColumnCount(2);
    values_->setRootIsDecorated(false);
    values_->setUniformRowHeights(true);
    values_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    values_->setToolTip(tr("Return changes a value by hand"));
    values_->header()->setStretchLastSection(true);
    values_->header()->setSectionResizeMode(Name, QHeaderView::Stretch);
    values_->header()->setSectionResizeMode(Value, QHeaderView::ResizeToContents);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* line = new QHBoxLayout;
    line->addWidget(filter_, 1);
    line->addWidget(all_);
    layout->addLayout(line);
    layout->addWidget(values_);
    connect(filter_, &QLineEdit::textChanged, this, &WatchView::Fill);
    connect(all_, &QCheckBox::toggled, this, &WatchView::Fill);
    connect(values_, &QTreeWidget::itemActivated, this, &WatchView::Toggle);
    connect(values_, &QTreeWidget::itemChanged, this, [this](const QTreeWidgetItem* item) { Set(item); });
}

std::optional<NamedThing> WatchView::Selected() const {
    const QTreeWidgetItem* item = values_->currentItem();
    if (item == nullptr)
        return std::nullopt;
    const std::string name = item->data(Value, NameRole).toByteArray().toStdString();
    switch (static_cast<play::Kind>(item->data(Value, KindRole).toInt())) {
    case play::Kind::Thing: // the key of a thing begins with its kind, and may end with its number
        return NamedThing{name.front() == 'c' ? NameKind::Character : NameKind::Object,
                          name.substr(1, name.find('\n') - 1)};
    case play::Kind::Item:
        return NamedThing{NameKind::Item, name};
    case play::Kind::Flag:
        return NamedThing{NameKind::Flag, name};
    case play::Kind::Variable:
        return NamedThing{NameKind::Variable, name};
    case play::Kind::Timer:
        return NamedThing{NameKind::Timer, name};
    case play::Kind::Collectable:
        return NamedThing{NameKind::Collectable, name};
    default:
        return std::nullopt;
    }
}

void WatchView::Show(const play::Session* session) {
    session_ = session;
    if (session_ == nullptr) {
        before_.clear();
        now_.clear();
        shownState_ = 0;
    } else if (const std::uint64_t state = session_->Fingerprint(); state != shownState_) {
        shownState_ = state;
        before_ = now_;
        now_.clear();
        for (const play::WatchedValue& value : session_->Watch(false))
            now_.insert(Label(value), ToQt(value.value));
    }
    Fill();
}

void WatchView::Fill() {
    const QScopedValueRollback<bool> filling(isFilling_, true);
    const QTreeWidgetItem* current = values_->currentItem();
    const QString selected = current == nullptr ? QString() : current->text(Name);
    values_->clear();
    if (session_ == nullptr)
        return;
    const QString wanted = filter_->text().trimmed();
    std::vector<play::WatchedValue> values = session_->Watch(all_->isChecked() || !wanted.isEmpty());
    std::stable_sort(values.begin(), values.end(), [](const auto& a, const auto& b) {
        return a.kind != b.kind ? OrderOf(a.kind) < OrderOf(b.kind) : a.name < b.name;
    });
    for (const play::WatchedValue& value : values) {
        if (!wanted.isEmpty() && !Label(value).contains(wanted, Qt::CaseInsensitive))
            continue;
        if (values_->topLevelItemCount() == MostRows) {
            new QTreeWidgetItem(values_, {tr("... and more: type into the filter")});
            break;
        }
        AddRow(value);
    }
    const QList<QTreeWidgetItem*> same = values_->findItems(selected, Qt::MatchExactly, Name);
    if (!selected.isEmpty() && !same.isEmpty())
        values_->setCurrentItem(same.first());
}

void WatchView::AddRow(const play::WatchedValue& value) {
    const QString label = Label(value);
    const QString text = ToQt(value.value);
    auto* item = new QTreeWidgetItem(values_, {label, text});
    item->setData(Value, KindRole, static_cast<int>(value.kind));
    item->setData(Value, NameRole, QByteArray::fromStdString(value.name));
    item->setData(Value, ValueRole, text);
    item->setTextAlignment(Value, Qt::AlignRight | Qt::AlignVCenter);
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    if (!value.hasChanged) {
        item->setForeground(Value, ColourOf(ColourRole::SecondaryText, palette()));
        return;
    }
    const QString before = before_.value(label);
    item->setText(Value, before.isEmpty() || before == text ? tr("now %1").arg(text)
                                                            : before + QStringLiteral(" \u2192 ") + text);
    QFont bold = font();
    bold.setBold(true);
    for (const int column : {Name, Value}) {
        item->setFont(column, bold);
        item->setForeground(column, ColourOf(ColourRole::Accent, palette()));
    }
}

/// What has two values becomes the other; anything else is typed.
void WatchView::Toggle(QTreeWidgetItem* item, int /*column*/) {
    const QVariant name = item->data(Value, NameRole);
    if (!name.isValid())
        return;
    const int kind = item->data(Value, KindRole).toInt();
    if (HasTwoValues(kind)) {
        emit ValueSet(static_cast<play::Kind>(kind), name.toByteArray().toStdString(),
                      FromQt(Other(item->data(Value, ValueRole).toString())));
        return;
    }
    {
        const QScopedValueRollback<bool> filling(isFilling_, true);
        item->setText(Value, item->data(Value, ValueRole).toString());
    }
    values_->editItem(item, Value);
}

void WatchView::Set(const QTreeWidgetItem* item) {
    if (isFilling_ || item->text(Value) == item->data(Value, ValueRole).toString())
        return;
    // The list is filled anew by what follows, which must not happen while it closes the box.
    const auto kind = static_cast<play::Kind>(item->data(Value, KindRole).toInt());
    const std::string name = item->data(Value, NameRole).toByteArray().toStdString();
    const std::string value = FromQtForPlayer(item->text(Value));
    QMetaObject::invokeMethod(
        this, [this, kind, name, value] { emit ValueSet(kind, name, value); }, Qt::QueuedConnection);
}

} // namespace zem
