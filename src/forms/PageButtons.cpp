#include "forms/PageButtons.h"

#include <QPushButton>
#include <QStackedWidget>

#include <cstddef>

namespace zem {

PageButtons::PageButtons(QStackedWidget& pages, const std::vector<QPushButton*>& buttons)
    : QObject(&pages),
      pages_(pages),
      buttons_(buttons) {
    for (std::size_t page = 0; page < buttons_.size(); ++page) {
        QPushButton* button = buttons_[page];
        QFont bold = button->font();
        bold.setBold(true);
        const int extra = QFontMetrics(bold).horizontalAdvance(button->text()) -
                          button->fontMetrics().horizontalAdvance(button->text());
        button->setMinimumWidth(button->sizeHint().width() + extra); // Keeps the row of buttons in place.
        connect(button, &QPushButton::clicked, this, [this, page] { Show(static_cast<int>(page)); });
    }
    Show(0);
}

void PageButtons::Show(int page) {
    pages_.setCurrentIndex(page);
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        QFont font = buttons_[i]->font();
        font.setBold(static_cast<int>(i) == page);
        buttons_[i]->setFont(font);
        buttons_[i]->setAccessibleDescription(font.bold() ? tr("this page is shown") : QString());
    }
}

} // namespace zem
