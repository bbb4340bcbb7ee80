#pragma once

#include <string>

namespace zem::bench {

/// A game file of the given number of rooms as an author of ordinary habits would fill them: a look text of a
/// few sentences, four exits, scripts, a command, a character in every second room and an object in each.
inline std::string GenerateGame(int rooms) {
    const auto name = [](int k) { return "Room number " + std::to_string(k); };
    std::string file = "define game <Generated>\r\n  start <" + name(1) +
                       ">\r\n  game author <A. Author>\r\n"
                       "  items <lamp; rope; key>\r\n  startitems <lamp>\r\nend define\r\n\r\n";
    for (int k = 1; k <= rooms; ++k) {
        const std::string neighbour = name(k % rooms + 1);
        file +=
            "define room <" + name(k) + ">\r\n  alias <the place numbered " + std::to_string(k) +
            ">\r\n  prefix <the>\r\n  look <You stand in a long, low room whose walls have been whitewashed "
            "so often that the corners are round. Daylight comes in through a row of small windows under "
            "the ceiling; somewhere behind the north wall water is running. The floor is swept clean, and "
            "a smell of soap and old paper hangs in the air.>\r\n"
            "  north <" +
            neighbour + ">\r\n  south <" + neighbour +
            ">\r\n"
            "  east if has <key> then goto <" +
            neighbour +
            "> else msg <The door is locked.>\r\n"
            "  out <" +
            neighbour + ">\r\n  script if not flag <seen " + std::to_string(k) +
            "> then do <first visit>\r\n  command <listen to #sound#> msg <You hear water.>\r\n";
        if (k % 2 == 0)
            file += "  define character <clerk " + std::to_string(k) +
                    ">\r\n    look <A thin man in a grey coat, bent over a ledger.>\r\n"
                    "    speak <Come back when you have the right form.>\r\n    gender <male>\r\n"
                    "    give <form> do <hand in form>\r\n  end define\r\n";
        file +=
            "  define object <ledger " + std::to_string(k) +
            ">\r\n    look <Column upon column of figures in a careful hand.>\r\n    take msg <It is chained "
            "to the desk.>\r\n    prefix <a>\r\n  end define\r\nend define\r\n\r\n";
    }
    file += "define procedure <first visit>\r\n  msg <You have not been here before.>\r\nend define\r\n";
    return file;
}

} // namespace zem::bench
