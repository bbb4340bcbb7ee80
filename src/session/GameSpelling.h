#pragma once

#include "qt/LatestWork.h"
#include "spelling/DictionaryList.h"
#include "spelling/Speller.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace zem {

class GameSession;
struct GameNotes;

/// The spelling of the open game: the dictionary of its language, the words that it knows by itself, and
/// those of its author. The language and the author's words are kept in the notes beside the game; those of a
/// game without a file go there with its first save. Nothing is read before somebody asks. Words are
/// Windows-1252.
class GameSpelling : public QObject {
    Q_OBJECT

public:
    /// @param session  outlives this object
    /// @param folders  where dictionaries are
    GameSpelling(GameSession& session, std::vector<std::string> folders, QObject* parent = nullptr);
    ~GameSpelling() override;

    /// Reads the dictionary and the words of the game, soon and on another thread; goes along with the game
    /// from then on. Does nothing the second time.
    void Begin();

    /// What tells the unknown words. It knows all of them until it is ready.
    const spelling::Speller& Speller() const { return speller_; }

    /// Whether the words of the game as it is now are still being read.
    bool IsBusy() const { return wait_.isActive() || work_.IsRunning(); }

    /// A sentence that says why words are not checked; empty when they are.
    const QString& Problem() const { return problem_; }

    /// The language of the game's texts: "en_GB", that of the dictionary in use where the author chose none.
    const std::string& Language() const { return language_; }

    /// The dictionaries that can be chosen.
    const std::vector<spelling::InstalledDictionary>& Installed() const { return installed_; }

    /// The author has chosen the language. Throws CommandError when the notes cannot be read or written.
    void SetLanguage(const std::string& language);

    /// The author spells these words so in this game. Throws as SetLanguage does.
    void AddWords(const std::vector<std::string>& words);

    /// The word is left alone until another game is opened.
    void IgnoreWord(const std::string& word);

    /// Looks on another thread for what may have been meant, and calls done(words) from the event loop,
    /// unless another question comes first.
    void Suggest(const std::string& word, std::function<void(const std::vector<std::string>&)> done);

signals:
    /// Other words are unknown than before, or it is known now why none are.
    void SpellerChanged();

    /// The language or the words could not be put beside the game as it was saved.
    void CouldNotKeep(const QString& text);

private:
    struct Made;
    struct Suggester;

    void Make();
    void Take(Made made);
    void Know(const std::vector<std::string>& words);
    void ChangeNotesOfGame(const std::function<void(GameNotes&)>& change);
    void StartOther();
    void KeepWithSavedGame();

    GameSession& session_;
    std::vector<std::string> folders_;
    std::vector<spelling::InstalledDictionary> installed_;
    spelling::Speller speller_;
    std::shared_ptr<const spelling::GameWords> words_ = std::make_shared<spelling::GameWords>();
    std::string affPath_; // of the dictionary in use
    std::string language_;
    QString problem_;
    std::string chosen_;        // the language of the notes, or what will be it with the first save
    std::set<std::string> own_; // the words of the notes and those that will be in them, in UTF-8
    std::set<std::string> ignored_;
    QString file_; // of the game, when its notes were last in step with this
    bool hasBegun_ = false;
    QTimer wait_;
    std::shared_ptr<Suggester> suggester_;
    LatestWork work_;
    LatestWork suggesting_;
};

} // namespace zem
