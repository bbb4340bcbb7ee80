#include "panels/frmMerge.h"

#include "forms/DialogSize.h"
#include "forms/RunCommand.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace zem {

namespace {

constexpr int ShownOfPath = 40; // characters, at least
constexpr QSize SizeOfMerge(640, 220);

} // namespace

frmMerge::frmMerge(const QString& game, const std::vector<FileVersion>& versions, Dialogs& dialogs,
                   QWidget* parent)
    : QDialog(parent),
      game_(game),
      dialogs_(dialogs),
      txtTheirs_(new QLineEdit(this)),
      cmbBase_(new QComboBox(this)),
      butMerge_(new QPushButton(QStringLiteral("&Merge"), this)) {
    MakeControls();
    cmbBase_->addItem(QStringLiteral("not known: each difference is to be decided"));
    for (const FileVersion& version : versions)
        cmbBase_->addItem(QStringLiteral("the version of %1")
                              .arg(version.time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))),
                          version.path);
    connect(txtTheirs_, &QLineEdit::textChanged, this,
            [this](const QString& text) { butMerge_->setEnabled(!text.isEmpty()); });
    butMerge_->setEnabled(false);
    butMerge_->setDefault(true);
    connect(butMerge_, &QPushButton::clicked, this, &QDialog::accept);
    RememberSize(*this);
}

void frmMerge::MakeControls() {
    setObjectName(QStringLiteral("frmMerge"));
    setWindowTitle(QStringLiteral("Merge with another version"));
    auto* table = new QGridLayout(this);
    auto* lblWhat = new QLabel(
        QStringLiteral(
            "The open game takes up what somebody else has changed in the other version. Where both "
            "changed the same, you decide."),
        this);
    lblWhat->setWordWrap(true);
    table->addWidget(lblWhat, 0, 0, 1, 3);
    const auto addRow = [&](int row, const QString& caption, QWidget* field, const char* button,
                            const QString& buttonCaption) {
        auto* label = new QLabel(caption, this);
        label->setBuddy(field);
        auto* browse = new QPushButton(buttonCaption, this);
        browse->setObjectName(QLatin1String(button));
        browse->setAutoDefault(false);
        browse->setAccessibleName(
            QStringLiteral("Browse, %1").arg(QString(caption).remove(u'&').remove(u':')));
        table->addWidget(label, row, 0);
        table->addWidget(field, row, 1);
        table->addWidget(browse, row, 2);
        return browse;
    };
    txtTheirs_->setObjectName(QStringLiteral("txtTheirs"));
    txtTheirs_->setMinimumWidth(fontMetrics().averageCharWidth() * ShownOfPath);
    cmbBase_->setObjectName(QStringLiteral("cmbBase"));
    OnClick(
        addRow(1, QStringLiteral("&Other version:"), txtTheirs_, "butTheirs", QStringLiteral("&Browse...")),
        this, dialogs_, [this] { BrowseTheirs(); });
    OnClick(addRow(2, QStringLiteral("Both began &as:"), cmbBase_, "butBase", QStringLiteral("Bro&wse...")),
            this, dialogs_, [this] { BrowseBase(); });
    butMerge_->setObjectName(QStringLiteral("butMerge"));
    auto* butCancel = new QPushButton(QStringLiteral("Cancel"), this);
    butCancel->setObjectName(QStringLiteral("butCancel"));
    connect(butCancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(butMerge_);
    buttons->addWidget(butCancel);
    table->addLayout(buttons, 4, 0, 1, 3);
    table->setRowStretch(3, 1);
    table->setColumnStretch(1, 1);
    resize(SizeOfMerge);
}

QString frmMerge::AskGame() {
    Dialogs::FileQuestion question = OpenGameQuestion(game_);
    question.title = QStringLiteral("A version of the game");
    return dialogs_.AskOpenFile(this, question);
}

void frmMerge::BrowseTheirs() {
    if (const QString file = AskGame(); !file.isEmpty())
        txtTheirs_->setText(file);
}

void frmMerge::BrowseBase() {
    const QString file = AskGame();
    if (file.isEmpty())
        return;
    cmbBase_->addItem(file, file);
    cmbBase_->setCurrentIndex(cmbBase_->count() - 1);
}

QString frmMerge::Theirs() const {
    return txtTheirs_->text();
}

QString frmMerge::Base() const {
    return cmbBase_->currentData().toString();
}

} // namespace zem
