#pragma once

#include <QLineEdit>
#include <QObject>
#include <QString>

#include <functional>
#include <string>
#include <utility>

namespace zem {

class PlainTextBox;

/// A box in which prose is written, of one line or of several. Positions are characters. A value.
class ProseBox {
public:
    explicit ProseBox(PlainTextBox& box);
    explicit ProseBox(QLineEdit& box);

    QWidget& Widget() const;
    /// Whether lines are broken in the box.
    bool HasSeveralLines() const { return area_ != nullptr; }
    bool CanBeChanged() const;

    /// With "\n" between the lines.
    QString Text() const;

    struct Selection {
        int begin = 0;
        int end = 0;
    };
    Selection Selected() const;
    void Select(int begin, int end) const;

    /// Puts a text in the place of some of it, as one step that Ctrl+Z takes back; the caret is behind it.
    void Replace(int begin, int end, const QString& text) const;

    /// The text as the game holds it, and another one in its place.
    /// @param goesOn  one step with the change before
    std::string Bytes() const;
    void SetBytes(const std::string& text, bool goesOn = false) const;

    /// Whether the text stands on one line, however it is shown.
    bool HoldsOneLine() const;

    /// Calls changed() whenever the text has changed.
    template <class Changed>
    void OnChange(QObject* receiver, Changed changed) const {
        Connect(receiver, std::function<void()>(std::move(changed)));
    }

private:
    void Connect(QObject* receiver, const std::function<void()>& changed) const;

    PlainTextBox* area_ = nullptr;
    QLineEdit* line_ = nullptr;
};

} // namespace zem
