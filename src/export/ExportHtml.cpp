#include "base/Html.h"
#include "export/Export.h"
#include "export/Outline.h"

namespace zem::exports {

namespace {

constexpr const char* Style = R"(
:root { color-scheme: light dark; }
body { font: 1rem/1.55 Georgia, serif; max-width: 44rem; margin: 2rem auto; padding: 0 1rem; }
h1, h2, h3, h4 { line-height: 1.2; }
h2 { margin-top: 3rem; border-bottom: 1px solid #888888; }
h3 { margin-top: 2rem; }
.exits, .contents, .index { list-style: none; padding: 0; }
.contents, .index { columns: 14rem; }
.script { font-size: 0.9rem; white-space: pre-wrap; margin: 0 0 0.5rem 1.5rem; }
.used { font-size: 0.85rem; opacity: 0.75; }
dt { font-style: italic; }
dd { margin-left: 1.5rem; }
@media print { a { color: inherit; text-decoration: none; } h3 { break-after: avoid; } }
)";

class HtmlWriter {
public:
    std::string Run(const Outline& outline) {
        html_ =
            "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<meta name=\"viewport\" "
            "content=\"width=device-width\">\n<title>" +
            HtmlOf(outline.title) + "</title>\n<style>" + Style +
            "</style>\n</head>\n<body>\n<h1 id=\"game\">" + HtmlOf(outline.title) + "</h1>\n";
        Entries(outline.properties);
        Contents(outline);
        html_ += "<h2 id=\"rooms\">Rooms</h2>\n";
        for (const RoomPart& room : outline.rooms)
            Room(room);
        for (const Section& section : outline.sections) {
            Heading("h2", section.anchor, section.title);
            for (const OtherPart& part : section.parts)
                Other(part);
        }
        Heading("h2", "index", "Index");
        Links("index", outline.index);
        html_ += "</body>\n</html>\n";
        return std::move(html_);
    }

private:
    void Heading(const char* tag, const std::string& anchor, const std::string& text) {
        html_ += std::string("<") + tag + " id=\"" + anchor + "\">" + HtmlOf(text) + "</" + tag + ">\n";
    }

    static std::string LinkText(const Link& link) {
        return link.anchor.empty() ? HtmlOf(link.text)
                                   : "<a href=\"#" + link.anchor + "\">" + HtmlOf(link.text) + "</a>";
    }

    void Links(const char* kind, const std::vector<Link>& links) {
        if (links.empty())
            return;
        html_ += std::string("<ul class=\"") + kind + "\">\n";
        for (const Link& link : links)
            html_ += "<li>" + LinkText(link) + "</li>\n";
        html_ += "</ul>\n";
    }

    void Contents(const Outline& outline) {
        html_ += "<h2>Contents</h2>\n";
        std::vector<Link> links;
        for (const RoomPart& room : outline.rooms)
            links.push_back({room.name, room.anchor});
        for (const Section& section : outline.sections)
            links.push_back({section.title, section.anchor});
        links.push_back({"Index", "index"});
        Links("contents", links);
    }

    void Lines(const std::vector<std::string>& lines) {
        html_ += "<div class=\"script\">";
        for (std::size_t k = 0; k < lines.size(); ++k)
            html_ += (k == 0 ? "" : "\n") + HtmlOf(lines[k]);
        html_ += "</div>\n";
    }

    void Entries(const std::vector<Entry>& entries) {
        if (entries.empty())
            return;
        html_ += "<dl>\n";
        for (const Entry& entry : entries) {
            html_ += "<dt>" + HtmlOf(entry.name) + "</dt>\n<dd>";
            Lines(entry.lines);
            html_ += "</dd>\n";
        }
        html_ += "</dl>\n";
    }

    void UsedBy(const std::vector<Link>& links) {
        if (links.empty())
            return;
        html_ += "<p class=\"used\">used by ";
        for (std::size_t k = 0; k < links.size(); ++k)
            html_ += (k == 0 ? "" : ", ") + LinkText(links[k]);
        html_ += "</p>\n";
    }

    void Exits(const std::vector<ExitPart>& exits) {
        if (exits.empty())
            return;
        html_ += "<ul class=\"exits\">\n";
        for (const ExitPart& exit : exits) {
            html_ += "<li>" + HtmlOf(exit.name) + (exit.to.text.empty() ? "" : ": " + LinkText(exit.to));
            if (!exit.script.empty())
                Lines(exit.script);
            html_ += "</li>\n";
        }
        html_ += "</ul>\n";
    }

    void Room(const RoomPart& room) {
        Heading("h3", room.anchor, room.name);
        if (!room.alias.empty())
            html_ += "<p><i>" + HtmlOf(room.alias) + "</i></p>\n";
        for (const std::string& paragraph : room.description)
            if (!paragraph.empty())
                html_ += "<p>" + HtmlOf(paragraph) + "</p>\n";
        Exits(room.exits);
        Entries(room.entries);
        Things("Person: ", room.people);
        Things("Thing: ", room.things);
        UsedBy(room.usedBy);
    }

    void Things(const std::string& title, const std::vector<ThingPart>& things) {
        for (const ThingPart& thing : things) {
            Heading("h4", thing.anchor, title + thing.name);
            Entries(thing.entries);
            UsedBy(thing.usedBy);
        }
    }

    void Other(const OtherPart& part) {
        Heading("h3", part.anchor, part.name);
        if (!part.lines.empty())
            Lines(part.lines);
        UsedBy(part.usedBy);
    }

    std::string html_;
};

} // namespace

std::string AsHtml(const GameModel& game, const CommandLookup& commands) {
    return HtmlWriter().Run(OutlineOf(game, commands));
}

} // namespace zem::exports
