// What a screen reader and the Tab key find in every window.
#include "forms/ColourRoles.h"
#include "qt/QtText.h"
#include "support/EveryWindow.h"
#include "support/TempFolder.h"

#include <QAccessible>
#include <QApplication>
#include <QDirIterator>
#include <QDockWidget>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QTextBrowser>
#include <QToolButton>
#include <QtTest/QTest>

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <set>

namespace zem::test {
namespace {

// ---- Names and roles

std::string NameOf(const QObject* object) {
    return object->objectName().toStdString();
}

bool IsControl(const QAccessibleInterface& item) {
    static const std::set<QAccessible::Role> roles = {
        QAccessible::PushButton,  QAccessible::ButtonMenu,   QAccessible::CheckBox, QAccessible::RadioButton,
        QAccessible::ComboBox,    QAccessible::EditableText, QAccessible::List,     QAccessible::Tree,
        QAccessible::Table,       QAccessible::SpinBox,      QAccessible::Slider,   QAccessible::Link,
        QAccessible::ProgressBar, QAccessible::MenuItem,     QAccessible::Dial,     QAccessible::PageTab};
    return item.state().focusable || roles.contains(item.role());
}

/// The rows of a list and the inside of a chooser speak for themselves.
bool IsWhole(QAccessible::Role role) {
    return role == QAccessible::ComboBox || role == QAccessible::List || role == QAccessible::Tree ||
           role == QAccessible::Table;
}

/// What is read out for the control. A chooser gives its text for a name; what it is for then comes from a
/// label or from its description.
std::string SpokenName(QAccessibleInterface& item) {
    if (item.role() != QAccessible::ComboBox)
        return item.text(QAccessible::Name).toStdString();
    const auto labels = item.relations(QAccessible::Label);
    return labels.isEmpty() ? item.text(QAccessible::Description).toStdString()
                            : labels.constFirst().first->text(QAccessible::Name).toStdString();
}

/// The controls of a window by what is read out for them.
using Controls = std::map<std::pair<std::string, QAccessible::Role>, std::string>;

void ExpectNames(QAccessibleInterface& item, Controls& controls) {
    if (item.state().invisible)
        return;
    const QAccessible::Role role = item.role();
    if (IsControl(item) && role != QAccessible::Dialog && role != QAccessible::Window) {
        const std::string control = item.object() == nullptr ? "a part" : NameOf(item.object());
        const std::string name = SpokenName(item);
        EXPECT_NE(name, "") << control << " has no name";
        EXPECT_TRUE(role != QAccessible::NoRole && role != QAccessible::Client) << control << " has no role";
        const auto [other, isNew] = controls.try_emplace({name, role}, control);
        EXPECT_TRUE(isNew) << control << " and " << other->second << " are both called \"" << name << "\"";
    }
    for (int child = 0; !IsWhole(role) && child < item.childCount(); ++child)
        if (QAccessibleInterface* inner = item.child(child))
            ExpectNames(*inner, controls);
}

// ---- The Tab key

/// Where Tab stops, once round.
std::vector<QWidget*> TabStops(QWidget& window) {
    std::vector<QWidget*> stops;
    QTest::keyClick(window.focusWidget() == nullptr ? &window : window.focusWidget(), Qt::Key_Tab);
    for (QWidget* stop = window.focusWidget(); stop != nullptr; stop = window.focusWidget()) {
        const bool hasLinks =
            qobject_cast<QTextBrowser*>(stop) != nullptr || qobject_cast<QLabel*>(stop) != nullptr;
        if (!stops.empty() && stop == stops.back() && hasLinks) {
            QTest::keyClick(stop, Qt::Key_Tab); // Tab stops at each link of a page.
            continue;
        }
        const auto seen = std::find(stops.begin(), stops.end(), stop);
        if (seen != stops.end()) {
            EXPECT_EQ(seen, stops.begin()) << "Tab does not come back from " << NameOf(stop);
            break;
        }
        stops.push_back(stop);
        QTest::keyClick(stop, Qt::Key_Tab);
    }
    return stops;
}

/// One of a group of which only the chosen one is a stop; the arrow keys lead to the others.
bool IsOtherOfItsGroup(const QWidget* control) {
    const auto* option = qobject_cast<const QRadioButton*>(control);
    return option != nullptr && option->autoExclusive() && !option->isChecked();
}

/// A button on which Tab need not stop, as a menu or the keys of its box do the same.
bool IsBeside(const QWidget* control) {
    return qobject_cast<const QToolButton*>(control) != nullptr ||
           qobject_cast<const QDockWidget*>(control->parentWidget()) != nullptr;
}

void ExpectAllReached(const QWidget& window, const std::vector<QWidget*>& stops) {
    for (const QWidget* control : window.findChildren<QWidget*>()) {
        const bool isMeant = (control->focusPolicy() & Qt::TabFocus) != 0 ||
                             qobject_cast<const QAbstractButton*>(control) != nullptr;
        const bool canBe = control->isVisible() && control->isEnabled() && control->window() == &window &&
                           control->focusProxy() == nullptr;
        EXPECT_TRUE(!isMeant || !canBe || IsBeside(control) || IsOtherOfItsGroup(control) ||
                    std::find(stops.begin(), stops.end(), control) != stops.end())
            << "Tab does not stop at " << NameOf(control);
    }
}

/// Whether the second control comes before the first for someone who reads: above it or left of it, and not
/// in a column further right.
bool IsBackwards(const QWidget& window, const QWidget& from, const QWidget& to) {
    const auto seen = [&window](const QWidget& control) {
        return control.visibleRegion().boundingRect().translated(control.mapTo(&window, QPoint()));
    };
    const QRect a = seen(from);
    const QRect b = seen(to);
    const bool areSeen = !a.isEmpty() && !b.isEmpty(); // An area that scrolls hides some.
    const bool isBelow = b.top() > a.bottom();
    const bool isRight = b.left() > a.right();
    return areSeen && !isBelow && !isRight;
}

/// Turns the round so that it begins where it comes back to the beginning, which must be the only way back.
void ExpectReadingOrder(const QWidget& window, std::vector<QWidget*>& stops) {
    auto first = stops.begin();
    std::string back;
    for (auto stop = stops.begin(); stop != stops.end(); ++stop) {
        const auto next = stop + 1 == stops.end() ? stops.begin() : stop + 1;
        if (!IsBackwards(window, **stop, **next))
            continue;
        EXPECT_EQ(back, "") << "Tab also goes back from " << NameOf(*stop) << " to " << NameOf(*next);
        back = "from " + NameOf(*stop) + " to " + NameOf(*next);
        first = next;
    }
    std::rotate(stops.begin(), first, stops.end());
}

void ExpectButtonsLast(const std::vector<QWidget*>& stops) {
    const auto rank = [](const QWidget* stop) {
        return QStringList{"butOK", "butCancel", "butClose"}.indexOf(stop->objectName()); // -1 for others
    };
    EXPECT_TRUE(std::is_sorted(stops.begin(), stops.end(), [&](const auto* a, const auto* b) {
        return rank(a) < rank(b);
    })) << "OK, Cancel and Close are not the last stops";
}

// ---- Other keys

/// Captions that share a letter although they stand in one window, since authors know them so. The letter
/// goes from one to the next.
const std::set<std::string> SharedLetters = {
    "frmEditCollectables: &Edit, &Extended",
    "frmMain: &Add twice",
    "frmMain: &Delete twice",
    "frmMain: &Edit, &Edit character, &Edit object, &Edit room",
    "frmRoomProperties: &Actions, &Add...",
    "frmRoomProperties: &East to:, &Edit action..., &Exits",
    "frmThingProperties: &Misc, Edit &miscellaneous tags (this 'define character' block)",
    "frmThingProperties: &Misc, Edit &miscellaneous tags (this 'define object' block)",
    "frmThingProperties: Edit &use-able objects..., Initially &unavailable (does not appear in "
    "descriptions,\n"
    "and is not available for any interactions)",
    "mnuView: &Actions, &Advanced",
};

/// Notes the visible captions of a window that share a letter.
void NoteSharedLetters(const QWidget& window, std::set<std::string>& shared) {
    std::map<QKeySequence, std::set<std::string>> captions;
    const auto note = [&](const QString& caption) {
        const QKeySequence key = QKeySequence::mnemonic(caption);
        if (!key.isEmpty() && !captions[key].insert(caption.toStdString()).second)
            shared.insert(window.objectName().toStdString() + ": " + caption.toStdString() + " twice");
    };
    for (const auto* button : window.findChildren<QAbstractButton*>())
        if (button->isVisible())
            note(button->text());
    for (const auto* label : window.findChildren<QLabel*>())
        if (label->isVisible() && label->buddy() != nullptr)
            note(label->text());
    for (const auto* bar : window.findChildren<QMenuBar*>())
        for (const auto* menu : bar->actions())
            note(menu->text());
    for (const auto& [key, sharing] : captions) {
        std::string names;
        for (const std::string& caption : sharing)
            names += (names.empty() ? "" : ", ") + caption;
        if (sharing.size() > 1)
            shared.insert(window.objectName().toStdString() + ": " + names);
    }
}

/// Notes the entries of each menu that share a letter.
void NoteSharedLettersOfMenus(const QWidget& window, std::set<std::string>& shared) {
    for (const auto* menu : window.findChildren<QMenu*>()) {
        std::map<QKeySequence, std::string> captions;
        for (const QAction* entry : menu->actions()) {
            const QKeySequence key = QKeySequence::mnemonic(entry->text());
            if (key.isEmpty() || !entry->isVisible())
                continue;
            const auto [other, isNew] = captions.try_emplace(key, entry->text().toStdString());
            if (!isNew)
                shared.insert(NameOf(menu) + ": " + other->second + ", " + entry->text().toStdString());
        }
    }
}

/// Whether the key of the action works while the focus is in the widget.
bool WorksAt(const QAction& action, const QWidget& focus) {
    if (action.shortcutContext() == Qt::WindowShortcut || action.shortcutContext() == Qt::ApplicationShortcut)
        return true;
    const bool reachesInside = action.shortcutContext() == Qt::WidgetWithChildrenShortcut;
    const QList<QObject*> owners = action.associatedObjects();
    return std::any_of(owners.begin(), owners.end(), [&](const QObject* owner) {
        const auto* widget = qobject_cast<const QWidget*>(owner);
        return widget == &focus || (widget != nullptr && reachesInside && widget->isAncestorOf(&focus));
    });
}

/// Expects that no key has two meanings wherever the focus is: Qt would then do neither.
void ExpectNoKeyTwice(const QWidget& window) {
    std::vector<std::pair<QKeySequence, const QAction*>> keys;
    for (const QAction* action : window.findChildren<QAction*>())
        if (action->isEnabled())
            for (const QKeySequence& key : action->shortcuts())
                keys.emplace_back(key, action);
    for (const QWidget* focus : window.findChildren<QWidget*>()) {
        if (!focus->isVisible() || focus->focusPolicy() == Qt::NoFocus)
            continue;
        std::map<QKeySequence, const QAction*> meanings;
        for (const auto& [key, action] : keys) {
            if (!WorksAt(*action, *focus))
                continue;
            const auto [other, isNew] = meanings.try_emplace(key, action);
            EXPECT_TRUE(isNew || other->second == action)
                << key.toString().toStdString() << " is " << NameOf(other->second) << " and "
                << NameOf(action) << " at " << NameOf(focus);
        }
    }
}

/// Presses Return on every button while it does nothing: a form that closes has taken it for OK.
void ExpectReturnBelongsToTheButton(QWidget& window) {
    for (auto* button : window.findChildren<QPushButton*>()) {
        if (!button->isVisible() || !button->isEnabled() || button->window() != &window)
            continue;
        const QSignalBlocker nothing(button);
        button->setFocus();
        QTest::keyClick(button, Qt::Key_Return);
        EXPECT_TRUE(window.isVisible()) << NameOf(button);
    }
}

TEST(Accessibility, EveryControlHasARoleAndANameOfItsOwnAndIsReachedByTabInReadingOrder) {
    const TempFolder folder;
    const QString game = PathToQt(folder.Path("lighthouse.kel"));
    ASSERT_TRUE(QFile::copy(ZEM_SAMPLES "/lighthouse.kel", game));
    std::set<QString> visited;
    std::set<std::string> sharedLetters;
    ForEachWindow(game, [&](const QString& name, QWidget& window) {
        visited.insert(window.objectName());
        SCOPED_TRACE(name.toStdString());
        QAccessibleInterface* root = QAccessible::queryAccessibleInterface(&window);
        ASSERT_NE(root, nullptr);
        Controls controls;
        ExpectNames(*root, controls);
        std::vector<QWidget*> stops = TabStops(window);
        ExpectAllReached(window, stops);
        ExpectReadingOrder(window, stops);
        ExpectButtonsLast(stops);
        NoteSharedLetters(window, sharedLetters);
        NoteSharedLettersOfMenus(window, sharedLetters);
        ExpectNoKeyTwice(window);
        ExpectReturnBelongsToTheButton(window);
    });
    std::set<QString> forms;
    for (QDirIterator files(ZEM_SOURCES, {"*.ui"}, QDir::Files, QDirIterator::Subdirectories);
         files.hasNext();)
        forms.insert(QFileInfo(files.next()).completeBaseName());
    for (const QString& form : forms)
        EXPECT_TRUE(visited.contains(form)) << form.toStdString() << " was not visited";
    EXPECT_EQ(sharedLetters, SharedLetters);
}

/// The whole of what can be seen of the control, after scrolling to it where it lies in an area that scrolls.
QSize SeenOf(const QWidget& control) {
    for (QWidget* parent = control.parentWidget(); parent != nullptr; parent = parent->parentWidget())
        if (auto* area = qobject_cast<QScrollArea*>(parent)) {
            // Not ensureWidgetVisible, which is content with the caret of a box.
            const QPoint top = control.mapTo(area->widget(), QPoint());
            area->ensureVisible(top.x() + std::min(control.width(), 60),
                                top.y() + std::min(control.height(), 40), 0, 0);
            area->ensureVisible(top.x(), top.y(), 0, 0);
        }
    return control.visibleRegion().boundingRect().size();
}

/// Runs in a process of its own, whose screen is small.
TEST(Accessibility, DISABLED_EveryWindowFitsTheScreen) {
    const TempFolder folder;
    const QString game = PathToQt(folder.Path("lighthouse.kel"));
    ASSERT_TRUE(QFile::copy(ZEM_SAMPLES "/lighthouse.kel", game));
    const QSize screen = QGuiApplication::primaryScreen()->availableSize();
    ASSERT_EQ(screen, QSize(640, 400));
    ForEachWindow(game, [&](const QString& name, QWidget& window) {
        SCOPED_TRACE(name.toStdString());
        for (const auto* panel : window.findChildren<QDockWidget*>())
            if (panel->isVisible()) // There is no room for a panel beside the lists; it can be made a window.
                return;
        EXPECT_LE(window.width(), screen.width());
        EXPECT_LE(window.height(), screen.height());
        for (const auto* control : window.findChildren<QWidget*>()) {
            if (!control->isVisible() || control->window() != &window ||
                control->focusPolicy() == Qt::NoFocus)
                continue;
            const QSize least = control->size().boundedTo({60, 40});
            const QSize seen = SeenOf(*control);
            EXPECT_TRUE(seen.width() >= least.width() && seen.height() >= least.height())
                << NameOf(control) << ": " << seen.width() << " x " << seen.height() << " are seen";
        }
    });
}

TEST(Accessibility, EveryControlCanBeReachedOnASmallScreen) {
    const TempFolder folder;
    const std::string screen = folder.Write("screen.json", R"({"screens": [{"name": "small", "x": 0, "y": 0,
        "width": 640, "height": 400, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
    QProcess other;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("ZEM_TEST_SCREEN", PathToQt(screen));
    for (const char* share : {"GTEST_TOTAL_SHARDS", "GTEST_SHARD_INDEX"})
        environment.remove(share); // the one test runs whatever the share of this process is
    other.setProcessEnvironment(environment);
    other.setProcessChannelMode(QProcess::ForwardedChannels);
    other.start(QCoreApplication::applicationFilePath(),
                {"--gtest_also_run_disabled_tests", "--gtest_filter=*EveryWindowFitsTheScreen"});
    ASSERT_TRUE(other.waitForFinished(120000));
    EXPECT_EQ(other.exitCode(), 0);
}

TEST(Accessibility, AnEmptyListShowsThatItHasTheFocus) {
    QWidget window;
    QListWidget lists[2] = {QListWidget(&window), QListWidget(&window)};
    lists[1].move(300, 0);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const auto edge = [&](int list) { return lists[list].grab().toImage().pixelColor(0, 20); };
    for (const int focused : {0, 1, 0}) {
        lists[focused].setFocus();
        EXPECT_EQ(edge(focused), ColourOf(ColourRole::Accent, window.palette()));
        EXPECT_NE(edge(1 - focused), window.palette().color(QPalette::Highlight));
    }
}

} // namespace
} // namespace zem::test
