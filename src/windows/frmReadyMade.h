#pragma once

#include "kel/CommandLookup.h"
#include "model/GameModel.h"
#include "pieces/ReadyMade.h"

#include <QDialog>

#include <string>
#include <vector>

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QWidget;

namespace zem {

class Dialogs;

/// The ready-made pieces in a folder by their titles. A damaged one is left out: the others are as good as
/// before.
std::vector<ReadyMade> ReadPieces(const QString& folder);

/// Chooses one of the ready-made pieces and asks its questions. What would go wrong is told beside the
/// question while it is answered.
class frmReadyMade : public QDialog {
    Q_OBJECT

public:
    /// Game, commands and dialogs outlive the window.
    /// @param room  in which the author is; empty for none
    frmReadyMade(const GameModel& game, const CommandLookup& commands, std::vector<ReadyMade> pieces,
                 std::string room, Dialogs& dialogs, QWidget* parent = nullptr);

    /// Selects the piece of this title.
    void Choose(const QString& title);

    /// The game with the piece; for the caller when the window was closed with Insert.
    const Pasted& Result() const { return result_; }
    QString Title() const;

private:
    /// A question of the chosen piece, with what the author answers it in.
    struct Asked {
        const PieceQuestion* question;
        QComboBox* box;
        QLabel* answer; // what is wrong
    };

    void MakeControls();
    void ShowMatching();
    void ShowPiece();
    void AddQuestion(const PieceQuestion& question);
    void PutInTabOrder();
    void Check();
    void FollowExit(const Asked& exit);
    void Insert();

    const GameModel& game_;
    const CommandLookup& commands_;
    std::vector<ReadyMade> pieces_;
    std::string room_;
    Dialogs& dialogs_;
    const ReadyMade* piece_ = nullptr; // the chosen one
    PieceAnswers answers_;
    std::vector<Asked> asked_;
    Pasted result_;

    QLineEdit* txtFilter_;
    QListWidget* lstPieces_;
    QLabel* lblAbout_;
    QWidget* questions_ = nullptr; // made anew for each piece
    QFormLayout* rows_ = nullptr;
    QLabel* lblProblem_;
    QPushButton* butInsert_;
    QPushButton* butCancel_;
};

} // namespace zem
