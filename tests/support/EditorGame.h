#pragma once

#include "support/Games.h"

namespace zem::test {

/// A game in which every field of every form is filled, some with bytes that boxes like to change: a no-break
/// blank (A0), a byte without a character of its own (81), a lone CR. Saving it gives it back.
inline std::string EditorGame() {
    return CrLf(
        "' game.kel created by ZEM 1.0\n\n"
        "'*** The following line is required by ZEM - please do not remove\n'ZEM-NIP <1>\n\n"
        "!include <one.kel>\n!include <two.kel>\n\n"
        "define game <To\xA0wer>\nkel-version <217>\nstart <Nowhere>\n"
        "game author <A\x81>\ngame version <2>\ngame copyright <2026>\ngame info <one|ntwo|n>\n"
        "default fontname <Arial>\ndefault fontsize <-10>\n"
        "items <lamp; key; coin>\nstartitems <lamp, coin>\n"
        "collectables <score p=0 [! points]; temp d0r40=20 []>\n"
        "startscript msg <go>\ndescription msg <look>\n"
        "beforeturn msg <before>\nafterturn msg <after>\n"
        "command <wait> msg <Later.>\nnodebug\nuse <rope> msg <No.>\nerror <badgo;Not there.>\ntag "
        "<one>\nt\xA0g\r <two>\n\n"
        "end define\n\n"
        "define synonyms\nget; take = grab\nl = look\nend define\n"
        "define room <Hall>\nalias <the hall>\nprefix <the>\nlook <A\xA0long hall.\r>\n"
        "out <Yard> msg <bye>\nnorth msg <Locked.>\nsouth <Yard>\n"
        "place <the; Yard> msg <a>\nplace <Hall> msg <b>\n"
        "script msg <enter>\ndescription msg <describe>\ncommand <sing> msg <La.>\nuse <rope> msg <x>\n"
        "define character <Bob>\nlook msg <A man.>\nspeak msg <Hi.>\ngender <he>\nprefix <old>\n"
        "suffix <the smith>\ninvisible\ngive <coin> msg <Thanks.>\nuse <hammer> msg <Ouch.>\n"
        "weight <80>\n\nend define\n"
        "define object <lamp>\nlook msg <Bright.>\ntake msg <Taken.>\nprefix <a>\nsuffix <of brass>\n"
        "hidden\nuse <oil> msg <It burns.>\ncolour <red>\n\nend define\n"
        "indescription  <You are in>\nweather <fine>\n\nend define\n\n"
        "define room <Yard>\nnorth <Hall>\n\nend define\n\n"
        "define procedure <greet>\nmsg <Hello.>\n\nend define\n\n"
        "define procedure <~Internal Procedure 0>\nmsg <a>\nmsg <b>\n\nend define\n\n"
        "define text <intro>\nWel\xA0\x63ome.\nThe\r end.\nend define\n\n"
        "define text <Intro>\nAgain.\n\nend define\n\n"
        "define text <win>\n\nend define\n\ndefine text <lose>\n\nend define\n\n"
        "define timer <fog>\ninterval <5>\nend define\n\n\n");
}

} // namespace zem::test
