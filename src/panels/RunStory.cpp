#include "panels/RunStory.h"

#include "base/Html.h"
#include "base/TextEncoding.h"
#include "forms/ColourRoles.h"
#include "merge/MarkedText.h"
#include "panels/ProblemsPanel.h"

#include <algorithm>
#include <string>
#include <vector>

namespace zem {

namespace {

using merge::MarkedPiece;

/// The story after a line; empty where the run has no such line.
std::string StoryOf(const play::RecordedRun& run, std::size_t step) {
    if (step == 0)
        return run.beginning;
    return step <= run.steps.size() ? run.steps[step - 1].story : std::string();
}

/// As the texts of the core are.
std::string AsCoreText(const std::string& story) {
    std::string text;
    for (const char letter : FromUtf8(story))
        text += letter == '\n' ? std::string("\r\n") : std::string(1, letter);
    return text;
}

/// One side of a changed line, with the words that the other side has not.
std::string SideOfStory(const merge::MarkedLine& line, MarkedPiece::Kind own, const char* tag) {
    std::string html;
    for (const MarkedPiece& piece : line.pieces) {
        const std::string text = HtmlOf(ToUtf8(piece.text));
        if (piece.kind == own)
            html.append("<").append(tag).append(">").append(text).append("</").append(tag).append(">");
        else if (piece.kind == MarkedPiece::LeftOut)
            html += " ... ";
        else if (piece.kind == MarkedPiece::Same)
            html += text;
    }
    return html;
}

bool Has(const merge::MarkedLine& line, MarkedPiece::Kind kind) {
    return std::any_of(line.pieces.begin(), line.pieces.end(),
                       [kind](const MarkedPiece& piece) { return piece.kind == kind; });
}

std::string DifferencesAsHtml(const std::string& approved, const std::string& told) {
    std::string html;
    const auto add = [&html](const char* word, const std::string& text) {
        html += "<p><b>" + std::string(word) + "</b> " + text + "</p>";
    };
    for (const merge::MarkedLine& line : merge::MarkChanges(AsCoreText(approved), AsCoreText(told))) {
        const bool isGone = Has(line, MarkedPiece::Removed);
        const bool isNew = Has(line, MarkedPiece::Added);
        const bool hasMore = Has(line, MarkedPiece::Same) || Has(line, MarkedPiece::LeftOut);
        if (isGone || hasMore)
            add("Approved:", SideOfStory(line, MarkedPiece::Removed, "del"));
        if (isNew || hasMore)
            add("Now:", SideOfStory(line, MarkedPiece::Added, "ins"));
    }
    return html.empty() ? "<p>Only empty lines differ.</p>" : html;
}

std::string LinesAsHtml(const std::string& story) {
    std::string html = "<p>";
    for (const char letter : HtmlOf(story))
        html += letter == '\n' ? std::string("<br>") : std::string(1, letter);
    return html + "</p>";
}

} // namespace

bool IsToldOtherwise(const play::JudgedRun& run, std::size_t step) {
    return step <= run.result.played.steps.size() && run.state != play::RunState::New &&
           StoryOf(run.approved, step) != StoryOf(run.result.played, step);
}

QString StateWords(const play::JudgedRun& run) {
    switch (run.state) {
    case play::RunState::Approved:
        return QStringLiteral("as approved");
    case play::RunState::New:
        return QStringLiteral("new");
    case play::RunState::CannotBePlayed: {
        const std::size_t line = run.result.played.steps.size();
        const QString why = QString::fromStdString(run.result.problem);
        if (line >= run.approved.steps.size())
            return QStringLiteral("cannot be played: %1").arg(why);
        return QStringLiteral("cannot be played at %1: %2")
            .arg(QString::fromStdString(run.approved.steps[line].input.written), why);
    }
    case play::RunState::Changed:
        break;
    }
    const QString first = QString::fromStdString(run.differences.front().after);
    const QString where = first.isEmpty() ? QStringLiteral("changed at the beginning")
                                          : QStringLiteral("changed after %1").arg(first);
    const std::size_t more = run.differences.size() - 1;
    return more == 0 ? where : where + QStringLiteral(", and in %1 more").arg(more);
}

QIcon IconOfState(play::RunState state, const QPalette& palette) {
    switch (state) {
    case play::RunState::CannotBePlayed:
        return IconOf(problems::Level::Error, palette);
    case play::RunState::Changed:
        return IconOf(problems::Level::Warning, palette);
    case play::RunState::New:
        return IconOf(problems::Level::Hint, palette);
    case play::RunState::Approved:
        break;
    }
    return {};
}

QString StoryAsHtml(const play::JudgedRun& run, std::size_t step, const QPalette& palette) {
    const std::string told = StoryOf(run.result.played, step);
    const bool wasPlayed = step <= run.result.played.steps.size();
    std::string html = "<style>ins { color: " + ColourOf(ColourRole::True, palette).name().toStdString() +
                       "; text-decoration: underline } del { color: " +
                       ColourOf(ColourRole::Error, palette).name().toStdString() +
                       "; text-decoration: line-through } .quiet { color: " +
                       ColourOf(ColourRole::SecondaryText, palette).name().toStdString() + " }</style>";
    if (!wasPlayed) {
        html += "<p class=\"quiet\">The run does not get here any more. Approved was:</p>" +
                LinesAsHtml(StoryOf(run.approved, step));
        return QString::fromStdString(html);
    }
    if (IsToldOtherwise(run, step))
        html += DifferencesAsHtml(StoryOf(run.approved, step), told) +
                "<p class=\"quiet\">The whole text now:</p>";
    else if (run.state == play::RunState::New)
        html += "<p class=\"quiet\">Nothing of this run is approved yet.</p>";
    return QString::fromStdString(html + LinesAsHtml(told));
}

} // namespace zem
