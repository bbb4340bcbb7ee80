#include "windows/frmReadyMade.h"

#include "base/KelError.h"
#include "base/TextFile.h"
#include "forms/ColourRoles.h"
#include "forms/DialogSize.h"
#include "forms/OfferMatches.h"
#include "forms/StorableInput.h"
#include "qt/QtText.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace zem {

namespace {

constexpr QSize StartSizeOfPieces(760, 560);
constexpr int WidthOfList = 220;

/// Only what the choices have can be the answer.
bool IsClosed(const PieceQuestion& question) {
    return question.kind == AnswerKind::Exit || question.kind == AnswerKind::Choice;
}

/// A direction is shown with the room to which it leads already; what is answered is the word alone.
QString AnswerIn(const QComboBox& box) {
    const QVariant word = box.isEditable() ? QVariant() : box.currentData();
    return word.isValid() ? word.toString() : box.currentText().trimmed();
}

/// "north", "east (to Library)".
void AddDirections(QComboBox& box, const PieceQuestion& question, const GameModel& game,
                   PieceAnswers answers) {
    for (const std::string& word : PossibleAnswers(question, game, answers)) {
        answers[question.id] = word;
        const QString there = ToQt(LeadsAlready(question, game, answers));
        box.addItem(there.isEmpty() ? ToQt(word) : QStringLiteral("%1 (to %2)").arg(ToQt(word), there),
                    ToQt(word));
    }
}

/// "The key lies in:"
QString LabelOf(const PieceQuestion& question) {
    return ToQt(question.text) + u':';
}

} // namespace

std::vector<ReadyMade> ReadPieces(const QString& folder) {
    std::vector<ReadyMade> pieces;
    for (const QFileInfo& file : QDir(folder).entryInfoList({QStringLiteral("*.kel")}, QDir::Files)) {
        try {
            pieces.push_back(ReadReadyMade(ReadFile(PathFromQt(file.filePath()))));
        } catch (const KelError&) {
            continue;
        }
    }
    std::sort(pieces.begin(), pieces.end(),
              [](const ReadyMade& a, const ReadyMade& b) { return a.title < b.title; });
    return pieces;
}

frmReadyMade::frmReadyMade(const GameModel& game, const CommandLookup& commands,
                           std::vector<ReadyMade> pieces, std::string room, Dialogs& dialogs, QWidget* parent)
    : QDialog(parent),
      game_(game),
      commands_(commands),
      pieces_(std::move(pieces)),
      room_(std::move(room)),
      dialogs_(dialogs),
      txtFilter_(new QLineEdit(this)),
      lstPieces_(new QListWidget(this)),
      lblAbout_(new QLabel(this)),
      lblProblem_(new QLabel(this)),
      butInsert_(new QPushButton(QStringLiteral("&Insert"), this)),
      butCancel_(new QPushButton(QStringLiteral("Cancel"), this)) {
    setObjectName(QStringLiteral("frmReadyMade"));
    setWindowTitle(QStringLiteral("Insert ready-made"));
    MakeControls();
    ShowMatching();
    resize(StartSizeOfPieces);
    RememberSize(*this);
    txtFilter_->setFocus();
}

