#include "map/Cost.h"

namespace zem::map {

namespace {

NearCosts ReckonNearCosts() {
    NearCosts costs{};
    for (int y = -NearWay; y < NearWay; ++y)
        for (int x = -NearWay; x < NearWay; ++x)
            for (Direction direction = 0; direction < DirectionCount; ++direction)
                costs[NearIndex({x, y}, direction)] =
                    static_cast<std::int16_t>(ReckonTermCost({x, y}, direction));
    return costs;
}

} // namespace

const NearCosts CostsOfNearWays = ReckonNearCosts();

} // namespace zem::map
