#include "prose/HelpWriting.h"

#include "forms/PlainTextBox.h"
#include "prose/BoxMarks.h"
#include "prose/FormatMenu.h"
#include "prose/LineMarks.h"
#include "prose/ProseRow.h"
#include "prose/WordMenu.h"
#include "prose/frmLargeText.h"
#include "qt/QtText.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>

#include <functional>
#include <utility>

namespace zem {

namespace {

bool IsKey(const QKeyEvent& event, const char* key) {
    return QKeySequence(event.keyCombination()) == QKeySequence(QLatin1String(key));
}

/// The keys and the context menu of a prose box.
class ProseKeys : public QObject {
public:
    struct Marks {
        std::function<ProseMark(int)> unknownAt;
        std::function<bool()> selectNext;
    };

    ProseKeys(const ProseBox& box, const EditorContext& context, Marks marks)
        : QObject(&box.Widget()),
          box_(box),
          context_(context),
          marks_(std::move(marks)) {
        setObjectName(QStringLiteral("ProseKeys"));
        box.Widget().installEventFilter(this);
        if (auto* area = qobject_cast<PlainTextBox*>(&box.Widget()))
            area->viewport()->installEventFilter(this);
    }

    void UseRow(ProseRow& row) { row_ = &row; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress) {
            const auto command = CommandOf(*static_cast<QKeyEvent*>(event));
            if (!command)
                return false;
            event->accept();
            if (event->type() == QEvent::KeyPress)
                command();
            return true;
        }
        if (event->type() == QEvent::ContextMenu) {
            OpenMenu(*static_cast<QContextMenuEvent*>(event));
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> CommandOf(const QKeyEvent& event) {
        for (const TextLook& look : PlainLooks())
            if (IsKey(event, look.key))
                return [this, look] { ApplyLook(box_, look); };
        if (IsKey(event, "F7"))
            return marks_.selectNext;
        if (IsKey(event, "Ctrl+Shift+L") && HasLargeWindow())
            return [this] { EditInLargeWindow(box_, context_); };
        if (row_ != nullptr && box_.HasSeveralLines() && IsKey(event, "Ctrl+F"))
            return [this] { row_->Find(); };
        if (row_ != nullptr && IsKey(event, "Ctrl+Shift+V"))
            return [this] { row_->TogglePreview(); };
        return {};
    }

    bool HasLargeWindow() const {
        const QVariant has = box_.Widget().property("hasLargeWindow");
        return !has.isValid() || has.toBool();
    }

    void OpenMenu(const QContextMenuEvent& event) {
        auto* area = qobject_cast<PlainTextBox*>(&box_.Widget());
        auto* line = qobject_cast<QLineEdit*>(&box_.Widget());
        const bool isByKey = event.reason() == QContextMenuEvent::Keyboard;
        int position = box_.Selected().begin;
        if (!isByKey)
            position =
                area != nullptr
                    ? area->cursorForPosition(area->viewport()->mapFromGlobal(event.globalPos())).position()
                    : line->cursorPositionAt(line->mapFromGlobal(event.globalPos()));
        QMenu* menu = area != nullptr ? area->createStandardContextMenu() : line->createStandardContextMenu();
        menu->setParent(&box_.Widget(), menu->windowFlags());
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->setObjectName(QStringLiteral("mnuProse"));
        AddTools(*menu);
        AddWord(*menu, marks_.unknownAt(position));
        QPoint at = event.globalPos();
        if (isByKey)
            at = area != nullptr ? area->viewport()->mapToGlobal(area->cursorRect().bottomLeft())
                                 : line->mapToGlobal(line->rect().bottomLeft());
        menu->popup(at);
    }

    void AddTools(QMenu& menu) {
        if (!box_.CanBeChanged())
            return;
        menu.addSeparator();
        AddLooks(*menu.addMenu(QStringLiteral("&Format")), box_);
        if (HasLargeWindow())
            connect(menu.addAction(QStringLiteral("Write in a lar&ge window...\tCtrl+Shift+L")),
                    &QAction::triggered, this, [this] { EditInLargeWindow(box_, context_); });
        if (row_ == nullptr)
            return;
        if (box_.HasSeveralLines())
            connect(menu.addAction(QStringLiteral("&Find in this text\tCtrl+F")), &QAction::triggered, row_,
                    &ProseRow::Find);
        connect(menu.addAction(QStringLiteral("Pre&view\tCtrl+Shift+V")), &QAction::triggered, row_,
                &ProseRow::TogglePreview);
    }

    void AddWord(QMenu& menu, const ProseMark& mark) {
        GameSpelling* spelling = context_.shell.Spelling();
        if (spelling == nullptr || mark.begin == mark.end || !box_.CanBeChanged())
            return;
        const QString word = box_.Text().mid(mark.begin, mark.end - mark.begin);
        AddWordActions(menu, *spelling, context_.dialogs, FromQt(word),
                       [this, mark](const QString& other) { box_.Replace(mark.begin, mark.end, other); });
    }

    ProseBox box_;
    EditorContext context_;
    Marks marks_;
    ProseRow* row_ = nullptr;
};

} // namespace

void HelpWriting(PlainTextBox& box, const EditorContext& context) {
    auto* marks = new BoxMarks(box, context.shell.Spelling());
    new ProseKeys(ProseBox(box), context,
                  {[marks](int position) { return marks->UnknownAt(position); },
                   [marks] { return marks->SelectNextUnknown(); }});
}

void HelpWriting(QLineEdit& box, const EditorContext& context, ProseParts parts) {
    auto* marks = new LineMarks(box, context.shell.Spelling(), std::move(parts));
    new ProseKeys(ProseBox(box), context,
                  {[marks](int position) { return marks->UnknownAt(position); },
                   [marks] { return marks->SelectNextUnknown(); }});
}

void HelpWriting(PlainTextBox& box, ProseRow& row, const EditorContext& context) {
    HelpWriting(box, context);
    row.Use(ProseBox(box), context);
}

void HelpWriting(QLineEdit& box, ProseRow& row, const EditorContext& context, ProseParts parts) {
    HelpWriting(box, context, std::move(parts));
    row.Use(ProseBox(box), context);
}

void ConnectTools(const ProseBox& box, ProseRow& row) {
    if (auto* keys =
            box.Widget().findChild<QObject*>(QStringLiteral("ProseKeys"), Qt::FindDirectChildrenOnly))
        static_cast<ProseKeys*>(keys)->UseRow(row);
}

} // namespace zem
