#include "commands/DiffPages.h"

#include "base/Html.h"
#include "base/TextEncoding.h"
#include "commands/Json.h"
#include "merge/Describe.h"
#include "merge/MarkedText.h"

#include <functional>

namespace zem {

namespace {

using merge::Difference;
using merge::DifferenceKind;
using merge::GameDiff;
using merge::MarkedPiece;
using merge::RecordTree;

constexpr const char* Style = R"(
:root { color-scheme: light dark; }
body { font: 1rem/1.5 serif; max-width: 48rem; margin: 2rem auto; padding: 0 1rem; }
h2 { font-size: 1.2rem; margin: 1.5rem 0 0.3rem; }
dt { font-style: italic; }
dd { margin: 0 0 0.6rem 1.5rem; white-space: pre-wrap; }
ins { background: #2a83; text-decoration: none; }
del { background: #d333; }
.line { opacity: 0.7; }
)";

/// Text of a game as a page holds it.
std::string PageText(std::string_view text) {
    return HtmlOf(ToUtf8(text));
}

std::string PageText(const std::vector<MarkedPiece>& pieces) {
    std::string html;
    for (const MarkedPiece& piece : pieces)
        switch (piece.kind) {
        case MarkedPiece::Same:
            html += PageText(piece.text);
            break;
        case MarkedPiece::Removed:
            html += "<del>" + PageText(piece.text) + "</del>";
            break;
        case MarkedPiece::Added:
            html += "<ins>" + PageText(piece.text) + "</ins>";
            break;
        case MarkedPiece::LeftOut:
            html += " \xE2\x80\xA6";
            break;
        }
    return html;
}

std::string ChangeAsHtml(const Difference& difference) {
    std::string html;
    const bool hasLines = (difference.from + difference.to).find("\r\n") != std::string::npos;
    for (const merge::MarkedLine& line : merge::MarkChanges(difference.from, difference.to)) {
        html += "<dd>";
        if (hasLines)
            html += "<span class=\"line\">" + std::to_string(line.line) + "</span> ";
        html += PageText(line.pieces) + "</dd>\n";
    }
    return html.empty() ? "<dd>other empty lines</dd>\n" : html;
}

/// The steps to a record and the fields of it that are not empty, with the entries of its lists.
Json RecordAsJson(const RecordTree& tree, int record, const std::function<bool(int)>& isLeftOut) {
    Json fields = Json::object();
    for (const merge::TreeField& field : tree[record].fields)
        fields[merge::FieldName(field)] = JsonText(merge::WithoutMarks(field.text));
    Json entries = Json::array();
    for (const int child : tree[record].children)
        if (!isLeftOut(child) && !IsHidden(tree[child])) {
            Json entry = {{"list", tree[child].listName}, {"entry", tree.VisibleEntry(child)}};
            entry.update(RecordAsJson(tree, child, isLeftOut));
            entries.push_back(std::move(entry));
        }
    return {{"fields", std::move(fields)}, {"entries", std::move(entries)}};
}

Json StepsOf(const RecordTree& tree, int record) {
    Json steps = Json::array();
    for (; record > 0; record = tree[record].parent)
        steps.insert(steps.begin(), Json{{"list", tree[record].listName},
                                         {"entry", tree.VisibleEntry(record)},
                                         {"name", JsonText(tree[record].key)}});
    return steps;
}

Json DifferenceAsJson(const GameDiff& diff, const Difference& difference) {
    Json json = {{"kind", WordFor(difference.kind)}, {"where", JsonText(diff.Where(difference))}};
    if (difference.before >= 0)
        json["before"] = StepsOf(diff.Before(), difference.before);
    if (difference.after >= 0)
        json["after"] = StepsOf(diff.After(), difference.after);
    if (difference.kind == DifferenceKind::Changed) {
        json["field"] = merge::FieldName(difference.field);
        json["from"] = JsonText(difference.from);
        json["to"] = JsonText(difference.to);
    } else if (difference.kind == DifferenceKind::Added) {
        json["record"] =
            RecordAsJson(diff.After(), difference.after, [&](int record) { return diff.IsMovedIn(record); });
    } else if (difference.kind == DifferenceKind::Removed) {
        json["record"] = RecordAsJson(diff.Before(), difference.before,
                                      [&](int record) { return diff.IsMovedOut(record); });
    }
    return json;
}

} // namespace

const char* WordFor(DifferenceKind kind) {
    switch (kind) {
    case DifferenceKind::Added:
        return "added";
    case DifferenceKind::Removed:
        return "removed";
    case DifferenceKind::Changed:
        return "changed";
    case DifferenceKind::Moved:
        return "moved";
    case DifferenceKind::Reordered:
        return "reordered";
    }
    return "";
}

std::string DifferenceAsHtml(const GameDiff& diff, const Difference& difference) {
    const std::string inGroup = diff.WhereInGroup(difference);
    const std::string where = PageText(inGroup.empty() ? diff.Group(difference) : inGroup);
    switch (difference.kind) {
    case DifferenceKind::Added:
        return "<dt><ins>" + where + "</ins> added</dt>\n<dd>" +
               PageText(merge::RecordText(diff.After(), difference.after, 0,
                                          [&](int record) { return diff.IsMovedIn(record); })) +
               "</dd>\n";
    case DifferenceKind::Removed:
        return "<dt><del>" + where + "</del> removed</dt>\n<dd>" +
               PageText(merge::RecordText(diff.Before(), difference.before, 0,
                                          [&](int record) { return diff.IsMovedOut(record); })) +
               "</dd>\n";
    case DifferenceKind::Moved:
    case DifferenceKind::Reordered:
        return "<dt>" + where + "</dt>\n<dd>" + PageText(MovedWords(diff, difference)) + "</dd>\n";
    case DifferenceKind::Changed:
        break;
    }
    return "<dt>" + where + "</dt>\n" + ChangeAsHtml(difference);
}

std::string MovedWords(const GameDiff& diff, const Difference& difference) {
    if (difference.kind == DifferenceKind::Moved)
        return "moved here from " +
               merge::DescribeRecord(diff.Before(), diff.Before()[difference.before].parent);
    const std::string behind = diff.Behind(difference);
    return behind.empty() ? "moved to the first place" : "moved behind " + behind;
}

std::string DiffAsHtml(const GameDiff& diff, const DiffNames& names) {
    const std::string title = HtmlOf(names.before) + " \xE2\x86\x92 " + HtmlOf(names.after);
    std::string html = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>" +
                       title + "</title>\n<style>" + Style + "</style>\n</head>\n<body>\n<h1>" + title +
                       "</h1>\n";
    std::string group;
    for (const Difference& difference : diff.Differences()) {
        if (const std::string next = diff.Group(difference); next != group) {
            html += (group.empty() ? "<h2>" : "</dl>\n<h2>") + PageText(next) + "</h2>\n<dl>\n";
            group = next;
        }
        html += DifferenceAsHtml(diff, difference);
    }
    html += group.empty() ? "<p>Nothing differs.</p>\n" : "</dl>\n";
    return html + "</body>\n</html>\n";
}

std::string DiffAsJson(const GameDiff& diff, const DiffNames& names) {
    Json differences = Json::array();
    for (const Difference& difference : diff.Differences())
        differences.push_back(DifferenceAsJson(diff, difference));
    return ToBytes({{"format", "zem-diff"},
                    {"version", 1},
                    {"before", names.before},
                    {"after", names.after},
                    {"differences", std::move(differences)}});
}

} // namespace zem
