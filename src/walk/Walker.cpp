#include "walk/Walker.h"

#include "base/TextEncoding.h"
#include "walk/Walk.h"

#include <utility>

namespace zem::walk {

using namespace zem::play;

Walker::Walker(std::shared_ptr<const World> world, WalkLimits limits)
    : walk_(std::make_unique<Walk>(std::move(world), std::move(limits))) {}

Walker::~Walker() = default;

void Walker::Run() {
    walk_->Run();
}

const Coverage& Walker::Reached() const {
    return walk_->coverage;
}

const WalkFigures& Walker::Figures() const {
    return walk_->figures;
}

const std::vector<WalkFinding>& Walker::Findings() const {
    return walk_->findings;
}

std::vector<WalkUnreached> Walker::NeverReached() const {
    return walk_->NeverReached();
}

RecordedRun Walker::AsRun(const WalkFinding& finding, const std::string& name) const {
    RecordedRun run;
    run.name = name;
    run.seed = walk_->Seed();
    const auto add = [&](InputLine::Kind kind, const std::string& text, std::int64_t seconds,
                         const char* sign) {
        InputLine line{kind, text, seconds, sign + ToUtf8(text), 0};
        if (kind == InputLine::Seconds)
            line.written = sign + std::to_string(seconds);
        run.steps.push_back({std::move(line), true, {}});
    };
    for (const WalkStep& step : finding.way) {
        if (!step.line.empty())
            add(InputLine::Typed, step.line, 0, "> ");
        else if (step.seconds > 0)
            add(InputLine::Seconds, {}, step.seconds, "@ ");
        for (const std::string& answer : step.answers)
            add(InputLine::Answer, answer, 0, "< ");
    }
    RecordedRun played = PlayRun(walk_->SharedWorld(), run).played;
    return played;
}

} // namespace zem::walk
