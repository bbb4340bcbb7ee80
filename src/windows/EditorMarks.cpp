#include "windows/EditorMarks.h"

#include "forms/PageButtons.h"
#include "model/Texts.h"
#include "panels/ProblemsPanel.h"
#include "problems/FindProblems.h"
#include "qt/OpenEdits.h"
#include "qt/QtText.h"
#include "session/ProblemWatch.h"
#include "windows/FieldMark.h"
#include "windows/Landing.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>

#include <algorithm>
#include <optional>
#include <utility>

namespace zem {

namespace {

constexpr int WaitForPause = 250;      // milliseconds after a key or a click
constexpr std::size_t MostOffered = 8; // problems whose fixes are tried, which takes a check each

/// Whether the editor is that of all records of a list.
bool IsWholeList(const Place& record) {
    return record.Depth() == 1 && record.steps[0].entry == 0;
}

bool IsOfEditor(const Place& record, const Place& place) {
    if (IsWholeList(record))
        return record.steps[0].list == place.steps[0].list;
    if (record.field != FieldId::None)
        return place.WholeField() == record;
    const std::size_t depth = record.Depth();
    if (depth > place.Depth() ||
        !std::equal(record.steps.begin(), record.steps.begin() + depth, place.steps.begin()))
        return false;
    if (depth == place.Depth())
        return true;
    const FieldId list = place.steps[depth].list;
    return depth == 0 ? list == FieldId::GameUses || list == FieldId::GamePlayerCommands
                      : list != FieldId::RoomCharacters && list != FieldId::RoomObjects;
}

/// Where a problem of the record as a whole is told.
QString NameControlOf(const Place& record) {
    return record.Depth() == 0   ? QStringLiteral("txtGameName")
           : record.Depth() == 1 ? QStringLiteral("txtRoomName")
                                 : QStringLiteral("txtThingName");
}

/// What a box shows that the author types into; nothing for any other control.
std::optional<QString> ShownIn(const QWidget& control) {
    if (const auto* line = qobject_cast<const QLineEdit*>(&control))
        return line->text();
    if (const auto* box = qobject_cast<const QPlainTextEdit*>(&control))
        return box->toPlainText();
    return std::nullopt;
}

/// The window that the author has opened from this one; null for none.
QWidget* WindowOver(const QWidget& window) {
    for (QWidget* other : QApplication::topLevelWidgets())
        if (other->isVisible() && other->isModal() && other->parentWidget() != nullptr &&
            other->parentWidget()->window() == &window)
            return other;
    return nullptr;
}

/// Whether the row of the step is the one that its list has chosen, so that what is shown beside the list, or
/// in the window over it, is of this row.
bool IsChosen(const QWidget& control, const LandingStep& step) {
    if (step.row < 0 && step.rowText.isEmpty())
        return true;
    const auto* list = qobject_cast<const QListWidget*>(&control);
    if (list == nullptr || list->currentItem() == nullptr)
        return false;
    return step.rowText.isEmpty() ? list->currentRow() == step.row
                                  : list->currentItem()->text() == step.rowText;
}

bool CanBeTypedInto(const QWidget& control) {
    const auto* line = qobject_cast<const QLineEdit*>(&control);
    const auto* box = qobject_cast<const QPlainTextEdit*>(&control);
    const auto* combo = qobject_cast<const QComboBox*>(&control);
    return (line != nullptr && !line->isReadOnly()) || (box != nullptr && !box->isReadOnly()) ||
           (combo != nullptr && combo->isEditable());
}

bool HasFocus(const FieldMark* mark) {
    const QWidget* focused = mark->window()->focusWidget();
    return &mark->Control() == focused || mark->Control().isAncestorOf(focused);
}

/// Puts a text into a box that the author could type it into. False for any other control.
bool TypeInto(QWidget& control, const QString& text) {
    if (auto* line = qobject_cast<QLineEdit*>(&control); line != nullptr && !line->isReadOnly())
        line->setText(text);
    else if (auto* box = qobject_cast<QPlainTextEdit*>(&control); box != nullptr && !box->isReadOnly())
        box->setPlainText(text);
    else if (auto* combo = qobject_cast<QComboBox*>(&control); combo != nullptr && combo->isEditable())
        combo->setEditText(text);
    else
        return false;
    return true;
}

} // namespace

EditorMarks::EditorMarks(QDialog& form, const Place& record, const OpenEdits& edits,
                         const ProblemWatch& watch, EditorChecks& checks)
    : QObject(&form),
      form_(form),
      record_(record),
      edits_(edits),
      watch_(watch),
      checks_(checks) {
    wait_.setSingleShot(true);
    wait_.setInterval(WaitForPause);
    connect(&wait_, &QTimer::timeout, this, &EditorMarks::Check);
    AddKeys(form_);
    qApp->installEventFilter(this);
    wait_.start();
}

EditorMarks::~EditorMarks() {
    checks_.problems.Cancel();
    checks_.offers.Cancel();
    for (const QPointer<FieldMark>& mark : marks_)
        delete mark;
    qDeleteAll(pageMarks_);
}

void EditorMarks::AddKeys(QWidget& window) {
    const char* const HasKeys = "hasKeysOfMarks";
    if (window.property(HasKeys).toBool())
        return;
    window.setProperty(HasKeys, true);
    const auto addKey = [&](const char* key, auto command) {
        auto* shortcut = new QShortcut(QKeySequence(QLatin1String(key)), &window);
        connect(shortcut, &QShortcut::activated, this, command);
    };
    addKey("Ctrl+.", [this] { OpenMenu(); });
    addKey("F8", [this] { GoToNext(false); });
    addKey("Shift+F8", [this] { GoToNext(true); });
}

/// Whatever the author does may have changed something, in this window or in one that it has opened.
bool EditorMarks::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyRelease:
    case QEvent::MouseButtonRelease:
    case QEvent::InputMethod:
    case QEvent::Drop:
    case QEvent::WindowActivate:
        wait_.start();
        break;
    case QEvent::Hide:
        DropMarksIn(*watched);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void EditorMarks::Check() {
    GameModel game = edits_.Preview();
    if (game_ != nullptr && SameGame(game, *game_)) {
        if (!checks_.problems.IsRunning())
            Arrange(); // another window may be open, or another row chosen
        return;
    }
    game_ = std::make_unique<GameModel>(game);
    std::shared_ptr<const FoundProblems> known = watch_.Shared();
    if (known->game == nullptr || !SameGame(known->game->Game(), game))
        known = nullptr;
    checks_.problems.Run(
        checks_,
        [known, check = watch_.CheckOf(std::move(game)), record = record_](const IsOutdated&) {
            Checked checked;
            checked.found = known ? known : check();
            checked.own = OwnOf(*checked.found, record);
            return checked;
        },
        [this](Checked checked) { Show(std::move(checked)); });
}

std::vector<EditorMarks::Own> EditorMarks::OwnOf(const FoundProblems& found, const Place& record) {
    std::vector<Own> own;
    for (const problems::Problem& problem : found.problems) {
        if (problem.level == problems::Level::Hint || problem.fileLine != 0)
            continue;
        const std::vector<Place> path = found.game->Owners().Path(problem.place);
        if (!IsOfEditor(record, path.front()))
            continue;
        std::vector<LandingStep> steps = StepsTo(found.game->Game(), path);
        if (steps.empty())
            steps.push_back({.control = NameControlOf(record)});
        QString text = ToQt(problem.text);
        if (IsWholeList(record))
            text.prepend(ToQt(found.game->Describe(problem.place)) + QStringLiteral(": "));
        own.push_back(
            {problem, std::move(steps), text, ToQt(TextAt(found.game->Game(), path.front().WholeField()))});
    }
    return own;
}

void EditorMarks::Show(Checked checked) {
    shown_ = std::move(checked);
    controls_.clear();
    Arrange();
}

/// The control at which a problem is told: as near to it as the windows that are open go.
QWidget* EditorMarks::ControlOf(const Own& own) const {
    const QWidget* window = &form_;
    QWidget* nearest = nullptr;
    for (const LandingStep& step : own.steps) {
        auto* control = window->findChild<QWidget*>(step.control);
        if (control == nullptr || control->isHidden())
            continue;
        // A window may be open for a new entry, which this is not about.
        const auto shown = window == &form_ ? std::nullopt : ShownIn(*control);
        if (shown && step.press.isEmpty() && *shown != QString(own.value).remove(u'\r'))
            return nearest;
        nearest = control;
        if (!IsChosen(*control, step))
            return nearest;
        if (step.press.isEmpty())
            continue;
        window = WindowOver(*window);
        if (window == nullptr)
            return nearest;
    }
    return nearest;
}

/// Puts the marks where they belong, unless they are there.
void EditorMarks::Arrange() {
    const auto isOpen = [](const QPointer<FieldMark>& mark) {
        return mark != nullptr && mark->menu()->isVisible();
    };
    if (std::any_of(marks_.begin(), marks_.end(), isOpen)) { // it is done when the author has chosen
        wait_.start();
        return;
    }
    std::vector<QWidget*> controls;
    for (const Own& own : shown_.own)
        controls.push_back(ControlOf(own));
    if (controls == controls_ && !controls.empty())
        return;
    controls_ = controls;
    for (const QPointer<FieldMark>& mark : std::exchange(marks_, {}))
        delete mark;
    std::vector<std::pair<QWidget*, std::vector<FieldMark::Entry>>> fields;
    for (std::size_t k = 0; k < controls.size(); ++k) {
        if (controls[k] == nullptr)
            continue;
        auto field = std::find_if(fields.begin(), fields.end(),
                                  [&](const auto& one) { return one.first == controls[k]; });
        if (field == fields.end())
            field = fields.insert(fields.end(), {controls[k], {}});
        field->second.push_back({shown_.own[k].problem.level, shown_.own[k].text});
    }
    for (const auto& [control, entries] : fields) {
        marks_.push_back(new FieldMark(*control, entries));
        AddKeys(*control->window());
    }
    MarkPages();
    if (!shown_.own.empty())
        checks_.offers.Run(
            checks_,
            [found = shown_.found, own = shown_.own](const IsOutdated&) { return FixesOf(*found, own); },
            [this](const std::vector<FieldFix>& fixes) { ShowFixes(fixes); });
}

/// The window is about to go, and its controls with it.
void EditorMarks::DropMarksIn(const QObject& window) {
    for (const QPointer<FieldMark>& mark : marks_)
        if (mark != nullptr && mark->window() == &window && &window != &form_) {
            delete mark;
            controls_.clear(); // so that they are arranged anew
        }
}

/// A page that is not shown says on its button that there are marks on it.
void EditorMarks::MarkPages() {
    qDeleteAll(std::exchange(pageMarks_, {}));
    auto* pages = form_.findChild<QStackedWidget*>(QStringLiteral("pages"));
    auto* buttons = pages == nullptr ? nullptr : pages->findChild<PageButtons*>();
    if (buttons == nullptr)
        return;
    for (int page = 0; page < pages->count(); ++page) {
        std::optional<problems::Level> worst;
        for (const QPointer<FieldMark>& mark : marks_)
            if (mark != nullptr && pages->widget(page)->isAncestorOf(mark))
                worst = worst ? std::min(*worst, mark->Level()) : mark->Level();
        if (!worst)
            continue;
        QPushButton* button = buttons->Button(page);
        auto* mark = new QLabel(button);
        const int size = button->fontMetrics().height() * 3 / 4;
        mark->setPixmap(IconOf(*worst, button->palette()).pixmap(size, size));
        mark->setAttribute(Qt::WA_TransparentForMouseEvents);
        mark->resize(size, size);
        mark->move(button->width() - size - 3, 3);
        mark->show();
        pageMarks_.push_back(mark);
    }
}

/// Only what changes nothing but the marked field can be done here: the rest of the game is not in the
/// editor.
std::vector<EditorMarks::FieldFix> EditorMarks::FixesOf(const FoundProblems& found,
                                                        const std::vector<Own>& own) {
    std::vector<FieldFix> fixes;
    const GameModel& game = found.game->Game();
    for (std::size_t k = 0; k < std::min(own.size(), MostOffered); ++k) {
        const Place field = own[k].problem.place.WholeField();
        if (field.field == FieldId::None || own[k].problem.fixes.empty())
            continue;
        for (const problems::Fix& fix : OffersOf(*found.game, own[k].problem)) {
            const GameModel fixed = fix.apply(game);
            const auto after = Resolve(fixed, field);
            if (!after || after->text == nullptr || after->text->empty()) // to empty a box needs no help
                continue;
            GameModel same = game;
            SetText(same, field, *after->text);
            if (SameGame(same, fixed))
                fixes.push_back({k, ToQt(fix.button), *after->text});
        }
    }
    return fixes;
}

void EditorMarks::ShowFixes(const std::vector<FieldFix>& fixes) {
    for (const FieldFix& fix : fixes) {
        const Own& own = shown_.own[fix.own];
        QWidget* control = ControlOf(own);
        FieldMark* mark = MarkOf(control);
        if (mark != nullptr && CanBeTypedInto(*control))
            mark->AddFix(fix.caption, [this, own, text = fix.text] { Fix(own, text); });
    }
}

/// Types what puts it right. An editor that does not make the text of it leaves it to the list of problems.
void EditorMarks::Fix(const Own& own, const std::string& text) {
    QWidget* control = ControlOf(own);
    if (control == nullptr || !TypeInto(*control, ToQt(text)))
        return;
    control->setFocus();
    wait_.start();
}

FieldMark* EditorMarks::MarkOf(const QWidget* control) const {
    const auto mark = std::find_if(marks_.begin(), marks_.end(), [&](const QPointer<FieldMark>& one) {
        return one != nullptr && &one->Control() == control;
    });
    return mark == marks_.end() ? nullptr : mark->data();
}

/// Those in the window that the author works in.
std::vector<FieldMark*> EditorMarks::MarksHere() const {
    const QWidget* modal = QApplication::activeModalWidget();
    const QWidget* window = modal == nullptr ? &form_ : modal;
    std::vector<FieldMark*> here;
    for (const QPointer<FieldMark>& mark : marks_)
        if (mark != nullptr && mark->window() == window)
            here.push_back(mark);
    return here;
}

void EditorMarks::OpenMenu() {
    for (FieldMark* mark : MarksHere())
        if (HasFocus(mark))
            return mark->showMenu();
}

void EditorMarks::GoToNext(bool backwards) {
    const std::vector<FieldMark*> marks = MarksHere();
    if (marks.empty())
        return;
    const auto at = std::find_if(marks.begin(), marks.end(), HasFocus);
    auto next = backwards ? marks.end() - 1 : marks.begin();
    if (at != marks.end() && backwards)
        next = at == marks.begin() ? marks.end() - 1 : at - 1;
    else if (at != marks.end())
        next = at + 1 == marks.end() ? marks.begin() : at + 1;
    LandOn(*(*next)->window(), {.control = (*next)->Control().objectName()});
}

} // namespace zem
