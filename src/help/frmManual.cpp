#include "help/frmManual.h"

#include "forms/DialogSize.h"
#include "ui_frmManual.h"

#include <QDesktopServices>
#include <QEvent>
#include <QImageReader>
#include <QShortcut>
#include <QTextBlock>
#include <QTimer>
#include <QUrl>
#include <QtMath>

#include <algorithm>

namespace zem {

namespace {

constexpr int BodyMargins = 24; // Device-independent pixels; the style sheet of ZEM.HTM sets them.

} // namespace

frmManual::frmManual(const QString& file, Dialogs& dialogs)
    : QDialog(nullptr, Qt::Window),
      ui_(std::make_unique<Ui::frmManual>()),
      file_(file),
      dialogs_(dialogs) {
    ui_->setupUi(this);
    setAttribute(Qt::WA_QuitOnClose, false);
    QTextBrowser* page = ui_->txtManual;
    page->setOpenLinks(false);
    connect(page, &QTextBrowser::sourceChanged, page, [page] { page->setFocus(); }); // Lets the keys scroll.
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
            [page] { page->zoomIn(); }); // On many keyboards "+" needs Shift.
    connect(new QShortcut(QKeySequence::ZoomOut, this), &QShortcut::activated, page,
            [page] { page->zoomOut(); });
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, ui_->txtFind,
            [this] { ui_->txtFind->setFocus(Qt::ShortcutFocusReason); });
    page->viewport()->installEventFilter(this);
    GoTo({});
    RememberSize(*this);
}

frmManual::~frmManual() = default;

bool frmManual::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize)
        QTimer::singleShot(0, this, &frmManual::FitPictures); // Once the text has its new width.
    return QDialog::eventFilter(watched, event);
}

/// Shows each picture in its own size where the window has room for it, and smaller elsewhere, so that nobody
/// has to scroll sideways.
void frmManual::FitPictures() {
    QTextDocument* document = ui_->txtManual->document();
    const int room =
        ui_->txtManual->viewport()->width() - qCeil(2 * document->documentMargin()) - BodyMargins;
    QTextCursor change(document);
    change.beginEditBlock(); // One layout for all of them.
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next())
        for (QTextBlock::iterator part = block.begin(); !part.atEnd(); ++part) {
            QTextImageFormat picture = part.fragment().charFormat().toImageFormat();
            if (!picture.isValid())
                continue;
            const QUrl file = document->baseUrl().resolved(QUrl(picture.name()));
            const int width = std::min(room, QImageReader(file.toLocalFile()).size().width());
            if (qRound(picture.width()) == width)
                continue;
            picture.setWidth(width);
            change.setPosition(part.fragment().position());
            change.setPosition(part.fragment().position() + part.fragment().length(),
                               QTextCursor::KeepAnchor);
            change.setCharFormat(picture);
        }
    change.endEditBlock();
}

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
    if (ui_->txtManual->source().isEmpty())
        ui_->txtManual->setSource(QUrl::fromLocalFile(file_));
    FitPictures(); // The places below the pictures depend on it.
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
