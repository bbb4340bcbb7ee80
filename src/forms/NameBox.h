#pragma once

#include "forms/Dialogs.h"

#include <QComboBox>

#include <string>

namespace zem {

/// A box to type a name in or pick it from a list. While the author types, the names that contain the text
/// are offered; what is typed stays as typed, whether or not it is in the list.
class NameBox : public QComboBox {
    Q_OBJECT

public:
    explicit NameBox(QWidget* parent = nullptr);

    /// Offers names; the box is empty then.
    /// @param names  may serve several boxes; the box must not be used when it is gone
    void Offer(QAbstractItemModel& names);

    /// From now on refuses, with a message, what a game file cannot hold.
    /// @param dialogs  outlives the box
    void RefuseUnstorableText(Dialogs& dialogs);

    void SetText(const std::string& text);
    std::string Text() const;

    void showPopup() override;

protected:
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace zem
