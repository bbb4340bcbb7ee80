#include "forms/OfferMatches.h"

#include <QAbstractProxyModel>
#include <QComboBox>
#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>

namespace zem {

namespace {

void Suggest(QComboBox& box, QCompleter& matches, const QString& text) {
    if (matches.model() != box.model())
        matches.setModel(box.model());
    matches.setCompletionPrefix(text);
    const bool isOnlyItself = matches.completionCount() == 1 && matches.currentCompletion() == text;
    // An open list would keep Alt and a letter from the window.
    if (text.isEmpty() || isOnlyItself)
        matches.popup()->hide();
    else
        matches.complete(QRect(-box.lineEdit()->pos(), box.size())); // The list is as wide as the whole box.
}

/// Chooses the entry itself and not the first one with its text, as several may read alike.
void Choose(QComboBox& box, const QCompleter& matches, const QModelIndex& match) {
    const auto* rows = qobject_cast<const QAbstractProxyModel*>(matches.completionModel());
    const QModelIndex entry = rows->mapToSource(match);
    if (!entry.isValid())
        return;
    box.setCurrentIndex(entry.row());
    box.setEditText(box.itemText(entry.row())); // It was the current one already when its text was changed.
}

/// In a box whose text was typed, an arrow key would put the neighbour of that entry in its place, unseen.
class ArrowKeys : public QObject {
public:
    explicit ArrowKeys(QComboBox& box) : QObject(&box), box_(box) {
        box.installEventFilter(this);
        connect(box.lineEdit(), &QLineEdit::textEdited, this, [this] { isTyped_ = true; });
        connect(&box, &QComboBox::activated, this, [this] { isTyped_ = false; });
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress || !isTyped_)
            return QObject::eventFilter(watched, event);
        const auto& key = static_cast<const QKeyEvent&>(*event);
        const bool isArrow = key.key() == Qt::Key_Down || key.key() == Qt::Key_Up;
        if (!isArrow || (key.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
            return QObject::eventFilter(watched, event);
        box_.showPopup();
        return true;
    }

private:
    QComboBox& box_;
    bool isTyped_ = false;
};

} // namespace

void OfferMatches(QComboBox& box) {
    // Its own completer would put a name of the list in the place of one that differs in its capitals.
    box.setCompleter(nullptr);
    auto* matches = new QCompleter(&box);
    new ArrowKeys(box);
    auto* popup = new QListView;
    popup->setUniformItemSizes(true);
    matches->setPopup(popup);
    matches->setWidget(box.lineEdit());
    matches->setCaseSensitivity(Qt::CaseInsensitive);
    matches->setFilterMode(Qt::MatchContains);
    matches->setMaxVisibleItems(box.maxVisibleItems());
    QObject::connect(box.lineEdit(), &QLineEdit::textEdited, matches,
                     [&box, matches](const QString& text) { Suggest(box, *matches, text); });
    QObject::connect(matches, qOverload<const QModelIndex&>(&QCompleter::activated), &box,
                     [&box, matches](const QModelIndex& match) { Choose(box, *matches, match); });
}

} // namespace zem
