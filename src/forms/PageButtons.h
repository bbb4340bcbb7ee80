#pragma once

#include <QObject>

#include <cstddef>
#include <vector>

class QPushButton;
class QStackedWidget;

namespace zem {

/// The row of buttons that chooses the page of a form: one page shows, and the caption of its button is bold.
class PageButtons : public QObject {
    Q_OBJECT

public:
    /// The first page shows.
    /// @param pages  owns this object
    /// @param buttons  one for each page, in the order of the pages
    PageButtons(QStackedWidget& pages, const std::vector<QPushButton*>& buttons);

    /// Shows a page, from 0.
    void Show(int page);

    /// The button of a page, from 0.
    QPushButton* Button(int page) const { return buttons_[static_cast<std::size_t>(page)]; }

private:
    QStackedWidget& pages_;
    std::vector<QPushButton*> buttons_;
};

} // namespace zem
