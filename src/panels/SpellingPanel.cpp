#include "panels/SpellingPanel.h"

#include "forms/RunCommand.h"
#include "forms/StorableInput.h"
#include "game/PlaceLine.h"
#include "panels/ResultList.h"
#include "panels/frmNamesOfGame.h"
#include "qt/QtText.h"
#include "session/GameSession.h"
#include "session/GameSpelling.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QPointer>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace zem {

namespace {

constexpr int WaitForEdits = 150; // milliseconds
constexpr std::size_t MostWordsShown = 2000;
constexpr std::size_t MostPlacesShown = 200; // of one word
constexpr std::size_t MostSuggested = 10;

QString Counted(std::size_t count, const char* one, const char* many) {
    return QStringLiteral("%L1 %2").arg(count).arg(QLatin1String(count == 1 ? one : many));
}

/// "English, United Kingdom (en_GB)".
QString NameOfLanguage(const std::string& language) {
    const QString name = QString::fromStdString(language);
    const QLocale locale(name);
    if (locale.language() == QLocale::C)
        return name;
    return QStringLiteral("%1, %2 (%3)")
        .arg(QLocale::languageToString(locale.language()), QLocale::territoryToString(locale.territory()),
             name);
}

} // namespace

/// What was checked, and the version of the game whose places these are.
struct SpellingPanel::Checked {
    GameModel game;
    spelling::CheckedTexts texts;
    std::shared_ptr<const ScriptOwners> owners;
};

SpellingPanel::SpellingPanel(GameSession& session, GameSpelling& spelling, const CommandLookup& commands,
                             Dialogs& dialogs, std::function<void(const Place&)> open, QWidget* parent)
    : QDockWidget(QStringLiteral("Spelling"), parent),
      session_(session),
      spelling_(spelling),
      commands_(commands),
      dialogs_(dialogs),
      open_(std::move(open)),
      lblCounts_(new QLabel(this)),
      cmbLanguage_(new QComboBox(this)),
      butNames_(new QPushButton(QStringLiteral("Names of this game..."), this)),
      lstWords_(new QListWidget(this)),
      lstPlaces_(new ResultList(this)),
      cmbCorrect_(new QComboBox(this)),
      butCorrect_(new QPushButton(QStringLiteral("Correct everywhere"), this)),
      butAdd_(new QPushButton(QStringLiteral("Add to the game's words"), this)),
      butIgnore_(new QPushButton(QStringLiteral("Ignore"), this)) {
    setObjectName(QStringLiteral("dckSpelling"));
    setWidget(MakeControls());
    wait_.setSingleShot(true);
    wait_.setInterval(WaitForEdits);
    connect(&wait_, &QTimer::timeout, this, &SpellingPanel::Check);
    connect(&session_, &GameSession::Changed, &wait_, qOverload<>(&QTimer::start));
    connect(&session_, &GameSession::Replaced, &wait_, qOverload<>(&QTimer::start));
    connect(&spelling_, &GameSpelling::SpellerChanged, this, &SpellingPanel::Check);
    connect(lstWords_, &QListWidget::itemSelectionChanged, this, &SpellingPanel::ShowWord);
    connect(lstWords_, &QListWidget::itemActivated, this, [this] { cmbCorrect_->setFocus(); });
    connect(lstPlaces_, &ResultList::Chosen, this,
            [this](int row) { RunCommand(dialogs_, this, [&] { OpenPlace(row); }); });
    connect(cmbCorrect_->lineEdit(), &QLineEdit::returnPressed, butCorrect_, &QPushButton::click);
    connect(cmbLanguage_, &QComboBox::activated, this,
            [this](int index) { RunCommand(dialogs_, this, [&] { ChooseLanguage(index); }); });
    OnClick(butCorrect_, this, dialogs_, [this] { Correct(); });
    OnClick(butAdd_, this, dialogs_, [this] { AddSelected(); });
    OnClick(butIgnore_, this, dialogs_, [this] { IgnoreSelected(); });
    OnClick(butNames_, this, dialogs_, [this] { AddNames(); });
    spelling_.Begin();
    ShowLanguages();
    ShowCounts();
    ShowWord();
}

