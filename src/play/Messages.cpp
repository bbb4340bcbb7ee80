#include "play/Messages.h"

namespace zem::play {

const std::array<MessageRow, MessageCount> MessageRows = {{
    {"badcommand", "I do not understand that."},
    {"badgo", "You cannot go that way."},
    {"badplace", "There is no such place to go to."},
    {"badthing", "There is nothing of that name here."},
    {"badtake", "You cannot take that."},
    {"alreadytaken", "You have it already."},
    {"taken", "Taken."},
    {"baddrop", "You had better keep that."},
    {"dropped", "Dropped."},
    {"noitem", "You do not have that."},
    {"badgive", "That is not wanted."},
    {"badgiveto", "To whom? Say GIVE ... TO ..."},
    {"given", "Given."},
    {"baduse", "That is of no use here."},
    {"baduseon", "Nothing happens."},
    {"badspeak", "There is nobody of that name to speak to."},
    {"noreply", "There is no answer."},
    {"speaktothing", "It does not answer."},
    {"speaktoself", "You talk to yourself for a while."},
    {"defaultlook", "You see nothing special."},
    {"lookself", "You look much as you did this morning."},
    {"nothinghere", "There is nothing to look at."},
    {"badexamine", "You see no such thing."},
    {"emptyhanded", "You are carrying nothing."},
    {"inventory", "You are carrying"},
    {"youcansee", "You can see"},
    {"youcango", "You can go"},
    {"peoplehere", "Also here:"},
    {"badcharacter", "There is nobody of that name here."},
    {"toodark", "It is too dark to see."},
    {"needname", "You must say what."},
    {"ambiguous", "Which do you mean,"},
    {"unknownword", "I do not know that word."},
    {"badoops", "There was nothing to correct."},
    {"badcollectable", "There is not enough of that."},
    {"menuprompt", "Which?"},
    {"badchoice", "That is not one of the choices."},
    {"asksave", "End without saving?"},
    {"saved", "Saved."},
    {"badsave", "That could not be saved."},
    {"restored", "Restored."},
    {"badrestore", "That game could not be opened."},
    {"won", "You have won."},
    {"lost", "You have lost."},
    {"playagain", "Play again?"},
}};

const std::string_view HelpPage =
    "Type what you want to do, in a few words.\r\n"
    "NORTH, SOUTH and the other points of the compass, or N, S, NE: go there. OUT: leave. GO TO a place.\r\n"
    "LOOK: see where you are. LOOK AT something, or X.\r\n"
    "TAKE, DROP and USE things; USE one thing ON another; GIVE something TO somebody.\r\n"
    "SPEAK TO somebody. INVENTORY, or I: what you carry. WAIT, or Z.\r\n"
    "AGAIN: the same once more. OOPS and a word: correct the last line. UNDO: take it back.\r\n"
    "SAVE, RESTORE, RESTART, ABOUT, TRANSCRIPT ON, QUIT.";

} // namespace zem::play
