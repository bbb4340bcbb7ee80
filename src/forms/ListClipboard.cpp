#include "forms/ListClipboard.h"

#include "forms/RunCommand.h"

#include <QAbstractItemView>
#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QListWidget>
#include <QMimeData>
#include <QPointer>
#include <QTimer>

#include <optional>
#include <utility>

namespace zem {

namespace {

/// The commands of one widget.
class ClipboardCommands : public QObject {
public:
    ClipboardCommands(QWidget& widget, Dialogs& dialogs, ListClipboard clipboard)
        : QObject(&widget),
          widget_(widget),
          dialogs_(dialogs),
          clipboard_(std::move(clipboard)) {
        auto* separator = new QAction(&widget);
        separator->setSeparator(true);
        widget.addAction(separator);
        if (clipboard_.cut)
            cut_ = Add("actCut", tr("Cu&t"), QStringLiteral("Ctrl+X"), [this] { Cut(); });
        copy_ = Add("actCopy", tr("&Copy as Kel"), QStringLiteral("Ctrl+Shift+C"), [this] { Copy(); });
        paste_ = Add("actPaste", tr("&Paste"), QStringLiteral("Ctrl+V"), [this] { Paste(); });
        duplicate_ = Add("actDuplicate", tr("&Duplicate"), QStringLiteral("Ctrl+D"), [this] { Duplicate(); });
        connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this,
                [this] { LookIntoClipboard(); });
        widget.installEventFilter(this);
        ShowWhatCanBeDone(true);
        LookIntoClipboard();
    }

    /// The keys belong to the widget that has the focus, even where its window is not the active one yet.
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress || watched != &widget_)
            return false;
        const auto& key = static_cast<const QKeyEvent&>(*event);
        const QKeySequence pressed(key.keyCombination());
        for (QAction* command : {cut_, copy_, paste_, duplicate_})
            if (command != nullptr && command->shortcut() == pressed) {
                command->trigger();
                return true;
            }
        return false;
    }

protected:
    void ShowWhatCanBeDone(bool isSelected) {
        const QString why = tr("Select something in the list first.");
        if (cut_ != nullptr)
            Enable(*cut_, isSelected, tr("Takes what is selected away and keeps it in the clipboard"), why);
        Enable(*copy_, isSelected, tr("Copies what is selected as Kel text, with all that it needs"), why);
        Enable(*duplicate_, isSelected, tr("Adds a copy of what is selected, under a free name"), why);
    }

private:
    QAction* Add(const char* name, const QString& caption, const QString& key, std::function<void()> run) {
        auto* command = new QAction(caption, &widget_);
        command->setObjectName(QLatin1String(name));
        command->setShortcut(QKeySequence(key));
        command->setShortcutContext(Qt::WidgetShortcut);
        connect(command, &QAction::triggered, this,
                [this, run = std::move(run)] { RunCommand(dialogs_, widget_.window(), run); });
        widget_.addAction(command);
        return command;
    }

    /// A command that is off says why.
    static void Enable(QAction& command, bool isEnabled, const QString& what, const QString& why) {
        command.setEnabled(isEnabled);
        command.setStatusTip(isEnabled ? what : why);
    }

    /// Other programs are asked for it, which takes its time, so that nobody does it at every row.
    void LookIntoClipboard() {
        const QMimeData* held = QGuiApplication::clipboard()->mimeData();
        Enable(*paste_, held != nullptr && held->hasText(), tr("Adds what the clipboard holds as Kel text"),
               tr("The clipboard holds no text."));
    }

    void Copy() { QGuiApplication::clipboard()->setText(ToClipboard(clipboard_.copy().text)); }

    void Cut() {
        Copy();
        clipboard_.cut();
    }

    void Paste() {
        const QString text = QGuiApplication::clipboard()->text();
        if (const std::optional<QString> problem = UnstorableCharacter(text))
            throw CommandError(tr("Nothing was pasted. %1").arg(*problem), tr("Paste"));
        try {
            clipboard_.paste(FromQt(text), tr("paste"));
        } catch (const KelError& error) {
            throw CommandError(tr("Nothing was pasted. %1").arg(AsSentence(error)), tr("Paste"));
        }
    }

    void Duplicate() { clipboard_.paste(clipboard_.copy().text, tr("duplicate")); }

    static QString AsSentence(const KelError& error) {
        QString sentence = ToQt(error.what());
        sentence[0] = sentence[0].toUpper();
        return sentence.endsWith(u'.') ? sentence : sentence + u'.';
    }

    QWidget& widget_;
    Dialogs& dialogs_;
    ListClipboard clipboard_;
    QAction* cut_ = nullptr;
    QAction* copy_ = nullptr;
    QAction* paste_ = nullptr;
    QAction* duplicate_ = nullptr;
};

