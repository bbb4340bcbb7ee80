#include "merge/LineMerge.h"

#include "base/LineText.h"
#include "merge/CommonRuns.h"
#include "merge/InlineScripts.h"

#include <algorithm>

namespace zem::merge {

namespace {

using Lines = std::vector<std::string_view>;

/// Lines of the base that one version replaced by others of its own.
struct Edit {
    std::size_t baseBegin = 0, baseEnd = 0;
    std::size_t begin = 0, end = 0;
};

std::vector<Edit> EditsOf(const Lines& base, const Lines& version) {
    std::vector<CommonRun> runs = CommonRuns(base, version);
    runs.push_back({base.size(), version.size(), 0});
    std::vector<Edit> edits;
    std::size_t a = 0;
    std::size_t b = 0;
    for (const CommonRun& run : runs) {
        if (run.a > a || run.b > b)
            edits.push_back({a, run.a, b, run.b});
        a = run.a + run.count;
        b = run.b + run.count;
    }
    return edits;
}

bool Overlap(const Edit& a, const Edit& b) {
    if (a.baseBegin == a.baseEnd && b.baseBegin == b.baseEnd)
        return a.baseBegin == b.baseBegin;
    return a.baseBegin < b.baseEnd && b.baseBegin < a.baseEnd;
}

/// Lines of the base from which on versions differ, and the edits there.
struct Region {
    std::size_t begin = 0, end = 0; // in the base
    std::vector<Edit> ours;
    std::vector<Edit> theirs;
};

/// Puts edits that touch the same lines together.
std::vector<Region> RegionsOf(const std::vector<Edit>& ours, const std::vector<Edit>& theirs) {
    std::vector<Region> regions;
    std::size_t nextOurs = 0;
    std::size_t nextTheirs = 0;
    const auto touches = [&](const Edit& edit) {
        const Edit region{regions.back().begin, regions.back().end, 0, 0};
        return Overlap(region, edit);
    };
    const auto add = [&](const Edit& edit, std::vector<Edit> Region::*side) {
        if (regions.empty() || !touches(edit))
            regions.push_back({edit.baseBegin, edit.baseEnd, {}, {}});
        regions.back().end = std::max(regions.back().end, edit.baseEnd);
        (regions.back().*side).push_back(edit);
    };
    while (nextOurs < ours.size() || nextTheirs < theirs.size()) {
        const auto place = [](const Edit& edit) { return std::pair(edit.baseBegin, edit.baseEnd); };
        const bool isOurs = nextTheirs == theirs.size() ||
                            (nextOurs < ours.size() && place(ours[nextOurs]) <= place(theirs[nextTheirs]));
        if (isOurs)
            add(ours[nextOurs++], &Region::ours);
        else
            add(theirs[nextTheirs++], &Region::theirs);
    }
    return regions;
}

/// What a version has in the place of lines begin to end of the base.
Lines LinesIn(const Region& region, const std::vector<Edit>& edits, const Lines& base, const Lines& version) {
    Lines lines;
    std::size_t at = region.begin;
    const auto keepTo = [&](std::size_t end) {
        for (; at < end; ++at)
            lines.push_back(base[at]);
    };
    for (const Edit& edit : edits) {
        keepTo(edit.baseBegin);
        for (std::size_t k = edit.begin; k < edit.end; ++k)
            lines.push_back(version[k]);
        at = edit.baseEnd;
    }
    keepTo(region.end);
    return lines;
}

std::string Join(const Lines& lines) {
    std::string text;
    for (std::size_t k = 0; k < lines.size(); ++k)
        text.append(k == 0 ? "" : "\r\n").append(lines[k]);
    return text;
}

std::string_view Keyword(std::string_view line) {
    line = Trim(line);
    return line.substr(0, line.find_first_of(" <"));
}

/// Whether lines that both versions added in one spot are about different things.
bool HaveOtherKeywords(const Lines& a, const Lines& b) {
    for (const std::string_view left : a)
        for (const std::string_view right : b)
            if (EqualIgnoringCase(Keyword(left), Keyword(right)) && !Trim(left).empty())
                return false;
    return true;
}

class LineMerger {
public:
    LineMerger(FieldKind kind, const std::vector<Take>& choices) : kind_(kind), choices_(choices) {}

    MergedLines Run(const Lines& base, const Lines& ours, const Lines& theirs) {
        // What nobody changed is taken from our version, whose numbers of internal procedures stay.
        const std::vector<CommonRun> common = CommonRuns(base, ours);
        Lines kept = base;
        for (const CommonRun& run : common)
            for (std::size_t k = 0; k < run.count; ++k)
                kept[run.a + k] = ours[run.b + k];
        std::size_t at = 0;
        for (const Region& region : RegionsOf(EditsOf(base, ours), EditsOf(base, theirs))) {
            Append(Lines(kept.begin() + static_cast<std::ptrdiff_t>(at),
                         kept.begin() + static_cast<std::ptrdiff_t>(region.begin)));
            Settle(region,
                   Lines(base.begin() + static_cast<std::ptrdiff_t>(region.begin),
                         base.begin() + static_cast<std::ptrdiff_t>(region.end)),
                   LinesIn(region, region.ours, kept, ours), LinesIn(region, region.theirs, kept, theirs));
            at = region.end;
        }
        Append(Lines(kept.begin() + static_cast<std::ptrdiff_t>(at), kept.end()));
        result_.text = Join(merged_);
        return std::move(result_);
    }

private:
    void Append(const Lines& lines) { merged_.insert(merged_.end(), lines.begin(), lines.end()); }

    void Settle(const Region& region, const Lines& base, const Lines& ours, const Lines& theirs) {
        if (region.theirs.empty() || SameText(Join(ours), Join(theirs))) {
            Append(ours);
        } else if (region.ours.empty()) {
            Append(theirs);
        } else if (kind_ == FieldKind::RawLines && base.empty() && HaveOtherKeywords(ours, theirs)) {
            Append(ours);
            Append(theirs);
        } else {
            const std::size_t number = result_.conflicts.size();
            const Take take = number < choices_.size() ? choices_[number] : Take::Ours;
            result_.conflicts.push_back(
                {Join(base), Join(ours), Join(theirs), static_cast<int>(merged_.size()) + 1});
            if (take != Take::Theirs)
                Append(ours);
            if (take != Take::Ours)
                Append(theirs);
        }
    }

    FieldKind kind_;
    const std::vector<Take>& choices_;
    Lines merged_;
    MergedLines result_;
};

} // namespace

MergedLines MergeLines(std::string_view base, std::string_view ours, std::string_view theirs, FieldKind kind,
                       const std::vector<Take>& choices) {
    // In scripts and raw lines each line has an end; only texts may have an empty line after it.
    const bool isEnded = kind != FieldKind::Text && (ours.empty() ? theirs : ours).ends_with("\r\n");
    const auto lines = [kind](std::string_view text) {
        return LinesOf(kind != FieldKind::Text && text.ends_with("\r\n") ? text.substr(0, text.size() - 2)
                                                                         : text);
    };
    MergedLines result = LineMerger(kind, choices).Run(lines(base), lines(ours), lines(theirs));
    if (isEnded && !result.text.empty())
        result.text += "\r\n";
    return result;
}

} // namespace zem::merge
