// All panels beside the lists at once, while the game under them changes, goes, and is another one.
#include "map/MapEdits.h"
#include "panels/ResultList.h"
#include "support/Cases.h"
#include "support/RunningProgram.h"

#include <QDockWidget>
#include <QLabel>
#include <QScrollBar>
#include <QTextEdit>

#include <functional>
#include <gtest/gtest.h>
#include <set>

namespace zem::test {
namespace {

/// The word that is found wherever the first of two games is shown.
const QString FirstGame = QStringLiteral("Zanzibar");

const std::string OldGame = CrLf(
    "define game <Zanzibar>\nstart <Zanzibar hall>\nitems <Zanzibar coin>\n"
    "collectables <Zanzibar gold p=0 [!]>\nend define\n"
    "define room <Zanzibar hall>\nlook <The Zanzibarr of Zanzibar, Zanzibar.>\nnorth <Zanzibar nowhere>\n"
    "define object <Zanzibar lamp>\nlook msg <Zanzibar brass.>\nend define\n"
    "define character <Zanzibar Tom>\nend define\nend define\n"
    "define room <Zanzibar attic>\nend define\n"
    "define procedure <Zanzibar song>\nmsg <Zanzibar la.>\nend define\n"
    "define text <Zanzibar sign>\nZanzibar.\nend define\n");

const std::string OtherGame = CrLf("define game <Other>\nstart <Cell>\nend define\n"
                                   "define room <Cell>\nlook <Bare.>\nend define\n");

/// Everything that can be read in a widget, in one line.
QString ReadAloud(const QWidget& widget) {
    QStringList texts = {widget.windowTitle(), widget.toolTip()};
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        texts.append(label->text());
    if (const auto* box = qobject_cast<const QLineEdit*>(&widget))
        texts.append(box->text());
    if (const auto* page = qobject_cast<const QTextEdit*>(&widget))
        texts.append(page->toPlainText());
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        texts.append(button->text());
    const QAbstractItemModel* model = nullptr;
    if (const auto* view = qobject_cast<const QAbstractItemView*>(&widget))
        model = view->model();
    if (const auto* chooser = qobject_cast<const QComboBox*>(&widget))
        model = chooser->model();
    const std::function<void(const QModelIndex&)> read = [&](const QModelIndex& parent) {
        for (int row = 0; row < model->rowCount(parent); ++row)
            for (int column = 0; column < model->columnCount(parent); ++column) {
                const QModelIndex index = model->index(row, column, parent);
                texts.append(index.data().toString());
                if (column == 0)
                    read(index);
            }
    };
    if (model != nullptr)
        read({});
    return texts.join(u' ');
}

/// The editor with every panel open and something of the game in each.
struct AllPanels : RunningProgram {
    explicit AllPanels(const std::string& bytes) {
        folder.Write("game.kel.tests", "run Zanzibar win seed 1\n\n> look\n");
        StartWith(bytes);
        for (QAction* action : Main()->findChildren<QAction*>())
            if (action->isCheckable() && action->objectName().startsWith(QLatin1String("mnuTools")) &&
                !action->isChecked())
                action->trigger();
        Trigger("mnuToolsPlay");
    }

    /// The names of the widgets in which the text can be read.
    std::set<std::string> Readers(const QString& text) const {
        std::set<std::string> found;
        for (const auto* panel : Main()->findChildren<QDockWidget*>())
            for (const auto* widget : panel->findChildren<QWidget*>())
                if (ReadAloud(*widget).contains(text))
                    found.insert((panel->objectName() + u'.' + widget->objectName()).toStdString());
        return found;
    }

    /// Waits until all that can be read the text in is this and no more.
    void ExpectReaders(const QString& text, const std::set<std::string>& expected) const {
        EXPECT_TRUE(QTest::qWaitFor([&] { return Readers(text) == expected; }, 10000));
        EXPECT_EQ(Readers(text), expected);
    }

    void FillAll() const {
        Select("lstRooms", 0);
        TypeText(*Main(), "txtFind", QStringLiteral("brass"));
        Trigger("mnuToolsWhereUsed");
        PressKey(*Main(), "input", Qt::Key_Return);
    }
};

TEST(AnotherGame, LeavesNothingOfTheGameBeforeInAnyPanel) {
    for (const auto& [what, leave] : Cases<const char*, std::function<void(AllPanels&)>>{
             {"mnuFileNew", [](AllPanels& p) { p.Trigger("mnuFileNew"); }},
             {"mnuFileOpen", [](AllPanels& p) {
                  p.dialogs.OpenFile(PathToQt(p.folder.Write("other.kel", OtherGame)));
                  p.Trigger("mnuFileOpen");
              }}}) {
        SCOPED_TRACE(what);
        AllPanels p(OldGame);
        p.FillAll();
        EXPECT_TRUE(QTest::qWaitFor([&] { return p.Readers(FirstGame).size() > 12; }, 10000))
            << p.Readers(FirstGame).size() << " of the panels show the first game";
        leave(p);
        p.ExpectReaders(FirstGame, {});
        EXPECT_FALSE(p.game.Modified);
        for (const char* command : {"mnuToolsNextProblem", "mnuToolsFindNext", "mnuToolsFixProblem"})
            p.Trigger(command);
        p.Trigger("mnuToolsUndo");
        EXPECT_FALSE(p.game.Modified) << "there is nothing to undo in it";
        p.ExpectReaders(FirstGame, {});
    }
}

// ---- Lists are a state and no log

/// Forty rooms, each with the same mistake in two exits.
std::string FortyRooms() {
    std::string bytes = "define game <Forty>\nstart <Room 10>\nend define\n";
    for (int k = 10; k < 50; ++k) {
        const std::string number = std::to_string(k);
        bytes += "define room <Room " + number + ">\nlook <Dust of " + number + ".>\nnorth <Gone " + number +
                 ">\nsouth <Lost " + number + ">\neast <Room " + std::to_string(10 + (k - 9) % 40) +
                 ">\nwest <Room 10>\nend define\n";
    }
    return CrLf(bytes);
}

struct ListState {
    QString selected;
    int scroll = 0;
    bool isFolded = false;

