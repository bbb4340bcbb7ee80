#pragma once

#include <QDialog>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

class QListWidget;

namespace zem {

/// Offers words that are most likely names of the game, all ticked, to be added to its words at once.
class frmNamesOfGame : public QDialog {
    Q_OBJECT

public:
    /// @param names  each with the number of its places
    explicit frmNamesOfGame(const std::vector<std::pair<std::string, std::size_t>>& names,
                            QWidget* parent = nullptr);

    std::vector<std::string> Ticked() const;

private:
    std::vector<std::string> names_;
    QListWidget* lstNames_;
};

} // namespace zem
