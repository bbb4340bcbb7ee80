#include "game/ScriptOwners.h"
#include "model/Texts.h"
#include "support/CaseFile.h"
#include "support/Cases.h"
#include "support/RunningProgram.h"

#include <QPlainTextEdit>

#include <cctype>

namespace zem::test {
namespace {

/// Two rooms of one name; every text that is looked for stands there once.
const std::string Bytes =
    CrLf("!include <aa.kel>\n"
         "define game <bb>\nstart <cc>\ngame author <dd>\ngame version <ee>\ngame copyright <ff>\n"
         "game info <one|ntwo gg>\ndefault fontname <hh>\nitems <lamp, ii>\ncollectables <coins p=0 [! jj]>\n"
         "startscript msg <kk>\ndescription msg <ll>\nbeforeturn msg <mm>\nafterturn msg <nn>\n"
         "command <oo> msg <x>\ncommand <sing> msg <pp>\nuse <qq> msg <x>\nuse <oil> msg <rr>\nmood <ss>\n"
         "error <badgo; tt>\nend define\n"
         "define synonyms\nx; uu = look\ny = vv\nend define\n"
         "define room <Hall>\nend define\n"
         "define room <Hall>\nalias <aaa>\nprefix <bbb>\nindescription  <ccc>\nlook <ddd>\nout <eee>\n"
         "north if has <x> then msg <fff>\nsouthwest <ggg>\nscript {\nmsg <x>\nmsg <hhh>\n}\ndescription msg "
         "<iii>\n"
         "place <jjj>\nplace <the; Den> msg <kkk>\ncommand <lll> msg <x>\ncommand <hum> msg <mmm>\nuse <nnn> "
         "msg <ooo>\n"
         "mood <ppp>\n"
         "define character <qqq>\nprefix <rrr>\nsuffix <sss>\ngender <ttt>\nlook {\nif has <x> then {\nmsg "
         "<x>\nmsg <uuu>\n}\n}\n"
         "speak msg <vvv>\ngive <www> msg <x>\nuse <xxx> msg <x>\nmood <yyy>\nend define\n"
         "define object <zzz>\ntake msg <aaaa>\nend define\nend define\n"
         "define text <bbbb>\nOne.\nTwo cccc.\nend define\n"
         "define procedure <sail>\nmsg <x>\nmsg <dddd>\nend define\n"
         "define selection <eeee>\ninfo <ffff>\nchoice <gggg> msg <hhhh>\nend define\n"
         "define timer <iiii>\nend define\n");

/// Where the word stands in the text, and not only as a part of another.
std::size_t FindWord(const std::string& text, const std::string& word) {
    const auto isLetter = [&](std::size_t at) {
        return at < text.size() && std::isalpha(static_cast<unsigned char>(text[at])) != 0;
    };
    std::size_t at = text.find(word);
    while (at != std::string::npos && ((at > 0 && isLetter(at - 1)) || isLetter(at + word.size())))
        at = text.find(word, at + 1);
    return at;
}

/// The place of the word, to the byte.
Place PlaceOf(const GameModel& game, const std::string& wanted) {
    Place found;
    ForEachText(game, [&](const Place& place, FieldUse use, const std::string& text) {
        const std::size_t at = FindWord(text, wanted);
        const bool isName = use.kind == FieldKind::Name && place.steps[0].list == FieldId::GameCollectables;
        if (at == std::string::npos || isName)
            return;
        found = place;
        found.bytes = {at, at + wanted.size()};
    });
    return found;
}

/// The window in front, its control with the focus, and what is selected there.
std::string Landed() {
    const QWidget* window = QApplication::activeModalWidget();
    QWidget* control = window == nullptr ? nullptr : window->focusWidget();
    if (control == nullptr || !control->isVisible())
        return "nowhere";
    std::string text = (window->objectName() + u' ' + control->objectName()).toStdString();
    if (auto* list = qobject_cast<QListWidget*>(control))
        text += " " + std::to_string(list->currentRow() + 1);
    auto* line = qobject_cast<QLineEdit*>(control);
    if (auto* combo = qobject_cast<QComboBox*>(control); combo != nullptr)
        line = combo->lineEdit();
    if (line != nullptr && line->hasSelectedText())
        text += " \"" + line->selectedText().toStdString() + "\"";
    if (auto* box = qobject_cast<QPlainTextEdit*>(control))
        text += " \"" + box->textCursor().selectedText().toStdString() + "\"";
    return text;
}

/// Waits until the author stands there, and closes all windows.
/// @return where he stood in the end
class Arrival {
public:
    explicit Arrival(std::string expected) : expected_(std::move(expected)) {
        QObject::connect(&timer_, &QTimer::timeout, [this] { Look(); });
        timer_.start(2);
    }
    const std::string& Place() const { return landed_; }

private:
    void Look() {
        auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (window == nullptr)
            return;
        if (!isClosing_)
            landed_ = Landed();
        isClosing_ = isClosing_ || landed_ == expected_ || ++looks_ > 500;
        if (isClosing_)
            window->reject();
    }

    std::string expected_;
    std::string landed_ = "nowhere";
    int looks_ = 0;
    bool isClosing_ = false;
    QTimer timer_;
};

TEST(OpenEditor, LandsOnTheControlOfEveryText) {
    const RunningProgram p(Bytes);
    for (const auto& [text, landing] : CasesIn<2>("landings")) {
        const Place place = PlaceOf(p.game, text);
        ASSERT_TRUE(place.field != FieldId::None || place.Depth() > 0) << text;
        const Arrival arrival(landing);
        p.Main()->OpenEditor(place);
        EXPECT_EQ(arrival.Place(), landing) << text << " in " << DescribePlace(p.game, place);
    }
}

TEST(OpenEditor, LandsOnMarksAndWholeFieldsAndEntries) {
    const RunningProgram p(Bytes);
    const PlaceStep hall{FieldId::GameRooms, 2};
    const PlaceStep person{FieldId::RoomCharacters, 1};
    for (const auto& [place, landing] : Cases<Place, std::string>{
             {Place::Of({}, FieldId::GameNoDebug), "frmGameProperties chkNoDebug"},
             {Place::Of({}, FieldId::GameDefaultFontSize), "frmGameProperties txtFontSize"},
             {Place::Of({hall, person}, FieldId::ThingHidden), "frmThingProperties chkHidden"},
             {Place::Of({hall, person}, FieldId::ThingInvisible), "frmThingProperties chkInvisible"},
             {Place::Of({hall, person}, FieldId::ThingLook), "frmThingProperties txtDescription"},
             {Place::Of({hall}, FieldId::RoomSouthWest), "frmRoomProperties cmbRoomNames_7"},
             {Place::Of({hall, {FieldId::RoomPlaces, 2}}), "frmRoomProperties lstPlaces 2"},
             {Place::Of({{FieldId::GameItems, 2}}, FieldId::ItemIsStartItem), "frmEditItems lstItems 2"},
             {Place::Of({hall, {FieldId::RoomCommands, 2}}, FieldId::PairScript), "frmEditCommand txtAction"},
         }) {
        const Arrival arrival(landing);
        p.Main()->OpenEditor(place);
        EXPECT_EQ(arrival.Place(), landing);
    }
    p.Main()->OpenEditor(Place::Of({{FieldId::GameRooms, 3}}));
    EXPECT_EQ(p.Status(), "That is not there any more.");
}

} // namespace
} // namespace zem::test