SpellingPanel::~SpellingPanel() = default;

QWidget* SpellingPanel::MakeControls() {
    auto* controls = new QWidget(this);
    auto* column = new QVBoxLayout(controls);
    column->addWidget(MakeTop());
    column->addWidget(MakeLists(), 1);
    column->addWidget(MakeBottom());
    return controls;
}

QWidget* SpellingPanel::MakeTop() {
    lblCounts_->setObjectName(QStringLiteral("lblSpellingCounts"));
    lblCounts_->setWordWrap(true);
    lblCounts_->setTextFormat(Qt::PlainText);
    cmbLanguage_->setObjectName(QStringLiteral("cmbSpellingLanguage"));
    cmbLanguage_->setAccessibleName(QStringLiteral("Language of the game"));
    cmbLanguage_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    cmbLanguage_->setToolTip(QStringLiteral("The language of the game's texts"));
    butNames_->setObjectName(QStringLiteral("butSpellingNames"));
    butNames_->setToolTip(QStringLiteral(
        "Words with a capital in mid-sentence that occur three times or more are mostly names"));
    auto* top = new QWidget(this);
    auto* row = new QHBoxLayout(top);
    row->setContentsMargins({});
    row->addWidget(lblCounts_, 1);
    row->addWidget(cmbLanguage_);
    row->addWidget(butNames_);
    return top;
}

QWidget* SpellingPanel::MakeLists() {
    lstWords_->setObjectName(QStringLiteral("lstUnknownWords"));
    lstWords_->setAccessibleName(QStringLiteral("Unknown words"));
    lstWords_->setUniformItemSizes(true);
    lstWords_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lstPlaces_->setObjectName(QStringLiteral("lstWordPlaces"));
    lstPlaces_->setAccessibleName(QStringLiteral("Places of the word"));
    constexpr int What = 1; // all rows are of one kind
    lstPlaces_->setColumnHidden(What, true);
    auto* lists = new QSplitter(this);
    lists->addWidget(lstWords_);
    lists->addWidget(lstPlaces_);
    lists->setStretchFactor(0, 1);
    lists->setStretchFactor(1, 3);
    lists->setChildrenCollapsible(false);
    return lists;
}

QWidget* SpellingPanel::MakeBottom() {
    cmbCorrect_->setObjectName(QStringLiteral("cmbCorrectWord"));
    cmbCorrect_->setAccessibleName(QStringLiteral("Correct to"));
    cmbCorrect_->setEditable(true);
    cmbCorrect_->setInsertPolicy(QComboBox::NoInsert);
    cmbCorrect_->setMinimumContentsLength(12);
    cmbCorrect_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    cmbCorrect_->setCompleter(nullptr);
    RefuseUnstorableText(*cmbCorrect_->lineEdit(), dialogs_);
    butCorrect_->setObjectName(QStringLiteral("butCorrectEverywhere"));
    butAdd_->setObjectName(QStringLiteral("butAddWord"));
    butAdd_->setToolTip(QStringLiteral("The author spells it so; kept beside the game"));
    butIgnore_->setObjectName(QStringLiteral("butIgnoreWord"));
    butIgnore_->setToolTip(QStringLiteral("Until another game is opened"));
    auto* label = new QLabel(QStringLiteral("Correct to:"), this);
    label->setBuddy(cmbCorrect_);
    auto* bottom = new QWidget(this);
    auto* row = new QHBoxLayout(bottom);
    row->setContentsMargins({});
    row->addWidget(label);
    row->addWidget(cmbCorrect_, 1);
    row->addWidget(butCorrect_);
    row->addWidget(butAdd_);
    row->addWidget(butIgnore_);
    return bottom;
}

bool SpellingPanel::IsBusy() const {
    return wait_.isActive() || work_.IsRunning() || spelling_.IsBusy();
}

void SpellingPanel::showEvent(QShowEvent* event) {
    QDockWidget::showEvent(event);
    Check();
}

