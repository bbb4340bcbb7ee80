#pragma once

#include "panels/ChangeList.h"
#include "panels/ResultList.h"
#include "support/Controls.h"

#include <QStringList>

namespace zem::test {

/// Waits for work on another thread.
template <class Busy>
void WaitFor(const Busy& isBusy) {
    ASSERT_TRUE(QTest::qWaitFor([&] { return !isBusy(); }, 10000));
}

/// The rows of a list of places: "Hall|room Hall, exit north|error|...", the group without its count first.
inline QStringList TextsOf(const QWidget& window, const char* list) {
    QStringList rows;
    const auto* model = Find<ResultList>(window, list).model();
    for (int group = 0; group < model->rowCount(); ++group) {
        const QModelIndex parent = model->index(group, 0);
        for (int row = 0; row < model->rowCount(parent); ++row) {
            QStringList columns = {parent.data().toString().section(u' ', 0, 0)};
            for (int column = 0; column < model->columnCount(); ++column)
                columns.append(model->index(row, column, parent).data().toString());
            rows.append(columns.join(u'|'));
        }
    }
    return rows;
}

/// The rows of a list of changes: "[x] room Hall, description|printed text|old|new", without a box where
/// nothing can be ticked.
inline QStringList ChangesOf(const QWidget& window, const char* list = "lstChanges") {
    QStringList rows;
    const auto* model = Find<ChangeList>(window, list).model();
    for (int row = 0; row < model->rowCount(); ++row) {
        QStringList columns;
        for (int column = 0; column < model->columnCount(); ++column)
            columns.append(model->index(row, column).data().toString());
        const QVariant box = model->index(row, 0).data(Qt::CheckStateRole);
        const QString mark = !box.isValid()               ? QString()
                             : box.toInt() == Qt::Checked ? QStringLiteral("[x] ")
                                                          : QStringLiteral("[ ] ");
        rows.append(mark + columns.join(u'|'));
    }
    return rows;
}

} // namespace zem::test
