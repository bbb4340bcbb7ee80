#pragma once

#include "qt/LatestWork.h"
#include "spelling/UnknownWords.h"

#include <QDockWidget>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;

namespace zem {

class CommandLookup;
class Dialogs;
class GameSession;
class GameSpelling;
class ResultList;

/// The unknown words of the whole game, each once with its places, the most frequent first. A correction of
/// one is made wherever it stands, as one step of the history.
class SpellingPanel : public QDockWidget {
    Q_OBJECT

public:
    /// All arguments outlive the panel.
    /// @param open  opens the editor of a place and goes to its control
    SpellingPanel(GameSession& session, GameSpelling& spelling, const CommandLookup& commands,
                  Dialogs& dialogs, std::function<void(const Place&)> open, QWidget* parent = nullptr);
    ~SpellingPanel() override;

    /// Whether something is still to be shown.
    bool IsBusy() const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    struct Checked;

    QWidget* MakeControls();
    QWidget* MakeTop();
    QWidget* MakeLists();
    QWidget* MakeBottom();
    void Check();
    void Show(Checked checked);
    void ShowLanguages();
    void ShowCounts();
    void ShowWord();
    void ShowSuggestions(const std::string& asked, const std::vector<std::string>& words);
    void ShowPlaces(const spelling::UnknownWord& word);
    const spelling::UnknownWord* Selected() const;
    std::vector<std::string> SelectedWords() const;
    void Correct();
    void AddSelected();
    void IgnoreSelected();
    void AddNames();
    void ChooseLanguage(int index);
    void OpenPlace(int row);

    GameSession& session_;
    GameSpelling& spelling_;
    const CommandLookup& commands_;
    Dialogs& dialogs_;
    std::function<void(const Place&)> open_;
    QLabel* lblCounts_;
    QComboBox* cmbLanguage_;
    QPushButton* butNames_;
    QListWidget* lstWords_;
    ResultList* lstPlaces_;
    QComboBox* cmbCorrect_;
    QPushButton* butCorrect_;
    QPushButton* butAdd_;
    QPushButton* butIgnore_;
    std::unique_ptr<const Checked> checked_; // null before the first check
    QTimer wait_;
    LatestWork work_;
};

} // namespace zem
