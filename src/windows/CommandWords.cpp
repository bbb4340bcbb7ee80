#include "windows/CommandWords.h"

#include <QHash>

namespace zem {

namespace {

struct Row {
    const char* name;
    const char* words;
    const char* whyNot = "";
};

constexpr const char* NoRoomChosen = "no room is selected";
constexpr const char* NoCharacterChosen = "no character is selected";
constexpr const char* NoObjectChosen = "no object is selected";
constexpr const char* NotPlaying = "no game is being played in the panel";

constexpr Row Commands[] = {
    {"mnuFileNew", "start over; begin another game; create a game; empty game; from scratch; blank"},
    {"mnuFileOpen", "load a game; read a file; other game; existing game; look at a game; browse"},
    {"mnuFileSave", "keep my work; store; write the file; save the game; put on disk"},
    {"mnuFileSaveAs",
     "save a copy; other file name; another folder; duplicate the file; save elsewhere; copy "
     "of the game"},
    {"mnuFileRunKELfile", "play the game; try out; test; start the game; launch; open in the player; Veldt"},
    {"mnuFileExit", "quit; close the program; leave; stop; end"},
    {"mnuFileRecent_0", "last game; recent files; open again; what I worked on"},
    {"mnuViewGameProperties",
     "title; name of the game; rename the game; author; my name; version; copyright; start room; first room; "
     "where the game begins; start place; start script; what happens at the start; every turn; before each "
     "turn; after each turn; font of the game; letters of the game; size of the game's text; own commands; "
     "player commands; verbs; new verb; react to what the player types; about the game; game information; "
     "settings of the game; global settings"},
    {"mnuViewItems", "things to carry; inventory; what the player has; belongings; possessions; add an item; "
                     "new item; start items; what the player starts with; bag; pockets; pick up"},
    {"mnuViewCollectables",
     "score; points; money; coins; health; counters; numbers; lives; strength; energy; "
     "hit points; status values; percentage"},
    {"mnuViewMenus", "choices; conversation; dialogue; dialog; talk; multiple choice; question with answers; "
                     "topics; ask a character; options for the player; branching"},
    {"mnuViewProcedures", "functions; subroutines; scripts; code; macros; use a script again; shared script; "
                          "routine"},
    {"mnuViewMiscKEL", "unknown blocks; raw text; lines that are not understood; source code; raw code"},
    {"mnuViewLibraries", "include a file; import; other file; add-on; extension; module; library"},
    {"mnuViewSynonyms", "other words for the same; alias; same meaning; abbreviation; shortcut word; "
                        "vocabulary; what the player may type"},
    {"mnuEditErrorMessages",
     "standard messages; default answers; you cannot go that way; I do not understand; replies of the game; "
     "responses; change the wording; refuse; unknown command; game's own messages"},
    {"mnuViewTextSectionEditor",
     "intro; introduction; opening text; beginning of the story; welcome; win text; lose text; ending text; "
     "long text; story; letter; book; final words; game over text; death; victory; prologue; text sections"},
    {"mnuViewOptions",
     "preferences; settings of the editor; configuration; customize; program that runs games; friendly "
     "script; plain English"},
    {"mnuToolsUndo",
     "take back; put back; revert; go back; mistake; oops; bring back what I deleted; undelete; restore; "
     "cancel the last change; I deleted it; made an error",
     "nothing has been changed yet"},
    {"mnuToolsRedo", "do again; once more; take the undo back; forward", "nothing has been undone"},
    {"mnuToolsTimers", "clock; seconds; later; time; every minute; countdown; delay; alarm; wait a while; "
                       "happen after some time"},
    {"mnuToolsVersions", "backup; old version; yesterday; earlier save; recover; previous save; lost work; "
                         "history of the file; go back to an older version; get back"},
    {"mnuToolsWhatsThis", "explain; what does this do; help on a control; tip; question mark"},
    {"mnuZEMRef", "manual; help; how to; guide; tutorial; instructions; learn; handbook; lesson"},
    {"mnuKELRef", "language; script language; syntax; documentation; list of commands; programming"},
    {"mnuHelpAbout", "version of the program; licence; license; who made this; credits"},
    {"mnuToolsHistory", "steps; undo several; what did I do; list of changes; undo list"},
    {"mnuToolsProblems", "errors; mistakes; warnings; check the game; what is wrong; bugs; find mistakes; "
                         "validate; verify; proof; dead links; broken"},
    {"mnuToolsNextProblem", "go to the next error; following warning; next mistake"},
    {"mnuToolsPreviousProblem", "go to the error before; last warning; previous mistake"},
    {"mnuToolsFixProblem", "repair; correct; mend; solve; quick fix; autocorrect"},
    {"mnuToolsMap",
     "picture of the rooms; plan; draw; diagram; chart; overview of the rooms; see all rooms; "
     "connect rooms; join two rooms; exits; tidy the map; zoom; layout of the rooms; geography; "
     "world"},
    {"mnuToolsFind", "search; look for a word; where is; locate; seek; text search"},
    {"mnuToolsFindPanel", "search results; hits; list of hits"},
    {"mnuToolsFindNext", "next hit; search again; continue the search"},
    {"mnuToolsFindPrevious", "hit before; search backwards"},
    {"mnuToolsReplace", "change a word everywhere; substitute; swap words; search and replace; exchange"},
    {"mnuToolsWhereUsed",
     "references; used by; who uses this; usages; where does it occur; links to it; may I "
     "delete this"},
    {"mnuToolsWhereUsedPanel", "list of uses; references"},
    {"mnuToolsRename", "rename a room; change the name of a room; change the name of an item; change the "
                       "name; other name; call it something else; new name; give a name"},
    {"mnuToolsPlay",
     "try; test; play here; debug; step through; watch variables; see what happens; start the "
     "game; try out"},
    {"mnuToolsPlayRoom", "try this room; begin in this room; start from here; test from here; play here",
     NoRoomChosen},
    {"mnuToolsPreview", "what the player sees; how it looks; see the description; read as a player"},
    {"mnuToolsFigures",
     "statistics; count the words; word count; how many rooms; how long is my game; length; "
     "size of the game; reading time; numbers"},
    {"mnuToolsChanges", "what did I change; compare; differences since the last save; diff; what is new"},
    {"mnuToolsMerge",
     "two authors; bring together; combine; join two versions; unite; work of somebody else; "
     "git; conflict"},
    {"mnuToolsMergePanel", "conflicts; mine and theirs; decide"},
    {"mnuToolsExport", "print; pdf; html; book; on paper; send to somebody; share; walkthrough; spreadsheet; "
                       "table; csv; json; markdown; write out; document; solution"},
    {"mnuToolsExportAgain", "same export; repeat the export; renew the book"},
    {"mnuToolsArrange", "reset the windows; lost panel; windows are a mess; default layout; restore the "
                        "panels; put the windows back; where is my list; arrange"},
    {"mnuToolsRuns",
     "recorded runs; tests; test cases; transcripts; play again by itself; does it still work; can it "
     "still be won; regression; walkthrough; walker; explore; keep what I played; record"},
    {"mnuToolsCoverage", "what was never played; never run; untested; what no test reaches; which lines ran"},
    {"mnuToolsWhichRun",
     "how do I get here; way to this room; solution up to here; how does one reach this room", NoRoomChosen},
    {"mnuToolsPublish",
     "web page; website; browser; share the game; give it to somebody; send to players; upload; "
     "internet; html game; release"},
    {"mnuToolsSpelling",
     "spell check; spelling mistakes; typos; misspelt words; dictionary; orthography; unknown "
     "words; check my writing; proofread"},
    {"mnuToolsAnyCommand", "action; search commands; what can I do; palette; menu search"},
    {"mnuToolsAnyName", "go to a room; jump; open by name; switch to; quick open; navigate"},
    {"mnuToolsReadyMade",
     "template; example; pattern; recipe; wizard; snippet; puzzle; ready-made piece; building block; insert"},
    {"butAddNewRoom", "new room; make a room; create a place; another location; add a location; new scene"},
    {"butEditRoom",
     "description; describe a room; change a room; exits; make a door; add a door; make an exit; connect two "
     "rooms; way from room to room; passage; what is seen; alias of a room; enter a room; script of a room",
     NoRoomChosen},
    {"butDeleteRoom", "remove a room; get rid of a room; erase a location; throw away", NoRoomChosen},
    {"butAddObj_0",
     "new character; person; somebody; animal; people; npc; actor; add a person; creature; "
     "monster; man; woman",
     NoRoomChosen},
    {"butEditObj_0", "change a character; speak; talk; what somebody says; describe a person",
     NoCharacterChosen},
    {"butDeleteObj_0", "remove a character; get rid of a person; kill", NoCharacterChosen},
    {"butAddObj_1",
     "new object; thing; furniture; something to look at; prop; add a thing; put a thing into a "
     "room; scenery",
     NoRoomChosen},
    {"butEditObj_1",
     "change an object; describe a thing; take; use; look at; make it takeable; can be taken; "
     "pick up; hide a thing; hidden",
     NoObjectChosen},
    {"butDeleteObj_1", "remove an object; get rid of a thing", NoObjectChosen},
    {"actStartHere", "start room; first room; where the game begins; the player begins here; start place",
     NoRoomChosen},
    {"actCut", "move elsewhere; take away and keep"},
    {"actCopy", "clipboard; copy to another game; put into a mail; copy a room; copy an object"},
    {"actPaste", "clipboard; insert what was copied; put a copied room in"},
    {"actDuplicate", "copy and paste; one more like it; clone; twice; the same again"},
    {"actZoomIn", "larger map; bigger rooms; magnify; enlarge"},
    {"actZoomOut", "smaller map; see more of the map; shrink"},
    {"actFit", "whole map; see everything; fit the map"},
    {"actFitSelection", "zoom to the selected rooms"},
    {"actOverview", "small map; miniature; corner"},
    {"actTidy", "clean up the map; rearrange rooms; new layout; untangle"},
    {"actForget", "lay out the whole map anew; forget hand-made places; automatic map; reset the map"},
    {"actExport", "picture of the map; save the map; svg; png; print the map"},
    {"actPlayFrom", "begin elsewhere; start in another room; with items"},
    {"actPlayRestart", "from the beginning; start over; again"},
    {"actPlayUndo", "take a turn back", NotPlaying},
};

constexpr Row OptionRows[] = {
    {"txtVCOMPILElocation", "compiler; VCOMPILE"},
    {"txtRunner", "player program; which program plays; other player; run does not work"},
    {"txtMax", "recent files; how many files; list of last games; forget recent files"},
    {"cmbLook", "dark; night; black; light; bright; theme; colours; colors; eyes hurt; contrast; mode; skin"},
    {"cmbLetters", "letters too small; text too small; bigger letters; larger font; font size; cannot read; "
                   "tiny; zoom; letters too big; size of the letters; glasses"},
    {"chkFriendlyScript", "plain English; show the commands as written; raw script; script words; keywords"},
};

constexpr Row Pages[] = {
    {"first-game", "tutorial; how do I begin; getting started; lesson; learn; beginner; introduction; first "
                   "steps; new here"},
    {"keyboard", "shortcuts; keys; without the mouse; hotkeys; key bindings"},
    {"command-line", "terminal; shell; batch; automate; zem check"},
    {"two-authors", "teams; together; git; share the work; collaborate"},
    {"limits", "emoji; characters that cannot be used; foreign letters; unicode; how many rooms"},
    {"recovery", "crash; power cut; lost changes; computer stopped"},
    {"versions", "backup; older saves"},
};

template <std::size_t Count>
const Row* Find(const Row (&rows)[Count], const QString& name) {
    for (const Row& row : rows)
        if (name == QLatin1String(row.name))
            return &row;
    return nullptr;
}

} // namespace

CommandWords WordsForCommand(const QString& name) {
    const Row* row = Find(Commands, name);
    return row == nullptr ? CommandWords()
                          : CommandWords{QLatin1String(row->words), QLatin1String(row->whyNot)};
}

QString WordsForOption(const QString& control) {
    const Row* row = Find(OptionRows, control);
    return row == nullptr ? QString() : QString(QLatin1String(row->words));
}

QString WordsForPage(const QString& place) {
    const Row* row = Find(Pages, place);
    return row == nullptr ? QString() : QString(QLatin1String(row->words));
}

} // namespace zem
