#include "forms/NameBox.h"

#include "forms/OfferMatches.h"
#include "forms/StorableInput.h"
#include "qt/QtText.h"

#include <QLineEdit>
#include <QListView>
#include <QWheelEvent>

#include <limits>

namespace zem {

namespace {

constexpr int VisibleRows = 15;
constexpr int ShownCharacters = 12; // The box is at least as wide.

} // namespace

NameBox::NameBox(QWidget* parent) : QComboBox(parent) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    // Otherwise it measures every name of the list.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(ShownCharacters);
    setMaxVisibleItems(VisibleRows);
    setFocusPolicy(Qt::StrongFocus);
    lineEdit()->setMaxLength(std::numeric_limits<int>::max());
    OfferMatches(*this);
}

void NameBox::Offer(QAbstractItemModel& names) {
    setModel(&names);
    setCurrentIndex(-1);
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

void NameBox::showPopup() {
    static_cast<QListView*>(view())->setUniformItemSizes(true);
    // The list opens on the name that stands in the box, however it came there.
    if (const int row = findText(currentText(), Qt::MatchExactly | Qt::MatchCaseSensitive); row >= 0)
        setCurrentIndex(row);
    QComboBox::showPopup();
}

void NameBox::wheelEvent(QWheelEvent* event) {
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore(); // The author scrolls past it.
}

} // namespace zem