void frmReadyMade::MakeControls() {
    txtFilter_->setObjectName(QStringLiteral("txtPieceFilter"));
    txtFilter_->setPlaceholderText(QStringLiteral("Filter: door, money, talk ..."));
    txtFilter_->setAccessibleName(QStringLiteral("Filter of the pieces"));
    txtFilter_->setClearButtonEnabled(true);
    lstPieces_->setObjectName(QStringLiteral("lstPieces"));
    lstPieces_->setAccessibleName(QStringLiteral("Ready-made pieces"));
    lblAbout_->setObjectName(QStringLiteral("lblPiece"));
    lblAbout_->setWordWrap(true);
    lblProblem_->setObjectName(QStringLiteral("lblPieceProblem"));
    lblProblem_->setWordWrap(true);
    butInsert_->setObjectName(QStringLiteral("butOK"));
    butInsert_->setDefault(true);
    butCancel_->setObjectName(QStringLiteral("butCancel"));

    auto* left = new QVBoxLayout;
    left->addWidget(txtFilter_);
    left->addWidget(lstPieces_);
    lstPieces_->setMinimumWidth(WidthOfList);
    auto* scroll = new QScrollArea(this);
    scroll->setObjectName(QStringLiteral("scrQuestions"));
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    auto* right = new QVBoxLayout;
    right->addWidget(lblAbout_);
    right->addWidget(scroll, 1);
    right->addWidget(lblProblem_);
    auto* both = new QHBoxLayout;
    both->addLayout(left, 1);
    both->addLayout(right, 2);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(butInsert_);
    buttons->addWidget(butCancel_);
    auto* column = new QVBoxLayout(this);
    column->addLayout(both);
    column->addLayout(buttons);

    connect(txtFilter_, &QLineEdit::textChanged, this, &frmReadyMade::ShowMatching);
    connect(lstPieces_, &QListWidget::currentRowChanged, this, &frmReadyMade::ShowPiece);
    connect(butInsert_, &QPushButton::clicked, this, &frmReadyMade::Insert);
    connect(butCancel_, &QPushButton::clicked, this, &QDialog::reject);
}

void frmReadyMade::Choose(const QString& title) {
    for (QListWidgetItem* item : lstPieces_->findItems(title, Qt::MatchExactly))
        lstPieces_->setCurrentItem(item);
}

void frmReadyMade::ShowMatching() {
    const QStringList words = txtFilter_->text().toLower().split(u' ', Qt::SkipEmptyParts);
    {
        const QSignalBlocker quiet(lstPieces_);
        lstPieces_->clear();
        const auto hasAll = [&words](const QString& text) {
            return std::all_of(words.begin(), words.end(),
                               [&](const QString& word) { return text.contains(word); });
        };
        for (const bool inTitle : {true, false}) // what is called so comes first
            for (std::size_t k = 0; k < pieces_.size(); ++k) {
                const ReadyMade& piece = pieces_[k];
                const QString title = ToQt(piece.title).toLower();
                const QString all = title + u' ' + (ToQt(piece.about) + u' ' + ToQt(piece.words)).toLower();
                if (hasAll(title) != inTitle || !hasAll(all))
                    continue;
                auto* item = new QListWidgetItem(ToQt(piece.title), lstPieces_);
                item->setData(Qt::UserRole, static_cast<int>(k));
            }
        lstPieces_->setCurrentRow(0);
    }
    ShowPiece();
}

QString frmReadyMade::Title() const {
    return piece_ == nullptr ? QString() : ToQt(piece_->title);
}

void frmReadyMade::ShowPiece() {
    const QListWidgetItem* item = lstPieces_->currentItem();
    piece_ = item == nullptr ? nullptr : &pieces_[static_cast<std::size_t>(item->data(Qt::UserRole).toInt())];
    asked_.clear();
    questions_ = new QWidget;
    rows_ = new QFormLayout(questions_);
    rows_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    rows_->setRowWrapPolicy(QFormLayout::WrapLongRows);
    butInsert_->setEnabled(piece_ != nullptr);
    lblProblem_->clear();
    lblAbout_->setText(piece_ == nullptr ? QStringLiteral("No piece fits these words.")
                                         : ToQt(piece_->about));
    if (piece_ != nullptr) {
        answers_ = SuggestAnswers(*piece_, game_, room_);
        for (const PieceQuestion& question : piece_->questions)
            AddQuestion(question);
    }
    findChild<QScrollArea*>(QStringLiteral("scrQuestions"))->setWidget(questions_); // deletes the one before
    PutInTabOrder();
    if (piece_ != nullptr)
        Check();
}

