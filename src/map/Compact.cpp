#include "map/Compact.h"

namespace zem::map {

void Compact(Shifter& shifter, int rounds) {
    for (int round = 0; round < rounds; ++round) {
        Cost fallen = 0;
        for (const int length : {8, 4, 2, 1})
            for (Direction direction = 0; direction < DirectionCount; ++direction)
                fallen += shifter.ShiftAny(length * Step(direction));
        if (fallen == 0)
            return;
    }
}

} // namespace zem::map
