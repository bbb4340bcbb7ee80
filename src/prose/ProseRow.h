#pragma once

#include "forms/EditorContext.h"
#include "prose/ProseBox.h"

#include <QTimer>
#include <QWidget>

#include <optional>

class QLabel;
class QToolButton;
class QVBoxLayout;

namespace zem {

class FindBar;
class TextPreview;

/// The tools below a prose box: looks, find, preview, the large window, and how many words it has. All of
/// them can be had by keys in the box, too, and by its context menu.
class ProseRow : public QWidget {
    Q_OBJECT

public:
    explicit ProseRow(QWidget* parent = nullptr);

    /// Must be called once. The box has what HelpWriting gives from then on.
    /// @param hasLargeWindow  false for a box that is large already
    void Use(const ProseBox& box, const EditorContext& context, bool hasLargeWindow = true);

    void Find();
    void TogglePreview() { ShowPreview(!IsPreviewShown()); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool IsPreviewShown() const;
    void ShowPreview(bool isShown);
    void AddButtons(bool hasLargeWindow);
    QToolButton* AddButton(const char* name, const QString& text, const QString& what);
    void Refresh();

    std::optional<ProseBox> box_;
    std::optional<EditorContext> context_;
    QVBoxLayout* column_;
    QWidget* buttons_;
    QToolButton* butPreview_ = nullptr;
    QLabel* lblWords_;
    FindBar* find_ = nullptr;
    TextPreview* preview_ = nullptr; // made when it is first wanted
    QTimer wait_;
};

} // namespace zem
