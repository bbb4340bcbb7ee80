#include "session/GameSpelling.h"

#include "base/TextEncoding.h"
#include "game/Notes.h"
#include "qt/CommandError.h"
#include "qt/QtText.h"
#include "session/GameSession.h"

#include <mutex>
#include <utility>

namespace zem {

namespace {

constexpr int WaitForWords = 150; // milliseconds, so that a row of changes is read once

QString TellNotes(const std::string& path, const KelError& error, const char* consequence) {
    return QStringLiteral("%1: %2. %3")
        .arg(PathToQt(NotesPath(path)), ToQt(error.ProblemWithText()), QLatin1String(consequence));
}

} // namespace

/// What is read on the other thread.
struct GameSpelling::Made {
    std::vector<spelling::InstalledDictionary> installed;
    std::shared_ptr<const spelling::Dictionary> dictionary;
    std::string affPath;
    std::string language;
    QString problem;
    std::string chosen;
    std::set<std::string> own;
    std::shared_ptr<const spelling::GameWords> words;
};

/// A dictionary of its own, so that a search for suggestions keeps nobody waiting.
struct GameSpelling::Suggester {
    std::mutex mutex;
    std::string affPath;
    std::unique_ptr<const spelling::Dictionary> dictionary;

    /// Reads the dictionary, unless it is the one that is there.
    void Use(const std::string& path) {
        if (affPath == path)
            return;
        dictionary = nullptr;
        affPath = path;
        if (!path.empty())
            dictionary = std::make_unique<const spelling::Dictionary>(path);
    }
};

GameSpelling::GameSpelling(GameSession& session, std::vector<std::string> folders, QObject* parent)
    : QObject(parent),
      session_(session),
      folders_(std::move(folders)),
      suggester_(std::make_shared<Suggester>()) {
    wait_.setSingleShot(true);
    wait_.setInterval(WaitForWords);
    connect(&wait_, &QTimer::timeout, this, &GameSpelling::Make);
}

GameSpelling::~GameSpelling() = default;

void GameSpelling::Begin() {
    if (std::exchange(hasBegun_, true))
        return;
    file_ = session_.FileName();
    connect(&session_, &GameSession::Changed, &wait_, qOverload<>(&QTimer::start));
    connect(&session_, &GameSession::Replaced, this, &GameSpelling::StartOther);
    connect(&session_, &GameSession::Saved, this, &GameSpelling::KeepWithSavedGame);
    Make();
}

void GameSpelling::StartOther() {
    file_ = session_.FileName();
    chosen_.clear();
    own_.clear();
    ignored_.clear();
    Make();
}

void GameSpelling::Make() {
    wait_.stop();
    Made before;
    before.dictionary = speller_.Words();
    before.affPath = affPath_;
    before.chosen = chosen_;
    before.own = own_;
    work_.Run(
        *this,
        [made = std::move(before), game = session_.Game(), path = PathFromQt(file_), folders = folders_,
         ignored = ignored_](const IsOutdated&) mutable {
            try {
                const GameNotes notes = path.empty() ? GameNotes() : LoadNotes(path);
                if (!path.empty()) {
                    made.chosen = notes.language;
                    made.own = notes.words;
                }
            } catch (const KelError&) {
                // Who watches the problems of the game tells of damaged notes; what was known before stays
                // so.
            }
            const std::string wanted = made.chosen.empty() ? spelling::LanguageOfDesktop() : made.chosen;
            made.installed = spelling::ListDictionaries(folders);
            const spelling::InstalledDictionary* found = spelling::FindDictionary(made.installed, wanted);
            made.language = found == nullptr ? wanted : found->language;
            try {
                if (found == nullptr) {
                    made.dictionary = nullptr;
                    made.affPath.clear();
                    made.problem = QString::fromStdString(spelling::TellNoDictionary(made.installed, wanted));
                } else if (made.dictionary == nullptr || made.affPath != found->affPath) {
                    made.affPath = found->affPath;
                    made.dictionary = nullptr;
                    made.dictionary = std::make_shared<const spelling::Dictionary>(found->affPath);
                }
            } catch (const KelError& error) {
                made.problem = QStringLiteral("Words are not checked: %1.").arg(ToQt(error.Problem()));
            }
            auto words = std::make_shared<spelling::GameWords>(game);
            for (const std::string& word : made.own)
                words->Add(FromUtf8(word));
            for (const std::string& word : ignored)
                words->Add(word);
            made.words = std::move(words);
            return std::move(made);
        },
        [this](Made made) { Take(std::move(made)); });
}

void GameSpelling::Take(Made made) {
    const bool isOther = made.dictionary != speller_.Words() || made.problem != problem_ ||
                         !(*made.words == *words_) || made.language != language_;
    installed_ = std::move(made.installed);
    affPath_ = std::move(made.affPath);
    language_ = std::move(made.language);
    problem_ = std::move(made.problem);
    chosen_ = std::move(made.chosen);
    own_ = std::move(made.own);
    words_ = std::move(made.words);
    speller_ = spelling::Speller(std::move(made.dictionary), words_);
    if (isOther)
        emit SpellerChanged();
}

void GameSpelling::SetLanguage(const std::string& language) {
    ChangeNotesOfGame([&](GameNotes& notes) { notes.language = language; });
    chosen_ = language;
    Make();
}

void GameSpelling::AddWords(const std::vector<std::string>& words) {
    ChangeNotesOfGame([&](GameNotes& notes) {
        for (const std::string& word : words)
            notes.words.insert(ToUtf8(word));
    });
    for (const std::string& word : words)
        own_.insert(ToUtf8(word));
    Know(words);
}

void GameSpelling::IgnoreWord(const std::string& word) {
    ignored_.insert(word);
    Know({word});
}

/// At once; work that is under way may not know of them yet.
void GameSpelling::Know(const std::vector<std::string>& words) {
    auto known = std::make_shared<spelling::GameWords>(*words_);
    for (const std::string& word : words)
        known->Add(word);
    words_ = std::move(known);
    speller_ = spelling::Speller(speller_.Words(), words_);
    if (work_.IsRunning())
        Make();
    emit SpellerChanged();
}

void GameSpelling::ChangeNotesOfGame(const std::function<void(GameNotes&)>& change) {
    const std::string path = PathFromQt(session_.FileName());
    if (path.empty())
        return; // they go there with the first save
    try {
        ChangeNotes(path, change);
    } catch (const KelError& error) {
        throw CommandError(TellNotes(path, error, "Nothing was added there."), QLatin1String(DefaultTitle));
    }
}

/// A game that is saved under another name takes its words along.
void GameSpelling::KeepWithSavedGame() {
    if (file_ == session_.FileName())
        return;
    file_ = session_.FileName();
    const std::string path = PathFromQt(file_);
    try {
        ChangeNotes(path, [this](GameNotes& notes) {
            notes.language = chosen_.empty() ? notes.language : chosen_;
            notes.words.insert(own_.begin(), own_.end());
        });
    } catch (const KelError& error) {
        emit CouldNotKeep(TellNotes(path, error, "The words of the game are not kept there."));
    }
}

void GameSpelling::Suggest(const std::string& word,
                           std::function<void(const std::vector<std::string>&)> done) {
    suggesting_.Run(
        *this,
        [suggester = suggester_, path = affPath_, word](const IsOutdated&) {
            const std::lock_guard<std::mutex> lock(suggester->mutex);
            suggester->Use(path);
            return suggester->dictionary == nullptr ? std::vector<std::string>()
                                                    : suggester->dictionary->Suggest(word);
        },
        [done = std::move(done)](const std::vector<std::string>& words) { done(words); });
}

} // namespace zem
