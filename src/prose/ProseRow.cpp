#include "prose/ProseRow.h"

#include "figures/PrintedWords.h"
#include "forms/RunCommand.h"
#include "prose/FindBar.h"
#include "prose/FormatMenu.h"
#include "prose/HelpWriting.h"
#include "prose/TextPreview.h"
#include "prose/frmLargeText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QShowEvent>
#include <QToolButton>

namespace zem {

namespace {

constexpr int WaitForRow = 200; // milliseconds
constexpr int LinesOfPreview = 7;

} // namespace

ProseRow::ProseRow(QWidget* parent)
    : QWidget(parent),
      column_(new QVBoxLayout(this)),
      buttons_(new QWidget(this)),
      lblWords_(new QLabel(this)) {
    column_->setContentsMargins({});
    column_->setSpacing(2);
    column_->addWidget(buttons_);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    wait_.setSingleShot(true);
    wait_.setInterval(WaitForRow);
    connect(&wait_, &QTimer::timeout, this, &ProseRow::Refresh);
}

void ProseRow::Use(const ProseBox& box, const EditorContext& context, bool hasLargeWindow) {
    box_ = box;
    context_.emplace(context);
    setObjectName(box.Widget().objectName() + QStringLiteral("_Tools"));
    lblWords_->setObjectName(box.Widget().objectName() + QStringLiteral("_Words"));
    AddButtons(hasLargeWindow);
    if (box.HasSeveralLines()) {
        find_ = new FindBar(box, this);
        column_->addWidget(find_);
    }
    box.OnChange(this, [this] {
        if (!wait_.isActive())
            wait_.start();
    });
    box.Widget().setProperty("hasLargeWindow", hasLargeWindow);
    box.Widget().installEventFilter(this);
    ConnectTools(box, *this);
    Refresh();
}

QToolButton* ProseRow::AddButton(const char* name, const QString& text, const QString& what) {
    auto* button = new QToolButton(buttons_);
    button->setObjectName(box_->Widget().objectName() + u'_' + QLatin1String(name));
    button->setText(text);
    button->setToolTip(what);
    button->setAccessibleName(what);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus); // the box has the keys, and its menu the rest
    buttons_->layout()->addWidget(button);
    return button;
}

void ProseRow::AddButtons(bool hasLargeWindow) {
    auto* row = new QHBoxLayout(buttons_);
    row->setContentsMargins({});
    row->setSpacing(2);
    const char* const letters[] = {"B", "I", "U"};
    for (std::size_t k = 0; k < PlainLooks().size(); ++k) {
        const TextLook& look = PlainLooks()[k];
        const QString caption = QString(QLatin1String(look.caption)).remove(u'&');
        QToolButton* button = AddButton(look.begin + 1, QLatin1String(letters[k]),
                                        QStringLiteral("%1 (%2)").arg(caption, QLatin1String(look.key)));
        QFont font = button->font();
        font.setBold(k == 0);
        font.setItalic(k == 1);
        font.setUnderline(k == 2);
        button->setFont(font);
        connect(button, &QToolButton::clicked, this, [this, look] {
            ApplyLook(*box_, look);
            box_->Widget().setFocus();
        });
    }
    const auto addMenu = [&](const char* name, const QString& text, const std::vector<TextLook>& looks) {
        QToolButton* button = AddButton(name, text, QStringLiteral("%1 of the selected words").arg(text));
        auto* menu = new QMenu(button);
        for (const TextLook& look : looks)
            connect(menu->addAction(QLatin1String(look.caption)), &QAction::triggered, this, [this, look] {
                ApplyLook(*box_, look);
                box_->Widget().setFocus();
            });
        button->setMenu(menu);
        button->setPopupMode(QToolButton::InstantPopup);
    };
    addMenu("Colour", QStringLiteral("Colour"), ColourLooks());
    addMenu("Size", QStringLiteral("Size"), SizeLooks());
    if (box_->HasSeveralLines())
        connect(AddButton("FindWords", QStringLiteral("Find"), QStringLiteral("Find in this text (Ctrl+F)")),
                &QToolButton::clicked, this, &ProseRow::Find);
    butPreview_ = AddButton("Preview", QStringLiteral("Preview"),
                            QStringLiteral("Show the text as players see it (Ctrl+Shift+V)"));
    butPreview_->setCheckable(true);
    connect(butPreview_, &QToolButton::toggled, this, &ProseRow::ShowPreview);
    if (hasLargeWindow)
        connect(AddButton("Large", QStringLiteral("Large..."),
                          QStringLiteral("Write in a large window (Ctrl+Shift+L)")),
                &QToolButton::clicked, this, [this] { EditInLargeWindow(*box_, *context_); });
    row->addStretch();
    row->addWidget(lblWords_);
}

/// The tools of a box that cannot be changed cannot be used.
bool ProseRow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::EnabledChange || event->type() == QEvent::ReadOnlyChange)
        wait_.start();
    return QWidget::eventFilter(watched, event);
}

void ProseRow::Find() {
    if (find_ != nullptr)
        find_->Begin();
}

bool ProseRow::IsPreviewShown() const {
    return preview_ != nullptr && preview_->isVisibleTo(this);
}

void ProseRow::ShowPreview(bool isShown) {
    butPreview_->setChecked(isShown);
    if (preview_ == nullptr && isShown) {
        preview_ = new TextPreview(this);
        preview_->setObjectName(box_->Widget().objectName() + QStringLiteral("_TextPreview"));
        preview_->setFixedHeight(preview_->fontMetrics().lineSpacing() * LinesOfPreview);
        column_->addWidget(preview_);
    }
    if (preview_ != nullptr)
        preview_->setVisible(isShown);
    Refresh();
}

void ProseRow::Refresh() {
    const std::string text = box_->Bytes();
    const std::size_t words = figures::CountWords(text);
    lblWords_->setText(words == 1 ? QStringLiteral("1 word") : QStringLiteral("%1 words").arg(words));
    buttons_->setEnabled(box_->CanBeChanged());
    if (IsPreviewShown())
        preview_->ShowText(text);
}

} // namespace zem
