#include "map/GroupLayout.h"

#include "map/Compact.h"
#include "map/Conflicts.h"
#include "map/Mend.h"
#include "map/Rounding.h"

namespace zem::map {

namespace {

constexpr int SmallWindow = 120;
constexpr int LargeWindow = 200;
constexpr int LargeGroup = 400; // rooms beyond which large windows take too long where much is untrue,
constexpr std::int64_t StepsOfRoom = 200'000; // which shows in the steps that were needed so far
constexpr int MostPolish = 7; // rounds; each takes less time, because only what has moved is looked at again

} // namespace

std::vector<Cell> StartOfGroup(const Group& group, Effort& effort) {
    return Rounded(group, RobustRays(group, effort));
}

std::vector<Cell> LayOutGroup(const Group& group, const std::vector<Cell>& start, Effort& effort) {
    Drawing drawing(group, start);
    Shifter shifter(drawing, effort);
    Mender mender(drawing, shifter, effort);
    mender.MendAtOnce();
    mender.MendEach(SmallWindow);
    Compact(shifter, 2);
    Parter parter(drawing, shifter, effort);
    for (int round = 0; round < MostPolish && !effort.IsOver(); ++round) {
        const Cost before = drawing.Total();
        const bool isTrying = group.Size() > LargeGroup && effort.Spent() > StepsOfRoom * group.Size();
        const int window = isTrying ? SmallWindow : LargeWindow;
        parter.PartAll(window);
        mender.MendEach(window);
        Compact(shifter, 1);
        if (drawing.Total() == before && round >= 2)
            break;
    }
    return drawing.Cells();
}

} // namespace zem::map
