#pragma once

#include "play/TraceRows.h"

#include <QTreeWidget>

namespace zem {

/// What ran in the last turn, in plain English: what a line has called stands under it, and beside a
/// condition whether it was met.
class TraceView : public QTreeWidget {
    Q_OBJECT

public:
    explicit TraceView(QWidget* parent = nullptr);

    void Show(const std::vector<play::TraceRow>& rows);

signals:
    /// Return was pressed on a line, or it was clicked twice.
    void SourceChosen(const play::Source& source);

protected:
    void changeEvent(QEvent* event) override;

private:
    void Fill();
    void Paint(QTreeWidgetItem& item, const play::TraceRow& row) const;

    std::vector<play::TraceRow> rows_;
};

} // namespace zem
