#pragma once

#include "game/Find.h"
#include "play/Session.h"

#include <QHash>
#include <QWidget>

#include <optional>

class QCheckBox;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace zem {

/// The state of the game that is being played. What the last turn has changed is marked, with what it was
/// before; values can be set by hand.
class WatchView : public QWidget {
    Q_OBJECT

public:
    explicit WatchView(QWidget* parent = nullptr);

    /// Shows the state, which outlives the next call; null for none.
    void Show(const play::Session* session);

    /// What the selected row is about; nothing where none is selected.
    std::optional<NamedThing> Selected() const;

signals:
    /// The author wants a value to be another.
    void ValueSet(play::Kind kind, const std::string& name, const std::string& value);

private:
    void Fill();
    void AddRow(const play::WatchedValue& value);
    void Toggle(QTreeWidgetItem* item, int column);
    void Set(const QTreeWidgetItem* item);

    const play::Session* session_ = nullptr;
    QLineEdit* filter_;
    QCheckBox* all_;
    QTreeWidget* values_;
    QHash<QString, QString> before_; // the values that were shown for the turn before
    QHash<QString, QString> now_;
    std::uint64_t shownState_ = 0;
    bool isFilling_ = false;
};

} // namespace zem
