// What an author waits for at a key, in a game of 32,767 rooms and as a ratio to the same in a game of 100:
// choosing a command and a condition whose names are all the rooms, after a room was changed, and typing a
// letter in an exit and in a description of 64 KB. Each up to the painting of the window, in processor time,
// offscreen.
#include "Clock.h"
#include "base/KelError.h"
#include "editors/frmRoomProperties.h"
#include "forms/Dialogs.h"
#include "kel/CommandLookup.h"
#include "qt/ChangeDoor.h"
#include "script/ScriptEditing.h"
#include "script/frmConditional.h"
#include "script/frmScriptEditor.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextCursor>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <functional>
#include <memory>
#include <string>

namespace zem::bench {
namespace {

class Door : public ChangeDoor {
public:
    GameModel game;

    const GameModel& Game() const override { return game; }
    void Change(const std::function<void(GameModel&)>& change) override { change(game); }
    void MarkModified() override {}
};

class NoShell : public EditorShell {
public:
    void ShowMessage(const QString& /*text*/, const QString& /*title*/) override {}
    void ShowHelp(const QString& /*section*/, QWidget* /*parent*/) override {}
    void ShowManual(const QString& /*place*/, QWidget& /*beside*/) override {}
    QSize TagEditorSize() const override { return {6000, 6000}; }
    void StoreTagEditorSize(const QSize& /*twips*/) override {}
};

const CommandCatalogue& Catalogue() {
    static const CommandCatalogue catalogue = [] {
        CommandCatalogue read;
        LoadCommandCatalogue(read, ZEM_PROGRAM_FOLDER "/zem.dat");
        return read;
    }();
    return catalogue;
}

/// A game of so many rooms, whose scripts name rooms and set flags, and its editors.
class Editing {
public:
    explicit Editing(int rooms) {
        for (int number = 1; number <= rooms; ++number) {
            Room& room = door.game.Rooms.Append();
            room.Name = "Room number " + std::to_string(number);
            room.Script = "flag on <seen " + std::to_string(number) + ">\r\ngoto <Room number 1>";
        }
    }

    /// Another version of the game, as after an OK.
    void ChangeRoom() {
        door.game.Rooms.Edit(1).Script = "flag on <change " + std::to_string(++changes) + ">";
    }

    Door door;
    QtDialogs dialogs;
    CommandLookup commands{Catalogue()};
    NoShell shell;
    OpenEdits edits{door};
    ScriptEditing scripts{door, edits, dialogs, shell, commands, [] { return false; }};
    EditorContext context{door, edits, dialogs, shell, scripts};
    int changes = 0;
};

template <class Child>
Child& Find(QWidget& form, const char* name) {
    auto* child = form.findChild<Child*>(QLatin1String(name));
    if (child == nullptr)
        throw KelError(std::string("the form has no ") + name);
    return *child;
}

double SecondsOf(QWidget& form, const std::function<void()>& action) {
    const auto start = ThreadClock::now();
    action();
    QApplication::processEvents();
    form.repaint();
    return Seconds(ThreadClock::now() - start);
}

void Choose(QComboBox& box, const char* text) {
    const int row = box.findText(QLatin1String(text));
    if (row < 0)
        throw KelError(std::string("there is no choice ") + text);
    box.setCurrentIndex(row);
    emit box.activated(row);
}

double ChooseCommand(Editing& editing) {
    frmScriptEditor form(editing.context, "msg <x>");
    form.show();
    QApplication::processEvents();
    editing.ChangeRoom();
    return SecondsOf(form, [&] { Choose(Find<QComboBox>(form, "cmbCommands"), "goto"); });
}

double ChooseCondition(Editing& editing) {
    frmConditional form(editing.context, "if has <x> then win");
    form.show();
    QApplication::processEvents();
    editing.ChangeRoom();
    return SecondsOf(form, [&] { Choose(Find<QComboBox>(form, "cmbCondition"), "in"); });
}

double TypeInExit(Editing& editing) {
    frmRoomProperties form(editing.context, 1);
    form.show();
    QApplication::processEvents();
    auto& exit = Find<QComboBox>(form, "cmbRoomNames_1");
    return SecondsOf(form, [&] { exit.lineEdit()->insert(QStringLiteral("Room number 3")); });
}

/// In the middle of a description of 64 KB on one line.
double TypeInDescription(Editing& editing) {
    std::string& look = editing.door.game.Rooms.Edit(1).Look;
    while (look.size() < 65'536)
        look += "The |bquick|xb brown fox jumps over the lazy dog, and so on. ";
    frmRoomProperties form(editing.context, 1);
    form.show();
    QApplication::processEvents();
    auto& box = Find<QPlainTextEdit>(form, "txtDescription");
    QTextCursor cursor = box.textCursor();
    cursor.setPosition(30'000);
    box.setTextCursor(cursor);
    QApplication::processEvents();
    return SecondsOf(form, [&] { box.insertPlainText(QStringLiteral("a")); });
}

void Measure(benchmark::State& state, double (*action)(Editing&)) {
    Editing small(100);
    Editing large(MostRecords);
    for (Editing* editing : {&small, &large})
        action(
            *editing); // Loads fonts and styles, and what is kept from one version of the game to the next.
    double ofSmall = 0;
    double ofLarge = 0;
    double worst = 0;
    for (auto _ : state) {
        ofSmall += action(small);
        const double seconds = action(large);
        ofLarge += seconds;
        worst = std::max(worst, seconds);
        state.SetIterationTime(seconds);
    }
    const auto runs = static_cast<double>(state.iterations());
    state.counters["small_ms"] = ofSmall * 1000 / runs;
    state.counters["large_worst_ms"] = worst * 1000;
    state.counters["ratio"] = ofLarge / ofSmall;
}

BENCHMARK_CAPTURE(Measure, ChooseCommand, ChooseCommand)
    ->UseManualTime()
    ->Iterations(20)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, ChooseCondition, ChooseCondition)
    ->UseManualTime()
    ->Iterations(20)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, TypeInExit, TypeInExit)
    ->UseManualTime()
    ->Iterations(20)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, TypeInDescription, TypeInDescription)
    ->UseManualTime()
    ->Iterations(20)
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace zem::bench

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
