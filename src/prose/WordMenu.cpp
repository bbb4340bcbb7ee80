#include "prose/WordMenu.h"

#include "forms/RunCommand.h"
#include "qt/QtText.h"
#include "session/GameSpelling.h"

#include <QMenu>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace zem {

namespace {

constexpr std::size_t MostSuggestions = 8;

QString AsCaption(const std::string& word) {
    return ToQt(word).replace(u'&', QLatin1String("&&"));
}

void ShowSuggestions(QMenu& menu, QAction& placeholder, const std::vector<std::string>& words,
                     const std::function<void(const QString&)>& replace) {
    if (words.empty()) {
        placeholder.setText(QStringLiteral("Nothing like it is known"));
        return;
    }
    for (std::size_t k = 0; k < std::min(words.size(), MostSuggestions); ++k) {
        auto* action = new QAction(AsCaption(words[k]), &menu);
        action->setObjectName(QStringLiteral("actSuggestion_%1").arg(k));
        QFont bold = action->font();
        bold.setBold(true);
        action->setFont(bold);
        QObject::connect(action, &QAction::triggered, &menu,
                         [replace, word = ToQt(words[k])] { replace(word); });
        menu.insertAction(&placeholder, action);
    }
    placeholder.setVisible(false);
    if (menu.isVisible())
        menu.setActiveAction(menu.actions().front());
}

} // namespace

void AddWordActions(QMenu& menu, GameSpelling& spelling, Dialogs& dialogs, const std::string& word,
                    std::function<void(const QString&)> replace) {
    QAction* first = menu.actions().isEmpty() ? nullptr : menu.actions().front();
    const auto add = [&](const QString& caption, const char* name) {
        auto* action = new QAction(caption, &menu);
        action->setObjectName(QLatin1String(name));
        menu.insertAction(first, action);
        return action;
    };
    QAction* placeholder = add(QStringLiteral("Looking for what may be meant..."), "actNoSuggestion");
    placeholder->setEnabled(false);
    menu.insertSeparator(first);
    QAction* keep =
        add(QStringLiteral("&Add \"%1\" to the words of this game").arg(AsCaption(word)), "actAddWord");
    QAction* ignore = add(QStringLiteral("I&gnore \"%1\" for now").arg(AsCaption(word)), "actIgnoreWord");
    menu.insertSeparator(first);
    QObject::connect(keep, &QAction::triggered, &menu, [&menu, &spelling, &dialogs, word] {
        RunCommand(dialogs, menu.parentWidget() == nullptr ? nullptr : menu.parentWidget()->window(),
                   [&] { spelling.AddWords({word}); });
    });
    QObject::connect(ignore, &QAction::triggered, &menu, [&spelling, word] { spelling.IgnoreWord(word); });
    spelling.Suggest(word, [open = QPointer<QMenu>(&menu), shown = QPointer<QAction>(placeholder),
                            replace = std::move(replace)](const std::vector<std::string>& words) {
        if (open != nullptr && shown != nullptr)
            ShowSuggestions(*open, *shown, words, replace);
    });
}

} // namespace zem
