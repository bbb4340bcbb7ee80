#pragma once

#include "problems/Problem.h"

#include <QToolButton>

#include <functional>
#include <utility>
#include <vector>

namespace zem {

/// A mark in the corner of a control of an editor: what is wrong with what stands there. Its menu says it in
/// words, with the ways to put it right. It takes no focus; whoever has the control hears the words, too.
class FieldMark : public QToolButton {
    Q_OBJECT

public:
    struct Entry {
        problems::Level level = problems::Level::Error;
        QString text;
    };

    /// @param control  carries the mark, and outlives it
    FieldMark(QWidget& control, const std::vector<Entry>& entries);
    ~FieldMark() override;

    QWidget& Control() const { return control_; }

    /// The worst of the entries.
    problems::Level Level() const { return level_; }

    /// Adds a way to put something right to the menu.
    void AddFix(const QString& caption, std::function<void()> fix);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void FindPlace();

    QWidget& control_;
    problems::Level level_ = problems::Level::Hint;
    QString description_; // that the control had before
};

} // namespace zem
