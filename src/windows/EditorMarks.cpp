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

bool IsOfEditor(const Place& record, const Place& place) {
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
    const auto addKey = [this](const char* key, auto command) {
        auto* shortcut = new QShortcut(QKeySequence(QLatin1String(key)), &form_);
        connect(shortcut, &QShortcut::activated, this, command);
    };
    addKey("Ctrl+.", [this] { OpenMenu(); });
    addKey("F8", [this] { GoToNext(false); });
    addKey("Shift+F8", [this] { GoToNext(true); });
    qApp->installEventFilter(this);
    wait_.start();
}

EditorMarks::~EditorMarks() {
    checks_.problems.Cancel();
    checks_.offers.Cancel();
    qDeleteAll(marks_);
    qDeleteAll(pageMarks_);
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
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void EditorMarks::Check() {
    GameModel game = edits_.Preview();
    if (game_ != nullptr && SameGame(game, *game_))
        return;
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
        const std::vector<LandingStep> steps = StepsTo(found.game->Game(), path);
        own.push_back({problem, steps.empty() ? NameControlOf(record) : steps.front().control});
    }
    return own;
}

void EditorMarks::Show(Checked checked) {
    const auto isOpen = [](const FieldMark* mark) { return mark->menu()->isVisible(); };
    if (std::any_of(marks_.begin(), marks_.end(), isOpen)) { // it is shown when the author has chosen
        game_ = nullptr;
        wait_.start();
        return;
    }
    qDeleteAll(std::exchange(marks_, {}));
    shown_ = std::move(checked);
    std::vector<std::pair<QString, std::vector<FieldMark::Entry>>> fields;
    for (const Own& own : shown_.own) {
        auto field = std::find_if(fields.begin(), fields.end(),
                                  [&](const auto& one) { return one.first == own.control; });
        if (field == fields.end())
            field = fields.insert(fields.end(), {own.control, {}});
        field->second.push_back({own.problem.level, ToQt(own.problem.text)});
    }
    for (const auto& [name, entries] : fields)
        if (auto* control = form_.findChild<QWidget*>(name))
            marks_.push_back(new FieldMark(*control, entries));
    MarkPages();
    if (!shown_.own.empty())
        checks_.offers.Run(
            checks_,
            [found = shown_.found, own = shown_.own](const IsOutdated&) { return FixesOf(*found, own); },
            [this](const std::vector<FieldFix>& fixes) { ShowFixes(fixes); });
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
        for (const FieldMark* mark : marks_)
            if (pages->widget(page)->isAncestorOf(mark))
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
        if (FieldMark* mark = MarkOf(own.control))
            mark->AddFix(fix.caption, [this, own, text = fix.text] { Fix(own, text); });
    }
}

/// Types what puts it right. An editor that does not make the text of it leaves it to the list of problems.
void EditorMarks::Fix(const Own& own, const std::string& text) {
    auto* control = form_.findChild<QWidget*>(own.control);
    if (control == nullptr || !TypeInto(*control, ToQt(text)))
        return;
    control->setFocus();
    wait_.start();
}

FieldMark* EditorMarks::MarkOf(const QString& control) const {
    const auto mark = std::find_if(marks_.begin(), marks_.end(), [&](const FieldMark* one) {
        return one->Control().objectName() == control;
    });
    return mark == marks_.end() ? nullptr : *mark;
}

void EditorMarks::OpenMenu() {
    for (FieldMark* mark : marks_)
        if (&mark->Control() == form_.focusWidget() || mark->Control().isAncestorOf(form_.focusWidget()))
            return mark->showMenu();
}

void EditorMarks::GoToNext(bool backwards) {
    if (marks_.empty())
        return;
    const auto at = std::find_if(marks_.begin(), marks_.end(), [this](const FieldMark* mark) {
        return &mark->Control() == form_.focusWidget() || mark->Control().isAncestorOf(form_.focusWidget());
    });
    auto next = backwards ? marks_.end() - 1 : marks_.begin();
    if (at != marks_.end() && backwards)
        next = at == marks_.begin() ? marks_.end() - 1 : at - 1;
    else if (at != marks_.end())
        next = at + 1 == marks_.end() ? marks_.begin() : at + 1;
    LandOn(form_, {.control = (*next)->Control().objectName()});
}

} // namespace zem
