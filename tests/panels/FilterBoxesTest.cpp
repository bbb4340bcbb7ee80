// Boxes that filter and find, with whatever an author types or pastes into them.
#include "panels/FindPanel.h"
#include "panels/ResultList.h"
#include "support/Cases.h"
#include "support/RunningProgram.h"

#include <QComboBox>
#include <QTreeView>

#include <functional>
#include <gtest/gtest.h>

namespace zem::test {
namespace {

const std::string House =
    CrLf("define game <House>\nstart <Hall>\nitems <a key>\nend define\n"
         "define room <Hall>\nlook <A hall [with] (brackets) and a+ cross.>\nnorth <Atic>\n"
         "define object <lamp>\nlook msg <100% brass, #no# less. C:\\lamp.>\nend define\n"
         "end define\ndefine room <Attic>\nlook <D\xFCster.>\nend define\n");

/// What nobody expects in a box that filters.
QStringList OddTexts() {
    return {QStringLiteral("["),
            QStringLiteral("("),
            QStringLiteral("(?R)"),
            QStringLiteral("*"),
            QStringLiteral("\\"),
            QStringLiteral("\\E"),
            QStringLiteral("a+"),
            QStringLiteral("   "),
            QStringLiteral("%1"),
            QStringLiteral("#no#"),
            QStringLiteral("\u0394\U0001F431"),
            QStringLiteral("\u202Ehall"),
            QStringLiteral("D\u00DCSTER"),
            QString(100000, u'x'),
            QString(QChar(0)),
            QStringLiteral("(a+)+$")};
}

/// The rows of a list or tree that are to be seen.
int SeenRows(const QAbstractItemView& view) {
    const auto* tree = qobject_cast<const QTreeView*>(&view);
    const auto* list = qobject_cast<const QListView*>(&view);
    const std::function<int(const QModelIndex&)> count = [&](const QModelIndex& parent) {
        int rows = 0;
        for (int row = 0; row < view.model()->rowCount(parent); ++row) {
            const QModelIndex index = view.model()->index(row, 0, parent);
            const bool isHidden =
                tree != nullptr ? tree->isRowHidden(row, parent) : list != nullptr && list->isRowHidden(row);
            rows += isHidden ? 0 : 1 + count(index);
        }
        return rows;
    };
    return count({});
}

TEST(FilterBoxes, TakeOddTextsAndShowEverythingAgainWithoutThem) {
    for (const auto& [command, box, list] : Cases<const char*, const char*, const char*>{
             {"mnuToolsMap", "txtRoomFilter", "lstRooms"},
             {"mnuToolsProblems", "txtProblemFilter", "lstProblems"},
             {"mnuToolsCoverage", "txtCoverageFilter", "lstCoverage"},
             {"mnuToolsPlay", "txtWatch", "lstWatch"},
         }) {
        SCOPED_TRACE(box);
        RunningProgram p(House);
        p.Main()->show();
        p.Trigger(command);
        if (auto* all = p.Main()->findChild<QCheckBox*>(QStringLiteral("chkWatchAll")))
            all->setChecked(true);
        auto& view = *p.Find<QAbstractItemView>(list);
        ASSERT_TRUE(QTest::qWaitFor([&] { return SeenRows(view) > 1; }, 10000));
        const int rows = SeenRows(view);
        auto* filter = p.Find<QLineEdit>(box);
        for (const QString& odd : OddTexts()) {
            SCOPED_TRACE(odd.left(20).toStdString());
            filter->setText(odd);
            QCoreApplication::processEvents();
            EXPECT_LE(SeenRows(view), rows);
            filter->clear();
            QCoreApplication::processEvents();
            EXPECT_EQ(SeenRows(view), rows);
        }
        EXPECT_FALSE(p.game.Modified);
    }
}

TEST(FilterBoxes, FindMeansWhatIsTypedUnlessItIsToBeAnExpression) {
    RunningProgram p(House);
    p.dialogs.CancelTheRest(); // of what no game can hold, which is told
    p.Trigger("mnuToolsFind");
    const auto* panel = p.Find<FindPanel>("dckFind");
    auto* box = p.Find<QLineEdit>("txtFind");
    const auto& hits = *p.Find<ResultList>("lstHits");
    const auto find = [&](const QString& text) {
        box->setText(text);
        emit box->textEdited(text);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !panel->IsBusy(); }, 10000));
        return hits.RowCount();
    };
    for (const auto& [text, plain, expression] :
         Cases<const char*, int, int>{{"[with]", 1, -1},       // a set of letters, which stand everywhere
                                      {"a+", 1, -1},           //
                                      {"(brackets)", 1, 1},    //
                                      {"C:\\lamp", 1, 0},      // "\l" is no escape
                                      {"100%", 1, 1},          //
                                      {"h.ll", 0, 3},          // the start, the name, a description
                                      {"D\xC3\x9CSTER", 1, 1}, // in small and capital letters
                                      {"[", 1, 0},             //
                                      {"(", 1, 0},
                                      {"nowhere", 0, 0}}) {
        SCOPED_TRACE(text);
        p.Find<QCheckBox>("chkFindExpression")->setChecked(false);
        EXPECT_EQ(find(QString::fromUtf8(text)), plain);
        p.Find<QCheckBox>("chkFindExpression")->setChecked(true);
        const int found = find(QString::fromUtf8(text));
        if (expression >= 0) {
            EXPECT_EQ(found, expression);
        }
        EXPECT_NE(TextOf(*p.Main(), "lblFindCount"), "");
    }
    for (const QString& odd : OddTexts())
        find(odd);
    EXPECT_EQ(find(QStringLiteral("lamp")), 2);
    EXPECT_FALSE(p.game.Modified);
}

} // namespace
} // namespace zem::test
