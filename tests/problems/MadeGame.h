#pragma once

#include <cstdint>
#include <random>
#include <string>

namespace zem::test {

/// A game with some of everything and nothing wrong with it: rooms in a row with things, people, scripts,
/// flags, variables, menus and commands, all of which are used.
inline std::string MadeGame(std::uint32_t seed) {
    std::mt19937 random(seed);
    const int rooms = 4 + static_cast<int>(random() % 6);
    const char* const places[] = {"Cellar", "Orchard", "Library", "Workshop", "Pantry", "Stable",
                                  "Chapel", "Garret",  "Terrace", "Scullery", "Passage"};
    const char* const things[] = {"copper kettle", "ladder", "hourglass", "violin",  "saddle", "wheelbarrow",
                                  "telescope",     "basket", "inkwell",   "lantern", "mirror"};
    const char* const people[] = {"Agnes",  "Bertram", "Cecily", "Dunstan", "Edith", "Ferdinand",
                                  "Gudrun", "Hector",  "Isolde", "Jasper",  "Katrin"};
    std::string items;
    std::string blocks;
    for (int k = 0; k < rooms; ++k) {
        const std::string name = places[k];
        const std::string thing = things[k];
        const std::string person = people[k];
        const std::string flag = "seen the " + thing;
        items += (k == 0 ? "" : "; ") + thing;
        blocks += "define room <" + name +
                  ">\nprefix <the>\nindescription <You are in>\nlook <You are standing in the " + name +
                  " of the old house, and it is quiet.>\n";
        if (k > 0)
            blocks += std::string("west <") + places[k - 1] + ">\n";
        if (k + 2 < rooms)
            blocks += std::string("east <") + places[k + 1] + ">\n";
        else if (k + 1 < rooms)
            blocks += std::string("east if has <") + things[0] + "> then goto <" + places[k + 1] +
                      "> else msg <The door to the east is locked.>\n";
        blocks += "script if first visit then msg <Dust lies on everything, it seems.>\n";
        blocks += "command <wave to " + person + "> msg <" + person + " waves back to you.>\n";
        blocks += "define object <" + thing + ">\nprefix <the>\nlook <It is the " + thing +
                  ", and you have seen better.>\ntake {\ngive <" + thing + ">\nhide <" + thing +
                  ">\nflag on <" + flag +
                  ">\nadd <finds; 1>\ngain <score; 2>\nmsg <You take it.>\n}\nend define\n";
        blocks += "define character <" + person + ">\ngender <" + (k % 2 == 0 ? "she" : "he") +
                  ">\nlook <It is " + person +
                  ", and that is all there is to see.>\nspeak choose <words for " + person + ">\ngive <" +
                  thing + "> do <thank " + person + ">\nend define\nend define\n";
        blocks += "define selection <words for " + person + ">\ninfo <What do you say to " + person +
                  "?>\nchoice <good morning> say <Is it, #visitor#?>\nchoice <nothing at all> msg <You say "
                  "nothing.>\n"
                  "end define\n";
        blocks += "define procedure <thank " + person + ">\nif flag <" + flag +
                  "> then say <So you found it!>\nelse "
                  "say <Where is it from?>\nlose <" +
                  thing + ">\nshow <" + thing + ">\nend define\n";
    }
    return "define game <The House>\nstart <" + std::string(places[0]) +
           ">\ngame author <Nobody>\ngame version <1.0>\nitems <" + items +
           ">\ncollectables <score p=0 [! point*s*]>\n" +
           "startscript ask <visitor; Who are you?>\nafterturn if more <finds; " + std::to_string(rooms - 1) +
           "> then do <the end>\ncommand <count> msg <You have found %finds% things, #visitor#.>\n"
           "command <read letter> text <letter>\ncommand <give up> if amount <score; 4> then win else die\n"
           "command <shout #words#> msg <You shout: #words#>\nuse <" +
           things[1] +
           "> pick <a noise; a silence>\n"
           "error <badgo; There is a wall, and no door.>\nend define\n"
           "define synonyms\nget; grab = take\nx; examine = look at\nend define\n" +
           blocks +
           "define procedure <the end>\nmsg <That was the last of the things.>\nwin\nend define\n"
           "define procedure <a noise>\nmsg <Something creaks.>\nend define\n"
           "define procedure <a silence>\nmsg <Nothing is to be heard.>\nend define\n"
           "define text <letter>\nThe letter is in a hand that you do not know.\nIt is |bshort|xb.\nend "
           "define\n"
           "define text <intro>\nYou have come to the house at last.\nend define\n"
           "define text <win>\nYou have it all.\nend define\n"
           "define text <lose>\nYou have not got it all.\nend define\n";
}

} // namespace zem::test
