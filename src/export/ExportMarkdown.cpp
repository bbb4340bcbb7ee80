#include "export/Export.h"
#include "export/Outline.h"

namespace zem::exports {

namespace {

/// Text that means itself: signs of Markdown and of HTML are escaped.
std::string Escaped(std::string_view text) {
    std::string escaped;
    for (std::size_t k = 0; k < text.size(); ++k) {
        const bool atStart = k == 0 && std::string_view("#+-=~").find(text[k]) != std::string_view::npos;
        if (atStart || std::string_view("\\`*_[]<>&|").find(text[k]) != std::string_view::npos)
            escaped += '\\';
        if (static_cast<unsigned char>(text[k]) >= ' ')
            escaped += text[k];
    }
    return escaped;
}

class MarkdownWriter {
public:
    std::string Run(const Outline& outline) {
        Heading(1, "game", outline.title);
        Entries(outline.properties);
        Heading(2, "rooms", "Rooms");
        for (const RoomPart& room : outline.rooms)
            Room(room);
        for (const Section& section : outline.sections) {
            Heading(2, section.anchor, section.title);
            for (const OtherPart& part : section.parts) {
                Heading(3, part.anchor, part.name);
                for (const std::string& line : part.lines)
                    text_ += Escaped(line) + "  \n";
                UsedBy(part.usedBy);
            }
        }
        Heading(2, "index", "Index");
        for (const Link& link : outline.index)
            text_ += "- " + LinkText(link) + "\n";
        return std::move(text_);
    }

private:
    void Heading(int level, const std::string& anchor, const std::string& words) {
        text_ += (text_.empty() ? "" : "\n") + std::string("<a id=\"") + anchor + "\"></a>\n\n" +
                 std::string(static_cast<std::size_t>(level), '#') + ' ' + Escaped(words) + "\n\n";
    }

    static std::string LinkText(const Link& link) {
        return link.anchor.empty() ? Escaped(link.text)
                                   : "[" + Escaped(link.text) + "](#" + link.anchor + ")";
    }

    void Lines(const std::vector<std::string>& lines) {
        for (const std::string& line : lines)
            text_ += "  - " + Escaped(line) + "\n";
    }

    void Entries(const std::vector<Entry>& entries) {
        for (const Entry& entry : entries) {
            text_ += "- *" + Escaped(entry.name) + "*";
            text_ += entry.lines.size() == 1 ? ": " + Escaped(entry.lines.front()) + "\n" : "\n";
            if (entry.lines.size() > 1)
                Lines(entry.lines);
        }
    }

    void UsedBy(const std::vector<Link>& links) {
        for (std::size_t k = 0; k < links.size(); ++k)
            text_ += (k == 0 ? "\nused by " : ", ") + LinkText(links[k]);
        text_ += links.empty() ? "" : "\n";
    }

    void Room(const RoomPart& room) {
        Heading(3, room.anchor, room.name);
        for (const std::string& paragraph : room.description)
            text_ += paragraph.empty() ? "" : Escaped(paragraph) + "\n\n";
        for (const ExitPart& exit : room.exits) {
            text_ +=
                "- " + Escaped(exit.name) + (exit.to.text.empty() ? "" : ": " + LinkText(exit.to)) + "\n";
            Lines(exit.script);
        }
        Entries(room.entries);
        Things("Person: ", room.people);
        Things("Thing: ", room.things);
        UsedBy(room.usedBy);
    }

    void Things(const std::string& title, const std::vector<ThingPart>& things) {
        for (const ThingPart& thing : things) {
            Heading(4, thing.anchor, title + thing.name);
            Entries(thing.entries);
            UsedBy(thing.usedBy);
        }
    }

    std::string text_;
};

} // namespace

std::string AsMarkdown(const GameModel& game, const CommandLookup& commands) {
    return MarkdownWriter().Run(OutlineOf(game, commands));
}

} // namespace zem::exports
