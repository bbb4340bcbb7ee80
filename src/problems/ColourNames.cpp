// The names of colours in scripts.
#include "base/LineText.h"
#include "problems/Checks.h"
#include "problems/Fixes.h"

#include <algorithm>
#include <vector>

namespace zem::problems {

namespace {

/// All colours that have a name on web pages, which are those that players know.
constexpr std::string_view ColourWords =
    "aliceblue antiquewhite aqua aquamarine azure beige bisque black blanchedalmond blue blueviolet brown "
    "burlywood cadetblue chartreuse chocolate coral cornflowerblue cornsilk crimson cyan darkblue darkcyan "
    "darkgoldenrod darkgray darkgreen darkgrey darkkhaki darkmagenta darkolivegreen darkorange darkorchid "
    "darkred darksalmon darkseagreen darkslateblue darkslategray darkslategrey darkturquoise darkviolet "
    "deeppink deepskyblue dimgray dimgrey dodgerblue firebrick floralwhite forestgreen fuchsia gainsboro "
    "ghostwhite gold goldenrod gray green greenyellow grey honeydew hotpink indianred indigo ivory khaki "
    "lavender lavenderblush lawngreen lemonchiffon lightblue lightcoral lightcyan lightgoldenrodyellow "
    "lightgray lightgreen lightgrey lightpink lightsalmon lightseagreen lightskyblue lightslategray "
    "lightslategrey lightsteelblue lightyellow lime limegreen linen magenta maroon mediumaquamarine "
    "mediumblue mediumorchid mediumpurple mediumseagreen mediumslateblue mediumspringgreen mediumturquoise "
    "mediumvioletred midnightblue mintcream mistyrose moccasin navajowhite navy oldlace olive olivedrab "
    "orange orangered orchid palegoldenrod palegreen paleturquoise palevioletred papayawhip peachpuff peru "
    "pink plum powderblue purple red rosybrown royalblue saddlebrown salmon sandybrown seagreen seashell "
    "sienna silver skyblue slateblue slategray slategrey snow springgreen steelblue tan teal thistle tomato "
    "turquoise violet wheat white whitesmoke yellow yellowgreen";

void FindUnknownColours(const CheckedGame& game, Findings& findings) {
    const std::vector<std::string_view> known = SplitAt(ColourWords, " ");
    for (const CheckedCall* call : game.CallsOf("colour")) {
        std::string word(call->Part(0));
        std::erase(word, ' ');
        const bool isKnown = std::any_of(known.begin(), known.end(), [&](std::string_view colour) {
            return EqualIgnoringCase(colour, word);
        });
        if (call->parts.empty() || word.empty() || isKnown || word.find_first_of("#%") != std::string::npos)
            continue;
        Problem& problem = findings.Add("C05", call->At(0),
                                        "There is no colour " + QuoteShortly(call->Part(0)) +
                                            ", so the text stays as it is.");
        if (const std::string_view nearest = NearestOf(known, word); !nearest.empty())
            problem.fixes = {
                ReplaceBytes(ChangeTo(nearest), call->At(0), call->Part(0), std::string(nearest))};
    }
}

} // namespace

std::span<const Check> ColourChecks() {
    static constexpr Check Rows[] = {
        {"C05", Level::Warning, "Colours that do not exist", FindUnknownColours},
    };
    return Rows;
}

} // namespace zem::problems
