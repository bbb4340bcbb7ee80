#include "windows/AnyCommand.h"

#include "panels/MapCanvas.h"
#include "ui_frmOptions.h"
#include "windows/CommandWords.h"

#include <QAbstractItemView>
#include <QAction>
#include <QDialog>
#include <QDockWidget>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRegularExpression>
#include <QTextDocumentFragment>
#include <QToolBar>

namespace zem {

namespace {

/// "Find" for "&Find...".
QString PlainCaption(QString text) {
    const QChar ampersand(1); // stands for an "&" that is shown
    text.replace(QLatin1String("&&"), ampersand).remove(u'&').replace(ampersand, u'&');
    while (text.endsWith(u'.') || text.endsWith(u':'))
        text.chop(1);
    return text.trimmed();
}

/// Where the author finds the command without any search: "Edit, Game", or the title of a panel.
QString PathTo(const QAction& action) {
    for (const QObject* object : action.associatedObjects())
        if (const auto* menu = qobject_cast<const QMenu*>(object);
            menu != nullptr && !menu->title().isEmpty()) {
            const QString outer = PathTo(*menu->menuAction());
            const QString title = PlainCaption(menu->title());
            return outer.isEmpty() ? title : outer + QLatin1String(", ") + title;
        }
    if (const auto* list = qobject_cast<const QAbstractItemView*>(action.parent()))
        return list->accessibleName();
    for (const QObject* object = action.parent(); object != nullptr; object = object->parent())
        if (const auto* panel = qobject_cast<const QDockWidget*>(object))
            return panel->windowTitle();
    return {};
}

/// @param told  by the command itself while it is off; empty for nothing
QString WhyNot(const CommandWords& words, QString told = {}) {
    if (!words.whyNot.isEmpty())
        return words.whyNot;
    if (told.isEmpty())
        return QStringLiteral("there is nothing to do it with");
    told.replace(0, 1, told.front().toLower());
    return told.endsWith(u'.') ? told.chopped(1) : told;
}

/// The same command may stand in several lists.
QString UniqueName(const QAction& action) {
    const auto* owner = qobject_cast<const QWidget*>(action.parent());
    const bool isShared =
        qobject_cast<const QAbstractItemView*>(owner) || qobject_cast<const MapCanvas*>(owner);
    return isShared ? owner->objectName() + u'.' + action.objectName() : action.objectName();
}

/// A button of a toolbar of the window itself is the second face of a command of a menu.
bool IsSecondFace(const QAction& action) {
    bool isInMenu = false;
    bool isInOwnBar = false;
    for (const QObject* object : action.associatedObjects()) {
        const auto* bar = qobject_cast<const QToolBar*>(object);
        isInMenu = isInMenu || qobject_cast<const QMenu*>(object) != nullptr;
        isInOwnBar = isInOwnBar || (bar != nullptr && bar->parent() == bar->window());
    }
    return isInOwnBar && !isInMenu;
}

void AddActions(QWidget& window, std::vector<AnyCommand>& commands) {
    for (QAction* action : window.findChildren<QAction*>()) {
        if (action->objectName().isEmpty() || action->isSeparator() || action->menu() != nullptr ||
            !action->isVisible() || action->text().isEmpty() || IsSecondFace(*action))
            continue;
        const CommandWords words = WordsForCommand(action->objectName());
        const QString caption = PlainCaption(action->text());
        AnyCommand command;
        command.name = UniqueName(*action);
        command.found = {caption.size() < 2 ? action->toolTip() : caption, PathTo(*action),
                         action->shortcut().toString(QKeySequence::NativeText), words.words,
                         action->isEnabled() ? QString() : WhyNot(words, action->statusTip())};
        command.run = [action] { action->trigger(); };
        commands.push_back(std::move(command));
    }
}

/// The buttons beside the lists of the window, not those of its panels and bars.
void AddButtons(QWidget& window, std::vector<AnyCommand>& commands) {
    for (QPushButton* button : window.findChildren<QPushButton*>()) {
        const CommandWords words = WordsForCommand(button->objectName());
        if (words.words.isEmpty())
            continue;
        const QString spoken = button->accessibleName();
        AnyCommand command;
        command.name = button->objectName();
        command.found = {spoken.isEmpty() ? PlainCaption(button->text()) : spoken,
                         QStringLiteral("Lists"),
                         {},
                         words.words,
                         button->isEnabled() ? QString() : WhyNot(words)};
        command.run = [button] { button->click(); };
        commands.push_back(std::move(command));
    }
}

} // namespace

std::vector<AnyCommand> CommandsOf(QWidget& window) {
    std::vector<AnyCommand> commands;
    AddActions(window, commands);
    AddButtons(window, commands);
    return commands;
}

std::vector<ManualPage> PagesOfManual(const QString& file) {
    QFile manual(file);
    std::vector<ManualPage> pages;
    if (!manual.open(QIODevice::ReadOnly))
        return pages;
    static const QRegularExpression heading(QStringLiteral("<h[234] id=\"([^\"]+)\">(.*?)</h"));
    QRegularExpressionMatchIterator found = heading.globalMatch(QString::fromUtf8(manual.readAll()));
    while (found.hasNext()) {
        const QRegularExpressionMatch match = found.next();
        pages.push_back(
            {match.captured(1), QTextDocumentFragment::fromHtml(match.captured(2)).toPlainText()});
    }
    return pages;
}

std::vector<OptionField> OptionFields() {
    QDialog window; // that is never shown
    Ui::frmOptions options;
    options.setupUi(&window);
    std::vector<OptionField> fields;
    for (const QLabel* label : window.findChildren<QLabel*>())
        if (label->buddy() != nullptr)
            fields.push_back({label->buddy()->objectName(), PlainCaption(label->text())});
    fields.push_back(
        {options.chkFriendlyScript->objectName(), PlainCaption(options.chkFriendlyScript->text())});
    return fields;
}

} // namespace zem
