#include "help/frmManual.h"

#include "forms/DialogSize.h"
#include "ui_frmManual.h"

#include <QDesktopServices>
#include <QShortcut>
#include <QTextBlock>
#include <QUrl>

namespace zem {

frmManual::frmManual(const QString& file, Dialogs& dialogs)
    : QDialog(nullptr, Qt::Window),
      ui_(std::make_unique<Ui::frmManual>()),
      file_(file),
      dialogs_(dialogs) {
    ui_->setupUi(this);
    setAttribute(Qt::WA_QuitOnClose, false);
    QTextBrowser* page = ui_->txtManual;
    page->setOpenLinks(false);
    connect(page, &QTextBrowser::sourceChanged, page,
            [page] { page->setFocus(); }); // to scroll on with the keys
    connect(page, &QTextBrowser::anchorClicked, this, &frmManual::Follow);
    connect(page, &QTextBrowser::backwardAvailable, ui_->butBack, &QWidget::setEnabled);
    connect(page, &QTextBrowser::forwardAvailable, ui_->butForward, &QWidget::setEnabled);
    connect(ui_->butBack, &QPushButton::clicked, page, &QTextBrowser::backward);
    connect(ui_->butForward, &QPushButton::clicked, page, &QTextBrowser::forward);
    connect(ui_->butContents, &QPushButton::clicked, this, [this] { GoTo({}); });
    connect(ui_->butFind, &QPushButton::clicked, this, &frmManual::butFind_Click);
    connect(ui_->txtFind, &QLineEdit::textEdited, ui_->lblFound, &QLabel::clear);
    connect(ui_->butClose, &QPushButton::clicked, this, &QDialog::close);
    connect(new QShortcut(QKeySequence::ZoomIn, this), &QShortcut::activated, page,
            [page] { page->zoomIn(); });
    connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Equal), this), &QShortcut::activated, page,
            [page] { page->zoomIn(); }); // where "+" needs Shift
    connect(new QShortcut(QKeySequence::ZoomOut, this), &QShortcut::activated, page,
            [page] { page->zoomOut(); });
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, ui_->txtFind,
            [this] { ui_->txtFind->setFocus(Qt::ShortcutFocusReason); });
    GoTo({});
    RememberSize(*this);
}

frmManual::~frmManual() = default;

bool frmManual::HasPlace(const QString& name) const {
    const QTextDocument* document = ui_->txtManual->document();
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next())
        for (QTextBlock::iterator part = block.begin(); !part.atEnd(); ++part)
            if (part.fragment().charFormat().anchorNames().contains(name))
                return true;
    return false;
}

void frmManual::GoTo(const QString& place) {
    QUrl url = QUrl::fromLocalFile(file_);
    if (!place.isEmpty())
        url.setFragment(place);
    ui_->txtManual->setSource(url);
}

/// Stays here for a place of the manual; anything else is a matter for the desktop.
void frmManual::Follow(const QUrl& link) {
    if (link.adjusted(QUrl::RemoveFragment) == QUrl::fromLocalFile(file_))
        ui_->txtManual->setSource(link);
    else if (link.isLocalFile())
        dialogs_.OpenDocument(link.toLocalFile());
    else
        QDesktopServices::openUrl(link);
}

/// Goes on from the place found last, and after the end from the beginning.
void frmManual::butFind_Click() {
    const QString text = ui_->txtFind->text();
    if (text.isEmpty() || ui_->txtManual->find(text))
        return;
    const QTextCursor last = ui_->txtManual->textCursor();
    ui_->txtManual->moveCursor(QTextCursor::Start);
    if (ui_->txtManual->find(text))
        return;
    ui_->txtManual->setTextCursor(last);
    ui_->lblFound->setText(tr("Not found."));
}

} // namespace zem