void SpellingPanel::Check() {
    wait_.stop();
    ShowLanguages();
    if (!isVisible())
        return;
    work_.Run(
        *this,
        [game = session_.Game(), speller = spelling_.Speller(),
         &commands = commands_](const IsOutdated& isOutdated) {
            Checked checked;
            checked.texts = CheckTexts(game, commands, speller, &isOutdated);
            checked.owners = std::make_shared<const ScriptOwners>(game);
            checked.game = game;
            return checked;
        },
        [this](Checked checked) { Show(std::move(checked)); });
}

/// The word that was selected stays so, or the one that has come to its row.
void SpellingPanel::Show(Checked checked) {
    const spelling::UnknownWord* before = Selected();
    const std::string word = before == nullptr ? std::string() : before->word;
    int row = std::max(lstWords_->currentRow(), 0);
    checked_ = std::make_unique<const Checked>(std::move(checked));
    const std::vector<spelling::UnknownWord>& unknown = checked_->texts.unknown;
    {
        const QSignalBlocker filling(lstWords_);
        lstWords_->clear();
        for (std::size_t k = 0; k < std::min(unknown.size(), MostWordsShown); ++k) {
            lstWords_->addItem(QStringLiteral("%1  (%L2)").arg(ToQt(unknown[k].word)).arg(unknown[k].count));
            if (unknown[k].word == word)
                row = static_cast<int>(k);
        }
        lstWords_->setCurrentRow(std::min(row, lstWords_->count() - 1));
    }
    ShowCounts();
    ShowWord();
}

void SpellingPanel::ShowLanguages() {
    const QSignalBlocker filling(cmbLanguage_);
    cmbLanguage_->clear();
    for (const spelling::InstalledDictionary& one : spelling_.Installed())
        cmbLanguage_->addItem(NameOfLanguage(one.language), QString::fromStdString(one.language));
    cmbLanguage_->setCurrentIndex(cmbLanguage_->findData(QString::fromStdString(spelling_.Language())));
    cmbLanguage_->setEnabled(cmbLanguage_->count() > 0);
}

void SpellingPanel::ShowCounts() {
    const bool isChecked = checked_ != nullptr && spelling_.Speller().IsOn();
    const auto isName = [](const spelling::UnknownWord& word) { return word.looksLikeName; };
    butNames_->setEnabled(
        isChecked && std::any_of(checked_->texts.unknown.begin(), checked_->texts.unknown.end(), isName));
    if (!spelling_.Problem().isEmpty()) {
        lblCounts_->setText(spelling_.Problem());
        return;
    }
    if (!isChecked) {
        lblCounts_->setText(QStringLiteral("Not checked yet"));
        return;
    }
    const spelling::CheckedTexts& texts = checked_->texts;
    std::size_t places = 0;
    for (const spelling::UnknownWord& word : texts.unknown)
        places += word.count;
    QString text = texts.unknown.empty() ? QStringLiteral("No unknown words")
                                         : Counted(texts.unknown.size(), "unknown word", "unknown words") +
                                               QStringLiteral(" in ") + Counted(places, "place", "places");
    text += QStringLiteral(" among %L1").arg(texts.words);
    if (texts.unknown.size() > MostWordsShown)
        text += QStringLiteral("; the first %L1 are shown").arg(MostWordsShown);
    lblCounts_->setText(text);
}

const spelling::UnknownWord* SpellingPanel::Selected() const {
    const int row = lstWords_->currentRow();
    return checked_ == nullptr || row < 0 ? nullptr : &checked_->texts.unknown[static_cast<std::size_t>(row)];
}

std::vector<std::string> SpellingPanel::SelectedWords() const {
    std::vector<std::string> words;
    for (int row = 0; row < lstWords_->count(); ++row)
        if (lstWords_->item(row)->isSelected())
            words.push_back(checked_->texts.unknown[static_cast<std::size_t>(row)].word);
    return words;
}