/// The commands of one list, which are on while something is selected in it.
class ListCommands : public ClipboardCommands {
public:
    ListCommands(QAbstractItemView& list, Dialogs& dialogs, ListClipboard clipboard)
        : ClipboardCommands(list, dialogs, std::move(clipboard)),
          list_(list),
          selection_(list.selectionModel()) {
        if (isWidget_)
            list.viewport()->installEventFilter(this);
        else
            list.setSelectionMode(QAbstractItemView::ExtendedSelection);
        list.setContextMenuPolicy(Qt::ActionsContextMenu);
        connect(list.selectionModel(), &QItemSelectionModel::selectionChanged, this,
                [this] { LookAtSelection(); });
        connect(list.model(), &QAbstractItemModel::modelReset, this, [this] { LookAtSelection(); });
        LookAtSelection();
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (isWidget_ && MaySelectSeveral(*event)) {
            list_.setSelectionMode(QAbstractItemView::ExtendedSelection);
            QTimer::singleShot(0, this,
                               [this] { list_.setSelectionMode(QAbstractItemView::SingleSelection); });
        }
        return ClipboardCommands::eventFilter(watched, event);
    }

private:
    /// Rows are also unselected while the list is being destroyed, and cannot be asked any more.
    void LookAtSelection() { ShowWhatCanBeDone(selection_ != nullptr && selection_->hasSelection()); }

    /// Where several rows can be selected, a list widget only adds to them when a form selects a row. So they
    /// can be just while the author uses a key or the mouse for it.
    bool MaySelectSeveral(const QEvent& event) const {
        if (event.type() == QEvent::KeyPress)
            return static_cast<const QKeyEvent&>(event).modifiers().testFlag(Qt::ShiftModifier);
        if (event.type() != QEvent::MouseButtonPress && event.type() != QEvent::MouseMove &&
            event.type() != QEvent::MouseButtonRelease)
            return false;
        const auto& mouse = static_cast<const QMouseEvent&>(event);
        if ((mouse.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier)) != 0)
            return true;
        // One of several is pressed, perhaps to drag them all or to open the menu.
        const QItemSelectionModel& selected = *list_.selectionModel();
        return selected.isSelected(list_.indexAt(mouse.position().toPoint())) &&
               selected.selectedIndexes().size() > 1;
    }

    QAbstractItemView& list_;
    QPointer<QItemSelectionModel> selection_; // of the list
    const bool isWidget_ = qobject_cast<QListWidget*>(&list_) != nullptr;
};

} // namespace

void ConnectClipboard(QAbstractItemView& list, Dialogs& dialogs, ListClipboard clipboard) {
    new ListCommands(list, dialogs, std::move(clipboard)); // the list owns it
}

void ConnectClipboard(QWidget& widget, Dialogs& dialogs, ListClipboard clipboard) {
    new ClipboardCommands(widget, dialogs, std::move(clipboard)); // the widget owns it
}

/// Other programs have lines end without CR.
QString ToClipboard(std::string_view text) {
    return ToQt(text).replace(QLatin1String("\r\n"), QLatin1String("\n"));
}

} // namespace zem
