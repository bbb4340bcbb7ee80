#pragma once

#include "base/TextEncoding.h"
#include "model/Place.h"

#include <nlohmann/json.hpp>
#include <string>

/// How commands write JSON: UTF-8, members in the order in which they are put in, two blanks for each level.
namespace zem {

using Json = nlohmann::ordered_json;

/// Text of the core.
inline Json JsonText(std::string_view text) {
    return ToUtf8(text);
}

/// A place as its steps and its field:
/// {"steps": [{"list": "room", "entry": 2, "name": "Hall"}], "field": "description"}.
inline Json JsonPlace(const GameModel& game, const Place& place) {
    Json steps = Json::array();
    const auto resolved = Resolve(game, place);
    if (!resolved)
        return nullptr;
    for (const ResolvedPlace::Step& step : resolved->steps) {
        Json json = {{"list", step.list}};
        if (step.key != nullptr) {
            json["entry"] = step.entry;
            json["name"] = JsonText(*step.key);
        }
        steps.push_back(std::move(json));
    }
    Json json = {{"steps", std::move(steps)}};
    if (resolved->field != nullptr)
        json["field"] = resolved->field;
    return json;
}

inline std::string ToBytes(const Json& json) {
    // No text of a game may end the work: what is no UTF-8 has been converted before.
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace zem
