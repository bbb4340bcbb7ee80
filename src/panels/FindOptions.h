#pragma once

#include "game/Find.h"

#include <QWidget>

class QCheckBox;
class QComboBox;

namespace zem {

/// How words are looked for: where, as whole words, with the same capitals, as a regular expression.
class FindOptions : public QWidget {
    Q_OBJECT

public:
    /// @param hasLetters  whether Alt and a letter lead to the boxes; a panel leaves those to its window
    explicit FindOptions(bool hasLetters, QWidget* parent = nullptr);

    /// A query for the words, which a game can hold.
    FindQuery QueryFor(const QString& words) const;

    /// Shows how the words of another query are looked for.
    void Show(const FindQuery& query);

signals:
    void Changed();

private:
    QCheckBox* AddBox(const char* name, const QString& caption);

    bool hasLetters_;
    QComboBox* cmbKind_;
    QCheckBox* chkWords_;
    QCheckBox* chkCapitals_;
    QCheckBox* chkExpression_;
};

} // namespace zem
