#include "panels/FiguresPanel.h"

#include "game/PlaceLine.h"
#include "game/ScriptOwners.h"
#include "panels/ResultList.h"
#include "qt/QtText.h"
#include "session/GameSession.h"

#include <QFormLayout>
#include <QHeaderView>
#include <QLocale>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>
#include <vector>

namespace zem {

using figures::Figure;
using figures::FigureEntry;

/// The figures with the game of which they are.
struct FiguresPanel::Counted {
    GameModel game;
    std::vector<Figure> figures;
};

namespace {

constexpr int FewestWordsPerMinute = 50;
constexpr int MostWordsPerMinute = 1000;

std::vector<ResultRow> EntryRows(const GameModel& game, const Figure& figure) {
    const ScriptOwners owners(game);
    std::vector<ResultRow> rows;
    for (const FigureEntry& entry : figure.entries) {
        const std::optional<ResolvedPlace> resolved = Resolve(game, entry.place);
        const std::string* text = resolved ? resolved->text : nullptr;
        rows.push_back({ToQt(figure.name),
                        entry.value == 1 ? QString() : QLocale().toString(qulonglong(entry.value)),
                        ToQt(owners.Describe(entry.place)),
                        text == nullptr ? QString() : ToQt(InContext(*text, {}).text)});
    }
    return rows;
}

} // namespace

FiguresPanel::FiguresPanel(GameSession& session, const CommandLookup& commands,
                           std::function<void(const Place&)> open, QWidget* parent)
    : QDockWidget(QStringLiteral("Figures"), parent),
      session_(session),
      commands_(commands),
      lstFigures_(new QTreeWidget(this)),
      lstCounted_(new ResultList(this)),
      spnWordsPerMinute_(new QSpinBox(this)) {
    setObjectName(QStringLiteral("dckFigures"));
    setWidget(MakeControls());
    connect(lstFigures_, &QTreeWidget::currentItemChanged, this, &FiguresPanel::ShowEntries);
    connect(lstFigures_, &QTreeWidget::itemActivated, lstCounted_,
            [this] { lstCounted_->setFocus(Qt::OtherFocusReason); });
    connect(lstCounted_, &ResultList::Chosen, this, [this, open = std::move(open)](int row) {
        const Figure* figure = SelectedFigure();
        if (figure != nullptr && static_cast<std::size_t>(row) < figure->entries.size())
            open(Place(figure->entries[static_cast<std::size_t>(row)].place));
    });
    connect(spnWordsPerMinute_, &QSpinBox::valueChanged, this, &FiguresPanel::Count);
    connect(&session_, &GameSession::Changed, this, &FiguresPanel::Count);
    connect(&session_, &GameSession::Replaced, this, &FiguresPanel::Count);
    connect(this, &QDockWidget::visibilityChanged, this, &FiguresPanel::Count);
}

QWidget* FiguresPanel::MakeControls() {
    lstFigures_->setObjectName(QStringLiteral("lstFigures"));
    lstFigures_->setAccessibleName(QStringLiteral("Figures of the game"));
    lstFigures_->setHeaderLabels({QStringLiteral("Figure"), QStringLiteral("Value")});
    lstFigures_->setRootIsDecorated(false);
    lstFigures_->setUniformRowHeights(true);
    lstFigures_->setAllColumnsShowFocus(true);
    lstFigures_->setMinimumWidth(fontMetrics().horizontalAdvance(
        QStringLiteral("minutes to read it all, about  1,000 (an estimate)  ")));
    lstFigures_->header()->setStretchLastSection(false);
    lstFigures_->header()->setSectionResizeMode(0, QHeaderView::Stretch); // the value is always to be seen
    lstFigures_->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    lstCounted_->setObjectName(QStringLiteral("lstCounted"));
    lstCounted_->setAccessibleName(QStringLiteral("What the figure counts"));
    spnWordsPerMinute_->setObjectName(QStringLiteral("spnWordsPerMinute"));
    spnWordsPerMinute_->setAccessibleName(QStringLiteral("Words read in a minute"));
    spnWordsPerMinute_->setRange(FewestWordsPerMinute, MostWordsPerMinute);
    spnWordsPerMinute_->setSingleStep(10);
    spnWordsPerMinute_->setValue(static_cast<int>(figures::WordsPerMinute));
    auto* lists = new QSplitter(Qt::Vertical, this);
    lists->addWidget(lstFigures_);
    lists->addWidget(lstCounted_);
    lists->setChildrenCollapsible(false);
    auto* content = new QWidget(this);
    auto* column = new QVBoxLayout(content);
    column->addWidget(lists, 1);
    auto* row = new QFormLayout;
    row->addRow(QStringLiteral("&Words read in a minute"), spnWordsPerMinute_);
    column->addLayout(row);
    return content;
}

void FiguresPanel::Count() {
    if (!isVisible())
        return;
    counting_.Run(
        *this,
        [game = session_.Game(), &commands = commands_,
         speed = static_cast<std::size_t>(spnWordsPerMinute_->value())](const IsOutdated&) {
            auto figures = figures::FiguresOf(game, commands, speed);
            return std::make_shared<const Counted>(Counted{game, std::move(figures)});
        },
        [this](std::shared_ptr<const Counted> counted) {
            counted_ = std::move(counted);
            ShowFigures();
        });
}

/// The selected figure stays selected.
void FiguresPanel::ShowFigures() {
    {
        const QSignalBlocker quiet(lstFigures_);
        const int selected = std::max(0, lstFigures_->indexOfTopLevelItem(lstFigures_->currentItem()));
        lstFigures_->clear();
        for (const Figure& figure : counted_->figures) {
            const QString value = QLocale().toString(qulonglong(figure.value));
            auto* item = new QTreeWidgetItem(
                lstFigures_,
                {ToQt(figure.name), figure.isEstimate ? value + QStringLiteral(" (an estimate)") : value});
            item->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
        }
        lstFigures_->setCurrentItem(lstFigures_->topLevelItem(selected));
    }
    ShowEntries();
}

const Figure* FiguresPanel::SelectedFigure() const {
    const int row = lstFigures_->indexOfTopLevelItem(lstFigures_->currentItem());
    if (counted_ == nullptr || row < 0 || static_cast<std::size_t>(row) >= counted_->figures.size())
        return nullptr;
    return &counted_->figures[static_cast<std::size_t>(row)];
}

void FiguresPanel::ShowEntries() {
    const Figure* figure = SelectedFigure();
    if (figure == nullptr || figure->entries.empty()) {
        listing_.Cancel();
        lstCounted_->SetRows({});
        return;
    }
    listing_.Run(
        *this, [counted = counted_, figure](const IsOutdated&) { return EntryRows(counted->game, *figure); },
        [this](std::vector<ResultRow> rows) { lstCounted_->SetRows(std::move(rows)); });
}

} // namespace zem