    bool operator==(const ListState&) const = default;
};

QModelIndex GroupOf(const ResultList& list, const char* start) {
    return list.model()
        ->match(list.model()->index(0, 0), Qt::DisplayRole, QLatin1String(start), 1, Qt::MatchStartsWith)
        .value(0);
}

ListState StateOf(const ResultList& list, const char* folded) {
    const QModelIndex current = list.currentIndex();
    return {current.siblingAtColumn(0).data().toString() + current.parent().data().toString(),
            list.verticalScrollBar()->value(), !list.isExpanded(GroupOf(list, folded))};
}

TEST(ListsOfPlaces, KeepSelectionFoldAndScrollWhileTheGameChangesElsewhere) {
    for (const auto& [command, name, prepare] :
         Cases<const char*, const char*, std::function<void(RunningProgram&)>>{
             {"mnuToolsProblems", "lstProblems", [](RunningProgram&) {}},
             {"mnuToolsFind", "lstHits",
              [](RunningProgram& p) { TypeText(*p.Main(), "txtFind", QStringLiteral("Room")); }},
             {"mnuToolsWhereUsed", "lstUses",
              [](RunningProgram& p) {
                  p.Select("lstRooms", 0);
                  p.Trigger("mnuToolsWhereUsed");
              }},
         }) {
        SCOPED_TRACE(name);
        RunningProgram p(FortyRooms());
        p.Main()->resize(1200, 800);
        p.Main()->show();
        p.Select("lstRooms", 0);
        p.Trigger(command);
        prepare(p);
        auto& list = *p.Find<ResultList>(name);
        ASSERT_TRUE(QTest::qWaitFor([&] { return GroupOf(list, "Room 30").isValid(); }, 10000));
        list.setExpanded(GroupOf(list, "Room 29"), false);
        const QModelIndex group = GroupOf(list, "Room 30");
        list.setExpanded(group, true);
        list.setCurrentIndex(group.model()->index(0, 0, group));
        list.scrollTo(list.currentIndex(), QAbstractItemView::PositionAtTop);
        const ListState before = StateOf(list, "Room 29");
        ASSERT_GT(before.scroll, 0);
        ASSERT_TRUE(before.isFolded);
        const int rows = list.RowCount();

        list.SetFilter(QStringLiteral("Room 3"));
        list.SetFilter({});
        EXPECT_EQ(StateOf(list, "Room 29").selected.toStdString(), before.selected.toStdString());
        EXPECT_TRUE(StateOf(list, "Room 29").isFolded) << "a filter comes and goes";
        list.scrollTo(list.currentIndex(), QAbstractItemView::PositionAtTop);

        // A room near the end gets one row more of each kind.
        auto& session = p.program->Session();
        session.AsOneStep(QStringLiteral("edit"), [&] {
            session.Change([](GameModel& game) {
                game.Rooms.Edit(39).NorthWest = ScriptPair{"Room 99", ""};
                game.Rooms.Edit(39).SouthWest = ScriptPair{"Room 10", ""};
            });
        });
        EXPECT_TRUE(QTest::qWaitFor([&] { return list.RowCount() > rows; }, 10000));
        const ListState after = StateOf(list, "Room 29");
        EXPECT_EQ(after.selected.toStdString(), before.selected.toStdString());
        EXPECT_EQ(after.scroll, before.scroll);
        EXPECT_TRUE(after.isFolded);
        p.Trigger("mnuToolsUndo");
        EXPECT_TRUE(QTest::qWaitFor([&] { return list.RowCount() == rows; }, 10000));
        EXPECT_TRUE(StateOf(list, "Room 29") == before);

        // What was selected goes: the row that came to its place is selected, and nothing jumps.
        session.AsOneStep(QStringLiteral("delete"),
                          [&] { session.Change([](GameModel& game) { map::DeleteRooms(game, {20}); }); });
        EXPECT_TRUE(QTest::qWaitFor([&] { return !GroupOf(list, "Room 30").isValid(); }, 10000));
        EXPECT_TRUE(StateOf(list, "Room 29").isFolded);
        p.Trigger("mnuToolsUndo");
        EXPECT_TRUE(QTest::qWaitFor([&] { return list.RowCount() == rows; }, 10000));
        EXPECT_TRUE(StateOf(list, "Room 29").isFolded);
    }
}

} // namespace
} // namespace zem::test