void frmReadyMade::PutInTabOrder() {
    QWidget* last = lstPieces_;
    setTabOrder(txtFilter_, lstPieces_);
    for (QWidget* next : findChildren<QComboBox*>()) {
        setTabOrder(last, next);
        last = next;
    }
    setTabOrder(last, butInsert_);
    setTabOrder(butInsert_, butCancel_);
}

void frmReadyMade::AddQuestion(const PieceQuestion& question) {
    auto* box = new QComboBox(questions_);
    box->setObjectName(QStringLiteral("cmb") + ToQt(question.id));
    box->setAccessibleName(ToQt(question.text));
    box->setEditable(!IsClosed(question));
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(20);
    if (question.kind == AnswerKind::Exit)
        AddDirections(*box, question, game_, answers_);
    else
        for (const std::string& possible : PossibleAnswers(question, game_, answers_))
            box->addItem(ToQt(possible));
    const QString answer = ToQt(answers_.at(question.id));
    if (box->isEditable()) {
        OfferMatches(*box);
        RefuseUnstorableText(*box->lineEdit(), dialogs_);
        box->setEditText(answer);
    } else {
        box->setCurrentText(answer);
    }
    auto* wrong = new QLabel(questions_);
    wrong->setWordWrap(true);
    auto* cell = new QVBoxLayout;
    cell->addWidget(box);
    cell->addWidget(wrong);
    auto* label = new QLabel(LabelOf(question), questions_);
    label->setBuddy(box);
    rows_->addRow(label, cell);
    asked_.push_back({&question, box, wrong});
    connect(box, &QComboBox::currentTextChanged, this, &frmReadyMade::Check);
    connect(box, &QComboBox::currentTextChanged, this, [this, id = question.id] {
        for (const Asked& asked : asked_)
            if (asked.question->kind == AnswerKind::Exit &&
                (asked.question->id == id || asked.question->room == id))
                FollowExit(asked);
    });
}

/// Where the exit leads somewhere already, the piece goes there.
void frmReadyMade::FollowExit(const Asked& exit) {
    const std::string there = LeadsAlready(*exit.question, game_, answers_);
    for (const Asked& asked : asked_)
        if (!there.empty() && asked.question->id == exit.question->leadsTo)
            asked.box->setEditText(ToQt(there));
}

/// Tells what is wrong with each answer. The directions that are free depend on the room.
void frmReadyMade::Check() {
    for (const Asked& asked : asked_)
        answers_[asked.question->id] = FromQt(AnswerIn(*asked.box));
    bool isRight = true;
    for (const Asked& asked : asked_) {
        if (asked.question->kind == AnswerKind::Exit) {
            const QSignalBlocker quiet(asked.box);
            const QString chosen = AnswerIn(*asked.box);
            asked.box->clear();
            AddDirections(*asked.box, *asked.question, game_, answers_);
            asked.box->setCurrentIndex(std::max(0, asked.box->findData(chosen)));
            answers_[asked.question->id] = FromQt(AnswerIn(*asked.box));
        }
        const bool isAsked = IsAsked(*piece_, *asked.question, game_, answers_);
        asked.box->setEnabled(isAsked);
        const QString wrong = isAsked ? ToQt(WhyNotAnswer(*asked.question, game_, answers_)) : QString();
        asked.answer->setText(wrong);
        asked.answer->setVisible(!wrong.isEmpty());
        QPalette colours = asked.answer->palette();
        colours.setColor(QPalette::WindowText, ColourOf(ColourRole::Error, palette()));
        asked.answer->setPalette(colours);
        isRight = isRight && wrong.isEmpty();
    }
    butInsert_->setEnabled(isRight);
}

void frmReadyMade::Insert() {
    if (piece_ == nullptr)
        return;
    try {
        result_ = InsertReadyMade(game_, *piece_, answers_, commands_);
    } catch (const KelError& error) {
        lblProblem_->setText(ToQt(error.what()));
        return;
    }
    accept();
}

} // namespace zem
