#include "forms/NameBox.h"

#include "forms/QtText.h"
#include "forms/StorableInput.h"

#include <QCompleter>
#include <QLineEdit>
#include <QListView>
#include <QWheelEvent>

#include <limits>

namespace zem {

namespace {

constexpr int VisibleRows = 15;
constexpr int ShownCharacters = 12; // at least

} // namespace

NameBox::NameBox(QWidget* parent) : QComboBox(parent), suggestions_(new QCompleter(this)) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    // Its own completer would put a name of the list in the place of one that differs in its capitals.
    setCompleter(nullptr);
    // Otherwise it measures every name of the list.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(ShownCharacters);
    setMaxVisibleItems(VisibleRows);
    setFocusPolicy(Qt::StrongFocus);
    lineEdit()->setMaxLength(std::numeric_limits<int>::max());

    auto* popup = new QListView;
    popup->setUniformItemSizes(true);
    suggestions_->setPopup(popup);
    suggestions_->setWidget(lineEdit());
    suggestions_->setCaseSensitivity(Qt::CaseInsensitive);
    suggestions_->setFilterMode(Qt::MatchContains);
    suggestions_->setMaxVisibleItems(VisibleRows);
    connect(lineEdit(), &QLineEdit::textEdited, this, &NameBox::Suggest);
    connect(suggestions_, qOverload<const QString&>(&QCompleter::activated), this, &QComboBox::setEditText);
}

void NameBox::Offer(QAbstractItemModel& names) {
    setModel(&names);
    setCurrentIndex(-1);
    suggestions_->setModel(&names);
}

void NameBox::RefuseUnstorableText(Dialogs& dialogs) {
    zem::RefuseUnstorableText(*lineEdit(), dialogs);
}

void NameBox::SetText(const std::string& text) {
    setEditText(ToQt(text));
}

std::string NameBox::Text() const {
    return FromQt(currentText());
}

void NameBox::Suggest(const QString& text) {
    suggestions_->setCompletionPrefix(text);
    const bool isOnlyItself =
        suggestions_->completionCount() == 1 && suggestions_->currentCompletion() == text;
    if (text.isEmpty() || isOnlyItself)
        suggestions_->popup()->hide();
    else
        suggestions_->complete(QRect(-lineEdit()->pos(), size())); // as wide as the whole box
}

void NameBox::showPopup() {
    static_cast<QListView*>(view())->setUniformItemSizes(true);
    QComboBox::showPopup();
}

void NameBox::wheelEvent(QWheelEvent* event) {
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore(); // the author scrolls past it
}

} // namespace zem
