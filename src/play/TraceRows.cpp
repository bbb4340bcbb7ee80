#include "play/TraceRows.h"

#include "base/KelError.h"
#include "base/LineText.h"
#include "kel/IfLine.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace zem::play {

namespace {

constexpr std::size_t MostRows = 5000;

const std::string CallOfInternal = std::string("do <") + InternalProcedure;

/// The parts of an "if", nothing for any other line.
std::optional<IfLine> ReadIf(const std::string& line) {
    if (!BeginsWith(TrimLeft(line), "if "))
        return std::nullopt;
    try {
        return ParseIfLine(line);
    } catch (const KelError&) {
        return std::nullopt;
    }
}

class TraceWriter {
public:
    TraceWriter(const StoryPlaces& places, const CommandLookup& commands)
        : places_(places),
          commands_(commands) {}

    std::vector<TraceRow> Write(const std::vector<TraceEntry>& trace) {
        for (const TraceEntry& entry : trace) {
            if (rows_.size() >= MostRows) {
                rows_.push_back({0,
                                 "... and more: the turn ran " + std::to_string(trace.size()) + " lines",
                                 TraceRow::Script,
                                 "",
                                 {}});
                return std::move(rows_);
            }
            Add(entry);
        }
        while (!frames_.empty())
            Leave();
        return std::move(rows_);
    }

private:
    /// A script that is running, and its line.
    struct Frame {
        Source script;     // any line of it
        int level = 0;     // of its lines
        int callLevel = 0; // of the line that runs now: what it calls stands one deeper
        std::string running;

        std::optional<IfLine> condition; // that is being asked
        Source conditionSource;
        int conditionLevel = 0;
        std::size_t asked = 0; // of its conditions
        bool holds = true;

        std::string next; // what the line does next, if anything
        int nextLevel = 0;
        std::vector<TraceRow> after; // to be told when the line is done
    };

    void Add(const TraceEntry& entry) {
        Enter(entry);
        Frame& frame = frames_.back();
        if (entry.condition >= 0)
            AddCondition(frame, entry);
        else if (entry.result == TraceEntry::Ran && !entry.note.empty()) {
            rows_.push_back({frame.callLevel + 1, entry.note, TraceRow::Ran, "", entry.source});
            ++frame.callLevel;
        } else
            AddLine(frame, entry);
    }

    /// Comes to the script of the entry, out of those that are done.
    void Enter(const TraceEntry& entry) {
        const std::size_t depth = std::max<std::size_t>(entry.depth, 1);
        while (frames_.size() > depth)
            Leave();
        const auto isSame = [&](const Source& source) {
            return source.book == entry.source.book && source.field == entry.source.field &&
                   source.index == entry.source.index;
        };
        if (frames_.size() == depth && !isSame(frames_.back().script))
            Leave();
        while (frames_.size() < depth)
            Begin(entry.source);
    }

    void Begin(const Source& source) {
        const Frame* caller = frames_.empty() ? nullptr : &frames_.back();
        Frame frame;
        frame.script = source;
        frame.level = caller == nullptr ? 0 : caller->callLevel + 1;
        const bool isTold = caller != nullptr &&
                            (source.book->owner == Owner::Menu ||
                             (source.book->owner == Owner::Procedure && BeginsWith(caller->running, "do ")));
        if (!isTold) {
            Source whole = source;
            whole.line = -1;
            rows_.push_back({frame.level, places_.Describe(whole), TraceRow::Script, "", source});
            ++frame.level;
        }
        frame.callLevel = frame.level;
        frames_.push_back(std::move(frame));
    }

    void Leave() {
        EndLine(frames_.back());
        frames_.pop_back();
    }

    void EndLine(Frame& frame) {
        Settle(frame);
        frame.next.clear();
        std::move(frame.after.rbegin(), frame.after.rend(), std::back_inserter(rows_));
        frame.after.clear();
    }

    void AddLine(Frame& frame, const TraceEntry& entry) {
        Settle(frame);
        std::string text;
        int level = frame.level;
        if (!frame.next.empty() && frame.script.line == entry.source.line) {
            text = std::exchange(frame.next, {});
            level = frame.nextLevel;
        } else {
            EndLine(frame);
            text = Trim(places_.LineOf(entry.source));
        }
        frame.script.line = entry.source.line;
        frame.callLevel = level;
        frame.running = text;
        if (auto condition = ReadIf(text)) {
            frame.condition = std::move(condition);
            frame.conditionSource = entry.source;
            frame.conditionLevel = level;
            frame.asked = 0;
            frame.holds = true;
        } else if (BeginsWith(text, CallOfInternal)) {
            --frame.callLevel;
        } else {
            const bool isFaulty = entry.result == TraceEntry::Faulty;
            const std::string told =
                text.empty() ? places_.Describe(entry.source) : DescribeLine(text, commands_);
            rows_.push_back(
                {level, told, isFaulty ? TraceRow::Faulty : TraceRow::Ran, entry.note, entry.source});
        }
    }

    void AddCondition(Frame& frame, const TraceEntry& entry) {
        if (!frame.condition)
            return;
        AddUnasked(frame, static_cast<std::size_t>(entry.condition));
        frame.holds = entry.result == TraceEntry::True;
        const TraceRow::What what = !entry.note.empty() ? TraceRow::Faulty
                                    : frame.holds       ? TraceRow::True
                                                        : TraceRow::False;
        AddConditionRow(frame, what, entry.note);
    }

    /// The conditions up to this one were not asked: they could change nothing any more.
    void AddUnasked(Frame& frame, std::size_t upTo) {
        while (frame.asked < std::min(upTo, frame.condition->Conditions.size()))
            AddConditionRow(frame, TraceRow::NotRun, "");
    }

    void AddConditionRow(Frame& frame, TraceRow::What what, const std::string& note) {
        if (frame.asked >= frame.condition->Conditions.size())
            return;
        const Condition& condition = frame.condition->Conditions[frame.asked];
        const char* joiner = frame.asked == 0 ? "If " : condition.JoinedBy == Joiner::And ? "and " : "or ";
        rows_.push_back({frame.conditionLevel, joiner + DescribeCondition(condition, commands_), what, note,
                         frame.conditionSource});
        ++frame.asked;
    }

    /// Once all conditions are asked that had to be, it is clear which way the line goes.
    void Settle(Frame& frame) {
        if (!frame.condition)
            return;
        const IfLine condition = *std::exchange(frame.condition, std::nullopt);
        if (frame.asked == 0) // the turn ended in the middle
            return;
        frame.condition = condition;
        AddUnasked(frame, condition.Conditions.size());
        frame.condition.reset();
        frame.nextLevel = frame.conditionLevel + 1;
        frame.next = frame.holds ? condition.Then : condition.Else;
        const std::string& other = frame.holds ? condition.Else : condition.Then;
        if (other.empty())
            return;
        TraceRow row{frame.nextLevel,
                     (frame.holds ? "otherwise: " : "then: ") + DescribeLine(other, commands_),
                     TraceRow::NotRun, "", frame.conditionSource};
        if (frame.holds)
            frame.after.push_back(std::move(row));
        else
            rows_.push_back(std::move(row));
    }

    const StoryPlaces& places_;
    const CommandLookup& commands_;
    std::vector<Frame> frames_;
    std::vector<TraceRow> rows_;
};

} // namespace

std::vector<TraceRow> DescribeTrace(const std::vector<TraceEntry>& trace, const StoryPlaces& places,
                                    const CommandLookup& commands) {
    return TraceWriter(places, commands).Write(trace);
}

} // namespace zem::play