void SpellingPanel::ShowWord() {
    const spelling::UnknownWord* word = Selected();
    const bool isOne = word != nullptr && lstWords_->selectedItems().size() <= 1;
    for (QPushButton* button : {butAdd_, butIgnore_})
        button->setEnabled(word != nullptr);
    butCorrect_->setEnabled(isOne);
    cmbCorrect_->setEnabled(isOne);
    cmbCorrect_->clear();
    cmbCorrect_->clearEditText();
    if (word == nullptr) {
        lstPlaces_->SetRows({});
        return;
    }
    ShowPlaces(*word);
    cmbCorrect_->setEditText(ToQt(word->word));
    spelling_.Suggest(word->word, [panel = QPointer<SpellingPanel>(this),
                                   asked = word->word](const std::vector<std::string>& words) {
        if (panel != nullptr)
            panel->ShowSuggestions(asked, words);
    });
}

void SpellingPanel::ShowSuggestions(const std::string& asked, const std::vector<std::string>& words) {
    const spelling::UnknownWord* now = Selected();
    if (now == nullptr || now->word != asked || words.empty())
        return;
    const bool isTouched = cmbCorrect_->lineEdit()->isModified();
    const QString typed = cmbCorrect_->currentText();
    for (std::size_t k = 0; k < std::min(words.size(), MostSuggested); ++k)
        cmbCorrect_->addItem(ToQt(words[k]));
    cmbCorrect_->setEditText(isTouched ? typed : ToQt(words.front()));
}

void SpellingPanel::ShowPlaces(const spelling::UnknownWord& word) {
    std::vector<ResultRow> rows;
    for (std::size_t k = 0; k < std::min(word.places.size(), MostPlacesShown); ++k) {
        const Place& place = word.places[k];
        ResultRow row;
        row.group = ToQt(GroupTitle(checked_->game, GroupOf(*checked_->owners, place)));
        row.where = ToQt(checked_->owners->Describe(place));
        row.text = ToQt(InContext(std::string(TextAt(checked_->game, place)), place.bytes).text);
        rows.push_back(std::move(row));
    }
    lstPlaces_->SetRows(std::move(rows));
}

void SpellingPanel::OpenPlace(int row) {
    const spelling::UnknownWord* word = Selected();
    if (word == nullptr || row < 0 || static_cast<std::size_t>(row) >= word->places.size())
        return;
    const Place place = word->places[static_cast<std::size_t>(row)];
    if (!SameGame(checked_->game, session_.Game()))
        throw CommandError(QStringLiteral("The game has changed; its words are being checked again."),
                           QStringLiteral("Spelling"));
    open_(place);
}

void SpellingPanel::Correct() {
    const spelling::UnknownWord* word = Selected();
    const QString correct = cmbCorrect_->currentText();
    if (word == nullptr || ToQt(word->word) == correct)
        return;
    const QString before = ToQt(word->word);
    GameModel game = session_.Game();
    if (spelling::CorrectEverywhere(game, commands_, FromQt(before), FromQt(correct)) == 0)
        throw CommandError(
            QStringLiteral("Format codes stand inside of \"%1\" wherever it occurs. Correct it in its "
                           "places.")
                .arg(before),
            QStringLiteral("Spelling"));
    session_.AsOneStep(QStringLiteral("correct %1 to %2").arg(before, correct),
                       [&] { session_.Change([&](GameModel& changed) { changed = game; }); });
    lstWords_->setFocus();
}

void SpellingPanel::AddSelected() {
    spelling_.AddWords(SelectedWords());
    lstWords_->setFocus();
}

void SpellingPanel::IgnoreSelected() {
    for (const std::string& word : SelectedWords())
        spelling_.IgnoreWord(word);
    lstWords_->setFocus();
}

void SpellingPanel::AddNames() {
    std::vector<std::pair<std::string, std::size_t>> names;
    for (const spelling::UnknownWord& word : checked_->texts.unknown)
        if (word.looksLikeName)
            names.emplace_back(word.word, word.count);
    frmNamesOfGame form(names, this);
    if (form.exec() == QDialog::Accepted && !form.Ticked().empty())
        spelling_.AddWords(form.Ticked());
}

void SpellingPanel::ChooseLanguage(int index) {
    const std::string language = cmbLanguage_->itemData(index).toString().toStdString();
    if (language != spelling_.Language())
        spelling_.SetLanguage(language);
}

} // namespace zem
